#pragma once
// The browser's invisible file list: the ordinary files of one folder that
// match a set of masks, in case-insensitive alphabetical order.
//
// Hidden files (a leading dot), folders and links to folders are left out.
// Masks match without regard to case, since the extensions of files on this
// system come in any case ("PHOTO.JPG" is a "*.jpg"). A folder that can't be
// read leaves the folder and the list as they were.
//
// The folder is read by Refresh, never by setting the path or the pattern:
// one reading serves any number of patterns, each of which only filters it.

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

class FileListBox {
 public:
  // The folder of the last successful reading; "" before the first one and
  // after ForgetPath.
  QString Path() const { return path_; }
  // The folder to read at the next Refresh. The same folder as the present
  // one asks for nothing.
  void SetPath(const QString& folder);
  // Forgets the folder, so that the next SetPath counts as a change. The
  // names of the last reading stay until a reading succeeds.
  void ForgetPath();

  // Masks separated by ";", such as "*.jpg;*.png". "*" matches any run of
  // characters, "?" any one character. An empty pattern matches nothing.
  QString Pattern() const { return pattern_; }
  void SetPattern(const QString& pattern);

  // Reads the folder again (the one given to SetPath, else the present
  // one). When that fails nothing changes.
  void Refresh();

  qint32 ListCount() const { return qint32(list_.size()); }
  // The name at the index; "" outside the list.
  QString List(qint32 index) const;
  const QStringList& Names() const { return list_; }

 private:
  void Filter();

  QString path_;
  QString wanted_;
  bool pathChanged_ = false;
  QString pattern_ = QStringLiteral("*.*");
  QStringList files_;  // every ordinary, visible file of the last reading, in order
  QStringList list_;   // those that match the pattern
};

// True when the name matches the mask, without regard to case.
bool MatchesMask(const QString& name, const QString& mask);
// The order of the list: lower-cased names compared character by character,
// and, between names that differ only in case, the exact names.
bool FileNameLess(const QString& a, const QString& b);
