#include "viewers/ViewerFrame.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionTitleBar>
#include <QSvgRenderer>
#include <QWidget>

#include "core/AppState.h"
#include "core/ViewerHost.h"
#include "core/WindowFrame.h"
#include "platform/Twips.h"

QRect ViewerFrameTwips(const QWidget* viewer) {
  auto* self = const_cast<QWidget*>(viewer);
  QWidget* frame = FrameOf(self);
  QRect outer;
  if (ViewerHost* host = TheViewerHost(); host && frame != self) {
    outer = host->ViewerRect(self);
  } else {
    const QRect r = viewer->frameGeometry();
    outer = QRect(twips::FromPixels(r.x()), twips::FromPixels(r.y()), twips::FromPixels(r.width()),
                  twips::FromPixels(r.height()));
  }
  outer.setHeight(twips::FromPixels(viewer->height()) + App().TitleBarHeight);
  return outer;
}

void SetViewerFrameTwips(QWidget* viewer, const QRect& t) {
  QWidget* frame = FrameOf(viewer);
  int extraHeight = viewer->frameGeometry().height() - viewer->height();
  if (frame != viewer) {
    if (frame->isVisible()) {
      extraHeight = frame->height() - viewer->height();
    } else {
      // Before the frame is up its inside is not laid out: its title bar
      // and lower edge are reckoned from its style.
      QStyleOptionTitleBar options;
      options.initFrom(frame);
      options.titleBarFlags = frame->windowFlags();
      extraHeight = frame->style()->pixelMetric(QStyle::PM_TitleBarHeight, &options, frame) +
                    frame->style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, frame);
    }
  }
  const int outerHeight = t.height() - App().TitleBarHeight + twips::FromPixels(extraHeight);
  if (ViewerHost* host = TheViewerHost(); host && frame != viewer) {
    host->SetViewerRect(viewer, QRect(t.topLeft(), QSize(t.width(), outerHeight)));
    return;
  }
  const QSize extra = viewer->frameGeometry().size() - viewer->size();
  viewer->move(twips::ToPixels(t.x()), twips::ToPixels(t.y()));
  viewer->resize((QSize(twips::ToPixels(t.width()), twips::ToPixels(outerHeight)) - extra).expandedTo(QSize(1, 1)));
}


bool IsViewerMaximised(const QWidget* viewer) {
  return FrameOf(const_cast<QWidget*>(viewer))->windowState() & Qt::WindowMaximized;
}

bool IsViewerMinimised(const QWidget* viewer) {
  return FrameOf(const_cast<QWidget*>(viewer))->windowState() & Qt::WindowMinimized;
}

void CloseViewerFrame(QWidget* viewer) {
  QWidget* frame = FrameOf(viewer);
  if (frame != viewer) frame->close();
  viewer->close();
}

QPixmap ViewerButtonPicture(const QString& name, qreal ratio) {
  const int side = 20;
  QPixmap pixmap(QSize(side, side) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QSvgRenderer picture(":/viewer/" + name + ".svg");
  if (picture.isValid()) {
    QPainter painter(&pixmap);
    picture.render(&painter, QRectF(0, 0, side, side));
  }
  return pixmap;
}

QRect TwipsRect(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), std::max(twips::ToPixels(width), 1),
               std::max(twips::ToPixels(height), 1));
}
