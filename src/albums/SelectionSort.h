#pragma once
// The window " File Selection and Sort": which file types the browser lists
// on its Pictures, Videos and Audios tabs, and in which order it sorts
// them. It edits the settings SelectPictures, SelectVideos, SelectAudios,
// SortOrder and SortDescending; the browser reads them when it next lists,
// and a save outside an album makes it list again at once.
//
// Opened by constructing it and showing it: the constructor fills the
// boxes from the program's present masks and sort order, registers the
// window and, inside the main window, makes it a sub-window placed in the
// middle of the main window's area. Without a main window it is a window of
// its own (tests).
//
// saveButton enabled means changed. Closing with changes asks whether to
// save them; Cancel keeps the window open and sets CloseRefused.

#include <QList>
#include <QWidget>

#include "core/WindowRoles.h"

class QCheckBox;
class QCloseEvent;
class QGroupBox;
class QKeyEvent;
class QPushButton;
class QRadioButton;
class QTabWidget;

class SelectionSort : public QWidget {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::SelectionSort;

  explicit SelectionSort(QWidget* parent = nullptr);

  // The box or option of a control array, counted from 1; nullptr outside.
  QCheckBox* SelectPic(int index) const;
  QCheckBox* SelectVid(int index) const;
  QCheckBox* SelectAud(int index) const;
  QRadioButton* SortOrder(int index) const;

  // Puts the window in the middle of the main window's area again.
  void PlaceWindow();

  QTabWidget* TabControl;
  QGroupBox* Frame1;
  QGroupBox* Frame2;
  QCheckBox* AllTypes;
  QCheckBox* AllPictures;
  QCheckBox* AllVideos;
  QCheckBox* AllAudios;
  QCheckBox* SortDescending;
  QPushButton* saveButton;
  QPushButton* exitButton;

  // True while the window fills its own controls: their clicks do nothing.
  bool Populating = false;

 public slots:
  void saveButton_Click();
  void exitButton_Click();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // A group of boxes under its "All ..." box.
  struct Group {
    QCheckBox* All = nullptr;
    QList<QCheckBox*> Boxes;
  };

  void MakeControls();
  void Form_Load();
  // The keys of the window; false for the keys it leaves to the shared ones.
  bool Form_KeyDown(int keyCode, int shift);
  // saveButton enabled and default, exitButton "Cancel".
  void MarkChanged();
  void AllTypes_Click();
  void All_Click(Group& group);
  void Box_Click(Group& group, QCheckBox* box);
  // AllTypes ticked when all three groups are.
  void FollowAllTypes();
  // Checks the choices, tells the user what is missing, and when they are
  // complete writes the settings; whether it wrote them.
  bool SaveSelection();
  // Closes the window through the program's window list.
  void Unload();
  // Lets the browser list again under the new settings, outside an album.
  static void RefreshListing();

  QList<QCheckBox*> pictures_, videos_, audios_;
  QList<QRadioButton*> sortOrders_;
  Group pictureGroup_, videoGroup_, audioGroup_;
  bool asking_ = false;
  bool closing_ = false;
};
