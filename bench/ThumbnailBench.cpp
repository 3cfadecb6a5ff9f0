// Fills a page of 40 large photographs with thumbnails, cold (empty cache)
// and warm (cache filled), and runs vipsthumbnail over the same files for
// comparison. Prints the seconds of each, the ratio vips / cold and the
// peak memory of this process.
//
//   ThumbnailBench [folder]
//
// The folder (default /tmp/vistrel-bench-photos) is filled once with 40
// JPEGs of 6000 x 4000 at quality 90 whose content (soft shapes over
// gradients, fine texture and sensor-like noise) compresses like a photo.
// They are made by a child process, so that the full-size pictures do not
// count in this process's peak memory.
//
// The fill is the browser's own page fill, over a window offscreen: from
// the listing of the folder to the last cell showing its picture.

#include <sys/resource.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QProcess>
#include <QTemporaryDir>
#include <QtConcurrent/QtConcurrentMap>
#include <cmath>
#include <cstdio>
#include <functional>

#include "browser/ThumbnailLoader.h"
#include "BenchWorld.h"
#include "browser/Thumbnails.h"
#include "catalogue/MediaTypes.h"
#include "core/AppState.h"
#include "platform/Twips.h"

namespace {

constexpr int PhotoCount = 40;
constexpr int PhotoWidth = 6000;
constexpr int PhotoHeight = 4000;
constexpr int PhotoQuality = 90;
// The cell of a 1440-twip thumbnail: 1380 twips.
constexpr int CellPixels = twips::ToPixels(1440 - 60);

const char MakePhotosWord[] = "--make-photos";

// ---- The photographs -------------------------------------------------------

// A small, fast random source: the same photos on every machine.
struct XorShift {
  quint64 State;
  quint32 Next() {
    State ^= State << 13;
    State ^= State >> 7;
    State ^= State << 17;
    return quint32(State >> 32);
  }
};

struct Blob {
  double X, Y, Radius, R, G, B;
};

QImage MakePhotoImage(int seed) {
  XorShift random{0x9E3779B97F4A7C15ull ^ (quint64(seed + 1) * 0x2545F4914F6CDD1Dull)};
  const auto unit = [&] { return (random.Next() & 0xFFFFFF) / double(0x1000000); };
  const double topR = 40 + 180 * unit(), topG = 60 + 160 * unit(), topB = 90 + 160 * unit();
  const double bottomR = 20 + 120 * unit(), bottomG = 30 + 120 * unit(), bottomB = 10 + 90 * unit();
  std::vector<Blob> blobs(12);
  for (Blob& blob : blobs)
    blob = {unit() * PhotoWidth,  unit() * PhotoHeight, 200 + unit() * 1200,
            (unit() - 0.5) * 160, (unit() - 0.5) * 160, (unit() - 0.5) * 160};
  const double waveX = 0.002 + unit() * 0.02, waveY = 0.002 + unit() * 0.02, phase = unit() * 6.28;

  QImage image(PhotoWidth, PhotoHeight, QImage::Format_RGB888);
  for (int y = 0; y < PhotoHeight; ++y) {
    uchar* line = image.scanLine(y);
    const double fy = double(y) / PhotoHeight;
    for (int x = 0; x < PhotoWidth; ++x) {
      double r = topR + (bottomR - topR) * fy, g = topG + (bottomG - topG) * fy,
             b = topB + (bottomB - topB) * fy;
      for (const Blob& blob : blobs) {
        const double dx = x - blob.X, dy = y - blob.Y;
        const double d2 = (dx * dx + dy * dy) / (blob.Radius * blob.Radius);
        if (d2 < 1) {
          const double weight = (1 - d2) * (1 - d2);
          r += blob.R * weight;
          g += blob.G * weight;
          b += blob.B * weight;
        }
      }
      // Texture, coarse everywhere and fine where the detail map is high
      // (like foliage or fabric), and the grain of a sensor.
      const double detail = 0.5 + 0.5 * std::sin(x * 0.0011 + phase) * std::sin(y * 0.0017 - phase);
      const double texture = 10 * std::sin(x * waveX + 3 * std::sin(y * waveY)) * std::sin(y * waveY * 1.7) +
                             detail * 32 * std::sin(x * 0.45 + 2 * std::sin(y * 0.05)) *
                                 std::sin(y * 0.38 + 2 * std::sin(x * 0.03));
      const quint32 noise = random.Next();
      const auto grain = [&](int shift) {
        return int((noise >> shift) & 15) - 8 + int((noise >> (shift + 4)) & 15) - 7;
      };
      line[3 * x] = uchar(qBound(0.0, r + texture + grain(0), 255.0));
      line[3 * x + 1] = uchar(qBound(0.0, g + texture + grain(8), 255.0));
      line[3 * x + 2] = uchar(qBound(0.0, b + texture + grain(16), 255.0));
    }
  }
  return image;
}

QString PhotoPath(const QString& folder, int index) {
  return QString("%1/photo%2.jpg").arg(folder).arg(index + 1, 2, 10, QChar('0'));
}

QStringList PhotoPaths(const QString& folder) {
  QStringList paths;
  for (int i = 0; i < PhotoCount; ++i) paths << PhotoPath(folder, i);
  return paths;
}

// The child process: makes the photos that are missing.
int MakePhotos(const QString& folder) {
  QDir().mkpath(folder);
  QVector<int> missing;
  for (int i = 0; i < PhotoCount; ++i)
    if (!QFile::exists(PhotoPath(folder, i))) missing << i;
  std::printf("Making %d photos in %s ...\n", int(missing.size()), qPrintable(folder));
  std::fflush(stdout);
  std::atomic<bool> ok{true};
  QtConcurrent::blockingMap(missing, [&](int index) {
    const QString target = PhotoPath(folder, index);
    QImageWriter writer(target + ".part", "jpeg");
    writer.setQuality(PhotoQuality);
    if (!writer.write(MakePhotoImage(index)) || !QFile::rename(target + ".part", target)) ok = false;
  });
  return ok ? 0 : 1;
}

bool EnsurePhotos(const QString& folder) {
  for (const QString& path : PhotoPaths(folder))
    if (!QFile::exists(path))
      return QProcess::execute(QCoreApplication::applicationFilePath(), {MakePhotosWord, folder}) == 0;
  return true;
}

// Reads every file once so that each run finds them in the page cache.
void ReadThrough(const QStringList& paths) {
  QByteArray buffer(1 << 20, Qt::Uninitialized);
  for (const QString& path : paths) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) continue;
    while (file.read(buffer.data(), buffer.size()) > 0) {
    }
  }
}

// ---- Measuring -------------------------------------------------------------

// Fills one page with the thumbnails of paths; returns when it is complete.
using PageFill = std::function<void(const QStringList& paths)>;

// Processor seconds, user and system, of this process or of its reaped children.
double CpuSeconds(int who) {
  rusage usage{};
  getrusage(who, &usage);
  return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
         double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// Wall-clock and processor seconds of one run.
struct Timing {
  double Seconds = -1;
  double CpuSeconds = -1;
};

Timing TimeFill(const PageFill& fill, const QStringList& paths) {
  const double cpu = CpuSeconds(RUSAGE_SELF);
  QElapsedTimer clock;
  clock.start();
  fill(paths);
  return {clock.nsecsElapsed() / 1e9, CpuSeconds(RUSAGE_SELF) - cpu};
}

// The page fill of the browser itself: the folder is listed and its first
// page of pictures filled; returns when the last cell shows its picture.
int BrowserFill(Thumbnails& browser, const QString& folder) {
  QEventLoop loop;
  const auto done = QObject::connect(&browser, &Thumbnails::PageFilled, &loop, &QEventLoop::quit);
  App().CurrentFolder = folder;
  browser.ChangeDirectory();
  if (browser.PageFilling()) loop.exec();
  QObject::disconnect(done);
  int shown = 0;
  for (int cell = 0; cell < browser.CellCount(PicturesTab); ++cell)
    if (!browser.Cell(PicturesTab, cell)->isHidden()) ++shown;
  return shown;
}

// vipsthumbnail as one process over all files, writing into a fresh folder.
Timing TimeVips(const QStringList& paths, QString& command) {
  QTemporaryDir out;
  QStringList arguments{"-s", "160", "-o", out.path() + "/%s.jpg"};
  arguments += paths;
  command = "vipsthumbnail " + arguments.mid(0, 4).join(' ') + " <the 40 files>";
  QProcess vips;
  vips.setProcessChannelMode(QProcess::ForwardedChannels);
  const double cpu = CpuSeconds(RUSAGE_CHILDREN);
  QElapsedTimer clock;
  clock.start();
  vips.start("vipsthumbnail", arguments);
  if (!vips.waitForStarted() || !vips.waitForFinished(-1) || vips.exitCode() != 0) return {};
  const Timing timing{clock.nsecsElapsed() / 1e9, CpuSeconds(RUSAGE_CHILDREN) - cpu};
  const int made = int(QDir(out.path()).entryList(QDir::Files).size());
  if (made != paths.size()) return {};
  return timing;
}


}  // namespace

int main(int argc, char** argv) {
  // A world of its own: settings and thumbnail cache in temporary folders.
  QTemporaryDir world;
  EnterBenchWorld(world);
  QApplication app(argc, argv);
  const QStringList args = app.arguments();
  if (args.size() > 2 && args[1] == MakePhotosWord) return MakePhotos(args[2]);
  const QString folder = args.size() > 1 ? args[1] : QString("/tmp/vistrel-bench-photos");
  if (!EnsurePhotos(folder)) {
    std::fprintf(stderr, "Could not make the photos in %s\n", qPrintable(folder));
    return 1;
  }
  const QStringList paths = PhotoPaths(folder);
  ReadThrough(paths);

  // A browser whose page holds the 40 photos, first listing an empty folder.
  Thumbnails browser;
  LoadBenchBrowser(browser, world);
  if (browser.Tab(PicturesTab).PageSize < PhotoCount) {
    std::fprintf(stderr, "The page holds only %d pictures\n", browser.Tab(PicturesTab).PageSize);
    return 1;
  }

  int made = 0;
  const PageFill fill = [&](const QStringList&) { made = BrowserFill(browser, folder); };
  ThumbnailLoader::ResetDecodeCount();
  const Timing cold = TimeFill(fill, paths);
  const int coldMade = made, coldDecodes = ThumbnailLoader::DecodeCount();
  ThumbnailLoader::ResetDecodeCount();
  const Timing warm = TimeFill(fill, paths);
  const int warmMade = made, warmDecodes = ThumbnailLoader::DecodeCount();
  QString vipsCommand;
  const Timing vips = TimeVips(paths, vipsCommand);

  std::printf("%d photos of %d x %d, cell %d px, %d workers\n", PhotoCount, PhotoWidth, PhotoHeight,
              CellPixels, ThumbnailLoader().WorkerCount());
  std::printf("(filled through the browser's page fill, %d cells a page)\n", int(browser.Tab(PicturesTab).PageSize));
  std::printf("cold fill:   %7.3f s  (processor %6.3f s; %d thumbnails, %d decodes)\n", cold.Seconds,
              cold.CpuSeconds, coldMade, coldDecodes);
  std::printf("warm fill:   %7.3f s  (processor %6.3f s; %d thumbnails, %d decodes)\n", warm.Seconds,
              warm.CpuSeconds, warmMade, warmDecodes);
  if (vips.Seconds < 0) {
    std::printf("vips:        failed (%s)\n", qPrintable(vipsCommand));
  } else {
    std::printf("vips:        %7.3f s  (processor %6.3f s; %s)\n", vips.Seconds, vips.CpuSeconds,
                qPrintable(vipsCommand));
    std::printf("vips / cold: %.2f\n", vips.Seconds / cold.Seconds);
  }
  std::printf("peak memory: %.1f MB\n", PeakMemoryMb());
  return 0;
}
