#include "platform/SoundPlayer.h"

#include <pulse/context.h>
#include <pulse/mainloop.h>
#include <pulse/operation.h>
#include <pulse/sample.h>
#include <pulse/stream.h>

#include <QDeadlineTimer>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace platform {

namespace {

// Sample encodings of the wave format.
constexpr int IntegerSamples = 1;
constexpr int FloatSamples = 3;
constexpr int ALawSamples = 6;
constexpr int MuLawSamples = 7;
constexpr int ExtensibleHeader = 0xFFFE;

// Bounds that the sound server accepts.
constexpr int MostChannels = 32;
constexpr int HighestRate = 384000;

// How long the connection and the stream may take to come up, how much
// longer than the sound itself its end may take, and how long the worker
// sleeps between looks at what it was asked.
constexpr int ConnectTimeOutMs = 1000;
constexpr int DrainMarginMs = 3000;
constexpr int PollMicroseconds = 50000;
constexpr int FlushRounds = 20;
constexpr int FlushMicroseconds = 10000;

quint32 U32(const QByteArray& bytes, qsizetype at) {
  const auto* p = reinterpret_cast<const uchar*>(bytes.constData()) + at;
  return quint32(p[0]) | quint32(p[1]) << 8 | quint32(p[2]) << 16 | quint32(p[3]) << 24;
}

quint16 U16(const QByteArray& bytes, qsizetype at) {
  const auto* p = reinterpret_cast<const uchar*>(bytes.constData()) + at;
  return quint16(p[0] | p[1] << 8);
}

bool IdAt(const QByteArray& bytes, qsizetype at, const char* id) {
  return bytes.size() >= at + 4 && bytes.mid(at, 4) == QByteArray::fromRawData(id, 4);
}

// The server's sample format for a wave format; PA_SAMPLE_INVALID when it
// has none.
pa_sample_format_t ServerFormat(int encoding, int bits) {
  switch (encoding) {
    case IntegerSamples:
      switch (bits) {
        case 8: return PA_SAMPLE_U8;
        case 16: return PA_SAMPLE_S16LE;
        case 24: return PA_SAMPLE_S24LE;
        case 32: return PA_SAMPLE_S32LE;
        default: return PA_SAMPLE_INVALID;
      }
    case FloatSamples: return bits == 32 ? PA_SAMPLE_FLOAT32LE : PA_SAMPLE_INVALID;
    case ALawSamples: return bits == 8 ? PA_SAMPLE_ALAW : PA_SAMPLE_INVALID;
    case MuLawSamples: return bits == 8 ? PA_SAMPLE_ULAW : PA_SAMPLE_INVALID;
    default: return PA_SAMPLE_INVALID;
  }
}

}  // namespace

std::optional<WaveFormat> ParseWave(const QByteArray& wave) {
  if (!IdAt(wave, 0, "RIFF") || !IdAt(wave, 8, "WAVE")) return std::nullopt;
  WaveFormat format;
  bool haveFormat = false, haveData = false;
  // Chunks follow one another, each padded to an even length; 64-bit
  // arithmetic keeps a wild chunk size from wrapping round.
  qint64 at = 12;
  while (at + 8 <= wave.size()) {
    const qint64 size = U32(wave, at + 4);
    const qint64 body = at + 8;
    if (IdAt(wave, at, "fmt ")) {
      if (size < 16 || body + 16 > wave.size()) return std::nullopt;
      format.Encoding = U16(wave, body);
      format.Channels = U16(wave, body + 2);
      format.SampleRate = int(qMin<quint32>(U32(wave, body + 4), quint32(INT_MAX)));
      format.BitsPerSample = U16(wave, body + 14);
      if (format.Encoding == ExtensibleHeader) {
        // The sub-format's first two bytes are the encoding.
        if (size < 40 || body + 26 > wave.size()) return std::nullopt;
        format.Encoding = U16(wave, body + 24);
      }
      haveFormat = true;
    } else if (IdAt(wave, at, "data")) {
      format.DataOffset = body;
      format.DataLength = qsizetype(qMin<qint64>(size, wave.size() - body));
      haveData = true;
    }
    if (haveFormat && haveData) break;
    at = body + size + (size & 1);
  }
  if (!haveFormat || !haveData) return std::nullopt;
  if (format.Channels < 1 || format.Channels > MostChannels) return std::nullopt;
  if (format.SampleRate < 1 || format.SampleRate > HighestRate) return std::nullopt;
  if (ServerFormat(format.Encoding, format.BitsPerSample) == PA_SAMPLE_INVALID) return std::nullopt;
  const qsizetype frame = qsizetype(format.Channels) * format.BitsPerSample / 8;
  format.DataLength -= format.DataLength % frame;
  return format;
}

// The worker thread and what it is asked. Play and Stop leave their wish
// under the lock and wake the worker, which looks at it between the steps
// of its conversation with the server: a new generation means that the
// sound in hand is to be cut off.
struct SoundPlayer::Worker {
  std::mutex mutex;
  std::condition_variable wake;
  QByteArray pending;
  WaveFormat pendingFormat;
  bool hasPending = false;
  quint64 generation = 0;
  bool quit = false;
  // The worker's main loop while it has one, so that it can be woken.
  pa_mainloop* loop = nullptr;
  std::thread thread;

  pa_context* context = nullptr;

  // Under the lock: wakes the worker wherever it waits.
  void WakeLocked() {
    wake.notify_one();
    if (loop) pa_mainloop_wakeup(loop);
  }

  void Run() {
    pa_mainloop* own = pa_mainloop_new();
    {
      std::lock_guard lock(mutex);
      loop = own;
    }
    while (own) {
      QByteArray sound;
      WaveFormat format;
      quint64 wanted = 0;
      {
        std::unique_lock lock(mutex);
        wake.wait(lock, [this] { return quit || hasPending; });
        if (quit) break;
        sound = std::move(pending);
        pending = QByteArray();
        format = pendingFormat;
        hasPending = false;
        wanted = generation;
      }
      PlayOne(own, sound, format, wanted);
    }
    Disconnect();
    std::lock_guard lock(mutex);
    loop = nullptr;
    if (own) pa_mainloop_free(own);
  }

  // Whether the sound of that generation is still wanted.
  bool Wanted(quint64 wanted) {
    std::lock_guard lock(mutex);
    return !quit && generation == wanted;
  }

  // Runs the loop until `done` holds, the sound is no longer wanted or the
  // deadline passes; whether `done` holds.
  template <class Done>
  bool RunUntil(pa_mainloop* own, quint64 wanted, QDeadlineTimer deadline, Done done) {
    while (!done()) {
      if (!Wanted(wanted) || deadline.hasExpired()) return false;
      if (pa_mainloop_prepare(own, PollMicroseconds) < 0 || pa_mainloop_poll(own) < 0 ||
          pa_mainloop_dispatch(own) < 0)
        return false;
    }
    return true;
  }

  bool Connect(pa_mainloop* own, quint64 wanted) {
    if (context && pa_context_get_state(context) == PA_CONTEXT_READY) return true;
    Disconnect();
    context = pa_context_new(pa_mainloop_get_api(own), "Vistrel");
    if (!context) return false;
    if (pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
      Disconnect();
      return false;
    }
    const bool settled = RunUntil(own, wanted, QDeadlineTimer(ConnectTimeOutMs), [this] {
      const pa_context_state_t state = pa_context_get_state(context);
      return state == PA_CONTEXT_READY || !PA_CONTEXT_IS_GOOD(state);
    });
    if (settled && pa_context_get_state(context) == PA_CONTEXT_READY) return true;
    Disconnect();
    return false;
  }

  void Disconnect() {
    if (!context) return;
    pa_context_disconnect(context);
    pa_context_unref(context);
    context = nullptr;
  }

  void PlayOne(pa_mainloop* own, const QByteArray& sound, const WaveFormat& format, quint64 wanted) {
    if (format.DataLength <= 0 || !Connect(own, wanted)) return;
    pa_sample_spec spec;
    spec.format = ServerFormat(format.Encoding, format.BitsPerSample);
    spec.rate = quint32(format.SampleRate);
    spec.channels = quint8(format.Channels);
    if (!pa_sample_spec_valid(&spec)) return;
    pa_stream* stream = pa_stream_new(context, "Sound", &spec, nullptr);
    if (!stream) return;
    // A short target buffer, so that the sound starts at once.
    pa_buffer_attr buffer;
    buffer.maxlength = quint32(-1);
    buffer.tlength = quint32(pa_usec_to_bytes(100000, &spec));
    buffer.prebuf = quint32(-1);
    buffer.minreq = quint32(-1);
    buffer.fragsize = quint32(-1);
    bool ready = false;
    if (pa_stream_connect_playback(stream, nullptr, &buffer, PA_STREAM_ADJUST_LATENCY, nullptr,
                                   nullptr) == 0) {
      ready = RunUntil(own, wanted, QDeadlineTimer(ConnectTimeOutMs), [stream] {
        const pa_stream_state_t state = pa_stream_get_state(stream);
        return state == PA_STREAM_READY || !PA_STREAM_IS_GOOD(state);
      }) && pa_stream_get_state(stream) == PA_STREAM_READY;
    }
    if (ready &&
        pa_stream_write(stream, sound.constData() + format.DataOffset, size_t(format.DataLength),
                        nullptr, 0, PA_SEEK_RELATIVE) == 0) {
      // The sound plays out, or is cut off by the next one.
      bool drained = false;
      pa_operation* drain = pa_stream_drain(
          stream, [](pa_stream*, int, void* flag) { *static_cast<bool*>(flag) = true; }, &drained);
      const pa_usec_t length = pa_bytes_to_usec(quint64(format.DataLength), &spec);
      RunUntil(own, wanted, QDeadlineTimer(qint64(length / 1000) + DrainMarginMs), [&] {
        return drained || !PA_STREAM_IS_GOOD(pa_stream_get_state(stream));
      });
      if (drain) {
        pa_operation_cancel(drain);
        pa_operation_unref(drain);
      }
    }
    // Leaving the stream ends the sound on the server at once, once the
    // server has heard of it.
    pa_stream_disconnect(stream);
    pa_stream_unref(stream);
    Flush(own);
    if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(context))) Disconnect();
  }

  // Sends what is still waiting for the server; briefly, as the worker may
  // be asked for the next sound.
  void Flush(pa_mainloop* own) {
    for (int i = 0; i < FlushRounds && PA_CONTEXT_IS_GOOD(pa_context_get_state(context)) &&
                    pa_context_is_pending(context) > 0;
         ++i)
      if (pa_mainloop_prepare(own, FlushMicroseconds) < 0 || pa_mainloop_poll(own) < 0 ||
          pa_mainloop_dispatch(own) < 0)
        return;
  }
};

SoundPlayer::SoundPlayer() : worker_(std::make_unique<Worker>()) {}

SoundPlayer::~SoundPlayer() {
  {
    std::lock_guard lock(worker_->mutex);
    worker_->quit = true;
    worker_->WakeLocked();
  }
  if (worker_->thread.joinable()) worker_->thread.join();
}

bool SoundPlayer::Play(const QByteArray& wave) {
  const std::optional<WaveFormat> format = ParseWave(wave);
  if (!format) return false;
  std::lock_guard lock(worker_->mutex);
  worker_->pending = wave;
  worker_->pendingFormat = *format;
  worker_->hasPending = true;
  ++worker_->generation;
  if (!worker_->thread.joinable()) worker_->thread = std::thread([w = worker_.get()] { w->Run(); });
  worker_->WakeLocked();
  return true;
}

void SoundPlayer::Stop() {
  std::lock_guard lock(worker_->mutex);
  worker_->hasPending = false;
  worker_->pending = QByteArray();
  ++worker_->generation;
  worker_->WakeLocked();
}

}  // namespace platform
