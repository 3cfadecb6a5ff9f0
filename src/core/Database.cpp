#include "core/Database.h"

#include "core/DataFileKey.h"

bool Database::Open(const QString& path) {
  Close();
  if (!connection_.Open(path, QString::fromLatin1(DataFilePassword)))
    return false;
  platform::SqlStatement tables =
      connection_.Prepare(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type = 'table'"));
  const bool read = tables.Next();
  const bool hasTables = read && tables.Int(0) > 0;
  tables = platform::SqlStatement();
  if (!hasTables) {
    connection_.Close();
    return false;
  }
  path_ = path;
  return true;
}

void Database::Close() {
  connection_.Close();
  path_.clear();
}
