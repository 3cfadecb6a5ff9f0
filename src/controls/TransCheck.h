#pragma once
// TransCheck: a check box whose background shows what lies behind it, so
// that it can stand on a gradient form. It wraps the check box Check1.

#include <QCheckBox>

#include "controls/TransControl.h"

class TransCheck : public TransControl {
  Q_OBJECT
 public:
  explicit TransCheck(QWidget* parent = nullptr);

  // 0 unchecked, 1 checked, 2 greyed; other values become 0. A new value
  // raises Click, as a click on the box does.
  int Value() const { return value_; }
  void SetValue(int value);
  // 0 the box left of the caption, 1 the box right of it; others become 0.
  int Alignment() const { return alignment_; }
  void SetAlignment(int alignment);
  // The background follows the parent's painting by itself; the flag is
  // kept for hosts that set it.
  bool SkipAutoRefresh() const { return skipAutoRefresh_; }
  void SetSkipAutoRefresh(bool on) { skipAutoRefresh_ = on; }

  QCheckBox* Check1() const { return check_; }
  QSize sizeHint() const override;

 protected:
  void ApplyLook() override;
  QString AboutText() const override;

 private:
  void CheckClicked();

  QCheckBox* check_ = nullptr;
  int value_ = 0;
  int alignment_ = 0;
  bool skipAutoRefresh_ = false;
};
