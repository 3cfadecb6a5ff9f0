#include "decoder/Fit.h"

namespace decoder {

QSize OutputSize(const QSize& natural, const QSize& fitInto) {
  QSize size = natural.isValid() && !natural.isEmpty() ? natural : QSize(1, 1);
  const QSize limit(kMaxSide, kMaxSide);
  if (size.width() > limit.width() || size.height() > limit.height())
    size = size.scaled(limit, Qt::KeepAspectRatio);
  if (fitInto.isValid() && !fitInto.isEmpty() &&
      (size.width() > fitInto.width() || size.height() > fitInto.height()))
    size = size.scaled(fitInto, Qt::KeepAspectRatio);
  return size.expandedTo(QSize(1, 1));
}

}  // namespace decoder
