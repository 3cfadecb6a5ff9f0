#include "shell/WindowFit.h"

#include <algorithm>

namespace {

// Where a window of the given extent must start so that it ends at the far
// edge of the work area, but never before the near edge.
int PulledIn(int start, int extent, int nearEdge, int length) {
  const int farEdge = nearEdge + length;
  if (start + extent <= farEdge) return start;
  return std::max(farEdge - extent, nearEdge);
}

}  // namespace

MainFitStep MainFitAfterResize(const QRect& window, const QRect& workArea, int lastWidth,
                               int lastHeight) {
  const int w = window.width();
  const int h = window.height();
  const int areaWidth = workArea.width();
  const int areaHeight = workArea.height();
  MainFitStep step;
  if (w < MainMinimumWidth) {
    step.Width = MainMinimumWidth;
    return step;
  }
  if (w > MainMinimumWidth && areaWidth < w) {
    step.Width = areaWidth <= MainMinimumWidth ? MainMinimumWidth : areaWidth;
    return step;
  }
  if (h < MainMinimumHeight) {
    step.Height = MainMinimumHeight;
    return step;
  }
  if (h > MainMinimumHeight && areaHeight < h) {
    step.Height = areaHeight <= MainMinimumHeight ? MainMinimumHeight : areaHeight;
    return step;
  }
  const int left = PulledIn(window.left(), w, workArea.left(), areaWidth);
  if (left != window.left()) step.Left = left;
  const int top = PulledIn(window.top(), h, workArea.top(), areaHeight);
  if (top != window.top()) step.Top = top;
  step.Refit = h != lastHeight || w != lastWidth;
  return step;
}

WorkAreaFit FitToChangedWorkArea(MainWindowState state, const QRect& window,
                                 const QRect& workArea) {
  WorkAreaFit fit{state, window, false};
  if (state == MainWindowState::Maximised) return fit;
  fit.State = MainWindowState::Normal;
  const int areaWidth = workArea.width();
  const int areaHeight = workArea.height();
  const bool tooLarge = (areaHeight < window.height() && window.height() > MainMinimumHeight) ||
                        (areaWidth < window.width() && window.width() > MainMinimumWidth);
  if (tooLarge) {
    QRect& r = fit.Window;
    r.moveTo(std::max(workArea.left(), 0), std::max(workArea.top(), 0));
    if (areaWidth < r.width()) r.setWidth(areaWidth);
    if (areaHeight < r.height()) r.setHeight(areaHeight);
    fit.Refit = r.size() != window.size();
    return fit;
  }
  fit.Window.moveTo(PulledIn(window.left(), window.width(), workArea.left(), areaWidth),
                    PulledIn(window.top(), window.height(), workArea.top(), areaHeight));
  return fit;
}

QRect PlacedViewerRect(const QRect& window, int browserWidth, int mainClientHeight) {
  QRect r = window;
  r.moveTo(std::max(r.left(), 0), std::max(r.top(), 0));
  if (r.left() + r.width() + 120 > browserWidth) r.moveLeft(0);
  if (r.top() + r.height() + 60 > mainClientHeight) r.moveTop(0);
  return r;
}

QRect SizedFormRect(const QRect& window, int browserWidth, int mainClientHeight) {
  QRect r = window;
  if (r.width() + r.left() + 120 > browserWidth) r.setWidth(browserWidth - r.left());
  if (r.height() + r.top() + 60 > mainClientHeight) r.setHeight(mainClientHeight - r.top() - 60);
  return r;
}

FirstRunActions FirstRunTimerActions(const FirstRunCheck& check) {
  FirstRunActions actions;
  if (!check.CharacterPresent) {
    actions.PressOptions = check.FirstRun && !check.Defined;
  } else if (!check.SpeechEnginePresent) {
    if (check.FirstRun && !check.Defined) {
      actions.ShowOptionsEntry = true;
      actions.PressOptions = true;
    }
  } else {
    actions.HelpEnabled = true;
    // A new user gets the tutorial first and the options second.
    if (check.FirstRun) {
      actions.PressHelp = !check.MerlinShown;
      actions.PressOptions = !check.Defined;
    }
  }
  actions.Restart = actions.HelpEnabled;
  return actions;
}
