// Lists a folder of 100,000 files in the browser and measures the time from
// the start of the listing to the first page shown in full (every picture
// cell of the Pictures page showing its thumbnail), first with an empty
// thumbnail cache and then with a filled one, and the peak memory.
//
//   FirstPageBench [folder]
//
// The folder (default /tmp/vistrel-bench-firstpage) is made once: 40,000 small
// real JPEG photographs (one picture, copied) and 20,000 each of videos,
// audios and documents (empty files), with varied names.

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <cstdio>

#include "BenchWorld.h"
#include "browser/Thumbnails.h"
#include "catalogue/MediaTypes.h"
#include "controls/NewTabControl.h"
#include "core/AppState.h"

namespace {

constexpr int Pictures = 40000;
constexpr int OthersEach = 20000;

bool MakeFolder(const QString& folder) {
  QDir().mkpath(folder);
  int present = 0;
  for (QDirIterator it(folder, QDir::Files); it.hasNext(); it.next()) ++present;
  if (present >= Pictures + 3 * OthersEach) return true;
  std::printf("Making the files in %s ...\n", qPrintable(folder));
  QImage photo(640, 480, QImage::Format_RGB32);
  QPainter painter(&photo);
  QLinearGradient gradient(0, 0, 640, 480);
  gradient.setColorAt(0, QColor(30, 90, 160));
  gradient.setColorAt(1, QColor(230, 180, 60));
  painter.fillRect(photo.rect(), gradient);
  painter.end();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  photo.save(&buffer, "JPEG", 85);
  const auto write = [&folder](const QString& name, const QByteArray& content) {
    QFile file(folder + "/" + name);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
  };
  for (int i = 0; i < Pictures; ++i)
    if (!write(QString("Holiday %1.jpg").arg(i, 6, 10, QChar('0')), bytes)) return false;
  const char* const others[] = {"avi", "mp3", "txt"};
  for (const char* extension : others)
    for (int i = 0; i < OthersEach; ++i)
      if (!write(QString("file %1.%2").arg(i, 6, 10, QChar('0')).arg(extension), QByteArray()))
        return false;
  return true;
}


// Lists the folder and waits for the first page of pictures; seconds.
double FirstPage(Thumbnails& browser, const QString& folder) {
  QEventLoop loop;
  const auto done = QObject::connect(&browser, &Thumbnails::PageFilled, &loop, &QEventLoop::quit);
  QElapsedTimer clock;
  clock.start();
  App().CurrentFolder = folder;
  browser.ChangePattern();
  if (browser.PageFilling()) loop.exec();
  const double seconds = clock.nsecsElapsed() / 1e9;
  QObject::disconnect(done);
  return seconds;
}

}  // namespace

int main(int argc, char** argv) {
  QTemporaryDir world;
  EnterBenchWorld(world);
  QApplication app(argc, argv);
  const QStringList args = app.arguments();
  const QString folder = args.size() > 1 ? args[1] : QString("/tmp/vistrel-bench-firstpage");
  if (!MakeFolder(folder)) {
    std::fprintf(stderr, "Could not make the files in %s\n", qPrintable(folder));
    return 1;
  }
  Thumbnails browser;
  LoadBenchBrowser(browser, world);

  const double cold = FirstPage(browser, folder);
  const double warm = FirstPage(browser, folder);
  std::printf("%d files; captions %s | %s | %s | %s; %d cells a page\n",
              Pictures + 3 * OthersEach, qPrintable(browser.ThumbnailTabs->Caption(1)),
              qPrintable(browser.ThumbnailTabs->Caption(2)),
              qPrintable(browser.ThumbnailTabs->Caption(3)),
              qPrintable(browser.ThumbnailTabs->Caption(4)), int(browser.Tab(1).PageSize));
  std::printf("listing to first page shown, empty cache:  %.3f s\n", cold);
  std::printf("listing to first page shown, filled cache: %.3f s\n", warm);
  std::printf("peak memory: %.1f MB\n", PeakMemoryMb());
  return 0;
}
