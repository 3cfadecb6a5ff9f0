#include "platform/MetafileDecoder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMutex>
#include <QProcess>
#include <atomic>

namespace platform {

namespace {

const char kHelperName[] = "vistrel-decode";

QMutex& FolderLock() {
  static QMutex lock;
  return lock;
}

QString& FallbackFolder() {
  static QString folder;
  return folder;
}

std::atomic<int>& TimeLimit() {
  static std::atomic<int> limit{5000};
  return limit;
}

bool IsProgram(const QString& path) {
  const QFileInfo info(path);
  return info.isFile() && info.isExecutable();
}

}  // namespace

void SetDecoderFolder(const QString& folder) {
  QMutexLocker hold(&FolderLock());
  FallbackFolder() = folder;
}

void SetDecoderTimeLimit(int milliseconds) { TimeLimit() = qMax(1, milliseconds); }

int DecoderTimeLimit() { return TimeLimit(); }

QString DecoderProgramPath() {
  const QString beside = QCoreApplication::applicationDirPath() + "/" + kHelperName;
  if (IsProgram(beside)) return beside;
  QMutexLocker hold(&FolderLock());
  if (FallbackFolder().isEmpty()) return QString();
  const QString fallback = FallbackFolder() + "/" + kHelperName;
  return IsProgram(fallback) ? fallback : QString();
}

bool DecodeMetafile(const QString& path, const QSize& fitInto, QImage& picture) {
  const QString program = DecoderProgramPath();
  if (program.isEmpty()) return false;
  QStringList arguments;
  if (fitInto.isValid() && !fitInto.isEmpty())
    arguments << "--fit" << QStringLiteral("%1x%2").arg(fitInto.width()).arg(fitInto.height());
  arguments << "--" << path;

  QProcess helper;
  helper.setProcessChannelMode(QProcess::SeparateChannels);
  helper.setStandardErrorFile(QProcess::nullDevice());
  helper.setStandardInputFile(QProcess::nullDevice());
  const int limit = TimeLimit();
  QElapsedTimer clock;
  clock.start();
  helper.start(program, arguments, QIODevice::ReadOnly);
  if (!helper.waitForStarted(limit)) return false;
  if (!helper.waitForFinished(int(qMax<qint64>(1, limit - clock.elapsed())))) {
    helper.kill();
    helper.waitForFinished(1000);
    return false;
  }
  if (helper.exitStatus() != QProcess::NormalExit || helper.exitCode() != 0) return false;
  QImage decoded;
  if (!decoded.loadFromData(helper.readAllStandardOutput(), "PNG")) return false;
  picture = decoded;
  return true;
}

}  // namespace platform
