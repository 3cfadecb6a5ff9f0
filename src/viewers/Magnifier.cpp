#include "viewers/Magnifier.h"

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSizeGrip>
#include <QTimer>
#include <QtMath>
#include <algorithm>

#include "controls/BalloonHelp.h"
#include "core/AppState.h"
#include "core/CommonKeys.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"
#include "platform/WindowMove.h"

namespace {

constexpr int RefreshInterval = 50;
// The view is drawn at least this often, so that it keeps up with moving
// content while the pointer rests.
constexpr int RedrawAfterMs = 250;
constexpr int MinimumFactor = 1;
constexpr int MaximumFactor = 10;
constexpr int DefaultFactor = 2;

// Measures of the bar along the bottom, in twips.
constexpr int BarHeight = 420;
constexpr int BarGap = 60;
constexpr int ZoomTop = 75;
constexpr int ZoomHeight = 255;
constexpr int LabelWidth = 480;
constexpr int CloseWidth = 735;
constexpr int CloseTop = 60;
constexpr int CloseHeight = 300;
constexpr int GripWidth = 195;

// Below the work area's bottom edge by default, by this much.
constexpr int DefaultBottomGap = 75;

QRect PixelsOf(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(std::max(width, 0)),
               twips::ToPixels(std::max(height, 0)));
}

QString FactorText(int factor) { return QString::number(factor) + " X"; }

}  // namespace

ZoomRect ZoomSource(QPoint pointer, int viewWidth, int viewHeight, int factor) {
  factor = std::max(factor, 1);
  // The pointer stands in the middle of the view: half the view, in screen
  // pixels, lies to its left and above it.
  const int left = pointer.x() - viewWidth / 2 / factor;
  const int top = pointer.y() - viewHeight / 2 / factor;
  // A view that the factor does not divide takes one screen pixel more,
  // stretched to a whole number of view pixels, and cut at the view's edge.
  int sourceWidth = viewWidth / factor;
  int sourceHeight = viewHeight / factor;
  if (sourceWidth * factor < viewWidth) ++sourceWidth;
  if (sourceHeight * factor < viewHeight) ++sourceHeight;
  return ZoomRect{QRect(left, top, sourceWidth, sourceHeight),
                  QSize(sourceWidth * factor, sourceHeight * factor)};
}

Magnifier::Magnifier(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      picViewer(new QLabel(this)),
      picBar(new QWidget(this)),
      hscZoom(new QScrollBar(Qt::Horizontal, picBar)),
      lblZoom(new QLabel(picBar)),
      cmdClose(new QPushButton("Close", picBar)),
      SizeGrip(new QSizeGrip(picBar)),
      tmrRefresh(new QTimer(this)),
      balloons_(new BalloonHelp(this)) {
  setObjectName(WindowName(Id));
  setAttribute(Qt::WA_DeleteOnClose);
  setMinimumSize(twips::ToPixels(MinimumWidth), twips::ToPixels(MinimumHeight));

  picViewer->setObjectName("picViewer");
  picViewer->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  picViewer->setAutoFillBackground(true);
  QPalette black = picViewer->palette();
  black.setColor(QPalette::Window, Qt::black);
  picViewer->setPalette(black);
  picViewer->setCursor(Qt::SizeAllCursor);
  picViewer->installEventFilter(this);
  picBar->setObjectName("picBar");
  hscZoom->setObjectName("hscZoom");
  hscZoom->setRange(MinimumFactor, MaximumFactor);
  hscZoom->setSingleStep(1);
  hscZoom->setPageStep(1);
  lblZoom->setObjectName("lblZoom");
  lblZoom->setAlignment(Qt::AlignCenter);
  cmdClose->setObjectName("cmdClose");
  SizeGrip->setObjectName("SizeGrip");
  tmrRefresh->setObjectName("tmrRefresh");

  connect(hscZoom, &QScrollBar::valueChanged, this, &Magnifier::hscZoom_Change);
  connect(cmdClose, &QPushButton::clicked, this, &Magnifier::cmdClose_Click);
  connect(tmrRefresh, &QTimer::timeout, this, &Magnifier::tmrRefresh_Timer);

  ReadSettings();
  LayoutControls();
  ApplyHelp();

  tmrRefresh->setInterval(RefreshInterval);
  tmrRefresh->start();
  Windows().Loaded(this);
}

void Magnifier::ReadSettings() {
  // Sizes below the smallest are set back to it.
  const int width = std::max(settings::GetInt("MagnifierWidth", MinimumWidth), MinimumWidth);
  const int height = std::max(settings::GetInt("MagnifierHeight", MinimumHeight), MinimumHeight);
  // The first time: in the middle of the screen's width, just above the
  // bottom of the work area.
  QRect screen(0, 0, 1024, 768), work = screen;
  if (const QScreen* primary = QGuiApplication::primaryScreen()) {
    screen = primary->geometry();
    work = primary->availableGeometry();
  }
  const int left = settings::GetInt("MagnifierLeft", (twips::FromPixels(screen.width()) - width) / 2);
  const int top = settings::GetInt(
      "MagnifierTop",
      twips::FromPixels(work.height()) + twips::FromPixels(work.top()) - height - DefaultBottomGap);
  setGeometry(PixelsOf(left, top, width, height));

  const int factor =
      std::clamp(settings::GetInt("MagnifierValue", DefaultFactor), MinimumFactor, MaximumFactor);
  hscZoom->setValue(factor);
  hscZoom_Change(factor);
}

void Magnifier::SaveSettings() const {
  const QRect outer = frameGeometry();
  settings::SaveSetting("MagnifierLeft", QString::number(twips::FromPixels(outer.left())));
  settings::SaveSetting("MagnifierTop", QString::number(twips::FromPixels(outer.top())));
  settings::SaveSetting("MagnifierWidth", QString::number(twips::FromPixels(width())));
  settings::SaveSetting("MagnifierHeight", QString::number(twips::FromPixels(height())));
  settings::SaveSetting("MagnifierValue", QString::number(hscZoom->value()));
}

void Magnifier::LayoutControls() {
  const int width = twips::FromPixels(this->width());
  const int height = twips::FromPixels(this->height());
  const int barTop = height - BarHeight;
  picViewer->setGeometry(PixelsOf(0, 0, width, barTop));
  picBar->setGeometry(PixelsOf(0, barTop, width, BarHeight));
  // Along the bar from the right: the grip, the close button, the factor,
  // and the slider in the rest.
  const int closeLeft = width - GripWidth - BarGap - CloseWidth;
  const int labelLeft = closeLeft - BarGap - LabelWidth;
  SizeGrip->setGeometry(PixelsOf(width - GripWidth, BarHeight - GripWidth, GripWidth, GripWidth));
  cmdClose->setGeometry(PixelsOf(closeLeft, CloseTop, CloseWidth, CloseHeight));
  lblZoom->setGeometry(PixelsOf(labelLeft, CloseTop, LabelWidth, CloseHeight));
  hscZoom->setGeometry(PixelsOf(BarGap, ZoomTop, labelLeft - 2 * BarGap, ZoomHeight));
}

void Magnifier::ApplyHelp() {
  if (!App().ShowPopupHelp) return;
  balloons_->SetBalloon(
      hscZoom, "Use this slider control to change\r\nthe amount of magnification used",
      "Magnification Level");
  balloons_->SetBalloon(cmdClose, "Click here to close the magnifier", "Close");
}

void Magnifier::tmrRefresh_Timer() {
  ElapsedMs += tmrRefresh->interval();
  const QPoint pointer = QCursor::pos();
  const int factor = hscZoom->value();
  if (ElapsedMs >= RedrawAfterMs || pointer != lastPointer_ || factor != lastFactor_) {
    ShowZoom(pointer);
    ElapsedMs = 0;
  }
  lastPointer_ = pointer;
  lastFactor_ = factor;
}

void Magnifier::ShowZoom(QPoint pointer) {
  const QSize view = picViewer->size();
  if (view.isEmpty()) return;
  const int factor = hscZoom->value();
  const ZoomRect zoom = ZoomSource(pointer, view.width(), view.height(), factor);

  const qreal ratio = picViewer->devicePixelRatioF();
  QPixmap shown(qCeil(view.width() * ratio), qCeil(view.height() * ratio));
  shown.setDevicePixelRatio(ratio);
  // What lies beyond the desktop has nothing to show.
  shown.fill(Qt::black);
  QPainter painter(&shown);
  // Plain copying: each screen pixel becomes a block of view pixels.
  painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
  for (QScreen* screen : QGuiApplication::screens()) {
    const QRect area = screen->geometry();
    const QRect part = zoom.Source & area;
    if (part.isEmpty()) continue;
    const QPixmap copy = screen->grabWindow(0, part.left() - area.left(), part.top() - area.top(),
                                            part.width(), part.height());
    if (copy.isNull()) continue;
    const QRect target((part.left() - zoom.Source.left()) * factor,
                       (part.top() - zoom.Source.top()) * factor, part.width() * factor,
                       part.height() * factor);
    painter.drawPixmap(target, copy, copy.rect());
  }
  painter.end();
  picViewer->setPixmap(shown);
}

void Magnifier::hscZoom_Change(int value) { lblZoom->setText(FactorText(value)); }

void Magnifier::cmdClose_Click() {
  if (Windows().Find(Id) == this)
    Windows().Unload(Id);
  else
    close();
}

bool Magnifier::eventFilter(QObject* watched, QEvent* event) {
  if (watched == picViewer && event->type() == QEvent::MouseButtonPress) {
    auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() == Qt::LeftButton) {
      platform::MoveWindowWithMouse(this, mouse->globalPosition().toPoint());
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void Magnifier::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  LayoutControls();
}

void Magnifier::keyPressEvent(QKeyEvent* event) {
  HandleCommonKey(this, keys::KeyCode(event), keys::ShiftOf(event), false, false);
}

void Magnifier::closeEvent(QCloseEvent* event) {
  tmrRefresh->stop();
  SaveSettings();
  balloons_->Clear();
  Windows().Closed(this);
  QWidget::closeEvent(event);
}
