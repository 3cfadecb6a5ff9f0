#pragma once
// A picture holder that stretches its picture over the whole of itself,
// smoothly, keeping the stretched copy until its size or picture changes,
// so that repaints cost nothing.

#include <QImage>
#include <QPixmap>
#include <QWidget>

class PictureHolder : public QWidget {
  Q_OBJECT
 public:
  explicit PictureHolder(QWidget* parent = nullptr);
  void SetPicture(const QImage& picture);
  const QImage& Picture() const { return picture_; }
  void Clear();

 signals:
  void Pressed(QMouseEvent* event);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  QImage picture_;
  QPixmap stretched_;
};
