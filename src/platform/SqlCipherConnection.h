#pragma once
// A connection to a password-protected database file, and the prepared
// statements run on it. Values are bound to the statement, never pasted into
// its text. Nothing here throws: every call reports by its result, and the
// engine's result code of the last failure is kept (SQLITE_NOTADB, 26, when
// the key does not fit: opening succeeds, the first statement fails).

#include <QString>
#include <QtGlobal>

struct sqlite3;
struct sqlite3_stmt;

namespace platform {

// Result codes the callers look at.
inline constexpr int SqlOk = 0;
inline constexpr int SqlError = 1;
inline constexpr int SqlCantOpen = 14;
inline constexpr int SqlNotADatabase = 26;
inline constexpr int SqlMisuse = 21;

class SqlCipherConnection;

// One prepared statement. Parameters are numbered from 1 in the order of the
// "?" marks; columns from 0. Move-only; finalised when it goes.
class SqlStatement {
 public:
  SqlStatement() = default;
  ~SqlStatement();
  SqlStatement(SqlStatement&& other) noexcept;
  SqlStatement& operator=(SqlStatement&& other) noexcept;
  SqlStatement(const SqlStatement&) = delete;
  SqlStatement& operator=(const SqlStatement&) = delete;

  // False when preparing failed (a bad statement, a closed connection).
  bool IsValid() const { return stmt_ != nullptr; }

  SqlStatement& Bind(int index, qint64 value);
  SqlStatement& Bind(int index, int value) { return Bind(index, qint64(value)); }
  SqlStatement& Bind(int index, bool value) { return Bind(index, qint64(value ? 1 : 0)); }
  SqlStatement& Bind(int index, const QString& value);
  SqlStatement& Bind(int index, const char* value) = delete;  // say QString or a number
  SqlStatement& BindNull(int index);

  // Steps once: true while a row stands. At the end or on an error false;
  // Error() tells which (0 at the end).
  bool Next();
  // Runs the statement to its end; true when it finished without error.
  bool Run();
  // Back to before the first row, bindings kept.
  void Reset();

  int Error() const { return error_; }

  int ColumnCount() const;
  bool IsNull(int column) const;
  qint64 Int(int column) const;
  bool Bool(int column) const { return Int(column) != 0; }
  QString Text(int column) const;

 private:
  friend class SqlCipherConnection;
  SqlStatement(sqlite3_stmt* stmt, int prepareError) : stmt_(stmt), error_(prepareError) {}

  sqlite3_stmt* stmt_ = nullptr;
  int error_ = 0;
};

class SqlCipherConnection {
 public:
  SqlCipherConnection() = default;
  ~SqlCipherConnection();
  SqlCipherConnection(const SqlCipherConnection&) = delete;
  SqlCipherConnection& operator=(const SqlCipherConnection&) = delete;

  enum class OpenMode { ReadWrite, ReadWriteCreate, ReadOnly };

  // Opens the file and gives it the key. An existing file is never created
  // anew unless asked; a wrong key is only noticed by the first statement.
  bool Open(const QString& path, const QString& key, OpenMode mode = OpenMode::ReadWrite);
  void Close();
  bool IsOpen() const { return db_ != nullptr; }

  SqlStatement Prepare(const QString& sql);
  // Runs statements without values (several may be separated by ";").
  bool Execute(const QString& sql);

  bool Begin();
  bool Commit();
  bool Rollback();

  qint64 LastInsertId() const;
  int Changes() const;

  // Writes a compacted copy of the whole database into a new file at path,
  // encrypted with key. The file must not exist yet.
  bool ExportTo(const QString& path, const QString& key);

  // Result code of the last failure on this connection (0 when none).
  int LastError() const { return error_; }
  QString LastErrorText() const { return errorText_; }

 private:
  void Remember(int code);

  sqlite3* db_ = nullptr;
  int error_ = 0;
  QString errorText_;
};

// Runs a block of statements as one transaction: committed by Commit(),
// rolled back when it goes without.
class SqlTransaction {
 public:
  explicit SqlTransaction(SqlCipherConnection& connection);
  ~SqlTransaction();
  SqlTransaction(const SqlTransaction&) = delete;
  SqlTransaction& operator=(const SqlTransaction&) = delete;

  bool IsActive() const { return active_; }
  bool Commit();

 private:
  SqlCipherConnection& connection_;
  bool active_ = false;
};

}  // namespace platform
