#include "controls/TransRadio.h"

#include "controls/AccessibleControls.h"

TransRadio::TransRadio(QWidget* parent) : TransControl(parent) {
  option_ = new QRadioButton(this);
  option_->setObjectName(QStringLiteral("Option1"));
  // The group is kept by this control across its siblings, not by Qt
  // within the one-button wrapper.
  option_->setAutoExclusive(false);
  SetInner(option_);
  connect(option_, &QRadioButton::clicked, this, [this] {
    option_->setChecked(true);  // a click never clears an option button
    if (!value_) Choose();
  });
  ApplyLook();
}

void TransRadio::SetValue(bool value) {
  if (value) {
    if (!value_) Choose();
    return;
  }
  value_ = false;
  option_->setChecked(false);
  accessible::NotifyChecked(this);
}

void TransRadio::Choose() {
  value_ = true;
  option_->setChecked(true);
  accessible::NotifyChecked(this);
  if (QWidget* parent = parentWidget()) {
    for (TransRadio* other : parent->findChildren<TransRadio*>(Qt::FindDirectChildrenOnly))
      if (other != this && other->value_) other->SetValue(false);
  }
  emit Click();
}

void TransRadio::SetAlignment(int alignment) {
  alignment_ = alignment == 1 ? 1 : 0;
  ApplyLook();
}

QSize TransRadio::sizeHint() const { return option_->sizeHint(); }

void TransRadio::ApplyLook() {
  if (option_) {
    option_->setText(Caption());
    option_->setLayoutDirection(alignment_ == 1 ? Qt::RightToLeft : Qt::LeftToRight);
  }
  TransControl::ApplyLook();
}

QString TransRadio::AboutText() const {
  return QStringLiteral("Transparent option button\nAn option button that shows the form behind it.");
}
