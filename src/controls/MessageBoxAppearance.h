#pragma once
// The program-wide look of the shared message box, set once at start-up.

// White body with a gradient, ruled heading, centred prompt, movable by
// its heading and body; titled "Vistrel" and centred on the active window.
void SetMessageBoxAppearance();
