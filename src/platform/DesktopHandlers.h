#pragma once
// Which desktop applications handle a kind of content, as the desktop's
// own lists say: the mimeapps.list files of the configuration and data
// folders, and the MimeType= lines of the installed .desktop files.

#include <QString>

namespace platform {

// True when an installed desktop application is the default for the MIME
// type, or declares that it handles it and the user has not taken that
// association away.
bool HasDefaultApplicationFor(const QString& mimeType);

}  // namespace platform
