#pragma once
// Label3D: a caption with a drop shadow. The text is drawn in Color1, its
// shadow in Color2, offset by ShadowLeft and ShadowTop (twips).

#include <QFont>
#include <QPixmap>
#include <QString>

#include "controls/SmallControl.h"

class Label3D : public SmallControl {
  Q_OBJECT
 public:
  explicit Label3D(QWidget* parent = nullptr);

  quint32 BackColor() const { return backColor_; }
  void SetBackColor(quint32 color);
  QFont Font() const { return font(); }
  void SetFont(const QFont& font);
  // 0 transparent, 1 opaque in BackColor; others become 0.
  int BackStyle() const { return backStyle_; }
  void SetBackStyle(int style);
  // 0 none, 1 a single line; others become 0.
  int BorderStyle() const { return borderStyle_; }
  void SetBorderStyle(int style);
  QString Caption() const { return caption_; }
  void SetCaption(const QString& caption);
  quint32 Color1() const { return color1_; }
  void SetColor1(quint32 color);
  quint32 Color2() const { return color2_; }
  void SetColor2(quint32 color);
  int ShadowLeft() const { return shadowLeft_; }
  void SetShadowLeft(int twips);
  int ShadowTop() const { return shadowTop_; }
  void SetShadowTop(int twips);
  // On, the control takes the size of its caption and shadow.
  bool AutoSize() const { return autoSize_; }
  void SetAutoSize(bool on);
  QPixmap MouseIcon() const { return mouseIcon_; }
  void SetMouseIcon(const QPixmap& icon);
  int MousePointer() const { return mousePointer_; }
  void SetMousePointer(int pointer);

  void Refresh();
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QSize CaptionSize() const;

  quint32 backColor_ = 0x8000000F;
  int backStyle_ = 0;
  int borderStyle_ = 0;
  QString caption_ = QStringLiteral("3D Label");
  quint32 color1_ = 255;
  quint32 color2_ = 0;
  int shadowLeft_ = 25;
  int shadowTop_ = 25;
  bool autoSize_ = false;
  QPixmap mouseIcon_;
  int mousePointer_ = 0;
};
