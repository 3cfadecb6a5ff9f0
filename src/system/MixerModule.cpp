#include "system/MixerModule.h"

#include <array>
#include <cmath>
#include <memory>

#include "platform/SiblingPrograms.h"
#include "platform/SoundFont.h"
#include "platform/SoundServer.h"

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

// The open mixer (none while closed) and its table of controls.
struct Mixer {
  std::unique_ptr<platform::SoundServer> server;
  std::array<MixerControl, MixerControlCount> controls{};
};

Mixer& TheMixer() {
  static Mixer mixer;
  return mixer;
}

// The control of a line, empty when the line or the control does not
// exist. The sound server's default output is the speakers line.
MixerControl FindControl(int componentType, bool mute) {
  if (componentType != SpeakersLine) return {};
  if (mute) return {MasterMuteId, 0, 1};
  return {MasterVolumeId, platform::SoundServer::VolumeMinimum,
          platform::SoundServer::VolumeMaximum};
}

bool WriteControl(int index, int value) {
  Mixer& mixer = TheMixer();
  if (index < 0 || index >= MixerControlCount || !mixer.server) return false;
  const MixerControl& control = mixer.controls[index];
  const qint64 raw = RawFromPercent(value, control.Minimum, control.Maximum);
  switch (control.dwControlID) {
    case MasterVolumeId:
      return mixer.server->WriteVolume(raw);
    case MasterMuteId:
      return mixer.server->WriteMute(raw != 0);
    default:
      return false;
  }
}

// The control's raw value; 0 when it cannot be read.
qint64 ReadControl(int index) {
  Mixer& mixer = TheMixer();
  if (index < 0 || index >= MixerControlCount || !mixer.server) return 0;
  qint64 raw = 0;
  switch (mixer.controls[index].dwControlID) {
    case MasterVolumeId:
      if (!mixer.server->ReadVolume(raw)) raw = 0;
      break;
    case MasterMuteId: {
      bool on = false;
      raw = mixer.server->ReadMute(on) && on ? 1 : 0;
      break;
    }
    default:
      break;
  }
  return raw;
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
  auto server = std::make_unique<platform::SoundServer>();
  const int deviceCount = server->Connect() && server->HasOutput() ? 1 : 0;
  if (device < 0 || device >= deviceCount) return false;

  Mixer& mixer = TheMixer();
  for (const Line& line : LookUpOrder)
    mixer.controls[line.volumeIndex] = FindControl(line.componentType, false);
  for (const Line& line : LookUpOrder)
    mixer.controls[line.volumeIndex + MuteOffset] = FindControl(line.componentType, true);
  mixer.server = std::move(server);
  return true;
}

void CloseMixer() {
  Mixer& mixer = TheMixer();
  mixer.server.reset();
  mixer.controls.fill(MixerControl{});
}

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
  if (index < 0 || index >= MixerControlCount) return none;
  return TheMixer().controls[index];
}
