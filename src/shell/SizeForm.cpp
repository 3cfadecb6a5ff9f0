#include "shell/SizeForm.h"

#include "platform/Twips.h"

SizeForm::SizeForm(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName("SizeForm");
  resize(200, 150);
  // Shown off screen once, so that the window system gives it its frame.
  setAttribute(Qt::WA_DontShowOnScreen);
}

int MeasureBorderWidth(const QWidget* window) {
  const int outer = twips::FromPixels(window->frameGeometry().width());
  const int inner = twips::FromPixels(window->geometry().width());
  return (outer - inner) / 2;
}

int MeasureTitleBarHeight(const QWidget* window) {
  const int outer = twips::FromPixels(window->frameGeometry().height());
  const int inner = twips::FromPixels(window->geometry().height());
  return outer - inner - MeasureBorderWidth(window);
}
