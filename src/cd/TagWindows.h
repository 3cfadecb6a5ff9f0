#pragma once
// The tag editor joins the program: the window registry learns how to make
// ChangeMP3, so that the browser's context menu can open it.

void RegisterTagWindows();
