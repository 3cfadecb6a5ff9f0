#include "controls/NumberBox.h"

#include <QApplication>
#include <QClipboard>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>

#include "controls/NumericFormat.h"
#include "controls/PaintRoutines.h"
#include "controls/SmallControl.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"

// The text box inside the number box: it hands its keys, focus changes and
// mouse events to the box before (or instead of) its own handling.
class NumberEdit : public QLineEdit {
 public:
  explicit NumberEdit(NumberBox* box) : QLineEdit(box), box_(box) {}

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (!box_->HandleKeyDown(event)) QLineEdit::keyPressEvent(event);
  }
  void keyReleaseEvent(QKeyEvent* event) override {
    QLineEdit::keyReleaseEvent(event);
    emit box_->KeyUp(keys::KeyCode(event), keys::ShiftOf(event));
  }
  void focusInEvent(QFocusEvent* event) override {
    QLineEdit::focusInEvent(event);
    // Coming back from another window or a popup is no entry into the box.
    if (box_->hasFocus_ && (event->reason() == Qt::ActiveWindowFocusReason ||
                            event->reason() == Qt::PopupFocusReason))
      return;
    box_->EnterFocus();
  }
  void focusOutEvent(QFocusEvent* event) override {
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::ActiveWindowFocusReason ||
        event->reason() == Qt::PopupFocusReason)
      return;
    box_->ExitFocus();
  }
  void mousePressEvent(QMouseEvent* event) override {
    QLineEdit::mousePressEvent(event);
    box_->EmitMouse(event, true);
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    QLineEdit::mouseMoveEvent(event);
    box_->EmitMouse(event, false);
  }

 private:
  NumberBox* box_;
};

bool ParseColorText(const QString& text, quint32* value) {
  QString t = text.trimmed();
  if (!t.startsWith(QLatin1String("&H"), Qt::CaseInsensitive)) return false;
  t = t.mid(2);
  if (t.endsWith(u'&')) t.chop(1);
  if (t.isEmpty() || t.size() > 8) return false;
  bool ok = false;
  const uint parsed = t.toUInt(&ok, 16);
  if (!ok) return false;
  if (value) *value = parsed;
  return true;
}

NumberBox::NumberBox(QWidget* parent) : QWidget(parent) {
  edit_ = new NumberEdit(this);
  edit_->setObjectName(QStringLiteral("txtNumber"));
  edit_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  // Paste and cut go through the box's own keys only, so that what reaches
  // the box is always made a number.
  edit_->setContextMenuPolicy(Qt::NoContextMenu);
  edit_->setAcceptDrops(false);
  edit_->setMouseTracking(true);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(edit_);
  setFocusProxy(edit_);
  setFocusPolicy(Qt::StrongFocus);
  connect(edit_, &QLineEdit::textChanged, this, &NumberBox::TextChanged);
  ApplyColours();
}

QLineEdit* NumberBox::txtNumber() const { return edit_; }

QString NumberBox::Value() const { return numeric::UnformatNumeric(edit_->text()); }

void NumberBox::SetValue(const QString& value) {
  edit_->setText(numeric::UnformatNumeric(value));
  if (!hasFocus_) SetTextFormatting(FormatNumeric(edit_->text()));
}

void NumberBox::SetMaxValue(double value) { maxValue_ = value; }
void NumberBox::SetMinValue(int value) { minValue_ = value; }

void NumberBox::SetFormat(const QString& format) {
  format_ = format;
  Refresh();
}

void NumberBox::SetBackColor(const QString& color) {
  backColor_ = ParseColorText(color, nullptr) ? color.trimmed() : DefaultBackColor;
  ApplyColours();
}

void NumberBox::SetForeColor(const QString& color) {
  foreColor_ = ParseColorText(color, nullptr) ? color.trimmed() : DefaultForeColor;
  ApplyColours();
}

void NumberBox::SetLocked(bool on) {
  locked_ = on;
  edit_->setReadOnly(on);
}

QString NumberBox::UnformatNumeric(const QString& text) const {
  return numeric::UnformatNumeric(text);
}

QString NumberBox::FormatNumeric(const QString& text) const {
  return numeric::FormatNumeric(text, format_);
}

void NumberBox::Refresh() {
  ApplyColours();
  if (!hasFocus_) SetTextFormatting(FormatNumeric(edit_->text()));
  update();
}

void NumberBox::Highlight() { edit_->selectAll(); }

void NumberBox::ApplyColours() {
  quint32 back = 0xFFFFFF, fore = 0;
  ParseColorText(backColor_, &back);
  ParseColorText(foreColor_, &fore);
  QPalette palette = edit_->palette();
  palette.setColor(QPalette::Base, ColorFromOle(back));
  palette.setColor(QPalette::Text, ColorFromOle(fore));
  edit_->setPalette(palette);
}

void NumberBox::SetTextFormatting(const QString& text) {
  formatting_ = true;
  edit_->setText(text);
  formatting_ = false;
}

void NumberBox::TextChanged(const QString& text) {
  const QString plain = numeric::UnformatNumeric(text);
  const QString old = plain_;
  plain_ = plain;
  if (formatting_) return;
  if (numeric::NumericValue(plain) != numeric::NumericValue(old)) emit Change();
}

void NumberBox::EnterFocus() {
  hasFocus_ = true;
  if (!isEnabled() || locked_) return;
  edit_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  SetTextFormatting(numeric::UnformatNumeric(edit_->text()));
  edit_->selectAll();
}

void NumberBox::ExitFocus() {
  hasFocus_ = false;
  const QString plain = numeric::UnformatNumeric(edit_->text());
  if (!plain.isEmpty() && useMaxMinValues_) {
    const double value = numeric::NumericValue(plain);
    if (value > maxValue_)
      edit_->setText(QString::number(maxValue_, 'g', 15));
    else if (value < minValue_)
      edit_->setText(QString::number(minValue_));
  }
  SetTextFormatting(FormatNumeric(edit_->text()));
  edit_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

bool NumberBox::AcceptsCharacter(int keyAscii) const {
  QString rest = edit_->text();
  int start = edit_->cursorPosition();
  if (edit_->hasSelectedText()) {
    start = edit_->selectionStart();
    rest.remove(start, edit_->selectedText().size());
  }
  if (keyAscii >= '0' && keyAscii <= '9') {
    const QString plain = numeric::UnformatNumeric(rest);
    return plain.size() < numeric::FormatMaxLength(format_, plain.startsWith(u'-'));
  }
  if (keyAscii == keys::Back) return true;
  if (keyAscii == 14 || keyAscii == '.') return !rest.contains(u'.');
  if (keyAscii == '-') return !positiveOnly_ && start == 0 && !rest.contains(u'-');
  return false;
}

bool NumberBox::HandleKeyDown(QKeyEvent* event) {
  const int code = keys::KeyCode(event);
  const int shift = keys::ShiftOf(event);
  if (shift == keys::CtrlMask && (code == 'C' || code == 'V' || code == 'X')) {
    QClipboard* clipboard = QApplication::clipboard();
    if (code == 'C' || code == 'X') {
      if (edit_->hasSelectedText()) clipboard->setText(edit_->selectedText());
      if (code == 'X' && !locked_) edit_->clear();
    } else if (!locked_) {
      edit_->setText(clipboard->text());
      SetTextFormatting(FormatNumeric(edit_->text()));
      edit_->selectAll();
    }
    emit KeyDown(code, shift);
    return true;
  }
  emit KeyDown(code, shift);

  int keyAscii = code == keys::Back ? int(keys::Back) : keys::KeyAscii(event);
  if (keyAscii == 127) keyAscii = 0;  // Delete types nothing
  // Keys that type nothing (arrows, Delete, Home) and the keys that the
  // window acts on (Tab, Enter, Esc) go their usual way.
  if (keyAscii == 0 || keyAscii == keys::Tab || keyAscii == keys::Return ||
      keyAscii == keys::Escape || locked_)
    return false;
  if (!AcceptsCharacter(keyAscii)) return true;
  emit KeyPress(keyAscii);
  return false;
}

void NumberBox::EmitMouse(QMouseEvent* event, bool down) {
  const QPoint p = edit_->mapTo(this, event->position().toPoint());
  const int x = twips::FromPixels(p.x()), y = twips::FromPixels(p.y());
  if (down)
    emit MouseDown(MouseButtonOf(event, false), MouseShiftOf(event), x, y);
  else
    emit MouseMove(MouseButtonOf(event, true), MouseShiftOf(event), x, y);
}
