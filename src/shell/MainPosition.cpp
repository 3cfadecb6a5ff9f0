#include "shell/MainPosition.h"

#include <algorithm>

#include "core/Settings.h"

QRect RestoredMainRect(const QRect& workAreaTwips) {
  const int left = settings::GetInt("MainLeft", (workAreaTwips.width() - MainMinimumWidth) / 2);
  const int top = settings::GetInt("MainTop", (workAreaTwips.height() - MainMinimumHeight) / 2);
  const int width = settings::GetInt("MainWidth", MainMinimumWidth);
  const int height = settings::GetInt("MainHeight", MainMinimumHeight);
  return QRect(std::max(left, 0), std::max(top, 0), std::max(width, MainMinimumWidth),
               std::max(height, MainMinimumHeight));
}

void SaveMainPosition(MainWindowState lastState, MainWindowState presentState,
                      const QRect& presentTwips, int lastWidth, int lastHeight,
                      const QRect& workAreaTwips) {
  if (lastState == MainWindowState::Maximised) {
    settings::SaveSetting("MainMaximized", "Yes");
    return;
  }
  settings::SaveSetting("MainMaximized", "No");
  if (presentState == MainWindowState::Normal) {
    settings::SaveSetting("MainLeft", QString::number(std::max(presentTwips.left(), 0)));
    settings::SaveSetting("MainTop", QString::number(std::max(presentTwips.top(), 0)));
  }
  settings::SaveSetting("MainWidth", QString::number(std::min(lastWidth, workAreaTwips.width())));
  settings::SaveSetting("MainHeight",
                        QString::number(std::min(lastHeight, workAreaTwips.height())));
}
