// Times the file search on a large tree against the system's `find` over
// the same name masks, and prints both, their ratio and the peak resident
// memory of the process.
//
//   SearchBench [tree folder]
//
// The tree (default /tmp/vistrel-search-bench) holds 200,000 files in 2,000
// folders (40 folders of 50 subfolders of 100 files, of several types,
// about one in ten with "photo" in its name). It is made at the first run
// and kept for the next ones. The search looks for "*photo*" among the
// pictures; each side runs three times on a warm cache and the best time
// counts.

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <algorithm>
#include <cstdio>

#include "albums/SearchEngine.h"

namespace {

constexpr int TopFolders = 40, SubFolders = 50, FilesPerFolder = 100;

double PeakResidentMb() {
  struct rusage usage {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024.0;  // kilobytes on Linux
}

// Makes the tree unless a finished one is there.
bool MakeTree(const QString& root) {
  const QString done = root + "/.complete";
  if (QFile::exists(done)) return true;
  static const char* const extensions[] = {".jpg", ".png", ".bmp", ".txt", ".mp3", ".gif", ".jpeg", ".avi", ".doc", ".JPG"};
  std::printf("making the tree in %s ...\n", qPrintable(root));
  for (int t = 0; t < TopFolders; ++t) {
    for (int s = 0; s < SubFolders; ++s) {
      const QString folder = QString("%1/top%2/sub%3").arg(root).arg(t).arg(s);
      if (!QDir().mkpath(folder)) return false;
      for (int f = 0; f < FilesPerFolder; ++f) {
        const QString name = QString("%1%2%3").arg(f % 10 == 3 ? "holiday photo " : "image ").arg(f).arg(extensions[(f / 10 + s) % 10]);
        const int fd = ::open(QFile::encodeName(folder + "/" + name).constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (fd < 0) return false;
        ::close(fd);
      }
    }
  }
  QFile marker(done);
  return marker.open(QIODevice::WriteOnly);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const QStringList args = app.arguments();
  const QString root = args.size() > 1 ? args[1] : QString("/tmp/vistrel-search-bench");
  if (!MakeTree(root)) {
    std::fprintf(stderr, "Could not make the tree in %s\n", qPrintable(root));
    return 1;
  }

  const QString patterns = SearchPatternList("*photo*", 1);
  QStringList findArguments{root, "("};
  for (const QString& pattern : patterns.split(';', Qt::SkipEmptyParts)) {
    if (findArguments.size() > 2) findArguments << "-o";
    findArguments << "-iname" << pattern;
  }
  findArguments << ")";

  double bestSearch = 1e9, bestFind = 1e9;
  qsizetype searchCount = 0, findCount = 0;
  for (int round = 0; round < 3; ++round) {
    QProcess find;
    QElapsedTimer timer;
    timer.start();
    find.start("find", findArguments);
    find.waitForFinished(-1);
    const QByteArray output = find.readAllStandardOutput();
    bestFind = std::min(bestFind, timer.nsecsElapsed() / 1e6);
    findCount = output.count('\n');

    QStringList found;
    SearchSink sink;
    sink.Found = [&found](const QString& path) { found.append(path); };
    timer.restart();
    SearchFiles(root, patterns, false, sink);
    bestSearch = std::min(bestSearch, timer.nsecsElapsed() / 1e6);
    searchCount = found.size();
  }

  std::printf("tree: %s, %d files in %d folders\n", qPrintable(root), TopFolders * SubFolders * FilesPerFolder,
              TopFolders * SubFolders);
  std::printf("patterns: %s\n", qPrintable(patterns));
  std::printf("search: %8.1f ms, %lld files found\n", bestSearch, static_cast<long long>(searchCount));
  std::printf("find:   %8.1f ms, %lld files found\n", bestFind, static_cast<long long>(findCount));
  std::printf("ratio search / find: %.2f (target at most 1.30)\n", bestSearch / bestFind);
  std::printf("peak resident memory: %.1f MB (target under 150 MB)\n", PeakResidentMb());
  return searchCount == findCount ? 0 : 2;
}
