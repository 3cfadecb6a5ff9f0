#pragma once
// Button: a drawn picture button: a raised face in BackColor with the
// picture in the middle, sunken while pressed. It takes the focus, and
// Space or Enter press it from the keyboard.

#include <QPixmap>

#include "controls/SmallControl.h"
#include "controls/SystemColours.h"

class Button : public SmallControl {
  Q_OBJECT
 public:
  explicit Button(QWidget* parent = nullptr);

  bool Enabled() const { return isEnabled(); }
  void SetEnabled(bool on);
  QPixmap Picture() const { return picture_; }
  void SetPicture(const QPixmap& picture);
  // Colour numbers; -1 puts back the default.
  OleColor BackColor() const { return backColor_; }
  void SetBackColor(OleColor color);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QPixmap picture_;
  OleColor backColor_ = SysColor::ButtonFace;
};
