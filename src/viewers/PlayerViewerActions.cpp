// What the audio and video viewers' buttons and keys do: the walk through
// the list, the transport, continuous play, and the file operations on the
// file that plays.

#include <QCoreApplication>
#include <QFile>
#include <QKeyEvent>

#include "catalogue/MediaTypes.h"
#include "controls/Button.h"
#include "controls/NewSlider.h"
#include "controls/TransCheck.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/BrowserCommands.h"
#include "core/CommonKeys.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "core/WindowRegistry.h"
#include "core/WindowFrame.h"
#include "core/WindowShow.h"
#include "fileops/FileOperations.h"
#include "fileops/PopupPlacement.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"
#include "platform/SiblingPrograms.h"
#include "viewers/AudioVideoPlayer.h"
#include "viewers/PictureWalk.h"
#include "viewers/PlayerViewer.h"
#include "viewers/SendMail.h"
#include "viewers/ViewerFiles.h"

// ---- The walk --------------------------------------------------------------------

void PlayerViewer::StepTo(bool forward) {
  AppState& app = App();
  const QStringList& files = app.List(kind_.Tab);
  const qint32 count = app.Count(kind_.Tab);
  const WalkStep step = forward ? StepForward(files, count, Index) : StepBackward(files, count, Index);
  Direction = step.Direction;
  if (step.Close) {
    CloseViewer();
    return;
  }
  // Nothing to play in that direction: the file that plays stays.
  if (app.Entry(kind_.Tab, step.Index).isEmpty()) return;
  Index = step.Index;
  ResetButtons();
  LoadMedia();
}

void PlayerViewer::firstButton_Click() {
  const qint32 count = App().Count(kind_.Tab);
  qint32 first = 0;
  while (first < count - 1 && App().Entry(kind_.Tab, first).isEmpty()) ++first;
  Index = first;
  Direction = '-';
  ResetButtons();
  LoadMedia();
  (lastButton->isEnabled() ? nextButton : previousButton)->setFocus();
}

void PlayerViewer::previousButton_Click() {
  StepTo(false);
  if (!closing_) (previousButton->isEnabled() ? previousButton : nextButton)->setFocus();
}

void PlayerViewer::nextButton_Click() {
  StepTo(true);
  if (!closing_) (nextButton->isEnabled() ? nextButton : previousButton)->setFocus();
}

void PlayerViewer::lastButton_Click() {
  qint32 last = App().Count(kind_.Tab) - 1;
  while (last > 0 && App().Entry(kind_.Tab, last).isEmpty()) --last;
  Index = std::max(last, 0);
  Direction = '+';
  ResetButtons();
  LoadMedia();
  (firstButton->isEnabled() ? previousButton : nextButton)->setFocus();
}

// ---- Transport ------------------------------------------------------------------

void PlayerViewer::playButton_Click() {
  Player->Play();
  pauseButton->setFocus();
  Timer1.start();
}

void PlayerViewer::pauseButton_Click() {
  Timer1.stop();
  Player->Pause();
  playButton->setFocus();
}

void PlayerViewer::stopButton_Click() {
  Timer1.stop();
  SetSlider(0);
  Player->StopPlay();
  QCoreApplication::processEvents();
  playButton->setFocus();
}

void PlayerViewer::restartButton_Click() { Slider1->SetValue(0); }

void PlayerViewer::endButton_Click() { Slider1->SetValue(Slider1->Max()); }

void PlayerViewer::fbButton_Click() {
  Slider1->SetValue(std::max(Slider1->Value() - Slider1->LargeChange(), 0));
  SeekToSlider();
}

void PlayerViewer::ffButton_Click() {
  Slider1->SetValue(std::min(Slider1->Value() + Slider1->LargeChange(), Slider1->Max()));
  SeekToSlider();
}

void PlayerViewer::Check1_Click() {
  ContinuousPlay = Check1->Value() == 1;
  Player->SetRepeat(ContinuousPlay);
  if (ContinuousPlay && Player->PlayState() == 0) {
    Player->Play();
    Timer1.start();
  }
  settings::SaveSetting(kind_.ContinuousKey, ContinuousPlay ? "1" : "0");
}

// ---- Files ------------------------------------------------------------------------

void PlayerViewer::playlistButton_Click() {
  platform::StartViewerProgram(App().ProgramFolder, kind_.PlaylistWord);
}

void PlayerViewer::emailButton_Click() {
  App().EmailFile = CurrentFile;
  SendFileByEmail();
}

void PlayerViewer::CopyOrMove(const QString& word) {
  const AppState& app = App();
  // The file is released while it is copied, so that a move can take it.
  if (CopyThroughChooser(CurrentFile, word, Pending.isEmpty() ? app.LastTargetFolder : app.SearchResultFolder))
    RemoveCurrentFile(true);
}

void PlayerViewer::copyButton_Click() { CopyOrMove("Copy"); }

void PlayerViewer::moveButton_Click() { CopyOrMove("Move"); }

void PlayerViewer::deleteButton_Click() {
  AppState& app = App();
  app.MessageStyle = 36;
  app.MessageAnswer = qint16(VerifyDelete());
  ResumeMouseWheel();
  if (app.MessageAnswer != 6) return;
  RemoveCurrentFile(false);
  if (!closing_ && Count > 0 && deleteButton->isEnabled()) deleteButton->setFocus();
}

void PlayerViewer::RemoveCurrentFile(bool moved) {
  AppState& app = App();
  const QString file = CurrentFile;
  Timer1.stop();
  Player->StopPlay();
  Player->ClosePlayer();
  if (moved) {
    if (!QFile::remove(file)) return;
    if (Database* db = app.DatabaseConnection) FollowRenamedFile(*db, file, app.TargetFile);
  } else if (!DeleteMediaFile(file)) {
    return;
  }
  if (app.ReplaceAnswer == 7) return;
  if (!Pending.isEmpty()) {
    CloseViewer();
    return;
  }
  if (BrowserCommands* browser = TheBrowserCommands()) browser->MarkItemDeleted(kind_.Tab, Index);
  QStringList& files = app.List(kind_.Tab);
  if (Index >= 0 && Index < files.size()) files[Index] = QString();
  --Count;
  if (Count <= 0) {
    previousButton->SetEnabled(false);
    nextButton->SetEnabled(false);
    CloseViewer();
    return;
  }
  const qint32 last = app.Count(kind_.Tab) - 1;
  if (Index < last || Count == 1) {
    StepTo(Direction != '-');
    if (!closing_ && app.Entry(kind_.Tab, Index).isEmpty()) StepTo(Direction != '-');
  } else {
    StepTo(false);
  }
}

void PlayerViewer::renameButton_Click() {
  AppState& app = App();
  app.PendingFile = Pending;
  if (Pending.isEmpty()) app.Current(kind_.Tab) = Index;
  app.SourceFile = app.Entry(kind_.Tab, Index);
  ShowRenameOver(kind_.Tab, this, DescriptionLabel, DescriptionWidth, !Pending.isEmpty());
}

void PlayerViewer::ReleaseFileForWriting() {
  // The file is about to be written: the player lets go of it, and takes it
  // up again when the window comes back.
  lentState_ = Player->PlayState();
  lentSlider_ = Slider1->Value();
  if (lentState_ > 0 && lentState_ < 3) Player->StopPlay();
  Timer1.stop();
  Player->ClosePlayer();
  fileLent_ = true;
}

void PlayerViewer::TakeFileBackAfter(QWidget* window) {
  // The window that works on the file has gone: the file plays again as it
  // did. (The main window comes back active with this window still the
  // active sub-window, so no activation says so.)
  if (!window) return;
  connect(window, &QObject::destroyed, this, [this] {
    if (fileLent_ && !closing_) Form_Activate();
  });
}

void PlayerViewer::propertiesButton_Click() {
  ReleaseFileForWriting();
  ShowPropertiesBelow(this, propertiesButton, CurrentFile);
  TakeFileBackAfter(Windows().Find(WindowId::ChangeProperties));
}

void PlayerViewer::tagButton_Click() {
  ReleaseFileForWriting();
  QWidget* window = Windows().Load(WindowId::ChangeMP3);
  if (!window) return;
  if (auto* tags = dynamic_cast<FileWindow*>(window)) tags->GetData(CurrentFile);
  const QSize outer(twips::FromPixels(window->frameGeometry().width()),
                    twips::FromPixels(window->frameGeometry().height()));
  const QPoint place = BesideButtonTwips(this, tagButton, outer);
  MoveToClientTwips(window, place.x(), place.y());
  ShowWindow(WindowId::ChangeMP3);
  TakeFileBackAfter(window);
}

// ---- Keys ----------------------------------------------------------------------------

bool PlayerViewer::Form_KeyDown(int keyCode, int shift) {
  const auto press = [this](Button* button, void (PlayerViewer::*routine)()) {
    if (button->isEnabled()) (this->*routine)();
    return true;
  };
  if (shift == keys::NoShift) {
    switch (keyCode) {
      case keys::F1:
        FrameOf(this)->showMinimized();
        if (BarCommands* bar = CommandBarCommands()) bar->ClickIfEnabled(BarButton::HelpButton);
        return true;
      case keys::Prior: return press(previousButton, &PlayerViewer::previousButton_Click);
      case keys::Next: return press(nextButton, &PlayerViewer::nextButton_Click);
      case keys::Home: return press(firstButton, &PlayerViewer::firstButton_Click);
      case keys::End: return press(lastButton, &PlayerViewer::lastButton_Click);
      case keys::Delete: return press(deleteButton, &PlayerViewer::deleteButton_Click);
      case keys::F12:
        Check1->SetValue(Check1->Value() == 1 ? 0 : 1);
        return true;
      default: return false;
    }
  }
  if (shift == keys::CtrlMask) {
    switch (keyCode) {
      case 'C': return press(copyButton, &PlayerViewer::copyButton_Click);
      case 'D': return press(deleteButton, &PlayerViewer::deleteButton_Click);
      case 'E': return press(emailButton, &PlayerViewer::emailButton_Click);
      case 'L': return press(playlistButton, &PlayerViewer::playlistButton_Click);
      case 'M': return press(moveButton, &PlayerViewer::moveButton_Click);
      case 'R': return press(renameButton, &PlayerViewer::renameButton_Click);
      default: return false;
    }
  }
  return false;
}

bool PlayerViewer::Form_KeyUp(int keyCode, int shift) {
  if (!(shift & keys::AltMask)) return false;
  switch (keyCode) {
    case 'Y': playButton_Click(); return true;
    case 'P': pauseButton_Click(); return true;
    case 'S': stopButton_Click(); return true;
    case 'R': restartButton_Click(); return true;
    case 'E': endButton_Click(); return true;
    case 'B': fbButton_Click(); return true;
    case 'F': ffButton_Click(); return true;
    default: HandleCommonKey(this, keyCode, shift, false, false); return true;
  }
}

bool PlayerViewer::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (Form_KeyDown(keys::KeyCode(key), keys::ShiftOf(key))) return true;
  } else if (event->type() == QEvent::KeyRelease) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (!key->isAutoRepeat() && Form_KeyUp(keys::KeyCode(key), keys::ShiftOf(key))) return true;
  }
  return QWidget::eventFilter(watched, event);
}

void PlayerViewer::keyPressEvent(QKeyEvent* event) {
  const int code = keys::KeyCode(event), shift = keys::ShiftOf(event);
  if (Form_KeyDown(code, shift)) return;
  if (!(shift & keys::AltMask)) HandleCommonKey(this, code, shift, false, false);
}

void PlayerViewer::keyReleaseEvent(QKeyEvent* event) {
  if (!event->isAutoRepeat()) Form_KeyUp(keys::KeyCode(event), keys::ShiftOf(event));
}
