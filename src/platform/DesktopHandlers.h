#pragma once
// Which desktop applications handle a kind of content, as the desktop itself
// answers (GIO: every mimeapps.list in the desktop's own order, and the
// applications' declared types through mimeinfo.cache), and starting them.

#include <QString>
#include <QStringList>

namespace platform {

// An installed application as its desktop entry describes it.
struct DesktopApplication {
  QString Id;          // desktop file id, "org.example.Player.desktop"
  QString Executable;  // full path of the program it runs; "" when not found
  QString Exec;        // the entry's Exec line, field codes included
  bool IsValid() const { return !Id.isEmpty(); }
};

// The MIME type of a file judged by its name alone (the extension), as the
// desktop's MIME database says; "application/octet-stream" when unknown.
QString MimeTypeOfName(const QString& name);

// The desktop's default application for a MIME type; invalid when none.
DesktopApplication DefaultApplicationFor(const QString& mimeType);
// True when the desktop has an application for the MIME type.
bool HasDefaultApplicationFor(const QString& mimeType);
// An installed raster graphics editor (Categories hold "RasterGraphics")
// that declares the MIME type: the default application when it is one,
// else the first the desktop recommends; invalid when none.
DesktopApplication RasterEditorFor(const QString& mimeType);

// The command line (program first) that starts the application on the
// files, its Exec field codes expanded as desktop entries define them.
QStringList CommandLineFor(const DesktopApplication& application, const QStringList& files);
// Starts the application on the files, detached, through StartProgram;
// false when the application is invalid or the start failed.
bool StartApplication(const DesktopApplication& application, const QStringList& files);

}  // namespace platform
