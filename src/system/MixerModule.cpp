#include "system/MixerModule.h"

#include <array>
#include <cmath>
#include <memory>

#include "core/AppState.h"
#include "platform/SiblingPrograms.h"
#include "platform/SoundFont.h"
#include "platform/SoundServer.h"

// The open mixer: its connection to the sound server and its table of
// controls. It lives in App().Mixer while open.
struct MixerConnection {
  platform::SoundServer server;
  std::array<MixerControl, MixerControlCount> controls{};
};

namespace {

// Ids of the two controls the sound server offers: the volume and the mute
// switch of its default output.
constexpr quint32 MasterVolumeId = 1;
constexpr quint32 MasterMuteId = 2;

constexpr int MasterVolumeIndex = 0;
constexpr int CompactDiscVolumeIndex = 4;
constexpr int WaveOutVolumeIndex = 5;
constexpr int MasterMuteIndex = 7;
constexpr int MuteOffset = 7;

// Component types of the mixer's lines.
constexpr int SpeakersLine = 4;
constexpr int LineInLine = 4098;
constexpr int MicrophoneLine = 4099;
constexpr int SynthesizerLine = 4100;
constexpr int CompactDiscLine = 4101;
constexpr int WaveOutLine = 4104;
constexpr int AuxiliaryLine = 4105;

// The lines in the order they are looked up, with the table index of their volume.
struct Line {
  int componentType;
  int volumeIndex;
};
constexpr std::array<Line, 7> LookUpOrder{{{SpeakersLine, 0},
                                           {MicrophoneLine, 2},
                                           {AuxiliaryLine, 6},
                                           {CompactDiscLine, 4},
                                           {SynthesizerLine, 3},
                                           {WaveOutLine, 5},
                                           {LineInLine, 1}}};

// The control of a line, empty when the line or the control does not
// exist. The sound server's default output is the speakers line.
MixerControl FindControl(int componentType, bool mute) {
  if (componentType != SpeakersLine) return {};
  if (mute) return {MasterMuteId, 0, 1};
  return {MasterVolumeId, platform::SoundServer::VolumeMinimum,
          platform::SoundServer::VolumeMaximum};
}

bool WriteControl(int index, int value) {
  MixerConnection* mixer = App().Mixer.get();
  if (index < 0 || index >= MixerControlCount || !mixer) return false;
  const MixerControl& control = mixer->controls[index];
  const qint64 raw = RawFromPercent(value, control.Minimum, control.Maximum);
  switch (control.dwControlID) {
    case MasterVolumeId:
      return mixer->server.WriteVolume(raw);
    case MasterMuteId:
      return mixer->server.WriteMute(raw != 0);
    default:
      return false;
  }
}

// A control's raw value over a connection; 0 when it cannot be read.
qint64 ReadRaw(platform::SoundServer& server, const MixerControl& control) {
  qint64 raw = 0;
  switch (control.dwControlID) {
    case MasterVolumeId:
      if (!server.ReadVolume(raw)) raw = 0;
      break;
    case MasterMuteId: {
      bool on = false;
      raw = server.ReadMute(on) && on ? 1 : 0;
      break;
    }
    default:
      break;
  }
  return raw;
}

qint64 ReadControl(int index) {
  MixerConnection* mixer = App().Mixer.get();
  if (index < 0 || index >= MixerControlCount || !mixer) return 0;
  return ReadRaw(mixer->server, mixer->controls[index]);
}

}  // namespace

qint64 RawFromPercent(int value, qint32 minimum, qint32 maximum) {
  qint64 raw = maximum >= 101 ? qint64(maximum / 100) * value : qint64(value);
  if (raw > maximum) raw = maximum;
  if (raw < minimum) raw = minimum;
  return raw;
}

int PercentFromRaw(qint64 raw, qint32 minimum, qint32 maximum) {
  if (maximum < 101) return static_cast<int>(raw);
  return static_cast<int>(std::lround(double(raw) * 100.0 / maximum - minimum));
}

bool OpenMixer(int device) {
  CloseMixer();
  auto mixer = std::make_shared<MixerConnection>();
  const int deviceCount = mixer->server.Connect() && mixer->server.HasOutput() ? 1 : 0;
  if (device < 0 || device >= deviceCount) return false;

  for (const Line& line : LookUpOrder)
    mixer->controls[line.volumeIndex] = FindControl(line.componentType, false);
  for (const Line& line : LookUpOrder)
    mixer->controls[line.volumeIndex + MuteOffset] = FindControl(line.componentType, true);
  App().Mixer = std::move(mixer);
  return true;
}

void CloseMixer() { App().Mixer.reset(); }

bool SetVolume(int index, int percent) { return WriteControl(index, percent); }

int GetVolume(int index) {
  const MixerControl& control = MixerControlAt(index);
  return PercentFromRaw(ReadControl(index), control.Minimum, control.Maximum);
}

bool SetMute(int index, bool on) { return WriteControl(index, on ? 1 : 0); }

bool GetMute(int index) { return ReadControl(index) != 0; }

bool ToggleMute() { return SetMute(MasterMuteIndex, !GetMute(MasterMuteIndex)); }

void StepVolume(int direction) {
  const bool up = direction >= 1;
  const int volume = GetVolume(MasterVolumeIndex);
  if ((up && volume >= 100) || (!up && volume <= 0)) return;
  const int stepped = volume + (up ? 1 : -1);
  for (int index : {MasterVolumeIndex, CompactDiscVolumeIndex, WaveOutVolumeIndex})
    SetVolume(index, stepped);
}

int AudioAbilities() {
  const bool wave = platform::SoundOutputAvailable();
  const bool midi = !platform::GeneralMidiSoundFont().isEmpty();
  return (wave ? 1 : 0) + (midi ? 2 : 0);
}

void mixerButton_Click() { platform::StartProgram(QStringLiteral("pavucontrol"), {}); }

const MixerControl& MixerControlAt(int index) {
  static const MixerControl none;
  const MixerConnection* mixer = App().Mixer.get();
  if (!mixer || index < 0 || index >= MixerControlCount) return none;
  return mixer->controls[index];
}

MasterReader::MasterReader()
    : volume_(MixerControlAt(MasterVolumeIndex)), mute_(MixerControlAt(MasterMuteIndex)) {}

MasterReader::~MasterReader() = default;

MasterReading MasterReader::Read() {
  if (volume_.dwControlID == 0 && mute_.dwControlID == 0) return {};
  // Connected on the first read, on the reading thread.
  if (!server_) {
    server_ = std::make_unique<platform::SoundServer>();
    server_->Connect();
  }
  const bool muted = ReadRaw(*server_, mute_) != 0;
  const int volume = PercentFromRaw(ReadRaw(*server_, volume_), volume_.Minimum, volume_.Maximum);
  return {muted, volume};
}
