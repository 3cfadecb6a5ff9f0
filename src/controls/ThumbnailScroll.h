#pragma once
// The vertical scroll bar of the thumbnail pages. Every change it reports
// makes the browser load a page of thumbnails, so it reports as seldom as a
// gesture allows: a dragged thumb moves freely and the value is worked out
// when it is let go; a held arrow steps the thumb at once but reports only
// on release; and wheel notches are gathered into one report half a second
// after the last.

#include <QColor>
#include <QTimer>
#include <QWidget>

#include "controls/SystemColours.h"

class WheelNotchFilter;

class ThumbnailScroll : public QWidget {
  Q_OBJECT

 public:
  explicit ThumbnailScroll(QWidget* parent = nullptr);

  // Never below 0. Changing Max leaves Value as it is and the thumb where
  // it stands; only its height follows.
  qint16 Max() const { return max_; }
  void SetMax(int max);

  // Held between 0 and Max. A change raises Change.
  qint16 Value() const { return value_; }
  void SetValue(int value);

  qint32 hWnd() const;

  // Whether wheel turns anywhere in the program step this bar. On from the
  // start; the browser keeps it on for the visible tab's bar only.
  bool MouseWheel() const;
  void SetMouseWheel(bool on);

  // The surface and the thumb at rest; grey, RGB 150, 150, 150, by default.
  // -1 puts back the default.
  OleColor BackColor() const { return backColor_; }
  void SetBackColor(OleColor color);
  // The fill of the two arrows; a lighter grey, RGB 192, 192, 192, by
  // default. -1 puts back the default.
  OleColor ArrowColor() const { return arrowColor_; }
  void SetArrowColor(OleColor color);

  // The thumb, in twips from the top, as it stands now.
  int ThumbTop() const { return thumbTop_; }
  int ThumbHeight() const { return thumbHeight_; }
  bool Dragging() const { return dragging_; }
  // The thumb's fill: BackColor at rest, the moving colour during a gesture.
  QColor ThumbColor() const;

  // The repeat of a held arrow and the end of a wheel run.
  const QTimer& TimerUp() const { return timerUp_; }
  const QTimer& TimerDown() const { return timerDown_; }
  const QTimer& TimerWheel() const { return timerWheel_; }
  void TimerUp_Timer();
  void TimerDown_Timer();
  void TimerWheel_Timer();
  // One wheel report: amount 0 or above steps down the pages, below 0 up.
  void MouseWheel_MouseWheel1(qint16 amount);

 signals:
  // A gesture, or a setting of Value, has changed the value.
  void Change(qint16 value);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  static constexpr OleColor DefaultBackColor = 0x00969696;
  static constexpr OleColor DefaultArrowColor = 0x00C0C0C0;

  enum Arrow { NoArrow = 0, UpArrow = 1, DownArrow = 2 };
  enum Part { NoPart = 0, UpPart = 1, DownPart = 2, TrackPart = 3 };

  int HeightTwips() const;
  int ArrowAt(int y) const;
  void PlaceThumb();
  void LookUp(int y, bool skipPresent);
  void ArrowPress(int arrow);
  void ArrowMove(int arrow);
  void ArrowRelease(int arrow);
  void TrackRelease(int y);
  void PaintArrow(class QPainter& painter, const QRect& area, bool up, bool pressed);

  OleColor backColor_ = DefaultBackColor;
  OleColor arrowColor_ = DefaultArrowColor;
  qint16 max_ = 0;
  qint16 value_ = 0;
  int trackLength_ = 0;
  int thumbHeight_ = 0;
  int thumbTop_ = 0;
  int startValue_ = 0;  // the value when a drag or an arrow press began
  int wheelStartValue_ = 0;
  int lastY_ = 0;
  bool dragging_ = false;
  bool moving_ = false;
  int currentArrow_ = NoArrow;
  int pressedPart_ = NoPart;  // what took the press, and so takes its moves and release
  QTimer timerUp_;
  QTimer timerDown_;
  QTimer timerWheel_;
  WheelNotchFilter* wheel_ = nullptr;
};
