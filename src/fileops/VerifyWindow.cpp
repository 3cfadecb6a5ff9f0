#include "fileops/VerifyWindow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScreen>

#include "controls/PaintRoutines.h"
#include "core/AppState.h"
#include "core/CommonKeys.h"
#include "core/WindowRegistry.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"

VerifyWindow::VerifyWindow(WindowId id, const QString& title, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint), id_(id) {
  setObjectName(WindowName(id));
  setWindowTitle(title);
  setModal(true);
  Windows().Loaded(id, this);
}

void VerifyWindow::Answer(qint16 answer) {
  App().ReplaceAnswer = answer;
  if (Windows().Find(id_) == this)
    Windows().Unload(id_);
  else
    close();
}

void VerifyWindow::CentreOnMainWindow() {
  QRect over;
  if (const QWidget* main = Windows().Find(WindowId::MainForm); main && main->isVisible())
    over = main->frameGeometry();
  else if (const QScreen* screen = QGuiApplication::primaryScreen())
    over = screen->availableGeometry();
  const QSize outer = frameGeometry().size().expandedTo(size());
  move(over.left() + (over.width() - outer.width()) / 2,
       over.top() + (over.height() - outer.height()) / 2);
}

QLabel* VerifyWindow::AddLabel(const QString& name, const QString& text, int left, int top,
                               int width, int height, Qt::Alignment alignment) {
  auto* label = new QLabel(text, this);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(alignment);
  label->setGeometry(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(width),
                     twips::ToPixels(height));
  return label;
}

QPushButton* VerifyWindow::AddButton(const QString& name, const QString& text, const QColor& colour) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(name);
  QPalette palette = button->palette();
  palette.setColor(QPalette::Button, colour);
  button->setPalette(palette);
  return button;
}

void VerifyWindow::keyPressEvent(QKeyEvent* event) {
  // Enter presses the button with the focus, as in any dialog.
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    QDialog::keyPressEvent(event);
    return;
  }
  const int keyCode = keys::KeyCode(event);
  const int shift = keys::ShiftOf(event);
  if (keyCode == keys::Escape && (shift == keys::NoShift || shift == keys::ShiftMask))
    App().ReplaceAnswer = 2;
  HandleCommonKey(this, keyCode, shift, true, false);
}

void VerifyWindow::closeEvent(QCloseEvent* event) {
  Windows().Closed(this);
  QDialog::closeEvent(event);
}

void VerifyWindow::paintEvent(QPaintEvent*) {
  // The white gradient, laid over three times the window's height so that
  // only its light part lies under the texts.
  QPainter painter(this);
  PaintFormGradient(painter, QSize(width(), height() * 3), 255, 255, 255, 1);
}

void ShowVerifyWindowModal(VerifyWindow* window) {
  QPointer<VerifyWindow> guard(window);
  window->exec();
  if (!guard) return;
  if (const auto id = Windows().IdOf(guard)) Windows().Unload(*id);
  if (guard) guard->deleteLater();
}
