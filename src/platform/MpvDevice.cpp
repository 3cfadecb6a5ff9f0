#include "platform/MpvDevice.h"

#include <cmath>
#include <mpv/client.h>
#include <mpv/render.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QObject>
#include <atomic>
#include <clocale>

namespace platform {

namespace {

// How long the library may take to look at a file, and then to tell the
// size of its picture.
constexpr int OpenTimeOutMs = 15000;
constexpr int PictureTimeOutMs = 3000;
constexpr double WaitSliceSeconds = 0.02;
// The size drawn at while the owner has asked for none.
constexpr int IdlePictureSide = 16;

}  // namespace

// The library's player and what it hands over. The library calls back on
// its own threads; the calls are posted to `mailbox`, which lives on the
// user-interface thread, and one post at a time is enough.
struct MpvDevice::Player {
  mpv_handle* mpv = nullptr;
  mpv_render_context* render = nullptr;
  std::unique_ptr<QObject> mailbox = std::make_unique<QObject>();
  std::atomic<bool> drawPosted{false}, eventsPosted{false};
  std::function<void(const QImage&)> sink;
  QSize target;
  QImage picture;
  bool drawnOnce = false;
  // The file was loaded, or it ended (a file that breaks while playing
  // ends the library's play of it).
  bool loaded = false, ended = false;
  // Where the play stops; -1 for the end.
  qint64 stopAtMs = -1;
  // Where a seek that has not landed yet goes; -1 when none is under way.
  // Until the library says the play has restarted, its own position may
  // still be the old one.
  qint64 seekingToMs = -1;

  ~Player() {
    if (mpv) mpv_set_wakeup_callback(mpv, nullptr, nullptr);
    if (render) {
      mpv_render_context_set_update_callback(render, nullptr, nullptr);
      mpv_render_context_free(render);
    }
    mailbox.reset();
    if (mpv) mpv_terminate_destroy(mpv);
  }

  void Option(const char* name, const QByteArray& value) {
    mpv_set_option_string(mpv, name, value.constData());
  }

  void Handle(const mpv_event* event) {
    if (event->event_id == MPV_EVENT_FILE_LOADED) loaded = true;
    if (event->event_id == MPV_EVENT_END_FILE) ended = true;
    if (event->event_id == MPV_EVENT_PLAYBACK_RESTART || event->event_id == MPV_EVENT_END_FILE)
      seekingToMs = -1;
  }

  void Drain() {
    for (;;) {
      const mpv_event* event = mpv_wait_event(mpv, 0);
      if (event->event_id == MPV_EVENT_NONE) return;
      Handle(event);
    }
  }

  // Waits for the library's events until `done` holds or the time is up,
  // drawing the pictures that come meanwhile.
  template <class Done>
  bool WaitFor(int timeOutMs, Done done) {
    const QDeadlineTimer deadline(timeOutMs);
    while (!done()) {
      if (deadline.hasExpired()) return false;
      Handle(mpv_wait_event(mpv, WaitSliceSeconds));
      Draw(false);
    }
    return true;
  }

  // Draws the newest picture, when there is one or when `again` asks for
  // the present one at a new size, and hands it over.
  void Draw(bool again) {
    if (!render) return;
    const bool fresh = mpv_render_context_update(render) & MPV_RENDER_UPDATE_FRAME;
    if (!fresh && !(again && drawnOnce)) return;
    const QSize size = target.isEmpty() ? QSize(IdlePictureSide, IdlePictureSide) : target;
    if (picture.size() != size || !picture.isDetached())
      picture = QImage(size, QImage::Format_RGBX8888);
    int sizes[2] = {size.width(), size.height()};
    size_t stride = size_t(picture.bytesPerLine());
    int noWait = 0;
    char format[] = "rgb0";
    mpv_render_param params[] = {
        {MPV_RENDER_PARAM_SW_SIZE, sizes},
        {MPV_RENDER_PARAM_SW_FORMAT, format},
        {MPV_RENDER_PARAM_SW_STRIDE, &stride},
        {MPV_RENDER_PARAM_SW_POINTER, picture.bits()},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &noWait},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    if (mpv_render_context_render(render, params) < 0) return;
    drawnOnce = true;
    if (sink) sink(picture);
  }

  static void OnWakeup(void* data) {
    auto* player = static_cast<Player*>(data);
    if (player->eventsPosted.exchange(true)) return;
    QMetaObject::invokeMethod(
        player->mailbox.get(),
        [player] {
          player->eventsPosted = false;
          player->Drain();
        },
        Qt::QueuedConnection);
  }

  static void OnNewPicture(void* data) {
    auto* player = static_cast<Player*>(data);
    if (player->drawPosted.exchange(true)) return;
    QMetaObject::invokeMethod(
        player->mailbox.get(),
        [player] {
          player->drawPosted = false;
          player->Draw(false);
        },
        Qt::QueuedConnection);
  }

  bool Property(const char* name, qint64& value) {
    int64_t number = 0;
    if (mpv_get_property(mpv, name, MPV_FORMAT_INT64, &number) < 0) return false;
    value = number;
    return true;
  }

  bool Property(const char* name, double& value) {
    return mpv_get_property(mpv, name, MPV_FORMAT_DOUBLE, &value) >= 0;
  }

  bool HasPictureTrack() {
    char* vid = mpv_get_property_string(mpv, "vid");
    const bool has = vid && qstrcmp(vid, "no") != 0;
    mpv_free(vid);
    return has;
  }

  void SetPause(bool on) {
    int flag = on ? 1 : 0;
    mpv_set_property(mpv, "pause", MPV_FORMAT_FLAG, &flag);
  }
};

std::unique_ptr<MpvDevice> MpvDevice::Open(const QString& path, MediaOpenFailure* failure) {
  const auto fail = [failure](MediaOpenFailure why) {
    if (failure) *failure = why;
    return nullptr;
  };
  if (!QFileInfo(path).isFile()) return fail(MediaOpenFailure::Missing);
  // The library refuses to start under a numeric locale other than "C",
  // which Qt sets from the environment.
  std::setlocale(LC_NUMERIC, "C");
  auto player = std::make_unique<Player>();
  player->mpv = mpv_create();
  if (!player->mpv) return fail(MediaOpenFailure::NoEngine);

  const QByteArray audioOut = qgetenv("VISTREL_MPV_AO");
  const QByteArray pictureOut = qgetenv("VISTREL_MPV_VO");
  const bool drawing = pictureOut.isEmpty() || pictureOut == "libmpv";
  if (!audioOut.isEmpty()) player->Option("ao", audioOut);
  player->Option("vo", drawing ? QByteArray("libmpv") : pictureOut);
  // Opened paused; kept open at the end, so that the end is seen by
  // polling the position; seeks land where asked, also in MPEG streams.
  player->Option("pause", "yes");
  player->Option("keep-open", "yes");
  player->Option("hr-seek", "yes");
  player->Option("hr-seek-demuxer-offset", "1");
  // A sound file's cover picture is not a film.
  player->Option("audio-display", "no");
  player->Option("idle", "yes");
  // Nothing of the user's own set-up of the library, and no messages.
  for (const char* off : {"config", "load-scripts", "osc", "terminal", "input-default-bindings",
                          "input-vo-keyboard", "resume-playback", "save-position-on-quit", "ytdl"})
    player->Option(off, "no");
  player->Option("msg-level", "all=no");
  player->Option("sub-auto", "no");
  player->Option("audio-file-auto", "no");
  if (mpv_initialize(player->mpv) < 0) return fail(MediaOpenFailure::NoEngine);

  if (drawing) {
    char apiType[] = MPV_RENDER_API_TYPE_SW;
    mpv_render_param params[] = {{MPV_RENDER_PARAM_API_TYPE, apiType}, {MPV_RENDER_PARAM_INVALID, nullptr}};
    if (mpv_render_context_create(&player->render, player->mpv, params) < 0) {
      player->render = nullptr;
      return fail(MediaOpenFailure::NoEngine);
    }
    mpv_render_context_set_update_callback(player->render, &Player::OnNewPicture, player.get());
  }
  mpv_set_wakeup_callback(player->mpv, &Player::OnWakeup, player.get());

  const QByteArray file = QFile::encodeName(path);
  const char* load[] = {"loadfile", file.constData(), nullptr};
  if (mpv_command(player->mpv, load) < 0) return fail(MediaOpenFailure::Unplayable);
  Player* p = player.get();
  if (!p->WaitFor(OpenTimeOutMs, [p] { return p->loaded || p->ended; }) || p->ended)
    return fail(MediaOpenFailure::Unplayable);
  // The picture's size comes once its first picture is decoded.
  if (p->HasPictureTrack()) {
    qint64 width = 0;
    p->WaitFor(PictureTimeOutMs, [p, &width] { return p->ended || p->Property("dwidth", width); });
  }
  if (failure) *failure = MediaOpenFailure::None;
  return std::unique_ptr<MpvDevice>(new MpvDevice(std::move(player)));
}

MpvDevice::MpvDevice(std::unique_ptr<Player> player) : player_(std::move(player)) {}

MpvDevice::~MpvDevice() = default;

qint64 MpvDevice::LengthMs() {
  player_->Drain();
  double seconds = 0;
  if (!player_->Property("duration", seconds) || seconds < 0) return -1;
  return qRound64(seconds * 1000);
}

qint64 MpvDevice::PositionMs() {
  player_->Drain();
  int atEnd = 0;
  mpv_get_property(player_->mpv, "eof-reached", MPV_FORMAT_FLAG, &atEnd);
  // The last picture's time lies a little before the length: at the end
  // the position is where the play was to stop.
  if (atEnd || player_->ended) return player_->stopAtMs >= 0 ? player_->stopAtMs : LengthMs();
  if (player_->seekingToMs >= 0) return player_->seekingToMs;
  double seconds = 0;
  if (!player_->Property("time-pos", seconds)) return -1;
  return qMax<qint64>(0, qRound64(seconds * 1000));
}

void MpvDevice::PlayFrom(qint64 fromMs, qint64 toMs) {
  player_->Drain();
  const qint64 length = LengthMs();
  player_->stopAtMs = (toMs >= 0 && toMs < length) ? toMs : -1;
  const QByteArray end =
      player_->stopAtMs >= 0 ? QByteArray::number(player_->stopAtMs / 1000.0, 'f', 3) : QByteArray("none");
  mpv_set_property_string(player_->mpv, "end", end.constData());
  // A file that stands paused where it is to start plays from there: a seek
  // would show the picture it already has once more after the next one.
  double now = -1;
  int paused = 0;
  const bool there = mpv_get_property(player_->mpv, "time-pos", MPV_FORMAT_DOUBLE, &now) >= 0 &&
                     mpv_get_property(player_->mpv, "pause", MPV_FORMAT_FLAG, &paused) >= 0 && paused &&
                     std::abs(now * 1000.0 - double(qMax<qint64>(0, fromMs))) < 1.0;
  if (!there) {
    const QByteArray target = QByteArray::number(qMax<qint64>(0, fromMs) / 1000.0, 'f', 3);
    const char* seek[] = {"seek", target.constData(), "absolute+exact", nullptr};
    if (mpv_command(player_->mpv, seek) >= 0) player_->seekingToMs = qMax<qint64>(0, fromMs);
  }
  player_->SetPause(false);
}

void MpvDevice::Pause() { player_->SetPause(true); }

void MpvDevice::Resume() { player_->SetPause(false); }

void MpvDevice::Stop() { player_->SetPause(true); }

bool MpvDevice::PictureSize(QSize& size) {
  player_->Drain();
  qint64 width = 0, height = 0;
  if (!player_->Property("dwidth", width) || !player_->Property("dheight", height) || width <= 0 ||
      height <= 0)
    return false;
  size = QSize(int(width), int(height));
  return true;
}

void MpvDevice::SetPictureSink(std::function<void(const QImage&)> sink) {
  player_->sink = std::move(sink);
}

void MpvDevice::SetPictureTargetSize(const QSize& size) {
  if (size == player_->target) return;
  player_->target = size;
  player_->Draw(true);
}

}  // namespace platform
