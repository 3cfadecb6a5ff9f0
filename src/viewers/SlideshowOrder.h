#pragma once
// Which picture a slideshow shows next: the next entry of the list, going
// round, or the last entry of a queue of random picks. Removed entries
// ("") are passed over. The random picks run from 1 to the number of
// files, so the first entry never comes up and the pick equal to the
// number lies beyond the list and is passed over like a removed one.

#include <QList>
#include <QStringList>
#include <functional>

struct SlideshowOrder {
  bool Random = false;
  QList<int> RandomQueue;
  // Makes a new random queue; RandomSequence(1, count) in the program.
  std::function<QList<int>(int count)> NewQueue;

  // The index that follows `index`; `index` itself when no entry can be
  // shown (the walk gives up after going round twice).
  qint32 NextIndex(const QStringList& files, qint32 count, qint32 index);
  // Starts a fresh round of random picks.
  void NewRound(qint32 count);
};
