// Stand-ins for what browser/Opening.cpp uses besides ParseCommandPath: the
// command-line harness never calls them, they only let the file link
// without the rest of the program.
#include <cstdlib>

#include "catalogue/PathParts.h"
#include "core/AppState.h"
#include "platform/DesktopHandlers.h"

QString GetFileExtension(const QString&) { std::abort(); }
AppState& App() { std::abort(); }

namespace platform {
QString MimeTypeOfName(const QString&) { std::abort(); }
DesktopApplication DefaultApplicationFor(const QString&) { std::abort(); }
bool StartApplication(const DesktopApplication&, const QStringList&) { std::abort(); }
}  // namespace platform
