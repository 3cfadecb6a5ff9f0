#include "platform/FolderAccess.h"

#include <QFile>
#include <unistd.h>

#include "platform/Services.h"

namespace platform {

bool CanWriteFolder(const QString& folder) {
  if (const auto& probe = TheServices().FolderWriteProbe) return probe(folder);
  if (folder.isEmpty()) return false;
  // Making or removing a name in a folder needs both rights on it.
  return ::access(QFile::encodeName(folder).constData(), W_OK | X_OK) == 0;
}

}  // namespace platform
