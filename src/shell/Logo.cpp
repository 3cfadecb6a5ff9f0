#include "shell/Logo.h"

#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QRegion>
#include <QVBoxLayout>

namespace {
Logo*& Current() {
  static Logo* logo = nullptr;
  return logo;
}
}  // namespace

Logo::Logo(QWidget* parent) : QWidget(parent, Qt::FramelessWindowHint | Qt::SplashScreen) {
  setObjectName("Logo");
  setFixedSize(480, 300);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(24, 28, 24, 22);
  for (int i = 0; i < 4; ++i) {
    Label[i] = new QLabel(this);
    Label[i]->setAlignment(Qt::AlignCenter);
  }
  Label[0]->setText("Vistrel");
  QFont title = Label[0]->font();
  title.setPointSize(30);
  title.setBold(true);
  Label[0]->setFont(title);
  Label[0]->setStyleSheet("color: #1c3f6e;");
  Label[1]->setText("Pictures  \u2022  Videos  \u2022  Audios  \u2022  Documents");
  Label[2]->setText(QString("Version %1.%2").arg(VISTREL_VERSION_MAJOR).arg(VISTREL_VERSION_MINOR));
  Label[3]->setText("Copyright \u00a9 The Vistrel developers. All rights reserved.");
  Label[3]->setStyleSheet("color: #404040; font-size: 9pt;");
  MessageLabel = new QLabel("PLEASE WAIT... Setting up display data", this);
  MessageLabel->setAlignment(Qt::AlignCenter);
  MessageLabel->setStyleSheet("color: #8b0000; font-weight: bold;");
  for (QLabel* label : Label) layout->addWidget(label);
  layout->addStretch(1);
  layout->addWidget(MessageLabel);
  Current() = this;
}

Logo::~Logo() {
  if (Current() == this) Current() = nullptr;
}

Logo* Logo::Instance() { return Current(); }

void Logo::SetMessage(const QString& text) {
  MessageLabel->setText(text);
  MessageLabel->repaint();
}

QString Logo::Message() const { return MessageLabel->text(); }

QString Logo::LabelText(int index) const {
  return index >= 0 && index < 4 ? Label[index]->text() : QString();
}

void Logo::resizeEvent(QResizeEvent* event) {
  // The outline is a rounded rectangle from (1,1) to the window's size with
  // corner ellipses of 40 by 40 pixels.
  QPainterPath outline;
  outline.addRoundedRect(QRectF(1, 1, width() - 1, height() - 1), 20, 20);
  setMask(QRegion(outline.toFillPolygon().toPolygon()));
  QWidget::resizeEvent(event);
}

void Logo::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient back(0, 0, 0, height());
  back.setColorAt(0, QColor(255, 255, 255));
  back.setColorAt(1, QColor(196, 214, 236));
  painter.fillRect(rect(), back);
  // Three pictures: a stack of frames standing for pictures, film and sound.
  const QColor colours[3] = {QColor(70, 130, 180), QColor(218, 165, 32), QColor(60, 150, 90)};
  for (int i = 0; i < 3; ++i) {
    const QRect frame(width() / 2 - 105 + i * 75, 150, 60, 45);
    painter.setPen(QPen(QColor(40, 40, 40), 2));
    painter.setBrush(colours[i]);
    painter.drawRoundedRect(frame, 6, 6);
  }
  painter.setPen(QPen(QColor(28, 63, 110), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(1, 1, width() - 2, height() - 2), 20, 20);
}
