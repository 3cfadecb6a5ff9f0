#pragma once
// The browser window: four tabs, Pictures, Videos, Audios and Documents,
// each showing one page of its list (the browser session's). The window
// keeps the tab control, the scroll bars, the paging, the keys, the focus and
// the red frame; the picture page, the list pages and the bottom strip are
// pieces of their own. The main window puts it under the command bar.
// Layout is worked out in twips (PageGeometry), turned into pixels at the
// controls.

#include <QWidget>
#include <array>

#include "browser/BottomStrip.h"
#include "browser/HighlightFrame.h"
#include "browser/ListPage.h"
#include "browser/Listing.h"
#include "browser/PageGeometry.h"
#include "browser/PicturePage.h"
#include "core/BrowserCommands.h"
#include "core/WindowRoles.h"

class BalloonHelp;
class MenuFile;
enum class MenuEntry;
class NewTabControl;
class QFrame;
class QTimer;
class ThumbnailScroll;

class Thumbnails : public QWidget, public BrowserCommands {
  Q_OBJECT
  // The pieces, made before the control names below that stand for theirs.
  Listing listing_;
  PageLayout layout_;
  int currentTab_ = PicturesTab;
  BottomStrip strip_;
  PicturePage pictures_;
  ListPage lists_;

 public:
  static constexpr WindowId Id = WindowId::Thumbnails;
  explicit Thumbnails(QWidget* parent = nullptr);
  ~Thumbnails() override;

  // ---- Loading, listing and paging ----------------------------------------
  // Prepares the window and lists the default folder.
  void Form_Load();
  // The browser comes forward, and another window of the program does.
  void Form_Activate();
  void Form_Deactivate();
  // The wheel on for the scroll bar of the tab in front.
  void WheelOnCurrentTab();
  // Reads the selection and sort settings, rebuilds the patterns and lists
  // the folder or album again.
  void ChangePattern();
  // Lists the current folder, or the album on display, into the four tabs
  // and brings each to its first page.
  void ChangeDirectory();
  // Lays out the controls for the window's present size and thumbnail size,
  // works out the page sizes and makes the cells.
  void ChangeFormSize();
  // The one entry point of paging: shows page `value` of tab `index`.
  void VScroll_Change(int index, int value);
  // Brings a tab forward.
  void ThumbnailTabs_Click(int previous, int current);
  // The tab in front (1 to 4), and bringing one forward as a click would.
  int CurrentTab() const { return currentTab_; }
  void SetCurrentTab(int tab);
  // The page before, the page after and the last page of the tab in front,
  // as the command bar's keys ask.
  void PagePrevious();
  // The page of a tab on display (its scroll bar's value).
  int PageShown(int tab) const;
  void PageNext();
  void PageLast();
  // Sets the tab's scroll bar so that item's page shows, and sets that page
  // anew without reading the folder again.
  void ShowItemPage(int tab, qint32 item);

  void FillPicturePage();
  void FillVideoPage();
  void FillAudioPage();
  void FillDocumentPage();
  void ClearPicturePage();
  void ClearVideoPage();
  void ClearAudioPage();
  void ClearDocumentPage();
  // Fits a name into its cell: cut, without an ellipsis.
  void AdjustFilename(QLabel* label) { lists_.AdjustFilename(label); }
  // Brings the help and data popups in line with the settings' mirrors.
  void LoadHelp();

  // ---- Selection and navigation --------------------------------------------
  void Form_KeyDown(int keyCode, int shift);
  void Form_KeyUp(int keyCode, int shift);
  void ThumbImage_KeyDown(int index, int keyCode, int shift);
  void VideoIcon_KeyDown(int index, int keyCode, int shift);
  void AudioIcon_KeyDown(int index, int keyCode, int shift);
  void DocumentIcon_KeyDown(int index, int keyCode, int shift);
  void CellGotFocus(int tab, int index);
  void ThumbImage_Click(int index);
  // A click on an icon or name of the list tabs: opens after a short delay.
  void IconCell_Click(int tab, int index);
  void CellMouseDown(int tab, int index, int button);
  void HideHighlight();
  void ShowHighlight1();
  void ShowHighlight2();
  void ShowHighlight3();
  void ShowHighlight4();
  void ShowHighlight(int tab);
  // Gives the focus to a cell of a tab; false when the cell is hidden or
  // does not exist.
  bool FocusCell(int tab, int cell);
  // The focus on the current cell of the current tab, if the tab has files.
  void FocusCurrentCell();
  // Makes the browser the active window of the main window's client area.
  void ComeForward();
  // Back to the default folder, or to the first page when already there.
  void GoHome();
  // ---- Opening -------------------------------------------------------------
  // Opens the current item of a tab (the delay timers and Enter come here).
  void OpenItem(int tab);
  void OpenPicture();
  void OpenVideo();
  void OpenAudio();
  void OpenDocument();

  // ---- The context menu and the file operations ------------------------------
  // Sets the menu up for the current item of the tab and shows it.
  void ShowContextMenu(int tab, int cell);
  void mnuRename_Click();
  void mnuCopy_Click();
  void mnuMove_Click();
  void mnuDelete_Click();
  void mnuPaint_Click();
  void mnuEmail_Click();
  void mnuPrint_Click();
  void mnuShoot_Click();
  void mnuClipboard_Click();
  void mnuSlideshow_Click();
  void mnuProperties_Click();
  void mnuMP3_Click();
  // The folder on display, "/" and the current entry of the current tab.
  QString GetCurrentPath() const;
  // Deletes the current item of the current tab (plainly, when it is the
  // second half of a move) and marks its cell; true when the file went.
  bool DeleteCurrentFile();

  // Switches the wheel off for the scroll bars of the first three tabs while
  // another window takes over, and puts it back afterwards.
  void SuspendMouseWheel() override;
  void ResumeMouseWheel() override;
  // The tooltip of the current item set again, and the current item renamed
  // (what the rename and properties windows ask).
  void RefreshCurrentTooltip() override;
  void CurrentEntryRenamed(const QString& entry) override;
  // What a viewer walking a tab's list asks of the cells.
  void HighlightItem(int tab, qint32 index) override;
  void MarkItemDeleted(int tab, qint32 index) override;
  void FocusCurrentItem() override;
  // The cell of the current item of a tab is removed: a picture cell shows
  // the deleted mark, a name reads "(Deleted)", and the tooltip goes.
  void MarkCurrentDeleted(int tab);

  // ---- State -----------------------------------------------------------------
  TabState& Tab(int tab) { return listing_.Tab(tab); }
  const PageLayout& Layout() const { return layout_; }
  // Whether pictures of the page on display are still being decoded.
  bool PageFilling() const { return pictures_.Filling(); }
  // The cell rectangle in twips as the fill left it (pictures), or of the
  // icon (list tabs).
  QRectF CellTwips(int tab, int cell) const;
  // A tab's cell (picture or icon), and the name beside an icon.
  QWidget* Cell(int tab, int cell) const;
  QLabel* Name(int tab, int cell) const { return lists_.Name(tab, cell); }
  int CellCount(int tab) const;
  BalloonHelp* Balloons() const { return strip_.Balloons; }

  // ---- Controls --------------------------------------------------------------
  NewTabControl* ThumbnailTabs = nullptr;
  std::array<ThumbnailScroll*, TabCount> VScroll{};
  std::array<QFrame*, 4> Highlight{};
  // One delay timer per tab between a click and the opening of the item.
  std::array<QTimer*, TabCount> DblClickDelay{};
  // The controls of the bottom strip and of the pages, under their names.
  std::array<QLabel*, TabCount>& CountLabel = strip_.CountLabel;
  std::array<QLabel*, TabCount>& PositionLabel = strip_.PositionLabel;
  std::array<NumberBox*, TabCount>& PositionNumber = strip_.PositionNumber;
  QFrame*& Separator = strip_.Separator;
  QLabel*& SizeLabel = strip_.SizeLabel;
  NumberBox*& ThumbnailSize = strip_.ThumbnailSize;
  QLabel*& InchLabel = strip_.InchLabel;
  QVector<NewImage*>& ThumbImage = pictures_.ThumbImage;
  ::LoadingMessage*& LoadingMessage = pictures_.LoadingMessage;
  // The context menu of the cells.
  ::MenuFile* Menu = nullptr;
  // Icons and names of the list tabs, indexed by tab - 2.
  std::array<QVector<QLabel*>, 3>& Icons = lists_.Icons;
  std::array<QVector<QLabel*>, 3>& Names = lists_.Names;

 signals:
  // What the browser shows: a folder, or an album by its name. The command
  // bar shows it; connected directly, so that the caption the bar shows is
  // there when the listing reads it.
  void Showing(const QString& folderOrAlbum, bool album);
  // The load has listed the default folder: the command bar shows its controls.
  void Listed();
  // The help popups were switched on or off.
  void PopupHelpChanged();
  // The browser came forward (its activation ran).
  void Activated();
  // An item to open: the tab and the list index.
  void ItemOpened(int tab, qint32 index);
  // The context menu of a cell: the tab and the list index.
  void ContextMenuRequested(int tab, qint32 index);
  // Every picture of the page on display is shown.
  void PageFilled(int tab);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;

 private:
  // The routines of each tab, by tab number: its fill and clear, the key
  // routine of its cells and its frame.
  struct TabRoutines;
  static const TabRoutines& RoutinesOf(int tab);
  void MakeControls();
  void PlaceControls();
  void FillPage(int tab);
  void ClearPage(int tab);
  bool InFront(int tab) const;
  void ShowIconHighlight(int tab);
  void ShowFrame(const FrameLines& frame);
  void CellKeyDown(int tab, int index, int keyCode, int shift);
  void EnterKey();
  void PositionEnter(int tab);
  void ThumbnailSizeEnter();
  void NumberBoxPressed(QWidget* box, int tab);
  void MoveCellsAside(int current);
  void MenuFile_Chosen(MenuEntry entry);
  // Asks for the target folder and copies the current item there, asking
  // again after a refused replace; false when nothing was copied.
  bool CopyToChosenFolder(const QString& mode);
  // The lower left corner of the current cell of the tab, in twips of the
  // main window's client area (where the windows over the cells are placed).
  QPoint BelowCurrentCell(int tab);
  // The tab whose cell (icon or picture) the widget is; 0 for any other.
  int CellTabOf(const QWidget* widget) const;
  // Takes the keys away from a cell about to hide, onto the window.
  void ParkFocus();
  // The folder or album on display as the command bar's caption shows it:
  // where dates, lengths and CD titles are read from.
  QString DisplayedCaption() const;

  bool helpShown_ = false, dataShown_ = false, helpLoaded_ = false;
  bool sizeFocus_ = false;
  std::array<bool, TabCount> positionFocus_{};
  std::array<bool, 3> suspendedWheel_{};
  int gotFocusRuns_ = 0;
};
