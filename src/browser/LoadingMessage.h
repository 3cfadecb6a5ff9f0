#pragma once
// The small window that says the pictures of a page are being decoded: the
// program's white gradient with one line of text, centred on the browser.

#include <QWidget>

class LoadingMessage : public QWidget {
 public:
  explicit LoadingMessage(QWidget* parent);
  // Stands in the middle of its parent.
  void Centre();

 protected:
  void paintEvent(QPaintEvent* event) override;
};
