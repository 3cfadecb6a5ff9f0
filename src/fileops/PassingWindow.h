#pragma once
// A small window that passes: it goes when it loses the focus (clicking
// elsewhere cancels), unless it is asking the user something; it is
// forgotten by the window registry once closed; and it paints the light
// part of the program's white gradient. The rename and properties windows
// are such windows.

#include <QWidget>

#include "core/WindowRoles.h"

class PassingWindow : public QWidget {
  Q_OBJECT
 public:
  PassingWindow(WindowId id, QWidget* parent, Qt::WindowFlags flags);

  // Unloads the window through the registry (or closes it when it is not
  // the registered one).
  void Unload();

 protected:
  // Whether the window has closed; a closed window does nothing more.
  bool Closed() const { return closed_; }
  // While set, losing the focus (to a message box) keeps the window.
  void SetAskingUser(bool asking) { askingUser_ = asking; }

  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  WindowId id_;
  bool activated_ = false;
  bool askingUser_ = false;
  bool closed_ = false;
};
