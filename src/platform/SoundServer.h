#pragma once
// The desktop's sound server (PulseAudio, or PipeWire's pulse server): the
// volume and the mute switch of its default output. Every call is
// synchronous with a short time-out, so that a silent or missing server never
// holds the caller up; without a server every call fails at once and quietly.
// The server is the one named by PULSE_SERVER, else the user's own; none is
// ever started on demand.

#include <QDeadlineTimer>
#include <QtGlobal>
#include <memory>

namespace platform {

class SoundServer {
 public:
  // The raw volume range of the default output. Raw values are the
  // server's own volume steps, where 65536 is the output's normal full
  // volume; 65535 stands for it and for anything louder, so that the range
  // fits a signed 32-bit maximum and 1 % of it is 655 steps.
  static constexpr qint32 VolumeMinimum = 0;
  static constexpr qint32 VolumeMaximum = 65535;

  // How long a connection or a single request may take, in milliseconds.
  static constexpr int TimeOutMs = 1000;

  SoundServer();
  ~SoundServer();
  SoundServer(const SoundServer&) = delete;
  SoundServer& operator=(const SoundServer&) = delete;

  // Connects; false when no server answers in time. A connection that
  // breaks later is made again by the next request.
  bool Connect();
  void Disconnect();
  bool Connected() const;

  // Whether the server has a default output.
  bool HasOutput();
  // The output's volume: its loudest channel, limited to VolumeMaximum.
  bool ReadVolume(qint64& raw);
  // Sets the loudest channel to `raw` (clamped to the range); the balance
  // between the channels stays as it is.
  bool WriteVolume(qint64 raw);
  bool ReadMute(bool& on);
  bool WriteMute(bool on);

 private:
  struct Connection;
  bool Open();
  bool Ready();
  template <class Request>
  bool Run(Request request);

  std::unique_ptr<Connection> connection_;
  bool wanted_ = false;
  // After a server that accepted the connection but did not answer, no new
  // attempt is made before this runs out.
  QDeadlineTimer retryAfter_;
};

// Whether a sound server with a default output can be reached now.
bool SoundOutputAvailable();

}  // namespace platform
