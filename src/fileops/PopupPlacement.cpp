#include "fileops/PopupPlacement.h"

#include <QWidget>

#include "core/WindowRegistry.h"
#include "platform/Twips.h"

QPoint ClientTwipsToScreen(int leftTwips, int topTwips) {
  QPoint origin(0, 0);
  if (QWidget* main = Windows().Find(WindowId::MainForm); main && main->isVisible())
    origin = main->mapToGlobal(QPoint(0, 0));
  return origin + QPoint(twips::ToPixels(leftTwips), twips::ToPixels(topTwips));
}

void MoveToClientTwips(QWidget* window, int leftTwips, int topTwips) {
  if (window) window->move(ClientTwipsToScreen(leftTwips, topTwips));
}
