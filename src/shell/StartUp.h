#pragma once
// The pieces of the program's start that the main window runs: the splash,
// the alarm's viewer, and loading the command bar and the browser into the
// client area.

class BrowserArea;
class CommandBar;
class MainForm;
class Thumbnails;

// Holds the thread for the given time while letting events run.
void LetEventsRunFor(int milliseconds);

// Shows the splash window with its first stage text, for a second.
void ShowSplash();

// An armed alarm survives a restart: the viewer program that rings it is
// started when it is not running.
void StartAlarmWatcher();

// Loads the command bar and the browser into the main window's client area,
// registers them and connects them: the bar shows what the browser shows,
// and each activation of the browser starts the main window's watch.
struct BarAndBrowser {
  CommandBar* Bar;
  Thumbnails* Browser;
};
BarAndBrowser LoadBarAndBrowser(MainForm& main);
