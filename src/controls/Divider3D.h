#pragma once
// Divider3D: an etched horizontal rule. It stretches over the width it is
// given; placed on a form without a layout, it keeps the same margin on
// both sides as its parent is resized.

#include <QWidget>

class Divider3D : public QWidget {
  Q_OBJECT
 public:
  explicit Divider3D(QWidget* parent = nullptr);
  QSize sizeHint() const override { return QSize(100, 2); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void FitToParent();
  QWidget* watched_ = nullptr;
};
