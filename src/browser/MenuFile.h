#pragma once
// The one popup menu of the browser's cells, on all four tabs. Its entries
// are switched on and off for the item just before it opens; an entry the
// table leaves alone keeps the state the last opening gave it.

#include <QMenu>
#include <array>

enum class MenuEntry {
  mnuRename,
  mnuCopy,
  mnuMove,
  mnuDelete,
  mnuPaint,
  mnuEmail,
  mnuPrint,
  mnuShoot,
  mnuClipboard,
  mnuSlideshow,
  mnuProperties,
  mnuMP3,
};
inline constexpr int MenuEntryCount = int(MenuEntry::mnuMP3) + 1;

// What opening the menu does to one entry: leave it, or give it these.
struct MenuEntryState {
  bool Touched = false;
  bool Visible = false;
  bool Enabled = false;
};

// The entries' states for the item of a tab: its media code ("P", "I",
// "C", ...), its extension as GetFileExtension gives it, the tab's Count and
// whether an album is on display.
std::array<MenuEntryState, MenuEntryCount> MenuFileStates(int tab, const QString& mediaType,
                                                         const QString& extension, qint32 count,
                                                         bool albumMode);

class MenuFile : public QMenu {
  Q_OBJECT
 public:
  explicit MenuFile(QWidget* parent);
  QAction* Entry(MenuEntry entry) const { return entries_[size_t(entry)]; }
  // Switches the entries for the item, as MenuFileStates says.
  void SetUp(int tab, const QString& mediaType, const QString& extension, qint32 count,
             bool albumMode);

 signals:
  void Chosen(MenuEntry entry);

 private:
  std::array<QAction*, MenuEntryCount> entries_{};
};
