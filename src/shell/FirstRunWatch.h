#pragma once
// The main window's first-run watch: what its timer finds (the tutorial's
// character and speech, whether the options were ever defined) and what it
// then does through the command bar.

#include "shell/WindowFit.h"

// Looks at the settings and the tutorial's files for a tick of the watch.
FirstRunCheck LookForFirstRun(bool firstRun);

// Enables the tutorial's button and presses the buttons the tick asks for;
// shows the options window when it is loaded and asked for.
void ApplyFirstRunActions(const FirstRunActions& actions);
