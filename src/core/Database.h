#pragma once
// The program's one connection to its data file, shared by every window
// from the start to the close (App().DatabaseConnection while open). Each
// caller prepares its own statements on it and lets them go in the same
// routine.

#include <QString>

#include "platform/SqlCipherConnection.h"

class Database {
 public:
  Database() = default;
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // Opens the file with the program's password and reads its table list, so
  // that a wrong password or a file that is no database fails here and not
  // at the first use. A file without any table is no data file either.
  bool Open(const QString& path);
  void Close();
  bool IsOpen() const { return connection_.IsOpen(); }

  platform::SqlStatement Prepare(const QString& sql) { return connection_.Prepare(sql); }
  bool Execute(const QString& sql) { return connection_.Execute(sql); }
  platform::SqlCipherConnection& Connection() { return connection_; }

  // Result code of the last failure (0 when none).
  int LastError() const { return connection_.LastError(); }
  QString Path() const { return path_; }

 private:
  platform::SqlCipherConnection connection_;
  QString path_;
};
