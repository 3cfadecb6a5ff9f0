#include "controls/TransControl.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>

#include "controls/AccessibleControls.h"
#include "controls/PaintRoutines.h"
#include "controls/SystemColours.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"

namespace {
enum MouseKind { Down, Up, Move };
}

TransControl::TransControl(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_NoSystemBackground);
  connect(this, &QObject::objectNameChanged, this, [this] {
    if (!captionGiven_) ApplyLook();
  });
}

QString TransControl::Caption() const { return captionGiven_ ? caption_ : objectName(); }

void TransControl::SetCaption(const QString& caption) {
  caption_ = caption;
  captionGiven_ = true;
  ApplyLook();
  accessible::NotifyNameChanged(this);
}

void TransControl::SetBackStyle(int style) {
  backStyle_ = style == 1 ? 1 : 0;
  ApplyLook();
}

void TransControl::SetAppearance(int appearance) {
  appearance_ = appearance == 0 ? 0 : 1;
  ApplyLook();
}

void TransControl::SetBackColor(OleColor color) {
  backColor_ = SysColor::OrDefault(color, DefaultBackColor);
  ApplyLook();
}

void TransControl::SetForeColor(OleColor color) {
  foreColor_ = SysColor::OrDefault(color, DefaultForeColor);
  ApplyLook();
}

QFont TransControl::Font() const {
  QFont font = QApplication::font();
  if (!fontName_.isEmpty()) font.setFamily(fontName_);
  if (fontSize_ > 0) font.setPointSizeF(fontSize_);
  font.setBold(fontBold_);
  font.setItalic(fontItalic_);
  font.setUnderline(fontUnderline_);
  font.setStrikeOut(fontStrikethru_);
  return font;
}

void TransControl::SetFont(const QFont& font) {
  fontName_ = font.family();
  fontSize_ = font.pointSizeF() > 0 ? font.pointSizeF() : 0;
  fontBold_ = font.bold();
  fontItalic_ = font.italic();
  fontUnderline_ = font.underline();
  fontStrikethru_ = font.strikeOut();
  ApplyLook();
}

void TransControl::SetFontBold(bool on) {
  fontBold_ = on;
  ApplyLook();
}
void TransControl::SetFontItalic(bool on) {
  fontItalic_ = on;
  ApplyLook();
}
void TransControl::SetFontUnderline(bool on) {
  fontUnderline_ = on;
  ApplyLook();
}
void TransControl::SetFontStrikethru(bool on) {
  fontStrikethru_ = on;
  ApplyLook();
}
void TransControl::SetFontSize(double points) {
  fontSize_ = points > 0 ? points : 0;
  ApplyLook();
}
void TransControl::SetFontName(const QString& name) {
  fontName_ = name.trimmed();
  ApplyLook();
}

void TransControl::SetMouseIcon(const QPixmap& icon) {
  mouseIcon_ = icon;
  ApplyLook();
}

void TransControl::SetMousePointer(int pointer) {
  mousePointer_ = pointer;
  ApplyLook();
}

void TransControl::Refresh() { update(); }

void TransControl::DisplayAboutBox() {
  auto* box = new QMessageBox(QMessageBox::Information, QStringLiteral("About"), AboutText(),
                              QMessageBox::Ok, window());
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowModality(Qt::NonModal);
  box->show();
}

void TransControl::SetInner(QWidget* inner) {
  inner_ = inner;
  inner_->installEventFilter(this);
  inner_->setMouseTracking(true);
  inner_->setGeometry(rect());
  setFocusProxy(inner_);
}

void TransControl::ApplyLook() {
  ApplyMousePointer(this, mousePointer_, mouseIcon_);
  if (inner_) {
    // The fore colour for the enabled states only: a disabled control keeps
    // the grey text of its kind.
    QPalette palette = inner_->palette();
    const QColor fore = ColorFromOle(foreColor_);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
      palette.setColor(group, QPalette::WindowText, fore);
      palette.setColor(group, QPalette::ButtonText, fore);
      palette.setColor(group, QPalette::Text, fore);
    }
    inner_->setPalette(palette);
    inner_->setFont(Font());
    ApplyMousePointer(inner_, mousePointer_, mouseIcon_);
  }
  update();
}

void TransControl::paintEvent(QPaintEvent*) {
  if (backStyle_ != 1) return;
  QPainter painter(this);
  painter.fillRect(rect(), ColorFromOle(backColor_));
}

void TransControl::resizeEvent(QResizeEvent*) {
  if (inner_) inner_->setGeometry(rect());
}

void TransControl::PassMouse(QWidget* from, QMouseEvent* event, int kind) {
  const QPoint p = from->mapTo(this, event->position().toPoint());
  const int x = twips::FromPixels(p.x()), y = twips::FromPixels(p.y());
  const int shift = MouseShiftOf(event);
  switch (kind) {
    case Down: emit MouseDown(MouseButtonOf(event, false), shift, x, y); break;
    case Up: emit MouseUp(MouseButtonOf(event, false), shift, x, y); break;
    default: emit MouseMove(MouseButtonOf(event, true), shift, x, y); break;
  }
}

void TransControl::mousePressEvent(QMouseEvent* event) { PassMouse(this, event, Down); }
void TransControl::mouseReleaseEvent(QMouseEvent* event) { PassMouse(this, event, Up); }
void TransControl::mouseMoveEvent(QMouseEvent* event) { PassMouse(this, event, Move); }

bool TransControl::eventFilter(QObject* watched, QEvent* event) {
  if (watched != inner_) return QWidget::eventFilter(watched, event);
  switch (event->type()) {
    case QEvent::KeyPress: {
      auto* key = static_cast<QKeyEvent*>(event);
      emit KeyDown(keys::KeyCode(key), keys::ShiftOf(key));
      const int ascii = keys::KeyAscii(key);
      if (ascii != 0 && ascii != 127) emit KeyPress(ascii);
      break;
    }
    case QEvent::KeyRelease: {
      auto* key = static_cast<QKeyEvent*>(event);
      if (!key->isAutoRepeat()) emit KeyUp(keys::KeyCode(key), keys::ShiftOf(key));
      break;
    }
    case QEvent::MouseButtonPress:
      PassMouse(inner_, static_cast<QMouseEvent*>(event), Down);
      break;
    case QEvent::MouseButtonRelease:
      PassMouse(inner_, static_cast<QMouseEvent*>(event), Up);
      break;
    case QEvent::MouseMove:
      PassMouse(inner_, static_cast<QMouseEvent*>(event), Move);
      break;
    case QEvent::FocusIn: emit GotFocus(); break;
    case QEvent::FocusOut: emit LostFocus(); break;
    default: break;
  }
  return QWidget::eventFilter(watched, event);
}
