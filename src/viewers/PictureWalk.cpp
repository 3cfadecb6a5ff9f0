#include "viewers/PictureWalk.h"

namespace {

bool Filled(const QStringList& files, qint32 index) {
  return index >= 0 && index < files.size() && !files.at(index).isEmpty();
}

}  // namespace

WalkStep StepBackward(const QStringList& files, qint32 count, qint32 index) {
  for (qint32 i = std::min(index, count) - 1; i >= 0; --i)
    if (Filled(files, i)) return {i, '-', false};
  return {0, '+', count - 1 <= 0};
}

WalkStep StepForward(const QStringList& files, qint32 count, qint32 index) {
  for (qint32 i = std::max(index, -1) + 1; i < count; ++i)
    if (Filled(files, i)) return {i, '+', false};
  const qint32 last = std::max(count - 1, 0);
  return {last, '-', last < 1};
}

WalkButtons WalkButtonsAt(qint32 index, qint32 count) {
  const qint32 last = count - 1;
  return {index > 0, index > 0, index < last, index < last};
}
