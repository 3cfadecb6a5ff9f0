// What the picture viewer's buttons do: the walk through the list, the
// file operations on the picture shown, and the caption kept for it.

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QLineEdit>

#include "catalogue/MediaPicture.h"
#include "catalogue/PathParts.h"
#include "controls/Button.h"
#include "controls/MsgBoxEnhanced.h"
#include "core/AppState.h"
#include "core/BrowserCommands.h"
#include "core/Statements.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "core/WindowShow.h"
#include "fileops/FileOperations.h"
#include "platform/SiblingPrograms.h"
#include "platform/Twips.h"
#include "viewers/PictureHolder.h"
#include "viewers/PictureWalk.h"
#include "viewers/SendMail.h"
#include "viewers/SingleImage.h"
#include "viewers/ViewerFiles.h"

namespace {

void Say(const QString& text) {
  if (MsgBoxEnhanced* box = App().MsgBox) box->MsgBox(text, 48, "Vistrel");
}

}  // namespace

// ---- The walk --------------------------------------------------------------------

void SingleImage::SetWalkButtons() {
  if (!Pending.isEmpty()) return;
  const WalkButtons on = WalkButtonsAt(PictureIndex, App().Count(PicturesTab));
  firstButton->SetEnabled(on.First);
  previousButton->SetEnabled(on.Previous);
  nextButton->SetEnabled(on.Next);
  lastButton->SetEnabled(on.Last);
}

void SingleImage::StepTo(const WalkStep& step) {
  Direction = step.Direction;
  if (step.Close) {
    CloseViewer();
    return;
  }
  PictureIndex = step.Index;
  SetWalkButtons();
  LoadImage();
}

void SingleImage::PreviousPicture() {
  const AppState& app = App();
  StepTo(StepBackward(app.PictureFiles(), app.Count(PicturesTab), PictureIndex));
}

void SingleImage::NextPicture() {
  const AppState& app = App();
  StepTo(StepForward(app.PictureFiles(), app.Count(PicturesTab), PictureIndex));
}

void SingleImage::FocusAfterStep(Button* pressed, Button* opposite) {
  if (pressed->isEnabled())
    pressed->setFocus();
  else if (opposite->isEnabled())
    opposite->setFocus();
}

void SingleImage::firstButton_Click() {
  SaveCaption();
  firstButton->SetEnabled(false);
  previousButton->SetEnabled(false);
  const bool more = App().Count(PicturesTab) >= 2;
  nextButton->SetEnabled(more);
  lastButton->SetEnabled(more);
  PictureIndex = 0;
  Direction = '-';
  LoadImage();
  if (!closing_) FocusAfterStep(firstButton, lastButton);
}

void SingleImage::previousButton_Click() {
  SaveCaption();
  PreviousPicture();
  if (!closing_) FocusAfterStep(previousButton, nextButton);
}

void SingleImage::nextButton_Click() {
  SaveCaption();
  NextPicture();
  if (!closing_) FocusAfterStep(nextButton, previousButton);
}

void SingleImage::lastButton_Click() {
  SaveCaption();
  const qint32 count = App().Count(PicturesTab);
  lastButton->SetEnabled(false);
  nextButton->SetEnabled(false);
  firstButton->SetEnabled(count >= 2);
  previousButton->SetEnabled(count >= 2);
  PictureIndex = std::max(count - 1, 0);
  Direction = '+';
  LoadImage();
  if (!closing_) FocusAfterStep(lastButton, firstButton);
}

// ---- Copy, move, delete ------------------------------------------------------------

void SingleImage::CopyOrMove(const QString& word) {
  const AppState& app = App();
  if (CopyThroughChooser(CurrentFile, word, Pending.isEmpty() ? app.LastTargetFolder : app.SearchResultFolder))
    RemoveCurrentPicture(true);
}

void SingleImage::copyButton_Click() { CopyOrMove("Copy"); }

void SingleImage::moveButton_Click() { CopyOrMove("Move"); }

void SingleImage::deleteButton_Click() {
  AppState& app = App();
  app.MessageStyle = 36;
  app.MessageAnswer = qint16(VerifyDelete());
  ResumeMouseWheel();
  if (app.MessageAnswer != 6) return;
  RemoveCurrentPicture(false);
  if (!closing_ && PictureCount > 0 && deleteButton->isEnabled()) deleteButton->setFocus();
}

void SingleImage::RemoveCurrentPicture(bool moved) {
  AppState& app = App();
  const QString file = CurrentFile;
  if (moved) {
    if (!QFile::remove(file)) return;
    if (Database* db = app.DatabaseConnection) FollowRenamedFile(*db, file, app.TargetFile);
    // The caption went with the file: it is not written back under the old name.
    captionFile_.clear();
  } else {
    if (!DeleteMediaFile(file)) return;
  }
  if (app.ReplaceAnswer == 7) return;
  if (!Pending.isEmpty()) {
    CloseViewer();
    return;
  }
  if (BrowserCommands* browser = TheBrowserCommands()) browser->MarkItemDeleted(PicturesTab, PictureIndex);
  QStringList& files = app.PictureFiles();
  if (PictureIndex >= 0 && PictureIndex < files.size()) files[PictureIndex] = QString();
  --PictureCount;
  ahead_.Forget();
  if (PictureCount <= 0) {
    previousButton->SetEnabled(false);
    nextButton->SetEnabled(false);
    CloseViewer();
    return;
  }
  const qint32 last = app.Count(PicturesTab) - 1;
  if (PictureCount == 1) {
    if (Direction == '-')
      PreviousPicture();
    else
      NextPicture();
  } else if (PictureIndex < last) {
    if (Direction == '-')
      PreviousPicture();
    else
      NextPicture();
  } else {
    PictureIndex = PictureIndex - 1;
    Direction = '-';
    SetWalkButtons();
    LoadImage();
  }
}

// ---- Rename and properties ---------------------------------------------------------

void SingleImage::renameButton_Click() {
  AppState& app = App();
  app.PendingFile = Pending;
  if (Pending.isEmpty()) app.CurrentPicture() = PictureIndex;
  app.SourceFile = app.Entry(PicturesTab, PictureIndex);
  ShowRenameOver(PicturesTab, this, DescriptionLabel, DescriptionWidth, !Pending.isEmpty());
}

void SingleImage::FileRenamed(const QString& newPath) {
  SaveCaption();
  const QString oldName = GetBaseName(CurrentFile);
  CurrentFile = newPath;
  if (!Pending.isEmpty()) Pending = newPath;
  captionFile_ = newPath;
  App().CurrentMediaFile = newPath;
  // The name behind the first ":" of the description.
  const int colon = description_.lastIndexOf("Name: ");
  if (colon >= 0)
    description_ = description_.left(colon + 6) + GetBaseName(newPath);
  else if (description_.startsWith(" File: "))
    description_ = " File: " + newPath;
  ShowDescription();
  if (App().ShowPopupData) Picture1->setToolTip(Picture1->toolTip().replace(oldName, GetBaseName(newPath)));
}

void SingleImage::propertiesButton_Click() { ShowPropertiesBelow(this, propertiesButton, CurrentFile); }

// ---- Clipboard, print, e-mail, target, paint, slideshow ---------------------------

void SingleImage::clipboardButton_Click() {
  if (!PictureValid) {
    Say("An invalid picture cannot be copied to the clipboard");
    return;
  }
  // The whole picture, decoded now: the window only holds it at the size shown.
  QImage picture;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const bool decoded = LoadMediaPicture(CurrentFile, picture);
  QApplication::restoreOverrideCursor();
  QClipboard* clipboard = QGuiApplication::clipboard();
  clipboard->clear();
  if (decoded) clipboard->setImage(picture);
}

void SingleImage::printButton_Click() {
  if (!PictureValid) {
    Say("An invalid picture cannot be selected for printing");
    return;
  }
  App().CurrentMediaFile = CurrentFile;
  ShowWindowModal(WindowId::PrinterSetup);
}

void SingleImage::emailButton_Click() {
  App().EmailFile = CurrentFile;
  SendFileByEmail();
}

void SingleImage::shootButton_Click() {
  if (Pending.isEmpty()) App().CurrentPicture() = PictureIndex;
  ShowWindow(WindowId::Target);
}

void SingleImage::paintButton_Click() { platform::StartPaintProgram(App().ProgramFolder, CurrentFile); }

void SingleImage::slideshowButton_Click() {
  SaveCaption();
  App().CurrentPicture() = PictureIndex;
  ShowWindowModal(WindowId::SlideshowController);
}

// ---- Captions -------------------------------------------------------------------------

void SingleImage::LoadCaption() {
  Database* db = App().DatabaseConnection;
  CaptionText->setText(db ? SelectFileCaption(*db, CaptionKey(CurrentFile)) : QString());
  captionFile_ = CurrentFile;
  LayOutCaption();
}

void SingleImage::SaveCaption() {
  if (!ShowCaptions || captionFile_.isEmpty()) return;
  if (Database* db = App().DatabaseConnection) SaveFileCaption(*db, CaptionKey(captionFile_), CaptionText->text());
}
