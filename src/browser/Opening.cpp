#include "browser/Opening.h"

#include <QFileInfo>

#include "catalogue/PathParts.h"
#include "core/AppState.h"
#include "platform/DesktopHandlers.h"

namespace {

bool ExtensionIn(const QString& name, const QStringList& extensions) {
  const QString extension = GetFileExtension(name);
  return !extension.isEmpty() && extensions.contains(extension);
}

}  // namespace

bool IsExteriorPgmTypeV(const QString& name) {
  return ExtensionIn(name, App().MediaTables.ExteriorVideoExtensions);
}

bool IsExteriorPgmTypeD(const QString& name) {
  return ExtensionIn(name, App().MediaTables.DocumentExtensions);
}

QString GetAssocPgm(const QString& name) {
  const platform::DesktopApplication application =
      platform::DefaultApplicationFor(platform::MimeTypeOfName(name));
  return application.Executable;
}

QString ParseCommandPath(const QString& command) {
  QString text = command;
  text.remove('"');
  text = text.toLower();
  const qsizetype exe = text.lastIndexOf(".exe");
  if (exe < 0) return QString();
  text.truncate(exe + 4);
  if (QFileInfo::exists(text)) return text;
  const QString systemRoot = "%systemroot%";
  if (text.startsWith(systemRoot)) {
    const QString expanded = "c:\\windows" + text.mid(systemRoot.size());
    return QFileInfo::exists(expanded) ? expanded : QString();
  }
  return QString();
}

QString ExteriorFilePath(const QString& currentFolder, const QString& entry) {
  return currentFolder + "/" + entry;
}

void StartExteriorProgram(const QString& entry, const QString& file) {
  const platform::DesktopApplication application =
      platform::DefaultApplicationFor(platform::MimeTypeOfName(entry));
  // A failed start is not looked at.
  if (application.IsValid()) platform::StartApplication(application, {file});
}
