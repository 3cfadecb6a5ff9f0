#pragma once
// NewSlider: a drawn horizontal slider from 0 to Max. Dragging the thumb
// raises Scroll at each new value and makes Scrolling true until the
// release, which raises Change when the drag ended on another value. A
// click beside the thumb moves by LargeChange, the arrow keys by one, Home
// and End to the ends; these, and a new Value set in code, raise Change.

#include "controls/SmallControl.h"
#include "controls/SystemColours.h"

class NewSlider : public SmallControl {
  Q_OBJECT
 public:
  explicit NewSlider(QWidget* parent = nullptr);

  // Held between 0 and Max.
  int Value() const { return value_; }
  void SetValue(int value);
  // Below 0 becomes 0; Value is held to the new maximum.
  int Max() const { return max_; }
  void SetMax(int max);
  // Below 1 becomes 1.
  int LargeChange() const { return largeChange_; }
  void SetLargeChange(int change);
  // Colour numbers; -1 puts back the default.
  OleColor BackColor() const { return backColor_; }
  void SetBackColor(OleColor color);
  // The thumb: 0 a block, 1 a block pointing down, 2 round; others become 0.
  int SliderShape() const { return sliderShape_; }
  void SetSliderShape(int shape);
  // True while the thumb is being dragged.
  bool Scrolling() const { return scrolling_; }
  bool Enabled() const { return isEnabled(); }
  void SetEnabled(bool on) { setEnabled(on); }
  bool ShowBorder() const { return showBorder_; }
  void SetShowBorder(bool on);

  // Where the thumb stands for the present value, in pixels.
  QRect ThumbRect() const;
  // The value whose thumb is centred on x.
  int ValueAt(int x) const;
  QSize sizeHint() const override { return QSize(120, 24); }

 signals:
  void Change(int value);
  void Scroll(int value);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QRect Inner() const;
  int TrackLength() const;
  int LeftOfValue(int value) const;
  void StepTo(int value);

  int value_ = 0;
  int max_ = 100;
  int largeChange_ = 1;
  OleColor backColor_ = SysColor::ButtonFace;
  int sliderShape_ = 0;
  bool scrolling_ = false;
  bool showBorder_ = true;
  int grabOffset_ = 0;
  int valueAtPress_ = 0;
};
