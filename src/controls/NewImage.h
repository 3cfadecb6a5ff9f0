#pragma once
// NewImage: a picture surface that loads a file and stretches its picture
// to its own size: the cell of a thumbnail.

#include <QImage>
#include <QPixmap>

#include "controls/SmallControl.h"

class NewImage : public SmallControl {
  Q_OBJECT
 public:
  explicit NewImage(QWidget* parent = nullptr);

  int MousePointer() const { return mousePointer_; }
  void SetMousePointer(int pointer);
  QPixmap MouseIcon() const { return mouseIcon_; }
  void SetMouseIcon(const QPixmap& icon);
  // What the surface shows: the picture stretched to the control with what
  // was painted on it since the last Cls.
  QPixmap Image() const;
  QPixmap Picture() const { return picture_; }
  void SetPicture(const QPixmap& picture);

  // Shows the picture of source when given; otherwise decodes the named
  // file at the size of the control. An empty name clears the surface.
  // False when the file can't be decoded; the surface is then empty.
  bool LoadFile(const QString& name = QString(), const QImage* source = nullptr);
  // Shows the picture that stands for a deleted file: the one given, or a
  // crossed-out page of the control's own.
  void LoadDeleted(const QPixmap& deletedPicture = QPixmap());
  void Refresh() { update(); }
  // Clears what was painted on the surface; the picture stays.
  void Cls();
  // Paints a picture onto the surface, into the rectangle (pixels).
  void PaintPicture(const QPixmap& picture, const QRect& target);

  // The crossed-out page shown for a deleted file when none is given.
  static QPixmap DrawnDeletedPicture(const QSize& size);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QPixmap picture_;
  QPixmap drawn_;
  QPixmap mouseIcon_;
  int mousePointer_ = 0;
};
