#include "browser/MenuFile.h"

#include "core/BrowserSession.h"

namespace {

const std::array<const char*, MenuEntryCount> Names = {
    "mnuRename", "mnuCopy",  "mnuMove",      "mnuDelete",    "mnuPaint",      "mnuEmail",
    "mnuPrint",  "mnuShoot", "mnuClipboard", "mnuSlideshow", "mnuProperties", "mnuMP3",
};

const std::array<const char*, MenuEntryCount> Captions = {
    "Rename", "Copy",  "Move",      "Delete",    "Paint",      "E-mail",
    "Print",  "Shoot", "Clipboard", "Slideshow", "Properties", "\"Tag\" Data",
};

MenuEntryState Set(bool visible, bool enabled) { return {true, visible, enabled}; }

}  // namespace

std::array<MenuEntryState, MenuEntryCount> MenuFileStates(int tab, const QString& mediaType,
                                                         const QString& extension, qint32 count,
                                                         bool albumMode) {
  std::array<MenuEntryState, MenuEntryCount> states{};
  const auto at = [&](MenuEntry entry) -> MenuEntryState& { return states[size_t(entry)]; };

  // The picture entries: only for a picture, an icon or a cursor.
  const bool picture =
      tab == PicturesTab && (mediaType == "P" || mediaType == "I" || mediaType == "C");
  for (MenuEntry entry : {MenuEntry::mnuPaint, MenuEntry::mnuClipboard, MenuEntry::mnuPrint,
                          MenuEntry::mnuShoot})
    at(entry) = Set(picture, picture);
  const bool slideshow = picture && count >= 2;
  at(MenuEntry::mnuSlideshow) = Set(slideshow, slideshow);

  // The file operations: not on an album's entries, but for documents.
  const bool operations = tab == DocumentsTab || !albumMode;
  for (MenuEntry entry :
       {MenuEntry::mnuCopy, MenuEntry::mnuMove, MenuEntry::mnuDelete, MenuEntry::mnuRename})
    at(entry) = Set(true, operations);

  // The tags of an MP3, on the Audios tab only.
  if (tab == AudiosTab) {
    const bool mp3 = extension == "mp1" || extension == "mp2" || extension == "mp3";
    at(MenuEntry::mnuMP3) = Set(mp3, mp3 && !albumMode);
  }
  return states;
}

MenuFile::MenuFile(QWidget* parent) : QMenu(parent) {
  setObjectName("MenuFile");
  for (int i = 0; i < MenuEntryCount; ++i) {
    QAction* action = addAction(Captions[size_t(i)]);
    action->setObjectName(Names[size_t(i)]);
    const auto entry = MenuEntry(i);
    connect(action, &QAction::triggered, this, [this, entry] { emit Chosen(entry); });
    entries_[size_t(i)] = action;
  }
  // The tags entry is for MP3 files: hidden until an MP3 asks for it.
  entries_[size_t(MenuEntry::mnuMP3)]->setVisible(false);
}

void MenuFile::SetUp(int tab, const QString& mediaType, const QString& extension, qint32 count,
                     bool albumMode) {
  const auto states = MenuFileStates(tab, mediaType, extension, count, albumMode);
  for (int i = 0; i < MenuEntryCount; ++i) {
    const MenuEntryState& state = states[size_t(i)];
    if (!state.Touched) continue;
    entries_[size_t(i)]->setVisible(state.Visible);
    entries_[size_t(i)]->setEnabled(state.Enabled);
  }
}
