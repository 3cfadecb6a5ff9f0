#include "browser/Thumbnails.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QResizeEvent>
#include <QTimer>
#include <algorithm>

#include "browser/CellIcons.h"
#include "browser/LoadingMessage.h"
#include "browser/PageTexts.h"
#include "browser/ThumbnailLoader.h"
#include "controls/BalloonHelp.h"
#include "catalogue/MediaTypes.h"
#include "catalogue/PathParts.h"
#include "controls/NewImage.h"
#include "controls/NewTabControl.h"
#include "controls/NumberBox.h"
#include "controls/PaintRoutines.h"
#include "controls/ThumbnailScroll.h"
#include "platform/Twips.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/Database.h"
#include "core/HelpTexts.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "core/WindowRegistry.h"

using namespace pagegeometry;

Thumbnails::Thumbnails(QWidget* parent) : QWidget(parent) {
  setObjectName("Thumbnails");
  setFocusPolicy(Qt::StrongFocus);
  MakeControls();
  balloons_ = new BalloonHelp(this);
  loader_ = new ThumbnailLoader(this);
  connect(loader_, &ThumbnailLoader::Ready, this, &Thumbnails::PictureReady);
  connect(loader_, &ThumbnailLoader::Finished, this, &Thumbnails::PictureFillDone);
  resize(900, 600);
}

Thumbnails::~Thumbnails() {
  if (loader_) loader_->Cancel();
}

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

  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    const size_t i = size_t(tab - 1);
    VScroll[i] = new ThumbnailScroll(this);
    VScroll[i]->setObjectName(QString("VScroll%1").arg(tab));
    VScroll[i]->SetMouseWheel(false);
    connect(VScroll[i], &ThumbnailScroll::Change, this,
            [this, tab](qint16 value) { VScroll_Change(tab, value); });
    CountLabel[i] = new QLabel(this);
    CountLabel[i]->setObjectName(QString("CountLabel%1").arg(tab));
    PositionLabel[i] = new QLabel("Position:", this);
    PositionLabel[i]->setObjectName(QString("PositionLabel%1").arg(tab));
    PositionLabel[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    PositionNumber[i] = new NumberBox(this);
    PositionNumber[i]->setObjectName(QString("PositionNumber%1").arg(tab));
    PositionNumber[i]->SetFormat("##,###");
    PositionNumber[i]->SetPositiveOnly(true);
    PositionNumber[i]->SetMinValue(0);
    PositionNumber[i]->SetMaxValue(2147483647);
    PositionNumber[i]->SetEnabled(false);
    PositionNumber[i]->txtNumber()->installEventFilter(this);
    PositionNumber[i]->installEventFilter(this);
    for (QWidget* w : {static_cast<QWidget*>(VScroll[i]), static_cast<QWidget*>(CountLabel[i]),
                       static_cast<QWidget*>(PositionLabel[i]),
                       static_cast<QWidget*>(PositionNumber[i])})
      w->hide();
    DblClickDelay[i] = new QTimer(this);
    DblClickDelay[i]->setInterval(150);
    DblClickDelay[i]->setSingleShot(true);
    connect(DblClickDelay[i], &QTimer::timeout, this, [this, tab] { OpenItem(tab); });
  }

  Separator = new QFrame(this);
  Separator->setObjectName("Separator");
  Separator->setFrameShape(QFrame::VLine);
  Separator->setFrameShadow(QFrame::Sunken);
  SizeLabel = new QLabel("Thumbnail Size:", this);
  SizeLabel->setObjectName("SizeLabel");
  SizeLabel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  ThumbnailSize = new NumberBox(this);
  ThumbnailSize->setObjectName("ThumbnailSize");
  ThumbnailSize->SetFormat("0.000");
  ThumbnailSize->SetPositiveOnly(true);
  ThumbnailSize->SetMinValue(0);
  ThumbnailSize->SetMaxValue(3);
  ThumbnailSize->txtNumber()->installEventFilter(this);
  ThumbnailSize->installEventFilter(this);
  InchLabel = new QLabel("inches", this);
  InchLabel->setObjectName("InchLabel");
  for (QWidget* w : {static_cast<QWidget*>(Separator), static_cast<QWidget*>(SizeLabel),
                     static_cast<QWidget*>(ThumbnailSize), static_cast<QWidget*>(InchLabel)})
    w->hide();

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
  LoadingMessage = new ::LoadingMessage(this);
  LoadingMessage->hide();
}

// ---- Layout -------------------------------------------------------------------

void Thumbnails::ChangeFormSize() {
  AppState& app = App();
  // Reset: every cell but the first goes, the first of each array hides.
  loader_->Cancel();
  pendingPictures_ = 0;
  ShowLoadingMessage(false);
  EnsureCells(PicturesTab, 1);
  for (int tab = VideosTab; tab <= DocumentsTab; ++tab) EnsureCells(tab, 1);
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    if (QWidget* cell = Cell(tab, 0)) cell->hide();
    if (QLabel* name = Name(tab, 0)) name->hide();
  }
  for (QFrame* line : Highlight) line->hide();
  for (size_t i = 0; i < TabCount; ++i) {
    CountLabel[i]->hide();
    PositionLabel[i]->hide();
    PositionNumber[i]->hide();
  }
  SizeLabel->hide();
  InchLabel->hide();
  app.CurrentPicture = app.CurrentVideo = app.CurrentAudio = app.CurrentDocument = 0;

  layout_ = LayOutPage(twips::FromPixels(width()), twips::FromPixels(height()),
                       app.ThumbnailSizeTwips);
  PlaceControls();
  Tab(PicturesTab).PageSize = qint16(layout_.PicturePageSize);
  Tab(VideosTab).PageSize = qint16(layout_.ListPageSize);
  Tab(AudiosTab).PageSize = Tab(VideosTab).PageSize;
  Tab(DocumentsTab).PageSize = qint16(layout_.ListPageSize);
  EnsureCells(PicturesTab, layout_.PicturePageSize);
  for (int tab = VideosTab; tab <= DocumentsTab; ++tab) EnsureCells(tab, layout_.ListPageSize);
  pictureCells_.fill(QRectF(), ThumbImage.size());
  for (int cell = 0; cell < ThumbImage.size(); ++cell) {
    pictureCells_[cell] = PictureCellRect(layout_, cell);
    ThumbImage[cell]->setGeometry(twips::ToPixels(pictureCells_[cell]));
  }
  for (int tab = VideosTab; tab <= DocumentsTab; ++tab) {
    const auto& icons = Icons[size_t(tab - 2)];
    const auto& names = Names[size_t(tab - 2)];
    for (int cell = 0; cell < icons.size(); ++cell) {
      icons[cell]->setGeometry(twips::ToPixels(IconCellRect(layout_, cell)));
      names[cell]->setGeometry(twips::ToPixels(NameCellRect(layout_, cell)));
    }
  }
  MoveCellsAside(currentTab_);
}

void Thumbnails::PlaceControls() {
  const PageLayout& l = layout_;
  ThumbnailTabs->setGeometry(twips::ToPixels(l.Tabs));
  ThumbnailTabs->lower();
  const int textHeight = twips::FromPixels(fontMetrics().height()) + LabelHeightMargin * 2;
  for (size_t i = 0; i < TabCount; ++i) {
    VScroll[i]->setGeometry(twips::ToPixels(l.Scroll));
    CountLabel[i]->setGeometry(
        twips::ToPixels(QRectF(l.Tabs.left() + FirstCellLeft, l.CountTop, 4200, textHeight)));
    PositionLabel[i]->setGeometry(
        twips::ToPixels(QRectF(l.PositionLabelX, l.CountTop, PositionLabelWidth, textHeight)));
    PositionNumber[i]->setGeometry(twips::ToPixels(
        QRectF(l.PositionLabelX + PositionLabelWidth + LabelGap, l.CountTop - 30, PositionBoxWidth,
               textHeight + 60)));
  }
  // The size group: its labels as wide as their texts, the whole centred.
  const auto textWidth = [this](const QLabel* label) {
    return twips::FromPixels(label->fontMetrics().horizontalAdvance(label->text())) + 45;
  };
  const int sizeLabelWidth = textWidth(SizeLabel);
  const int inchLabelWidth = textWidth(InchLabel);
  const int sizeBoxWidth = 900;
  const int groupLeft =
      SizeGroupLeft(l, sizeLabelWidth + LabelGap + sizeBoxWidth + LabelGap + inchLabelWidth);
  SizeLabel->setGeometry(
      twips::ToPixels(QRectF(groupLeft, l.CountTop, sizeLabelWidth, textHeight)));
  const int boxLeft = groupLeft + sizeLabelWidth + LabelGap;
  ThumbnailSize->setGeometry(
      twips::ToPixels(QRectF(boxLeft, l.CountTop - 30, sizeBoxWidth, textHeight + 60)));
  InchLabel->setGeometry(twips::ToPixels(
      QRectF(boxLeft + sizeBoxWidth + LabelGap, l.CountTop, inchLabelWidth, textHeight)));
  Separator->setGeometry(twips::ToPixels(QRectF(l.SeparatorX, l.Box.top(), 45, l.Box.height())));
  if (LoadingMessage) LoadingMessage->Centre();
}

void Thumbnails::EnsureCells(int tab, int count) {
  count = std::max(count, 1);
  if (tab == PicturesTab) {
    while (ThumbImage.size() > count) delete ThumbImage.takeLast();
    while (ThumbImage.size() < count) {
      const int index = int(ThumbImage.size());
      auto* cell = new NewImage(this);
      cell->setObjectName(QString("ThumbImage%1").arg(index));
      cell->setProperty("vistrelTab", PicturesTab);
      cell->setProperty("vistrelCell", index);
      cell->setFocusPolicy(Qt::NoFocus);
      cell->installEventFilter(this);
      connect(cell, &NewImage::Click, this, [this, cell] {
        ThumbImage_Click(cell->property("vistrelCell").toInt());
      });
      connect(cell, &NewImage::MouseDown, this, [this, cell](int button, int, int, int) {
        CellMouseDown(PicturesTab, cell->property("vistrelCell").toInt(), button);
      });
      cell->hide();
      ThumbImage.append(cell);
    }
    pictureCells_.resize(ThumbImage.size());
    return;
  }
  auto& icons = Icons[size_t(tab - 2)];
  auto& names = Names[size_t(tab - 2)];
  while (icons.size() > count) {
    delete icons.takeLast();
    delete names.takeLast();
  }
  const int iconPixels = twips::ToPixels(IconSize);
  while (icons.size() < count) {
    const int index = int(icons.size());
    auto* icon = new QLabel(this);
    icon->setObjectName(QString("%1Icon%2").arg(TabWord(tab).chopped(1)).arg(index));
    icon->setPixmap(CellIcon(tab, iconPixels, devicePixelRatioF()));
    icon->setScaledContents(true);
    auto* name = new QLabel(this);
    name->setObjectName(QString("%1Name%2").arg(TabWord(tab).chopped(1)).arg(index));
    name->setTextFormat(Qt::PlainText);
    for (QLabel* w : {icon, name}) {
      w->setProperty("vistrelTab", tab);
      w->setProperty("vistrelCell", index);
      w->installEventFilter(this);
      w->hide();
    }
    icon->setFocusPolicy(Qt::NoFocus);
    icons.append(icon);
    names.append(name);
  }
}

void Thumbnails::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (LoadingMessage) LoadingMessage->Centre();
}

// ---- Loading and listing -------------------------------------------------------

void Thumbnails::Form_Load() {
  AppState& app = App();
  app.ThumbnailSizeTwips = qint16(settings::GetInt("ThumbnailSize", 1440));
  ThumbnailSize->SetValue(QString::number(app.ThumbnailSizeTwips / 1440.0, 'f', 3));

  app.AlbumMode = false;
  ChangeFormSize();

  app.ViewerProgramPath = JoinPath(app.ProgramFolder, "Lorvane");
  app.ManagerProgramPath = JoinPath(app.ProgramFolder, "Vistrel");
  QDir(app.ProgramFolder).mkdir("MyMedia");

  FillExteriorTables();

  QString folder = settings::GetSetting("DefaultFolder", settings::MyMediaFolder());
  while (folder.size() > 1 && folder.endsWith('/')) folder.chop(1);
  if (!QFileInfo(folder).isDir()) folder = settings::MyMediaFolder();
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
    const size_t i = size_t(tab - 1);
    Tab(tab).Count = 0;
    ThumbnailTabs->SetCaption(tab, TabWord(tab));
    VScroll[i]->hide();
    CountLabel[i]->hide();
    PositionLabel[i]->hide();
    PositionNumber[i]->hide();
  }
  Separator->hide();
  SizeLabel->hide();
  ThumbnailSize->hide();
  InchLabel->hide();

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

int Thumbnails::CurrentTab() const { return currentTab_; }

qint32& Thumbnails::CurrentIndex(int tab) {
  AppState& app = App();
  switch (tab) {
    case VideosTab:
      return app.CurrentVideo;
    case AudiosTab:
      return app.CurrentAudio;
    case DocumentsTab:
      return app.CurrentDocument;
    default:
      return app.CurrentPicture;
  }
}

void Thumbnails::VScroll_Change(int index, int value) {
  if (index < PicturesTab || index > DocumentsTab) return;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  TabState& state = Tab(index);
  if (state.Count < 1) {
    CountLabel[size_t(index - 1)]->setText(EmptyCountText(index));
    ThumbnailTabs->SetCaption(index, TabCaption(index, 0));
    ClearPage(index);
  } else {
    // A cell of this tab that had the keys hands them to the first cell of
    // the new page, which becomes the current item.
    const bool hadFocus = CellTabOf(QApplication::focusWidget()) == index;
    state.PageStart = qint32(value) * state.PageSize;
    FillPage(index);
    CurrentIndex(index) = state.PageFirst;
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
  if (item >= state.PageFirst && item <= state.PageLast) CurrentIndex(tab) = item;
}

// ---- Tabs ----------------------------------------------------------------------

void Thumbnails::ThumbnailTabs_Click(int previous, int current) {
  if (current < PicturesTab || current > DocumentsTab) return;
  currentTab_ = current;
  HideHighlight();
  if (previous >= PicturesTab && previous <= DocumentsTab && previous != current) {
    const size_t p = size_t(previous - 1);
    VScroll[p]->hide();
    CountLabel[p]->hide();
    PositionLabel[p]->hide();
    PositionNumber[p]->hide();
    VScroll[p]->SetMouseWheel(false);
  }
  const size_t c = size_t(current - 1);
  TabState& state = Tab(current);
  VScroll[c]->show();
  VScroll[c]->SetMouseWheel(true);
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
  PositionNumber[c]->SetEnabled(paging);
  MoveCellsAside(current);
  if (state.Count < 1) {
    QCoreApplication::processEvents();
    HideHighlight();
    Separator->hide();
  } else {
    // The keys go on from the current cell of the tab that came forward;
    // taking the focus also puts the frame on it.
    if (!FocusCell(current, CurrentIndex(current) - state.PageFirst)) ShowHighlight(current);
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
  if (tab == PicturesTab) return int(ThumbImage.size());
  if (tab < VideosTab || tab > DocumentsTab) return 0;
  return int(Icons[size_t(tab - 2)].size());
}

QWidget* Thumbnails::Cell(int tab, int cell) const {
  if (cell < 0 || cell >= CellCount(tab)) return nullptr;
  if (tab == PicturesTab) return ThumbImage[cell];
  return Icons[size_t(tab - 2)][cell];
}

QLabel* Thumbnails::Name(int tab, int cell) const {
  if (tab < VideosTab || tab > DocumentsTab || cell < 0 || cell >= CellCount(tab)) return nullptr;
  return Names[size_t(tab - 2)][cell];
}

QRectF Thumbnails::CellTwips(int tab, int cell) const {
  if (tab == PicturesTab)
    return cell >= 0 && cell < pictureCells_.size() ? pictureCells_[cell] : QRectF();
  return IconCellRect(layout_, cell);
}

QString Thumbnails::DisplayedCaption() const {
  if (const BarCommands* bar = CommandBarCommands()) return bar->DirectoryCaption();
  return App().CurrentFolder;
}

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
