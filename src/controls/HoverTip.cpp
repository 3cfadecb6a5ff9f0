#include "controls/HoverTip.h"

#include <QCursor>
#include <QEnterEvent>
#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "controls/SystemColours.h"

namespace {
// Fixed room around the text, in pixels, and the distance of the tip below
// the mouse.
constexpr int Padding = 3;
constexpr int BelowMouse = 20;

// The tip's window: the text, with a line in the text colour round the edge
// of the window, outside the room left about the text.
class TipWindow : public QLabel {
 public:
  TipWindow() : QLabel(nullptr, Qt::ToolTip | Qt::FramelessWindowHint) {}

 protected:
  void paintEvent(QPaintEvent* event) override {
    QLabel::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
};
}  // namespace

HoverTip::HoverTip(TextSource source, Qt::TextFormat format, QObject* parent)
    : QObject(parent), source_(std::move(source)), format_(format) {
  back_ = ColorFromOle(SysColor::InfoBack);
  text_ = ColorFromOle(SysColor::InfoText);
  showTimer_.setSingleShot(true);
  hideTimer_.setSingleShot(true);
  connect(&showTimer_, &QTimer::timeout, this, &HoverTip::ShowPending);
  connect(&hideTimer_, &QTimer::timeout, this, &HoverTip::Hide);
}

HoverTip::~HoverTip() {
  for (const QPointer<QWidget>& control : controls_)
    if (control) control->removeEventFilter(this);
  delete window_.data();
}

QWidget* HoverTip::Find(const QObject* object) const {
  for (const QPointer<QWidget>& control : controls_)
    if (control && control.data() == object) return control.data();
  return nullptr;
}

void HoverTip::Watch(QWidget* control) {
  if (!control || Find(control)) return;
  controls_.removeAll(QPointer<QWidget>());
  controls_.append(control);
  control->installEventFilter(this);
}

void HoverTip::Unwatch(QWidget* control) {
  if (!control || !Find(control)) return;
  control->removeEventFilter(this);
  controls_.removeAll(QPointer<QWidget>(control));
  if (pending_ == control) showTimer_.stop();
  if (shown_ == control) Hide();
}

bool HoverTip::Watching(const QWidget* control) const { return Find(control) != nullptr; }

int HoverTip::WatchCount() const {
  return int(std::count_if(controls_.begin(), controls_.end(),
                           [](const QPointer<QWidget>& c) { return !c.isNull(); }));
}

void HoverTip::SetInitialDelay(int ms) { initialDelay_ = std::max(ms, 0); }
void HoverTip::SetReshowDelay(int ms) { reshowDelay_ = std::max(ms, 0); }
void HoverTip::SetVisibleTime(int ms) { visibleTime_ = std::max(ms, 0); }

void HoverTip::SetBackColor(const QColor& color) {
  back_ = color;
  ApplyLook();
}
void HoverTip::SetTextColor(const QColor& color) {
  text_ = color;
  ApplyLook();
}
void HoverTip::SetMargins(const QMargins& margins) {
  margins_ = margins;
  ApplyLook();
}
void HoverTip::SetMaxWidth(int pixels) {
  maxWidth_ = pixels < 1 ? -1 : pixels;
  ApplyLook();
}

void HoverTip::ApplyLook() {
  if (!window_) return;
  QPalette palette = window_->palette();
  palette.setColor(QPalette::Window, back_);
  palette.setColor(QPalette::WindowText, text_);
  window_->setPalette(palette);
  // One pixel more on each side for the edge line.
  window_->setContentsMargins(margins_ + QMargins(1, 1, 1, 1));
  window_->setMargin(Padding);
  window_->setWordWrap(maxWidth_ > 0);
  window_->setMaximumWidth(maxWidth_ > 0 ? maxWidth_ : QWIDGETSIZE_MAX);
}

QWidget* HoverTip::ShownFor() const {
  return window_ && window_->isVisible() ? shown_.data() : nullptr;
}

void HoverTip::ShowFor(QWidget* control) {
  if (!control) return;
  ShowFor(control, control->mapToGlobal(QPoint(control->width() / 2, control->height() / 2)));
}

void HoverTip::ShowFor(QWidget* control, const QPoint& globalPos) {
  showTimer_.stop();
  const QString text = control && source_ ? source_(control) : QString();
  if (text.isEmpty()) {
    Hide();
    return;
  }
  if (!window_) {
    window_ = new TipWindow;
    window_->setObjectName("HoverTipWindow");
    window_->setAutoFillBackground(true);
    window_->setAttribute(Qt::WA_ShowWithoutActivating);
    ApplyLook();
  }
  window_->setTextFormat(format_);
  window_->setText(text);
  window_->adjustSize();
  // Below the mouse, kept on the screen.
  QPoint at = globalPos + QPoint(0, BelowMouse);
  if (const QScreen* screen = QGuiApplication::screenAt(globalPos)) {
    const QRect area = screen->availableGeometry();
    const QSize size = window_->size();
    if (at.x() + size.width() > area.right()) at.setX(area.right() - size.width());
    if (at.y() + size.height() > area.bottom()) at.setY(globalPos.y() - size.height() - 4);
    at.setX(std::max(at.x(), area.left()));
    at.setY(std::max(at.y(), area.top()));
  }
  window_->move(at);
  shown_ = control;
  window_->show();
  if (visibleTime_ > 0) hideTimer_.start(visibleTime_);
}

void HoverTip::Hide() {
  showTimer_.stop();
  hideTimer_.stop();
  if (window_) window_->hide();
  shown_ = nullptr;
}

void HoverTip::ShowPending() {
  if (pending_ && pending_->isVisible()) ShowFor(pending_, QCursor::pos());
}

bool HoverTip::eventFilter(QObject* watched, QEvent* event) {
  QWidget* control = Find(watched);
  if (!control) return QObject::eventFilter(watched, event);
  switch (event->type()) {
    case QEvent::Enter: {
      // Moving on from a tip that was just up shows the next one sooner.
      const bool reshow = sinceLeft_.isValid() && sinceLeft_.elapsed() < initialDelay_;
      pending_ = control;
      showTimer_.start(reshow ? reshowDelay_ : initialDelay_);
      break;
    }
    case QEvent::Leave:
      showTimer_.stop();
      if (shown_ == control && window_ && window_->isVisible()) {
        sinceLeft_.start();
        Hide();
      }
      break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::Hide:
    case QEvent::Wheel:
      showTimer_.stop();
      if (shown_ == control) Hide();
      break;
    case QEvent::ToolTip:
      // The control's own tooltip would stand beside this one.
      return true;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}
