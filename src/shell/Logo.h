#pragma once
// The splash window shown while the program starts: three pictures, the
// version and maker's lines and a message line that tells the stage of the
// start. Borderless, with a rounded outline.

#include <QWidget>

#include "core/WindowRoles.h"

class QLabel;

class Logo : public QWidget {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::Logo;
  explicit Logo(QWidget* parent = nullptr);
  ~Logo() override;

  // The splash that is up, or null.
  static Logo* Instance();

  void SetMessage(const QString& text);
  QString Message() const;
  QString LabelText(int index) const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QLabel* Label[4] = {};
  QLabel* MessageLabel = nullptr;
};
