#include "viewers/AniGif.h"

#include <QFile>
#include <QPainter>

#include "catalogue/MediaPicture.h"
#include "catalogue/MediaTypes.h"

AniGif::AniGif(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  Timer1.setTimerType(Qt::PreciseTimer);
  connect(&Timer1, &QTimer::timeout, this, &AniGif::Timer1_Timer);
}

void AniGif::Clear() {
  Timer1.stop();
  frames_.clear();
  Picture7 = QImage();
  currentFrame_ = 0;
  finishCycle_ = fastCycle_ = fileMoving_ = false;
  update();
}

int AniGif::LoadFile(const QString& path, bool noAnimate) {
  Clear();
  currentFile_ = path.trimmed();
  pictureWidth_ = pictureHeight_ = 0;
  if (currentFile_.isEmpty()) return 0;

  QFile file(currentFile_);
  GifSplit split;
  if (file.open(QIODevice::ReadOnly)) split = SplitFrames(file.readAll());
  frames_ = std::move(split.Frames);
  pictureWidth_ = split.PictureWidth;
  pictureHeight_ = split.PictureHeight;

  if (frames_.empty()) {
    // Not an animation: a still picture, when the file passes the test of
    // a complete JPEG.
    QImage still;
    if (IsValidJpegEnd(currentFile_) && LoadMediaPicture(currentFile_, still)) {
      Picture7 = still;
      pictureWidth_ = still.width();
      pictureHeight_ = still.height();
    }
    update();
    return 0;
  }

  // The first frame is the logical screen as the decoder saw it: the
  // composition takes its size (which keeps a header that claims an absurd
  // screen from costing an absurd picture).
  Picture7 = QImage(frames_.front().Picture.size(), QImage::Format_ARGB32_Premultiplied);
  ClearPicture();
  if (frames_.size() == 1 || noAnimate) {
    Timer1_Timer();
  } else {
    Timer1.start(1);
  }
  return FrameCount();
}

void AniGif::StopAnimate(bool clear, bool reset) {
  if (!Timer1.isActive()) return;
  Timer1.stop();
  if (clear && reset) {
    currentFrame_ = 0;
    ClearPicture();
    Timer1_Timer();
  }
}

void AniGif::RestartAnimate() {
  if (frames_.empty()) return;
  finishCycle_ = fastCycle_ = false;
  Timer1.start();
}

void AniGif::NextFrame() {
  if (frames_.empty()) return;
  finishCycle_ = fastCycle_ = false;
  Timer1_Timer();
}

void AniGif::FinishCycleFast() {
  if (!Timer1.isActive()) return;
  finishCycle_ = fastCycle_ = true;
  // The frame on show need not wait out its own delay either.
  Timer1.start(1);
}

void AniGif::SetBackColor(const QColor& color) {
  backColor_ = color.isValid() ? color : QColor(Qt::white);
  update();
}

void AniGif::ClearPicture() {
  if (!Picture7.isNull()) Picture7.fill(backColor_);
  update();
}

void AniGif::Timer1_Timer() {
  if (frames_.empty() || Picture7.isNull()) {
    Timer1.stop();
    return;
  }
  const int count = FrameCount();
  currentFrame_ = currentFrame_ >= count ? 1 : currentFrame_ + 1;
  const GifFrame& previous = frames_[(currentFrame_ == 1 ? count : currentFrame_ - 1) - 1];
  // Disposal 2 gives the previous frame's rectangle back to the
  // background; every other method leaves it in place.
  if (previous.Disposal == 2) {
    QPainter painter(&Picture7);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    const QRect wiped(QPoint(previous.Left, previous.Top), previous.Picture.size());
    painter.fillRect(wiped, backColor_);
  }
  DrawFrame();

  Timer1.setInterval(fastCycle_ ? 1 : frames_[currentFrame_ - 1].Delay);
  if (finishCycle_ && currentFrame_ == 1) {
    Timer1.stop();
    finishCycle_ = fastCycle_ = false;
  }
  if (count == 1) {
    Timer1.setInterval(1);
    Timer1.stop();
  }
  // Told last: a listener may well load another file.
  if (currentFrame_ == count) emit CycleDone();
}

void AniGif::DrawFrame() {
  const GifFrame& frame = frames_[currentFrame_ - 1];
  {
    // Transparent pixels of the frame leave what lies underneath.
    QPainter painter(&Picture7);
    painter.drawImage(frame.Left, frame.Top, frame.Picture);
  }
  if (FrameCount() == 1 || currentFrame_ > 1) fileMoving_ = true;
  update();
}

void AniGif::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), backColor_);
  if (Picture7.isNull()) return;
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(rect(), Picture7);
}
