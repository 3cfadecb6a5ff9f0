#pragma once
// The arrow, page and file keys on the browser's cells. The routines work on
// what they see of one tab's page through CellPage, so that the window keeps
// its cells and the walking rules stay plain code.
//
// Giving the focus to a cell can fail: a cell beyond the end of the list, or
// one not filled yet, is hidden. The routines then try the next cell or pass
// the key over, as the tables of each key say. Every walk is bounded by the
// page size, so no key can hang the window, whatever the page holds.

#include <QtGlobal>

// What the key routines see of one tab's page. The browser implements it over its cells.
class CellPage {
 public:
  virtual ~CellPage() = default;
  virtual int PageSize() const = 0;        // cells on a page
  virtual int Columns() const = 0;         // picture columns (list tabs: not used)
  virtual qint32 PageFirst() const = 0;
  virtual qint32 Count() const = 0;
  virtual int ScrollValue() const = 0;     // VScroll.Value
  virtual int ScrollMax() const = 0;
  virtual void SetScrollValue(int value) = 0;  // turns the page (refills it; may change PageFirst)
  virtual bool FocusCell(int cell) = 0;    // false = the cell is hidden/missing
  virtual bool EntryEmpty(qint32 index) const = 0;  // list entry "" (deleted); index may be >= Count
  virtual bool NameEmpty(int cell) const = 0;       // list tabs: the cell's name label is empty
  virtual qint32 CurrentEntry() const = 0; // the tab's current index (CurrentPicture ...)
  virtual void ShowHighlight() = 0;        // the tab's ShowHighlight routine
  virtual void Delete() = 0;
  virtual void Move() = 0;
  virtual void Copy() = 0;
  virtual void Rename() = 0;
};

// A key pressed on picture cell `index` of the grid: arrows walk the grid row
// after row, Page Up and Page Down turn the page, Delete, M, C and R act on
// the current picture.
void ThumbImage_KeyDown(CellPage& page, int index, int keyCode, int shift);

// A key pressed on icon cell `index` of Videos, Audios or Documents. The icons
// run down the page as one sequence: Down is Right and Up is Left.
void IconCell_KeyDown(CellPage& page, int index, int keyCode, int shift);
