#include "browser/PicturePage.h"

#include <QApplication>
#include <QWidget>
#include <algorithm>

#include "browser/LoadingMessage.h"
#include "browser/PageTexts.h"
#include "catalogue/MediaPicture.h"
#include "controls/NewImage.h"
#include "core/AppState.h"
#include "platform/Twips.h"

using namespace pagegeometry;

PicturePage::PicturePage(QWidget* window, TabState& state, const PageLayout& layout,
                         std::function<bool()> inFront)
    : window_(window),
      state_(state),
      layout_(layout),
      inFront_(std::move(inFront)),
      loader_(new ThumbnailLoader(this)) {
  connect(loader_, &ThumbnailLoader::Ready, this, &PicturePage::PictureReady);
  connect(loader_, &ThumbnailLoader::Finished, this, &PicturePage::FillDone);
}

PicturePage::~PicturePage() { loader_->Cancel(); }

void PicturePage::MakeLoadingMessage() {
  LoadingMessage = new ::LoadingMessage(window_);
  LoadingMessage->hide();
}

void PicturePage::EnsureCells(int count, QObject* filter) {
  count = std::max(count, 1);
  while (ThumbImage.size() > count) delete ThumbImage.takeLast();
  while (ThumbImage.size() < count) {
    const int index = int(ThumbImage.size());
    auto* cell = new NewImage(window_);
    cell->setObjectName(QString("ThumbImage%1").arg(index));
    cell->setProperty("vistrelTab", PicturesTab);
    cell->setProperty("vistrelCell", index);
    cell->setFocusPolicy(Qt::NoFocus);
    cell->installEventFilter(filter);
    connect(cell, &NewImage::Click, this, [this, index] { emit Clicked(index); });
    connect(cell, &NewImage::MouseDown, this,
            [this, index](int button, int, int, int) { emit MouseDown(index, button); });
    cell->hide();
    ThumbImage.append(cell);
  }
  cells_.resize(ThumbImage.size());
}

void PicturePage::PlaceCells() {
  cells_.fill(QRectF(), ThumbImage.size());
  for (int cell = 0; cell < ThumbImage.size(); ++cell) {
    cells_[cell] = PictureCellRect(layout_, cell);
    ThumbImage[cell]->setGeometry(twips::ToPixels(cells_[cell]));
  }
}

void PicturePage::ShowCell(NewImage* cell) {
  if (!inFront_()) return;
  cell->show();
  cell->setFocusPolicy(Qt::StrongFocus);
}

void PicturePage::Fill() {
  const AppState& app = App();
  state_.PageFirst = state_.PageStart;
  state_.PageLast = 0;
  // Clearing drops what an earlier fill still had in hand, with its message.
  Clear();
  ShowLoadingMessage(true);

  requests_.clear();
  qint32 idx = state_.PageStart;
  for (int cell = 0; cell < state_.PageSize && cell < ThumbImage.size(); ++cell) {
    idx = state_.PageStart + cell;
    if (idx >= state_.Count) break;
    const QString entry = app.Entry(PicturesTab, idx);
    if (entry.isEmpty() || entry == QLatin1String("(Deleted)")) {
      ThumbImage[cell]->LoadDeleted();
      ShowCell(ThumbImage[cell]);
      continue;
    }
    requests_.append({cell, EntryPath(entry)});
    // The cell stands ready, empty, until its picture arrives, so that the
    // keys can reach it while the page fills; it shows nothing of the
    // picture an earlier page left in it.
    ThumbImage[cell]->LoadFile();
    ShowCell(ThumbImage[cell]);
  }
  state_.PageLast = std::min(idx, state_.Count - 1);
}

void PicturePage::Decode() {
  pending_ = int(requests_.size());
  if (requests_.isEmpty()) {
    FillDone();
    return;
  }
  const int cellPixels = std::max(twips::ToPixels(App().ThumbnailSizeTwips - CellMargin), 1);
  loader_->Start(requests_, int(cellPixels * window_->devicePixelRatioF()));
  requests_.clear();
}

void PicturePage::PictureReady(const ThumbnailResult& result) {
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
  QRectF& rect = cells_[cell];
  rect.setSize(size);
  image->setGeometry(twips::ToPixels(rect));
  image->LoadFile(result.Path, &shown);
  if (app.ShowPopupData) image->setToolTip(CellTooltip(PicturesTab, state_.PageFirst + cell));
  if (inFront_()) {
    ShowCell(image);
    // The frame stands around the cell's final size.
    if (state_.Highlighted && app.CurrentPicture() == state_.PageFirst + cell)
      emit CurrentCellSized();
  }
  if (pending_ > 0) --pending_;
}

void PicturePage::FillDone() {
  pending_ = 0;
  ShowLoadingMessage(false);
  emit Filled();
}

bool PicturePage::Filling() const { return loader_->Busy(); }

void PicturePage::ShowLoadingMessage(bool on) {
  if (!LoadingMessage) return;
  if (on) {
    LoadingMessage->Centre();
    LoadingMessage->raise();
    LoadingMessage->show();
  } else {
    LoadingMessage->hide();
  }
}

void PicturePage::Stop() {
  loader_->Cancel();
  pending_ = 0;
  ShowLoadingMessage(false);
}

void PicturePage::Clear() {
  Stop();
  const int edge = App().ThumbnailSizeTwips - CellMargin;
  // A cell about to hide hands the keys to the window, which holds them
  // until a cell takes them again.
  const QWidget* focus = QApplication::focusWidget();
  if (focus && std::find(ThumbImage.cbegin(), ThumbImage.cend(), focus) != ThumbImage.cend())
    window_->setFocus(Qt::OtherFocusReason);
  for (int cell = 0; cell < ThumbImage.size(); ++cell) {
    NewImage* image = ThumbImage[cell];
    image->hide();
    image->setFocusPolicy(Qt::NoFocus);
    cells_[cell].setSize(QSizeF(edge, edge));
    image->setGeometry(twips::ToPixels(cells_[cell]));
    image->setToolTip(QString());
  }
  if (!ThumbImage.isEmpty()) {
    ThumbImage[0]->LoadFile();
    ThumbImage[0]->Refresh();
  }
}

QRectF PicturePage::CellTwips(int cell) const {
  return cell >= 0 && cell < cells_.size() ? cells_[cell] : QRectF();
}

void PicturePage::SetDataTooltips(bool on) {
  const AppState& app = App();
  for (int cell = 0; cell < ThumbImage.size(); ++cell) {
    const qint32 index = state_.PageFirst + cell;
    QString tip;
    if (on && index < state_.Count && index <= state_.PageLast) {
      const QString entry = app.Entry(PicturesTab, index);
      if (!entry.isEmpty() && entry != QLatin1String("(Deleted)"))
        tip = CellTooltip(PicturesTab, index);
    }
    ThumbImage[cell]->setToolTip(tip);
  }
}

void PicturePage::MarkDeleted(int cell) {
  if (cell < 0 || cell >= ThumbImage.size()) return;
  const int edge = App().ThumbnailSizeTwips - CellMargin;
  cells_[cell].setSize(QSizeF(edge, edge));
  ThumbImage[cell]->setGeometry(twips::ToPixels(cells_[cell]));
  ThumbImage[cell]->LoadDeleted();
}
