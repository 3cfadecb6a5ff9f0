// Saves an album of 10,000 pictures in a fresh data file and opens it in the
// browser: times the save (one transaction, as the album editor saves), a
// second save that replaces those rows, the reading of the rows, and the
// time from the start of the listing to the album's first page shown in
// full (every picture cell of the Pictures page showing its thumbnail),
// first with an empty thumbnail cache and then with a filled one.
//
//   AlbumBench [folder]
//
// The pictures (default /tmp/vistrel-bench-album) are made once: 10,000 tiny
// real JPEG photographs in 20 folders of 500. The data file is a copy of the
// one the build makes, placed in a temporary program folder and opened as
// the program opens its own.

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <cstdio>

#include "BenchWorld.h"
#include "browser/Thumbnails.h"
#include "controls/NewImage.h"
#include "controls/NewTabControl.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Statements.h"

namespace {

constexpr int Folders = 20;
constexpr int PerFolder = 500;
constexpr int Pictures = Folders * PerFolder;
const char* const AlbumName = "Bench album";

double Seconds(const QElapsedTimer& clock) { return clock.nsecsElapsed() / 1e9; }

// The pictures' paths, in album order; the files are made unless a finished
// set is there.
QStringList MakePictures(const QString& root) {
  QStringList paths;
  for (int f = 0; f < Folders; ++f)
    for (int i = 0; i < PerFolder; ++i)
      paths << QString("%1/folder %2/Photo %3.jpg")
                   .arg(root)
                   .arg(f, 2, 10, QChar('0'))
                   .arg(f * PerFolder + i, 5, 10, QChar('0'));
  const QString done = root + "/.complete";
  if (QFile::exists(done)) return paths;

  std::printf("Making the pictures in %s ...\n", qPrintable(root));
  QImage photo(96, 72, QImage::Format_RGB32);
  QPainter painter(&photo);
  QLinearGradient gradient(0, 0, 96, 72);
  gradient.setColorAt(0, QColor(30, 90, 160));
  gradient.setColorAt(1, QColor(230, 180, 60));
  painter.fillRect(photo.rect(), gradient);
  painter.end();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  photo.save(&buffer, "JPEG", 85);
  for (const QString& path : paths) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) return {};
  }
  QFile marker(done);
  if (!marker.open(QIODevice::WriteOnly)) return {};
  return paths;
}

// Opens the album as the album window does (album mode, its id, its name as
// the folder on display, then the refresh's listing) and waits for the first
// page of pictures; seconds.
double OpenAlbum(Thumbnails& browser, qint32 id) {
  QEventLoop loop;
  const auto done = QObject::connect(&browser, &Thumbnails::PageFilled, &loop, &QEventLoop::quit);
  QElapsedTimer clock;
  clock.start();
  AppState& app = App();
  app.AlbumMode = true;
  app.SelectedAlbumId = id;
  app.CurrentFolder = AlbumName;
  browser.ChangePattern();
  if (browser.PageFilling()) loop.exec();
  const double seconds = Seconds(clock);
  QObject::disconnect(done);
  return seconds;
}

}  // namespace

int main(int argc, char** argv) {
  QTemporaryDir world;
  EnterBenchWorld(world);
  QApplication app(argc, argv);
  const QStringList args = app.arguments();
  const QString root = args.size() > 1 ? args[1] : QString("/tmp/vistrel-bench-album");
  const QStringList paths = MakePictures(root);
  if (paths.size() != Pictures) {
    std::fprintf(stderr, "Could not make the pictures in %s\n", qPrintable(root));
    return 1;
  }

  Thumbnails browser;
  LoadBenchBrowser(browser, world);
  if (!QFile::copy(QString(VISTREL_FRESH_DATA_FILE), DataFilePath()) ||
      !QFile::setPermissions(DataFilePath(), QFile::ReadOwner | QFile::WriteOwner) ||
      !OpenDataFile()) {
    std::fprintf(stderr, "Could not open a fresh data file from %s\n", VISTREL_FRESH_DATA_FILE);
    return 1;
  }
  Database& db = *App().DatabaseConnection;

  QElapsedTimer clock;
  clock.start();
  const qint32 id = SaveAlbum(db, 0, AlbumName, false, paths);
  const double save = Seconds(clock);
  if (id == 0) {
    std::fprintf(stderr, "The album was not saved\n");
    return 1;
  }
  QStringList reversed(paths.crbegin(), paths.crend());
  clock.restart();
  const bool saved = SavePlaylistFiles(db, id, reversed) && SavePlaylistFiles(db, id, paths);
  const double resave = Seconds(clock) / 2;
  clock.restart();
  const QStringList rows = SelectPlaylistFiles(db, id);
  const double read = Seconds(clock);
  if (!saved || rows != paths) {
    std::fprintf(stderr, "The album's rows did not come back as saved\n");
    return 1;
  }

  const double cold = OpenAlbum(browser, id);
  const double warm = OpenAlbum(browser, id);
  int shown = 0;
  for (NewImage* cell : browser.ThumbImage)
    if (cell->isVisible() && !cell->Picture().isNull()) ++shown;
  std::printf("%d album rows; captions %s | %s | %s | %s; %d cells a page\n", Pictures,
              qPrintable(browser.ThumbnailTabs->Caption(1)),
              qPrintable(browser.ThumbnailTabs->Caption(2)),
              qPrintable(browser.ThumbnailTabs->Caption(3)),
              qPrintable(browser.ThumbnailTabs->Caption(4)), int(browser.Tab(1).PageSize));
  std::printf("cells showing a picture after the fill: %d\n", shown);
  std::printf("new album saved (one transaction):           %.3f s  (target < 1 s)\n", save);
  std::printf("album rows replaced (one transaction):       %.3f s\n", resave);
  std::printf("album rows read back:                        %.3f s\n", read);
  std::printf("album opened to first page, empty cache:     %.3f s  (target < 0.5 s)\n", cold);
  std::printf("album opened to first page, filled cache:    %.3f s\n", warm);
  std::printf("peak memory: %.1f MB\n", PeakMemoryMb());

  delete App().DatabaseConnection;
  App().DatabaseConnection = nullptr;
  return save < 1.0 && cold < 0.5 ? 0 : 2;
}
