#include "fileops/MessageWindows.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QScreen>

#include "controls/PaintRoutines.h"
#include "core/CommonKeys.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"

namespace {

constexpr int MessageWidth = 3300;
constexpr int MessageHeight = 600;

template <typename Message>
void ShowMessage() {
  auto* message = Windows().Get<Message>();
  if (!message) message = new Message(Windows().Find(WindowId::MainForm));
  message->Centre();
  message->show();
  message->raise();
  message->repaint();
}

}  // namespace

SmallMessage::SmallMessage(WindowId id, const QString& text, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint), text_(text) {
  setObjectName(WindowName(id));
  setAttribute(Qt::WA_DeleteOnClose);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  resize(twips::ToPixels(MessageWidth), twips::ToPixels(MessageHeight));
  Windows().Loaded(id, this);
}

void SmallMessage::Centre() {
  // The browser's rectangle on the screen; else the main window's, else
  // the screen's work area.
  QRect over;
  if (const QWidget* browser = Windows().Find(WindowId::Thumbnails); browser && browser->isVisible())
    over = QRect(browser->mapToGlobal(QPoint(0, 0)), browser->size());
  else if (const QWidget* main = Windows().Find(WindowId::MainForm); main && main->isVisible())
    over = QRect(main->mapToGlobal(QPoint(0, 0)), main->size());
  else if (const QScreen* screen = QGuiApplication::primaryScreen())
    over = screen->availableGeometry();
  move(over.left() + (over.width() - width()) / 2, over.top() + (over.height() - height()) / 2);
}

void SmallMessage::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintFormGradient(painter, size(), 255, 255, 255, 1);
  painter.setPen(QColor(120, 120, 120));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  painter.setPen(Qt::black);
  painter.drawText(rect(), Qt::AlignCenter, text_);
}

void SmallMessage::closeEvent(QCloseEvent* event) {
  Windows().Closed(this);
  QWidget::closeEvent(event);
}

CopyMessage::CopyMessage(QWidget* parent) : SmallMessage(Id, "Updating List", parent) {}
DeleteMessage::DeleteMessage(QWidget* parent) : SmallMessage(Id, "Deleting File", parent) {}
CleaningMessage::CleaningMessage(QWidget* parent)
    : SmallMessage(Id, "Clearing Browser History", parent) {}

void ShowCopyMessage() { ShowMessage<CopyMessage>(); }
void HideCopyMessage() { Windows().Unload(WindowId::CopyMessage); }
void ShowDeleteMessage() { ShowMessage<DeleteMessage>(); }
void HideDeleteMessage() { Windows().Unload(WindowId::DeleteMessage); }
void ShowCleaningMessage() { ShowMessage<CleaningMessage>(); }
void HideCleaningMessage() { Windows().Unload(WindowId::CleaningMessage); }

void RefreshMessage(WindowId id) {
  if (QWidget* message = Windows().Find(id); message && message->isVisible()) message->repaint();
}

Background::Background(QWidget* parent) : QWidget(parent) {
  setObjectName(WindowName(Id));
  setAttribute(Qt::WA_DeleteOnClose);
  setFocusPolicy(Qt::StrongFocus);
  Windows().Loaded(this);
}

void Background::keyPressEvent(QKeyEvent* event) {
  HandleCommonKey(this, keys::KeyCode(event), keys::ShiftOf(event), false, false);
}

void Background::closeEvent(QCloseEvent* event) {
  Windows().Closed(this);
  QWidget::closeEvent(event);
  // The sub-window that carries it in the main window's area goes with it.
  if (auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget())) {
    sub->hide();
    sub->deleteLater();
  }
}

Background* ShowBackground(int widthTwips, int heightTwips) {
  auto* window = Windows().Get<Background>();
  if (!window) {
    QWidget* main = Windows().Find(WindowId::MainForm);
    QMdiArea* area = main ? main->findChild<QMdiArea*>() : nullptr;
    window = new Background;
    if (area) {
      QMdiSubWindow* sub = area->addSubWindow(window, Qt::FramelessWindowHint | Qt::SubWindow);
      sub->setOption(QMdiSubWindow::RubberBandMove, false);
    } else {
      window->setParent(main, Qt::Window | Qt::FramelessWindowHint);
    }
  }
  QWidget* frame = FrameOf(window);
  frame->setGeometry(0, 0, twips::ToPixels(widthTwips), twips::ToPixels(heightTwips));
  frame->show();
  frame->raise();
  window->setFocus();
  return window;
}

void HideBackground() { Windows().Unload(WindowId::Background); }
