#include "browser/BrowserKeys.h"

#include <algorithm>
#include <cmath>

#include "browser/TabState.h"
#include "platform/KeyCodes.h"

namespace {

constexpr int KeyLetter(char letter) { return keys::KeyA + (letter - 'A'); }
constexpr int FunctionKey(int number) { return keys::F1 + number - 1; }

FormKeyAction Action(FormKeyKind kind) { return FormKeyAction{kind, 0, {}}; }

}  // namespace

FormKeyAction FormKeyDownAction(int keyCode, int shift) {
  const bool ctrl = shift == keys::CtrlMask;
  switch (keyCode) {
    case keys::Pause:
      return Action(FormKeyKind::FocusFirstCell);
    case keys::Home:
      return Action(FormKeyKind::GoHome);
    case keys::End:
      return Action(FormKeyKind::ScrollToEnd);
    case keys::Escape:
      return Action(FormKeyKind::EndProgram);
    case keys::Return:
      return Action(FormKeyKind::Enter);
    case FunctionKey(9):
      return Action(FormKeyKind::Minimise);
    default:
      break;
  }
  if (keyCode >= FunctionKey(1) && keyCode <= FunctionKey(4)) {
    const int number = keyCode - keys::F1 + 1;
    if (ctrl) return FormKeyAction{FormKeyKind::GoToTab, number, {}};
    if (number == 1) return FormKeyAction{FormKeyKind::ClickButton, 0, BarButton::HelpButton};
    if (number == 2) return Action(FormKeyKind::Minimise);
    return Action(FormKeyKind::Nothing);
  }
  if (ctrl) {
    const std::optional<BarButton> button = CommandBarButtonForKey(keyCode);
    if (!button) return Action(FormKeyKind::Nothing);
    return FormKeyAction{FormKeyKind::ClickButton, 0, button};
  }
  return Action(FormKeyKind::CommonKey);
}

std::optional<BarButton> CommandBarButtonForKey(int keyCode) {
  switch (keyCode) {
    case KeyLetter('A'): return BarButton::audioButton;
    case KeyLetter('B'): return BarButton::albumButton;
    case KeyLetter('C'): return BarButton::cdButton;
    case KeyLetter('D'): return BarButton::dvdButton;
    case KeyLetter('E'): return BarButton::ejectButton;
    case KeyLetter('F'): return BarButton::searchButton;
    case KeyLetter('H'): return BarButton::HelpButton;
    case KeyLetter('L'): return BarButton::DirectoryButton;
    case KeyLetter('M'): return BarButton::multimediaButton;
    case KeyLetter('O'): return BarButton::optionsButton;
    case KeyLetter('R'): return BarButton::refreshButton;
    case KeyLetter('S'): return BarButton::sortButton;
    case KeyLetter('V'): return BarButton::videoButton;
    case KeyLetter('X'): return BarButton::mixerButton;
    default: return std::nullopt;
  }
}

bool PauseFocusesFirstCell(int tab, qint32 count, bool highlighted) {
  return tab >= PicturesTab && tab <= AudiosTab && count >= 1 && !highlighted;
}

KeyUpAction FormKeyUpAction(int keyCode, int shift, int tab, qint32 count,
                            const QString& currentExtension) {
  if (shift != keys::CtrlMask) return KeyUpAction::Nothing;
  if (keyCode == KeyLetter('N')) return KeyUpAction::ContextMenu;
  if (keyCode == KeyLetter('P')) {
    if ((tab == VideosTab || tab == AudiosTab) && count < 1) return KeyUpAction::Nothing;
    return KeyUpAction::Properties;
  }
  if (keyCode == KeyLetter('T') && tab == AudiosTab) {
    const QString extension = currentExtension.toLower();
    if (extension == "mp1" || extension == "mp2" || extension == "mp3") return KeyUpAction::Mp3Tags;
  }
  return KeyUpAction::Nothing;
}

EnterAction EnterActionFor(bool thumbnailSizeFocused, bool positionNumberFocused,
                           bool skipNextEnter, bool highlighted) {
  if (thumbnailSizeFocused) return EnterAction::ApplyThumbnailSize;
  if (positionNumberFocused) return EnterAction::JumpToPosition;
  if (skipNextEnter) return EnterAction::SkipThisEnter;
  if (highlighted) return EnterAction::OpenCurrent;
  return EnterAction::Nothing;
}

int ThumbnailSizeAfterEnter(double value, int boxHeightTwips) {
  if (std::isnan(value)) value = ThumbnailSizeMinimum;
  value = std::clamp(value, ThumbnailSizeMinimum, ThumbnailSizeMaximum);
  // The highest size that fits is worked out in whole twips, so that it is
  // exact rather than an inch fraction multiplied back.
  const int fitsTwips = boxHeightTwips - 270;
  // A box too low for half an inch still takes a cell of its own height;
  // only a size of nothing at all is refused.
  if (value > fitsTwips / 1440.0) return std::max(fitsTwips, 1);
  return int(std::floor(value * 1440));
}

PositionJump PositionJumpFor(qint64 value, qint32 count, int pageSize, int tab) {
  if (count < 1) return PositionJump{0, -1};
  pageSize = std::max(pageSize, 1);
  value = std::clamp<qint64>(value, 1, count);
  const qint64 n = value - 1;
  PositionJump jump;
  jump.ScrollValue = int(n / pageSize);
  jump.FocusCell = tab == DocumentsTab ? -1 : int(n - qint64(jump.ScrollValue) * pageSize);
  return jump;
}

int FirstNonEmptyTab(const std::array<qint32, 4>& counts) {
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    if (counts[tab - 1] > 0) return tab;
  }
  return 0;
}
