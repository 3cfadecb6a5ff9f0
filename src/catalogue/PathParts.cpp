#include "catalogue/PathParts.h"

QString GetBaseName(const QString& path) {
  const qsizetype slash = path.lastIndexOf('/');
  return slash < 0 ? path : path.mid(slash + 1);
}

QString GetFolderPart(const QString& path) {
  const qsizetype slash = path.lastIndexOf('/');
  return slash < 0 ? path : path.left(slash);
}

QString GetFileExtension(const QString& name) {
  const qsizetype dot = name.lastIndexOf('.');
  return dot < 0 ? name : name.mid(dot + 1).toLower();
}

QString GetNameWithoutExtension(const QString& path) {
  const QString base = GetBaseName(path);
  const qsizetype dot = base.lastIndexOf('.');
  return dot < 0 ? base : base.left(dot);
}

QString JoinPath(const QString& folder, const QString& name) {
  return folder.endsWith('/') ? folder + name : folder + "/" + name;
}
