#include "viewers/SlideshowOrder.h"

void SlideshowOrder::NewRound(qint32 count) { RandomQueue = NewQueue ? NewQueue(count) : QList<int>(); }

qint32 SlideshowOrder::NextIndex(const QStringList& files, qint32 count, qint32 index) {
  if (count < 1) return index;
  qint32 next = index;
  for (qint64 tries = 0; tries < 2 * qint64(count) + 2; ++tries) {
    if (Random) {
      if (RandomQueue.isEmpty()) NewRound(count);
      if (RandomQueue.isEmpty()) return index;
      next = RandomQueue.last();
      if (RandomQueue.size() > 1)
        RandomQueue.removeLast();
      else
        NewRound(count);
    } else {
      next = next + 1 >= count ? 0 : next + 1;
    }
    if (next >= 0 && next < count && next < files.size() && !files.at(next).isEmpty()) return next;
  }
  return index;
}
