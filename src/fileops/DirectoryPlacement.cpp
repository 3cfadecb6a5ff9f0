#include "fileops/DirectoryPlacement.h"

#include <QtGlobal>
#include <algorithm>
#include <cmath>
#include <optional>

#include "core/Settings.h"

namespace {

// A setting read as a number of twips; none when absent or unreadable.
std::optional<int> ReadTwips(const char* key) {
  const QString text = settings::GetSetting(key).trimmed();
  bool ok = false;
  const double value = text.toDouble(&ok);
  if (!ok || !std::isfinite(value) || std::abs(value) > 1e8) return std::nullopt;
  return int(std::lround(value));
}

}  // namespace

QRect ReadDirectoryRect(const QRect& mainAreaTwips, const QSize& browserSizeTwips) {
  const int width =
      std::max(ReadTwips("DirectoryWidth").value_or(DirectoryDefaultWidth), DirectoryMinimumWidth);
  const int height = std::max(ReadTwips("DirectoryHeight").value_or(DirectoryDefaultHeight),
                              DirectoryMinimumHeight);

  int defaultTop, defaultLeft;
  if (browserSizeTwips.isEmpty()) {
    defaultTop = mainAreaTwips.top() + (mainAreaTwips.height() - height) / 2;
    defaultLeft = mainAreaTwips.left() + (mainAreaTwips.width() - width) / 2;
  } else {
    defaultTop = browserSizeTwips.height() + mainAreaTwips.top() - height + 45;
    defaultLeft = browserSizeTwips.width() + mainAreaTwips.left() - width;
  }
  const int top = ReadTwips("DirectoryTop").value_or(defaultTop);
  const int left = ReadTwips("DirectoryLeft").value_or(defaultLeft);
  return QRect(left, top, width, height);
}

QRect KeepWithinArea(const QRect& windowTwips, const QRect& areaTwips) {
  if (areaTwips.isEmpty()) return windowTwips;
  const int width = std::max(std::min(windowTwips.width(), areaTwips.width()),
                             std::min(windowTwips.width(), DirectoryMinimumWidth));
  const int height = std::max(std::min(windowTwips.height(), areaTwips.height()),
                              std::min(windowTwips.height(), DirectoryMinimumHeight));
  // QRect's right() is one short of left + width; the arithmetic here uses
  // the far edge itself.
  const int areaRight = areaTwips.left() + areaTwips.width();
  const int areaBottom = areaTwips.top() + areaTwips.height();
  const int left = std::max(areaTwips.left(), std::min(windowTwips.left(), areaRight - width));
  const int top = std::max(areaTwips.top(), std::min(windowTwips.top(), areaBottom - height));
  return QRect(left, top, width, height);
}

void SaveDirectoryRect(const QRect& outerTwips, bool minimised) {
  if (!minimised) {
    settings::SaveSetting("DirectoryTop", QString::number(outerTwips.top()));
    settings::SaveSetting("DirectoryLeft", QString::number(outerTwips.left()));
  }
  settings::SaveSetting("DirectoryHeight", QString::number(outerTwips.height()));
  settings::SaveSetting("DirectoryWidth", QString::number(outerTwips.width()));
}
