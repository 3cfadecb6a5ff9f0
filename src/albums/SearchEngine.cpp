#include "albums/SearchEngine.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <cstring>
#include <set>
#include <utility>
#include <vector>

#include "catalogue/CdDrives.h"
#include "catalogue/PathParts.h"
#include "core/AppState.h"

namespace {

// The extension groups of the file-type lists, in list order. The search
// window and the album editor each have their own set.
using Groups = std::vector<QStringList>;

const Groups& FindFilesGroups() {
  static const Groups groups = {
      {".bmp", ".dib", ".rle", ".xbm"},                 // 0 bitmaps
      {".gif"},                                         // 1
      {".jpe", ".jpg", ".jpeg"},                        // 2
      {".wmf", ".emf"},                                 // 3 metafiles
      {".png", ".mng"},                                 // 4 network graphics
      {".tif", ".jfx"},                                 // 5
      {".pcx"},                                         // 6
      {".xif"},                                         // 7
      {".ico", ".cur"},                                 // 8 icons and cursors
      {".avi", ".ivf"},                                 // 9 video
      {".mpg", ".mpeg", ".mpv", ".m1v", ".mps"},        // 10 movie
      {".wmv", ".asx"},                                 // 11 windows video
      {".mp3", ".mp2", ".mp1", ".mpa"},                 // 12
      {".wav"},                                         // 13
      {".wma", ".asf"},                                 // 14 windows audio
      {".mid", ".rmi"},                                 // 15 MIDI
      {".cda"},                                         // 16 CD tracks
  };
  return groups;
}

const Groups& AlbumEditGroups() {
  static const Groups groups = {
      {".bmp", ".dib", ".rle", ".xbm"},
      {".gif"},
      {".jpg", ".jpeg", ".jpe"},
      {".wmf", ".emf"},
      {".png", ".mng"},
      {".tif", ".jfx"},
      {".pcx"},
      {".xif"},
      {".ico", ".cur"},
      {".avi", ".ivf"},
      {".mpg", ".mpeg", ".mpe", ".m1v", ".mpv", ".mps"},
      {".wmv", ".asx"},
      {".mp3", ".mp1", ".mp2", ".mpa"},
      {".wav"},
      {".wma", ".asf"},
      {".mid", ".rmi"},
  };
  return groups;
}

// The groups an entry of a list takes: the "All ..." entries several, the
// others one. `lastAudio` is the last audio group the list has.
std::vector<int> GroupsOfIndex(int typeIndex, int lastAudio) {
  auto range = [](int first, int last) {
    std::vector<int> r;
    for (int g = first; g <= last; ++g) r.push_back(g);
    return r;
  };
  if (typeIndex == 0) return range(0, lastAudio);
  if (typeIndex == 1) return range(0, 8);
  if (typeIndex >= 2 && typeIndex <= 10) return {typeIndex - 2};
  if (typeIndex == 11) return range(9, 11);
  if (typeIndex >= 12 && typeIndex <= 14) return {typeIndex - 3};
  if (typeIndex == 15) return range(12, lastAudio);
  if (typeIndex >= 16 && typeIndex <= 18) return {typeIndex - 4};
  return {};
}

QString BuildList(const QString& name, const Groups& groups, const std::vector<int>& chosen) {
  QString list;
  for (int g : chosen)
    for (const QString& ext : groups[size_t(g)]) list += name + ext + ';';
  return list;
}

// The one search that may run, and its stop request.
struct EngineState {
  bool running = false;
  bool stopped = false;
};

EngineState& Engine() {
  static EngineState state;
  return state;
}

// A pattern made ready for matching: the name part in case-folded form and
// the extension, as GetFileExtension gives it, in UTF-8 for comparing with
// the raw bytes of the names read.
struct Pattern {
  QString folded;
  QByteArray extension;
};

// Whether a name matches a pattern with "*" (any run) and "?" (any one
// character), both in case-folded form.
bool WildcardMatch(const QString& name, const QString& pattern) {
  qsizetype n = 0, p = 0, starP = -1, starN = 0;
  const qsizetype nl = name.size(), pl = pattern.size();
  while (n < nl) {
    if (p < pl && (pattern[p] == '?' || pattern[p] == name[n])) {
      ++n;
      ++p;
    } else if (p < pl && pattern[p] == '*') {
      starP = p++;
      starN = n;
    } else if (starP >= 0) {
      p = starP + 1;
      n = ++starN;
    } else {
      return false;
    }
  }
  while (p < pl && pattern[p] == '*') ++p;
  return p == pl;
}

// The extension of a raw name as GetFileExtension gives it: lower case
// after the last "."; the whole name as it is when there is no ".". Plain
// ASCII is done on the bytes; anything else goes through the text routine.
QByteArray RawExtension(const char* name, size_t length) {
  const char* dot = nullptr;
  bool ascii = true;
  for (size_t i = 0; i < length; ++i) {
    if (name[i] == '.') dot = name + i;
    if (static_cast<unsigned char>(name[i]) >= 0x80) ascii = false;
  }
  if (!ascii || !dot) return GetFileExtension(QFile::decodeName(QByteArray(name, qsizetype(length)))).toUtf8();
  QByteArray ext(dot + 1, qsizetype(name + length - dot - 1));
  for (char& c : ext)
    if (c >= 'A' && c <= 'Z') c = char(c - 'A' + 'a');
  return ext;
}

class Walk {
 public:
  Walk(const QStringList& patterns, const SearchSink& sink) : sink_(sink) {
    for (const QString& p : patterns)
      patterns_.push_back({p.toCaseFolded(), GetFileExtension(p).toUtf8()});
    clock_.start();
  }

  // The files of the folder, pattern by pattern; its subfolders, in the
  // order found, go to `subfolders` when asked for.
  void SearchFolder(const QString& folder, QStringList* subfolders) {
    std::vector<QStringList> found(patterns_.size());
    if (!ReadFolder(folder, subfolders, found)) return;
    for (const QStringList& paths : found) {
      for (const QString& path : paths) {
        if (Stopped()) return;
        ++count_;
        if (sink_.Found) sink_.Found(path);
      }
    }
  }

  // Walks the folder and every folder below it, each folder's files before
  // those of its subfolders. A folder reached a second time (through a link)
  // is passed over, so that links that loop end.
  void SearchTree(const QString& root) {
    struct Frame {
      QStringList folders;
      qsizetype next = 0;
    };
    std::vector<Frame> stack;
    stack.push_back({{root}, 0});
    while (!stack.empty()) {
      Frame& top = stack.back();
      if (top.next >= top.folders.size()) {
        stack.pop_back();
        continue;
      }
      const QString folder = top.folders[top.next++];
      if (Stopped(true)) return;
      folder_ = folder;
      QStringList subfolders;
      SearchFolder(folder, &subfolders);
      if (Stopped()) return;
      if (!subfolders.isEmpty()) {
        for (QString& name : subfolders) name = folder + name + '/';
        stack.push_back({std::move(subfolders), 0});
      }
    }
  }

  // Hands the window what changed and lets pending events run, at most
  // every 20 ms (or at once when `now`), then answers whether a stop came.
  bool Stopped(bool now = false) {
    if ((now || ++tick_ % 64 == 0) && clock_.elapsed() >= 20) {
      Report();
      if (QCoreApplication::instance()) QCoreApplication::processEvents();
      clock_.restart();
    }
    return Engine().stopped;
  }

  void Report() {
    if (sink_.Count && count_ != shownCount_) sink_.Count(count_);
    shownCount_ = count_;
    if (sink_.Folder && folder_ != shownFolder_) sink_.Folder(folder_);
    shownFolder_ = folder_;
  }

  void Finish() {
    folder_.clear();
    if (sink_.Count) sink_.Count(count_);
    if (sink_.Folder) sink_.Folder(QString());
  }

 private:
  // Reads the folder once: names that match go to their pattern's list,
  // subfolders (not those beginning with ".") to `subfolders`. False when
  // the folder cannot be read, was seen before, or a stop came.
  bool ReadFolder(const QString& folder, QStringList* subfolders, std::vector<QStringList>& found) {
    const QString drive = folder.chopped(1);
    if (!App().CdDrives.isEmpty() && App().CdDrives.contains(drive)) {
      // An audio CD: its tracks are the folder's files.
      for (const QString& name : AudioTrackFileNames(drive)) Match(folder, QFile::encodeName(name), found);
      return true;
    }
    const QByteArray path = QFile::encodeName(folder);
    const int fd = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return false;
    struct stat st;
    if (::fstat(fd, &st) != 0 || !seen_.insert({st.st_dev, st.st_ino}).second) {
      ::close(fd);
      return false;
    }
    DIR* dir = ::fdopendir(fd);
    if (!dir) {
      ::close(fd);
      return false;
    }
    bool complete = true;
    while (const dirent* entry = ::readdir(dir)) {
      if (Stopped()) {
        complete = false;
        break;
      }
      const char* name = entry->d_name;
      if (name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0))) continue;
      unsigned char type = entry->d_type;
      if (type == DT_LNK || type == DT_UNKNOWN) {
        // A link, or a file system that does not tell: ask where it leads.
        struct stat target;
        if (::fstatat(fd, name, &target, 0) != 0) continue;
        type = S_ISDIR(target.st_mode) ? DT_DIR : S_ISREG(target.st_mode) ? DT_REG : DT_UNKNOWN;
      }
      if (type == DT_DIR) {
        if (subfolders && name[0] != '.') subfolders->append(QFile::decodeName(name));
      } else if (type == DT_REG) {
        Match(folder, QByteArray::fromRawData(name, qsizetype(strlen(name))), found);
      }
    }
    ::closedir(dir);
    return complete;
  }

  // Adds folder + name to the list of every pattern it matches. Only a
  // name whose extension is the pattern's own counts: the cheap test on the
  // raw bytes comes first, the name is decoded only when it passes.
  void Match(const QString& folder, const QByteArray& name, std::vector<QStringList>& found) {
    QByteArray extension;
    bool extensionKnown = false;
    QString decoded, folded;
    for (size_t i = 0; i < patterns_.size(); ++i) {
      const Pattern& pattern = patterns_[i];
      if (!extensionKnown) {
        extension = RawExtension(name.constData(), size_t(name.size()));
        extensionKnown = true;
      }
      if (extension != pattern.extension) continue;
      if (decoded.isNull()) {
        decoded = QFile::decodeName(name);
        folded = decoded.toCaseFolded();
      }
      if (WildcardMatch(folded, pattern.folded)) found[i].append(folder + decoded);
    }
  }

  const SearchSink& sink_;
  std::vector<Pattern> patterns_;
  std::set<std::pair<dev_t, ino_t>> seen_;
  QElapsedTimer clock_;
  unsigned tick_ = 0;
  int count_ = 0, shownCount_ = -1;
  QString folder_, shownFolder_;
};

}  // namespace

QString SearchPatternList(const QString& name, int typeIndex) {
  if (typeIndex == 19) return BuildList(name, FindFilesGroups(), {16});
  if (typeIndex == 20) return BuildList(name, FindFilesGroups(), {15});
  return BuildList(name, FindFilesGroups(), GroupsOfIndex(typeIndex, 16));
}

QString AlbumSearchPatternList(const QString& name, int typeIndex) {
  if (typeIndex == 19) return BuildList(name, AlbumEditGroups(), {15});
  return BuildList(name, AlbumEditGroups(), GroupsOfIndex(typeIndex, 15));
}

bool SearchFiles(const QString& root, const QString& patterns, bool oneFolderOnly, const SearchSink& sink) {
  EngineState& engine = Engine();
  if (engine.running) return false;
  engine.running = true;
  engine.stopped = false;

  QString folder = root;
  if (folder.endsWith("//")) folder.chop(1);
  if (!folder.endsWith('/')) folder += '/';

  Walk walk(patterns.split(';', Qt::SkipEmptyParts), sink);
  if (oneFolderOnly)
    walk.SearchFolder(folder, nullptr);
  else
    walk.SearchTree(folder);
  walk.Finish();
  engine.running = false;
  return true;
}

void StopSearch() { Engine().stopped = true; }

bool SearchRunning() { return Engine().running; }
