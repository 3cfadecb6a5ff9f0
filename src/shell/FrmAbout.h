#pragma once
// The about box: title, version, what the program does, and a button that
// starts the desktop's system information tool. Esc, OK and losing the
// focus close it.

#include <QDialog>

#include "core/WindowRoles.h"

class QLabel;
class QPushButton;

class frmAbout : public QDialog {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::frmAbout;
  explicit frmAbout(QWidget* parent = nullptr);

  QLabel* lblTitle = nullptr;
  QLabel* lblVersion = nullptr;
  QLabel* lblDescription = nullptr;
  QPushButton* cmdOK = nullptr;
  QPushButton* cmdSysInfo = nullptr;

  // Starts the system information tool, or says that there is none.
  void StartSysInfo();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
};

// The program that shows information about the system, found on the PATH;
// empty when the desktop has none.
QString SystemInformationProgram();
