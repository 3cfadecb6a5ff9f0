#pragma once
// The refit of every window after the main window took a new size: the
// browser is laid out anew, each tab comes back on the page of its item, and
// the open windows come back placed and in the state they were in. The main
// window has measured itself before.

class MainForm;

void RefitOpenWindows(MainForm& main);
