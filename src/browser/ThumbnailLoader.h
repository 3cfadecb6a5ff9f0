#pragma once
// Makes the thumbnails of one page of pictures on worker threads and hands
// them to the window one by one, in the order of the page, so the cells
// still fill in turn while the window stays responsive. Each picture comes
// from the thumbnail cache when it holds a fresh copy; a picture known to
// fail is not tried again; anything else is decoded at reduced size and the
// result kept in the cache for the next visit. Two to four pictures are
// worked on at once, and a page that is left stops its work at once: a
// metafile helper still drawing for it is killed, so neither the next page
// nor the end of the program waits for it.

#include <QImage>
#include <QMetaType>
#include <QObject>
#include <QSize>
#include <QString>
#include <QVector>
#include <atomic>
#include <functional>
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
// record of failures, then the decoder. A result is kept in the cache, and
// a failure recorded only when the decoder refused the file; neither when
// the picture changed while it was decoded. stillWanted, when given, is
// asked while a metafile's helper runs; once it answers false the helper is
// killed and nothing is kept.
ThumbnailResult MakeThumbnail(const ThumbnailRequest& request, int cellPixels,
                              const std::function<bool()>& stillWanted = {});

// How many pictures a loader works on at once on a machine of the given
// number of processors: as many, but at least 2 and at most 4 (each holds a
// decoded picture, and a metafile helper, in memory).
int ThumbnailWorkerCount(int processors);

class ThumbnailLoader : public QObject {
  Q_OBJECT
 public:
  explicit ThumbnailLoader(QObject* parent = nullptr);
  // Drops what is queued and waits for the pictures being worked on, whose
  // metafile helpers are killed.
  ~ThumbnailLoader() override;

  // Starts a new page: cancels whatever of an earlier page is still queued
  // (work already running is dropped when it ends), then makes the
  // thumbnails of the requests, in their order, to fit the cache size of
  // cellPixels. Results reach Ready strictly in request order, a later one
  // that is done first waiting for those before it; then Finished. Signals
  // always come from the event loop, never from within Start.
  void Start(const QVector<ThumbnailRequest>& requests, int cellPixels);
  // Drops the page in hand: no further Ready or Finished for it. Returns at
  // once; the pictures being worked on for it stop within a moment.
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
