#include "viewers/PictureFit.h"

#include <algorithm>
#include <cmath>

namespace {

int Whole(double twips) { return int(std::lround(twips)); }

}  // namespace

QSize FitPicture(QSize natural, const PictureRoom& room) {
  if (natural.width() <= 0 || natural.height() <= 0) return QSize(0, 0);
  const double naturalW = natural.width(), naturalH = natural.height();
  double w = naturalW, h = naturalH;
  const double roomW = room.MaximumWidth - room.Left - room.SideMargin;
  const double roomH = room.MaximumHeight - room.Top - room.TopMargin;
  bool clipped = false;
  if (room.Left + w + room.SideMargin > room.MaximumWidth) {
    w = roomW;
    clipped = true;
  }
  if (room.Top + h + room.TopMargin > room.MaximumHeight) {
    h = roomH;
    clipped = true;
  }
  if (clipped) {
    if (naturalW > naturalH)
      h = naturalH / naturalW * w;
    else
      w = naturalW / naturalH * h;
  }
  if (h > roomH) {
    h = roomH;
    w = naturalW / naturalH * h;
  }
  if (w > roomW) {
    w = roomW;
    h = naturalH / naturalW * w;
  }
  return QSize(std::max(Whole(w), 0), std::max(Whole(h), 0));
}

FullSize FullSizePicture(QSize shape, const PictureRoom& room) {
  if (shape.width() <= 0 || shape.height() <= 0) return {};
  const double r = double(shape.height()) / shape.width();
  const double roomW = room.MaximumWidth - room.SideMargin;
  const double roomH = room.MaximumHeight - room.TopMargin;
  double w, h;
  if (roomW > 0 && r < roomH / roomW) {
    w = roomW;
    h = r * w;
  } else {
    h = roomH;
    w = h / r;
  }
  double windowW = std::max(w + room.SideMargin, double(room.MinimumWidth));
  double windowH = h + room.TopMargin;
  if (windowW > room.MaximumWidth) {
    w = roomW;
    h = r * w;
    windowH = h + room.TopMargin;
  }
  if (windowH > room.MaximumHeight) {
    h = roomH;
    w = h / r;
    windowW = std::max(w + room.SideMargin, double(room.MinimumWidth));
    windowH = h + room.TopMargin;
  }
  return {QSize(Whole(w), Whole(h)), QSize(Whole(windowW), Whole(windowH))};
}

QSize FormSize(QSize picture, const PictureRoom& room) {
  return QSize(std::max(picture.width() + room.SideMargin, room.MinimumWidth),
               picture.height() + room.TopMargin);
}

QSize ResizedPicture(QSize shown, QSize window, int topMargin, int sideMargin) {
  if (shown.width() <= 0 || shown.height() <= 0) return shown;
  const double r = double(shown.height()) / shown.width();
  double h = window.height() - topMargin;
  double w = h / r;
  if (w + sideMargin > window.width()) {
    w = window.width() - sideMargin;
    h = w * r;
  }
  return QSize(std::max(Whole(w), 1), std::max(Whole(h), 1));
}
