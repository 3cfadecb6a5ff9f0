#pragma once
// A private sound server for a test: a PulseAudio daemon with one null
// output "nullsink", listening on a socket in the test's temporary folder.
// While it lives, PULSE_SERVER points at it, so the code under test talks to
// it alone; the destructor stops the daemon and puts PULSE_SERVER back.
//
//   PulseServer server;
//   ASSERT_TRUE(server.Running());
//   server.Pactl({"set-sink-volume", "nullsink", "40%"});
//   EXPECT_EQ(server.VolumePercent(), 40);

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

class PulseServer {
 public:
  PulseServer();
  ~PulseServer();
  PulseServer(const PulseServer&) = delete;
  PulseServer& operator=(const PulseServer&) = delete;

  // Whether the daemon started and answers.
  bool Running() const;
  // The server's address, as PULSE_SERVER holds it ("unix:/.../native").
  QString Address() const;
  // The name of its output.
  static QString Sink() { return QStringLiteral("nullsink"); }

  // Runs pactl against this server; its standard output, trimmed ("" when
  // it failed).
  QString Pactl(const QStringList& arguments) const;
  // Whether that pactl command succeeded.
  bool PactlOk(const QStringList& arguments) const;

  // The output's volume as the server counts it (65536 is 100 %), of its
  // first channel; -1 when unreadable.
  qint64 VolumeRaw() const;
  // The same in whole percent, as pactl rounds it; -1 when unreadable.
  int VolumePercent() const;
  bool Muted() const;
  bool SetVolumePercent(int percent) const;
  bool SetMuted(bool on) const;

 private:
  bool RunPactl(const QStringList& arguments, QString* output) const;

  // The daemon's folder: its socket, runtime folder and home.
  std::unique_ptr<QTemporaryDir> folder_;
  QString dir_;
  QProcess daemon_;
  QByteArray savedServer_;
  bool hadServer_ = false;
  bool running_ = false;
};

// Points PULSE_SERVER at a socket that does not exist, so that the code
// under test finds no sound server; puts PULSE_SERVER back at the end.
class AbsentPulseServer {
 public:
  AbsentPulseServer();
  ~AbsentPulseServer();
  AbsentPulseServer(const AbsentPulseServer&) = delete;
  AbsentPulseServer& operator=(const AbsentPulseServer&) = delete;

 private:
  QByteArray savedServer_;
  bool hadServer_ = false;
};
