#include "core/WindowRoles.h"

#include <algorithm>
#include <array>

namespace {

using K = WindowKind;
using P = Placing;
using R = OnRefit;
using W = WindowId;

// Columns: id, name, kind, placing, refit, refit order, sized on refit,
// tab shown, forward order, close-ask order, closes first, minimised by the
// browser.
constexpr std::array Table{
    WindowRoles{W::MainForm, "MainForm", K::Main, P::Own, R::Untouched},
    WindowRoles{W::SizeForm, "SizeForm", K::Hidden, P::Own, R::Untouched},
    WindowRoles{W::Logo, "Logo", K::Popup, P::CentredOnScreen, R::Untouched},
    WindowRoles{W::CommandBar, "CommandBar", K::Fixed, P::Fixed, R::Untouched},
    WindowRoles{W::Thumbnails, "Thumbnails", K::Fixed, P::Fixed, R::Untouched},
    WindowRoles{W::Background, "Background", K::Popup, P::Own, R::Passes},
    WindowRoles{W::ChangeMP3, "ChangeMP3", K::Dialog, P::Own, R::Passes},
    WindowRoles{W::ChooseDirectory, "ChooseDirectory", K::Dialog, P::Own, R::Passes},
    WindowRoles{W::CleaningMessage, "CleaningMessage", K::Popup, P::Own, R::Passes},
    WindowRoles{W::CopyMessage, "CopyMessage", K::Popup, P::Own, R::Passes},
    WindowRoles{W::DeleteMessage, "DeleteMessage", K::Popup, P::Own, R::Passes},
    WindowRoles{W::DeleteVerify, "DeleteVerify", K::Dialog, P::Own, R::Passes},
    WindowRoles{W::frmAbout, "frmAbout", K::Dialog, P::Own, R::Passes, 0, false, 0, 0, 0, true},
    WindowRoles{W::LoadingMessage, "LoadingMessage", K::Popup, P::Own, R::Passes},
    WindowRoles{W::MessageBox, "MessageBox", K::Dialog, P::Own, R::Passes},
    WindowRoles{W::PrinterSetup, "PrinterSetup", K::Dialog, P::Own, R::Passes},
    WindowRoles{W::RenameFile, "RenameFile", K::Popup, P::Own, R::Passes},
    WindowRoles{W::ReplaceVerify, "ReplaceVerify", K::Dialog, P::Own, R::Passes},
    WindowRoles{W::SlideshowController, "SlideshowController", K::Popup, P::Own, R::Passes},
    WindowRoles{W::Target, "Target", K::Popup, P::Own, R::Passes},
    WindowRoles{W::ChangeProperties, "ChangeProperties", K::Dialog, P::Own, R::Untouched},
    WindowRoles{W::Magnifier, "Magnifier", K::Popup, P::Own, R::Untouched},
    WindowRoles{W::AlbumEdit, "AlbumEdit", K::MdiChild, P::ViewerArea, R::Kept, 1, false, 0, 0, 3,
                false, true},
    WindowRoles{W::AlbumSelect, "AlbumSelect", K::Popup, P::AboveAlbumButton, R::Reloaded},
    WindowRoles{W::FindFiles, "FindFiles", K::MdiChild, P::ViewerArea, R::Kept, 5, true, 0, 6, 0,
                false, true},
    WindowRoles{W::SelectionSort, "SelectionSort", K::MdiChild, P::CentredOnBrowser, R::Centred, 0,
                false, 0, 5, 2, false, true},
    WindowRoles{W::OptionsEntry, "OptionsEntry", K::MdiChild, P::CentredOnBrowser, R::Centred, 0,
                false, 0, 4, 1, false, true},
    WindowRoles{W::SingleImage, "SingleImage", K::MdiChild, P::ViewerArea, R::Kept, 2, true, 1, 1,
                0, false, true},
    WindowRoles{W::SingleVideo, "SingleVideo", K::MdiChild, P::ViewerArea, R::Kept, 3, true, 2, 3,
                0, false, true},
    WindowRoles{W::SingleAudio, "SingleAudio", K::MdiChild, P::ViewerArea, R::Kept, 4, true, 3, 2,
                0, false, true},
    // The tutorial's host: never seen itself, its character is.
    WindowRoles{W::AgentHelp, "AgentHelp", K::Hidden, P::Own, R::Untouched},
};

constexpr bool RowsInIdOrder() {
  for (size_t i = 0; i < Table.size(); ++i)
    if (size_t(Table[i].Id) != i) return false;
  return true;
}
static_assert(RowsInIdOrder(), "one row per window, in the order of the identifiers");
static_assert(size_t(W::AgentHelp) + 1 == Table.size(), "every window has its row");

int OrderOf(const WindowRoles& row, RoleOrder order) {
  switch (order) {
    case RoleOrder::Refit:
      return row.RefitOrder;
    case RoleOrder::Forward:
      return row.ForwardOrder;
    case RoleOrder::CloseAsk:
      return row.CloseAskOrder;
    case RoleOrder::Table:
      break;
  }
  return int(row.Id) + 1;
}

}  // namespace

std::span<const WindowRoles> AllWindowRoles() { return Table; }

const WindowRoles& RolesOf(WindowId id) { return Table[size_t(id)]; }

const char* WindowName(WindowId id) { return RolesOf(id).Name; }

std::vector<WindowId> WindowsWith(const std::function<bool(const WindowRoles&)>& has,
                                  RoleOrder order) {
  std::vector<const WindowRoles*> rows;
  for (const WindowRoles& row : Table)
    if (OrderOf(row, order) > 0 && (!has || has(row))) rows.push_back(&row);
  std::stable_sort(rows.begin(), rows.end(), [order](const auto* a, const auto* b) {
    return OrderOf(*a, order) < OrderOf(*b, order);
  });
  std::vector<WindowId> ids;
  for (const WindowRoles* row : rows) ids.push_back(row->Id);
  return ids;
}
