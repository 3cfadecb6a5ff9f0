#include "catalogue/MediaTypes.h"

#include <QFile>

#include "catalogue/PathParts.h"
#include "core/AppState.h"

MediaTableSet& MediaTables() { return App().MediaTables; }

void FillMediaTables() {
  MediaTableSet& t = MediaTables();
  t.PictureExtensions = {"bmp", "dib", "rle", "xbm", "gif", "jpeg", "jpe", "jpg", "wmf", "emf",
                         "png", "mng", "tif", "tiff", "jfx", "pcx", "xif", "ico", "cur"};
  t.PictureCount = int(t.PictureExtensions.size());
  t.VideoExtensions = {"avi", "ivf", "mpg", "mpe", "mpeg", "m1v", "mpv2", "wmv", "mps", "asx"};
  t.VideoCount = int(t.VideoExtensions.size());
  // "asf" stays among the audios.
  t.AudioExtensions = {"mp3", "mp2", "mp1", "mpa", "wav", "wma", "asf", "mid", "midi", "rmi", "cda"};
  t.AudioCount = int(t.AudioExtensions.size());
  t.WebExtensions = {"htm", "html", "asp", "xml", "com", "art"};
  t.WebCount = int(t.WebExtensions.size());
}

void FillExteriorTables() {
  MediaTableSet& t = MediaTables();
  t.ExteriorVideoExtensions = {"flv", "mp4", "rm", "ram", "mov"};
  t.ExteriorVideoCount = int(t.ExteriorVideoExtensions.size());
  t.DocumentExtensions = {"txt", "text", "rdf", "doc", "docx", "pdf"};
  t.DocumentCount = int(t.DocumentExtensions.size());
}

QString GetMediaType(const QString& name) {
  const QString extension = GetFileExtension(name);
  const MediaTableSet& t = MediaTables();
  if (extension == QLatin1String("ico")) return QStringLiteral("I");
  if (extension == QLatin1String("cur")) return QStringLiteral("C");
  // Real media is told apart before the tables, so "ram" and "rm" never
  // count as video here although they stand among the exterior videos.
  if (extension == QLatin1String("ra") || extension == QLatin1String("ram") ||
      extension == QLatin1String("rm"))
    return QStringLiteral("R");
  if (t.PictureExtensions.contains(extension)) return QStringLiteral("P");
  if (t.VideoExtensions.contains(extension) || t.ExteriorVideoExtensions.contains(extension))
    return QStringLiteral("V");
  if (t.AudioExtensions.contains(extension)) return QStringLiteral("A");
  if (t.DocumentExtensions.contains(extension)) return QStringLiteral("D");
  if (t.WebExtensions.contains(extension)) return QStringLiteral("W");
  if (name.startsWith(QLatin1String("ftp"), Qt::CaseInsensitive) ||
      name.startsWith(QLatin1String("http"), Qt::CaseInsensitive))
    return QStringLiteral("W");
  return QStringLiteral("U");
}

bool IsValidJpegEnd(const QString& path) {
  const QString extension = GetFileExtension(path);
  if (extension != QLatin1String("jpg") && extension != QLatin1String("jpeg") &&
      extension != QLatin1String("jpe"))
    return true;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return false;
  const qint64 size = file.size();
  if (size < 2 || !file.seek(size - 2)) return false;
  const QByteArray tail = file.read(2);
  return tail.size() == 2 && uchar(tail[0]) == 0xFF && uchar(tail[1]) == 0xD9;
}

QString MaskCharacter(const QString& mask, int position) {
  if (position < 1 || position > mask.size()) return QString();
  return mask.mid(position - 1, 1);
}

bool MaskBitSet(const QString& mask, int position) {
  return MaskCharacter(mask, position) == QLatin1String("1");
}

namespace {

// The entries both lists share, up to the point where they part.
QStringList CommonTypeEntries(const QString& networkGraphics) {
  return {"All supported media types",
          "All pictures",
          "Bitmaps (*.bmp;*.dib;*.rle;*.xbm)",
          "GIF images (*.gif)",
          "JPEG images (*.jpeg;*.jpg;*.jpe)",
          "Metafiles (*.wmf;*.emf)",
          networkGraphics,
          "TIF format images (*.tif;*.tiff;*.jfx)",
          "PC Paintbrush images (*.pcx)",
          "XIF images (*.xif)",
          "Icons and cursors (*.ico; *.cur)",
          "All videos",
          "Video files (*.avi;*.ivf)",
          "Movie files (*.mpg;*.mpe;*.mpeg;*.mpv2;*.m1v;*.mps)",
          "Windows video files (*.wmv;*.asx)",
          "All audios",
          "MP3 files (*.mp3;*.mp1;*.mp2;*.mpa)",
          "WAV files (*.wav)",
          "Windows audio files (*.wma;*.asf)"};
}

}  // namespace

const QStringList& FindFilesTypeList() {
  static const QStringList list = CommonTypeEntries("Network graphics images (*.png;*.mng)")
                                  << "CD audio track files (*.cda)"
                                  << "MIDI files (*.mid;*.midi;*.rmi)";
  return list;
}

const QStringList& AlbumEditTypeList() {
  // The album editor has no entry for CD tracks.
  static const QStringList list = CommonTypeEntries("Network graphics (*.png;*.mng)")
                                  << "MIDI files (*.mid;*.midi;*.rmi)";
  return list;
}
