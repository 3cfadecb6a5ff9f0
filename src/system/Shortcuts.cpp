#include "system/Shortcuts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>

// A link is a desktop entry that starts the viewer. It is written whole to
// a temporary file and renamed into place, so that an existing link is
// either kept or replaced, never left half written; any failure (a folder
// that can't be made, a file in the way) ends the routine without a word.

namespace {

const QString ViewerLinkName = QStringLiteral("Lorvane");

// A value of the entry: the escapes of a desktop entry's text values.
QString EscapeValue(const QString& text) {
  QString out;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar ch = text[i];
    if (ch == u'\\')
      out += QStringLiteral("\\\\");
    else if (ch == u'\n')
      out += QStringLiteral("\\n");
    else if (ch == u'\t')
      out += QStringLiteral("\\t");
    else if (ch == u'\r')
      out += QStringLiteral("\\r");
    else if (ch == u' ' && i == 0)
      out += QStringLiteral("\\s");
    else
      out += ch;
  }
  return out;
}

// One argument of the Exec line. An argument with a character the line
// reserves goes in double quotes, with '"', '`', '$' and '\' escaped by a
// backslash; a percent sign is doubled everywhere, as it opens a field code.
QString ExecArgument(const QString& argument, bool alwaysQuote) {
  static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
  bool quote = alwaysQuote || argument.isEmpty();
  for (const QChar ch : argument)
    if (reserved.contains(ch)) quote = true;
  QString out;
  for (const QChar ch : argument) {
    if (quote && (ch == u'"' || ch == u'`' || ch == u'$' || ch == u'\\')) out += u'\\';
    out += ch;
    if (ch == u'%') out += u'%';
  }
  return quote ? u'"' + out + u'"' : out;
}

// The icon beside the program, when the program folder holds one.
QString IconBeside(const QFileInfo& program) {
  for (const char* suffix : {".png", ".svg", ".xpm"}) {
    const QFileInfo icon(program.absolutePath() + "/" + program.fileName() + suffix);
    if (icon.isFile()) return icon.absoluteFilePath();
  }
  return {};
}

}  // namespace

// The entry that starts `target` with the arguments, named `name`.
QString LauncherEntry(const QString& name, const QString& target, const QString& arguments) {
  const QFileInfo program(target);
  // A percent sign is written doubled, as it must be, but some desktops
  // look the program up before they undo that and would find none: the
  // shell then starts such a program, which the desktop finds.
  QString exec = target.contains(u'%')
                     ? QStringLiteral("/bin/sh -c ") +
                           ExecArgument(QStringLiteral("exec \"$0\" \"$@\""), true) + u' ' +
                           ExecArgument(target, true)
                     : ExecArgument(target, true);
  for (const QString& argument : QProcess::splitCommand(arguments))
    exec += u' ' + ExecArgument(argument, false);
  QString entry = QStringLiteral(
      "[Desktop Entry]\n"
      "Type=Application\n"
      "Version=1.0\n");
  entry += "Name=" + EscapeValue(name) + "\n";
  entry += "Exec=" + EscapeValue(exec) + "\n";
  entry += "TryExec=" + EscapeValue(target) + "\n";
  const QString icon = IconBeside(program);
  if (!icon.isEmpty()) entry += "Icon=" + EscapeValue(icon) + "\n";
  entry += QStringLiteral(
      "Terminal=false\n"
      "Categories=AudioVideo;Player;\n");
  return entry;
}

namespace {

void WriteLink(const QString& path, const QString& name, const QString& target,
               const QString& arguments) {
  if (!QDir().mkpath(QFileInfo(path).absolutePath())) return;
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return;
  const QByteArray bytes = LauncherEntry(name, target, arguments).toUtf8();
  if (file.write(bytes) != bytes.size()) {
    file.cancelWriting();
    return;
  }
  file.commit();
}

}  // namespace

QString StartupShortcutPath(const QString& linkName) {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/autostart/" +
         linkName + ".desktop";
}

QString QuickLaunchShortcutPath(const QString& linkName) {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/applications/" +
         linkName + ".desktop";
}

void CreateStartupShortcut(const QString&, const QString& linkName, const QString& target,
                           const QString& arguments) {
  if (linkName.isEmpty()) return;
  WriteLink(StartupShortcutPath(linkName), linkName, target, arguments);
}

void CreateQuickLaunchShortcut(const QString&, const QString&, const QString& target,
                               const QString& arguments) {
  WriteLink(QuickLaunchShortcutPath(ViewerLinkName), ViewerLinkName, target, arguments);
}

void RemoveStartupShortcut(const QString& linkName) {
  if (linkName.isEmpty()) return;
  const QString path = StartupShortcutPath(linkName);
  const QFileInfo link(path);
  if (link.isFile() || link.isSymLink()) QFile::remove(path);
}
