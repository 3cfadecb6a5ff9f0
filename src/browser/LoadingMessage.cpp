#include "browser/LoadingMessage.h"

#include <QPainter>

#include "controls/PaintRoutines.h"
#include "platform/Twips.h"

LoadingMessage::LoadingMessage(QWidget* parent) : QWidget(parent) {
  setObjectName("LoadingMessage");
  setAttribute(Qt::WA_TransparentForMouseEvents);
  resize(twips::ToPixels(3300), twips::ToPixels(600));
}

void LoadingMessage::Centre() {
  if (const QWidget* parent = parentWidget())
    move((parent->width() - width()) / 2, (parent->height() - height()) / 2);
}

void LoadingMessage::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintFormGradient(painter, size(), 255, 255, 255, 1);
  painter.setPen(QColor(120, 120, 120));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  painter.setPen(Qt::black);
  painter.drawText(rect(), Qt::AlignCenter, "Loading Thumbnails");
}
