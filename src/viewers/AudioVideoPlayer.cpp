#include "viewers/AudioVideoPlayer.h"

#include <QRandomGenerator>

#include "cd/Mp3Tags.h"
#include "viewers/PlayerCommands.h"
#include "viewers/VideoFrame.h"

namespace {

const QString Unknown = QStringLiteral("Unknown");
constexpr int TwipsPerPixel = 15;

}  // namespace

AudioVideoPlayer::AudioVideoPlayer(QWidget* parent)
    : QWidget(parent),
      FrameVideo(new VideoFrame(this)),
      StatusDisplay(new QFrame(this)),
      Status(new QLabel(StatusDisplay)),
      TimeLabel(new QLabel(StatusDisplay)),
      cTimeLabel(new QLabel(StatusDisplay)),
      tTimeLabel(new QLabel(StatusDisplay)),
      Label1(new QLabel("Title:", this)),
      Label2(new QLabel("Artist:", this)),
      Label3(new QLabel("Style:", this)),
      Label4(new QLabel("Album:", this)),
      Label6(new QLabel("Year:", this)),
      TitleLabel(new QLabel(Unknown, this)),
      AuthorLabel(new QLabel(Unknown, this)),
      CategoryLabel(new QLabel(Unknown, this)),
      AlbumLabel(new QLabel(Unknown, this)),
      YearLabel(new QLabel(Unknown, this)),
      TrackLabel(new QLabel(this)),
      SeparatorLine(new QFrame(this)) {
  childNo_ = QRandomGenerator::global()->generateDouble() * 1000;
  FrameVideo->setObjectName("FrameVideo");
  FrameVideo->setEnabled(false);
  StatusDisplay->setObjectName("StatusDisplay");
  StatusDisplay->setAutoFillBackground(true);
  QFont stripFont = font();
  stripFont.setPixelSize(11);
  StatusDisplay->setFont(stripFont);
  Status->setText("Idle");
  cTimeLabel->setText("00:00");
  tTimeLabel->setText("/ 00:00");
  cTimeLabel->hide();
  tTimeLabel->hide();
  TimeLabel->setText("0:00:00 / 0:00:00");
  // The panel's rows are a line of small type each.
  for (QLabel* caption : {Label1, Label2, Label3, Label4, Label6}) caption->setFont(stripFont);
  QFont bold = stripFont;
  bold.setBold(true);
  for (QLabel* value : {TitleLabel, AuthorLabel, CategoryLabel, AlbumLabel, YearLabel, TrackLabel})
    value->setFont(bold);
  SeparatorLine->setFrameShape(QFrame::VLine);
  SeparatorLine->setFrameShadow(QFrame::Sunken);
  for (size_t i = 0; i < Line.size(); ++i) {
    Line[i] = new QFrame(this);
    Line[i]->setObjectName(QStringLiteral("Line%1").arg(i + 1));
    Line[i]->setAutoFillBackground(true);
    // Line1 to Line5 are the dark edges of grooves, Line6 to Line10 their
    // light ones.
    QPalette palette = Line[i]->palette();
    palette.setColor(QPalette::Window, palette.color(i < 5 ? QPalette::Mid : QPalette::Light));
    Line[i]->setPalette(palette);
  }

  TimerMisc.setInterval(1000);
  TimerAtEndFile.setInterval(100);
  connect(&TimerMisc, &QTimer::timeout, this, &AudioVideoPlayer::TimerMisc_Timer);
  connect(&TimerAtEndFile, &QTimer::timeout, this, &AudioVideoPlayer::TimerAtEndFile_Timer);

  strip_ = QRect(0, 0, 3000, 345);
  ShowPanels();
}

AudioVideoPlayer::~AudioVideoPlayer() {
  if (skipClose_)
    skipClose_ = false;
  else
    ClosePlayer();
}

// ---- Loading ----

QString AudioVideoPlayer::Alias() const { return QString::number(childNo_, 'g', 15) + "movie"; }

void AudioVideoPlayer::SetStatus(const QString& word) {
  Status->setText(word);
  Status->adjustSize();
}

void AudioVideoPlayer::LoadFile() {
  ClosePlayer();
  TimerMisc.stop();
  TimerAtEndFile.stop();
  playStarted_ = false;
  cTimeLabel->setText("00:00");
  tTimeLabel->setText("/ 00:00");
  RefreshTimeLabel();
  fileLoaded_ = false;
  if (fileName_.isEmpty()) {
    SetStatus("Idle");
    FrameVideo->setEnabled(false);
    return;
  }
  SetStatus("Loading");
  emit PlayStateChange(3);

  // The extension is compared as it is written: ".RMI" and ".AVI" in
  // capitals take the general device and no second attempt.
  const QString name = fileName_;
  QString device = name.right(4) == ".rmi" ? QStringLiteral("sequencer") : QStringLiteral("MPEGVideo");
  for (bool firstAttempt = true;; firstAttempt = false) {
    deviceType_ = device;
    PlayerDevice().DeviceAlias = Alias();
    lastResult_ = MciOpen(name, device, FrameVideo->Handle());
    if (lastResult_ == "Success") {
      MciVideoSize(videoWidth_, videoHeight_);
      if (movieSizer_ == 0 && playerType_ == 1) {
        if (videoWidth_ > -1) frame_.setWidth(videoWidth_ * TwipsPerPixel);
        if (videoHeight_ > -1) frame_.setHeight(videoHeight_ * TwipsPerPixel);
        PlaceFrame(frame_);
      }
      FrameVideo->setEnabled(playerType_ == 0 || (videoWidth_ >= 0 && videoHeight_ >= 0));
      const qint64 ms = MciLengthMs();
      const qint64 frames = MciLengthFrames();
      framesPerSecond_ = (ms > 0 && frames != -1) ? int(RoundHalfEven(frames / (ms / 1000.0))) : -1;
      lengthUnits_ = MciLengthFrames();
      durationSeconds_ = int(RoundHalfEven(MciLengthMs() / 1000.0));
      if (lengthUnits_ > 0) {
        SetStatus("Loaded successfully");
        fileLoaded_ = true;
        tTimeLabel->setText("/ " + FormatTime(durationSeconds_));
        RefreshTimeLabel();
        SizeVideo();
        if (playerType_ == 0) ReadTags();
      } else {
        LoadFailed();
      }
    } else {
      LoadFailed();
    }
    // An ".avi" that the general device refused gets one more try on the
    // AVI device, unless the owner has meanwhile moved on to another file.
    if (fileLoaded_ || !firstAttempt || fileName_ != name || !name.endsWith(".avi")) break;
    device = QStringLiteral("AviVideo");
  }
}

void AudioVideoPlayer::LoadFailed() {
  StopPlay();
  ClosePlayer();
  SetStatus("Stopped");
  // The alias of a failed open may still be held: the next one differs.
  childNo_ += 1;
  emit PlayStateChange(0);
  emit OnPlayFinish();
}

// The single place where the audio panel takes a file's tags. The tag
// reader is not part of the program yet: until it is, every field stays
// as the panel starts it, "Unknown".
void AudioVideoPlayer::ReadTags() {
  const TagTexts tags = ::ReadTags(fileName_);
  ShowTags(PanelTags{tags.Title, tags.Artist, tags.Genre, tags.Album, tags.Year, tags.Track});
}

void AudioVideoPlayer::ShowTags(const PanelTags& tags) {
  SetTagsVisible(false);
  const auto take = [](QLabel* label, const QString& value, const QString& none) {
    label->setText(value.isEmpty() ? none : value);
  };
  take(TitleLabel, tags.Title, Unknown);
  take(AuthorLabel, tags.Artist, Unknown);
  take(CategoryLabel, tags.Style, Unknown);
  take(AlbumLabel, tags.Album, Unknown);
  take(YearLabel, tags.Year, Unknown);
  take(TrackLabel, tags.Track, QString());
  SetTagsVisible(true);
}

// ---- Playing ----

void AudioVideoPlayer::RaisePlayerError() {
  emit OnPlayerError(LeadingNumber(lastResult_.mid(8, 3)), lastResult_);
}

void AudioVideoPlayer::Play() {
  if (!fileLoaded_) LoadFile();
  if (!fileLoaded_) {
    SetStatus("File not loaded");
    RaisePlayerError();
    return;
  }
  if (playMode_.isEmpty() && !playStarted_) {
    lastResult_ = MciPlay(QString(), QString());
    if (Status->text() == "Loaded successfully") emit OnPlayStart();
    if (lastResult_ == "Success") {
      SetStatus("Playing");
      emit PlayStateChange(2);
      ShowStart();
      playStarted_ = true;
    }
  } else if (playMode_ == "Pause" && playStarted_) {
    lastResult_ = MciResume();
    SetStatus("Playing");
    emit PlayStateChange(2);
    if (lastResult_ == "Success") ShowStart();
  }
}

void AudioVideoPlayer::ShowStart() {
  TimerAtEndFile.start();
  TimerMisc.start();
  playMode_ = "Play";
}

void AudioVideoPlayer::Pause() {
  if (!fileLoaded_) {
    SetStatus("File not loaded");
    RaisePlayerError();
  } else if (playMode_ == "Play" && playStarted_) {
    lastResult_ = MciPause();
    SetStatus("Paused");
    emit PlayStateChange(1);
    if (lastResult_ == "Success") {
      TimerMisc.stop();
      TimerAtEndFile.stop();
      playMode_ = "Pause";
    }
  } else if (playMode_ == "Pause" && playStarted_) {
    lastResult_ = MciResume();
    SetStatus("Playing");
    emit PlayStateChange(2);
    if (lastResult_ == "Success") {
      TimerMisc.start();
      TimerAtEndFile.start();
      playMode_ = "Play";
    }
  } else {
    SetStatus("Play the file");
  }
}

void AudioVideoPlayer::StopPlay() {
  playMode_.clear();
  // The end-of-file poll keeps running.
  TimerMisc.stop();
  lastResult_ = MciStop();
  SetStatus("Stopped");
  if (playStarted_) {
    playStarted_ = false;
    emit PlayStateChange(0);
  }
}

void AudioVideoPlayer::SkipForward() { Skip(true); }

void AudioVideoPlayer::SkipBackward() { Skip(false); }

// A paused file is resumed for the seek and paused again after it.
void AudioVideoPlayer::Skip(bool forward) {
  if (framesPerSecond_ <= 0) return;
  const QString mode = playMode_;
  if (mode == "Pause") Play();
  if (playMode_ == "Play" && playStarted_) {
    position_ = MciPosition();
    const qint64 target = forward ? position_ + qint64(fastForwardBySec_) * framesPerSecond_
                                  : position_ - qint64(fastRewindBySec_) * framesPerSecond_;
    lastResult_ = MciPlayFrom(target);
    if (lastResult_ != "Success") lastResult_ = MciPlayFrom(forward ? MciLengthFrames() : 1);
    if (lastResult_ == "Success") {
      position_ = MciPosition();
      cTimeLabel->setText(FormatTime(RoundHalfEven(double(position_) / framesPerSecond_)));
      RefreshTimeLabel();
    }
  }
  if (mode == "Pause") Pause();
}

void AudioVideoPlayer::SeekToPosition() {
  const QString mode = playMode_;
  if (mode == "Pause") Play();
  if (playMode_ == "Play" && playStarted_) {
    lastResult_ = MciPlayFrom(position_);
    if (lastResult_ == "Success") {
      position_ = MciPosition();
      cTimeLabel->setText(FormatTime(RoundHalfEven(double(position_) / framesPerSecond_)));
      RefreshTimeLabel();
    }
  }
  if (mode == "Pause") Pause();
}

void AudioVideoPlayer::RestartVideo() {
  playMode_.clear();
  playStarted_ = false;
  TimerMisc.stop();
  TimerAtEndFile.stop();
  cTimeLabel->setText(tTimeLabel->text().right(5));
  RefreshTimeLabel();
  Play();
}

void AudioVideoPlayer::ClosePlayer() {
  TimerMisc.stop();
  TimerAtEndFile.stop();
  if (fileLoaded_) {
    PlayerDevice().DeviceAlias = Alias();
    lastResult_ = MciClose();
    if (lastResult_ != "Success") lastResult_ = MciClose();
  }
  for (QLabel* value : {TitleLabel, AuthorLabel, CategoryLabel, AlbumLabel, YearLabel, TrackLabel}) value->hide();
  SetStatus("Idle");
  cTimeLabel->setText("00:00");
  tTimeLabel->setText("/ 00:00");
  RefreshTimeLabel();
}

// ---- Timers ----

void AudioVideoPlayer::TimerMisc_Timer() {
  if (!fileLoaded_) {
    SetStatus("Idle");
    return;
  }
  if (scrolling_ || framesPerSecond_ <= 0) return;
  position_ = MciPosition();
  cTimeLabel->setText(FormatTime(RoundHalfEven(double(position_) / framesPerSecond_)));
  RefreshTimeLabel();
}

bool AudioVideoPlayer::MciAtEnd() {
  if (lengthUnits_ == 0) lengthUnits_ = MciLengthFrames();
  const qint64 position = MciPosition();
  if (lengthUnits_ == -1 || position == -1) return false;
  return position >= lengthUnits_;
}

void AudioVideoPlayer::TimerAtEndFile_Timer() {
  if (!MciAtEnd()) return;
  playMode_.clear();
  playStarted_ = false;
  TimerMisc.stop();
  TimerAtEndFile.stop();
  cTimeLabel->setText(tTimeLabel->text().right(5));
  RefreshTimeLabel();
  if (repeat_) {
    // Starts again from the top, with no sign of a stop.
    Play();
    return;
  }
  SetStatus("Stopped");
  emit PlayStateChange(0);
  emit OnPlayFinish();
}

// ---- Properties ----

void AudioVideoPlayer::Refresh() { FrameVideo->update(); }

void AudioVideoPlayer::SetSkipClose(bool on) { skipClose_ = on; }

QString AudioVideoPlayer::FileName() const { return fileName_; }

void AudioVideoPlayer::SetFileName(const QString& name) {
  fileName_ = name;
  LoadFile();
}

QString AudioVideoPlayer::Title() const {
  return TitleLabel->text() == Unknown ? QString() : TitleLabel->text();
}

QString AudioVideoPlayer::Artist() const {
  return AuthorLabel->text() == Unknown ? QString() : AuthorLabel->text();
}

QString AudioVideoPlayer::Length() const {
  const QString last = tTimeLabel->text().right(5);
  return last.startsWith('0') ? last.right(4) : last;
}

int AudioVideoPlayer::PlayerType() const { return playerType_; }

void AudioVideoPlayer::SetPlayerType(int type) {
  playerType_ = type;
  ShowPanels();
}

int AudioVideoPlayer::CurrentPosition() const {
  if (framesPerSecond_ == 0) return 0;
  return int(RoundHalfEven(double(position_) / framesPerSecond_));
}

void AudioVideoPlayer::SetCurrentPosition(int seconds) {
  if (framesPerSecond_ <= 0) return;
  if (seconds <= 0)
    position_ = 1;
  else if (seconds < durationSeconds_)
    position_ = qint64(seconds) * framesPerSecond_;
  else
    position_ = MciLengthFrames();
  SeekToPosition();
}

void AudioVideoPlayer::SetCurrentPosition2(int seconds) {
  if (!scrolling_ || framesPerSecond_ <= 0 || seconds < 0 || seconds >= durationSeconds_) return;
  cTimeLabel->setText(FormatTime(seconds));
  RefreshTimeLabel();
}

int AudioVideoPlayer::FastForwardBySec() const { return fastForwardBySec_; }

void AudioVideoPlayer::SetFastForwardBySec(int seconds) { fastForwardBySec_ = qint16(seconds); }

int AudioVideoPlayer::FastRewindBySec() const { return fastRewindBySec_; }

void AudioVideoPlayer::SetFastRewindBySec(int seconds) { fastRewindBySec_ = qint16(seconds); }

bool AudioVideoPlayer::Repeat() const { return repeat_; }

void AudioVideoPlayer::SetRepeat(bool on) { repeat_ = on; }

double AudioVideoPlayer::ChildNo() const { return childNo_; }

void AudioVideoPlayer::SetChildNo(double number) { childNo_ = number; }

int AudioVideoPlayer::MinimumWidth() const { return minimumWidth_; }

void AudioVideoPlayer::SetMinimumWidth(int twips) { minimumWidth_ = qMax(twips, 3000); }

int AudioVideoPlayer::PlayState() const {
  const QString word = Status->text();
  if (word == "Stopped") return 0;
  if (word == "Paused") return 1;
  if (word == "Playing") return 2;
  return 3;
}

int AudioVideoPlayer::Duration() const { return durationSeconds_; }

QString AudioVideoPlayer::CurrentTime() const { return cTimeLabel->text(); }

int AudioVideoPlayer::MovieSizer() const { return movieSizer_; }

void AudioVideoPlayer::SetScrolling(bool on) { scrolling_ = on; }

QString AudioVideoPlayer::LastResult() const { return lastResult_; }

int AudioVideoPlayer::WidthTwips() const { return widthTwips_; }

int AudioVideoPlayer::HeightTwips() const { return heightTwips_; }

QVariantMap AudioVideoPlayer::WriteProperties() const {
  return {{"FileName", fileName_},
          {"CurrentPosition", qint32(position_)},
          {"ChildNo", childNo_},
          {"MovieSizer", movieSizer_},
          {"MinimumWidth", minimumWidth_},
          {"Repeat", repeat_},
          {"FastForwardBySec", fastForwardBySec_},
          {"FastRewindBySec", fastRewindBySec_},
          {"Type", playerType_}};
}

void AudioVideoPlayer::ReadProperties(const QVariantMap& properties) {
  const auto has = [&properties](const char* key) { return properties.contains(key); };
  if (has("ChildNo")) childNo_ = properties["ChildNo"].toDouble();
  if (has("MinimumWidth")) SetMinimumWidth(properties["MinimumWidth"].toInt());
  if (has("Repeat")) repeat_ = properties["Repeat"].toBool();
  if (has("FastForwardBySec")) SetFastForwardBySec(properties["FastForwardBySec"].toInt());
  if (has("FastRewindBySec")) SetFastRewindBySec(properties["FastRewindBySec"].toInt());
  if (has("CurrentPosition")) position_ = properties["CurrentPosition"].toInt();
  if (has("MovieSizer")) movieSizer_ = properties["MovieSizer"].toInt();
  if (has("Type")) SetPlayerType(properties["Type"].toInt());
  if (has("FileName") && !properties["FileName"].toString().isEmpty())
    SetFileName(properties["FileName"].toString());
}
