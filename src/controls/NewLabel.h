#pragma once
// NewLabel: a one-line label with a window of its own, so that it has the
// mouse events and Click, and its own background colour.

#include <QString>

#include "controls/SmallControl.h"
#include "controls/SystemColours.h"

class NewLabel : public SmallControl {
  Q_OBJECT
 public:
  explicit NewLabel(QWidget* parent = nullptr);

  QString Caption() const { return caption_; }
  void SetCaption(const QString& caption);
  // Colour numbers; -1 puts back the default.
  OleColor BackColor() const { return backColor_; }
  void SetBackColor(OleColor color);

  void Refresh() { update(); }
  // Fits the width to the caption; the height stays.
  void Resize();
  QSize sizeHint() const override;

 protected:
  // The caption's alignment within the label.
  virtual Qt::Alignment TextAlignment() const { return Qt::AlignLeft | Qt::AlignVCenter; }
  void paintEvent(QPaintEvent* event) override;

 private:
  QString caption_;
  OleColor backColor_ = SysColor::ButtonFace;
};
