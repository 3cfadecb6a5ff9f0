#pragma once
// TransFrame: a frame drawn by hand, with its caption in the top line, whose
// background shows what lies behind it. The controls placed on it are its
// child widgets.

#include <QList>

#include "controls/TransControl.h"

class TransFrame : public TransControl {
  Q_OBJECT
 public:
  explicit TransFrame(QWidget* parent = nullptr);

  // 0 left, 1 right, 2 centred; others become 0.
  int CaptionAlignment() const { return captionAlignment_; }
  void SetCaptionAlignment(int alignment);
  // 0 no border, 1 a single etched line; others become 1.
  int BorderStyle() const { return borderStyle_; }
  void SetBorderStyle(int style);
  bool SkipAutoRefresh() const { return skipAutoRefresh_; }
  void SetSkipAutoRefresh(bool on) { skipAutoRefresh_ = on; }

  // The controls on the frame, in the order they were placed.
  QList<QWidget*> Controls() const;

  // Where the caption stands, in the frame's pixels; empty without caption.
  QRect CaptionRect() const;

 protected:
  QString AboutText() const override;
  void paintEvent(QPaintEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  int captionAlignment_ = 0;
  int borderStyle_ = 1;
  bool skipAutoRefresh_ = false;
};
