#include "decoder/Fit.h"

namespace decoder {

QSize OutputSize(const QSize& natural, const QSize& fitInto) {
  const QSize least(1, 1);
  const QSize limit(kMaxSide, kMaxSide);
  QSize size = natural.isValid() && !natural.isEmpty() ? natural : least;
  // A very thin picture can scale to no width at all: it keeps one pixel,
  // so that the fit below still keeps the aspect instead of taking the
  // fit's own size.
  if (size.width() > limit.width() || size.height() > limit.height())
    size = size.scaled(limit, Qt::KeepAspectRatio).expandedTo(least);
  if (fitInto.isValid() && !fitInto.isEmpty() &&
      (size.width() > fitInto.width() || size.height() > fitInto.height()))
    size = size.scaled(fitInto, Qt::KeepAspectRatio).expandedTo(least);
  return size.boundedTo(limit);
}

}  // namespace decoder
