#pragma once
// The windows of selection, search and albums join the program: the window
// registry learns how to make them, so that the command bar can open them.

void RegisterAlbumWindows();
