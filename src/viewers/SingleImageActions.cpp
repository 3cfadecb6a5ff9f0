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
#include "fileops/ChangeProperties.h"
#include "fileops/ChooseDirectory.h"
#include "fileops/FileOperations.h"
#include "fileops/RenameFile.h"
#include "platform/SiblingPrograms.h"
#include "platform/Twips.h"
#include "viewers/PictureHolder.h"
#include "viewers/PictureWalk.h"
#include "viewers/SendMail.h"
#include "viewers/SingleImage.h"

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
  AppState& app = App();
  app.SourceFile = CurrentFile;
  app.OperationFileName = GetBaseName(CurrentFile);
  app.ChosenFolder = Pending.isEmpty() ? app.LastTargetFolder : app.SearchResultFolder;
  const bool move = word == "Move";
  for (;;) {
    ChooseDirectoryWait(app.ChosenFolder, word);
    ResumeMouseWheel();
    if (app.DirectoryCancelled) return;
    app.LastTargetFolder = app.ChosenFolder;
    app.TargetFile = JoinPath(app.ChosenFolder, app.OperationFileName);
    if (app.TargetFile == app.SourceFile) {
      if (move) return;
    } else {
      CopyMediaFile(app.SourceFile, app.TargetFile);
    }
    if (app.ReplaceAnswer != 7) break;
  }
  if (!move || app.TargetFile == app.SourceFile) return;
  // A copy that failed or came out short keeps the source where it was.
  if (!LastCopyComplete()) return;
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

QRect SingleImage::ClientTwips() const {
  // The window's outer rectangle in twips of the main window's client area,
  // where the rename and properties windows are placed.
  QWidget* frame = FrameOf(const_cast<SingleImage*>(this));
  QPoint origin(0, 0);
  if (QWidget* main = Windows().Find(WindowId::MainForm); main && main->isVisible())
    origin = main->mapToGlobal(QPoint(0, 0));
  const QPoint corner = (frame->isWindow() ? frame->frameGeometry().topLeft()
                                           : frame->mapToGlobal(QPoint(0, 0))) - origin;
  const QSize size = frame->isWindow() ? frame->frameGeometry().size() : frame->size();
  return QRect(twips::FromPixels(corner.x()), twips::FromPixels(corner.y()), twips::FromPixels(size.width()),
               twips::FromPixels(size.height()));
}

void SingleImage::renameButton_Click() {
  AppState& app = App();
  app.PendingFile = Pending;
  if (Pending.isEmpty()) app.CurrentPicture() = PictureIndex;
  app.SourceFile = app.Entry(PicturesTab, PictureIndex);
  const QRect frame = ClientTwips();
  RenameFile* rename = ShowRenameFile(PicturesTab, frame.left() + 60, frame.top() + 930);
  if (!rename) return;
  // The name box lies over the name in the description: its line, and in a
  // list the place where the name begins.
  QWidget* main = Windows().Find(WindowId::MainForm);
  const QPoint label = DescriptionLabel->mapToGlobal(QPoint(0, 0)) -
                       (main && main->isVisible() ? main->mapToGlobal(QPoint(0, 0)) : QPoint(0, 0));
  const QRect box = rename->NewFile->geometry();
  const int top = twips::FromPixels(label.y() + (DescriptionLabel->height() - box.height()) / 2 - box.y());
  const int left = Pending.isEmpty() ? twips::FromPixels(label.x()) + DescriptionWidth - twips::FromPixels(box.x())
                                     : frame.left() + 60;
  rename->Display(PicturesTab, left, top);
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

void SingleImage::propertiesButton_Click() {
  QWidget* frame = FrameOf(this);
  if (frame->windowState() & Qt::WindowMaximized) frame->setWindowState(Qt::WindowNoState);
  auto* window = Windows().Get<ChangeProperties>();
  if (!window) window = new ChangeProperties(Windows().Find(WindowId::MainForm));
  window->GetData(CurrentFile, ChangeProperties::HiddenBox::ShowOnly);
  const QSize size = window->OuterSizeTwips();
  const QRect client = ClientTwips();
  const int buttonBottom = twips::FromPixels(propertiesButton->mapTo(frame, QPoint(0, propertiesButton->height())).y());
  int left = client.right() - size.width();
  int top = client.top() + buttonBottom;
  // Kept inside the main window.
  const AppState& app = App();
  if (app.MainClientWidth > 0) left = std::clamp(left, 0, std::max(app.MainClientWidth - size.width(), 0));
  if (app.MainClientHeight > 0) top = std::clamp(top, 0, std::max(app.MainClientHeight - size.height(), 0));
  window->Display(left, top);
}

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
