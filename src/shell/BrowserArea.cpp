#include "shell/BrowserArea.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyle>
#include <QStyleOptionTitleBar>
#include <algorithm>

#include "browser/PageGeometry.h"
#include "core/AppState.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "platform/Twips.h"
#include "shell/WindowFit.h"

namespace {

constexpr Qt::WindowStates MinMax = Qt::WindowMinimized | Qt::WindowMaximized;

QMdiSubWindow* AddFixedSubWindow(QMdiArea* area, QWidget* content) {
  QMdiSubWindow* sub = area->addSubWindow(content, Qt::FramelessWindowHint | Qt::SubWindow);
  sub->setOption(QMdiSubWindow::RubberBandMove, false);
  sub->setAttribute(Qt::WA_DeleteOnClose);
  sub->show();
  return sub;
}

}  // namespace

BrowserArea::BrowserArea(QMdiArea* area, std::function<int()> outerWidthTwips)
    : area_(area), outerWidthTwips_(std::move(outerWidthTwips)) {}

void BrowserArea::AddBar(QWidget* bar) { barWindow_ = AddFixedSubWindow(area_, bar); }

void BrowserArea::AddBrowser(QWidget* browser) {
  browserWindow_ = AddFixedSubWindow(area_, browser);
}

void BrowserArea::AddViewer(QWidget* window) {
  const QSize inside = window->size();
  QMdiSubWindow* sub = area_->addSubWindow(window, Qt::SubWindow | Qt::WindowTitleHint |
                                                       Qt::WindowSystemMenuHint |
                                                       Qt::WindowMinMaxButtonsHint |
                                                       Qt::WindowCloseButtonHint);
  sub->setAttribute(Qt::WA_DeleteOnClose);
  sub->setWindowTitle(window->windowTitle());
  sub->setWindowIcon(window->windowIcon());
  // The frame takes the size the window was made with, at the browser's
  // top left corner; the window may place itself afterwards.
  QStyleOptionTitleBar options;
  options.initFrom(sub);
  options.titleBarFlags = sub->windowFlags();
  const int title = sub->style()->pixelMetric(QStyle::PM_TitleBarHeight, &options, sub);
  const int border = sub->style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, sub);
  const QSize outer(inside.width() + 2 * border, inside.height() + title + border);
  SetRectInBrowser(sub, QRect(0, 0, twips::FromPixels(outer.width()), twips::FromPixels(outer.height())));
}

void BrowserArea::Forget() {
  barWindow_ = nullptr;
  browserWindow_ = nullptr;
}

int BrowserArea::ExpectedBrowserWidth() const {
  return twips::ToPixels(outerWidthTwips_() - pagegeometry::BrowserWidthMargin);
}

void BrowserArea::PlaceBrowser() {
  const AppState& app = App();
  const int barHeight = twips::ToPixels(pagegeometry::CommandBarStrip);
  const int width = std::max(area_->width(), twips::ToPixels(app.MainClientWidth));
  if (barWindow_) barWindow_->setGeometry(0, 0, width, barHeight);
  if (browserWindow_) {
    const int browserHeight = twips::ToPixels(app.MainClientHeight - pagegeometry::CommandBarStrip);
    browserWindow_->setGeometry(0, barHeight, std::max(ExpectedBrowserWidth(), 1),
                                std::max(browserHeight, 1));
  }
}

int BrowserArea::BrowserWidthTwips() const {
  if (const QWidget* browser = Windows().Find(WindowId::Thumbnails))
    return twips::FromPixels(browser->width());
  return outerWidthTwips_() - pagegeometry::BrowserWidthMargin;
}

QPoint BrowserArea::BrowserOrigin() const {
  // Below the command bar when there is no browser.
  if (const QWidget* browser = Windows().Find(WindowId::Thumbnails))
    return browser->mapToGlobal(QPoint(0, 0));
  return area_->viewport()->mapToGlobal(QPoint(0, twips::ToPixels(pagegeometry::CommandBarStrip)));
}

QRect BrowserArea::RectInBrowser(QWidget* frame) const {
  QRect r = frame->isWindow()
                ? frame->frameGeometry()
                : QRect(frame->parentWidget()->mapToGlobal(frame->pos()), frame->size());
  r.translate(-BrowserOrigin());
  return QRect(twips::FromPixels(r.x()), twips::FromPixels(r.y()), twips::FromPixels(r.width()),
               twips::FromPixels(r.height()));
}

void BrowserArea::SetRectInBrowser(QWidget* frame, const QRect& twipsRect) {
  const QPoint global =
      BrowserOrigin() + QPoint(twips::ToPixels(twipsRect.x()), twips::ToPixels(twipsRect.y()));
  const QSize size(std::max(twips::ToPixels(twipsRect.width()), 1),
                   std::max(twips::ToPixels(twipsRect.height()), 1));
  if (frame->isWindow()) {
    const QSize frameExtra = frame->frameGeometry().size() - frame->size();
    frame->move(global);
    frame->resize((size - frameExtra).expandedTo(QSize(1, 1)));
  } else {
    frame->setGeometry(QRect(frame->parentWidget()->mapFromGlobal(global), size));
  }
}

void BrowserArea::CentreOnBrowser(QWidget* frame) {
  if (frame->windowState() & MinMax) frame->setWindowState(frame->windowState() & ~MinMax);
  const QRect r = RectInBrowser(frame);
  const QWidget* browser = Windows().Find(WindowId::Thumbnails);
  const int browserHeight = browser ? twips::FromPixels(browser->height())
                                    : App().MainClientHeight - pagegeometry::CommandBarStrip;
  SetRectInBrowser(frame, QRect((BrowserWidthTwips() - r.width()) / 2,
                                (browserHeight - r.height()) / 2, r.width(), r.height()));
}

void BrowserArea::PlaceViewerWindow(QWidget* window) {
  QWidget* frame = FrameOf(window);
  if (!frame) return;
  if (frame->windowState() & MinMax) frame->setWindowState(frame->windowState() & ~MinMax);
  const QRect present = RectInBrowser(frame);
  const QRect placed = PlacedViewerRect(present, BrowserWidthTwips(), App().MainClientHeight);
  if (placed != present) SetRectInBrowser(frame, placed);
}

void BrowserArea::SizeForms(QWidget* window) {
  QWidget* frame = FrameOf(window);
  if (!frame) return;
  const QRect present = RectInBrowser(frame);
  const QRect sized = SizedFormRect(present, BrowserWidthTwips(), App().MainClientHeight);
  if (sized != present) SetRectInBrowser(frame, sized);
}

void BrowserArea::Activate(QWidget* frame) {
  if (auto* sub = qobject_cast<QMdiSubWindow*>(frame)) area_->setActiveSubWindow(sub);
}
