// The browser's keyboard and mouse: which key does what, how the current
// item moves from cell to cell, and the red frame that follows it.

#include <QApplication>
#include <QFileInfo>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QTimer>

#include "browser/BrowserKeys.h"
#include "browser/CellNavigation.h"
#include "core/CommonKeys.h"
#include "browser/HighlightFrame.h"
#include "browser/Thumbnails.h"
#include "catalogue/CdDrives.h"
#include "catalogue/PathParts.h"
#include "controls/NewImage.h"
#include "controls/NumberBox.h"
#include "controls/ThumbnailScroll.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"

namespace {

// One tab's page as the cell key routines see it.
class BrowserPage : public CellPage {
 public:
  BrowserPage(Thumbnails& window, int tab) : window_(window), tab_(tab) {}
  int PageSize() const override { return window_.Tab(tab_).PageSize; }
  int Columns() const override { return window_.Layout().PictureColumns; }
  qint32 PageFirst() const override { return window_.Tab(tab_).PageFirst; }
  qint32 Count() const override { return window_.Tab(tab_).Count; }
  int ScrollValue() const override { return Bar()->Value(); }
  int ScrollMax() const override { return Bar()->Max(); }
  void SetScrollValue(int value) override { Bar()->SetValue(value); }
  bool FocusCell(int cell) override { return window_.FocusCell(tab_, cell); }
  bool EntryEmpty(qint32 index) const override { return !App().HasEntry(tab_, index); }
  bool NameEmpty(int cell) const override {
    const QLabel* name = window_.Name(tab_, cell);
    return !name || name->text().isEmpty();
  }
  qint32 CurrentEntry() const override { return App().Current(tab_); }
  void ShowHighlight() override { window_.ShowHighlight(tab_); }
  void Delete() override { window_.mnuDelete_Click(); }
  void Move() override { window_.mnuMove_Click(); }
  void Copy() override { window_.mnuCopy_Click(); }
  void Rename() override { window_.mnuRename_Click(); }

 private:
  ThumbnailScroll* Bar() const { return window_.VScroll[size_t(tab_ - 1)]; }
  Thumbnails& window_;
  int tab_;
};

}  // namespace

// ---- Keys of the window -----------------------------------------------------

void Thumbnails::keyPressEvent(QKeyEvent* event) {
  Form_KeyDown(keys::KeyCode(event), keys::ShiftOf(event));
}

void Thumbnails::keyReleaseEvent(QKeyEvent* event) {
  Form_KeyUp(keys::KeyCode(event), keys::ShiftOf(event));
}

void Thumbnails::Form_KeyDown(int keyCode, int shift) {
  const FormKeyAction action = FormKeyDownAction(keyCode, shift);
  const int tab = currentTab_;
  switch (action.Kind) {
    case FormKeyKind::Nothing:
      break;
    case FormKeyKind::FocusFirstCell:
      if (PauseFocusesFirstCell(tab, Tab(tab).Count, Tab(tab).Highlighted)) FocusCell(tab, 0);
      break;
    case FormKeyKind::GoHome:
      GoHome();
      break;
    case FormKeyKind::ScrollToEnd:
      VScroll[size_t(tab - 1)]->SetValue(VScroll[size_t(tab - 1)]->Max());
      break;
    case FormKeyKind::EndProgram:
      if (QWidget* main = Windows().Find(WindowId::MainForm)) main->close();
      break;
    case FormKeyKind::GoToTab:
      SetCurrentTab(action.Tab);
      break;
    case FormKeyKind::ClickButton:
      if (BarCommands* bar = CommandBarCommands()) bar->ClickIfEnabled(*action.Button);
      break;
    case FormKeyKind::Minimise:
      if (QWidget* main = Windows().Find(WindowId::MainForm)) main->showMinimized();
      break;
    case FormKeyKind::Enter:
      EnterKey();
      break;
    case FormKeyKind::CommonKey:
      HandleCommonKey(this, keyCode, shift, false, false);
      break;
  }
}

void Thumbnails::Form_KeyUp(int keyCode, int shift) {
  const int tab = currentTab_;
  const qint32 current = App().Current(tab);
  const QString extension = GetFileExtension(App().Entry(tab, current));
  switch (FormKeyUpAction(keyCode, shift, tab, Tab(tab).Count, extension)) {
    case KeyUpAction::ContextMenu:
      // The current index stands in the place of the cell number; the
      // mouse-down routine adds PageStart to it again, so on a later page
      // the menu may come up for another entry or not at all.
      CellMouseDown(tab, current, 2);
      break;
    case KeyUpAction::Properties:
      mnuProperties_Click();
      break;
    case KeyUpAction::Mp3Tags:
      mnuMP3_Click();
      break;
    case KeyUpAction::Nothing:
      break;
  }
}

void Thumbnails::EnterKey() {
  AppState& app = App();
  const int tab = currentTab_;
  switch (EnterActionFor(sizeFocus_, positionFocus_[size_t(tab - 1)], app.SkipNextEnter,
                         Tab(tab).Highlighted)) {
    case EnterAction::ApplyThumbnailSize:
      ThumbnailSizeEnter();
      break;
    case EnterAction::JumpToPosition:
      PositionEnter(tab);
      break;
    case EnterAction::SkipThisEnter:
      app.SkipNextEnter = false;
      break;
    case EnterAction::OpenCurrent:
      OpenItem(tab);
      break;
    case EnterAction::Nothing:
      break;
  }
}

void Thumbnails::ThumbnailSizeEnter() {
  AppState& app = App();
  const double value = strip_.TypedThumbnailSize();
  app.ThumbnailSizeTwips = qint16(ThumbnailSizeAfterEnter(value, layout_.Box.height()));
  strip_.ShowThumbnailSize(app.ThumbnailSizeTwips);
  settings::SaveSetting("ThumbnailSize", QString::number(app.ThumbnailSizeTwips));
  ChangeFormSize();
  if (BarCommands* bar = CommandBarCommands()) bar->Click(BarButton::refreshButton);
}

void Thumbnails::PositionEnter(int tab) {
  const TabState& state = Tab(tab);
  const PositionJump jump =
      PositionJumpFor(strip_.TypedPosition(tab), state.Count, state.PageSize, tab);
  // A value the bar already has raises no change: only the focus moves.
  VScroll[size_t(tab - 1)]->SetValue(jump.ScrollValue);
  if (jump.FocusCell >= 0) FocusCell(tab, jump.FocusCell);
}

void Thumbnails::GoHome() {
  AppState& app = App();
  app.AlbumMode = false;
  const QString old = app.CurrentFolder;
  QString folder = settings::GetSetting("DefaultFolder", settings::MyMediaFolder());
  while (folder.size() > 1 && folder.endsWith('/')) folder.chop(1);
  if (!IsBrowsableFolder(folder)) folder = settings::MyMediaFolder();
  app.CurrentFolder = folder;
  if (old.toLower() != folder.toLower()) {
    emit Showing(folder, false);
    ChangePattern();
    return;
  }
  const int tab = FirstNonEmptyTab(
      {Tab(1).Count, Tab(2).Count, Tab(3).Count, Tab(4).Count});
  if (tab < 1) return;
  // Already on the first page, nothing is filled again.
  VScroll[size_t(tab - 1)]->SetValue(0);
}

// ---- Keys of the cells ----------------------------------------------------------

void Thumbnails::ThumbImage_KeyDown(int index, int keyCode, int shift) {
  BrowserPage page(*this, PicturesTab);
  ::ThumbImage_KeyDown(page, index, keyCode, shift);
}

void Thumbnails::VideoIcon_KeyDown(int index, int keyCode, int shift) {
  BrowserPage page(*this, VideosTab);
  IconCell_KeyDown(page, index, keyCode, shift);
}

void Thumbnails::AudioIcon_KeyDown(int index, int keyCode, int shift) {
  BrowserPage page(*this, AudiosTab);
  IconCell_KeyDown(page, index, keyCode, shift);
}

void Thumbnails::DocumentIcon_KeyDown(int index, int keyCode, int shift) {
  BrowserPage page(*this, DocumentsTab);
  IconCell_KeyDown(page, index, keyCode, shift);
}

bool Thumbnails::FocusCell(int tab, int cell) {
  QWidget* widget = Cell(tab, cell);
  if (!widget || widget->isHidden() || tab != currentTab_) return false;
  const int before = gotFocusRuns_;
  widget->setFocus(Qt::OtherFocusReason);
  // Without an active window no focus event arrives; the cell becomes
  // current all the same.
  if (gotFocusRuns_ == before) CellGotFocus(tab, cell);
  return true;
}

void Thumbnails::FocusCurrentCell() {
  const int tab = currentTab_;
  if (Tab(tab).Count < 1) return;
  FocusCell(tab, App().Current(tab) - Tab(tab).PageFirst);
}

void Thumbnails::CellGotFocus(int tab, int index) {
  ++gotFocusRuns_;
  // Only the cells of the tab in front stand for its items.
  if (tab != currentTab_) return;
  if (tab == PicturesTab) Windows().Unload(WindowId::SlideshowController);
  const TabState& state = Tab(tab);
  qint32& current = App().Current(tab);
  current = state.PageFirst + index;
  if (current < state.Count)
    ShowHighlight(tab);
  else if (state.Count < 1)
    HideHighlight();
  else
    FocusCell(tab, state.Count - state.PageFirst - 1);
}

void Thumbnails::ComeForward() {
  auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget());
  QMdiArea* area = sub ? sub->mdiArea() : nullptr;
  if (area && area->activeSubWindow() != sub) area->setActiveSubWindow(sub);
}

// ---- The frame -----------------------------------------------------------------

void Thumbnails::HideHighlight() {
  if (Highlight[0]->isVisible() || !Highlight[0]->isHidden())
    for (QFrame* line : Highlight) line->hide();
  if (currentTab_ >= PicturesTab && currentTab_ <= AudiosTab) Tab(currentTab_).Highlighted = false;
}

void Thumbnails::ShowHighlight1() {
  HideHighlight();
  TabState& state = Tab(PicturesTab);
  if (state.Count == 0) return;
  const qint32 current = App().CurrentPicture();
  if (current < state.PageFirst || current > state.PageLast) return;
  strip_.ShowPosition(PicturesTab, current);
  const QRectF cell = CellTwips(PicturesTab, current - state.PageFirst);
  ShowFrame(PictureFrame(cell.toRect()));
  state.Highlighted = true;
  update();
}

void Thumbnails::ShowFrame(const FrameLines& frame) {
  for (size_t i = 0; i < Highlight.size(); ++i) {
    const QRect& t = frame.Lines[i];
    Highlight[i]->setGeometry(twips::ToPixels(t.left()), twips::ToPixels(t.top()),
                              std::max(twips::ToPixels(t.width()), 1),
                              std::max(twips::ToPixels(t.height()), 1));
    Highlight[i]->raise();
  }
  for (QFrame* line : Highlight) line->show();
}

void Thumbnails::ShowHighlight2() { ShowIconHighlight(VideosTab); }
void Thumbnails::ShowHighlight3() { ShowIconHighlight(AudiosTab); }
void Thumbnails::ShowHighlight4() { ShowIconHighlight(DocumentsTab); }

void Thumbnails::ShowIconHighlight(int tab) {
  HideHighlight();
  TabState& state = Tab(tab);
  if (state.Count == 0) return;
  const qint32 current = App().Current(tab);
  if (current < state.PageFirst || current > state.PageLast) return;
  strip_.ShowPosition(tab, current);
  const int cell = current - state.PageFirst;
  const QRect icon = CellTwips(tab, cell).toRect();
  const QLabel* name = Name(tab, cell);
  const int nameRight = name ? twips::FromPixels(name->geometry().left() + name->width()) : icon.right();
  ShowFrame(IconFrame(icon, nameRight));
  state.Highlighted = true;
  update();
}

// ---- Mouse ---------------------------------------------------------------------

void Thumbnails::ThumbImage_Click(int index) {
  const TabState& state = Tab(PicturesTab);
  const qint32 entry = state.PageStart + index;
  if (!App().HasEntry(PicturesTab, entry)) return;
  App().CurrentPicture() = entry;
  // Pictures open at once, through the same routine as the delay timer.
  DblClickDelay[0]->stop();
  OpenItem(PicturesTab);
}

void Thumbnails::IconCell_Click(int tab, int index) {
  const TabState& state = Tab(tab);
  const qint32 entry = state.PageStart + index;
  if (!App().HasEntry(tab, entry)) return;
  App().Current(tab) = entry;
  DblClickDelay[size_t(tab - 1)]->start();
}

void Thumbnails::CellMouseDown(int tab, int index, int button) {
  const TabState& state = Tab(tab);
  const qint32 entry = state.PageStart + index;
  if (!App().HasEntry(tab, entry)) return;
  App().Current(tab) = entry;
  if (button != 1) {
    FocusCell(tab, index);
    ShowContextMenu(tab, index);
  }
}

void Thumbnails::NumberBoxPressed(QWidget* box, int tab) {
  // The size box and the pictures' position box close the picture viewer,
  // the videos' position box the video viewer.
  if (tab == PicturesTab) Windows().Unload(WindowId::SingleImage);
  if (tab == VideosTab) Windows().Unload(WindowId::SingleVideo);
  QCoreApplication::processEvents();
  HideHighlight();
  if (auto* number = qobject_cast<NumberBox*>(box)) number->txtNumber()->setFocus();
}

// ---- Routing of the events of the cells and boxes ------------------------------

bool Thumbnails::eventFilter(QObject* watched, QEvent* event) {
  // The number boxes of the bottom strip: their text box takes the keys
  // after the window. The size box goes with the Pictures tab.
  const int positionTab = strip_.PositionBoxTab(watched);
  if (positionTab != 0 || strip_.IsSizeBox(watched)) {
    const bool sizeBox = positionTab == 0;
    bool& focus = sizeBox ? sizeFocus_ : positionFocus_[size_t(positionTab - 1)];
    if (event->type() == QEvent::FocusIn) {
      focus = true;
      HideHighlight();
    } else if (event->type() == QEvent::FocusOut) {
      focus = false;
    } else if (event->type() == QEvent::MouseButtonPress) {
      if (sizeBox)
        NumberBoxPressed(ThumbnailSize, PicturesTab);
      else
        NumberBoxPressed(PositionNumber[size_t(positionTab - 1)], positionTab);
    } else if (event->type() == QEvent::KeyPress) {
      auto* key = static_cast<QKeyEvent*>(event);
      Form_KeyDown(keys::KeyCode(key), keys::ShiftOf(key));
      if (keys::KeyCode(key) == keys::Return) return true;
    }
    return false;
  }

  const QVariant tabValue = watched->property("vistrelTab");
  if (!tabValue.isValid()) return QWidget::eventFilter(watched, event);
  const int tab = tabValue.toInt();
  const int cell = watched->property("vistrelCell").toInt();
  switch (event->type()) {
    case QEvent::FocusIn:
      // The window comes forward before its cell takes the focus, so that
      // its activation runs first and the frame then stands.
      ComeForward();
      CellGotFocus(tab, cell);
      return false;
    case QEvent::KeyPress: {
      auto* key = static_cast<QKeyEvent*>(event);
      // Tab and Shift+Tab walk the focus chain, cell by cell.
      if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) return false;
      const int code = keys::KeyCode(key);
      const int shift = keys::ShiftOf(key);
      // The window sees the key first, then the cell.
      Form_KeyDown(code, shift);
      CellKeyDown(tab, cell, code, shift);
      return true;
    }
    case QEvent::KeyRelease: {
      auto* key = static_cast<QKeyEvent*>(event);
      Form_KeyUp(keys::KeyCode(key), keys::ShiftOf(key));
      return true;
    }
    case QEvent::MouseButtonPress:
      if (tab != PicturesTab) {
        auto* mouse = static_cast<QMouseEvent*>(event);
        CellMouseDown(tab, cell, mouse->button() == Qt::LeftButton ? 1 : 2);
      }
      return false;
    case QEvent::MouseButtonRelease:
      if (tab != PicturesTab && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        IconCell_Click(tab, cell);
      return false;
    default:
      return false;
  }
}
