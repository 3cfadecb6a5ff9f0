#include "shell/CommandTable.h"

#include <array>

#include "controls/Button.h"
#include "controls/SystemColours.h"
#include "core/AppState.h"
#include "platform/Twips.h"
#include "shell/BarPictures.h"
#include "shell/CommandBar.h"

namespace {

using B = BarButton;
using P = BarPlace;
using S = ButtonStart;
using C = CommandBar;

// The bottom row, from the left: the compact disc and the DVD; the
// playlists; albums, search and sort; sleep and alarm; painting and the
// magnifier; options, multimedia and the mixer; about and the tutorial. The
// hidden internetButton stands alone after them.
//
// Disabled at the start are the tutorial's button, which the main window's
// first-run watch enables once the tutorial can run, and the CD tray's,
// which the command bar enables when a CD drive is there.
constexpr std::array<CommandRow, BarButtonCount> Rows{{
    {B::DirectoryButton, "DirectoryButton", P::FolderRow, 0, S::Enabled, &C::DirectoryButton,
     &C::DirectoryButton_Click},
    {B::refreshButton, "refreshButton", P::FolderRow, 0, S::Enabled, &C::refreshButton,
     &C::refreshButton_Click},
    {B::cdButton, "cdButton", P::BottomRow, 1, S::Enabled, &C::cdButton, &C::cdButton_Click},
    {B::ejectButton, "ejectButton", P::BottomRow, 1, S::Disabled, &C::ejectButton,
     &C::ejectButton_Click},
    {B::closeButton, "closeButton", P::BottomRow, 1, S::Disabled, &C::closeButton,
     &C::closeButton_Click},
    {B::dvdButton, "dvdButton", P::BottomRow, 1, S::Enabled, &C::dvdButton, &C::dvdButton_Click},
    {B::audioButton, "audioButton", P::BottomRow, 2, S::Enabled, &C::audioButton,
     &C::audioButton_Click},
    {B::videoButton, "videoButton", P::BottomRow, 2, S::Enabled, &C::videoButton,
     &C::videoButton_Click},
    {B::albumButton, "albumButton", P::BottomRow, 3, S::Enabled, &C::albumButton,
     &C::albumButton_Click},
    {B::searchButton, "searchButton", P::BottomRow, 3, S::Enabled, &C::searchButton,
     &C::searchButton_Click},
    {B::sortButton, "sortButton", P::BottomRow, 3, S::Enabled, &C::sortButton,
     &C::sortButton_Click},
    {B::sleepButton, "sleepButton", P::BottomRow, 4, S::Enabled, &C::sleepButton,
     &C::sleepButton_Click},
    {B::alarmButton, "alarmButton", P::BottomRow, 4, S::Enabled, &C::alarmButton,
     &C::alarmButton_Click},
    {B::paintButton, "paintButton", P::BottomRow, 5, S::Enabled, &C::paintButton,
     &C::paintButton_Click},
    {B::magnifierButton, "magnifierButton", P::BottomRow, 5, S::Enabled, &C::magnifierButton,
     &C::magnifierButton_Click},
    {B::internetButton, "internetButton", P::BottomRow, 8, S::Hidden, &C::internetButton, nullptr},
    {B::optionsButton, "optionsButton", P::BottomRow, 6, S::Enabled, &C::optionsButton,
     &C::optionsButton_Click},
    {B::multimediaButton, "multimediaButton", P::BottomRow, 6, S::Enabled, &C::multimediaButton,
     &C::multimediaButton_Click},
    {B::mixerButton, "mixerButton", P::BottomRow, 6, S::Enabled, &C::mixerButton,
     &C::mixerButton_Click},
    {B::aboutButton, "aboutButton", P::BottomRow, 7, S::Enabled, &C::aboutButton,
     &C::aboutButton_Click},
    {B::HelpButton, "HelpButton", P::BottomRow, 7, S::Disabled, &C::HelpButton,
     &C::HelpButton_Click},
    {B::muteButton, "muteButton", P::VolumeStrip, 0, S::Enabled, &C::muteButton,
     &C::muteButton_Click},
}};

constexpr bool InIdOrder() {
  for (size_t i = 0; i < Rows.size(); ++i)
    if (Rows[i].Id != BarButton(i)) return false;
  return true;
}
static_assert(InIdOrder(), "one row per button, in the order of BarButton");

constexpr int LastGroup() {
  int last = 0;
  for (const CommandRow& row : Rows)
    if (row.Group > last) last = row.Group;
  return last;
}

}  // namespace

std::span<const CommandRow> CommandTable() { return Rows; }

const CommandRow& CommandRowOf(BarButton id) { return Rows[size_t(id)]; }

int LastBottomGroup() { return LastGroup(); }

Button* MakeBarButton(const CommandRow& row, QWidget* parent) {
  auto* button = new Button(parent);
  button->setObjectName(row.Name());
  button->SetBackColor(ToOleColor(App().ColorLightGrey));
  const int side = twips::ToPixels(row.SizeTwips());
  // The picture leaves room for the raised edge.
  button->SetPicture(BarPicture(row.Picture, side - (side > 28 ? 9 : 7)));
  button->setFixedSize(side, side);
  if (row.Start != ButtonStart::Enabled) button->SetEnabled(false);
  return button;
}
