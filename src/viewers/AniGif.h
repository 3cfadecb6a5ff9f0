#pragma once
// AniGif: a control that plays an animated GIF. The file is cut into its
// frames once, at load; a timer then composes frame after frame onto a
// kept picture, honouring each frame's delay, position, disposal and
// transparency. What the user sees is that picture stretched to the
// control. A file that is not a GIF is shown as a still picture.

#include <QColor>
#include <QImage>
#include <QTimer>
#include <QWidget>
#include <vector>

#include "viewers/GifFrames.h"

class AniGif : public QWidget {
  Q_OBJECT
 public:
  explicit AniGif(QWidget* parent = nullptr);

  // Stops the timer, forgets the frames and empties the picture.
  void Clear();
  // Loads a file: stops the timer, empties the picture, splits the file
  // into frames. With one frame, or noAnimate set, the first frame is drawn
  // at once; otherwise the animation starts. A file that is not a GIF is
  // shown as a still picture (a ".jpg" that does not end properly is not).
  // An empty path loads nothing. The result is FrameCount().
  int LoadFile(const QString& path, bool noAnimate = false);
  // Acts only while the timer runs: stops it. With clear and reset both
  // set, the picture is emptied and the first frame drawn again.
  void StopAnimate(bool clear, bool reset);
  // With frames loaded: plays on at normal speed.
  void RestartAnimate();
  // With frames loaded: back to normal speed, and one step by hand.
  void NextFrame();
  // While the timer runs: the cycle runs to its end without delays and the
  // animation stops on frame 1.
  void FinishCycleFast();

  // The colour behind the frames and of what disposal wipes; white by
  // default, and an invalid colour means the default.
  QColor BackColor() const { return backColor_; }
  void SetBackColor(const QColor& color);

  bool TimerStatus() const { return Timer1.isActive(); }
  // True once the animation has moved past frame 1, or at once for a
  // single frame. CycleDone tells when a whole cycle has been drawn.
  bool FileMoving() const { return fileMoving_; }
  int FrameCount() const { return int(frames_.size()); }
  // The frame drawn last, from 1; 0 before the first.
  int CurrentFrame() const { return currentFrame_; }
  int PictureWidth() const { return pictureWidth_; }
  int PictureHeight() const { return pictureHeight_; }
  QString CurrentFile() const { return currentFile_; }
  // The composition at the file's own size, before stretching.
  const QImage& Composition() const { return Picture7; }

 signals:
  // The last frame of a cycle has been drawn (for a single frame: once it
  // is drawn).
  void CycleDone();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Timer1_Timer();
  void DrawFrame();
  // Empties the composition to the background colour.
  void ClearPicture();

  QTimer Timer1;
  QImage Picture7;
  std::vector<GifFrame> frames_;
  QString currentFile_;
  QColor backColor_ = Qt::white;
  int pictureWidth_ = 0, pictureHeight_ = 0;
  int currentFrame_ = 0;
  bool finishCycle_ = false;
  bool fastCycle_ = false;
  bool fileMoving_ = false;
};
