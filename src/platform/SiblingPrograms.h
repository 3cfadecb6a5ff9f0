#pragma once
// Finding and starting the sibling programs of the family. They are found
// by the caption of their main window in the desktop's window list (X11;
// other window systems have no shared list, and nothing is found there) and
// started from their executables in the program folder. Where a sibling is
// not in the program folder, what would have started it goes to the
// desktop's own application for the same content; when none fits nothing
// starts, as with a failed start. No start waits for the program.

#include <QString>
#include <QStringList>
#include <functional>

namespace platform {

// The window id of a top-level window whose caption is exactly `caption`,
// 0 when there is none.
quint64 FindWindowByCaption(const QString& caption);

// Starts a program without waiting for it; false when it could not start.
bool StartProgram(const QString& path, const QStringList& arguments);

// The viewer sibling "Lorvane" with one argument: a command word ("//audio",
// "//video", "//cd", "//dvd", "//sleep", "//alarm"), a file path, or none.
// Without the sibling: "//audio" and "//video" start the default
// application of audio/mpeg and video/mp4, "//cd" and "//dvd" the handlers
// of x-content/audio-cdda and x-content/video-dvd, a CD track "TrackNN.cda"
// the handler of x-content/audio-cdda, any other file its type's default
// application with the file; "//sleep", "//alarm" and no argument start
// nothing. False when nothing started.
bool StartViewerProgram(const QString& programFolder, const QString& argument);
// The paint sibling "Tintara", with a picture or without. Without the
// sibling: an installed raster graphics editor that declares the picture's
// type (PNG when no picture is given), with the picture.
bool StartPaintProgram(const QString& programFolder, const QString& picture);

// Test hooks: replace the window list and the program start. Empty
// functions restore the real ones.
void SetWindowFinder(std::function<quint64(const QString&)> finder);
void SetProgramStarter(std::function<bool(const QString&, const QStringList&)> starter);

}  // namespace platform
