#pragma once
// Pictures decoded for the picture viewer: at the size they are shown (a
// big photograph fitted into the window decodes at reduced size), with
// their natural size, which the window's arithmetic needs. The next picture
// of the walk can be decoded ahead on a worker, so that it shows at once.

#include <QDateTime>
#include <QFuture>
#include <QImage>
#include <QSize>
#include <QString>
#include <functional>
#include <optional>

struct ViewerPicture {
  QString Path;
  // The picture at the size it is shown, in device pixels; the invalid
  // marker when the file could not be decoded.
  QImage Picture;
  // The size of the whole picture in pixels (of the marker when invalid).
  QSize Natural;
  bool Valid = false;
  // Frames of the file (an animated picture has more than one).
  int Frames = 1;
};

// The box in device pixels that a picture of the given natural size is
// shown in. Called on a worker: it must not touch a window.
using ShownBox = std::function<QSize(QSize natural)>;

// Decodes the file for the viewer. Never shows a message; a file that can
// not be decoded gives the invalid marker at its own size.
ViewerPicture DecodeForViewer(const QString& path, const ShownBox& boxFor);

// The picture that the walk reaches next, decoded on a worker while the
// user looks at the one shown. `room` tells two requests for the same file
// apart when the window's room has changed meanwhile.
class PictureAhead {
 public:
  PictureAhead() = default;
  ~PictureAhead();
  PictureAhead(const PictureAhead&) = delete;
  PictureAhead& operator=(const PictureAhead&) = delete;

  void Start(const QString& path, const QString& room, ShownBox boxFor);
  // The picture decoded ahead for this file and room, waiting for it when
  // it is still being decoded; nothing when another was decoded ahead.
  std::optional<ViewerPicture> Take(const QString& path, const QString& room);
  // Forgets the picture; a decode that runs is left to finish on its own.
  void Forget();

 private:
  QString path_, room_;
  // The file as it was when its decode began: a file changed or removed
  // since is decoded again.
  QDateTime modified_;
  qint64 size_ = -1;
  QFuture<ViewerPicture> future_;
};
