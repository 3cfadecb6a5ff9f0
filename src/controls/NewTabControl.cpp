#include "controls/NewTabControl.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QPolygon>
#include <QRegion>

#include "controls/AccessibleTabs.h"
#include "controls/SystemColours.h"
#include "controls/TabStripLayout.h"
#include "platform/Twips.h"

namespace {

const QColor ShadeLight(180, 180, 180);
const QColor ShadeDark(90, 90, 90);
const QColor ShadeMid(130, 130, 130);
const QColor SeparatorLight(200, 200, 200);

int ButtonCode(Qt::MouseButtons buttons) {
  int code = 0;
  if (buttons & Qt::LeftButton) code |= 1;
  if (buttons & Qt::RightButton) code |= 2;
  if (buttons & Qt::MiddleButton) code |= 4;
  return code;
}

int ShiftCode(Qt::KeyboardModifiers modifiers) {
  int code = 0;
  if (modifiers & Qt::ShiftModifier) code |= 1;
  if (modifiers & Qt::ControlModifier) code |= 2;
  if (modifiers & Qt::AltModifier) code |= 4;
  return code;
}

int Px(int twipsValue) { return twips::ToPixels(twipsValue); }

}  // namespace

NewTabControl::NewTabControl(QWidget* parent) : QWidget(parent) {
  setMouseTracking(true);
  for (int i = 0; i < 4; ++i) {
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("CaptionLabel%1").arg(i + 1));
    label->setAlignment(Qt::AlignCenter);
    label->setAttribute(Qt::WA_TranslucentBackground);
    label->setAutoFillBackground(false);
    label->setMouseTracking(true);
    label->installEventFilter(this);
    labels_[static_cast<size_t>(i)] = label;
  }
  captionList_.resize(tabs_);
  ApplyLabelColours();
  LayOut();
}

void NewTabControl::SetEnabled(bool enabled) {
  enabled_ = enabled;
  setEnabled(enabled);
  for (QLabel* label : labels_) label->setEnabled(enabled);
}

void NewTabControl::SetGradient(bool gradient) {
  gradient_ = gradient;
  RePaint();
}

QFont NewTabControl::Font() const { return enabled_ ? font() : QFont(); }

void NewTabControl::SetFont(const QFont& font) {
  if (!enabled_) return;
  setFont(font);
  for (QLabel* label : labels_) label->setFont(font);
}

QColor NewTabControl::ForeColor() const {
  if (!enabled_) return QColor();
  return foreColor_.isValid() ? foreColor_ : ColorFromOle(SysColor::ButtonText);
}

void NewTabControl::SetForeColor(const QColor& color) {
  if (!enabled_) return;
  foreColor_ = color;
  ApplyLabelColours();
  RePaint();
}

QColor NewTabControl::BackColor() const {
  if (!enabled_) return QColor();
  return backColor_.isValid() ? backColor_ : ColorFromOle(SysColor::ButtonFace);
}

void NewTabControl::SetBackColor(const QColor& color) {
  if (!enabled_ || gradient_) return;
  backColor_ = color;
  RePaint();
}

QString NewTabControl::Caption(int index) const {
  if (!enabled_ || index < 1 || index > 4) return QString();
  return labels_[static_cast<size_t>(index - 1)]->text();
}

void NewTabControl::SetCaption(int index, const QString& text) {
  if (!enabled_ || index < 1 || index > 4) return;
  const QString listed =
      index <= captionList_.size() ? captionList_.at(index - 1) : QString();
  if (text == listed) return;
  QLabel* label = labels_[static_cast<size_t>(index - 1)];
  if (label->text() == text) return;
  label->setText(text);
  accessible::NotifyTabCaption(this, index);
}

qint16 NewTabControl::CurrentTab() const { return enabled_ ? currentTab_ : 0; }

void NewTabControl::SetCurrentTab(qint16 tab) {
  if (!enabled_) return;
  const qint16 before = currentTab_;
  currentTab_ = tab;
  RePaint();
  emit Click(currentTab_, previousTab_);
  previousTab_ = currentTab_;
  accessible::NotifyTabSelected(this, before, currentTab_);
}

qint16 NewTabControl::Tabs() const { return enabled_ ? tabs_ : 0; }

void NewTabControl::SetTabs(qint16 tabs) {
  if (!enabled_) return;
  tabs_ = tabs < 1 ? 3 : tabs;
  captionList_.resize(tabs_);
  RePaint();
}

void NewTabControl::SetTabDescription(std::function<QString(int index)> describe) {
  describe_ = std::move(describe);
}

QString NewTabControl::TabDescription(int index) const {
  return describe_ && index >= 1 && index <= 4 ? describe_(index) : QString();
}

QString NewTabControl::hWnd() const { return QString::number(quint64(effectiveWinId())); }

QLabel* NewTabControl::CaptionLabel(int index) const {
  if (index < 1 || index > 4) return nullptr;
  return labels_[static_cast<size_t>(index - 1)];
}

void NewTabControl::RePaint() {
  if (tabLocation_ == 1) ApplyOutline();
  update();
}

void NewTabControl::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  LayOut();
}

void NewTabControl::LayOut() {
  const int w = twips::FromPixels(width());
  const int h = twips::FromPixels(height());
  edges_ = tabstrip::Edges(w, tabs_);
  for (int i = 1; i <= 4; ++i) {
    const QRect r = tabstrip::LabelRect(i, h, edges_);
    labels_[static_cast<size_t>(i - 1)]->setGeometry(Px(r.left()), Px(r.top()),
                                                      std::max(0, Px(r.width())), Px(r.height()));
  }
  RePaint();
}

void NewTabControl::ApplyOutline() {
  const auto points = tabstrip::Outline(twips::FromPixels(width()),
                                        twips::FromPixels(height()), edges_);
  QPolygon polygon;
  for (const QPoint& p : points) polygon << QPoint(Px(p.x()), Px(p.y()));
  setMask(QRegion(polygon, Qt::OddEvenFill));
}

void NewTabControl::ApplyLabelColours() {
  const QColor text = foreColor_.isValid() ? foreColor_ : ColorFromOle(SysColor::ButtonText);
  for (QLabel* label : labels_) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::Active, QPalette::WindowText, text);
    palette.setColor(QPalette::Inactive, QPalette::WindowText, text);
    label->setPalette(palette);
  }
}

void NewTabControl::paintEvent(QPaintEvent*) {
  if (tabLocation_ != 1) return;
  QPainter painter(this);
  const int w = width();
  const int h = height();
  const int wt = twips::FromPixels(w);
  const int ht = twips::FromPixels(h);

  // The surface: plain back colour, or bands of grey from 80 at the top to
  // 238 at the strip.
  painter.fillRect(rect(), backColor_.isValid() ? backColor_ : ColorFromOle(SysColor::ButtonFace));
  if (gradient_) {
    const int step = tabstrip::RoundedDivide(ht - tabstrip::StripHeight, 158);
    int y = 45;
    for (int level = 80; level <= 238; ++level) {
      const int from = static_cast<int>(std::lround(twips::ToPixelsF(y)));
      const int to = static_cast<int>(std::lround(twips::ToPixelsF(y + step)));
      if (to > from) painter.fillRect(0, from, w, to - from, QColor(level, level, level));
      y += step;
    }
  }

  const int stripTop = Px(ht - tabstrip::StripHeight);

  // Raised frame: light along the top and left, dark along the right.
  painter.setPen(Qt::white);
  painter.drawLine(1, 1, 1, Px(ht - 90));
  painter.drawLine(2, 2, 2, Px(ht - 90));
  painter.drawLine(1, 1, w - 3, 1);
  painter.drawLine(2, 2, w - 4, 2);
  painter.setPen(ShadeDark);
  painter.drawLine(w - 2, 1, w - 2, Px(ht - 75));
  painter.setPen(ShadeMid);
  painter.drawLine(w - 3, 2, w - 3, Px(ht - 90));

  PaintBottomTabs(painter);

  // Tab separators down from the strip's top.
  for (int edge : edges_) {
    const int x = Px(edge);
    painter.setPen(Qt::black);
    painter.drawLine(x, stripTop, x, h);
    painter.setPen(ShadeDark);
    painter.drawLine(Px(edge - 15), stripTop, Px(edge - 15), h);
    painter.setPen(ShadeMid);
    painter.drawLine(Px(edge - 30), stripTop, Px(edge - 30), h);
    painter.setPen(SeparatorLight);
    painter.drawLine(Px(edge + 15), stripTop, Px(edge + 15), h);
    painter.setPen(ShadeLight);
    painter.drawLine(Px(edge + 30), stripTop, Px(edge + 30), h);
  }

  // The page is closed off above every tab but the current one, which
  // stays open to it.
  if (currentTab_ >= 1 && currentTab_ <= 4) {
    const auto span = tabstrip::TabSpan(currentTab_, wt, edges_);
    const struct {
      int rise;
      QColor colour;
    } lines[] = {{0, Qt::black}, {15, ShadeDark}, {30, ShadeMid}};
    for (const auto& line : lines) {
      const int y = Px(ht - tabstrip::StripHeight - line.rise);
      painter.setPen(line.colour);
      if (span.first > 0) painter.drawLine(0, y, Px(span.first) - 1, y);
      if (span.second < wt) painter.drawLine(Px(span.second) + 1, y, w, y);
    }
  }
}

void NewTabControl::PaintBottomTabs(QPainter& painter) {
  // The bottom of the tabs: the outline's lower edge, raised by two and by
  // three pixels, in the dark shades, and the bevelled left corner in white.
  const auto points = tabstrip::Outline(twips::FromPixels(width()),
                                        twips::FromPixels(height()), edges_);
  const int stripTop = Px(twips::FromPixels(height()) - tabstrip::StripHeight);
  painter.save();
  painter.setClipRect(QRect(0, stripTop + 1, width(), height()));
  const struct {
    int rise;
    QColor colour;
  } lines[] = {{2, ShadeDark}, {3, ShadeMid}};
  for (const auto& line : lines) {
    QPolygon lower;
    for (size_t i = 2; i <= 13; ++i)
      lower << QPoint(Px(points[i].x()), Px(points[i].y()) - line.rise);
    painter.setPen(line.colour);
    painter.drawPolyline(lower);
  }
  painter.setPen(Qt::white);
  painter.drawLine(1, Px(points[1].y()) - 1, Px(points[2].x()) - 1, height() - 2);
  painter.drawLine(2, Px(points[1].y()) - 2, Px(points[2].x()) - 1, height() - 3);
  painter.restore();
}

int NewTabControl::LabelIndexOf(const QObject* object) const {
  for (size_t i = 0; i < labels_.size(); ++i)
    if (labels_[i] == object) return static_cast<int>(i) + 1;
  return 0;
}

void NewTabControl::mousePressEvent(QMouseEvent* event) {
  if (!enabled_) return;
  const int x = twips::FromPixels(event->position().toPoint().x());
  const int y = twips::FromPixels(event->position().toPoint().y());
  const int tab = tabstrip::SurfaceTabAt(x, y, twips::FromPixels(height()), edges_);
  if (tab != 0 && tab != currentTab_) SetCurrentTab(static_cast<qint16>(tab));
  emit MouseDown(ButtonCode(event->button()), ShiftCode(event->modifiers()), x, y);
}

void NewTabControl::mouseDoubleClickEvent(QMouseEvent*) {
  // The second press of a double click is not a new press on the strip.
}

void NewTabControl::mouseMoveEvent(QMouseEvent* event) {
  const QPoint p = event->position().toPoint();
  emit MouseMove(ButtonCode(event->buttons()), ShiftCode(event->modifiers()),
                 twips::FromPixels(p.x()), twips::FromPixels(p.y()));
}

void NewTabControl::mouseReleaseEvent(QMouseEvent* event) {
  const QPoint p = event->position().toPoint();
  emit MouseUp(ButtonCode(event->button()), ShiftCode(event->modifiers()),
               twips::FromPixels(p.x()), twips::FromPixels(p.y()));
}

bool NewTabControl::eventFilter(QObject* watched, QEvent* event) {
  const int index = LabelIndexOf(watched);
  if (index == 0) return QWidget::eventFilter(watched, event);
  // A disabled control hears nothing from its labels either.
  if (!enabled_) return false;
  const auto type = event->type();
  if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove &&
      type != QEvent::MouseButtonRelease && type != QEvent::MouseButtonDblClick)
    return false;

  auto* mouse = static_cast<QMouseEvent*>(event);
  auto* label = labels_[static_cast<size_t>(index - 1)];
  const QPoint p = label->mapTo(this, mouse->position().toPoint());
  const int x = twips::FromPixels(p.x());
  const int y = twips::FromPixels(p.y());
  const int shift = ShiftCode(mouse->modifiers());
  switch (type) {
    case QEvent::MouseButtonPress:
      if (mouse->button() == Qt::LeftButton) pressedLabel_ = index;
      emit MouseDown(ButtonCode(mouse->button()), shift, x, y);
      break;
    case QEvent::MouseButtonDblClick:
      // The second press of a double click makes no second click.
      pressedLabel_ = 0;
      break;
    case QEvent::MouseMove:
      emit MouseMove(ButtonCode(mouse->buttons()), shift, x, y);
      break;
    default: {
      emit MouseUp(ButtonCode(mouse->button()), shift, x, y);
      // A click is a left press and release on the same label.
      const bool click = mouse->button() == Qt::LeftButton && pressedLabel_ == index &&
                         label->rect().contains(mouse->position().toPoint());
      if (mouse->button() == Qt::LeftButton) pressedLabel_ = 0;
      if (click) SetCurrentTab(static_cast<qint16>(index));
      break;
    }
  }
  return true;
}
