// Wipes a large sparse file through WipeFile and prints the peak resident
// memory of the process before and after, and the time the wipe took: the
// passes work through a fixed buffer, so the peak must stay where it was
// whatever the file's size.
//
//   WipeBench [folder] [megabytes]
//
// The file (default 1024 MB) is made in the folder (default: a new
// temporary folder) and is gone afterwards.

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>

#include "core/AppState.h"
#include "fileops/FileOperations.h"

namespace {

// The peak resident memory of this process so far, in megabytes.
double PeakResidentMb() {
  struct rusage usage {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024.0;  // kilobytes on Linux
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  const QStringList args = app.arguments();
  QTemporaryDir temporary;
  const QString folder = args.size() > 1 ? args[1] : temporary.path();
  const qint64 megabytes = args.size() > 2 ? args[2].toLongLong() : 1024;
  const QString path = folder + "/wipe-bench.bin";

  QDir().mkpath(folder);
  const int fd = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  // A length without data: the file starts sparse.
  if (fd < 0 || ::ftruncate(fd, off_t(megabytes) << 20) != 0) {
    std::fprintf(stderr, "Could not make %s\n", qPrintable(path));
    return 1;
  }
  ::close(fd);

  std::printf("file: %s, %lld MB, sparse\n", qPrintable(path), static_cast<long long>(megabytes));
  std::printf("peak resident before the wipe: %8.1f MB\n", PeakResidentMb());
  QElapsedTimer timer;
  timer.start();
  const bool gone = WipeFile(path);
  const double seconds = timer.nsecsElapsed() / 1e9;
  std::printf("peak resident after the wipe:  %8.1f MB\n", PeakResidentMb());
  std::printf("wipe %s in %.1f s (3 s of it the fixed wait); three passes written at %.0f MB/s\n",
              gone && !QFile::exists(path) ? "done, file gone" : "FAILED", seconds,
              3.0 * double(megabytes) / std::max(seconds - 3.0, 0.001));
  return gone ? 0 : 1;
}
