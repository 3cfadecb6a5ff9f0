#pragma once
// NewLabel2: the label with a window of its own, able to stand its caption
// against the right edge.

#include "controls/NewLabel.h"

class NewLabel2 : public NewLabel {
  Q_OBJECT
 public:
  explicit NewLabel2(QWidget* parent = nullptr);

  bool RightAdjust() const { return rightAdjust_; }
  void SetRightAdjust(bool on);

 protected:
  Qt::Alignment TextAlignment() const override;

 private:
  bool rightAdjust_ = false;
};
