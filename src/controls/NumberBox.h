#pragma once
// NumberBox: a numeric entry field. Its text box, txtNumber, takes only what
// makes a number, shows the plain number while it has the focus and the
// formatted one when it hasn't, and holds the value inside limits when the
// focus leaves.

#include <QString>
#include <QWidget>

class QLineEdit;
class QKeyEvent;
class QMouseEvent;
class NumberEdit;

class NumberBox : public QWidget {
  Q_OBJECT
 public:
  explicit NumberBox(QWidget* parent = nullptr);

  // The number as plain text ("-1234.5"); setting it shows it formatted
  // unless the box has the focus.
  QString Value() const;
  void SetValue(const QString& value);
  double MaxValue() const { return maxValue_; }
  void SetMaxValue(double value);
  int MinValue() const { return minValue_; }
  void SetMinValue(int value);
  bool UseMaxMinValues() const { return useMaxMinValues_; }
  void SetUseMaxMinValues(bool on) { useMaxMinValues_ = on; }
  QString Format() const { return format_; }
  void SetFormat(const QString& format);
  bool Enabled() const { return isEnabled(); }
  void SetEnabled(bool on) { setEnabled(on); }
  bool PositiveOnly() const { return positiveOnly_; }
  void SetPositiveOnly(bool on) { positiveOnly_ = on; }
  // Colours as texts "&H00BBGGRR&"; a text that is no colour gives the
  // default, white behind black.
  QString BackColor() const { return backColor_; }
  void SetBackColor(const QString& color);
  QString ForeColor() const { return foreColor_; }
  void SetForeColor(const QString& color);
  bool Locked() const { return locked_; }
  void SetLocked(bool on);
  bool GotFocus() const { return hasFocus_; }
  QWidget* hWnd() { return this; }

  // The plain text of any number text, and the text shown for it under the
  // box's Format.
  QString UnformatNumeric(const QString& text) const;
  QString FormatNumeric(const QString& text) const;
  // Shows the value again under the present format and colours.
  void Refresh();
  // Selects the whole text.
  void Highlight();

  QLineEdit* txtNumber() const;

  static constexpr double DefaultMaxValue = 999999.99;
  static inline const QString DefaultFormat = QStringLiteral("###,##0.00;(##,###.00)");
  static inline const QString DefaultBackColor = QStringLiteral("&H00FFFFFF&");
  static inline const QString DefaultForeColor = QStringLiteral("&H00000000&");

 signals:
  // Raised when the number changes in value, not when only its form does.
  void Change();
  void KeyDown(int keyCode, int shift);
  void KeyPress(int keyAscii);
  void KeyUp(int keyCode, int shift);
  // Buttons 1 left, 2 right, 4 middle; x and y in twips.
  void MouseDown(int button, int shift, int x, int y);
  void MouseMove(int button, int shift, int x, int y);

 private:
  friend class NumberEdit;

  void EnterFocus();
  void ExitFocus();
  // Returns true when the key press was handled here and must not reach
  // the text box.
  bool HandleKeyDown(QKeyEvent* event);
  bool AcceptsCharacter(int keyAscii) const;
  void TextChanged(const QString& text);
  void SetTextFormatting(const QString& text);
  void ApplyColours();
  void EmitMouse(QMouseEvent* event, bool down);

  NumberEdit* edit_ = nullptr;
  QString plain_;
  bool hasFocus_ = false;
  bool formatting_ = false;
  double maxValue_ = DefaultMaxValue;
  int minValue_ = 0;
  bool useMaxMinValues_ = false;
  QString format_ = DefaultFormat;
  bool positiveOnly_ = false;
  QString backColor_ = DefaultBackColor;
  QString foreColor_ = DefaultForeColor;
  bool locked_ = false;
};

// Reads a colour text "&H00BBGGRR&" (the trailing "&" may be missing);
// false for a text that is not one.
bool ParseColorText(const QString& text, quint32* value);
