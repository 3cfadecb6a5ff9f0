#include "support/PulseServer.h"

#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QThread>

#include "support/TestEnv.h"

namespace {

// A unix socket's path must stay below 108 bytes.
constexpr int LongestSocketFolder = 90;

void SaveServer(QByteArray& saved, bool& had) {
  had = qEnvironmentVariableIsSet("PULSE_SERVER");
  saved = qgetenv("PULSE_SERVER");
}

void RestoreServer(const QByteArray& saved, bool had) {
  if (had)
    qputenv("PULSE_SERVER", saved);
  else
    qunsetenv("PULSE_SERVER");
}

// The first channel's "raw / percent" of pactl's volume line:
// "Volume: front-left: 26214 /  40% / -23.88 dB,   front-right: ...".
QRegularExpressionMatch FirstChannel(const QString& line) {
  static const QRegularExpression channel(R"(:\s*(\d+)\s*/\s*(\d+)%)");
  return channel.match(line);
}

}  // namespace

PulseServer::PulseServer() {
  SaveServer(savedServer_, hadServer_);

  // A folder of its own inside the test's folder, whose path must leave
  // room for the socket's name.
  const QString root = testenv::Root();
  if (root.isEmpty() || root.size() > LongestSocketFolder - 16) {
    ADD_FAILURE() << "no sound server: the test's folder " << root.toStdString()
                  << " is too long a path for a socket";
    return;
  }
  QDir(root).mkpath("pulse");
  folder_ = std::make_unique<QTemporaryDir>(root + "/pulse/XXXXXX");
  if (!folder_->isValid()) return;
  dir_ = folder_->path();
  QDir(dir_).mkpath("run");
  QDir(dir_).mkpath("home");

  // The daemon stays a child of the test, so that it can be stopped and
  // reaped; its chatter (it warns when run as root) goes nowhere.
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("XDG_RUNTIME_DIR", dir_ + "/run");
  environment.insert("HOME", dir_ + "/home");
  environment.remove("PULSE_SERVER");
  daemon_.setProcessEnvironment(environment);
  daemon_.setStandardOutputFile(QProcess::nullDevice());
  daemon_.setStandardErrorFile(QProcess::nullDevice());
  daemon_.start("pulseaudio",
                {"--daemonize=no", "--exit-idle-time=-1", "-n", "--use-pid-file=yes",
                 "--load=module-null-sink sink_name=" + Sink(),
                 "--load=module-native-protocol-unix auth-anonymous=1 socket=" + dir_ + "/native"});
  if (!daemon_.waitForStarted(5000)) return;

  qputenv("PULSE_SERVER", Address().toUtf8());
  QDeadlineTimer deadline(5000);
  while (!deadline.hasExpired() && daemon_.state() == QProcess::Running) {
    if (RunPactl({"info"}, nullptr)) {
      running_ = true;
      return;
    }
    QThread::msleep(20);
  }
}

PulseServer::~PulseServer() {
  if (daemon_.state() != QProcess::NotRunning) {
    daemon_.terminate();
    if (!daemon_.waitForFinished(3000)) {
      daemon_.kill();
      daemon_.waitForFinished(3000);
    }
  }
  RestoreServer(savedServer_, hadServer_);
}

bool PulseServer::Running() const { return running_; }

QString PulseServer::Address() const { return "unix:" + dir_ + "/native"; }

bool PulseServer::RunPactl(const QStringList& arguments, QString* output) const {
  QProcess pactl;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("PULSE_SERVER", Address());
  pactl.setProcessEnvironment(environment);
  pactl.setStandardErrorFile(QProcess::nullDevice());
  pactl.start("pactl", arguments);
  if (!pactl.waitForFinished(5000)) {
    pactl.kill();
    pactl.waitForFinished(1000);
    return false;
  }
  if (output) *output = QString::fromUtf8(pactl.readAllStandardOutput()).trimmed();
  return pactl.exitStatus() == QProcess::NormalExit && pactl.exitCode() == 0;
}

QString PulseServer::Pactl(const QStringList& arguments) const {
  QString output;
  return RunPactl(arguments, &output) ? output : QString();
}

bool PulseServer::PactlOk(const QStringList& arguments) const {
  return RunPactl(arguments, nullptr);
}

qint64 PulseServer::VolumeRaw() const {
  const QRegularExpressionMatch match = FirstChannel(Pactl({"get-sink-volume", Sink()}));
  return match.hasMatch() ? match.captured(1).toLongLong() : -1;
}

int PulseServer::VolumePercent() const {
  const QRegularExpressionMatch match = FirstChannel(Pactl({"get-sink-volume", Sink()}));
  return match.hasMatch() ? match.captured(2).toInt() : -1;
}

bool PulseServer::Muted() const { return Pactl({"get-sink-mute", Sink()}) == "Mute: yes"; }

bool PulseServer::SetVolumePercent(int percent) const {
  return RunPactl({"set-sink-volume", Sink(), QString::number(percent) + "%"}, nullptr);
}

bool PulseServer::SetMuted(bool on) const {
  return RunPactl({"set-sink-mute", Sink(), on ? "1" : "0"}, nullptr);
}

AbsentPulseServer::AbsentPulseServer() {
  SaveServer(savedServer_, hadServer_);
  const QString root = testenv::Root().isEmpty() ? QDir::tempPath() : testenv::Root();
  qputenv("PULSE_SERVER", ("unix:" + root + "/no-such-sound-server/native").toUtf8());
}

AbsentPulseServer::~AbsentPulseServer() { RestoreServer(savedServer_, hadServer_); }
