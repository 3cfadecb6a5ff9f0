#include "browser/FileListBox.h"

#include <QSet>
#include <algorithm>
#include <numeric>
#include <vector>

#include "catalogue/CdDrives.h"
#include "platform/DirectoryReader.h"

namespace {

bool SameLetter(QChar a, QChar b) { return a == b || a.toLower() == b.toLower(); }

// Wildcard match with backtracking to the last "*": linear for the usual
// masks, never worse than name length times mask length.
bool WildcardMatch(QStringView name, QStringView mask) {
  qsizetype n = 0, m = 0, starMask = -1, starName = 0;
  while (n < name.size()) {
    if (m < mask.size() && (mask[m] == '?' || (mask[m] != '*' && SameLetter(mask[m], name[n])))) {
      ++n;
      ++m;
    } else if (m < mask.size() && mask[m] == '*') {
      starMask = m++;
      starName = n;
    } else if (starMask >= 0) {
      m = starMask + 1;
      n = ++starName;
    } else {
      return false;
    }
  }
  while (m < mask.size() && mask[m] == '*') ++m;
  return m == mask.size();
}

// A mask of the form "*.ext" with no other wildcard: the usual case, tested
// as an ending.
bool IsPlainExtensionMask(QStringView mask) {
  return mask.size() > 2 && mask.startsWith(u"*.") && !mask.mid(1).contains(u'*') &&
         !mask.contains(u'?');
}

}  // namespace

// A mask "*.abc" with a three-letter extension also takes longer extensions
// that begin with those letters ("*.tif" lists "scan.tiff", "*.mid" lists
// "song.midi"), as the listing always has: the extension lists of the tabs
// rely on it.
bool ExtensionMatches(const QString& extension, const QSet<QString>& masks) {
  const QString lowered = extension.toLower();
  if (masks.contains(lowered)) return true;
  return lowered.size() > 3 && masks.contains(lowered.left(3));
}

bool MatchesMask(const QString& name, const QString& mask) {
  if (mask == QLatin1String("*.*") || mask == QLatin1String("*")) return true;
  if (IsPlainExtensionMask(mask) && !mask.mid(2).contains('.')) {
    const qsizetype dot = name.lastIndexOf('.');
    return dot > 0 && ExtensionMatches(name.mid(dot + 1), QSet<QString>{mask.mid(2).toLower()});
  }
  return WildcardMatch(name, mask);
}

bool FileNameLess(const QString& a, const QString& b) {
  const int byLetters = a.toLower().compare(b.toLower(), Qt::CaseSensitive);
  if (byLetters != 0) return byLetters < 0;
  return a.compare(b, Qt::CaseSensitive) < 0;
}

void FileListBox::SetPath(const QString& folder) {
  if (folder == path_ && !pathChanged_) return;
  wanted_ = folder;
  pathChanged_ = true;
}

void FileListBox::ForgetPath() {
  path_.clear();
  wanted_.clear();
  pathChanged_ = false;
}

void FileListBox::SetPattern(const QString& pattern) {
  pattern_ = pattern;
  Filter();
}

void FileListBox::Refresh() {
  const QString folder = pathChanged_ ? wanted_ : path_;
  pathChanged_ = false;
  wanted_.clear();
  QList<platform::DirectoryEntry> entries;
  if (IsCdDriveFolder(folder)) {
    // A CD drive's files are the audio tracks of its disc.
    for (const QString& name : AudioTrackFileNames(folder)) entries.append({name, true});
  } else if (!platform::ReadDirectory(folder, entries)) {
    return;
  }

  std::vector<QString> names;
  std::vector<QString> lowered;
  names.reserve(size_t(entries.size()));
  for (const platform::DirectoryEntry& entry : entries) {
    if (!entry.IsFile || entry.Name.startsWith('.')) continue;
    names.push_back(entry.Name);
  }
  lowered.reserve(names.size());
  for (const QString& name : names) lowered.push_back(name.toLower());
  std::vector<qsizetype> order(names.size());
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(), [&](qsizetype x, qsizetype y) {
    const int byLetters = lowered[size_t(x)].compare(lowered[size_t(y)], Qt::CaseSensitive);
    if (byLetters != 0) return byLetters < 0;
    return names[size_t(x)].compare(names[size_t(y)], Qt::CaseSensitive) < 0;
  });

  path_ = folder;
  files_.clear();
  files_.reserve(qsizetype(names.size()));
  for (qsizetype index : order) files_.append(names[size_t(index)]);
  Filter();
}

QString FileListBox::List(qint32 index) const {
  return index >= 0 && index < list_.size() ? list_[index] : QString();
}

void FileListBox::Filter() {
  // Masks of the usual form "*.ext" become one set of extensions, looked up
  // once a name; any other mask is matched as it stands. Repeated masks (a
  // pattern may name one several times) count once.
  QSet<QString> extensions;
  QStringList others;
  for (const QString& mask : pattern_.split(';', Qt::SkipEmptyParts)) {
    if (mask == QLatin1String("*.*") || mask == QLatin1String("*")) {
      list_ = files_;
      return;
    }
    if (IsPlainExtensionMask(mask) && !mask.mid(2).contains('.'))
      extensions.insert(mask.mid(2).toLower());
    else if (!others.contains(mask, Qt::CaseInsensitive))
      others.append(mask);
  }
  list_.clear();
  for (const QString& name : files_) {
    const qsizetype dot = name.lastIndexOf('.');
    bool matched = dot >= 0 && ExtensionMatches(name.mid(dot + 1), extensions);
    for (qsizetype k = 0; !matched && k < others.size(); ++k) matched = MatchesMask(name, others[k]);
    if (matched) list_.append(name);
  }
}
