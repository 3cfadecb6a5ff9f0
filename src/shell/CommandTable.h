#pragma once
// The command bar's buttons in one table: for every button its picture,
// where it stands, how it starts, the member that holds it and the routine
// its click runs. The bar makes, places and connects its buttons from this
// table, and clicks them by it for the other windows.

#include <QString>
#include <span>

#include "core/BarCommands.h"

class Button;
class CommandBar;
class QWidget;

// Where a button stands: beside the folder or album on the top row, in the
// volume strip at the right of the top row, or on the bottom row.
enum class BarPlace { FolderRow, VolumeStrip, BottomRow };

// The sides of the square buttons, in twips: small on the top row, big on
// the bottom row.
inline constexpr int SmallButtonTwips = 345;
inline constexpr int BigButtonTwips = 480;

enum class ButtonStart {
  Enabled,
  // Disabled until the window or device behind it comes.
  Disabled,
  // Disabled and never shown: the function is not there.
  Hidden,
};

struct CommandRow {
  BarButton Id;
  // The name of the button's picture (see BarPicture).
  const char* Picture;
  BarPlace Place;
  // On the bottom row: the button's group, numbered from the left from 1;
  // the buttons of a group stand in the table's order. 0 elsewhere.
  int Group;
  ButtonStart Start;
  // The member of CommandBar that holds the button.
  Button* CommandBar::*Member;
  // What a click runs; null when the button does nothing.
  void (CommandBar::*Click)();

  // The button's control name.
  QString Name() const { return BarButtonName(Id); }
  int SizeTwips() const { return Place == BarPlace::BottomRow ? BigButtonTwips : SmallButtonTwips; }
};

// Every button of the bar once, in the order of BarButton, which is also
// the order the buttons are made in (and so the order the Tab key visits).
std::span<const CommandRow> CommandTable();
const CommandRow& CommandRowOf(BarButton id);
// The number of the last group on the bottom row.
int LastBottomGroup();

// A button of the bar as its row describes it: named, coloured, with its
// picture, at its size, enabled or not as it starts. Not yet connected.
Button* MakeBarButton(const CommandRow& row, QWidget* parent);
