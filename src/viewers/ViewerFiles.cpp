#include "viewers/ViewerFiles.h"

#include <QLabel>
#include <QLineEdit>
#include <algorithm>

#include "catalogue/PathParts.h"
#include "core/AppState.h"
#include "core/BrowserCommands.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "fileops/ChangeProperties.h"
#include "fileops/ChooseDirectory.h"
#include "fileops/FileOperations.h"
#include "fileops/RenameFile.h"
#include "platform/Twips.h"

namespace {

// The main window's client area on the screen; the screen's origin
// without a main window.
QPoint ClientOrigin() {
  QWidget* main = Windows().Find(WindowId::MainForm);
  return main && main->isVisible() ? main->mapToGlobal(QPoint(0, 0)) : QPoint(0, 0);
}

}  // namespace

bool CopyThroughChooser(const QString& source, const QString& word, const QString& proposal) {
  AppState& app = App();
  app.SourceFile = source;
  app.OperationFileName = GetBaseName(source);
  app.ChosenFolder = proposal;
  const bool move = word == "Move";
  for (;;) {
    ChooseDirectoryWait(app.ChosenFolder, word);
    ResumeMouseWheel();
    if (app.DirectoryCancelled) return false;
    app.LastTargetFolder = app.ChosenFolder;
    app.TargetFile = JoinPath(app.ChosenFolder, app.OperationFileName);
    // A file is not copied onto itself; a move there ends.
    if (app.TargetFile == app.SourceFile) {
      if (move) return false;
    } else {
      CopyMediaFile(app.SourceFile, app.TargetFile);
    }
    if (app.ReplaceAnswer != 7) break;
  }
  // A copy that failed or came out short keeps the source where it was.
  return move && app.TargetFile != app.SourceFile && LastCopyComplete();
}

QRect ClientTwipsOf(const QWidget* window) {
  const QWidget* frame = FrameOf(const_cast<QWidget*>(window));
  const QPoint corner =
      (frame->isWindow() ? frame->frameGeometry().topLeft() : frame->mapToGlobal(QPoint(0, 0))) -
      ClientOrigin();
  const QSize size = frame->isWindow() ? frame->frameGeometry().size() : frame->size();
  return QRect(twips::FromPixels(corner.x()), twips::FromPixels(corner.y()), twips::FromPixels(size.width()),
               twips::FromPixels(size.height()));
}

void ShowRenameOver(int tab, const QWidget* viewer, const QLabel* description, int nameLeftTwips,
                    bool singleFile) {
  const QRect frame = ClientTwipsOf(viewer);
  RenameFile* rename = ShowRenameFile(tab, frame.left() + 60, frame.top() + 930);
  if (!rename) return;
  const QPoint label = description->mapToGlobal(QPoint(0, 0)) - ClientOrigin();
  const QRect box = rename->NewFile->geometry();
  const int top = twips::FromPixels(label.y() + (description->height() - box.height()) / 2 - box.y());
  const int left = singleFile ? frame.left() + 60
                              : twips::FromPixels(label.x()) + nameLeftTwips - twips::FromPixels(box.x());
  rename->Display(tab, left, top);
}

QPoint BesideButtonTwips(QWidget* viewer, const QWidget* button, QSize size) {
  QWidget* frame = FrameOf(viewer);
  const QRect client = ClientTwipsOf(viewer);
  const int buttonBottom = twips::FromPixels(button->mapTo(frame, QPoint(0, button->height())).y());
  int left = client.right() - size.width();
  int top = client.top() + buttonBottom;
  const AppState& app = App();
  if (app.MainClientWidth > 0) left = std::clamp(left, 0, std::max(app.MainClientWidth - size.width(), 0));
  if (app.MainClientHeight > 0) top = std::clamp(top, 0, std::max(app.MainClientHeight - size.height(), 0));
  return QPoint(left, top);
}

void ShowPropertiesBelow(QWidget* viewer, const QWidget* button, const QString& path) {
  QWidget* frame = FrameOf(viewer);
  if (frame->windowState() & Qt::WindowMaximized) frame->setWindowState(Qt::WindowNoState);
  auto* window = Windows().Get<ChangeProperties>();
  if (!window) window = new ChangeProperties(Windows().Find(WindowId::MainForm));
  window->GetData(path, ChangeProperties::HiddenBox::ShowOnly);
  const QPoint place = BesideButtonTwips(viewer, button, window->OuterSizeTwips());
  window->Display(place.x(), place.y());
}
