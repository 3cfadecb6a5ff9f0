#include "controls/Divider3D.h"

#include <QEvent>
#include <QLayout>
#include <QPainter>

#include "controls/SystemColours.h"

Divider3D::Divider3D(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setFixedHeight(2);
  if (parent) {
    watched_ = parent;
    parent->installEventFilter(this);
  }
}

void Divider3D::FitToParent() {
  QWidget* parent = parentWidget();
  if (!parent || parent->layout()) return;
  resize(std::max(parent->width() - 2 * x(), 0), height());
}

bool Divider3D::event(QEvent* event) {
  if (event->type() == QEvent::ParentChange) {
    if (watched_) watched_->removeEventFilter(this);
    watched_ = parentWidget();
    if (watched_) watched_->installEventFilter(this);
    FitToParent();
  }
  return QWidget::event(event);
}

void Divider3D::showEvent(QShowEvent*) { FitToParent(); }

bool Divider3D::eventFilter(QObject* watched, QEvent* event) {
  if (watched == watched_ && event->type() == QEvent::Resize) FitToParent();
  return QWidget::eventFilter(watched, event);
}

void Divider3D::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(ColorFromOle(SysColor::ButtonShadow));
  painter.drawLine(0, 0, width() - 1, 0);
  painter.setPen(ColorFromOle(SysColor::ButtonHighlight));
  painter.drawLine(0, 1, width() - 1, 1);
}
