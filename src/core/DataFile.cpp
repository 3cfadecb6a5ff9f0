#include "core/DataFile.h"

#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QPair>
#include <filesystem>
#include <system_error>

#include "platform/SqlCipherConnection.h"
#include "platform/SystemMessage.h"
#include "core/AppState.h"
#include "core/DataFileKey.h"
#include "core/Database.h"
#include "core/Trace.h"

namespace {

const char* const MissingMessage = "The Vistrel data file is missing or corrupted!";

void ShowMissingMessage() {
  platform::ShowSystemMessage(QString::fromLatin1(MissingMessage), QStringLiteral("Vistrel"),
                              platform::MessageIcon::Stop);
}

using TableCounts = QList<QPair<QString, qint64>>;

QString QuotedName(const QString& name) {
  QString quoted = name;
  quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
  return QLatin1Char('"') + quoted + QLatin1Char('"');
}

// The tables of an open file with their row counts, by name; false when any
// of it cannot be read.
bool ReadTableCounts(platform::SqlCipherConnection& connection, TableCounts& counts) {
  QStringList names;
  {
    platform::SqlStatement list = connection.Prepare(
        QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"));
    while (list.Next()) names << list.Text(0);
    if (!list.IsValid() || list.Error() != 0) return false;
  }
  for (const QString& name : names) {
    platform::SqlStatement count =
        connection.Prepare(QStringLiteral("SELECT count(*) FROM ") + QuotedName(name));
    if (!count.Next()) return false;
    counts.append({name, count.Int(0)});
  }
  return true;
}

bool IntegrityIsOk(platform::SqlCipherConnection& connection) {
  platform::SqlStatement check = connection.Prepare(QStringLiteral("PRAGMA integrity_check"));
  if (!check.Next()) return false;
  const bool ok = check.Text(0) == QLatin1String("ok");
  return ok && !check.Next() && check.Error() == 0;
}

}  // namespace

void RemoveLeftoverCompaction(const QString& tempPath) {
  // The engine's journal of the copy goes too: a stale one would be played
  // back into the next copy made under that name.
  for (const QString& path : {tempPath, tempPath + QStringLiteral("-journal")})
    if (QFileInfo(path).isFile() || QFileInfo(path).isSymLink()) QFile::remove(path);
}

bool OpenDataFile(const std::function<void(const QString&)>& stage) {
  if (stage) stage(QStringLiteral("PLEASE WAIT... Opening data file"));
  // A compaction cut off by the end of the last run leaves its copy; the
  // data file itself was never touched by it.
  RemoveLeftoverCompaction(DataFileTempPath());
  const QString path = DataFilePath();
  if (!MakeUserDataFile() || !QFileInfo(path).isFile()) {
    ShowMissingMessage();
    return false;
  }
  if (App().DatabaseConnection) {
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
  }
  Trace("opening data file");
  auto* db = new Database;
  // A first failure gets one more try before the file is given up.
  if (!db->Open(path) && !db->Open(path)) {
    delete db;
    ShowMissingMessage();
    return false;
  }
  App().DatabaseConnection = db;
  Trace("data file opened");
  return true;
}

void CloseDataFile() {
  if (App().DatabaseConnection) {
    App().DatabaseConnection->Close();
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
  }
  CompactDataFile(DataFilePath(), DataFileTempPath());
}

bool CompactDataFile(const QString& dataPath, const QString& tempPath) {
  const QString key = QString::fromLatin1(DataFilePassword);
  RemoveLeftoverCompaction(tempPath);
  const QFileInfo data(dataPath);
  // A file the user made read-only, or one reached through a link, is left
  // alone: replacing it would undo the user's arrangement.
  if (!data.isFile() || data.isSymLink() || !data.isWritable() || QFileInfo::exists(tempPath))
    return false;

  const auto giveUp = [&tempPath]() {
    QFile::remove(tempPath);
    return false;
  };

  TableCounts before, after;
  {
    platform::SqlCipherConnection source;
    if (!source.Open(dataPath, key) || !ReadTableCounts(source, before) || before.isEmpty())
      return giveUp();
    if (!source.ExportTo(tempPath, key)) return giveUp();
  }
  {
    platform::SqlCipherConnection copy;
    if (!copy.Open(tempPath, key) || !IntegrityIsOk(copy) || !ReadTableCounts(copy, after))
      return giveUp();
  }
  if (after != before) return giveUp();
  // The engine has synced the copy to disk when its export committed.
  if (!QFile::setPermissions(tempPath, data.permissions())) return giveUp();

  std::error_code error;
  std::filesystem::rename(QFile::encodeName(tempPath).toStdString(),
                          QFile::encodeName(dataPath).toStdString(), error);
  if (error) return giveUp();
  return true;
}
