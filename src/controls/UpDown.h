#pragma once
// UpDown: the pair of arrow buttons beside a number box: a value held
// between a minimum and a maximum, one step up or down at each click
// (repeating while a button is held). Change is raised when a click moves
// the value.

#include <QWidget>

class NumberBox;
class QToolButton;

class UpDown : public QWidget {
  Q_OBJECT
 public:
  explicit UpDown(QWidget* parent = nullptr);

  int Value() const { return value_; }
  // Held between Min and Max; raises no Change.
  void SetValue(int value);
  int Min() const { return min_; }
  int Max() const { return max_; }
  void SetRange(int min, int max);

  // The number box beside the buttons, as its arrow keys and the buttons
  // step it: one step within the limits, and past a limit the limit;
  // a click's value goes into the box, selected.
  void StepNumberBox(NumberBox* box, int keyCode) const;
  void CopyToNumberBox(NumberBox* box) const;

  QToolButton* UpButton() const { return up_; }
  QToolButton* DownButton() const { return down_; }

 signals:
  void Change();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Step(int by);

  QToolButton* up_;
  QToolButton* down_;
  int value_ = 0, min_ = 0, max_ = 100;
};
