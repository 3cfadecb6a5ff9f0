#pragma once
// What the transparent check box, option button and frame share: a caption,
// a background that is either what lies behind the control (BackStyle 0)
// or BackColor (BackStyle 1), the font and pointer properties, and the
// events of the inner control passed on under their own names.
//
// The background is real transparency: the control paints nothing under its
// text, so whatever its parent paints (a form's gradient) shows through and
// follows every repaint of the parent. Refresh is kept for callers that
// refresh after repainting their background; it only repaints.

#include <QFont>
#include <QPixmap>
#include <QString>
#include <QWidget>

#include "controls/SmallControl.h"
#include "controls/SystemColours.h"

class TransControl : public QWidget {
  Q_OBJECT
 public:
  explicit TransControl(QWidget* parent = nullptr);

  bool Enabled() const { return isEnabled(); }
  void SetEnabled(bool on) { setEnabled(on); }
  // Until a caption is given, the caption is the control's name.
  QString Caption() const;
  void SetCaption(const QString& caption);
  // 0 transparent, 1 opaque in BackColor; other values become 0.
  int BackStyle() const { return backStyle_; }
  void SetBackStyle(int style);
  // 0 flat, 1 three-dimensional; other values become 1.
  int Appearance() const { return appearance_; }
  void SetAppearance(int appearance);
  // Colour numbers: 0x00BBGGRR or system colours (high bit set); -1 puts
  // back the default.
  OleColor BackColor() const { return backColor_; }
  void SetBackColor(OleColor color);
  OleColor ForeColor() const { return foreColor_; }
  void SetForeColor(OleColor color);

  QFont Font() const;
  void SetFont(const QFont& font);
  bool FontBold() const { return fontBold_; }
  void SetFontBold(bool on);
  bool FontItalic() const { return fontItalic_; }
  void SetFontItalic(bool on);
  bool FontUnderline() const { return fontUnderline_; }
  void SetFontUnderline(bool on);
  bool FontStrikethru() const { return fontStrikethru_; }
  void SetFontStrikethru(bool on);
  // The text stands on the background either way; kept for callers.
  bool FontTransparent() const { return fontTransparent_; }
  void SetFontTransparent(bool on) { fontTransparent_ = on; }
  // Points; 0 is the program's usual size.
  double FontSize() const { return fontSize_; }
  void SetFontSize(double points);
  // "" is the program's usual face.
  QString FontName() const { return fontName_; }
  void SetFontName(const QString& name);

  QPixmap MouseIcon() const { return mouseIcon_; }
  void SetMouseIcon(const QPixmap& icon);
  int MousePointer() const { return mousePointer_; }
  void SetMousePointer(int pointer);

  QWidget* hWnd() { return this; }

  // Repaints the control over the present background.
  void Refresh();
  // A short note on the control, in a window that does not hold the program.
  void DisplayAboutBox();

  static constexpr OleColor DefaultBackColor = SysColor::ButtonFace;
  static constexpr OleColor DefaultForeColor = SysColor::ButtonText;

 signals:
  void Click();
  void KeyDown(int keyCode, int shift);
  void KeyUp(int keyCode, int shift);
  void KeyPress(int keyAscii);
  // Buttons 1 left, 2 right, 4 middle; x and y in twips.
  void MouseDown(int button, int shift, int x, int y);
  void MouseUp(int button, int shift, int x, int y);
  void MouseMove(int button, int shift, int x, int y);
  void GotFocus();
  void LostFocus();

 protected:
  // The inner control whose events are passed on, and which takes the
  // caption, colours, font and pointer; none for a hand-drawn control.
  void SetInner(QWidget* inner);
  QWidget* Inner() const { return inner_; }
  // Puts the present properties on the inner control and repaints.
  virtual void ApplyLook();
  virtual QString AboutText() const = 0;

  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  void PassMouse(QWidget* from, QMouseEvent* event, int kind);

  QWidget* inner_ = nullptr;
  QString caption_;
  bool captionGiven_ = false;
  int backStyle_ = 0;
  int appearance_ = 1;
  OleColor backColor_ = DefaultBackColor;
  OleColor foreColor_ = DefaultForeColor;
  bool fontBold_ = false, fontItalic_ = false, fontUnderline_ = false;
  bool fontStrikethru_ = false, fontTransparent_ = true;
  double fontSize_ = 0;
  QString fontName_;
  QPixmap mouseIcon_;
  int mousePointer_ = 0;
};
