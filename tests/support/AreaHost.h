#pragma once
// A main window for tests that holds its windows as sub-windows of its
// area, as the program's main window does.

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QWidget>

#include "core/ViewerHost.h"

namespace testenv {

class AreaHost : public QWidget, public ViewerHost {
 public:
  AreaHost() : area(new QMdiArea(this)) {
    resize(800, 600);
    area->resize(800, 600);
  }
  void AddViewer(QWidget* window) override {
    QMdiSubWindow* sub = area->addSubWindow(window);
    sub->setAttribute(Qt::WA_DeleteOnClose);
  }
  QRect ViewerRect(QWidget*) override { return QRect(); }
  void SetViewerRect(QWidget*, const QRect&) override {}
  int BrowserWidthTwips() const override { return 12000; }
  int BrowserHeightTwips() const override { return 7000; }
  QRect MainOuterTwips() const override { return QRect(0, 0, 12000, 9000); }
  QMdiArea* area;
};

}  // namespace testenv
