#include "platform/MetafileDecoder.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMutex>
#include <QProcess>
#include <atomic>
#include <csignal>

namespace platform {

namespace {

const char kHelperName[] = "vistrel-decode";

// The helper's exit codes (see its main): drawn, not drawable, bad
// arguments or unreadable file, out of memory.
constexpr int kExitDrawn = 0;
constexpr int kExitUnreadable = 2;
constexpr int kExitOutOfMemory = 3;

// How often a waiting decode looks whether its picture is still wanted.
constexpr int kWaitSliceMs = 50;
// How long a killed helper is given to be reaped.
constexpr int kReapMs = 1000;

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

std::atomic<qint64>& MemoryLimit() {
  static std::atomic<qint64> limit{qint64(1) << 30};
  return limit;
}

bool IsProgram(const QString& path) {
  const QFileInfo info(path);
  return info.isFile() && info.isExecutable();
}

// The ceiling given to the helper: the configured one, but never above
// what this process may take (a child cannot raise its hard limit).
rlim_t HelperAddressSpace() {
  rlim_t wanted = rlim_t(MemoryLimit().load());
  rlimit own{};
  if (getrlimit(RLIMIT_AS, &own) == 0 && own.rlim_max != RLIM_INFINITY && own.rlim_max < wanted)
    wanted = own.rlim_max;
  return wanted;
}

// Kills the helper and whatever it started (it leads a process group of its
// own), then reaps it.
void Stop(QProcess& helper) {
  const qint64 pid = helper.processId();
  if (pid > 0) ::kill(-pid_t(pid), SIGKILL);
  helper.kill();
  helper.waitForFinished(kReapMs);
}

DecodeOutcome OutcomeOfExit(const QProcess& helper) {
  if (helper.exitStatus() == QProcess::CrashExit) {
    // After a crash the exit code holds the signal. A kill that did not
    // come from here is the system reclaiming memory: that depends on the
    // machine's state, not only on the file, so it counts as running out
    // of memory, like hitting the ceiling, and is never recorded as the
    // file's failure. Any other crash is the file's doing.
    return helper.exitCode() == SIGKILL ? DecodeOutcome::OutOfMemory : DecodeOutcome::NotAPicture;
  }
  switch (helper.exitCode()) {
    case kExitDrawn:
      return DecodeOutcome::Decoded;
    case kExitUnreadable:
      return DecodeOutcome::Unreadable;
    case kExitOutOfMemory:
      return DecodeOutcome::OutOfMemory;
    default:
      return DecodeOutcome::NotAPicture;
  }
}

}  // namespace

void SetDecoderFolder(const QString& folder) {
  QMutexLocker hold(&FolderLock());
  FallbackFolder() = folder;
}

void SetDecoderTimeLimit(int milliseconds) { TimeLimit() = qMax(1, milliseconds); }

int DecoderTimeLimit() { return TimeLimit(); }

void SetDecoderMemoryLimit(qint64 bytes) { MemoryLimit() = qMax<qint64>(1 << 20, bytes); }

qint64 DecoderMemoryLimit() { return MemoryLimit(); }

QString DecoderProgramPath() {
  const QString beside = QCoreApplication::applicationDirPath() + "/" + kHelperName;
  if (IsProgram(beside)) return beside;
  QMutexLocker hold(&FolderLock());
  if (FallbackFolder().isEmpty()) return QString();
  const QString fallback = FallbackFolder() + "/" + kHelperName;
  return IsProgram(fallback) ? fallback : QString();
}

DecodeOutcome DecodeMetafile(const QString& path, const QSize& fitInto, QImage& picture,
                             const std::function<bool()>& stillWanted) {
  const auto wanted = [&stillWanted] { return !stillWanted || stillWanted(); };
  const QString program = DecoderProgramPath();
  if (program.isEmpty()) return DecodeOutcome::HelperMissing;
  if (!wanted()) return DecodeOutcome::Cancelled;
  QStringList arguments;
  if (fitInto.isValid() && !fitInto.isEmpty())
    arguments << "--fit" << QStringLiteral("%1x%2").arg(fitInto.width()).arg(fitInto.height());
  arguments << "--" << path;

  QProcess helper;
  helper.setProcessChannelMode(QProcess::SeparateChannels);
  helper.setStandardErrorFile(QProcess::nullDevice());
  helper.setStandardInputFile(QProcess::nullDevice());
  const rlim_t addressSpace = HelperAddressSpace();
  const pid_t parent = ::getpid();
  // Runs in the child between fork and exec: plain system calls only. The
  // helper gets a group of its own (so a kill reaches anything it starts),
  // dies with the thread that waits for it, and gets its memory ceiling.
  helper.setChildProcessModifier([addressSpace, parent] {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) ::_exit(127);
    const rlimit memory{addressSpace, addressSpace};
    ::setrlimit(RLIMIT_AS, &memory);
  });
  const int limit = TimeLimit();
  QElapsedTimer clock;
  clock.start();
  helper.start(program, arguments, QIODevice::ReadOnly);
  if (!helper.waitForStarted(limit)) {
    Stop(helper);
    return helper.error() == QProcess::FailedToStart ? DecodeOutcome::HelperMissing
                                                     : DecodeOutcome::TimedOut;
  }
  // The wait is cut into slices, so that a picture nobody wants any more
  // (a page turned, the program closing) frees its worker at once.
  while (!helper.waitForFinished(kWaitSliceMs)) {
    if (helper.state() == QProcess::NotRunning) break;
    if (!wanted()) {
      Stop(helper);
      return DecodeOutcome::Cancelled;
    }
    if (clock.elapsed() >= limit) {
      Stop(helper);
      return DecodeOutcome::TimedOut;
    }
  }
  const DecodeOutcome outcome = OutcomeOfExit(helper);
  if (outcome != DecodeOutcome::Decoded) return outcome;
  QImage decoded;
  if (!decoded.loadFromData(helper.readAllStandardOutput(), "PNG")) return DecodeOutcome::NotAPicture;
  picture = decoded;
  return DecodeOutcome::Decoded;
}

}  // namespace platform
