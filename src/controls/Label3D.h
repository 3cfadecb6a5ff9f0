#pragma once
// Label3D: a caption with a drop shadow. The text is drawn in Color1, its
// shadow in Color2, offset by ShadowLeft and ShadowTop (twips).

#include <QFont>
#include <QPixmap>
#include <QString>

#include "controls/SmallControl.h"
#include "controls/SystemColours.h"

class Label3D : public SmallControl {
  Q_OBJECT
 public:
  explicit Label3D(QWidget* parent = nullptr);

  // Colour numbers; -1 puts back the default (button face behind, red text
  // over a black shadow).
  OleColor BackColor() const { return backColor_; }
  void SetBackColor(OleColor color);
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
  OleColor Color1() const { return color1_; }
  void SetColor1(OleColor color);
  OleColor Color2() const { return color2_; }
  void SetColor2(OleColor color);
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

  static constexpr OleColor DefaultColor1 = 0x0000FF;
  static constexpr OleColor DefaultColor2 = 0x000000;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QSize CaptionSize() const;

  OleColor backColor_ = SysColor::ButtonFace;
  int backStyle_ = 0;
  int borderStyle_ = 0;
  QString caption_ = QStringLiteral("3D Label");
  OleColor color1_ = DefaultColor1;
  OleColor color2_ = DefaultColor2;
  int shadowLeft_ = 25;
  int shadowTop_ = 25;
  bool autoSize_ = false;
  QPixmap mouseIcon_;
  int mousePointer_ = 0;
};
