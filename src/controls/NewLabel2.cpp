#include "controls/NewLabel2.h"

NewLabel2::NewLabel2(QWidget* parent) : NewLabel(parent) {}

void NewLabel2::SetRightAdjust(bool on) {
  rightAdjust_ = on;
  update();
}

Qt::Alignment NewLabel2::TextAlignment() const {
  return (rightAdjust_ ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}
