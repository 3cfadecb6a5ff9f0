// The video viewer playing a film of a minute, 1920 x 1080 at 30 pictures a
// second with a sound track, from the start to the end, in a window shown
// at the film's natural size: the pictures drawn into the film's window
// against those in the file, the pictures that reached the screen, the
// late ones, the processor time of this process against the wall clock
// (with each thread's share), the time from the play command to the first
// new picture on the screen, and where the user-interface thread spends
// its time per picture (drawing it for the window, painting it, bringing
// the window to the screen).
//
//   PlayerBench [folder]
//
// The folder (default /tmp/vistrel-bench-video) is given the film once,
// made by ffmpeg: H.264 in an AVI file (a type the viewer plays itself),
// with MP3 sound. Without a DISPLAY the benchmark starts a virtual X
// server of its own on the first free display from :95, and stops it at
// the end. The sound plays in silence to the clock (VISTREL_MPV_AO=null)
// unless VISTREL_MPV_AO says otherwise.

#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <map>
#include <unordered_set>
#include <vector>

#include "BenchWorld.h"
#include "catalogue/MediaTypes.h"
#include "core/AppState.h"
#include "viewers/AudioVideoPlayer.h"
#include "viewers/Mci.h"
#include "viewers/PlayerViewer.h"
#include "viewers/VideoFrame.h"

namespace {

constexpr int FilmWidth = 1920;
constexpr int FilmHeight = 1080;
constexpr int FilmRate = 30;
constexpr int FilmSeconds = 60;
constexpr int FilmPictures = FilmRate * FilmSeconds;
const char FilmName[] = "film.avi";
// How long past the film's end the benchmark waits for the player to see it.
constexpr int GraceMs = 30000;
// A picture later than this after the one before counts as late.
constexpr double LateFactor = 1.5;

// Targets.
constexpr int DroppedTarget = 0;
constexpr double CpuShareTarget = 1.0;

double Seconds(qint64 ns) { return ns / 1e9; }
double Milliseconds(qint64 ns) { return ns / 1e6; }

// ---- The film -----------------------------------------------------------------

bool EnsureFilm(const QString& folder) {
  const QString target = folder + "/" + FilmName;
  if (QFile::exists(target)) return true;
  QDir().mkpath(folder);
  std::printf("Making the film %s ...\n", qPrintable(target));
  std::fflush(stdout);
  const QString size = QString("%1x%2").arg(FilmWidth).arg(FilmHeight);
  QProcess ffmpeg;
  ffmpeg.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  QStringList arguments{"-v", "error", "-y"};
  arguments += {"-f", "lavfi", "-i", QString("testsrc2=size=%1:rate=%2").arg(size).arg(FilmRate)};
  arguments += {"-f", "lavfi", "-i", "sine=frequency=440:sample_rate=44100"};
  arguments += {"-t", QString::number(FilmSeconds)};
  arguments += {"-c:v", "libx264", "-preset", "veryfast", "-pix_fmt", "yuv420p"};
  arguments += {"-c:a", "libmp3lame", "-b:a", "128k"};
  arguments += {"-f", "avi", target + ".part"};
  ffmpeg.start("ffmpeg", arguments);
  if (!ffmpeg.waitForFinished(-1) || ffmpeg.exitCode() != 0) return false;
  return QFile::rename(target + ".part", target);
}

// ---- The X server -------------------------------------------------------------

// A virtual X server started for the run, stopped by its id at the end.
struct VirtualScreen {
  qint64 Pid = 0;
  ~VirtualScreen() {
    if (Pid > 0) ::kill(pid_t(Pid), SIGTERM);
  }
};

// Starts the server on the first display from :95 that no server holds,
// and waits for its socket. False when none came up.
bool StartVirtualScreen(VirtualScreen& screen) {
  for (int display = 95; display < 100; ++display) {
    if (QFile::exists(QString("/tmp/.X%1-lock").arg(display))) continue;
    const QString name = QString(":%1").arg(display);
    if (!QProcess::startDetached("Xvfb", {name, "-screen", "0", "2560x1600x24", "-nolisten", "tcp"}, QString(),
                                 &screen.Pid))
      return false;
    const QString socket = QString("/tmp/.X11-unix/X%1").arg(display);
    QElapsedTimer clock;
    clock.start();
    while (!QFile::exists(socket) && clock.elapsed() < 5000) QThread::msleep(20);
    if (!QFile::exists(socket)) return false;
    QThread::msleep(100);
    qputenv("DISPLAY", name.toUtf8());
    return true;
  }
  return false;
}

// ---- Processor time -----------------------------------------------------------

// User and system time of this process, all threads, in seconds.
double ProcessCpuSeconds() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& t) { return t.tv_sec + t.tv_usec / 1e6; };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

long MinorFaults() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt;
}

// A key of a picture's content from every eighth row: the test film moves
// everywhere from one picture to the next.
size_t PictureKey(const QImage& picture) {
  size_t key = size_t(picture.width()) * 31 + size_t(picture.height());
  for (int y = 0; y < picture.height(); y += 8)
    key = qHashBits(picture.constScanLine(y), size_t(picture.bytesPerLine()), key);
  return key;
}

// User plus system ticks of a /proc stat line, and the name in it.
bool ReadStat(const QString& path, QString& name, double& seconds) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return false;
  const QByteArray line = file.readAll();
  const int open = line.indexOf('('), close = line.lastIndexOf(')');
  if (open < 0 || close < open) return false;
  name = QString::fromUtf8(line.mid(open + 1, close - open - 1));
  // After the name: state, then fields 4 on; utime and stime are 14 and 15.
  const QList<QByteArray> fields = line.mid(close + 2).split(' ');
  if (fields.size() < 13) return false;
  seconds = (fields[11].toDouble() + fields[12].toDouble()) / double(::sysconf(_SC_CLK_TCK));
  return true;
}

struct ThreadTime {
  QString Name;
  double Seconds = 0;
};

// The threads of this process by id.
std::map<int, ThreadTime> ThreadTimes() {
  std::map<int, ThreadTime> threads;
  for (const QString& id : QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    ThreadTime t;
    if (ReadStat("/proc/self/task/" + id + "/stat", t.Name, t.Seconds)) threads[id.toInt()] = t;
  }
  return threads;
}

double OtherProcessSeconds(qint64 pid) {
  QString name;
  double seconds = -1;
  if (pid <= 0 || !ReadStat(QString("/proc/%1/stat").arg(pid), name, seconds)) return -1;
  return seconds;
}

// ---- Watching the user-interface thread ----------------------------------------

// What the event loop does for the film, timed while the film plays.
struct Watch {
  QPointer<VideoFrame> Frame;  // the film's window, from the open command
  QPointer<QWidget> Window;    // the viewer's window
  bool Playing = false;
  qint64 PlayNs = -1, FinishNs = -1;
  qint64 ShownAtPlay = -1, ShownAtFinish = -1;
  qint64 FirstDrawnNs = -1, FirstPaintedNs = -1;
  // The pictures handed to the film's window by the library's posts, with
  // their times; and the paints that showed a new picture.
  std::vector<qint64> DeliveredNs;
  std::vector<double> DrawMs, PaintMs, WindowMs;
  // The different pictures shown since the play (by a key of their
  // content), and the time spent telling them apart.
  std::unordered_set<size_t> Keys;
  qint64 CheckNs = 0;
  qint64 PaintedNew = 0, Paints = 0;
  qint64 lastPainted = -1;
  double CpuAtPlay = 0, CpuAtFinish = 0;
  long FaultsAtPlay = 0, FaultsAtFinish = 0;
  double ScreenAtPlay = -1, ScreenAtFinish = -1;
  std::map<int, ThreadTime> ThreadsAtPlay, ThreadsAtFinish;
};

Watch& TheWatch() {
  static Watch watch;
  return watch;
}

QElapsedTimer& Clock() {
  static QElapsedTimer clock;
  return clock;
}

// Times the events that carry a picture: the library's posts to its
// mailbox on this thread (a plain object), which draw the picture; the
// film window's paints; and the viewer window's update requests, which
// paint the window and bring it to the screen.
class TimedApplication : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    Watch& w = TheWatch();
    if (!w.Playing || !w.Frame) return QApplication::notify(receiver, event);
    const QEvent::Type type = event->type();
    const bool post = type == QEvent::MetaCall && receiver->metaObject() == &QObject::staticMetaObject;
    const bool paint = type == QEvent::Paint && receiver == w.Frame.data();
    const bool window = type == QEvent::UpdateRequest && receiver == w.Window.data();
    if (!post && !paint && !window) return QApplication::notify(receiver, event);
    const qint64 shownBefore = w.Frame->FramesShown();
    const qint64 start = Clock().nsecsElapsed();
    const bool result = QApplication::notify(receiver, event);
    const qint64 end = Clock().nsecsElapsed();
    if (!w.Playing || !w.Frame) return result;
    if (post && w.Frame->FramesShown() > shownBefore) {
      w.DeliveredNs.push_back(end);
      w.DrawMs.push_back(Milliseconds(end - start));
      if (w.FirstDrawnNs < 0) w.FirstDrawnNs = end;
      w.Keys.insert(PictureKey(w.Frame->Picture()));
      w.CheckNs += Clock().nsecsElapsed() - end;
    } else if (paint) {
      ++w.Paints;
      w.PaintMs.push_back(Milliseconds(end - start));
      const qint64 shown = w.Frame->FramesShown();
      if (shown != w.lastPainted && shown > w.ShownAtPlay) {
        ++w.PaintedNew;
        if (w.FirstPaintedNs < 0) w.FirstPaintedNs = end;
      }
      w.lastPainted = shown;
    } else if (window) {
      w.WindowMs.push_back(Milliseconds(end - start));
    }
    return result;
  }
};

// The film's window named in an open command ("parent HANDLE").
VideoFrame* FrameOfOpen(const QString& command) {
  const QStringList words = command.split(' ', Qt::SkipEmptyParts);
  for (int i = 0; i + 1 < words.size(); ++i)
    if (words[i].compare("parent", Qt::CaseInsensitive) == 0) return VideoFrame::FromHandle(words[i + 1]);
  return nullptr;
}

void Started(qint64 screenPid) {
  Watch& w = TheWatch();
  w.PlayNs = Clock().nsecsElapsed();
  w.CpuAtPlay = ProcessCpuSeconds();
  w.FaultsAtPlay = MinorFaults();
  w.ScreenAtPlay = OtherProcessSeconds(screenPid);
  w.ThreadsAtPlay = ThreadTimes();
  w.ShownAtPlay = w.Frame ? w.Frame->FramesShown() : 0;
  if (w.Frame) w.Keys.insert(PictureKey(w.Frame->Picture()));
  w.lastPainted = w.ShownAtPlay;
  w.Playing = true;
}

void Finished(qint64 screenPid) {
  Watch& w = TheWatch();
  if (!w.Playing) return;
  w.Playing = false;
  w.FinishNs = Clock().nsecsElapsed();
  w.CpuAtFinish = ProcessCpuSeconds();
  w.FaultsAtFinish = MinorFaults();
  w.ScreenAtFinish = OtherProcessSeconds(screenPid);
  w.ThreadsAtFinish = ThreadTimes();
  w.ShownAtFinish = w.Frame ? w.Frame->FramesShown() : -1;
}

// ---- Figures ------------------------------------------------------------------

struct Spread {
  double Mean = -1, Median = -1, P95 = -1, Max = -1;
  double Total = 0;
};

Spread SpreadOf(std::vector<double> values) {
  Spread s;
  if (values.empty()) return s;
  std::sort(values.begin(), values.end());
  for (double v : values) s.Total += v;
  s.Mean = s.Total / double(values.size());
  s.Median = values[values.size() / 2];
  s.P95 = values[std::min(values.size() - 1, values.size() * 95 / 100)];
  s.Max = values.back();
  return s;
}

void PrintSpread(const char* what, const std::vector<double>& values, double wallSeconds) {
  const Spread s = SpreadOf(values);
  std::printf("  %-34s %6d  %7.2f %7.2f %7.2f %7.2f  %5.1f%%\n", what, int(values.size()), s.Mean, s.Median, s.P95,
              s.Max, wallSeconds > 0 ? 100 * s.Total / 1000 / wallSeconds : 0.0);
}

// Threads of the same name together (the decoder's threads, say).
std::vector<std::pair<QString, double>> ThreadShares(const std::map<int, ThreadTime>& before,
                                                     const std::map<int, ThreadTime>& after) {
  std::map<QString, double> byName;
  for (const auto& [id, t] : after) {
    const auto was = before.find(id);
    byName[t.Name] += t.Seconds - (was == before.end() ? 0 : was->second.Seconds);
  }
  std::vector<std::pair<QString, double>> shares(byName.begin(), byName.end());
  std::sort(shares.begin(), shares.end(), [](const auto& a, const auto& b) { return a.second > b.second; });
  return shares;
}

}  // namespace

int main(int argc, char** argv) {
  Clock().start();
  VirtualScreen screen;
  if (qEnvironmentVariableIsEmpty("DISPLAY")) {
    if (!StartVirtualScreen(screen)) {
      std::fprintf(stderr, "No DISPLAY, and no virtual X server could be started\n");
      return 1;
    }
  }
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "xcb");
  if (qEnvironmentVariableIsEmpty("VISTREL_MPV_AO")) qputenv("VISTREL_MPV_AO", "null");
  QTemporaryDir world;
  EnterBenchWorld(world);
  TimedApplication app(argc, argv);
  const QStringList args = app.arguments();
  const QString folder = args.size() > 1 ? args[1] : QString("/tmp/vistrel-bench-video");
  if (!EnsureFilm(folder)) {
    std::fprintf(stderr, "Could not make the film in %s\n", qPrintable(folder));
    return 1;
  }
  const QString filmPath = folder + "/" + FilmName;

  // The list as the browser makes it: bare names and the scratch element.
  FillMediaTables();
  AppState& state = App();
  state.ProgramFolder = world.path() + "/program";
  QDir().mkpath(state.ProgramFolder);
  state.CurrentFolder = folder;
  state.TitleBarHeight = 0;
  state.VideoFiles() = QStringList{FilmName, QString()};
  state.CurrentVideo() = 0;

  // The film's window is known from the open command; the play starts the
  // measurement.
  const qint64 screenPid = screen.Pid;
  qint64 openNs = -1, openDoneNs = -1;
  // Refused commands: while loading (told when the film does not play),
  // and while playing.
  QStringList loadFailures, playFailures;
  MciWatchCommands([&](const QString& command, const QString& reply) {
    const QString verb = command.section(' ', 0, 0).toLower();
    if (reply != "Success") {
      if (TheWatch().Playing) playFailures << command + " -> " + reply;
      if (TheWatch().PlayNs < 0) loadFailures << command + " -> " + reply;
    }
    if (verb == "open") {
      openDoneNs = Clock().nsecsElapsed();
      if (reply == "Success") TheWatch().Frame = FrameOfOpen(command);
    }
    if (verb == "play" && reply == "Success" && !TheWatch().Playing && TheWatch().PlayNs < 0) Started(screenPid);
  });

  // The viewer loads and plays the film as it is made, as when the browser
  // opens it; the browser then shows it.
  openNs = Clock().nsecsElapsed();
  QPointer<SingleVideo> viewer = new SingleVideo;
  Watch& watch = TheWatch();
  if (viewer->Closing() || !viewer->Player->FileLoaded() || !watch.Playing) {
    std::fprintf(stderr, "The viewer did not play %s (device %s)\n", qPrintable(filmPath),
                 qPrintable(viewer ? viewer->Player->DeviceType() : QString("-")));
    for (const QString& failure : loadFailures) std::fprintf(stderr, "  %s\n", qPrintable(failure));
    return 1;
  }
  const QString device = viewer->Player->DeviceType();
  watch.Window = viewer.data();
  QEventLoop loop;
  QObject::connect(viewer->Player, &AudioVideoPlayer::PlayStateChange, &loop, [&](int playState) {
    if (playState == 0) {
      Finished(screenPid);
      loop.quit();
    }
  });
  viewer->show();
  QTimer::singleShot(FilmSeconds * 1000 + GraceMs, &loop, &QEventLoop::quit);
  QSize shownAt;
  QTimer::singleShot(2000, &loop, [&] {
    if (watch.Frame) shownAt = watch.Frame->size();
  });
  loop.exec();
  const bool ended = watch.FinishNs >= 0;
  if (!ended) Finished(screenPid);
  MciWatchCommands({});

  // The report.
  const double wall = Seconds(watch.FinishNs - watch.PlayNs);
  const double cpu = watch.CpuAtFinish - watch.CpuAtPlay;
  const double share = wall > 0 ? cpu / wall : -1;
  const qint64 drawn = watch.ShownAtFinish;
  // The film's first picture is up before the play; every other one comes
  // by the library's posts, some of them again (the start, after the seek).
  const qint64 delivered = qint64(watch.DeliveredNs.size());
  const qint64 different = qint64(watch.Keys.size());
  const qint64 again = 1 + delivered - different;
  const qint64 dropped = std::max<qint64>(0, FilmPictures - different);
  const double check = Seconds(watch.CheckNs);
  const double period = 1000.0 / FilmRate;
  int late = 0;
  double longest = 0;
  QStringList lateOnes;
  for (size_t i = 1; i < watch.DeliveredNs.size(); ++i) {
    const double gap = Milliseconds(watch.DeliveredNs[i] - watch.DeliveredNs[i - 1]);
    const double at = Seconds(watch.DeliveredNs[i] - watch.PlayNs);
    if (gap > LateFactor * period && ++late <= 5)
      lateOnes << QString("%1 ms at %2 s").arg(gap, 0, 'f', 0).arg(at, 0, 'f', 2);
    longest = std::max(longest, gap);
  }
  const auto verdict = [](bool met) { return met ? "met" : "MISSED"; };

  std::printf("Film: %s, %d x %d, %d pictures a second, %d s (%d pictures), H.264 and MP3 in AVI, %.1f MB\n",
              qPrintable(filmPath), FilmWidth, FilmHeight, FilmRate, FilmSeconds, FilmPictures,
              QFileInfo(filmPath).size() / 1048576.0);
  std::printf("Device %s, sound output %s, screen %s%s, film window %d x %d\n", qPrintable(device),
              qgetenv("VISTREL_MPV_AO").constData(), qgetenv("DISPLAY").constData(),
              screen.Pid > 0 ? " (virtual, started here)" : "", shownAt.width(), shownAt.height());
  if (!ended) std::printf("The player did not reach the end within %d s of the play\n", FilmSeconds + GraceMs / 1000);
  for (const QString& failure : playFailures) std::printf("  refused while playing: %s\n", qPrintable(failure));

  std::printf("\nOpening (the viewer made, the file loaded on its first picture): %.0f ms\n",
              Milliseconds(openDoneNs - openNs));
  std::printf("Play to the end: %.2f s\n", wall);
  std::printf("\nPictures drawn into the film's window (FramesShown): %lld (%lld before the play, %lld during it)\n",
              drawn, watch.ShownAtPlay, drawn - watch.ShownAtPlay);
  std::printf("  during the play %lld came by the library's posts, %lld of them a picture shown before\n", delivered,
              again);
  std::printf("  different pictures of the film shown: %lld of %d\n", different, FilmPictures);
  std::printf("  dropped (expected - shown): %lld  (target %d: %s)\n", dropped, DroppedTarget,
              verdict(dropped <= DroppedTarget));
  std::printf("  late (more than %.0f ms after the one before): %d; longest gap %.1f ms\n", LateFactor * period, late,
              longest);
  if (!lateOnes.isEmpty()) std::printf("    %s\n", qPrintable(lateOnes.join(", ")));
  std::printf("  new pictures that reached the screen: %lld (%lld paints of the film's window)\n", watch.PaintedNew,
              watch.Paints);
  std::printf("  the library's own drop counts are not reachable from the viewer\n");

  std::printf("\nProcessor, play to end: %.2f s of %.2f s wall = %.2f cores  (target < %.1f: %s)\n", cpu, wall, share,
              CpuShareTarget, verdict(share >= 0 && share < CpuShareTarget));
  std::printf("  of which the benchmark's own picture check: %.2f s; minor page faults: %.0f a picture\n", check,
              delivered > 0 ? double(watch.FaultsAtFinish - watch.FaultsAtPlay) / double(delivered) : 0.0);
  if (watch.ScreenAtPlay >= 0 && watch.ScreenAtFinish >= 0)
    std::printf("  the virtual X server besides: %.2f s = %.2f cores\n", watch.ScreenAtFinish - watch.ScreenAtPlay,
                (watch.ScreenAtFinish - watch.ScreenAtPlay) / wall);
  std::printf("  by thread:\n");
  for (const auto& [name, seconds] : ThreadShares(watch.ThreadsAtPlay, watch.ThreadsAtFinish))
    if (seconds >= 0.05) std::printf("    %-20s %7.2f s  %5.1f%%\n", qPrintable(name), seconds, 100 * seconds / wall);

  std::printf("\nPlay to the first new picture: drawn %.1f ms, on the screen %.1f ms\n",
              watch.FirstDrawnNs >= 0 ? Milliseconds(watch.FirstDrawnNs - watch.PlayNs) : -1.0,
              watch.FirstPaintedNs >= 0 ? Milliseconds(watch.FirstPaintedNs - watch.PlayNs) : -1.0);
  std::printf("Play to the first sound: not measured (the device tells nobody when its sound starts)\n");

  std::printf("\nThe user-interface thread, per event:   count     mean  median     p95     max  of wall\n");
  PrintSpread("drawing a picture (library post)", watch.DrawMs, wall);
  PrintSpread("painting the film's window", watch.PaintMs, wall);
  PrintSpread("window to the screen (all of it)", watch.WindowMs, wall);
  if (viewer) viewer->close();
  return ended ? 0 : 1;
}
