#pragma once
// Finding and starting the sibling programs of the family. They are found
// by the caption of their main window in the desktop's window list (X11;
// other window systems have no shared list, and nothing is found there) and
// started from their executables in the program folder.

#include <QString>
#include <QStringList>
#include <functional>

namespace platform {

// The window id of a top-level window whose caption is exactly `caption`,
// 0 when there is none.
quint64 FindWindowByCaption(const QString& caption);

// Starts a program without waiting for it; false when it could not start.
bool StartProgram(const QString& path, const QStringList& arguments);

// Test hooks: replace the window list and the program start. Empty
// functions restore the real ones.
void SetWindowFinder(std::function<quint64(const QString&)> finder);
void SetProgramStarter(std::function<bool(const QString&, const QStringList&)> starter);

}  // namespace platform
