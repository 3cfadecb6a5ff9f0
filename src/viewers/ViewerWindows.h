#pragma once
// The viewers join the program: the window registry learns how to make the
// picture, audio and video viewers, the slideshow, target practice,
// printing and the magnifier, so that the browser and the command bar can
// open them.

void RegisterViewerWindows();
