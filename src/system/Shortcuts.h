#pragma once
// The viewer's two launcher links: the Startup link, which starts it with
// the desktop session ($XDG_CONFIG_HOME/autostart/<name>.desktop), and the
// Quick Launch link, which puts it among the desktop's applications
// ($XDG_DATA_HOME/applications/<name>.desktop). The options window ticks
// its two boxes from what is on disk and acts on them when saved.

#include <QString>

// Writes the Startup link to `target` (the viewer's executable) with the
// arguments. The first argument stands for a folder name that is ignored.
void CreateStartupShortcut(const QString& ignored, const QString& linkName, const QString& target,
                           const QString& arguments);
// Writes the Quick Launch link "Lorvane"; its caller passes an empty link
// name, as the link always takes the viewer's name.
void CreateQuickLaunchShortcut(const QString& ignored, const QString& linkName,
                               const QString& target, const QString& arguments);
void RemoveStartupShortcut(const QString& linkName);
// Where the links lie, whether they exist or not.
QString StartupShortcutPath(const QString& linkName);
QString QuickLaunchShortcutPath(const QString& linkName);

// The desktop entry of a link named `name` that starts `target` with the
// arguments: its program quoted for the Exec line, TryExec, the icon beside
// the program when there is one.
QString LauncherEntry(const QString& name, const QString& target, const QString& arguments);
