#include "shell/FrmAbout.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStandardPaths>
#include <QTimer>
#include <QVBoxLayout>

#include "controls/MsgBoxEnhanced.h"
#include "controls/PaintRoutines.h"
#include "platform/SiblingPrograms.h"
#include "platform/SystemMessage.h"
#include "core/AppState.h"

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
  setObjectName("frmAbout");
  setWindowTitle(" About Vistrel");
  setAttribute(Qt::WA_DeleteOnClose);
  setFixedSize(460, 270);

  lblTitle = new QLabel("Vistrel", this);
  QFont titleFont = lblTitle->font();
  titleFont.setPointSize(18);
  titleFont.setBold(true);
  lblTitle->setFont(titleFont);
  lblVersion = new QLabel(
      QString("Version %1.%2").arg(VISTREL_VERSION_MAJOR).arg(VISTREL_VERSION_MINOR), this);
  lblDescription = new QLabel(
      "The Vistrel program is designed to provide a wide variety of functions related to media "
      "files (i.e., pictures, videos, audios, DVDs).  These functions include individual viewing "
      "and playing, slideshow presentations and playlists.  In addition, media files can be "
      "accessed in easy-to-use formats, such as thumbnails.",
      this);
  lblDescription->setWordWrap(true);
  for (QLabel* label : {lblTitle, lblVersion, lblDescription})
    label->setAttribute(Qt::WA_TranslucentBackground);

  cmdOK = new QPushButton("OK", this);
  cmdOK->setDefault(true);
  cmdSysInfo = new QPushButton("&System Info...", this);
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::close);
  connect(cmdSysInfo, &QPushButton::clicked, this, &frmAbout::StartSysInfo);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(cmdOK);
  buttons->addWidget(cmdSysInfo);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(lblTitle);
  layout->addWidget(lblVersion);
  layout->addSpacing(8);
  layout->addWidget(lblDescription, 1);
  layout->addLayout(buttons);
}

QString SystemInformationProgram() {
  for (const char* name : {"hardinfo", "gnome-system-monitor", "plasma-systemmonitor",
                           "xfce4-taskmanager", "lxtask"}) {
    const QString path = QStandardPaths::findExecutable(name);
    if (!path.isEmpty()) return path;
  }
  return QString();
}

void frmAbout::StartSysInfo() {
  const QString program = SystemInformationProgram();
  if (!program.isEmpty() && platform::StartProgram(program, {})) return;
  const QString text = "System Information Is Unavailable At This Time";
  if (App().MsgBox) {
    App().MsgBox->MsgBox(text, 48);
  } else {
    platform::ShowSystemMessage(text, "Vistrel", platform::MessageIcon::Information);
  }
}

void frmAbout::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintFormGradient(painter, size(), 255, 255, 255, 1);
}

void frmAbout::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
    return;
  }
  QDialog::keyPressEvent(event);
}

void frmAbout::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  // A passing dialog: it goes when the user turns to another window.
  if (event->type() == QEvent::ActivationChange && !isActiveWindow() && isVisible()) {
    QTimer::singleShot(0, this, [this] {
      if (!isActiveWindow() && QApplication::activeModalWidget() == nullptr) close();
    });
  }
}
