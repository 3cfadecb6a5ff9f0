#pragma once
// What the two verification windows (DeleteVerify, ReplaceVerify) share:
// a modal dialog centred on the main window on the program's white
// gradient, answering in ReplaceAnswer, with the same keys: Esc answers 2
// and unloads, Shift+Esc also ends the program, and the other keys go to
// the keys all windows share (F2 and F9 unload it first).

#include <QDialog>
#include <QString>

#include "core/WindowRoles.h"

class QLabel;
class QPushButton;

class VerifyWindow : public QDialog {
  Q_OBJECT
 public:
  VerifyWindow(WindowId id, const QString& title, QWidget* parent);
  // Sets ReplaceAnswer and unloads the window.
  void Answer(qint16 answer);

 protected:
  // Puts the window in the middle of the main window, or of the screen.
  void CentreOnMainWindow();
  // A label of plain text at a place given in twips.
  QLabel* AddLabel(const QString& name, const QString& text, int left, int top, int width,
                   int height, Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter);
  // An answer button in the given colour.
  QPushButton* AddButton(const QString& name, const QString& text, const QColor& colour);

  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  WindowId id_;
};

// Shows the window modal and returns once it has gone; it is unloaded
// then, whichever way it closed.
void ShowVerifyWindowModal(VerifyWindow* window);
