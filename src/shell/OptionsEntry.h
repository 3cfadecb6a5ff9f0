#pragma once
// The options window: which file types the viewer takes over, what the
// program shows, the default folder, the alarm's defaults and the CD title
// service. Five pages, each with ">>" and "<<" buttons to the next and the
// previous one.
//
// Opened by constructing it and showing it: the constructor fills the
// controls from the settings and the launcher links on disk, registers the
// window and, inside the main window, makes it a sub-window centred on the
// browser. Without a main window it is a window of its own (tests).
//
// saveButton enabled means changed; until the options were saved once
// ("Defined" is "No") it stays enabled, so that a first save is always
// possible. Closing with changes asks whether to save them; Cancel keeps
// the window open and sets CloseRefused.

#include <QList>
#include <QString>
#include <QWidget>

#include "core/WindowRoles.h"

class BalloonHelp;
class NumberBox;
class QCheckBox;
class QCloseEvent;
class QGroupBox;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;
class UpDown;

class OptionsEntry : public QWidget {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::OptionsEntry;

  explicit OptionsEntry(QWidget* parent = nullptr);

  // The boxes of the control arrays: picSelection 1 to 10, VidSelection 0
  // to 4, AudSelection 1 to 6, GenSelection 1 to 7; nullptr outside.
  QCheckBox* picSelection(int index) const;
  QCheckBox* VidSelection(int index) const;
  QCheckBox* AudSelection(int index) const;
  QCheckBox* GenSelection(int index) const;

  // The default folder in full, as the save will store it (the label shows
  // it shortened).
  QString DefaultFolderPath() const { return folder_; }
  BalloonHelp* Balloons() const { return balloons_; }

  QTabWidget* TabControl;
  QPushButton *Tab0F = nullptr, *Tab1B = nullptr, *Tab1F = nullptr, *Tab2B = nullptr,
              *Tab2F = nullptr, *Tab3B = nullptr, *Tab3F = nullptr, *Tab4B = nullptr;
  QCheckBox *AllPictures = nullptr, *AllVideos = nullptr, *AllAudios = nullptr;
  QCheckBox *QuickLaunch = nullptr, *DefaultBrowser = nullptr;
  NumberBox *SnoozeMinutes = nullptr, *AlarmVolume = nullptr;
  UpDown *UpDown1 = nullptr, *UpDown2 = nullptr;
  QLabel* DefaultFolder = nullptr;
  QPushButton* DirectoryButton = nullptr;
  QGroupBox *Frame1 = nullptr, *Frame2 = nullptr;
  QLineEdit* Address1 = nullptr;
  NumberBox* Port1 = nullptr;
  QPushButton* resetButton = nullptr;
  QLineEdit* Address2 = nullptr;
  NumberBox* Port2 = nullptr;
  QLineEdit *UserName = nullptr, *Password = nullptr;
  QLabel *Label8 = nullptr, *Label9 = nullptr, *Label10 = nullptr, *Label11 = nullptr;
  QPushButton* saveButton;
  QPushButton* exitButton;

  // True while the window fills its own controls: their changes do nothing.
  bool Populating = false;

  // Puts the window in the middle of the browser again.
  void PlaceWindow();

 public slots:
  void saveButton_Click();
  void exitButton_Click();
  void resetButton_Click();
  void DirectoryButton_Click();

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

  // The pages and their controls (OptionsEntryPages.cpp).
  void MakeControls();
  QWidget* MakePage(int page);
  void MakeFileTypesPages();
  void MakeGeneralPage();
  void MakeCdTitlesPage();
  void MakePageButtons();
  void PlacePageButtons(QWidget* page);
  void ConnectControls();
  void LoadHelp();

  void Form_Load();
  bool Form_KeyDown(int keyCode, int shift);
  // Any change: saveButton enabled, exitButton "Cancel".
  void MarkChanged();
  void All_Click(Group& group);
  void AllVideos_Click();
  void Box_Click(Group& group, QCheckBox* box);
  // A group's box counts while it is enabled (DVD movies is not without a
  // DVD player).
  static bool AllTicked(const Group& group);
  // The frames of the CD page follow their boxes.
  void FollowCddbBoxes();
  void ShowFolder(const QString& folder);
  // Checks the entries, tells the user what is missing, and when they are
  // complete writes everything; whether it wrote.
  bool SaveOptions();
  void WriteSettings();
  void WriteLinks();
  // Makes the viewer the handler of web pages and addresses.
  static void MakeDefaultWebBrowser();
  // Closes the window through the program's window list.
  void Unload();

  QList<QCheckBox*> pictures_, videos_, audios_, general_;
  Group pictureGroup_, videoGroup_, audioGroup_;
  QString folder_;
  BalloonHelp* balloons_;
  bool asking_ = false;
  bool closing_ = false;
};

// Lets the program load the options window through the window registry.
void RegisterOptionsWindow();
