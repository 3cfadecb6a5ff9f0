#include "controls/MessageBox.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

#include "controls/MsgBoxEnhanced.h"
#include "platform/WindowMove.h"
#include "controls/MsgBoxLayout.h"
#include "controls/MsgBoxStyle.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"

namespace {

// The edge drawn round the frameless form, so that it stands out on a
// background of the same colour.
const QColor FormEdge(128, 128, 128);

// The close box: a small raised square with a cross, and its pressed look.
QPixmap DrawCloseBox(int size, bool pressed) {
  QPixmap pixmap(size, size);
  pixmap.fill(ColorFromOle(SysColor::ButtonFace));
  QPainter painter(&pixmap);
  const QColor light = pressed ? QColor(64, 64, 64) : QColor(255, 255, 255);
  const QColor dark = pressed ? QColor(255, 255, 255) : QColor(64, 64, 64);
  painter.setPen(light);
  painter.drawLine(0, 0, size - 1, 0);
  painter.drawLine(0, 0, 0, size - 1);
  painter.setPen(dark);
  painter.drawLine(size - 1, 0, size - 1, size - 1);
  painter.drawLine(0, size - 1, size - 1, size - 1);
  const int shift = pressed ? 1 : 0;
  const int inset = size / 4;
  QPen pen(Qt::black);
  pen.setWidth(2);
  painter.setPen(pen);
  painter.drawLine(inset + shift, inset + shift, size - 1 - inset + shift, size - 1 - inset + shift);
  painter.drawLine(size - 1 - inset + shift, inset + shift, inset + shift, size - 1 - inset + shift);
  return pixmap;
}

}  // namespace

MessageBoxSurface::MessageBoxSurface(QWidget* parent) : QWidget(parent) {}

void MessageBoxSurface::ResetPicture() {
  Drawing_.Picture = QImage(size(), QImage::Format_RGB32);
  Drawing_.Picture.fill(Drawing_.BackColor);
}

void MessageBoxSurface::SetOverlay(const QPixmap& pixmap, QPoint at) {
  Overlay_ = pixmap;
  OverlayAt_ = at;
}

void MessageBoxSurface::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (!Drawing_.Picture.isNull()) {
    painter.drawImage(0, 0, Drawing_.Picture);
  } else {
    painter.fillRect(rect(), Drawing_.BackColor);
    if (!Overlay_.isNull()) painter.drawPixmap(OverlayAt_, Overlay_);
  }
  painter.setPen(FormEdge);
  const QRect r = rect();
  if (Edges_ & Qt::TopEdge) painter.drawLine(r.topLeft(), r.topRight());
  if (Edges_ & Qt::LeftEdge) painter.drawLine(r.topLeft(), r.bottomLeft());
  if (Edges_ & Qt::RightEdge) painter.drawLine(r.topRight(), r.bottomRight());
  if (Edges_ & Qt::BottomEdge) painter.drawLine(r.bottomLeft(), r.bottomRight());
}

MessageBox::MessageBox(MsgBoxEnhanced& owner)
    : QDialog(nullptr, Qt::Dialog | Qt::FramelessWindowHint), Owner_(owner) {
  setObjectName("MessageBox");
  setWindowTitle("Message");
  setAttribute(Qt::WA_DeleteOnClose, false);

  TopHeading = new MessageBoxSurface(this);
  TopHeading->setObjectName("TopHeading");
  TopHeading->SetFrameEdges(Qt::TopEdge | Qt::LeftEdge | Qt::RightEdge);
  TopCaption = new QLabel("Message", TopHeading);
  TopCaption->setObjectName("TopCaption");
  TopCaption->setTextFormat(Qt::PlainText);
  QFont captionFont = TopCaption->font();
  captionFont.setBold(true);
  TopCaption->setFont(captionFont);

  const int closeSize = twips::ToPixels(msgbox::CloseBoxSize);
  ControlBoxUp = new QLabel(TopHeading);
  ControlBoxUp->setObjectName("ControlBoxUp");
  ControlBoxUp->setAccessibleName("Close");
  ControlBoxUp->setPixmap(DrawCloseBox(closeSize, false));
  ControlBoxDn = new QLabel(TopHeading);
  ControlBoxDn->setObjectName("ControlBoxDn");
  ControlBoxDn->setPixmap(DrawCloseBox(closeSize, true));
  ControlBoxDn->hide();

  // The rules of the heading: a dark, a mid and a light line along its foot.
  const QColor ruleColors[3] = {QColor(96, 96, 96), QColor(160, 160, 160), QColor(255, 255, 255)};
  for (int i = 0; i < 3; ++i) {
    HLine[i] = new QWidget(TopHeading);
    HLine[i]->setObjectName(QString("HLine%1").arg(i));
    HLine[i]->setAutoFillBackground(true);
    QPalette palette = HLine[i]->palette();
    palette.setColor(QPalette::Window, ruleColors[i]);
    HLine[i]->setPalette(palette);
    HLine[i]->hide();
  }

  Background = new MessageBoxSurface(this);
  Background->setObjectName("Background");
  Background->SetFrameEdges(Qt::LeftEdge | Qt::RightEdge | Qt::BottomEdge);
  MsgText = new QLabel(Background);
  MsgText->setObjectName("MsgText");
  MsgText->setTextFormat(Qt::PlainText);
  MsgText->setWordWrap(false);

  for (int i = 0; i < 4; ++i) {
    MsgButton[i] = new QPushButton(Background);
    MsgButton[i]->setObjectName(QString("MsgButton%1").arg(i));
    MsgButton[i]->setEnabled(false);
    MsgButton[i]->hide();
    MsgButton[i]->setFocusPolicy(Qt::NoFocus);
    MsgButton[i]->installEventFilter(this);
    connect(MsgButton[i], &QPushButton::clicked, this, [this, i] { MsgButton_Click(i); });
  }

  for (QWidget* w : {static_cast<QWidget*>(TopHeading), static_cast<QWidget*>(TopCaption),
                     static_cast<QWidget*>(Background), static_cast<QWidget*>(MsgText),
                     static_cast<QWidget*>(ControlBoxUp)})
    w->installEventFilter(this);

  Timer1 = new QTimer(this);
  Timer1->setInterval(1000);
  connect(Timer1, &QTimer::timeout, this, [this] { Timer1_Timer(); });
  Timer2 = new QTimer(this);
  Timer2->setInterval(100);
  connect(Timer2, &QTimer::timeout, this, [this] { Timer2_Timer(); });
}

void MessageBox::Unload() {
  if (Unloaded_) return;
  Unloaded_ = true;
  Timer1->stop();
  Timer2->stop();
  done(0);
}

void MessageBox::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  activateWindow();
  // The activation work runs when the window becomes the active one; a
  // desktop that keeps the focus elsewhere gets it a moment later anyway.
  if (!Activated_) QTimer::singleShot(250, this, [this] { Form_Activate(); });
}

bool MessageBox::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate && !Activated_)
    QMetaObject::invokeMethod(this, [this] { Form_Activate(); }, Qt::QueuedConnection);
  return QDialog::event(event);
}

void MessageBox::Form_Activate() {
  if (Activated_ || Unloaded_) return;
  Activated_ = true;
  if (Owner_.KeepOnTop()) SetWindowOnTop(this, true);

  if (Owner_.GradientPaint()) {
    Background->Drawing().BackColor = ColorFromOle(Owner_.BackColorBody());
    Background->ResetPicture();
    const int direction = Owner_.GradientDirection();
    if (direction < 5)
      MsgDefs::PaintBandGradient(Background->Drawing(), Owner_.BackColorBody(), direction, false,
                                 true);
    else
      MsgDefs::PaintPatternGradient(Background->Drawing(), Owner_.BackColorBody(), direction);
    if (Owner_.IconIndex() >= 0 && !Owner_.IconPicture().isNull()) {
      QPainter painter(&Background->Drawing().Picture);
      painter.drawPixmap(twips::ToPixels(msgbox::IconLeft), twips::ToPixels(msgbox::IconTop),
                         Owner_.IconPicture());
    }
    Background->update();
  }

  if (DefaultIndex >= 0) FocusIndex = DefaultIndex;

  if (Owner_.TimerSeconds() > 0) {
    SecondsGone = 0;
    Timer1->start();
  }
  Timer2_Timer();
  Timer2->start();
}

void MessageBox::Timer1_Timer() {
  ++SecondsGone;
  if (SecondsGone >= Owner_.TimerSeconds()) {
    Owner_.SetResult(msgbox::TimedOut);
    Unload();
  }
}

void MessageBox::Timer2_Timer() {
  if (isActiveWindow()) {
    PaintHeading(true);
    QPushButton* button = MsgButton[FocusIndex];
    if (button->isEnabled() && button->isVisible() && !button->hasFocus()) button->setFocus();
  } else {
    PaintHeading(false);
  }
}

void MessageBox::PaintHeading(bool active) {
  // The picture only changes with the active state, so a tick that finds
  // the state unchanged leaves it as it stands.
  if (HeadingPainted_ && HeadingActive_ == active &&
      TopHeading->Drawing().Picture.size() == TopHeading->size())
    return;
  HeadingPainted_ = true;
  HeadingActive_ = active;
  const OleColor color = active ? Owner_.BackColorHeading() : SysColor::InactiveCaption;
  if (!Owner_.SolidColorHeading()) {
    TopHeading->ResetPicture();
    MsgDefs::PaintBandGradient(TopHeading->Drawing(), color, 3, true, active);
  } else {
    TopHeading->ClearPicture();
    TopHeading->Drawing().BackColor = ColorFromOle(color);
  }
  TopHeading->update();
}

void MessageBox::MsgButton_Click(int index) {
  Owner_.SetResult(msgbox::ResultOfCaption(MsgButton[index]->text()));
  Unload();
}

void MessageBox::keyPressEvent(QKeyEvent* event) {
  // Escape answers on its release, like the close box; the dialog's own
  // handling of it is kept out.
  if (keys::KeyCode(event) == keys::Escape) {
    event->accept();
    return;
  }
  QDialog::keyPressEvent(event);
}

void MessageBox::keyReleaseEvent(QKeyEvent* event) {
  if (keys::KeyCode(event) == keys::Escape && !event->isAutoRepeat()) {
    Owner_.SetResult(msgbox::ResultCancel);
    Unload();
    return;
  }
  QDialog::keyReleaseEvent(event);
}

void MessageBox::closeEvent(QCloseEvent* event) {
  // Closed by the desktop (a key of the window manager): as the close box.
  if (!Unloaded_) {
    Owner_.SetResult(msgbox::ResultCancel);
    Unload();
  }
  event->accept();
}

void MessageBox::StartMove(QMouseEvent* event) {
  platform::MoveWindowWithMouse(this, event->globalPosition().toPoint());
}

bool MessageBox::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type == QEvent::FocusIn) {
    for (int i = 0; i < 4; ++i)
      if (watched == MsgButton[i]) FocusIndex = i;
    return false;
  }

  if (watched == ControlBoxUp) {
    if (type == QEvent::MouseButtonPress) {
      ControlBoxUp->setPixmap(ControlBoxDn->pixmap());
      return true;
    }
    if (type == QEvent::MouseButtonRelease) {
      Owner_.SetResult(msgbox::ResultCancel);
      Unload();
      return true;
    }
    return false;
  }

  if ((watched == TopHeading || watched == TopCaption || watched == Background ||
       watched == MsgText) &&
      type == QEvent::MouseButtonPress) {
    // Only a press is a mouse event here; other events are not cast.
    auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() == Qt::LeftButton && Owner_.Moveable()) {
      StartMove(mouse);
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}
