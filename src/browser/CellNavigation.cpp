#include "browser/CellNavigation.h"

#include <algorithm>

#include "platform/KeyCodes.h"

namespace {

constexpr int KeyLetter(char letter) { return keys::KeyA + (letter - 'A'); }

// Whether the tab's current entry is a file still there: a deleted file
// leaves "" in the list, and nothing acts on it.
bool CurrentEntryPresent(const CellPage& page) {
  const qint32 current = page.CurrentEntry();
  return current >= 0 && !page.EntryEmpty(current);
}

// Delete, M, C and R, the same on every tab. Delete acts whatever the shift
// keys; the letters only without any. True when the key was one of them.
bool FileKey(CellPage& page, int keyCode, int shift) {
  const bool letter = keyCode == KeyLetter('M') || keyCode == KeyLetter('C') || keyCode == KeyLetter('R');
  if (keyCode != keys::Delete && !letter) return false;
  if (letter && shift != keys::NoShift) return true;
  if (!CurrentEntryPresent(page)) return true;
  if (keyCode == keys::Delete) page.Delete();
  else if (keyCode == KeyLetter('M')) page.Move();
  else if (keyCode == KeyLetter('C')) page.Copy();
  else page.Rename();
  return true;
}

// Page Up and Page Down: turn the page if there is one that way, and put the
// focus and the frame on its first cell. On the first or last page the page
// stays and the focus still goes to its first cell.
bool PageKey(CellPage& page, int keyCode) {
  if (keyCode != keys::Prior && keyCode != keys::Next) return false;
  const int value = page.ScrollValue();
  if (keyCode == keys::Prior) {
    if (value >= 1) page.SetScrollValue(value - 1);
  } else if (value < page.ScrollMax()) {
    page.SetScrollValue(value + 1);
  }
  if (page.Count() >= 1) {
    page.FocusCell(0);
    page.ShowHighlight();
  }
  return true;
}

// One page further on if there is one, then the first cell: on the last page
// this wraps to the first cell of that same page.
void ForwardToFirstCell(CellPage& page) {
  const int value = page.ScrollValue();
  if (value < page.ScrollMax()) page.SetScrollValue(value + 1);
  page.FocusCell(0);
}

// One page back if there is one, then the last cell of the page on display.
void BackToLastCell(CellPage& page) {
  const int value = page.ScrollValue();
  if (value >= 1) page.SetScrollValue(value - 1);
  page.FocusCell(page.PageSize() - 1);
}

// Left from the first cell of the first page: the highest cell whose entry
// exists and is not deleted. Should that cell refuse the focus, the next
// lower one is tried.
void FocusLastEntryOfPage(CellPage& page) {
  const qint64 first = page.PageFirst();
  const qint64 count = page.Count();
  for (int n = page.PageSize() - 1; n >= 0; --n) {
    const qint64 entry = first + n;
    if (entry < count && !page.EntryEmpty(qint32(entry)) && page.FocusCell(n)) return;
  }
}

// Up or Left from the first icon of the first page: the highest cell with a
// name (a deleted file's cell reads "(Deleted)" and counts).
void FocusLastNamedCell(CellPage& page) {
  for (int n = page.PageSize() - 1; n >= 0; --n) {
    if (!page.NameEmpty(n) && page.FocusCell(n)) return;
  }
}

// Down and Up in the grid: step a column count at a time through the page,
// wrapping from bottom to top (or top to bottom), until a cell at most one
// past the last entry. The cell one past the last entry is hidden, so the
// focus call on it fails and the focus stays where it was.
void StepInColumn(CellPage& page, int index, int step) {
  const int pageSize = page.PageSize();
  const int columns = std::clamp(page.Columns(), 1, pageSize);
  const qint64 first = page.PageFirst();
  const qint64 count = page.Count();
  int n = index;
  // The walk visits at most every cell once before it comes back to `index`.
  for (int tries = 0; tries < pageSize; ++tries) {
    n += step * columns;
    if (n > pageSize - 1) n -= pageSize;
    if (n < 0) n += pageSize;
    if (first + n <= count) {
      page.FocusCell(n);
      return;
    }
  }
}

}  // namespace

void ThumbImage_KeyDown(CellPage& page, int index, int keyCode, int shift) {
  if (FileKey(page, keyCode, shift) || PageKey(page, keyCode)) return;
  const int last = page.PageSize() - 1;
  if (index < 0 || index > last) return;
  switch (keyCode) {
    case keys::Right:
      for (int n = index + 1; n <= last; ++n) {
        if (page.FocusCell(n)) return;
      }
      ForwardToFirstCell(page);
      return;
    case keys::Left:
      if (index == 0) {
        if (page.ScrollValue() < 1) FocusLastEntryOfPage(page);
        else BackToLastCell(page);
        return;
      }
      for (int n = index - 1; n >= 0; --n) {
        if (page.FocusCell(n)) return;
      }
      BackToLastCell(page);
      return;
    case keys::Down:
      if (index == last && page.ScrollValue() < page.ScrollMax()) {
        page.SetScrollValue(page.ScrollValue() + 1);
        page.FocusCell(0);
        return;
      }
      StepInColumn(page, index, +1);
      return;
    case keys::Up:
      if (index == 0 && page.ScrollValue() >= 1) {
        page.SetScrollValue(page.ScrollValue() - 1);
        page.FocusCell(page.PageSize() - 1);
        return;
      }
      StepInColumn(page, index, -1);
      return;
    default:
      return;
  }
}

void IconCell_KeyDown(CellPage& page, int index, int keyCode, int shift) {
  if (FileKey(page, keyCode, shift) || PageKey(page, keyCode)) return;
  const int last = page.PageSize() - 1;
  if (index < 0 || index > last) return;
  switch (keyCode) {
    case keys::Down:
    case keys::Right:
      if (index != last) {
        if (!page.FocusCell(index + 1)) page.FocusCell(0);
        return;
      }
      ForwardToFirstCell(page);
      return;
    case keys::Up:
    case keys::Left:
      if (index > 0) {
        page.FocusCell(index - 1);
        return;
      }
      if (page.ScrollValue() < 1) FocusLastNamedCell(page);
      else BackToLastCell(page);
      return;
    default:
      return;
  }
}
