#include "platform/MidiDevice.h"

#include <fluidsynth.h>

#include <QFile>
#include <algorithm>
#include <atomic>
#include <climits>
#include <chrono>
#include <cstring>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/MidiFile.h"
#include "platform/SoundFont.h"
#include "platform/SoundServer.h"

namespace platform {

namespace {

constexpr int SampleRate = 44100;
// The silent clock renders in slices of this many frames, wakes this often,
// and after a long stall (a suspended machine) picks up from now rather
// than rendering everything it missed.
constexpr int SliceFrames = 1024;
constexpr auto ClockWake = std::chrono::milliseconds(5);
constexpr qint64 LongestCatchUp = 2 * SampleRate;

// The synthesizer's own messages go nowhere: the player reports by its
// replies alone.
void SilenceSynthesizerLog() {
  static const bool once = [] {
    for (int level = 0; level < LAST_LOG_LEVEL; ++level) fluid_set_log_function(level, nullptr, nullptr);
    return true;
  }();
  Q_UNUSED(once);
}

}  // namespace

// The synthesizer, the song and the one player of the song. `mutex` keeps
// the rendering (on the sound server's thread or the silent clock's) apart
// from the changes of player, which happen on the caller's thread: a new
// player for every start, as it can seek only once it runs.
struct MidiDevice::Engine {
  fluid_settings_t* settings = nullptr;
  fluid_synth_t* synth = nullptr;
  fluid_audio_driver_t* driver = nullptr;
  std::thread clock;
  std::atomic<bool> quit{false};

  std::mutex mutex;
  fluid_player_t* player = nullptr;
  QByteArray song;
  MidiClock timing;
  qint64 lengthMs = 0;
  // Where the running player started and where it is to stop; where a
  // stopped song stands.
  qint64 startMs = 0, endMs = 0, heldMs = 0;

  ~Engine() {
    if (driver) delete_fluid_audio_driver(driver);
    quit = true;
    if (clock.joinable()) clock.join();
    {
      std::lock_guard lock(mutex);
      DropPlayerLocked();
    }
    if (synth) delete_fluid_synth(synth);
    if (settings) delete_fluid_settings(settings);
  }

  void DropPlayerLocked() {
    if (!player) return;
    delete_fluid_player(player);
    player = nullptr;
    fluid_synth_all_sounds_off(synth, -1);
  }

  // The position of the running player; at the stopping point the player
  // goes and the song stands there.
  qint64 PositionLocked() {
    if (!player) return heldMs;
    qint64 ms = qRound64(timing.MsAt(fluid_player_get_current_tick(player)));
    // A fresh player reports tick 0 until its seek has been carried out.
    ms = std::max(ms, startMs);
    if (ms >= endMs) {
      DropPlayerLocked();
      heldMs = endMs;
      return endMs;
    }
    return ms;
  }

  void StartLocked(qint64 fromMs, qint64 toMs) {
    DropPlayerLocked();
    endMs = toMs < 0 ? lengthMs : std::min(toMs, lengthMs);
    startMs = std::clamp<qint64>(fromMs, 0, endMs);
    heldMs = startMs;
    if (startMs >= endMs) return;
    player = new_fluid_player(synth);
    if (!player) return;
    if (fluid_player_add_mem(player, song.constData(), size_t(song.size())) != FLUID_OK ||
        fluid_player_play(player) != FLUID_OK) {
      DropPlayerLocked();
      return;
    }
    // The player reads the song at its first step, and only then can it
    // seek: one frame of sound lets it take that step.
    float left = 0, right = 0;
    fluid_synth_write_float(synth, 1, &left, 0, 1, &right, 0, 1);
    const qint64 tick = timing.TickAt(double(startMs));
    if (tick > 0) fluid_player_seek(player, int(std::min<qint64>(tick, INT_MAX)));
  }

  // Rendering for the sound server's thread.
  static int RenderForServer(void* data, int length, int effects, float* effectBuffers[], int outputs,
                             float* outputBuffers[]) {
    auto* engine = static_cast<Engine*>(data);
    for (int i = 0; i < outputs; ++i) std::memset(outputBuffers[i], 0, sizeof(float) * size_t(length));
    for (int i = 0; i < effects; ++i) std::memset(effectBuffers[i], 0, sizeof(float) * size_t(length));
    std::lock_guard lock(engine->mutex);
    return fluid_synth_process(engine->synth, length, effects, effectBuffers, outputs, outputBuffers);
  }

  // Without a sound server: renders into nothing at the pace of the clock,
  // which is what moves the player on.
  void RunSilentClock() {
    std::vector<float> left(SliceFrames), right(SliceFrames);
    const auto start = std::chrono::steady_clock::now();
    qint64 rendered = 0;
    while (!quit) {
      std::this_thread::sleep_for(ClockWake);
      const auto elapsed = std::chrono::steady_clock::now() - start;
      const qint64 due =
          std::chrono::duration_cast<std::chrono::microseconds>(elapsed).count() * SampleRate / 1000000;
      if (due - rendered > LongestCatchUp) rendered = due - SliceFrames;
      while (rendered < due && !quit) {
        const int frames = int(std::min<qint64>(SliceFrames, due - rendered));
        {
          std::lock_guard lock(mutex);
          fluid_synth_write_float(synth, frames, left.data(), 0, 1, right.data(), 0, 1);
        }
        rendered += frames;
      }
    }
  }
};

std::unique_ptr<MidiDevice> MidiDevice::Open(const QString& path, MediaOpenFailure* failure) {
  const auto fail = [failure](MediaOpenFailure why) {
    if (failure) *failure = why;
    return nullptr;
  };
  QFile file(path);
  if (!file.exists()) return fail(MediaOpenFailure::Missing);
  if (!file.open(QIODevice::ReadOnly)) return fail(MediaOpenFailure::Unplayable);
  auto engine = std::make_unique<Engine>();
  engine->song = MidiSongBytes(file.readAll());
  engine->timing = ReadMidiClock(engine->song);
  if (!engine->timing.Valid()) return fail(MediaOpenFailure::Unplayable);
  engine->lengthMs = qRound64(engine->timing.LengthMs());
  engine->endMs = engine->lengthMs;

  const QString font = GeneralMidiSoundFont();
  if (font.isEmpty()) return fail(MediaOpenFailure::NoEngine);
  SilenceSynthesizerLog();
  engine->settings = new_fluid_settings();
  if (!engine->settings) return fail(MediaOpenFailure::NoEngine);
  fluid_settings_setnum(engine->settings, "synth.sample-rate", SampleRate);
  fluid_settings_setint(engine->settings, "synth.threadsafe-api", 1);
  fluid_settings_setstr(engine->settings, "audio.driver", "pulseaudio");
  engine->synth = new_fluid_synth(engine->settings);
  if (!engine->synth ||
      fluid_synth_sfload(engine->synth, QFile::encodeName(font).constData(), 1) == FLUID_FAILED)
    return fail(MediaOpenFailure::NoEngine);

  if (SoundOutputAvailable())
    engine->driver = new_fluid_audio_driver2(engine->settings, &Engine::RenderForServer, engine.get());
  if (!engine->driver) engine->clock = std::thread([e = engine.get()] { e->RunSilentClock(); });
  if (failure) *failure = MediaOpenFailure::None;
  return std::unique_ptr<MidiDevice>(new MidiDevice(std::move(engine)));
}

MidiDevice::MidiDevice(std::unique_ptr<Engine> engine) : engine_(std::move(engine)) {}

MidiDevice::~MidiDevice() = default;

qint64 MidiDevice::LengthMs() { return engine_->lengthMs; }

qint64 MidiDevice::PositionMs() {
  std::lock_guard lock(engine_->mutex);
  return engine_->PositionLocked();
}

void MidiDevice::PlayFrom(qint64 fromMs, qint64 toMs) {
  std::lock_guard lock(engine_->mutex);
  engine_->StartLocked(fromMs, toMs);
}

void MidiDevice::Pause() {
  std::lock_guard lock(engine_->mutex);
  engine_->heldMs = engine_->PositionLocked();
  engine_->DropPlayerLocked();
}

void MidiDevice::Resume() {
  std::lock_guard lock(engine_->mutex);
  if (!engine_->player) engine_->StartLocked(engine_->heldMs, engine_->endMs);
}

void MidiDevice::Stop() { Pause(); }

bool MidiDevice::Audible() const { return engine_->driver != nullptr; }

}  // namespace platform
