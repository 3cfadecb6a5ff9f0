// Lists a folder of many files through the browser's listing, once for each
// sort order and direction, and prints the time and the file-system calls a
// file each listing took.
//
//   ListingBench [folder] [count]
//
// The folder (default: "vistrel-listing-bench" in the temporary folder) is
// filled with `count` empty files (default 100,000) of varied names,
// extensions and lengths unless it holds that many already.

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <cstdio>

#include "browser/Listing.h"
#include "catalogue/MediaTypes.h"
#include "platform/DirectoryReader.h"
#include "core/AppState.h"

namespace {

const char* const Words[] = {"Holiday", "beach", "IMG", "dsc", "Family", "party", "Ärger",
                             "garden",  "snow",  "trip", "Mum's", "new year", "sunset", "zoo"};
const char* const Extensions[] = {"jpg", "JPG", "jpeg", "png", "gif", "bmp", "tif", "avi",
                                  "mpg", "mp4", "mp3", "wav", "mid", "txt", "pdf", "doc"};

bool MakeFiles(const QString& folder, int count) {
  QDir().mkpath(folder);
  const int present = int(QDir(folder).entryList(QDir::Files | QDir::Hidden).size());
  if (present >= count) return true;
  std::printf("Making %d files in %s ...\n", count - present, qPrintable(folder));
  QRandomGenerator random(4711);
  for (int i = present; i < count; ++i) {
    const QString name = QString("%1 %2_%3.%4")
                             .arg(QString::fromUtf8(Words[random.bounded(int(std::size(Words)))]))
                             .arg(random.bounded(100000))
                             .arg(i)
                             .arg(QLatin1String(Extensions[random.bounded(int(std::size(Extensions)))]));
    const QByteArray path = QFile::encodeName(folder + "/" + name);
    const int fd = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd < 0) return false;
    // Lengths without writing data: the files stay sparse.
    const bool sized = ::ftruncate(fd, off_t(random.bounded(5000000))) == 0;
    ::close(fd);
    if (!sized) return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const QStringList args = app.arguments();
  const QString folder = args.size() > 1 ? args[1] : QDir::tempPath() + "/vistrel-listing-bench";
  const int count = args.size() > 2 ? args[2].toInt() : 100000;
  if (count < 1 || !MakeFiles(folder, count)) {
    std::fprintf(stderr, "Could not make the files in %s\n", qPrintable(folder));
    return 1;
  }
  const qint64 files = QDir(folder).entryList(QDir::Files).size();

  FillMediaTables();
  FillExteriorTables();
  const MediaTableSet& tables = MediaTables();
  App().CurrentFolder = folder;
  App().AlbumMode = false;

  Listing listing;
  listing.Tab(PicturesTab).Pattern = PicturesPattern("11111111000000000001");
  listing.Tab(VideosTab).Pattern = VideosPattern("11110000000000000000", tables.ExteriorVideoExtensions);
  listing.Tab(AudiosTab).Pattern = AudiosPattern("11111100000000000000");
  AppendDocumentMasks(listing.Tab(DocumentsTab).Pattern, tables.DocumentExtensions);

  std::printf("%lld files in %s\n\n", static_cast<long long>(files), qPrintable(folder));
  std::printf("| order       | direction  | seconds | calls a file | pictures | videos | audios | documents |\n");
  std::printf("|-------------|------------|---------|--------------|----------|--------|--------|-----------|\n");
  const char* const orderNames[] = {"", "1 name", "2 extension", "3 date", "4 size"};
  for (qint16 order = 1; order <= 4; ++order) {
    for (bool descending : {false, true}) {
      App().SortOrderCode = order;
      App().SortDescendingFlag = descending;
      listing.File1.ForgetPath();  // read the folder afresh, as a refresh does
      platform::ResetFileSystemCallCount();
      QElapsedTimer timer;
      timer.start();
      listing.BuildLists(folder, {}, {});
      const double seconds = timer.nsecsElapsed() / 1e9;
      const double calls = double(platform::FileSystemCallCount()) / double(files);
      std::printf("| %-11s | %-10s | %7.3f | %12.2f | %8d | %6d | %6d | %9d |\n", orderNames[order],
                  descending ? "descending" : "ascending", seconds, calls,
                  listing.Tab(PicturesTab).Count, listing.Tab(VideosTab).Count,
                  listing.Tab(AudiosTab).Count, listing.Tab(DocumentsTab).Count);
    }
  }
  return 0;
}
