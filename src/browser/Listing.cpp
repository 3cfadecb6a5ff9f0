#include "browser/Listing.h"

#include <QDateTime>

#include "browser/SortFileList.h"
#include "catalogue/MediaTypes.h"
#include "catalogue/PathParts.h"
#include "platform/DirectoryReader.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "core/Trace.h"

namespace {

struct MaskPosition {
  int Position;
  const char* Masks;
};

constexpr MaskPosition PictureMasks[] = {
    {1, "*.bmp;*.dib;*.rle;*.xbm;"}, {2, "*.gif;"},       {3, "*.jpe;*.jpg;*.jpeg;"},
    {4, "*.wmf;*.emf;"},             {5, "*.png;*.mng;"}, {6, "*.tif;*.jfx;"},
    {7, "*.pcx;"},                   {8, "*.xif;"},       {20, "*.ico;*.cur;"},
};
constexpr MaskPosition VideoMasks[] = {
    {1, "*.avi;*.ivf;"},
    {2, "*.mpg;*.mpeg;*.mpe;*.m1v;*.mpv;*.mps;"},
    {3, "*.wmv;*.asx;"},
};
constexpr MaskPosition AudioMasks[] = {
    {1, "*.mp3;*.mp1;*.mp2;*.mpa;"}, {2, "*.wav;"}, {3, "*.wma;*.asf;"},
    {4, "*.cda;"},                   {5, "*.mid;*.rmi;"},
};

template <size_t N>
QString SelectedMasks(const QString& mask, const MaskPosition (&table)[N]) {
  QString pattern;
  for (const MaskPosition& entry : table)
    if (MaskBitSet(mask, entry.Position)) pattern = QLatin1String(entry.Masks) + pattern;
  return pattern;
}

QString ExtensionMasks(const QStringList& extensions) {
  QString masks;
  for (const QString& extension : extensions) masks += QStringLiteral("*.") + extension + ';';
  return masks;
}

}  // namespace

QString PicturesPattern(const QString& selectPicturesMask) {
  return SelectedMasks(selectPicturesMask, PictureMasks);
}

QString VideosPattern(const QString& selectVideosMask, const QStringList& exteriorVideoExtensions) {
  return SelectedMasks(selectVideosMask, VideoMasks) + ExtensionMasks(exteriorVideoExtensions);
}

QString AudiosPattern(const QString& selectAudiosMask) {
  return SelectedMasks(selectAudiosMask, AudioMasks);
}

void AppendDocumentMasks(QString& pattern, const QStringList& documentExtensions) {
  pattern += ExtensionMasks(documentExtensions);
}

QString SortEntry(const QString& name, qint16 sortOrderCode, const QString& keyFolder) {
  switch (sortOrderCode) {
    case 2:
      return ExtensionSortEntry(name);
    case 3: {
      platform::FileFacts facts;
      if (!platform::GetFileFacts(JoinPath(keyFolder, name), facts))
        return DateSortEntry(QDate(), name);
      return DateSortEntry(QDateTime::fromSecsSinceEpoch(facts.CreatedSeconds).date(), name);
    }
    case 4: {
      platform::FileFacts facts;
      if (!platform::GetFileFacts(JoinPath(keyFolder, name), facts)) return name;
      return LengthSortEntry(facts.Length, name);
    }
    default:
      return name;
  }
}

qint32 ScrollMax(qint32 count, qint16 pageSize) {
  if (count <= 0) return 0;
  const qint32 size = pageSize < 1 ? 1 : pageSize;
  qint32 max = count / size;
  if (count % size == 0) --max;
  if (size == 1 && max >= 1) --max;
  return max;
}

int TabToShow(const std::array<TabState, TabCount>& tabs) {
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab)
    if (tabs[size_t(tab - 1)].Count > 0) return tab;
  return PicturesTab;
}

AlbumRows SplitAlbumRows(const QStringList& rows) {
  AlbumRows split;
  for (const QString& row : rows) {
    if (row.isEmpty()) continue;
    const QString type = GetMediaType(row);
    if (type == QLatin1String("P") || type == QLatin1String("I") || type == QLatin1String("C"))
      split.Pictures.append(row);
    else if (type == QLatin1String("V"))
      split.Videos.append(row);
    else if (type == QLatin1String("A"))
      split.Audios.append(row);
  }
  return split;
}

void Listing::ReadSelection() {
  AppState& app = App();
  app.SelectPicturesMask =
      settings::GetSetting("SelectPictures", settings::DefaultOf("SelectPictures"));
  app.SelectVideosMask = settings::GetSetting("SelectVideos", settings::DefaultOf("SelectVideos"));
  app.SelectAudiosMask = settings::GetSetting("SelectAudios", settings::DefaultOf("SelectAudios"));
  app.SortOrderCode = qint16(settings::GetInt("SortOrder", 1));
  app.SortDescendingFlag = settings::GetTrueFalse("SortDescending", false);

  const MediaTableSet& tables = MediaTables();
  Tab(PicturesTab).Pattern = PicturesPattern(app.SelectPicturesMask);
  Tab(VideosTab).Pattern = VideosPattern(app.SelectVideosMask, tables.ExteriorVideoExtensions);
  Tab(AudiosTab).Pattern = AudiosPattern(app.SelectAudiosMask);
  AppendDocumentMasks(Tab(DocumentsTab).Pattern, tables.DocumentExtensions);
  File1.ForgetPath();
}

void Listing::ListFolderTab(int tab, const QString& keyFolder, bool descending) {
  TabState& state = Tab(tab);
  QStringList& files = App().List(tab);
  files.clear();
  state.Count = 0;
  if (!state.Pattern.isEmpty()) {
    File1.SetPattern(state.Pattern.left(state.Pattern.size() - 1));
    state.Count = File1.ListCount();
  }
  const qint16 order = App().SortOrderCode;
  files.reserve(state.Count + 1);
  for (qint32 i = 0; i < state.Count; ++i) files.append(SortEntry(File1.List(i), order, keyFolder));
  files.append(QString());  // the scratch element
  if (order > 1 || descending) SortFileList(files, descending);
  Trace(QStringLiteral("listed %1 files of tab %2").arg(state.Count).arg(tab));
}

void Listing::BuildLists(const QString& keyFolder, const std::function<QStringList()>& albumRows,
                         const std::function<void(int tab)>& tabListed) {
  AppState& app = App();
  for (TabState& state : Tabs) state.Count = 0;
  const bool descending = app.SortDescendingFlag;

  if (app.AlbumMode) {
    const AlbumRows rows = SplitAlbumRows(albumRows ? albumRows() : QStringList());
    const QStringList* byTab[] = {&rows.Pictures, &rows.Videos, &rows.Audios};
    for (int tab = PicturesTab; tab <= AudiosTab; ++tab) {
      // Album entries keep the order of the album's rows.
      QStringList& files = App().List(tab);
      files = *byTab[tab - 1];
      Tab(tab).Count = qint32(files.size());
      files.append(QString());
      if (tabListed) tabListed(tab);
    }
    // The documents of the folder shown last, read again.
    File1.Refresh();
  } else {
    // One reading of the folder serves all four tabs.
    File1.SetPath(app.CurrentFolder);
    File1.Refresh();
    for (int tab = PicturesTab; tab <= AudiosTab; ++tab) {
      ListFolderTab(tab, keyFolder, descending);
      if (tabListed) tabListed(tab);
    }
  }
  ListFolderTab(DocumentsTab, keyFolder, descending);
  if (tabListed) tabListed(DocumentsTab);
}
