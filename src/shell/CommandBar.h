#pragma once
// The strip of buttons docked at the top of the main window: it starts
// every function of the program, shows the folder or album on display, and
// holds the master volume. It loads with the browser and stays to the end.
// The keyboard of the whole browser passes through it.
//
// Two rows, laid out in twips: the folder or album with its two buttons and
// the volume strip on top, the function buttons in groups below. The
// buttons, where they stand and what they run come from the command table
// (CommandTable.h); their routines are in CommandBarButtons.cpp.

#include <QString>
#include <QTimer>
#include <QWidget>

#include "core/BarCommands.h"

#include "core/WindowRoles.h"

class BalloonHelp;
class Thumbnails;
class Button;
class NewSlider;
class QLabel;
class QPushButton;
class VolumeStrip;

class CommandBar : public QWidget, public BarCommands {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::CommandBar;
  explicit CommandBar(QWidget* parent = nullptr);
  ~CommandBar() override;

 private:
  // Made first: muteButton, Slider1, Volume, Picture1, Picture2 and Timer1
  // below are its controls.
  VolumeStrip* volume_;

 public:
  // ---- Controls ------------------------------------------------------------
  QLabel* DirectoryLabel = nullptr;  // "Folder:" or "Album:"
  // The folder or album on display, followed by a blank and shortened to
  // the label's width.
  QLabel* DirectoryName = nullptr;
  // Each button is made from its row of the command table.
  Button* DirectoryButton = nullptr;
  Button* refreshButton = nullptr;
  Button* ejectButton = nullptr;
  Button* closeButton = nullptr;
  Button* cdButton = nullptr;
  Button* audioButton = nullptr;
  Button* videoButton = nullptr;
  Button* albumButton = nullptr;
  Button* dvdButton = nullptr;
  Button* searchButton = nullptr;
  Button* sortButton = nullptr;
  Button* sleepButton = nullptr;
  Button* alarmButton = nullptr;
  Button* paintButton = nullptr;
  Button* magnifierButton = nullptr;
  Button* optionsButton = nullptr;
  Button* multimediaButton = nullptr;
  Button* mixerButton = nullptr;
  Button* aboutButton = nullptr;
  Button* HelpButton = nullptr;
  Button* internetButton = nullptr;  // hidden and disabled: the function is not there
  // The volume strip's controls.
  Button* muteButton = nullptr;
  NewSlider* Slider1 = nullptr;  // master volume, 0 to 100
  QLabel* Volume = nullptr;      // the volume as "40% "
  // The two pictures of muteButton: sound on, sound off. Never shown.
  QLabel* Picture1 = nullptr;
  QLabel* Picture2 = nullptr;
  // Keeps the volume display true to the system, every 500 ms, reading the
  // mixer away from the user-interface thread.
  QTimer& Timer1;
  NewSlider* Slider2 = nullptr;  // not used; kept hidden
  // A place for the focus that the user does not see.
  QPushButton* focusButton = nullptr;

  // ---- Loading and closing -------------------------------------------------
  // Opens the mixer, shows the volume and runs Timer1's routine once. The
  // bar runs it itself when it is made.
  void Form_Load();
  // Stops Timer1 and closes the mixer.
  void Form_QueryUnload();

  // ---- The folder or album on display --------------------------------------
  void ShowDirectoryName(const QString& folderOrAlbum);
  // The caption as it stands, without the blank: the folder the listing
  // reads file dates and lengths from.
  QString DirectoryCaption() const override;
  // "Album:" for an album, "Folder:" for a folder.
  void SetDirectoryLabel(bool album);
  void ShowOnDisplay(const QString& folderOrAlbum, bool album) override {
    SetDirectoryLabel(album);
    ShowDirectoryName(folderOrAlbum);
  }
  // Shows what the browser announces it shows, and follows its help switch.
  void Follow(Thumbnails* browser);
  // Shows the controls once the browser has its lists.
  void ShowControls();

  // ---- Buttons -------------------------------------------------------------
  void DirectoryButton_Click();
  void HelpButton_Click();
  void aboutButton_Click();
  void refreshButton_Click();
  void ejectButton_Click();
  void closeButton_Click();
  void cdButton_Click();
  void audioButton_Click();
  void videoButton_Click();
  void albumButton_Click();
  void dvdButton_Click();
  void searchButton_Click();
  void sortButton_Click();
  void sleepButton_Click();
  void alarmButton_Click();
  void paintButton_Click();
  void magnifierButton_Click();
  void optionsButton_Click();
  void multimediaButton_Click();
  void mixerButton_Click();
  void muteButton_Click();
  // The button's control; every button has one.
  Button* ButtonOf(BarButton button) const;

  // ---- What the keys of every window reach ----------------------------------
  // Both run the click of the button's row in the command table; a button
  // without a click runs nothing.
  bool ClickIfEnabled(BarButton button) override;
  void Click(BarButton button) override;
  void StepVolume(int direction) override;
  void ToggleMute() override;

  // ---- Volume --------------------------------------------------------------
  // From the slider: releases the focus, shows the value and sets the
  // master, compact disc and wave out volumes to it, with Timer1 stopped
  // meanwhile.
  void ChangeVolume(int percent);
  // Asks for the system's mute state and volume, which show once read.
  void Timer1_Timer();
  // The text of the Volume label for a percent: "40% ".
  static QString VolumeText(int percent);

  // ---- Keys and focus ------------------------------------------------------
  // The bar's own keys; the rest go to HandleCommonKey.
  void Form_KeyDown(int keyCode, int shift);
  // Puts the focus on focusButton, brings the open viewers and dialogs
  // forward, and the highlight back onto the browser's current cell.
  void ReleaseFocus();

  // ---- Help popups ---------------------------------------------------------
  // Gives each control of the bar its help popup when ShowPopupHelp is on,
  // and takes them all away when it is off.
  void ApplyHelp();
  BalloonHelp& Balloons() const { return *balloons_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeButtons();
  // The name and description a screen reader gives the control `name`.
  static void NameForReader(QWidget* control, const QString& name);
  void PlaceControls();
  void FitDirectoryName();
  // The checks before starting the player for audio; false after telling
  // the user that the machine cannot play sound.
  bool AudioReady();
  void StartViewer(const QString& commandWord);
  void GoHome();

  QString fullName_;
  BalloonHelp* balloons_ = nullptr;
  bool unloaded_ = false;
};
