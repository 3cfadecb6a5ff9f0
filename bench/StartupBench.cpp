// Starts the real program, as a child process, on a folder of 40 large
// photographs and times its start from the exec to the first page of
// thumbnails complete: with a filled thumbnail cache (warm) and with an empty
// one (cold). The splash screen is off. Prints, for each stage of the start,
// the median and the shortest time since the exec, and the median length of
// each step between stages.
//
//   StartupBench [folder] [rounds]
//
// The folder (default /tmp/vistrel-bench-photos) holds the 40 JPEGs of
// 6000 x 4000 that ThumbnailBench makes; they are made by it, once, when
// missing. Rounds (default 5) is the number of timed starts of each kind.
//
// Each start runs in a world of its own under a scratch folder: a fresh
// HOME and XDG folders, settings written before each start (the options
// saved, the tutorial seen, no splash screen, the photo folder as the
// default folder, a window of 1600 x 1000 so that one page holds all 40),
// and a writable copy of the program folder with a fresh data file. Before
// the warm starts one untimed start fills the thumbnail cache and brings
// the program and its libraries into the page cache; before each cold start
// the thumbnail cache is emptied (the photos stay in the page cache).
//
// The stages come from the program's trace on its standard error, each line
// stamped by the program with the monotonic clock ("%{time boot}"). Without
// a DISPLAY the benchmark starts a virtual X server of its own and stops it
// at the end. Once the page is complete the program is ended (SIGTERM) and
// the next start follows.

#include <signal.h>
#include <time.h>

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#ifndef VISTREL_PROGRAM_DIR
#error "VISTREL_PROGRAM_DIR names the built program folder"
#endif
#ifndef VISTREL_FRESH_DATA_FILE
#error "VISTREL_FRESH_DATA_FILE names the fresh data file"
#endif

namespace {

constexpr int PhotoCount = 40;
constexpr int DefaultRounds = 5;
constexpr int StartTimeoutMs = 120000;
constexpr int EndGraceMs = 5000;
constexpr double TargetMs = 500;
// The main window, in twips (15 a pixel): 1600 x 1000 pixels, a page of
// more than 40 cells at the inch size.
constexpr int WindowWidthTwips = 1600 * 15;
constexpr int WindowHeightTwips = 1000 * 15;
const char ScreenSize[] = "1920x1200x24";

// ---- The stages of a start -------------------------------------------------

enum Stage { OpeningData, DataOpened, WindowShown, FolderListed, FirstThumbnail, PageComplete, StageCount };

const char* const StageNames[StageCount] = {
    "data file open begins",  "data file opened",      "main window shown",
    "start folder listed",    "first thumbnail shown", "first page complete",
};

// The steps between one stage and the one before (the first from the exec).
const char* const StepNames[StageCount] = {
    "exec to data file open (Qt, X, settings)",
    "key derivation and open of the data file",
    "data file opened to main window shown",
    "window shown to folder listed (activation)",
    "listed to first thumbnail",
    "first thumbnail to page complete",
};

// One start: the milliseconds since the exec at which each stage came
// (-1 when it did not), the pictures of the first page, and what went wrong.
struct Start {
  std::array<double, StageCount> Ms;
  int PagePictures = -1;
  int ListedPictures = -1;
  QString Failure;
  Start() { Ms.fill(-1); }
  bool Complete() const { return Failure.isEmpty() && Ms[PageComplete] >= 0; }
};

// The monotonic clock, the one that "%{time boot}" reads, in milliseconds.
double MonotonicMs() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

// The number after prefix at the start of text; -1 when text does not
// start so.
int NumberAfter(const QString& text, const QString& prefix) {
  if (!text.startsWith(prefix)) return -1;
  bool ok = false;
  const int number = text.mid(prefix.size()).section(' ', 0, 0).toInt(&ok);
  return ok ? number : -1;
}

// Takes one line of the program's standard error, read at arrivalMs:
// "  35062.828 vistrel.trace: data file opened". The program's own stamp
// counts when it is plausible; the arrival time otherwise.
void TakeLine(const QString& line, double execMs, double arrivalMs, Start& start) {
  const QString text = line.trimmed();
  const int space = text.indexOf(' ');
  if (space < 0) return;
  bool ok = false;
  const double stampMs = text.left(space).toDouble(&ok) * 1e3;
  const QString rest = text.mid(space + 1);
  const QString category = QStringLiteral("vistrel.trace: ");
  if (!rest.startsWith(category)) return;
  const QString message = rest.mid(category.size());
  const double atMs = (ok && stampMs >= execMs - 1 && stampMs <= arrivalMs + 1 ? stampMs : arrivalMs) - execMs;
  const auto reach = [&](Stage stage) {
    if (start.Ms[stage] < 0) start.Ms[stage] = atMs;
  };
  if (message == QLatin1String("opening data file")) {
    reach(OpeningData);
  } else if (message == QLatin1String("data file opened")) {
    reach(DataOpened);
  } else if (message.startsWith(QLatin1String("shown MainForm "))) {
    reach(WindowShown);
  } else if (message.startsWith(QLatin1String("listed ")) && message.endsWith(QLatin1String(" of tab 1"))) {
    if (start.Ms[FolderListed] < 0) start.ListedPictures = NumberAfter(message, QStringLiteral("listed "));
    reach(FolderListed);
  } else if (message.startsWith(QLatin1String("page first thumbnail "))) {
    if (start.Ms[FolderListed] >= 0) reach(FirstThumbnail);
  } else if (message.startsWith(QLatin1String("page filled "))) {
    // A page filled before the start folder was listed is not its page.
    if (start.Ms[FolderListed] < 0 || start.Ms[PageComplete] >= 0) return;
    start.PagePictures = NumberAfter(message, QStringLiteral("page filled "));
    reach(PageComplete);
  }
}

// ---- The world of the starts -------------------------------------------------

struct World {
  QString Root;           // the scratch folder
  QString ProgramFolder;  // the writable copy of the program folder
  QString PhotoFolder;
  QProcessEnvironment Environment;
};

QString PhotoPath(const QString& folder, int index) {
  return QString("%1/photo%2.jpg").arg(folder).arg(index + 1, 2, 10, QChar('0'));
}

bool EnsurePhotos(const QString& folder) {
  for (int i = 0; i < PhotoCount; ++i) {
    if (QFile::exists(PhotoPath(folder, i))) continue;
    QProcess maker;
    maker.setProcessChannelMode(QProcess::ForwardedChannels);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    maker.setProcessEnvironment(environment);
    maker.start(QCoreApplication::applicationDirPath() + "/ThumbnailBench", {"--make-photos", folder});
    return maker.waitForFinished(-1) && maker.exitStatus() == QProcess::NormalExit && maker.exitCode() == 0;
  }
  return true;
}

// Reads every photo once so that each start finds them in the page cache.
void ReadThrough(const QString& folder) {
  QByteArray buffer(1 << 20, Qt::Uninitialized);
  for (int i = 0; i < PhotoCount; ++i) {
    QFile file(PhotoPath(folder, i));
    if (!file.open(QIODevice::ReadOnly)) continue;
    while (file.read(buffer.data(), buffer.size()) > 0) {
    }
  }
}

bool CopyFileOver(const QString& from, const QString& to) {
  QFile::remove(to);
  return QFile::copy(from, to) && QFile::setPermissions(to, QFileInfo(from).permissions() | QFile::WriteOwner);
}

bool CopyFolder(const QString& from, const QString& to) {
  QDir().mkpath(to);
  for (const QFileInfo& entry : QDir(from).entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot)) {
    const QString target = to + "/" + entry.fileName();
    if (entry.isDir() ? !CopyFolder(entry.filePath(), target) : !CopyFileOver(entry.filePath(), target))
      return false;
  }
  return true;
}

// The program, its decoding helper and its tutorial, copied once.
bool MakeProgramFolder(const World& world) {
  const QString built = QStringLiteral(VISTREL_PROGRAM_DIR);
  QDir().mkpath(world.ProgramFolder);
  for (const char* name : {"Vistrel", "vistrel-decode"})
    if (!CopyFileOver(built + "/" + name, world.ProgramFolder + "/" + name)) return false;
  return !QFileInfo(built + "/tutorial").isDir() || CopyFolder(built + "/tutorial", world.ProgramFolder + "/tutorial");
}

// Before each start: the settings as saved by the options, and a fresh data
// file, so that every start begins alike.
bool PrepareStart(const World& world, bool emptyCache) {
  const QString settingsFolder = world.Root + "/config/Vistrel";
  QDir().mkpath(settingsFolder);
  QFile settings(settingsFolder + "/Vistrel.ini");
  if (!settings.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
  settings.write(QString("[Settings]\n"
                         "Defined=Yes\n"
                         "MerlinShown=Yes\n"
                         "ShowSplashScreen=0\n"
                         "DefaultFolder=%1\n"
                         "MainMaximized=No\n"
                         "MainLeft=0\n"
                         "MainTop=0\n"
                         "MainWidth=%2\n"
                         "MainHeight=%3\n")
                     .arg(world.PhotoFolder)
                     .arg(WindowWidthTwips)
                     .arg(WindowHeightTwips)
                     .toUtf8());
  settings.close();
  if (emptyCache) QDir(world.Root + "/cache/thumbnails").removeRecursively();
  return CopyFileOver(QStringLiteral(VISTREL_FRESH_DATA_FILE), world.ProgramFolder + "/Vistrel.VRD");
}

int CachedThumbnails(const World& world) {
  int count = 0;
  for (QDirIterator it(world.Root + "/cache/thumbnails", QDir::Files, QDirIterator::Subdirectories); it.hasNext();
       it.next())
    ++count;
  return count;
}

// Processes still running in the program folder (the helper, say); each is
// named and ended.
QStringList EndLeftovers(const World& world) {
  QStringList left;
  for (const QString& pid : QDir("/proc").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    bool number = false;
    const qint64 id = pid.toLongLong(&number);
    if (!number) continue;
    const QString cwd = QFileInfo("/proc/" + pid + "/cwd").symLinkTarget();
    if (!cwd.startsWith(world.ProgramFolder)) continue;
    QFile command("/proc/" + pid + "/cmdline");
    command.open(QIODevice::ReadOnly);
    left << QString("%1 %2").arg(id).arg(QString::fromLocal8Bit(command.readAll().replace('\0', ' ')).trimmed());
    ::kill(pid_t(id), SIGKILL);
  }
  return left;
}

// ---- One start -----------------------------------------------------------------

Start RunStart(const World& world) {
  Start start;
  QProcess program;
  program.setProcessEnvironment(world.Environment);
  program.setWorkingDirectory(world.ProgramFolder);
  program.setStandardOutputFile(QProcess::nullDevice());
  QEventLoop loop;
  QByteArray pending;
  double execMs = 0;
  QObject::connect(&program, &QProcess::readyReadStandardError, &loop, [&] {
    const double arrivalMs = MonotonicMs();
    pending += program.readAllStandardError();
    for (int end = pending.indexOf('\n'); end >= 0; end = pending.indexOf('\n')) {
      TakeLine(QString::fromUtf8(pending.left(end)), execMs, arrivalMs, start);
      pending.remove(0, end + 1);
    }
    if (start.Ms[PageComplete] >= 0) loop.quit();
  });
  QObject::connect(&program, &QProcess::finished, &loop, [&] {
    if (start.Ms[PageComplete] < 0 && start.Failure.isEmpty())
      start.Failure = QString("the program ended (exit code %1) before its first page").arg(program.exitCode());
    loop.quit();
  });
  QTimer::singleShot(StartTimeoutMs, &loop, [&] {
    start.Failure = QString("no complete first page within %1 s").arg(StartTimeoutMs / 1000);
    loop.quit();
  });
  execMs = MonotonicMs();
  program.start(world.ProgramFolder + "/Vistrel", {});
  if (!program.waitForStarted()) {
    start.Failure = "the program did not start: " + program.errorString();
    return start;
  }
  loop.exec();
  if (program.state() != QProcess::NotRunning) {
    program.terminate();
    if (!program.waitForFinished(EndGraceMs)) {
      program.kill();
      program.waitForFinished(EndGraceMs);
    }
  }
  const QStringList left = EndLeftovers(world);
  if (!left.isEmpty() && start.Failure.isEmpty()) start.Failure = "processes left behind: " + left.join("; ");
  if (start.Failure.isEmpty() && start.PagePictures != PhotoCount)
    start.Failure = QString("the first page held %1 pictures, not %2").arg(start.PagePictures).arg(PhotoCount);
  return start;
}

// ---- Figures -------------------------------------------------------------------

struct Figures {
  double Median = -1, Min = -1;
};

Figures FiguresOf(std::vector<double> values) {
  Figures f;
  values.erase(std::remove_if(values.begin(), values.end(), [](double v) { return v < 0; }), values.end());
  if (values.empty()) return f;
  std::sort(values.begin(), values.end());
  const size_t middle = values.size() / 2;
  f.Median = values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
  f.Min = values.front();
  return f;
}

// The times of a stage over the complete starts.
Figures StageFigures(const std::vector<Start>& starts, int stage) {
  std::vector<double> values;
  for (const Start& s : starts)
    if (s.Complete()) values.push_back(s.Ms[stage]);
  return FiguresOf(values);
}

// The lengths of the step into a stage over the complete starts.
Figures StepFigures(const std::vector<Start>& starts, int stage) {
  std::vector<double> values;
  for (const Start& s : starts) {
    if (!s.Complete() || s.Ms[stage] < 0) continue;
    const double before = stage == 0 ? 0 : s.Ms[stage - 1];
    if (before >= 0) values.push_back(s.Ms[stage] - before);
  }
  return FiguresOf(values);
}

QString Cell(double ms) { return ms < 0 ? QString("-") : QString::number(ms, 'f', 0); }

void PrintFailures(const char* kind, const std::vector<Start>& starts) {
  for (size_t i = 0; i < starts.size(); ++i)
    if (!starts[i].Complete())
      std::printf("  %s start %d failed: %s\n", kind, int(i + 1), qPrintable(starts[i].Failure));
}

// ---- The X server ----------------------------------------------------------------

// Starts a virtual X server that picks a free display and tells it on its
// standard output; the display's name, or "" when none came up.
QString StartVirtualScreen(QProcess& server) {
  server.start("Xvfb", {"-displayfd", "1", "-screen", "0", ScreenSize, "-nolisten", "tcp"});
  if (!server.waitForStarted()) return {};
  QByteArray said;
  QElapsedTimer clock;
  clock.start();
  while (!said.contains('\n') && clock.elapsed() < 20000 && server.state() == QProcess::Running)
    if (server.waitForReadyRead(1000)) said += server.readAllStandardOutput();
  const QByteArray number = said.trimmed();
  return number.isEmpty() ? QString() : ":" + QString::fromLatin1(number);
}

void StopVirtualScreen(QProcess& server) {
  if (server.state() == QProcess::NotRunning) return;
  server.terminate();
  if (!server.waitForFinished(EndGraceMs)) {
    server.kill();
    server.waitForFinished(EndGraceMs);
  }
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const QStringList args = app.arguments();
  if (args.size() > 1 && args[1].startsWith('-')) {
    std::printf("usage: StartupBench [photo folder] [rounds]\n");
    return args[1] == "--help" || args[1] == "-h" ? 0 : 2;
  }
  const QString photoFolder = QDir(args.size() > 1 ? args[1] : QString("/tmp/vistrel-bench-photos")).absolutePath();
  const int rounds = std::max(1, args.size() > 2 ? args[2].toInt() : DefaultRounds);

  if (!QFileInfo(QStringLiteral(VISTREL_PROGRAM_DIR) + "/Vistrel").isExecutable() ||
      !QFileInfo(QStringLiteral(VISTREL_FRESH_DATA_FILE)).isFile()) {
    std::fprintf(stderr, "Build the program first: %s/Vistrel and %s\n", VISTREL_PROGRAM_DIR, VISTREL_FRESH_DATA_FILE);
    return 1;
  }
  if (!EnsurePhotos(photoFolder)) {
    std::fprintf(stderr, "Could not make the photos in %s\n", qPrintable(photoFolder));
    return 1;
  }
  ReadThrough(photoFolder);

  QProcess screen;
  QString display = qEnvironmentVariable("DISPLAY");
  const bool ownScreen = display.isEmpty();
  if (ownScreen) {
    display = StartVirtualScreen(screen);
    if (display.isEmpty()) {
      std::fprintf(stderr, "No DISPLAY, and no virtual X server could be started\n");
      StopVirtualScreen(screen);
      return 1;
    }
  }

  QTemporaryDir scratch;
  World world;
  world.Root = scratch.path();
  world.ProgramFolder = world.Root + "/program";
  world.PhotoFolder = photoFolder;
  for (const char* folder : {"home", "config", "cache", "data", "run"}) QDir().mkpath(world.Root + "/" + folder);
  QFile::setPermissions(world.Root + "/run", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  QProcessEnvironment& environment = world.Environment;
  environment.insert("PATH", qEnvironmentVariable("PATH", "/usr/bin:/bin"));
  environment.insert("HOME", world.Root + "/home");
  environment.insert("LANG", "C.UTF-8");
  environment.insert("DISPLAY", display);
  if (!ownScreen && qEnvironmentVariableIsSet("XAUTHORITY"))
    environment.insert("XAUTHORITY", qEnvironmentVariable("XAUTHORITY"));
  environment.insert("XDG_CONFIG_HOME", world.Root + "/config");
  environment.insert("XDG_CACHE_HOME", world.Root + "/cache");
  environment.insert("XDG_DATA_HOME", world.Root + "/data");
  environment.insert("XDG_RUNTIME_DIR", world.Root + "/run");
  // No sound server: the start makes no sound.
  environment.insert("PULSE_SERVER", "unix:" + world.Root + "/no-sound-server");
  environment.insert("QT_QPA_PLATFORM", "xcb");
  environment.insert("QT_LOGGING_RULES", "vistrel.trace.info=true");
  // "%{time process}" counts from the first message, not from the exec: the
  // monotonic clock is compared with the benchmark's own instead.
  environment.insert("QT_MESSAGE_PATTERN", "%{time boot} %{category}: %{message}");

  if (!MakeProgramFolder(world)) {
    std::fprintf(stderr, "Could not copy the program folder into %s\n", qPrintable(world.ProgramFolder));
    StopVirtualScreen(screen);
    return 1;
  }

  std::printf("Program %s/Vistrel, screen %s%s, %d starts of each kind\n", VISTREL_PROGRAM_DIR, qPrintable(display),
              ownScreen ? " (virtual, started here)" : "", rounds);
  std::printf("Folder %s: %d JPEGs of 6000 x 4000, window 1600 x 1000, no splash screen\n", qPrintable(photoFolder),
              PhotoCount);
  std::fflush(stdout);

  // The untimed start that fills the thumbnail cache, then the warm and the
  // cold starts.
  PrepareStart(world, true);
  const Start fillRun = RunStart(world);
  std::printf("Filling start: %s ms to the first page, %d thumbnails in the cache%s\n",
              qPrintable(Cell(fillRun.Ms[PageComplete])), CachedThumbnails(world),
              fillRun.Complete() ? "" : qPrintable(" (" + fillRun.Failure + ")"));
  std::fflush(stdout);
  std::vector<Start> warm, cold;
  for (int round = 0; round < rounds; ++round) {
    PrepareStart(world, false);
    warm.push_back(RunStart(world));
  }
  for (int round = 0; round < rounds; ++round) {
    PrepareStart(world, true);
    cold.push_back(RunStart(world));
  }
  StopVirtualScreen(screen);

  std::printf("\nStage, ms since the exec        warm median  warm min  cold median  cold min\n");
  for (int stage = 0; stage < StageCount; ++stage) {
    const Figures w = StageFigures(warm, stage), c = StageFigures(cold, stage);
    std::printf("  %-30s %11s %9s %12s %9s\n", StageNames[stage], qPrintable(Cell(w.Median)),
                qPrintable(Cell(w.Min)), qPrintable(Cell(c.Median)), qPrintable(Cell(c.Min)));
  }
  std::printf("\nStep, ms                                      warm median  cold median\n");
  for (int stage = 0; stage < StageCount; ++stage)
    std::printf("  %-43s %11s %12s\n", StepNames[stage], qPrintable(Cell(StepFigures(warm, stage).Median)),
                qPrintable(Cell(StepFigures(cold, stage).Median)));

  const auto completed = [](const std::vector<Start>& starts) {
    return int(std::count_if(starts.begin(), starts.end(), [](const Start& s) { return s.Complete(); }));
  };
  std::printf("\nComplete starts: warm %d of %d, cold %d of %d; pictures listed %d, on the first page %d\n",
              completed(warm), rounds, completed(cold), rounds, warm.empty() ? -1 : warm.front().ListedPictures,
              warm.empty() ? -1 : warm.front().PagePictures);
  PrintFailures("warm", warm);
  PrintFailures("cold", cold);
  const double warmMedian = StageFigures(warm, PageComplete).Median;
  std::printf("Warm start to the first page: %s ms (target < %.0f ms: %s)\n", qPrintable(Cell(warmMedian)), TargetMs,
              warmMedian >= 0 && warmMedian < TargetMs ? "met" : "MISSED");
  return completed(warm) == rounds && completed(cold) == rounds ? 0 : 1;
}
