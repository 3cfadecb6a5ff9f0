#include "platform/SpeechSynth.h"

#include <espeak-ng/espeak_ng.h>

#include <QFileInfo>
#include <QtEndian>
#include <mutex>

namespace platform {

namespace {

// The engine is one process-wide object: everything about it happens under
// this lock.
std::mutex engineLock;

enum class EngineState { Uninitialised, Ready, Failed };
EngineState state = EngineState::Uninitialised;
QByteArray dataPath;
// The engine cannot be shut down and brought up again in one process (its
// shutdown waits for ever on a worker of its own), so it is brought up once
// per data path and kept; this is the path it runs on.
bool engineUp = false;
QByteArray enginePath;
int sampleRate = 0;
// The samples of the synthesis under way.
QByteArray* collected = nullptr;

int CollectSamples(short* samples, int count, espeak_EVENT*) {
  if (collected && samples && count > 0)
    collected->append(reinterpret_cast<const char*>(samples), qsizetype(count) * 2);
  return 0;
}

// Brings the engine up with the current data path; false when its data or
// its voice is missing. Called with the lock held.
bool EnsureEngine() {
  if (state == EngineState::Ready) return true;
  if (state == EngineState::Failed) return false;
  state = EngineState::Failed;
  if (engineUp && enginePath == dataPath) {
    state = EngineState::Ready;
    return true;
  }
  // The engine quietly falls back on its own data when the path given holds
  // none; a path without data means no voice here.
  if (!dataPath.isEmpty()) {
    const QString folder = QString::fromLocal8Bit(dataPath);
    if (!QFileInfo::exists(folder + "/espeak-ng-data/phontab") &&
        !QFileInfo::exists(folder + "/phontab"))
      return false;
  }
  espeak_ng_InitializePath(dataPath.isEmpty() ? nullptr : dataPath.constData());
  espeak_ng_ERROR_CONTEXT context = nullptr;
  const espeak_ng_STATUS status = espeak_ng_Initialize(&context);
  if (context) espeak_ng_ClearErrorContext(&context);
  if (status != ENS_OK) return false;
  if (espeak_ng_InitializeOutput(ENOUTPUT_MODE_SYNCHRONOUS, 0, nullptr) != ENS_OK) return false;
  espeak_SetSynthCallback(CollectSamples);
  if (espeak_ng_SetVoiceByName("en") != ENS_OK) return false;
  sampleRate = espeak_ng_GetSampleRate();
  if (sampleRate <= 0) return false;
  engineUp = true;
  enginePath = dataPath;
  state = EngineState::Ready;
  return true;
}

void PutLe16(QByteArray& bytes, quint16 value) {
  char raw[2];
  qToLittleEndian(value, raw);
  bytes.append(raw, 2);
}

void PutLe32(QByteArray& bytes, quint32 value) {
  char raw[4];
  qToLittleEndian(value, raw);
  bytes.append(raw, 4);
}

// A wave file of 16-bit mono samples.
QByteArray WaveFile(const QByteArray& samples, int rate) {
  QByteArray wave;
  wave.reserve(44 + samples.size());
  wave.append("RIFF", 4);
  PutLe32(wave, quint32(36 + samples.size()));
  wave.append("WAVEfmt ", 8);
  PutLe32(wave, 16);
  PutLe16(wave, 1);  // integer samples
  PutLe16(wave, 1);  // mono
  PutLe32(wave, quint32(rate));
  PutLe32(wave, quint32(rate * 2));
  PutLe16(wave, 2);
  PutLe16(wave, 16);
  wave.append("data", 4);
  PutLe32(wave, quint32(samples.size()));
  wave.append(samples);
  return wave;
}

}  // namespace

SpokenLine SynthesizeSpeech(const QString& text) {
  SpokenLine line;
  const QByteArray utf8 = text.toUtf8();
  if (utf8.trimmed().isEmpty()) return line;
  std::lock_guard<std::mutex> guard(engineLock);
  if (!EnsureEngine()) return line;
  QByteArray samples;
  collected = &samples;
  const espeak_ng_STATUS status =
      espeak_ng_Synthesize(utf8.constData(), size_t(utf8.size()) + 1, 0, POS_CHARACTER, 0,
                           espeakCHARS_UTF8, nullptr, nullptr);
  collected = nullptr;
  if (status != ENS_OK || samples.isEmpty()) return line;
  line.Wave = WaveFile(samples, sampleRate);
  line.DurationMs = int(qint64(samples.size() / 2) * 1000 / sampleRate);
  return line;
}

bool SpeechVoiceReady() {
  std::lock_guard<std::mutex> guard(engineLock);
  return EnsureEngine();
}

void SetSpeechDataPath(const QString& path) {
  std::lock_guard<std::mutex> guard(engineLock);
  const QByteArray wanted = path.toLocal8Bit();
  if (wanted == dataPath) return;
  dataPath = wanted;
  state = EngineState::Uninitialised;
}

}  // namespace platform
