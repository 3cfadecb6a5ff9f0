#pragma once
// The album selection, " Album Selection": the window behind the command
// bar's album button. It lists the albums by name and offers to open one in
// the browser, to send its files by e-mail, to add a new album, to change
// one in the album editor, and to delete one. Construct it and show it; the
// caller places it above the album button. With no album at all it goes
// straight on to the album editor. It closes itself when it loses the focus.

#include <QList>
#include <QWidget>

#include "core/WindowRoles.h"

class QComboBox;
class QLabel;
class QPushButton;

class AlbumSelect : public QWidget {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::AlbumSelect;

  explicit AlbumSelect(QWidget* parent = nullptr);

  QComboBox* AlbumList;
  QLabel* Label3;
  QPushButton* openButton;
  QPushButton* emailButton;
  QPushButton* addButton;
  QPushButton* changeButton;
  QPushButton* deleteButton;
  QPushButton* cancelButton;
  // The PlaylistID of each entry of AlbumList, in list order.
  QList<qint32> AlbumIds;

 public slots:
  void openButton_Click();
  void emailButton_Click();
  void addButton_Click();
  void changeButton_Click();
  void deleteButton_Click();
  void cancelButton_Click();

 signals:
  // An album was put on display: App().AlbumMode is on and
  // App().CurrentFolder holds its name. The command bar shows "Album:" and
  // the name; the browser lists it through the bar's refresh.
  void AlbumOpened(const QString& name);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void Form_Load();
  void Form_Activate();
  // The id of the selected entry, 0 when none.
  qint32 SelectedId() const;
  // Unloads this window and shows the album editor on App().SelectedAlbumId.
  void ShowAlbumEdit();
  int Ask(const QString& prompt, int style, const QString& title);

  // A question or the mail program is up: losing the focus to it does not
  // close the window.
  bool busy_ = false;
  bool closing_ = false;
};
