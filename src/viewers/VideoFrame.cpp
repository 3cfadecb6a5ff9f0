#include "viewers/VideoFrame.h"

#include <QPainter>
#include <map>

namespace {

// The frames alive, by handle. Handles count up from 1 and are never given
// twice, so that a stale handle finds nothing.
struct FrameTable {
  std::map<quint64, VideoFrame*> frames;
  quint64 last = 0;
};

FrameTable& Frames() {
  static FrameTable table;
  return table;
}

}  // namespace

VideoFrame::VideoFrame(QWidget* parent) : QWidget(parent) {
  handle_ = ++Frames().last;
  Frames().frames[handle_] = this;
  setAttribute(Qt::WA_OpaquePaintEvent);
}

VideoFrame::~VideoFrame() { Frames().frames.erase(handle_); }

QString VideoFrame::Handle() const { return QString::number(handle_); }

VideoFrame* VideoFrame::FromHandle(const QString& handle) {
  bool ok = false;
  const quint64 number = handle.toULongLong(&ok);
  if (!ok) return nullptr;
  const auto found = Frames().frames.find(number);
  return found == Frames().frames.end() ? nullptr : found->second;
}

void VideoFrame::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::black);
  if (picture_.isNull()) return;
  const QRect target = pictureRect_.isEmpty() ? rect() : pictureRect_;
  if (picture_.size() == target.size())
    painter.drawImage(target.topLeft(), picture_);
  else
    painter.drawImage(target, picture_);
}

void VideoFrameDrawing::Show(VideoFrame* frame, const QImage& picture) {
  frame->picture_ = picture;
  ++frame->framesShown_;
  frame->update();
}

void VideoFrameDrawing::Forget(VideoFrame* frame) {
  frame->picture_ = QImage();
  frame->update();
}

void VideoFrameDrawing::SetRect(VideoFrame* frame, const QRect& rect) {
  frame->pictureRect_ = rect;
  frame->update();
}

QSize VideoFrameDrawing::TargetSize(const VideoFrame* frame) {
  const QRect target = frame->pictureRect_.isEmpty() ? frame->rect() : frame->pictureRect_;
  return target.size();
}
