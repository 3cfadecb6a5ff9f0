#include "viewers/ViewerDecode.h"

#include <QFileInfo>
#include <QImageReader>
#include <QtConcurrent/QtConcurrentRun>

#include "catalogue/MediaPicture.h"

ViewerPicture DecodeForViewer(const QString& path, const ShownBox& boxFor) {
  ViewerPicture result;
  result.Path = path;
  QSize natural = MediaPictureSize(path);
  QImage picture;
  if (natural.isValid()) {
    QSize box = boxFor ? boxFor(natural) : natural;
    // Never decoded larger than the picture is.
    box = box.boundedTo(natural).expandedTo(QSize(1, 1));
    result.Valid = LoadMediaPicture(path, picture, box);
  } else {
    // The header did not tell: the whole picture, reduced afterwards.
    result.Valid = LoadMediaPicture(path, picture);
    natural = picture.size();
    if (result.Valid && boxFor) {
      const QSize box = boxFor(natural).expandedTo(QSize(1, 1));
      if (picture.width() > box.width() || picture.height() > box.height())
        picture = picture.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
  }
  if (!result.Valid) natural = picture.size();
  result.Picture = picture;
  result.Natural = natural;
  if (result.Valid) {
    QImageReader reader(path);
    const QByteArray format = reader.format();
    if (format == "gif" || format == "mng") result.Frames = std::max(reader.imageCount(), 1);
  }
  return result;
}

PictureAhead::~PictureAhead() {
  // The worker holds nothing of the window: it may end after it.
  Forget();
}

void PictureAhead::Start(const QString& path, const QString& room, ShownBox boxFor) {
  if (path == path_ && room == room_ && future_.isValid()) return;
  path_ = path;
  room_ = room;
  const QFileInfo file(path);
  modified_ = file.lastModified();
  size_ = file.exists() ? file.size() : -1;
  future_ = QtConcurrent::run([path, boxFor = std::move(boxFor)] { return DecodeForViewer(path, boxFor); });
}

std::optional<ViewerPicture> PictureAhead::Take(const QString& path, const QString& room) {
  if (!future_.isValid() || path != path_ || room != room_) return std::nullopt;
  const QFileInfo file(path);
  if (!file.exists() || file.size() != size_ || file.lastModified() != modified_) {
    Forget();
    return std::nullopt;
  }
  ViewerPicture picture = future_.result();
  Forget();
  return picture;
}

void PictureAhead::Forget() {
  path_.clear();
  room_.clear();
  future_ = QFuture<ViewerPicture>();
}
