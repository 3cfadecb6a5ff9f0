// The pages of the browser: filling a tab's page from its list, pictures
// through the thumbnail loader and names beside icons, and clearing it.

#include <QApplication>
#include <QLabel>

#include "browser/CdTitles.h"
#include "browser/LoadingMessage.h"
#include "browser/PageTexts.h"
#include "browser/ThumbnailLoader.h"
#include "browser/Thumbnails.h"
#include "catalogue/FileInfoText.h"
#include "catalogue/MediaPicture.h"
#include "catalogue/PathParts.h"
#include "controls/NewImage.h"
#include "controls/NewTabControl.h"
#include "platform/Twips.h"
#include "core/AppState.h"
#include "core/WindowRegistry.h"

using namespace pagegeometry;

void Thumbnails::FillPage(int tab) {
  switch (tab) {
    case PicturesTab:
      FillPicturePage();
      break;
    case VideosTab:
      FillVideoPage();
      break;
    case AudiosTab:
      FillAudioPage();
      break;
    default:
      FillDocumentPage();
  }
}

void Thumbnails::ClearPage(int tab) {
  switch (tab) {
    case PicturesTab:
      ClearPicturePage();
      break;
    case VideosTab:
      ClearVideoPage();
      break;
    case AudiosTab:
      ClearAudioPage();
      break;
    default:
      ClearDocumentPage();
  }
}

QString Thumbnails::EntryPath(const QString& entry) const {
  const AppState& app = App();
  if (app.AlbumMode) return entry;
  return JoinPath(app.CurrentFolder, entry);
}

void Thumbnails::FillPicturePage() {
  AppState& app = App();
  if (QWidget* viewer = Windows().Find(WindowId::SingleImage)) {
    viewer->hide();
    if (!app.RefitInProgress) Windows().Unload(WindowId::SingleImage);
  }
  HideHighlight();
  TabState& state = Tab(PicturesTab);
  CountLabel[0]->setText(PageCountText(PicturesTab, state.PageStart, state.PageSize, state.Count));
  state.PageFirst = state.PageStart;
  state.PageLast = 0;
  // Clearing drops what an earlier fill still had in hand, with its message.
  ClearPicturePage();
  ShowLoadingMessage(true);

  const QStringList& files = app.PictureFiles;
  QVector<ThumbnailRequest> requests;
  qint32 idx = state.PageStart;
  for (int cell = 0; cell < state.PageSize && cell < ThumbImage.size(); ++cell) {
    idx = state.PageStart + cell;
    if (idx >= state.Count) break;
    const QString entry = idx < files.size() ? files[idx] : QString();
    if (entry.isEmpty() || entry == QLatin1String("(Deleted)")) {
      ThumbImage[cell]->LoadDeleted();
      if (!app.RefitInProgress && currentTab_ == PicturesTab) {
        ThumbImage[cell]->show();
        ThumbImage[cell]->setFocusPolicy(Qt::StrongFocus);
      }
      continue;
    }
    requests.append({cell, EntryPath(entry)});
    // The cell stands ready, empty, until its picture arrives, so that the
    // keys can reach it while the page fills; it shows nothing of the
    // picture an earlier page left in it.
    ThumbImage[cell]->LoadFile();
    if (!app.RefitInProgress && currentTab_ == PicturesTab) {
      ThumbImage[cell]->show();
      ThumbImage[cell]->setFocusPolicy(Qt::StrongFocus);
    }
  }
  state.PageLast = std::min(idx, state.Count - 1);
  ThumbnailTabs->SetCaption(PicturesTab, TabCaption(PicturesTab, state.Count));
  pendingPictures_ = int(requests.size());
  if (requests.isEmpty()) {
    PictureFillDone();
    return;
  }
  const int cellPixels = std::max(twips::ToPixels(app.ThumbnailSizeTwips - CellMargin), 1);
  loader_->Start(requests, int(cellPixels * devicePixelRatioF()));
}

void Thumbnails::PictureReady(const ThumbnailResult& result) {
  const AppState& app = App();
  const int cell = result.Cell;
  if (cell < 0 || cell >= ThumbImage.size()) return;
  NewImage* image = ThumbImage[cell];
  QSize original = result.OriginalSize;
  if (!result.Ok || original.isEmpty()) original = result.Ok ? result.Image.size() : QSize();
  const QImage& shown = result.Ok ? result.Image : InvalidImagePicture();
  if (!result.Ok) original = InvalidImagePicture().size();
  // The cell keeps its width for a wide picture and its height for any
  // other; the other side shrinks in proportion.
  const QSizeF size = PictureCellSize(original.width(), original.height(), app.ThumbnailSizeTwips);
  QRectF& rect = pictureCells_[cell];
  rect.setSize(size);
  image->setGeometry(twips::ToPixels(rect));
  image->LoadFile(result.Path, &shown);
  if (app.ShowPopupData) {
    const qint32 index = Tab(PicturesTab).PageFirst + cell;
    image->setToolTip(CellTooltip(PicturesTab, index));
  }
  if (!app.RefitInProgress && currentTab_ == PicturesTab) {
    image->show();
    image->setFocusPolicy(Qt::StrongFocus);
    // The frame stands around the cell's final size.
    if (Tab(PicturesTab).Highlighted && app.CurrentPicture == Tab(PicturesTab).PageFirst + cell)
      ShowHighlight1();
  }
  if (pendingPictures_ > 0) --pendingPictures_;
}

void Thumbnails::PictureFillDone() {
  pendingPictures_ = 0;
  ShowLoadingMessage(false);
  emit PageFilled(PicturesTab);
}

bool Thumbnails::PageFilling() const { return loader_ && loader_->Busy(); }

void Thumbnails::ShowLoadingMessage(bool on) {
  if (!LoadingMessage) return;
  if (on) {
    LoadingMessage->Centre();
    LoadingMessage->raise();
    LoadingMessage->show();
  } else {
    LoadingMessage->hide();
  }
}

QString Thumbnails::CellTooltip(int tab, qint32 index) const {
  const AppState& app = App();
  const QStringList& files = Listing::Files(tab);
  if (index < 0 || index >= files.size()) return QString();
  const QString& entry = files[index];
  if (tab == AudiosTab && GetFileExtension(entry).compare("cda", Qt::CaseInsensitive) == 0)
    return "File:    " + entry + "\nType: CD Audio";
  // The name shown is the bare file name; the text is read from the file
  // itself, by its full path.
  if (app.AlbumMode) return FileInfoText(GetBaseName(entry), entry);
  return FileInfoText(entry, EntryPath(entry));
}

void Thumbnails::FillVideoPage() {
  AppState& app = App();
  if (QWidget* viewer = Windows().Find(WindowId::SingleVideo)) {
    viewer->hide();
    if (!app.RefitInProgress) Windows().Unload(WindowId::SingleVideo);
  }
  FillListPage(VideosTab);
}

void Thumbnails::FillAudioPage() {
  AppState& app = App();
  if (QWidget* viewer = Windows().Find(WindowId::SingleAudio); viewer && !app.RefitInProgress)
    viewer->showMinimized();
  // An audio CD's tracks take their titles when the disc's titles are known.
  cdTitlesKnown_ = false;
  cdTitles_.clear();
  if (!app.AudioFiles.isEmpty() &&
      GetFileExtension(app.AudioFiles.first()).compare("cda", Qt::CaseInsensitive) == 0) {
    const QString folder = DisplayedCaption();
    cdTitlesKnown_ = LookUpCdTitles(folder, cdTitles_);
  }
  FillListPage(AudiosTab);
}

void Thumbnails::FillDocumentPage() { FillListPage(DocumentsTab); }

void Thumbnails::FillListPage(int tab) {
  const AppState& app = App();
  TabState& state = Tab(tab);
  const size_t i = size_t(tab - 1);
  CountLabel[i]->setText(PageCountText(tab, state.PageStart, state.PageSize, state.Count));
  state.PageFirst = state.PageStart;
  state.PageLast = 0;
  ClearListPage(tab);
  const QStringList& files = Listing::Files(tab);
  const auto& icons = Icons[size_t(tab - 2)];
  const auto& names = Names[size_t(tab - 2)];
  qint32 idx = state.PageStart;
  for (int cell = 0; cell < state.PageSize && cell < icons.size(); ++cell) {
    idx = state.PageStart + cell;
    if (idx >= state.Count) break;
    const QString entry = idx < files.size() ? files[idx] : QString();
    QString name;
    if (entry.isEmpty())
      name = QStringLiteral("(Deleted)");
    else if (tab == AudiosTab && cdTitlesKnown_ && cell < cdTitles_.size())
      // The titles follow the cell's number on the page, not the entry's
      // number in the list: a second page starts again at the first title.
      name = cdTitles_[cell];
    else
      name = app.AlbumMode ? GetBaseName(entry) : entry;
    names[cell]->setText(name);
    AdjustFilename(names[cell]);
    if (app.ShowPopupData && !entry.isEmpty()) {
      const QString tip = CellTooltip(tab, idx);
      icons[cell]->setToolTip(tip);
      names[cell]->setToolTip(tip);
    }
    if (!app.RefitInProgress && currentTab_ == tab) {
      names[cell]->show();
      icons[cell]->show();
      icons[cell]->setFocusPolicy(Qt::StrongFocus);
    }
  }
  state.PageLast = std::min(idx, state.Count - 1);
  ThumbnailTabs->SetCaption(tab, TabCaption(tab, state.Count));
}

void Thumbnails::ClearPicturePage() {
  loader_->Cancel();
  pendingPictures_ = 0;
  ShowLoadingMessage(false);
  const int edge = App().ThumbnailSizeTwips - CellMargin;
  if (CellTabOf(QApplication::focusWidget()) == PicturesTab) ParkFocus();
  for (int cell = 0; cell < ThumbImage.size(); ++cell) {
    NewImage* image = ThumbImage[cell];
    image->hide();
    image->setFocusPolicy(Qt::NoFocus);
    pictureCells_[cell].setSize(QSizeF(edge, edge));
    image->setGeometry(twips::ToPixels(pictureCells_[cell]));
    image->setToolTip(QString());
  }
  if (!ThumbImage.isEmpty()) {
    ThumbImage[0]->LoadFile();
    ThumbImage[0]->Refresh();
  }
}

void Thumbnails::ClearVideoPage() { ClearListPage(VideosTab); }
void Thumbnails::ClearAudioPage() { ClearListPage(AudiosTab); }
void Thumbnails::ClearDocumentPage() { ClearListPage(DocumentsTab); }

void Thumbnails::ClearListPage(int tab) {
  const auto& icons = Icons[size_t(tab - 2)];
  const auto& names = Names[size_t(tab - 2)];
  if (CellTabOf(QApplication::focusWidget()) == tab) ParkFocus();
  for (int cell = 0; cell < icons.size(); ++cell) {
    names[cell]->hide();
    icons[cell]->hide();
    icons[cell]->setFocusPolicy(Qt::NoFocus);
    icons[cell]->setToolTip(QString());
    names[cell]->setToolTip(QString());
  }
}

void Thumbnails::AdjustFilename(QLabel* label) {
  if (!label) return;
  const QFontMetrics metrics(label->font());
  const auto widthOf = [&metrics](const QString& text) {
    return twips::FromPixels(metrics.horizontalAdvance(text));
  };
  QString text = label->text();
  int labelWidth = widthOf(text) + 45;
  if (labelWidth > layout_.NameWidth) labelWidth = layout_.NameWidth;
  while (!text.isEmpty() && widthOf(text) + 45 > labelWidth) text.chop(1);
  QRect geometry = label->geometry();
  geometry.setWidth(std::max(twips::ToPixels(labelWidth), 1));
  label->setGeometry(geometry);
  label->setText(text);
}

