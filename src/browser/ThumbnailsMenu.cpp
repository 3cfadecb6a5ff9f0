// The context menu of the cells and what its entries do: the file
// operations on the current item of the current tab (copy, move, delete,
// rename, properties), which keep the lists and cells in step, and the
// picture entries (paint, clipboard, print, shoot, slideshow), e-mail and
// the tags of an MP3.

#include "browser/Thumbnails.h"

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QFile>
#include <QFileInfo>

#include "browser/MenuFile.h"
#include "catalogue/MediaPicture.h"
#include "catalogue/MediaTypes.h"
#include "catalogue/PathParts.h"
#include "controls/MsgBoxEnhanced.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/Statements.h"
#include "core/WindowRegistry.h"
#include "core/WindowShow.h"
#include "fileops/ChooseDirectory.h"
#include "fileops/ChangeProperties.h"
#include "fileops/FileOperations.h"
#include "fileops/RenameFile.h"
#include "core/WindowFrame.h"
#include "platform/SiblingPrograms.h"
#include "platform/Twips.h"
#include "viewers/SendMail.h"

namespace {

void Say(const QString& text) {
  if (MsgBoxEnhanced* box = App().MsgBox) box->MsgBox(text, 48, "Vistrel");
}

// The viewer of a tab's items; none for documents.
std::optional<WindowId> ViewerOf(int tab) {
  switch (tab) {
    case PicturesTab: return WindowId::SingleImage;
    case VideosTab: return WindowId::SingleVideo;
    case AudiosTab: return WindowId::SingleAudio;
    default: return std::nullopt;
  }
}

// The path of the item that the picture entries work on: the folder on
// display and the entry, in album mode too (where it names no file).
QString PicturePath() {
  const AppState& app = App();
  return app.CurrentFolder + "/" + app.Entry(PicturesTab, app.CurrentPicture());
}

// The data file's rows of a file that moved follow it.
void FollowMovedFile(const QString& from, const QString& to) {
  if (Database* db = App().DatabaseConnection) FollowRenamedFile(*db, from, to);
}

}  // namespace

QString Thumbnails::GetCurrentPath() const {
  const AppState& app = App();
  return app.CurrentFolder + "/" + app.Entry(currentTab_, app.Current(currentTab_));
}

void Thumbnails::ShowContextMenu(int tab, int) {
  const AppState& app = App();
  const QString entry = app.Entry(tab, app.Current(tab));
  Menu->SetUp(tab, GetMediaType(entry), GetFileExtension(entry), Tab(tab).Count, app.AlbumMode);
  emit ContextMenuRequested(tab, app.Current(tab));
  Menu->popup(QCursor::pos());
}

void Thumbnails::MenuFile_Chosen(MenuEntry entry) {
  switch (entry) {
    case MenuEntry::mnuRename: mnuRename_Click(); break;
    case MenuEntry::mnuCopy: mnuCopy_Click(); break;
    case MenuEntry::mnuMove: mnuMove_Click(); break;
    case MenuEntry::mnuDelete: mnuDelete_Click(); break;
    case MenuEntry::mnuPaint: mnuPaint_Click(); break;
    case MenuEntry::mnuEmail: mnuEmail_Click(); break;
    case MenuEntry::mnuPrint: mnuPrint_Click(); break;
    case MenuEntry::mnuShoot: mnuShoot_Click(); break;
    case MenuEntry::mnuClipboard: mnuClipboard_Click(); break;
    case MenuEntry::mnuSlideshow: mnuSlideshow_Click(); break;
    case MenuEntry::mnuProperties: mnuProperties_Click(); break;
    case MenuEntry::mnuMP3: mnuMP3_Click(); break;
  }
}

// ---- Copy, move and delete ---------------------------------------------------

bool Thumbnails::CopyToChosenFolder(const QString& mode) {
  AppState& app = App();
  app.SourceFile = GetCurrentPath();
  app.OperationFileName = GetBaseName(app.SourceFile);
  app.ChosenFolder = app.LastTargetFolder;
  for (;;) {
    ChooseDirectoryWait(app.ChosenFolder, mode);
    ::ResumeMouseWheel();
    if (app.DirectoryCancelled) return false;
    app.LastTargetFolder = app.ChosenFolder;
    app.TargetFile = JoinPath(app.ChosenFolder, app.OperationFileName);
    // A file is not copied onto itself.
    if (app.TargetFile == app.SourceFile) return false;
    CopyMediaFile(app.SourceFile, app.TargetFile);
    // Refusing to replace means choosing another folder.
    if (app.ReplaceAnswer != 7) return true;
  }
}

void Thumbnails::mnuCopy_Click() {
  if (!CopyToChosenFolder("Copy")) return;
  const AppState& app = App();
  // The folder from the tree is compared as it stands with the lower-cased
  // folder on display, so a folder whose path holds capitals is not
  // recognised and the list stays as it was until the next refresh.
  if (app.ChosenFolder == app.CurrentFolder.toLower())
    if (BarCommands* bar = CommandBarCommands()) bar->Click(BarButton::refreshButton);
}

void Thumbnails::mnuMove_Click() {
  if (!CopyToChosenFolder("Move")) return;
  AppState& app = App();
  // A copy that failed, or that is shorter than its source, keeps the
  // source where it was; nothing is said.
  if (!LastCopyComplete()) return;
  const QString from = app.SourceFile, to = app.TargetFile;
  app.RemoveWithoutVerify = true;
  if (DeleteCurrentFile()) FollowMovedFile(from, to);
}

void Thumbnails::mnuDelete_Click() {
  AppState& app = App();
  app.MessageStyle = 36;
  app.MessageAnswer = VerifyDelete();
  ::ResumeMouseWheel();
  if (app.MessageAnswer != 6) return;
  app.RemoveWithoutVerify = false;
  DeleteCurrentFile();
}

bool Thumbnails::DeleteCurrentFile() {
  AppState& app = App();
  const int tab = currentTab_;
  app.SourceFile = GetCurrentPath();
  const qint32 current = app.Current(tab);
  if (app.RemoveWithoutVerify) {
    if (!QFile::remove(app.SourceFile)) return false;
  } else if (!DeleteMediaFile(app.SourceFile)) {
    return false;
  }
  if (app.ReplaceAnswer == 7) return false;
  // The count, the tab's caption and the page stay as they are: the cell
  // stays as a gap until the next listing.
  app.Current(tab) = current;
  MarkCurrentDeleted(tab);
  return true;
}

// ---- Rename and properties ---------------------------------------------------

QPoint Thumbnails::BelowCurrentCell(int tab) {
  const qint32 current = App().Current(tab);
  const QRectF cell = CellTwips(tab, current - Tab(tab).PageFirst);
  // The browser's place in the main window's client area, where the
  // windows that open over its cells are reckoned.
  QWidget* frame = FrameOf(this);
  const QPoint origin = frame->pos() + (frame == this ? QPoint() : mapTo(frame, QPoint(0, 0)));
  return QPoint(twips::FromPixels(origin.x()) + int(cell.left()),
                twips::FromPixels(origin.y()) + int(cell.top() + cell.height()));
}

void Thumbnails::mnuRename_Click() {
  AppState& app = App();
  const int tab = currentTab_;
  if (auto viewer = ViewerOf(tab)) Windows().Unload(*viewer);
  app.SourceFile = app.Entry(tab, app.Current(tab));
  // Over the lower edge of the cell (the icons' a little higher), a little
  // to the left of it.
  const QPoint below = BelowCurrentCell(tab);
  const int up = tab == PicturesTab ? 75 : 90;
  ShowRenameFile(tab, below.x() - 45, below.y() - up + 75);
}

void Thumbnails::mnuProperties_Click() {
  AppState& app = App();
  const int tab = currentTab_;
  if (auto viewer = ViewerOf(tab)) Windows().Unload(*viewer);
  const QString entry = app.Entry(tab, app.Current(tab));
  const QString path = app.AlbumMode ? entry : GetCurrentPath();
  auto* window = Windows().Get<ChangeProperties>();
  if (!window) window = new ChangeProperties(Windows().Find(WindowId::MainForm));
  // A hidden file is one whose name begins with a dot: the box renames the
  // file, which only a listed folder's file may have done to it.
  window->GetData(path, app.AlbumMode ? ChangeProperties::HiddenBox::ShowOnly
                                      : ChangeProperties::HiddenBox::Renames);
  // Below the cell, or above it when it would pass the main window's
  // lower edge.
  const QPoint below = BelowCurrentCell(tab);
  const qint32 current = app.Current(tab);
  const QRectF cell = CellTwips(tab, current - Tab(tab).PageFirst);
  const int height = window->OuterSizeTwips().height();
  const int bottom = app.MainClientHeight > 0 ? app.MainClientHeight : twips::FromPixels(this->height());
  int top = below.y();
  if (top + height > bottom - 465) top = below.y() - int(cell.height()) - height;
  window->Display(below.x(), top);
}

// ---- The picture entries, e-mail and tags --------------------------------------

void Thumbnails::mnuPaint_Click() {
  platform::StartPaintProgram(App().ProgramFolder, PicturePath());
  QCoreApplication::processEvents();
}

void Thumbnails::mnuClipboard_Click() {
  QImage picture;
  if (!LoadMediaPicture(PicturePath(), picture)) {
    Say("An invalid picture cannot be copied to the clipboard");
    return;
  }
  QClipboard* clipboard = QApplication::clipboard();
  clipboard->clear();
  clipboard->setImage(picture);
}

void Thumbnails::mnuPrint_Click() {
  AppState& app = App();
  QImage picture;
  const QString path = PicturePath();
  if (!LoadMediaPicture(path, picture)) {
    Say("An invalid picture cannot be selected for printing");
    return;
  }
  app.CurrentMediaFile = app.AlbumMode ? app.Entry(PicturesTab, app.CurrentPicture()) : path;
  ShowWindowModal(WindowId::PrinterSetup);
  ::ResumeMouseWheel();
}

void Thumbnails::mnuShoot_Click() { ShowWindow(WindowId::Target); }

void Thumbnails::mnuSlideshow_Click() {
  ShowWindowModal(WindowId::SlideshowController);
  ::ResumeMouseWheel();
  const TabState& state = Tab(PicturesTab);
  FocusCell(PicturesTab, App().CurrentPicture() - state.PageFirst);
}

void Thumbnails::mnuEmail_Click() {
  AppState& app = App();
  const QString entry = app.Entry(currentTab_, app.Current(currentTab_));
  app.EmailFile = app.AlbumMode ? entry : GetCurrentPath();
  SendFileByEmail();
}

void Thumbnails::mnuMP3_Click() {
  AppState& app = App();
  Windows().Unload(WindowId::SingleAudio);
  QString path = DisplayedCaption().trimmed();
  if (!path.endsWith('/')) path += '/';
  path += app.Entry(AudiosTab, app.CurrentAudio());
  QWidget* window = Windows().Load(WindowId::ChangeMP3);
  if (!window) return;
  if (auto* tags = dynamic_cast<FileWindow*>(window)) tags->GetData(path);
  const QPoint below = BelowCurrentCell(AudiosTab);
  window->move(twips::ToPixels(below.x()), twips::ToPixels(below.y()));
  ShowWindow(WindowId::ChangeMP3);
}
