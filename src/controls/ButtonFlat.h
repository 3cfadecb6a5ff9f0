#pragma once
// ButtonFlat: a flat picture button. It shows Picture at rest, HoverPicture
// while the mouse is over it and ClickPicture while it is pressed; a state
// without a picture of its own shows Picture.

#include <QPixmap>

#include "controls/SmallControl.h"

class ButtonFlat : public SmallControl {
  Q_OBJECT
 public:
  explicit ButtonFlat(QWidget* parent = nullptr);

  bool Enabled() const { return isEnabled(); }
  void SetEnabled(bool on);
  QPixmap Picture() const { return picture_; }
  void SetPicture(const QPixmap& picture);
  QPixmap HoverPicture() const { return hoverPicture_; }
  void SetHoverPicture(const QPixmap& picture);
  QPixmap ClickPicture() const { return clickPicture_; }
  void SetClickPicture(const QPixmap& picture);

  // The picture for the present state: pressed, under the mouse, at rest.
  QPixmap ShownPicture() const;
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPixmap picture_, hoverPicture_, clickPicture_;
};
