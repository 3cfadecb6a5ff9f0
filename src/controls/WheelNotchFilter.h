#pragma once
// Turns the mouse wheel anywhere in the program into whole notches. While
// enabled it watches every wheel turn that reaches one of the program's
// windows, whichever widget lies under the pointer, and reports each full
// notch: +1 for a notch towards the user, -1 for one away from the user.
// The turn itself goes on to its widget as usual.

#include <QObject>

class WheelNotchFilter : public QObject {
  Q_OBJECT

 public:
  explicit WheelNotchFilter(QObject* parent = nullptr);
  ~WheelNotchFilter() override;

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);

  // The notches in a wheel turn of the given vertical angle delta (120 to
  // a notch, positive away from the user), with the part of a notch left
  // over from earlier turns in `carry`. Fine-grained wheels deliver a notch
  // in several small turns; they add up to one.
  static int NotchesOf(int angleDelta, int& carry);

 signals:
  void MouseWheel1(qint16 amount);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool enabled_ = false;
  int carry_ = 0;
};
