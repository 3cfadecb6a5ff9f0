#include "browser/Thumbnails.h"

#include <QApplication>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QResizeEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "browser/PageTexts.h"
#include "catalogue/MediaTypes.h"
#include "catalogue/PathParts.h"
#include "platform/Twips.h"
#include "shell/AppState.h"
#include "shell/Database.h"
#include "shell/Settings.h"
#include "shell/Statements.h"
#include "shell/WindowRegistry.h"

namespace {

// Height of an icon of the list tabs, and the room the tab strip and the
// bottom strip take from the window (twips).
constexpr int IconHeightTwips = 480;
constexpr int TabStripTwips = 450;
constexpr int BottomStripTwips = 600;
constexpr int ScrollBarTwips = 360;

}  // namespace

PageSizes PageSizesFor(int widthTwips, int heightTwips, int thumbnailTwips) {
  const int cell = std::max(thumbnailTwips, 1);
  const int columns = std::max((widthTwips - 120) / cell, 1);
  const int rows = std::max((heightTwips - 120) / cell, 1);
  const int iconRows = std::max((heightTwips - 120) / (IconHeightTwips + 60), 1);
  PageSizes sizes;
  sizes.Pictures = qint16(std::min(columns * rows, 32767));
  sizes.Lists = qint16(std::min(2 * iconRows, 32767));
  return sizes;
}

Thumbnails::Thumbnails(QWidget* parent) : QWidget(parent) {
  setObjectName("Thumbnails");
  ThumbnailTabs = new QTabWidget(this);
  ThumbnailTabs->setObjectName("ThumbnailTabs");
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    const size_t i = size_t(tab - 1);
    auto* page = new QWidget;
    auto* pageLayout = new QHBoxLayout(page);
    pageLayout->setContentsMargins(4, 4, 4, 4);
    Pages[i] = new QListWidget(page);
    Pages[i]->setObjectName(TabWord(tab) + "Page");
    // Names run down two columns, as the icons of the list tabs do.
    Pages[i]->setFlow(QListView::TopToBottom);
    Pages[i]->setWrapping(true);
    Pages[i]->setResizeMode(QListView::Adjust);
    Pages[i]->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    Pages[i]->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    VScroll[i] = new QScrollBar(Qt::Vertical, page);
    VScroll[i]->setObjectName(QString("VScroll%1").arg(tab));
    VScroll[i]->setRange(0, 0);
    VScroll[i]->setPageStep(1);
    pageLayout->addWidget(Pages[i], 1);
    pageLayout->addWidget(VScroll[i]);
    ThumbnailTabs->addTab(page, TabWord(tab));
    connect(VScroll[i], &QScrollBar::valueChanged, this,
            [this, tab](int value) { VScroll_Change(tab, value); });
  }
  connect(ThumbnailTabs, &QTabWidget::currentChanged, this, &Thumbnails::TabsCurrentChanged);

  auto* strip = new QHBoxLayout;
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    const size_t i = size_t(tab - 1);
    CountLabel[i] = new QLabel(this);
    CountLabel[i]->setObjectName(QString("CountLabel%1").arg(tab));
    strip->addWidget(CountLabel[i]);
  }
  strip->addStretch(1);
  SizeLabel = new QLabel("Thumbnail size:", this);
  ThumbnailSize = new QDoubleSpinBox(this);
  ThumbnailSize->setObjectName("ThumbnailSize");
  ThumbnailSize->setDecimals(3);
  ThumbnailSize->setRange(0.5, 3.0);
  ThumbnailSize->setSingleStep(0.125);
  InchLabel = new QLabel("inches", this);
  strip->addWidget(SizeLabel);
  strip->addWidget(ThumbnailSize);
  strip->addWidget(InchLabel);
  strip->addStretch(1);
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    const size_t i = size_t(tab - 1);
    PositionLabel[i] = new QLabel("Go to page:", this);
    PositionNumber[i] = new QSpinBox(this);
    PositionNumber[i]->setRange(1, 2147483647);
    PositionNumber[i]->setGroupSeparatorShown(true);
    PositionNumber[i]->setEnabled(false);
    strip->addWidget(PositionLabel[i]);
    strip->addWidget(PositionNumber[i]);
  }

  // The line between the two columns of the list tabs.
  Separator = new QFrame(this);
  Separator->setFrameShape(QFrame::VLine);
  Separator->setFrameShadow(QFrame::Sunken);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addWidget(ThumbnailTabs, 1);
  layout->addLayout(strip);

  for (QWidget* w : {static_cast<QWidget*>(Separator), static_cast<QWidget*>(SizeLabel),
                     static_cast<QWidget*>(ThumbnailSize), static_cast<QWidget*>(InchLabel)})
    w->hide();
  for (size_t i = 0; i < TabCount; ++i) {
    VScroll[i]->hide();
    CountLabel[i]->hide();
    PositionLabel[i]->hide();
    PositionNumber[i]->hide();
  }
  resize(900, 600);
}

Thumbnails::~Thumbnails() {
  if (ownsCommandBar_ && commandBar_) delete commandBar_.data();
}

int Thumbnails::CurrentTab() const { return currentTab_; }

void Thumbnails::Form_Load() {
  AppState& app = App();
  // Cell 0 of the list tabs and the highlight frame.
  FirstIconPosition = QPoint(270, 270);
  FirstNamePosition = QPoint(630, 300);
  HighlightColor = QColor(255, 0, 0);

  app.ThumbnailSizeTwips = qint16(settings::GetInt("ThumbnailSize", 1440));
  ThumbnailSize->setValue(app.ThumbnailSizeTwips / 1440.0);

  app.AlbumMode = false;
  commandBar_ = Windows().Get<CommandBar>("CommandBar");
  if (!commandBar_) {
    commandBar_ = new CommandBar;
    ownsCommandBar_ = true;
    Windows().Loaded("CommandBar", commandBar_);
  }
  ChangeFormSize();

  app.ViewerProgramPath = JoinPath(app.ProgramFolder, "Lorvane");
  app.ManagerProgramPath = JoinPath(app.ProgramFolder, "Vistrel");
  QDir(app.ProgramFolder).mkdir("MyMedia");

  FillExteriorTables();

  QString folder = settings::GetSetting("DefaultFolder", settings::MyMediaFolder());
  while (folder.size() > 1 && folder.endsWith('/')) folder.chop(1);
  if (!QFileInfo(folder).isDir()) folder = settings::MyMediaFolder();
  app.CurrentFolder = folder;
  commandBar_->ShowDirectoryName(folder);

  ChangePattern();
  commandBar_->ShowControls();
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
    if (QWidget* audio = Windows().Find("SingleAudio")) audio->showMinimized();
    Windows().Unload("SingleVideo");
    Windows().Unload("SingleImage");
  }

  ThumbnailTabs->tabBar()->hide();
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    const size_t i = size_t(tab - 1);
    Tab(tab).Count = 0;
    ThumbnailTabs->setTabText(int(i), TabWord(tab));
    VScroll[i]->hide();
    CountLabel[i]->hide();
    PositionLabel[i]->hide();
    PositionNumber[i]->hide();
  }
  Separator->hide();
  SizeLabel->hide();
  ThumbnailSize->hide();
  InchLabel->hide();

  const QString keyFolder = commandBar_ ? commandBar_->DirectoryCaption() : app.CurrentFolder;
  const auto albumRows = [&app] {
    return app.DatabaseConnection ? SelectPlaylistFiles(*app.DatabaseConnection, app.SelectedAlbumId)
                                  : QStringList();
  };
  listing_.BuildLists(keyFolder, albumRows, [this](int tab) {
    QScrollBar* bar = VScroll[size_t(tab - 1)];
    {
      // A lower maximum may pull the value down; the page is filled below.
      const QSignalBlocker quiet(bar);
      bar->setMaximum(ScrollMax(Tab(tab).Count, Tab(tab).PageSize));
    }
    if (bar->value() < 1)
      VScroll_Change(tab, 0);
    else
      bar->setValue(0);
  });

  if (!app.RefitInProgress) {
    const int tab = TabToShow(listing_.Tabs);
    if (Tab(PicturesTab).Count < 1)
      for (TabState& state : listing_.Tabs) state.Highlighted = false;
    const int previous = currentTab_;
    {
      const QSignalBlocker quiet(ThumbnailTabs);
      ThumbnailTabs->setCurrentIndex(tab - 1);
    }
    currentTab_ = tab;
    ThumbnailTabs_Click(previous, tab);
    if (tab != PicturesTab) {
      Pages[size_t(tab - 1)]->setCurrentRow(0);
      Pages[size_t(tab - 1)]->setFocus();
    }
    QCoreApplication::processEvents();
  }
  ThumbnailTabs->tabBar()->show();
}

void Thumbnails::VScroll_Change(int index, int value) {
  if (index < PicturesTab || index > DocumentsTab) return;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  TabState& state = Tab(index);
  if (state.Count < 1) {
    CountLabel[size_t(index - 1)]->setText(EmptyCountText(index));
    ThumbnailTabs->setTabText(index - 1, TabCaption(index, 0));
    ClearPage(index);
  } else {
    state.PageStart = qint32(value) * state.PageSize;
    FillPage(index);
    SetCurrentItem(index, state.PageFirst);
  }
  QApplication::restoreOverrideCursor();
}

void Thumbnails::FillPage(int tab) {
  TabState& state = Tab(tab);
  const QStringList& files = Listing::Files(tab);
  const size_t i = size_t(tab - 1);
  CountLabel[i]->setText(PageCountText(tab, state.PageStart, state.PageSize, state.Count));
  state.PageFirst = state.PageStart;
  state.PageLast = 0;
  ClearPage(tab);
  const bool album = App().AlbumMode;
  const qint32 end = std::min<qint64>(state.Count, qint64(state.PageStart) + state.PageSize);
  for (qint32 index = state.PageStart; index < end && index < files.size(); ++index) {
    const QString& entry = files[index];
    const bool deleted =
        entry.isEmpty() || (tab == PicturesTab && entry == QLatin1String("(Deleted)"));
    Pages[i]->addItem(deleted ? QStringLiteral("(Deleted)") : album ? GetBaseName(entry) : entry);
  }
  state.PageLast = std::max(state.PageFirst, end - 1);
  ThumbnailTabs->setTabText(tab - 1, TabCaption(tab, state.Count));
}

void Thumbnails::ClearPage(int tab) { Pages[size_t(tab - 1)]->clear(); }

void Thumbnails::SetCurrentItem(int tab, qint32 index) {
  AppState& app = App();
  switch (tab) {
    case VideosTab:
      app.CurrentVideo = index;
      break;
    case AudiosTab:
      app.CurrentAudio = index;
      break;
    case DocumentsTab:
      app.CurrentDocument = index;
      break;
    default:
      app.CurrentPicture = index;
  }
}

void Thumbnails::TabsCurrentChanged(int index) {
  const int previous = currentTab_;
  currentTab_ = index + 1;
  ThumbnailTabs_Click(previous, currentTab_);
}

void Thumbnails::ThumbnailTabs_Click(int previous, int current) {
  if (current < PicturesTab || current > DocumentsTab) return;
  for (TabState& state : listing_.Tabs) state.Highlighted = false;
  if (previous >= PicturesTab && previous <= DocumentsTab && previous != current) {
    const size_t p = size_t(previous - 1);
    VScroll[p]->hide();
    CountLabel[p]->hide();
    PositionLabel[p]->hide();
    PositionNumber[p]->hide();
  }
  const size_t c = size_t(current - 1);
  TabState& state = Tab(current);
  VScroll[c]->show();
  CountLabel[c]->show();
  Separator->setVisible(current != PicturesTab && state.Count > 0);
  const bool sizeGroup = current == PicturesTab && state.Count > 0;
  for (QWidget* w : {static_cast<QWidget*>(SizeLabel), static_cast<QWidget*>(ThumbnailSize),
                     static_cast<QWidget*>(InchLabel)}) {
    w->setVisible(sizeGroup);
    w->setEnabled(sizeGroup);
  }
  if (state.Count == 0) state.PageLast = 0;
  const bool paging = state.Count > state.PageSize;
  PositionLabel[c]->setVisible(paging);
  PositionNumber[c]->setVisible(paging);
  PositionNumber[c]->setEnabled(paging);
  if (state.Count > 0) {
    const AppState& app = App();
    const qint32 currentItem = current == VideosTab      ? app.CurrentVideo
                               : current == AudiosTab    ? app.CurrentAudio
                               : current == DocumentsTab ? app.CurrentDocument
                                                         : app.CurrentPicture;
    Pages[c]->setCurrentRow(currentItem - state.PageFirst);
    if (current != PicturesTab) Pages[c]->setFocus();
  }
  QCoreApplication::processEvents();
}

void Thumbnails::ChangeFormSize() {
  // The room of one page: the window less the tab strip, the bottom strip
  // and the scroll bar.
  const int widthTwips = twips::FromPixels(width()) - ScrollBarTwips;
  const int heightTwips = twips::FromPixels(height()) - TabStripTwips - BottomStripTwips;
  const PageSizes sizes = PageSizesFor(widthTwips, heightTwips, App().ThumbnailSizeTwips);
  Tab(PicturesTab).PageSize = sizes.Pictures;
  Tab(VideosTab).PageSize = sizes.Lists;
  Tab(AudiosTab).PageSize = sizes.Lists;
  Tab(DocumentsTab).PageSize = sizes.Lists;
  App().CurrentPicture = App().CurrentVideo = App().CurrentAudio = App().CurrentDocument = 0;
  PlaceColumns();
}

void Thumbnails::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  PlaceColumns();
}

void Thumbnails::PlaceColumns() {
  // Two columns of names a page, with the separator between them. The tab
  // control's own size is known before its pages are laid out.
  const QRect box = ThumbnailTabs->geometry();
  const int strip = ThumbnailTabs->tabBar()->sizeHint().height();
  const int scrollBar = VScroll[0]->sizeHint().width();
  const int column = std::max((box.width() - scrollBar - 24) / 2, 40);
  for (QListWidget* list : Pages) list->setGridSize(QSize(column, list->fontMetrics().height() + 8));
  Separator->setGeometry(box.x() + 8 + column, box.y() + strip + 8, 3,
                         std::max(box.height() - strip - 16, 0));
  Separator->raise();
}
