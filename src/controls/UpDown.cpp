#include "controls/UpDown.h"

#include <QToolButton>

#include "controls/AccessibleControls.h"
#include "controls/NumberBox.h"
#include <algorithm>

UpDown::UpDown(QWidget* parent) : QWidget(parent), up_(new QToolButton(this)), down_(new QToolButton(this)) {
  up_->setObjectName("Up");
  down_->setObjectName("Down");
  up_->setArrowType(Qt::UpArrow);
  down_->setArrowType(Qt::DownArrow);
  // The arrows show no text; the reader says these.
  up_->setAccessibleName("Up");
  down_->setAccessibleName("Down");
  for (QToolButton* button : {up_, down_}) {
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
  }
  connect(up_, &QToolButton::clicked, this, [this] { Step(1); });
  connect(down_, &QToolButton::clicked, this, [this] { Step(-1); });
}

void UpDown::SetValue(int value) {
  const int before = value_;
  value_ = std::clamp(value, min_, max_);
  if (value_ != before) accessible::NotifyValue(this, value_);
}

void UpDown::SetRange(int min, int max) {
  min_ = min;
  max_ = std::max(min, max);
  value_ = std::clamp(value_, min_, max_);
}

void UpDown::Step(int by) {
  const int before = value_;
  SetValue(value_ + by);
  if (value_ != before) emit Change();
}

void UpDown::StepNumberBox(NumberBox* box, int keyCode) const {
  // 38 and 40: the arrow keys up and down.
  if (keyCode != 38 && keyCode != 40) return;
  const int typed = int(box->Value().toDouble());
  box->SetValue(QString::number(std::clamp(typed + (keyCode == 38 ? 1 : -1), min_, max_)));
}

void UpDown::CopyToNumberBox(NumberBox* box) const {
  box->SetValue(QString::number(std::clamp(value_, min_, max_)));
  box->setFocus();
  box->Highlight();
}

void UpDown::resizeEvent(QResizeEvent*) {
  const int half = height() / 2;
  up_->setGeometry(0, 0, width(), half);
  down_->setGeometry(0, half, width(), height() - half);
}
