#pragma once
// The window a film is drawn into (the player's FrameVideo). The media
// command interpreter finds it by its handle, given in the open command's
// "parent" word, and draws each new picture of the film into it, fitted to
// the rectangle set by "put ... window at".

#include <QImage>
#include <QRect>
#include <QWidget>

class VideoFrame : public QWidget {
  Q_OBJECT
 public:
  explicit VideoFrame(QWidget* parent = nullptr);
  ~VideoFrame() override;

  // The decimal handle the open command names this window by.
  QString Handle() const;
  // The window of a handle; nullptr when there is none (any more).
  static VideoFrame* FromHandle(const QString& handle);

  // Pictures drawn so far (for tests and the benchmark).
  qint64 FramesShown() const { return framesShown_; }
  // The picture shown last (null before the first).
  QImage Picture() const { return picture_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  qint64 framesShown_ = 0;
  quint64 handle_ = 0;
  QImage picture_;
  // Where the picture goes, in pixels of this window; empty: all of it.
  QRect pictureRect_;
  friend class VideoFrameDrawing;
};

// The interpreter's side of a frame: what it shows and where.
class VideoFrameDrawing {
 public:
  static void Show(VideoFrame* frame, const QImage& picture);
  static void Forget(VideoFrame* frame);
  static void SetRect(VideoFrame* frame, const QRect& rect);
  // The size pictures are drawn at for this frame.
  static QSize TargetSize(const VideoFrame* frame);
};
