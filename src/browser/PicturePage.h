#pragma once
// The page of the Pictures tab: a grid of picture cells (ThumbImage), filled
// from the pictures list through the thumbnail loader, the visible page
// first and cell by cell in order, with the "Loading Thumbnails" message
// standing while they come, and the data popups of the cells.
//
// The cells are children of the browser window; the window routes their keys
// and focus and turns the pages.

#include <QObject>
#include <QRectF>
#include <QVector>
#include <functional>

#include "browser/PageGeometry.h"
#include "browser/TabState.h"
#include "browser/ThumbnailLoader.h"

class LoadingMessage;
class NewImage;
class QWidget;

class PicturePage : public QObject {
  Q_OBJECT
 public:
  // The page of `window`, paged by `state` and laid out by `layout`.
  // `inFront` tells whether the cells show as they fill: the Pictures tab is
  // in front and no refit is running.
  PicturePage(QWidget* window, TabState& state, const PageLayout& layout,
              std::function<bool()> inFront);
  ~PicturePage() override;

  QVector<NewImage*> ThumbImage;
  ::LoadingMessage* LoadingMessage = nullptr;

  void MakeLoadingMessage();
  // Makes or drops cells until `count` stand (at least one). New cells are
  // hidden and out of the focus chain; `filter` sees their events.
  void EnsureCells(int count, QObject* filter);
  // Puts every cell on its square of the layout.
  void PlaceCells();

  // Sets the cells of the page that begins at the state's PageStart ready,
  // empty, and PageFirst and PageLast with them; a deleted entry shows the
  // deleted mark at once.
  void Fill();
  // Hands the pictures of the page set by Fill to the loader. Filled comes
  // when the last is shown (at once for a page without pictures).
  void Decode();
  // Drops what the loader still has of a page, with its message.
  void Stop();
  // Empties every cell: hidden, out of the focus chain, square again.
  void Clear();
  // Whether pictures of the page are still being decoded.
  bool Filling() const;

  // The cell's rectangle in twips as the fill left it.
  QRectF CellTwips(int cell) const;
  // The data popups of the filled cells, or none.
  void SetDataTooltips(bool on);
  // The cell's file was deleted: it turns square and shows the deleted mark.
  void MarkDeleted(int cell);

 signals:
  void Clicked(int cell);
  void MouseDown(int cell, int button);
  // The picture of the current item took its final size: the frame goes
  // around it again.
  void CurrentCellSized();
  // Every picture of the page is shown.
  void Filled();

 private:
  void PictureReady(const ThumbnailResult& result);
  void FillDone();
  void ShowLoadingMessage(bool on);
  void ShowCell(NewImage* cell);

  QWidget* window_;
  TabState& state_;
  const PageLayout& layout_;
  std::function<bool()> inFront_;
  ThumbnailLoader* loader_;
  // Twips rectangles of the cells as the fill sized them.
  QVector<QRectF> cells_;
  // The pictures of the page set by Fill, not yet handed to the loader.
  QVector<ThumbnailRequest> requests_;
  // The cells still waiting for their picture.
  int pending_ = 0;
};
