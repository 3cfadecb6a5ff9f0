#pragma once
// Makes the thumbnails of one page of pictures on worker threads and hands
// them to the window one by one, in the order of the page, so the cells
// still fill in turn while the window stays responsive. Each picture comes
// from the thumbnail cache when it holds a fresh copy; a picture known to
// fail is not tried again; anything else is decoded at reduced size and the
// result kept in the cache for the next visit.

#include <QImage>
#include <QMetaType>
#include <QObject>
#include <QSize>
#include <QString>
#include <QVector>
#include <atomic>
#include <map>

class QThreadPool;

struct ThumbnailRequest {
  int Cell = 0;
  QString Path;
};

struct ThumbnailResult {
  int Cell = 0;
  QString Path;
  // The thumbnail, at most the cache size of the cell on each side; the
  // InvalidImage picture when Ok is false.
  QImage Image;
  // The picture's own size, upright.
  QSize OriginalSize;
  bool Ok = false;
};
Q_DECLARE_METATYPE(ThumbnailResult)

// The work for one picture, done on the calling thread: the cache, then the
// record of failures, then the decoder (whose result or failure is then
// recorded in the cache).
ThumbnailResult MakeThumbnail(const ThumbnailRequest& request, int cellPixels);

class ThumbnailLoader : public QObject {
  Q_OBJECT
 public:
  explicit ThumbnailLoader(QObject* parent = nullptr);
  // Drops what is queued and waits for the pictures being worked on.
  ~ThumbnailLoader() override;

  // Starts a new page: cancels whatever of an earlier page is still queued
  // (work already running is dropped when it ends), then makes the
  // thumbnails of the requests, in their order, to fit the cache size of
  // cellPixels. Results reach Ready strictly in request order, a later one
  // that is done first waiting for those before it; then Finished. Signals
  // always come from the event loop, never from within Start.
  void Start(const QVector<ThumbnailRequest>& requests, int cellPixels);
  // Drops the page in hand: no further Ready or Finished for it.
  void Cancel();
  // True from Start until the page's Finished (or Cancel).
  bool Busy() const;
  // Blocks until no worker is busy. Results they post still need the event
  // loop to arrive (and are dropped if their page was cancelled).
  void WaitForWorkers();
  // How many pictures are worked on at once.
  int WorkerCount() const;

  // Pictures that went through the decoder (not served by the cache or the
  // record of failures), counted over all loaders since the last reset.
  static int DecodeCount();
  static void ResetDecodeCount();

 signals:
  void Ready(const ThumbnailResult& result);
  // All requests of the current page delivered.
  void Finished();

 private:
  void Deliver(quint64 page, int index, const ThumbnailResult& result);
  void DeliverInOrder();
  void FinishEmptyPage(quint64 page);

  QThreadPool* workers_;
  // Number of the page in hand; workers compare it to drop stale work.
  std::atomic<quint64> page_{0};
  int total_ = 0;
  int next_ = 0;
  bool finished_ = true;
  // Results that are done but wait for an earlier one, by request index.
  std::map<int, ThumbnailResult> waiting_;
};
