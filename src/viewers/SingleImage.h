#pragma once
// The picture viewer, " Picture Viewer": one picture at its natural size,
// or smaller when it would not fit, with the walk through the pictures of
// the browser's list, a caption per picture kept in the data file, and the
// file operations on the picture shown. It also shows a single file given
// by name (PendingFile), and carries the running slideshow, which hides its
// buttons.

#include <QImage>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <array>

#include "core/WindowRoles.h"
#include "core/WindowShow.h"
#include "viewers/PictureFit.h"
#include "viewers/ViewerDecode.h"

class AniGif;
class BalloonHelp;
class Button;
class PictureHolder;
class QLabel;
class QLineEdit;

class SingleImage : public QWidget, public MediaViewer, public RenamedFileViewer, public PictureRefit {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::SingleImage;
  explicit SingleImage(QWidget* parent = nullptr);
  ~SingleImage() override;

  // Shows the entry at PictureIndex (or the pending file).
  void LoadImage();
  void SetFormSize();
  void SetFullSize();
  // The walk; each saves the caption first, as the buttons do.
  void PreviousPicture();
  void NextPicture();
  // Fits the picture to the largest size the window now allows (the main
  // window's refit asks for it).
  void RefitPicture() override;
  // MediaViewer: the browser's current picture, shown anew.
  void LoadCurrentItem() override;
  // The slideshow takes the window over: no buttons, the picture higher up.
  void PrepareForSlideshow();

  // True once the window has begun to close (also while loading, when it
  // found nothing to show).
  bool Closing() const { return closing_; }

  // Fields of the window.
  int TopMargin = 0;
  int MaximumHeight = 0;
  int MaximumWidth = 0;
  int PictureHeight = 0, PictureWidth = 0;
  qint32 PictureIndex = 0;
  bool ShowCaptions = false;
  bool SizingWindow = false;
  bool Animated = false;
  QString TargetFile;
  QChar Direction = '+';
  QString Extension;
  int MinimumHeight = 1260;
  int MinimumWidth = 5610;
  int SideMargin = 120;
  qint32 PictureCount = 0;
  int DescriptionWidth = 0;
  bool CaptionFocused = false;
  bool SkipResize = false;
  bool PictureValid = false;
  bool HelpTipsShown = false, DataTipsShown = false;
  QString CurrentFile;
  // The single file shown, when the window was opened for one.
  QString Pending;

  // Controls.
  PictureHolder* Picture1;
  // An animated network graphic plays here.
  QLabel* Picture2;
  AniGif* Picture3;
  QLabel* DescriptionLabel;
  QLabel* CaptionLabel;
  QLineEdit* CaptionText;
  QTimer ResizeTimer;
  Button* firstButton;
  Button* previousButton;
  Button* nextButton;
  Button* lastButton;
  Button* slideshowButton;
  Button* renameButton;
  Button* copyButton;
  Button* moveButton;
  Button* deleteButton;
  Button* clipboardButton;
  Button* printButton;
  Button* emailButton;
  Button* shootButton;
  Button* paintButton;
  Button* propertiesButton;

  // The buttons' routines.
  void firstButton_Click();
  void previousButton_Click();
  void nextButton_Click();
  void lastButton_Click();
  void slideshowButton_Click();
  void renameButton_Click();
  void copyButton_Click();
  void moveButton_Click();
  void deleteButton_Click();
  void clipboardButton_Click();
  void printButton_Click();
  void emailButton_Click();
  void shootButton_Click();
  void paintButton_Click();
  void propertiesButton_Click();

  // Captions, kept under the file's bare name without apostrophes.
  void LoadCaption();
  void SaveCaption();
  // A file renamed by the rename window while shown: the path, the title's
  // name and the caption follow.
  void FileRenamed(const QString& newPath) override;

  // Handles a key of the window's table; false when it is not one of them.
  bool Form_KeyDown(int keyCode, int shift);

  // The natural size of the picture shown, in pixels; its copy and print
  // decode it whole when asked.
  QSize NaturalSize() const { return natural_; }
  // The room the window leaves a picture, from its present place.
  PictureRoom Room() const;

 signals:
  // The window has closed (a slideshow waits for it).
  void Closed();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void MakeControls();
  void Form_Load();
  void Form_Activate();
  void FrameStateChanged(Qt::WindowStates was, Qt::WindowStates now);
  void LoadTips();
  void LayOut();
  void LayOutCaption();
  void ShowDescription();
  void ResizeTimer_Timer();
  void ResizePicture();
  void PlacePictures();
  void SetWalkButtons();
  void FocusAfterStep(Button* pressed, Button* opposite);
  bool EntryPasses() const;
  QString EntryPath(qint32 index) const;
  QSize ShownBoxFor(QSize natural) const;
  QString RoomKey() const;
  void DecodeAhead();
  void RedecodeIfShort();
  // The slideshow shows its pictures at full size.
  bool FullSizeShow() const;
  void CopyOrMove(const QString& word);
  void RemoveCurrentPicture(bool moved);
  void StepTo(const struct WalkStep& step);
  void CloseViewer();
  QRect FrameTwips() const;
  void SetFrameTwips(const QRect& twipsRect);
  bool IsMaximised() const;
  bool IsMinimised() const;

  QList<Button*> buttons_;
  BalloonHelp* balloons_;
  QString description_;
  // The file whose caption the caption box holds.
  QString captionFile_;
  QImage shown_;
  QSize natural_;
  PictureAhead ahead_;
  int failedChecks_ = 0;
  bool loading_ = false;
  bool slideshowLayout_ = false;
  bool closing_ = false;
};
