#pragma once
// TransRadio: an option button whose background shows what lies behind it.
// Option buttons with the same parent form one group: choosing one clears
// the others.

#include <QRadioButton>

#include "controls/TransControl.h"

class TransRadio : public TransControl {
  Q_OBJECT
 public:
  explicit TransRadio(QWidget* parent = nullptr);

  // Becoming true, by a click or in code, clears the other option buttons
  // of the parent and raises Click; setting false only clears this one.
  bool Value() const { return value_; }
  void SetValue(bool value);
  // 0 the button left of the caption, 1 right of it; others become 0.
  int Alignment() const { return alignment_; }
  void SetAlignment(int alignment);

  QRadioButton* Option1() const { return option_; }
  QSize sizeHint() const override;

 protected:
  void ApplyLook() override;
  QString AboutText() const override;

 private:
  void Choose();

  QRadioButton* option_ = nullptr;
  bool value_ = false;
  int alignment_ = 0;
};
