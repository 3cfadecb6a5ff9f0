#include "controls/TransCheck.h"

#include "controls/AccessibleControls.h"

namespace {
Qt::CheckState StateOf(int value) {
  return value == 1 ? Qt::Checked : value == 2 ? Qt::PartiallyChecked : Qt::Unchecked;
}
}  // namespace

TransCheck::TransCheck(QWidget* parent) : TransControl(parent) {
  check_ = new QCheckBox(this);
  check_->setObjectName(QStringLiteral("Check1"));
  check_->setAutoFillBackground(false);
  SetInner(check_);
  connect(check_, &QCheckBox::clicked, this, &TransCheck::CheckClicked);
  ApplyLook();
}

void TransCheck::SetValue(int value) {
  if (value < 0 || value > 2) value = 0;
  if (value == value_) return;
  value_ = value;
  check_->setCheckState(StateOf(value));
  accessible::NotifyChecked(this);
  emit Click();
}

void TransCheck::SetAlignment(int alignment) {
  alignment_ = alignment == 1 ? 1 : 0;
  ApplyLook();
}

void TransCheck::CheckClicked() {
  // A click on a greyed box clears it; otherwise the box toggles.
  value_ = value_ == 0 ? 1 : 0;
  check_->setCheckState(StateOf(value_));
  accessible::NotifyChecked(this);
  emit Click();
}

QSize TransCheck::sizeHint() const { return check_->sizeHint(); }

void TransCheck::ApplyLook() {
  if (check_) {
    check_->setText(Caption());
    check_->setLayoutDirection(alignment_ == 1 ? Qt::RightToLeft : Qt::LeftToRight);
  }
  TransControl::ApplyLook();
}

QString TransCheck::AboutText() const {
  return QStringLiteral("Transparent check box\nA check box that shows the form behind it.");
}
