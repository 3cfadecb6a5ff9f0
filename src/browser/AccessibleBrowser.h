#pragma once
// The browser window as a screen reader meets it: its controls as Qt and
// the control library give them, and in place of the loose cells a list of
// the page on display, named by the tab in front, whose items are the
// filled cells named by their files; the current item is the selected one.
// Nothing is kept per cell: the list and its items are worked out from the
// window's pages when the reader asks.

namespace accessible {

// Registers the browser's interfaces; the browser does it as it is made.
// Calling it again does nothing.
void InstallBrowser();

}  // namespace accessible
