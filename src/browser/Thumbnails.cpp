#include "browser/Thumbnails.h"

#include "browser/MenuFile.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFrame>
#include <QLabel>
#include <QResizeEvent>
#include <QTimer>
#include <algorithm>

#include "browser/AccessibleBrowser.h"
#include "browser/LoadingMessage.h"
#include "browser/PageTexts.h"
#include "catalogue/CdDrives.h"
#include "catalogue/MediaTypes.h"
#include "catalogue/PathParts.h"
#include "controls/NewImage.h"
#include "controls/NewTabControl.h"
#include "controls/ThumbnailScroll.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "core/WindowRegistry.h"
#include "platform/Twips.h"

using namespace pagegeometry;

Thumbnails::Thumbnails(QWidget* parent)
    : QWidget(parent),
      pictures_(this, listing_.Tab(PicturesTab), layout_, [this] { return InFront(PicturesTab); }),
      lists_(this, listing_, layout_, [this](int tab) { return InFront(tab); }) {
  setObjectName("Thumbnails");
  setFocusPolicy(Qt::StrongFocus);
  MakeControls();
  connect(&pictures_, &PicturePage::Clicked, this, &Thumbnails::ThumbImage_Click);
  connect(&pictures_, &PicturePage::MouseDown, this,
          [this](int cell, int button) { CellMouseDown(PicturesTab, cell, button); });
  connect(&pictures_, &PicturePage::CurrentCellSized, this, &Thumbnails::ShowHighlight1);
  connect(&pictures_, &PicturePage::Filled, this, [this] { emit PageFilled(PicturesTab); });
  resize(900, 600);
}

// The picture page drops the pictures still being decoded as it goes.
Thumbnails::~Thumbnails() = default;

bool Thumbnails::InFront(int tab) const { return !App().RefitInProgress && currentTab_ == tab; }

void Thumbnails::MakeControls() {
  ThumbnailTabs = new NewTabControl(this);
  ThumbnailTabs->setObjectName("ThumbnailTabs");
  ThumbnailTabs->SetTabs(4);
  ThumbnailTabs->SetGradient(true);
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab)
    ThumbnailTabs->SetCaption(tab, TabWord(tab));
  connect(ThumbnailTabs, &NewTabControl::Click, this,
          [this](qint16& newTab, qint16& previousTab) {
            currentTab_ = newTab;
            ThumbnailTabs_Click(previousTab, newTab);
          });
  // A screen reader hears each tab's count as the bottom strip gives it.
  accessible::InstallBrowser();
  ThumbnailTabs->SetTabDescription([this](int tab) {
    const TabState& state = Tab(tab);
    if (state.Count < 1) return EmptyCountText(tab);
    return PageCountText(tab, state.PageStart, state.PageSize, state.Count);
  });

  // The controls are made in the window's stacking and focus order: each
  // tab's scroll bar and its part of the bottom strip, then the size group.
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    const size_t i = size_t(tab - 1);
    VScroll[i] = new ThumbnailScroll(this);
    VScroll[i]->SetBackColor(ToOleColor(App().ColorDarkGrey));
    VScroll[i]->SetArrowColor(ToOleColor(App().ColorLightGrey));
    VScroll[i]->setObjectName(QString("VScroll%1").arg(tab));
    VScroll[i]->SetMouseWheel(false);
    connect(VScroll[i], &ThumbnailScroll::Change, this,
            [this, tab](qint16 value) { VScroll_Change(tab, value); });
    strip_.MakeTab(this, tab, this);
    VScroll[i]->hide();
    DblClickDelay[i] = new QTimer(this);
    DblClickDelay[i]->setInterval(150);
    DblClickDelay[i]->setSingleShot(true);
    connect(DblClickDelay[i], &QTimer::timeout, this, [this, tab] { OpenItem(tab); });
  }
  // The menu's entries run once the menu has closed.
  Menu = new ::MenuFile(this);
  connect(Menu, &::MenuFile::Chosen, this, &Thumbnails::MenuFile_Chosen, Qt::QueuedConnection);
  strip_.MakeSizeGroup(this, this);

  for (size_t i = 0; i < Highlight.size(); ++i) {
    Highlight[i] = new QFrame(this);
    Highlight[i]->setObjectName(QString("Highlight%1").arg(i));
    Highlight[i]->setAutoFillBackground(true);
    QPalette red = Highlight[i]->palette();
    red.setColor(QPalette::Window, QColor(255, 0, 0));
    Highlight[i]->setPalette(red);
    Highlight[i]->setAttribute(Qt::WA_TransparentForMouseEvents);
    Highlight[i]->hide();
  }
  pictures_.MakeLoadingMessage();
}

// ---- Layout -------------------------------------------------------------------

void Thumbnails::ChangeFormSize() {
  AppState& app = App();
  // Reset: every cell but the first goes, the first of each array hides.
  pictures_.Stop();
  pictures_.EnsureCells(1, this);
  for (int tab = VideosTab; tab <= DocumentsTab; ++tab) lists_.EnsureCells(tab, 1, this);
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    if (QWidget* cell = Cell(tab, 0)) cell->hide();
    if (QLabel* name = Name(tab, 0)) name->hide();
  }
  for (QFrame* line : Highlight) line->hide();
  strip_.HideForLayout();
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) app.Current(tab) = 0;

  layout_ = LayOutPage(twips::FromPixels(width()), twips::FromPixels(height()),
                       app.ThumbnailSizeTwips);
  PlaceControls();
  Tab(PicturesTab).PageSize = qint16(layout_.PicturePageSize);
  Tab(VideosTab).PageSize = qint16(layout_.ListPageSize);
  Tab(AudiosTab).PageSize = Tab(VideosTab).PageSize;
  Tab(DocumentsTab).PageSize = qint16(layout_.ListPageSize);
  pictures_.EnsureCells(layout_.PicturePageSize, this);
  for (int tab = VideosTab; tab <= DocumentsTab; ++tab)
    lists_.EnsureCells(tab, layout_.ListPageSize, this);
  pictures_.PlaceCells();
  lists_.PlaceCells();
  MoveCellsAside(currentTab_);
}

void Thumbnails::PlaceControls() {
  const PageLayout& l = layout_;
  ThumbnailTabs->setGeometry(twips::ToPixels(l.Tabs));
  ThumbnailTabs->lower();
  for (ThumbnailScroll* bar : VScroll) bar->setGeometry(twips::ToPixels(l.Scroll));
  strip_.Place(l, twips::FromPixels(fontMetrics().height()) + LabelHeightMargin * 2);
  if (LoadingMessage) LoadingMessage->Centre();
}

void Thumbnails::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (LoadingMessage) LoadingMessage->Centre();
}

// ---- Loading and listing -------------------------------------------------------

void Thumbnails::Form_Load() {
  AppState& app = App();
  app.ThumbnailSizeTwips = qint16(settings::GetInt("ThumbnailSize", 1440));
  strip_.ShowThumbnailSize(app.ThumbnailSizeTwips);

  app.AlbumMode = false;
  ChangeFormSize();

  app.ViewerProgramPath = JoinPath(app.ProgramFolder, "Lorvane");
  app.ManagerProgramPath = JoinPath(app.ProgramFolder, "Vistrel");
  // "MyMedia" beside the program; a read-only program folder's stand-in is
  // the user's own folder, which is there already.
  QDir().mkdir(settings::MyMediaFolder());

  FillExteriorTables();

  QString folder = settings::GetSetting("DefaultFolder", settings::MyMediaFolder());
  while (folder.size() > 1 && folder.endsWith('/')) folder.chop(1);
  if (!IsBrowsableFolder(folder)) folder = settings::MyMediaFolder();
  app.CurrentFolder = folder;
  app.LastTargetFolder = folder;
  emit Showing(folder, false);

  ChangePattern();
  emit Listed();
}

void Thumbnails::ChangePattern() {
  listing_.ReadSelection();
  ChangeDirectory();
}

void Thumbnails::ChangeDirectory() {
  AppState& app = App();
  if (!app.RefitInProgress) {
    // An audio keeps playing in its minimised viewer; the picture and video
    // viewers would show a file of the former list.
    if (QWidget* audio = Windows().Find(WindowId::SingleAudio)) audio->showMinimized();
    Windows().Unload(WindowId::SingleVideo);
    Windows().Unload(WindowId::SingleImage);
  }
  HideHighlight();
  // The tab strip stays out of reach while the lists are rebuilt.
  ThumbnailTabs->hide();
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    Tab(tab).Count = 0;
    ThumbnailTabs->SetCaption(tab, TabWord(tab));
    VScroll[size_t(tab - 1)]->hide();
    strip_.HideTab(tab);
  }
  strip_.HideSizeGroup();

  const QString keyFolder = DisplayedCaption();
  const auto albumRows = [&app] {
    return app.DatabaseConnection ? SelectPlaylistFiles(*app.DatabaseConnection, app.SelectedAlbumId)
                                  : QStringList();
  };
  listing_.BuildLists(keyFolder, albumRows, [this](int tab) {
    ThumbnailScroll* bar = VScroll[size_t(tab - 1)];
    {
      // A lower maximum may pull the value down; the page is filled below.
      const QSignalBlocker quiet(bar);
      bar->SetMax(ScrollMax(Tab(tab).Count, Tab(tab).PageSize));
    }
    if (bar->Value() < 1) {
      VScroll_Change(tab, 0);
    } else {
      bar->SetValue(0);
    }
  });

  if (!app.RefitInProgress) {
    const int tab = TabToShow(listing_.Tabs);
    if (Tab(PicturesTab).Count < 1)
      for (TabState& state : listing_.Tabs) state.Highlighted = false;
    SetCurrentTab(tab);
    QCoreApplication::processEvents();
  }
  ThumbnailTabs->show();
  ThumbnailTabs->lower();
}

void Thumbnails::SetCurrentTab(int tab) {
  if (tab < PicturesTab || tab > DocumentsTab) return;
  // Setting the tab control's current tab raises its Click, which brings
  // the tab forward.
  ThumbnailTabs->SetCurrentTab(qint16(tab));
}

void Thumbnails::VScroll_Change(int index, int value) {
  if (index < PicturesTab || index > DocumentsTab) return;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  TabState& state = Tab(index);
  if (state.Count < 1) {
    strip_.ShowEmptyCount(index);
    ThumbnailTabs->SetCaption(index, TabCaption(index, 0));
    ClearPage(index);
  } else {
    // A cell of this tab that had the keys hands them to the first cell of
    // the new page, which becomes the current item.
    const bool hadFocus = CellTabOf(QApplication::focusWidget()) == index;
    state.PageStart = qint32(value) * state.PageSize;
    FillPage(index);
    App().Current(index) = state.PageFirst;
    if (hadFocus) FocusCell(index, 0);
  }
  QApplication::restoreOverrideCursor();
}

void Thumbnails::ShowItemPage(int tab, qint32 item) {
  if (tab < PicturesTab || tab > DocumentsTab) return;
  TabState& state = Tab(tab);
  ThumbnailScroll* bar = VScroll[size_t(tab - 1)];
  {
    const QSignalBlocker quiet(bar);
    bar->SetMax(ScrollMax(state.Count, state.PageSize));
    bar->SetValue(state.PageSize > 0 ? std::max(item, 0) / state.PageSize : 0);
  }
  VScroll_Change(tab, bar->Value());
  if (item >= state.PageFirst && item <= state.PageLast) App().Current(tab) = item;
}

// ---- Tabs ----------------------------------------------------------------------

void Thumbnails::ThumbnailTabs_Click(int previous, int current) {
  if (current < PicturesTab || current > DocumentsTab) return;
  currentTab_ = current;
  HideHighlight();
  if (previous >= PicturesTab && previous <= DocumentsTab && previous != current) {
    const size_t p = size_t(previous - 1);
    VScroll[p]->hide();
    strip_.HideTab(previous);
    VScroll[p]->SetMouseWheel(false);
  }
  const size_t c = size_t(current - 1);
  TabState& state = Tab(current);
  VScroll[c]->show();
  VScroll[c]->SetMouseWheel(true);
  if (state.Count == 0) state.PageLast = 0;
  strip_.ShowTab(current, state);
  MoveCellsAside(current);
  if (state.Count < 1) {
    QCoreApplication::processEvents();
    HideHighlight();
    Separator->hide();
  } else {
    // The keys go on from the current cell of the tab that came forward;
    // taking the focus also puts the frame on it.
    if (!FocusCell(current, App().Current(current) - state.PageFirst)) ShowHighlight(current);
  }
  QCoreApplication::processEvents();
}

void Thumbnails::MoveCellsAside(int current) {
  // The four sets of cells share one area: those of the other tabs are
  // hidden and out of the focus chain; those of the tab in front show as
  // far as its page is filled. The focus leaves a cell before it hides, and
  // every cell is out of the chain before any hides, so that the focus is
  // not handed along the cells, making each current in turn.
  if (CellTabOf(QApplication::focusWidget()) != 0) ParkFocus();
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    const TabState& state = Tab(tab);
    for (int cell = 0; cell < CellCount(tab); ++cell) {
      const bool filled = tab == current && state.Count > 0 && state.PageFirst + cell <= state.PageLast;
      Cell(tab, cell)->setFocusPolicy(filled ? Qt::StrongFocus : Qt::NoFocus);
    }
  }
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    const TabState& state = Tab(tab);
    for (int cell = 0; cell < CellCount(tab); ++cell) {
      const bool filled = tab == current && state.Count > 0 && state.PageFirst + cell <= state.PageLast;
      Cell(tab, cell)->setVisible(filled);
      if (QLabel* name = Name(tab, cell)) name->setVisible(filled);
    }
  }
}

int Thumbnails::CellTabOf(const QWidget* widget) const {
  if (!widget || widget->parentWidget() != this) return 0;
  const QVariant tab = widget->property("vistrelTab");
  return tab.isValid() ? tab.toInt() : 0;
}

void Thumbnails::ParkFocus() {
  // The window itself holds the keys until a cell takes them again.
  setFocus(Qt::OtherFocusReason);
}

int Thumbnails::CellCount(int tab) const {
  return tab == PicturesTab ? int(ThumbImage.size()) : lists_.CellCount(tab);
}

QWidget* Thumbnails::Cell(int tab, int cell) const {
  if (tab != PicturesTab) return lists_.Icon(tab, cell);
  return cell >= 0 && cell < ThumbImage.size() ? ThumbImage[cell] : nullptr;
}

QRectF Thumbnails::CellTwips(int tab, int cell) const {
  if (tab == PicturesTab) return pictures_.CellTwips(cell);
  return IconCellRect(layout_, cell);
}

QString Thumbnails::DisplayedCaption() const {
  if (const BarCommands* bar = CommandBarCommands()) return bar->DirectoryCaption();
  return App().CurrentFolder;
}

int Thumbnails::PageShown(int tab) const { return VScroll[size_t(tab - 1)]->Value(); }

void Thumbnails::PagePrevious() {
  ThumbnailScroll* scroll = VScroll[size_t(CurrentTab() - 1)];
  if (scroll->Value() > 0) scroll->SetValue(scroll->Value() - 1);
}

void Thumbnails::PageNext() {
  ThumbnailScroll* scroll = VScroll[size_t(CurrentTab() - 1)];
  if (scroll->Value() < scroll->Max()) scroll->SetValue(scroll->Value() + 1);
}

void Thumbnails::PageLast() {
  ThumbnailScroll* scroll = VScroll[size_t(CurrentTab() - 1)];
  scroll->SetValue(scroll->Max());
}
