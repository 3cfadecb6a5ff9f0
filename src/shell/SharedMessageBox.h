#pragma once
// The one message box the program shares, reached as App().MsgBox. The main
// window creates it during start-up and releases it at the close; the
// control itself knows nothing of the program and takes its look from here.

#include "controls/MsgBoxEnhanced.h"

// The program-wide look: white body with a gradient, ruled heading, centred
// prompt, movable by its heading and body; titled "Vistrel" and centred on
// the active window. The other properties are left as they are.
void SetMessageBoxAppearance(MsgBoxEnhanced& box);

// Creates the shared message box with the program-wide look if there is
// none, and returns it. An existing box is returned as it stands, so that
// properties a caller has changed since stay changed.
MsgBoxEnhanced* CreateSharedMsgBox();

// Releases the shared message box at the close; App().MsgBox is null after.
void ReleaseSharedMsgBox();
