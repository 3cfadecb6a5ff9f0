#include "albums/AlbumSelect.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include "albums/AlbumEdit.h"
#include "albums/AlbumRules.h"
#include "catalogue/PathParts.h"
#include "controls/MsgBoxEnhanced.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/CommonKeys.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"
#include "viewers/SendMail.h"

using namespace albumrules;

namespace {

constexpr int ClientWidth = 5580;
constexpr int ClientHeight = 1140;
constexpr int ButtonWidth = 840;
constexpr int ButtonGap = 60;

void Place(QWidget* control, int left, int top, int width, int height) {
  control->setGeometry(twips::ToPixels(QRectF(left, top, width, height)));
}

}  // namespace

AlbumSelect::AlbumSelect(QWidget* parent) : QWidget(parent, Qt::Dialog) {
  setObjectName("AlbumSelect");
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(" Album Selection");
  setFixedSize(twips::ToPixels(ClientWidth), twips::ToPixels(ClientHeight));

  Label3 = new QLabel("Album name:", this);
  Label3->setObjectName("Label3");
  AlbumList = new QComboBox(this);
  AlbumList->setObjectName("AlbumList");
  Place(Label3, 120, 150, 1200, 285);
  Place(AlbumList, 1320, 120, ClientWidth - 1440, 315);

  const struct {
    QPushButton** button;
    const char* name;
    const char* caption;
  } buttons[] = {{&openButton, "openButton", "&Open"},       {&emailButton, "emailButton", "&E-Mail"},
                 {&addButton, "addButton", "&Add new"},      {&changeButton, "changeButton", "&Change"},
                 {&deleteButton, "deleteButton", "&Delete"}, {&cancelButton, "cancelButton", "Close"}};
  int left = 120;
  for (const auto& b : buttons) {
    *b.button = new QPushButton(b.caption, this);
    (*b.button)->setObjectName(b.name);
    Place(*b.button, left, 600, ButtonWidth, 375);
    left += ButtonWidth + ButtonGap;
  }
  // The five album buttons take the light grey; Close keeps its own look.
  for (QPushButton* button : {openButton, emailButton, addButton, changeButton, deleteButton}) {
    QPalette palette = button->palette();
    palette.setColor(QPalette::Button, App().ColorLightGrey);
    button->setPalette(palette);
  }
  openButton->setDefault(true);

  connect(openButton, &QPushButton::clicked, this, &AlbumSelect::openButton_Click);
  connect(emailButton, &QPushButton::clicked, this, &AlbumSelect::emailButton_Click);
  connect(addButton, &QPushButton::clicked, this, &AlbumSelect::addButton_Click);
  connect(changeButton, &QPushButton::clicked, this, &AlbumSelect::changeButton_Click);
  connect(deleteButton, &QPushButton::clicked, this, &AlbumSelect::deleteButton_Click);
  connect(cancelButton, &QPushButton::clicked, this, &AlbumSelect::cancelButton_Click);

  Windows().Loaded(this);
  Form_Load();
}

void AlbumSelect::Form_Load() {
  AppState& app = App();
  const qint32 stored = settings::GetSetting("AlbumSelected", "0").toInt();
  const QList<AlbumHeader> albums =
      app.DatabaseConnection ? SelectAlbumHeaders(*app.DatabaseConnection) : QList<AlbumHeader>();
  if (albums.isEmpty()) {
    // No album yet: the editor opens on a new one at once.
    QTimer::singleShot(0, this, &AlbumSelect::addButton_Click);
    return;
  }
  int selected = 0;
  for (const AlbumHeader& album : albums) {
    if (album.PlaylistName.isEmpty()) continue;
    if (album.PlaylistID == stored) selected = int(AlbumIds.size());
    AlbumList->addItem(album.PlaylistName);
    AlbumIds << album.PlaylistID;
  }
  AlbumList->setCurrentIndex(AlbumIds.isEmpty() ? -1 : selected);
}

qint32 AlbumSelect::SelectedId() const {
  const int index = AlbumList->currentIndex();
  return index >= 0 && index < AlbumIds.size() ? AlbumIds[index] : 0;
}

int AlbumSelect::Ask(const QString& prompt, int style, const QString& title) {
  MsgBoxEnhanced* box = App().MsgBox;
  if (!box) return 0;
  busy_ = true;
  const QPointer<AlbumSelect> self(this);
  const int answer = box->MsgBox(prompt, qint16(style), title);
  if (self) busy_ = false;
  return answer;
}

void AlbumSelect::openButton_Click() {
  const qint32 id = SelectedId();
  if (id == 0) return;
  AppState& app = App();
  const QString name = AlbumList->currentText();
  app.AlbumMode = true;
  app.SelectedAlbumId = id;
  settings::SaveSetting("AlbumSelected", QString::number(id));
  // In album mode the folder on display is the album's name.
  app.CurrentFolder = name;
  emit AlbumOpened(name);
  if (BarCommands* bar = CommandBarCommands()) bar->ShowOnDisplay(name, true);
  close();
  if (BarCommands* bar = CommandBarCommands()) bar->Click(BarButton::refreshButton);
}

void AlbumSelect::emailButton_Click() {
  AppState& app = App();
  const qint32 id = SelectedId();
  bool sent = false;
  busy_ = true;
  const QPointer<AlbumSelect> self(this);
  if (SignOnMail()) {
    MailMessage message;
    settings::SaveSetting("AlbumSelected", QString::number(id));
    const QStringList files =
        app.DatabaseConnection ? SelectPlaylistFiles(*app.DatabaseConnection, id) : QStringList();
    for (int i = 0; i < files.size(); ++i) {
      message.SetAttachment(i, GetBaseName(files[i]), files[i]);
      QCoreApplication::processEvents();
    }
    sent = message.Send();
  }
  if (!self) return;
  busy_ = false;
  if (!sent)
    if (MsgBoxEnhanced* box = app.MsgBox) {
      busy_ = true;
      box->MsgBox(MailFailed, 48, "Vistrel");
      if (self) busy_ = false;
    }
}

void AlbumSelect::ShowAlbumEdit() {
  close();
  QWidget* edit = Windows().Find(WindowId::AlbumEdit);
  if (!edit) edit = Windows().Load(WindowId::AlbumEdit);
  if (!edit) edit = new AlbumEdit;
  FrameOf(edit)->show();
  edit->show();
  FrameOf(edit)->raise();
  edit->activateWindow();
}

void AlbumSelect::addButton_Click() {
  App().SelectedAlbumId = 0;
  ShowAlbumEdit();
}

void AlbumSelect::changeButton_Click() {
  const qint32 id = SelectedId();
  if (id == 0) return;
  App().SelectedAlbumId = id;
  settings::SaveSetting("AlbumSelected", QString::number(id));
  ShowAlbumEdit();
}

void AlbumSelect::deleteButton_Click() {
  const qint32 id = SelectedId();
  if (id == 0) return;
  const QPointer<AlbumSelect> self(this);
  const int answer = Ask(DeleteAlbumPrompt, YesNoNoDefaultStyle, DeleteAlbumTitle);
  if (!self || answer != Yes) return;
  if (settings::GetSetting("AlbumSelected", "0").toInt() == id) settings::SaveSetting("AlbumSelected", "0");
  // Entries first, then the header; the media files are never touched.
  if (App().DatabaseConnection) DeleteAlbum(*App().DatabaseConnection, id);
  const int index = AlbumList->currentIndex();
  AlbumList->removeItem(index);
  AlbumIds.removeAt(index);
  AlbumList->setCurrentIndex(AlbumIds.isEmpty() ? -1 : 0);
  if (AlbumIds.isEmpty()) {
    for (QPushButton* button : {openButton, emailButton, changeButton, deleteButton}) button->setEnabled(false);
    addButton->setEnabled(true);
    addButton->setFocus();
  }
}

void AlbumSelect::cancelButton_Click() { close(); }

void AlbumSelect::Form_Activate() { App().CurrentForm = this; }

bool AlbumSelect::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::WindowActivate:
      Form_Activate();
      break;
    case QEvent::WindowDeactivate:
      // Clicking elsewhere closes the window; a question of its own does not.
      if (!busy_ && !closing_) QTimer::singleShot(0, this, [this] {
          if (!busy_ && !closing_ && !isActiveWindow()) close();
        });
      break;
    default:
      break;
  }
  return QWidget::event(event);
}

void AlbumSelect::keyPressEvent(QKeyEvent* event) {
  const int code = keys::KeyCode(event);
  if (code == keys::Insert) {
    addButton_Click();
    return;
  }
  if (code == keys::Delete) {
    if (deleteButton->isEnabled()) deleteButton_Click();
    return;
  }
  HandleCommonKey(this, code, keys::ShiftOf(event), true, false);
}

void AlbumSelect::closeEvent(QCloseEvent* event) {
  closing_ = true;
  if (App().CurrentForm == this) App().CurrentForm = nullptr;
  Windows().Closed(this);
  event->accept();
}
