#pragma once
// The tab strip as a screen reader meets it: a page tab list whose children
// are its tabs, one per tab, named by the caption and described by what the
// owner says of the tab (the browser gives the count of files under it); the
// tab in front is the selected one. The caption labels are the tabs' own
// drawing and stay out of the reader's way.

class NewTabControl;
class QAccessibleInterface;

namespace accessible {

QAccessibleInterface* MakeTabControlAccessible(NewTabControl* tabs);

// The tab in front moved from `previous` to `current` (1 to 4, 0 for none).
void NotifyTabSelected(NewTabControl* tabs, int previous, int current);
// The caption of tab `index` changed.
void NotifyTabCaption(NewTabControl* tabs, int index);

}  // namespace accessible
