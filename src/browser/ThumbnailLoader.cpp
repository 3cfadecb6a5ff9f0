#include "browser/ThumbnailLoader.h"

#include <QImageReader>
#include <QPointer>
#include <QThread>
#include <QThreadPool>

#include "browser/ThumbnailCache.h"
#include "catalogue/MediaPicture.h"
#include "core/Trace.h"

namespace {

std::atomic<int>& Decodes() {
  static std::atomic<int> count{0};
  return count;
}

// The picture's own size, upright, read from its header; the decoded
// picture's size when the header does not tell.
QSize OriginalPictureSize(const QString& path, const QImage& decoded) {
  QImageReader reader(path);
  reader.setDecideFormatFromContent(true);
  const QSize stored = reader.size();
  if (!stored.isValid() || stored.isEmpty()) return decoded.size();
  return reader.transformation() & QImageIOHandler::TransformationRotate90 ? stored.transposed() : stored;
}

}  // namespace

ThumbnailResult MakeThumbnail(const ThumbnailRequest& request, int cellPixels,
                              const std::function<bool()>& stillWanted) {
  ThumbnailResult result;
  result.Cell = request.Cell;
  result.Path = request.Path;
  if (ReadCachedThumbnail(request.Path, cellPixels, result.Image, result.OriginalSize)) {
    result.Ok = true;
    return result;
  }
  if (IsRecordedFailure(request.Path)) {
    result.Image = InvalidImagePicture();
    return result;
  }
  Decodes().fetch_add(1, std::memory_order_relaxed);
  const int edge = ThumbnailCacheSize(cellPixels);
  // The stamp is taken before the decode: a picture that changes meanwhile
  // (still being copied in, say) leaves nothing in the cache.
  const PictureStamp before = ReadPictureStamp(request.Path);
  QImage picture;
  const DecodeOutcome outcome = DecodeMediaPicture(request.Path, picture, QSize(edge, edge), stillWanted);
  if (outcome != DecodeOutcome::Decoded) {
    // Only a refusal by the decoder is the file's own; an unreadable file,
    // a missing helper, a time-out or want of memory may pass.
    if (IsDefiniteFailure(outcome)) RecordFailure(request.Path, before);
    result.Image = picture;
    return result;
  }
  result.OriginalSize = OriginalPictureSize(request.Path, picture);
  StoreThumbnail(request.Path, cellPixels, picture, result.OriginalSize, before);
  result.Image = picture;
  result.Ok = true;
  return result;
}

int ThumbnailWorkerCount(int processors) { return qBound(2, processors, 4); }

ThumbnailLoader::ThumbnailLoader(QObject* parent) : QObject(parent), workers_(new QThreadPool(this)) {
  qRegisterMetaType<ThumbnailResult>();
  workers_->setMaxThreadCount(ThumbnailWorkerCount(QThread::idealThreadCount()));
}

ThumbnailLoader::~ThumbnailLoader() {
  Cancel();
  // Workers post to this object: none may be left running when it goes.
  // The cancel has made each running decode give up (a helper is killed),
  // so this wait is short.
  workers_->waitForDone();
}

void ThumbnailLoader::Start(const QVector<ThumbnailRequest>& requests, int cellPixels) {
  Cancel();
  const quint64 page = page_.load();
  total_ = int(requests.size());
  next_ = 0;
  finished_ = false;
  if (requests.isEmpty()) {
    QMetaObject::invokeMethod(
        this, [this, page] { FinishEmptyPage(page); }, Qt::QueuedConnection);
    return;
  }
  for (int index = 0; index < total_; ++index) {
    const ThumbnailRequest request = requests[index];
    // The pool runs its queue first in, first out: the page fills from its
    // first cell.
    workers_->start([this, page, index, request, cellPixels] {
      const auto stillWanted = [this, page] { return page_.load() == page; };
      if (!stillWanted()) return;
      const ThumbnailResult result = MakeThumbnail(request, cellPixels, stillWanted);
      if (page_.load() != page) return;
      QMetaObject::invokeMethod(
          this, [this, page, index, result] { Deliver(page, index, result); }, Qt::QueuedConnection);
    });
  }
}

void ThumbnailLoader::Cancel() {
  page_.fetch_add(1);
  workers_->clear();
  waiting_.clear();
  total_ = 0;
  next_ = 0;
  finished_ = true;
}

bool ThumbnailLoader::Busy() const { return !finished_; }

void ThumbnailLoader::WaitForWorkers() { workers_->waitForDone(); }

int ThumbnailLoader::WorkerCount() const { return workers_->maxThreadCount(); }

int ThumbnailLoader::DecodeCount() { return Decodes().load(); }

void ThumbnailLoader::ResetDecodeCount() { Decodes().store(0); }

void ThumbnailLoader::Deliver(quint64 page, int index, const ThumbnailResult& result) {
  if (page != page_.load() || finished_ || index < next_) return;
  waiting_.emplace(index, result);
  DeliverInOrder();
}

void ThumbnailLoader::DeliverInOrder() {
  const quint64 page = page_.load();
  // A handler of Ready may let events run (and so come back here), start
  // another page or even delete the loader: each result is taken out before
  // it is handed on, and the walk stops as soon as the page is no longer the
  // one in hand.
  const QPointer<ThumbnailLoader> alive(this);
  while (page == page_.load()) {
    const auto found = waiting_.find(next_);
    if (found == waiting_.end()) break;
    const ThumbnailResult result = std::move(found->second);
    waiting_.erase(found);
    ++next_;
    emit Ready(result);
    if (!alive) return;
    if (next_ == 1) Trace(QStringLiteral("page first thumbnail %1").arg(result.Cell));
  }
  if (page == page_.load() && !finished_ && next_ == total_) {
    finished_ = true;
    Trace(QStringLiteral("page filled %1").arg(total_));
    emit Finished();
  }
}

void ThumbnailLoader::FinishEmptyPage(quint64 page) {
  if (page != page_.load() || finished_) return;
  finished_ = true;
  emit Finished();
}
