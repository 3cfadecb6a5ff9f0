// The picture viewer over a folder of large photographs: the cold open of a
// photo (the file out of the page cache), compared with djpeg decoding the
// same file at a quarter of its size; the walk with the Next button while
// the neighbour is decoded ahead; and the peak memory of this process.
//
//   ViewerBench [folder]
//
// The folder (default /tmp/vistrel-bench-viewer) is filled once with 21
// JPEGs of 6000 x 4000 at quality 90 (a plasma with sensor-like noise,
// made by ImageMagick's convert in child processes) and one small cover
// picture that sorts first.
//
// The viewer stands on its own (no main window), so its first load takes
// its room from the screen. It is therefore opened on the cover picture,
// given a room of 1600 x 1000 pixels (MaximumWidth and MaximumHeight in
// twips), and then pointed at each photo in turn for the measured opens.

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QThreadPool>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include "BenchWorld.h"
#include "catalogue/MediaTypes.h"
#include "core/AppState.h"
#include "platform/Twips.h"
#include "viewers/PictureHolder.h"
#include "viewers/SingleImage.h"
#include "viewers/SingleImageLayout.h"
#include "viewers/ViewerDecode.h"

namespace {

constexpr int PhotoCount = 21;
constexpr int PhotoWidth = 6000;
constexpr int PhotoHeight = 4000;
constexpr int PhotoQuality = 90;
constexpr int RoomWidthPixels = 1600;
constexpr int RoomHeightPixels = 1000;
constexpr int ColdRuns = 5;
// How long the user looks at each picture of the walk.
constexpr int LookMs = 400;
const char CoverName[] = "cover.jpg";

// Targets.
constexpr double OpenToFloorTarget = 1.3;
constexpr double StepTargetMs = 50;
constexpr double MemoryTargetMb = 200;

// ---- The photographs -------------------------------------------------------

QString PhotoName(int index) { return QString("photo%1.jpg").arg(index + 1, 2, 10, QChar('0')); }

// Makes the photos that are missing, two convert processes at a time.
bool EnsurePhotos(const QString& folder) {
  QDir().mkpath(folder);
  if (!QFile::exists(folder + "/" + CoverName)) {
    QImage cover(160, 120, QImage::Format_RGB32);
    cover.fill(QColor(70, 110, 160));
    if (!cover.save(folder + "/" + CoverName, "JPEG", 90)) return false;
  }
  QStringList missing;
  for (int i = 0; i < PhotoCount; ++i)
    if (!QFile::exists(folder + "/" + PhotoName(i))) missing << PhotoName(i);
  if (missing.isEmpty()) return true;
  std::printf("Making %d photos in %s ...\n", int(missing.size()), qPrintable(folder));
  std::fflush(stdout);
  std::vector<std::unique_ptr<QProcess>> running;
  bool ok = true;
  const auto finish = [&](QProcess& process, const QString& name) {
    const QString target = folder + "/" + name;
    if (!process.waitForFinished(-1) || process.exitCode() != 0 || !QFile::rename(target + ".part", target))
      ok = false;
  };
  QStringList names;
  for (const QString& name : missing) {
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const int seed = name.mid(5, 2).toInt();
    process->start("convert", {"-size", QString("%1x%2").arg(PhotoWidth).arg(PhotoHeight), "-seed",
                               QString::number(seed), "plasma:fractal", "-attenuate", "0.4", "+noise",
                               "Gaussian", "-quality", QString::number(PhotoQuality),
                               "jpg:" + folder + "/" + name + ".part"});
    running.push_back(std::move(process));
    names << name;
    if (running.size() == 2) {
      for (size_t i = 0; i < running.size(); ++i) finish(*running[i], names[int(i)]);
      running.clear();
      names.clear();
    }
  }
  for (size_t i = 0; i < running.size(); ++i) finish(*running[i], names[int(i)]);
  return ok;
}

// ---- The page cache --------------------------------------------------------

// Asks the system to forget the cached pages of the file.
void DropFromCache(const QString& path) {
  const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY);
  if (fd < 0) return;
  ::fdatasync(fd);
  ::posix_fadvise(fd, 0, 0, POSIX_FADV_DONTNEED);
  ::close(fd);
}

// The share of the file's pages in the page cache, 0 to 1 (-1 unknown).
double CachedShare(const QString& path) {
  const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY);
  if (fd < 0) return -1;
  struct stat info {};
  double share = -1;
  if (::fstat(fd, &info) == 0 && info.st_size > 0) {
    void* map = ::mmap(nullptr, size_t(info.st_size), PROT_READ, MAP_SHARED, fd, 0);
    if (map != MAP_FAILED) {
      const long page = ::sysconf(_SC_PAGESIZE);
      const size_t pages = (size_t(info.st_size) + size_t(page) - 1) / size_t(page);
      std::vector<unsigned char> resident(pages);
      if (::mincore(map, size_t(info.st_size), resident.data()) == 0)
        share = double(std::count_if(resident.begin(), resident.end(), [](unsigned char r) { return r & 1; })) /
                double(pages);
      ::munmap(map, size_t(info.st_size));
    }
  }
  ::close(fd);
  return share;
}

// ---- Measuring -------------------------------------------------------------

double Median(std::vector<double> values) {
  if (values.empty()) return -1;
  std::sort(values.begin(), values.end());
  const size_t middle = values.size() / 2;
  return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double Milliseconds(const QElapsedTimer& clock) { return clock.nsecsElapsed() / 1e6; }

// Lets the event loop run, as while the user looks at the window.
void Look(int ms) {
  QEventLoop loop;
  QTimer::singleShot(ms, &loop, &QEventLoop::quit);
  loop.exec();
}

// The decode ahead runs on the global pool: waiting for it keeps it out of
// the next measurement.
void WaitForWorkers() { QThreadPool::globalInstance()->waitForDone(); }

// djpeg at a quarter size into nothing: what decoding the file can cost.
double TimeDjpeg(const QString& path) {
  QProcess djpeg;
  QElapsedTimer clock;
  clock.start();
  djpeg.start("djpeg", {"-scale", "1/4", "-outfile", "/dev/null", path});
  if (!djpeg.waitForStarted() || !djpeg.waitForFinished(-1) || djpeg.exitCode() != 0) return -1;
  return Milliseconds(clock);
}

struct ColdOpen {
  QString Name;
  double OpenMs = -1, DecodeMs = -1, DjpegMs = -1;
  double CachedAfterDrop = -1;
  QSize Shown;
};

}  // namespace

int main(int argc, char** argv) {
  QTemporaryDir world;
  EnterBenchWorld(world);
  QApplication app(argc, argv);
  const QStringList args = app.arguments();
  const QString folder = args.size() > 1 ? args[1] : QString("/tmp/vistrel-bench-viewer");
  if (!EnsurePhotos(folder)) {
    std::fprintf(stderr, "Could not make the photos in %s\n", qPrintable(folder));
    return 1;
  }

  // The list as the browser makes it: bare names, the cover first, and the
  // scratch element.
  FillMediaTables();
  AppState& state = App();
  state.ProgramFolder = world.path() + "/program";
  QDir().mkpath(state.ProgramFolder);
  state.CurrentFolder = folder;
  state.TitleBarHeight = 0;
  QStringList entries{CoverName};
  for (int i = 0; i < PhotoCount; ++i) entries << PhotoName(i);
  entries << QString();
  state.PictureFiles() = entries;
  state.CurrentPicture() = 0;
  const auto photoIndex = [](int photo) { return photo + 1; };
  const auto photoPath = [&](int photo) { return folder + "/" + PhotoName(photo); };

  // The viewer on the cover, then given its room.
  auto* viewer = new SingleImage;
  viewer->MaximumWidth = twips::FromPixels(RoomWidthPixels);
  viewer->MaximumHeight = twips::FromPixels(RoomHeightPixels);
  viewer->show();
  Look(100);
  WaitForWorkers();
  const qreal ratio = viewer->devicePixelRatioF();

  // Cold opens, each on its own photo, away from the neighbour decoded
  // ahead after the one before.
  std::vector<ColdOpen> opens;
  for (int run = 0; run < ColdRuns; ++run) {
    const int photo = run * 4;
    ColdOpen open;
    open.Name = PhotoName(photo);
    const QString path = photoPath(photo);

    WaitForWorkers();
    DropFromCache(path);
    open.CachedAfterDrop = CachedShare(path);
    viewer->PictureIndex = photoIndex(photo);
    viewer->Direction = '+';
    QElapsedTimer clock;
    clock.start();
    viewer->LoadImage();
    open.OpenMs = Milliseconds(clock);
    open.Shown = viewer->Picture1->Picture().size();
    if (viewer->Picture1->Picture().isNull() || viewer->CurrentFile != path) {
      std::fprintf(stderr, "The viewer did not show %s\n", qPrintable(path));
      return 1;
    }

    // The decode alone, for the same room.
    WaitForWorkers();
    DropFromCache(path);
    const PictureRoom room = viewer->Room();
    clock.restart();
    const ViewerPicture decoded = DecodeForViewer(
        path, [room, ratio](QSize natural) { return singleimage::BoxFor(natural, room, false, ratio); });
    open.DecodeMs = Milliseconds(clock);
    if (!decoded.Valid) open.DecodeMs = -1;

    DropFromCache(path);
    open.DjpegMs = TimeDjpeg(path);
    opens.push_back(open);
  }

  // The walk: from the first photo to the last, the neighbour decoded ahead
  // while the user looks. The files start out of the page cache.
  WaitForWorkers();
  for (int photo = 0; photo < PhotoCount; ++photo) DropFromCache(photoPath(photo));
  viewer->PictureIndex = photoIndex(0);
  viewer->Direction = '+';
  viewer->LoadImage();
  Look(LookMs);
  std::vector<double> steps, paints;
  int lost = 0;
  for (int step = 1; step < PhotoCount; ++step) {
    QElapsedTimer clock;
    clock.start();
    viewer->nextButton_Click();
    steps.push_back(Milliseconds(clock));
    clock.restart();
    viewer->repaint();
    paints.push_back(Milliseconds(clock));
    if (viewer->CurrentFile != photoPath(step)) ++lost;
    Look(LookMs);
  }
  WaitForWorkers();

  // The report.
  std::vector<double> openMs, decodeMs, djpegMs;
  for (const ColdOpen& open : opens) {
    openMs.push_back(open.OpenMs);
    decodeMs.push_back(open.DecodeMs);
    djpegMs.push_back(open.DjpegMs);
  }
  const double open = Median(openMs), floor = Median(djpegMs), decode = Median(decodeMs);
  const double stepMedian = Median(steps), stepMax = *std::max_element(steps.begin(), steps.end());
  const double peak = PeakMemoryMb();
  const qint64 bytes = QFileInfo(photoPath(0)).size();
  const auto verdict = [](bool met) { return met ? "met" : "MISSED"; };

  std::printf("%d photos of %d x %d (JPEG quality %d, %.1f MB each), room %d x %d px, device ratio %.2g\n",
              PhotoCount, PhotoWidth, PhotoHeight, PhotoQuality, bytes / 1048576.0, RoomWidthPixels,
              RoomHeightPixels, ratio);
  std::printf("\nCold open (LoadImage, the file dropped from the page cache first):\n");
  std::printf("  %-12s %10s %10s %10s %8s %12s\n", "photo", "open ms", "decode ms", "djpeg ms", "cached", "shown");
  for (const ColdOpen& o : opens)
    std::printf("  %-12s %10.1f %10.1f %10.1f %7.0f%% %5d x %-5d\n", qPrintable(o.Name), o.OpenMs, o.DecodeMs,
                o.DjpegMs, 100 * o.CachedAfterDrop, o.Shown.width(), o.Shown.height());
  std::printf("  median: open %.1f ms, decode alone %.1f ms, djpeg -scale 1/4 %.1f ms\n", open, decode, floor);
  std::printf("  open / floor: %.2f  (target <= %.1f: %s)\n", open / floor, OpenToFloorTarget,
              verdict(open / floor <= OpenToFloorTarget));
  std::printf("\nWalk (nextButton_Click, %d steps, %d ms looking at each):\n", int(steps.size()), LookMs);
  std::printf("  steps ms:");
  for (double ms : steps) std::printf(" %.1f", ms);
  std::printf("\n  median %.1f ms, max %.1f ms  (target < %.0f ms: %s)\n", stepMedian, stepMax, StepTargetMs,
              verdict(stepMax < StepTargetMs));
  std::printf("  then painting the window: median %.1f ms, max %.1f ms\n", Median(paints),
              *std::max_element(paints.begin(), paints.end()));
  if (lost > 0) std::printf("  %d steps did not show the next photo\n", lost);
  std::printf("\nPeak memory: %.1f MB  (target < %.0f MB: %s)\n", peak, MemoryTargetMb,
              verdict(peak < MemoryTargetMb));
  viewer->close();
  return 0;
}
