#include "platform/SqlCipherConnection.h"

#include <sqlcipher/sqlite3.h>

#include <QFile>
#include <utility>

namespace platform {

// ---- SqlStatement ---------------------------------------------------------

SqlStatement::~SqlStatement() {
  if (stmt_) sqlite3_finalize(stmt_);
}

SqlStatement::SqlStatement(SqlStatement&& other) noexcept
    : stmt_(std::exchange(other.stmt_, nullptr)), error_(other.error_) {}

SqlStatement& SqlStatement::operator=(SqlStatement&& other) noexcept {
  if (this != &other) {
    if (stmt_) sqlite3_finalize(stmt_);
    stmt_ = std::exchange(other.stmt_, nullptr);
    error_ = other.error_;
  }
  return *this;
}

SqlStatement& SqlStatement::Bind(int index, qint64 value) {
  if (!stmt_) return *this;
  const int rc = sqlite3_bind_int64(stmt_, index, value);
  if (rc != SQLITE_OK) error_ = rc;
  return *this;
}

SqlStatement& SqlStatement::Bind(int index, const QString& value) {
  if (!stmt_) return *this;
  const QByteArray utf8 = value.toUtf8();
  // An empty text is stored as "", not as NULL.
  const int rc = sqlite3_bind_text(stmt_, index, utf8.isNull() ? "" : utf8.constData(),
                                   int(utf8.size()), SQLITE_TRANSIENT);
  if (rc != SQLITE_OK) error_ = rc;
  return *this;
}

SqlStatement& SqlStatement::BindNull(int index) {
  if (!stmt_) return *this;
  const int rc = sqlite3_bind_null(stmt_, index);
  if (rc != SQLITE_OK) error_ = rc;
  return *this;
}

bool SqlStatement::Next() {
  if (!stmt_) {
    if (error_ == 0) error_ = SQLITE_MISUSE;
    return false;
  }
  // A failed binding makes the statement fail rather than run with a gap.
  if (error_ != 0 && error_ != SQLITE_ROW && error_ != SQLITE_DONE) return false;
  const int rc = sqlite3_step(stmt_);
  if (rc == SQLITE_ROW) {
    error_ = 0;
    return true;
  }
  error_ = rc == SQLITE_DONE ? 0 : rc;
  return false;
}

bool SqlStatement::Run() {
  while (Next()) {
  }
  return stmt_ != nullptr && error_ == 0;
}

void SqlStatement::Reset() {
  if (!stmt_) return;
  sqlite3_reset(stmt_);
  error_ = 0;
}

int SqlStatement::ColumnCount() const { return stmt_ ? sqlite3_column_count(stmt_) : 0; }

bool SqlStatement::IsNull(int column) const {
  return !stmt_ || sqlite3_column_type(stmt_, column) == SQLITE_NULL;
}

qint64 SqlStatement::Int(int column) const {
  return stmt_ ? sqlite3_column_int64(stmt_, column) : 0;
}

QString SqlStatement::Text(int column) const {
  if (!stmt_) return QString();
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt_, column));
  const int bytes = sqlite3_column_bytes(stmt_, column);
  return text ? QString::fromUtf8(text, bytes) : QString();
}

// ---- SqlCipherConnection --------------------------------------------------

SqlCipherConnection::~SqlCipherConnection() { Close(); }

void SqlCipherConnection::Remember(int code) {
  error_ = code;
  errorText_ = code == SQLITE_OK ? QString()
               : db_           ? QString::fromUtf8(sqlite3_errmsg(db_))
                               : QString::fromUtf8(sqlite3_errstr(code));
}

bool SqlCipherConnection::Open(const QString& path, const QString& key, OpenMode mode) {
  Close();
  int flags = SQLITE_OPEN_FULLMUTEX;
  switch (mode) {
    case OpenMode::ReadWrite: flags |= SQLITE_OPEN_READWRITE; break;
    case OpenMode::ReadWriteCreate: flags |= SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE; break;
    case OpenMode::ReadOnly: flags |= SQLITE_OPEN_READONLY; break;
  }
  const QByteArray file = QFile::encodeName(path);
  sqlite3* db = nullptr;
  const int rc = sqlite3_open_v2(file.constData(), &db, flags, nullptr);
  if (rc != SQLITE_OK) {
    error_ = rc;
    errorText_ = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(rc));
    if (db) sqlite3_close_v2(db);
    return false;
  }
  db_ = db;
  const QByteArray secret = key.toUtf8();
  const int keyed = sqlite3_key(db_, secret.constData(), int(secret.size()));
  if (keyed != SQLITE_OK) {
    Remember(keyed);
    Close();
    return false;
  }
  Remember(SQLITE_OK);
  return true;
}

void SqlCipherConnection::Close() {
  if (!db_) return;
  // Statements still around are the caller's fault; close_v2 waits for them.
  sqlite3_close_v2(db_);
  db_ = nullptr;
}

SqlStatement SqlCipherConnection::Prepare(const QString& sql) {
  if (!db_) {
    error_ = SQLITE_MISUSE;
    errorText_ = QStringLiteral("not open");
    return SqlStatement(nullptr, SQLITE_MISUSE);
  }
  const QByteArray text = sql.toUtf8();
  sqlite3_stmt* stmt = nullptr;
  const int rc = sqlite3_prepare_v2(db_, text.constData(), int(text.size()) + 1, &stmt, nullptr);
  if (rc != SQLITE_OK) {
    Remember(rc);
    if (stmt) sqlite3_finalize(stmt);
    return SqlStatement(nullptr, rc);
  }
  return SqlStatement(stmt, 0);
}

bool SqlCipherConnection::Execute(const QString& sql) {
  if (!db_) {
    error_ = SQLITE_MISUSE;
    return false;
  }
  const int rc = sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, nullptr);
  Remember(rc);
  return rc == SQLITE_OK;
}

bool SqlCipherConnection::Begin() { return Execute(QStringLiteral("BEGIN IMMEDIATE")); }
bool SqlCipherConnection::Commit() { return Execute(QStringLiteral("COMMIT")); }
bool SqlCipherConnection::Rollback() {
  if (!db_ || sqlite3_get_autocommit(db_)) return false;  // nothing open to roll back
  return Execute(QStringLiteral("ROLLBACK"));
}

qint64 SqlCipherConnection::LastInsertId() const {
  return db_ ? sqlite3_last_insert_rowid(db_) : 0;
}

int SqlCipherConnection::Changes() const { return db_ ? sqlite3_changes(db_) : 0; }

bool SqlCipherConnection::ExportTo(const QString& path, const QString& key) {
  if (!db_) {
    error_ = SQLITE_MISUSE;
    return false;
  }
  // The connection may not create files, and attached files share its
  // rights: the copy starts as a new empty file, which is an empty database.
  {
    QFile target(path);
    if (!target.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
      error_ = SQLITE_CANTOPEN;
      errorText_ = target.errorString();
      return false;
    }
  }
  SqlStatement attach = Prepare(QStringLiteral("ATTACH DATABASE ? AS compacted KEY ?"));
  attach.Bind(1, path).Bind(2, key);
  if (!attach.Run()) {
    Remember(attach.Error() ? attach.Error() : SQLITE_ERROR);
    return false;
  }
  SqlStatement copy = Prepare(QStringLiteral("SELECT sqlcipher_export('compacted')"));
  const bool copied = copy.Run();
  const int copyError = copy.Error();
  copy = SqlStatement();
  const bool detached = Execute(QStringLiteral("DETACH DATABASE compacted"));
  if (!copied) {
    Remember(copyError ? copyError : SQLITE_ERROR);
    return false;
  }
  return detached;
}

// ---- SqlTransaction -------------------------------------------------------

SqlTransaction::SqlTransaction(SqlCipherConnection& connection) : connection_(connection) {
  active_ = connection_.Begin();
}

SqlTransaction::~SqlTransaction() {
  if (active_) connection_.Rollback();
}

bool SqlTransaction::Commit() {
  if (!active_) return false;
  if (!connection_.Commit()) return false;  // still active: the destructor rolls back
  active_ = false;
  return true;
}

}  // namespace platform
