#include "cd/Mp3Tags.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "cd/TagFileWriter.h"
#include "platform/FileTimes.h"

namespace {

// Offsets in the tail records.
constexpr int TitleAt = 3, ArtistAt = 33, AlbumAt = 63, YearAt = 93;
constexpr int TextSize = 30, YearSize = 4;
constexpr int Mp3TrackAt = 126, Mp3GenreAt = 127;
constexpr int WavTrackAt = 97, WavGenreAt = 98;
constexpr int GenreCount = 126;
// Where the title of a WMA file begins (its first byte is 1 here).
constexpr int WmaTitleAt = 64;
// From a WMA field's name to its value: the name's closing NUL, the value's
// type and its length.
constexpr int WmaValueGap = 6;
// From a frame's id to its text: the id, the size, the flags and the
// encoding byte.
constexpr int FrameTextGap = 11;

bool IsLetter(QChar c) {
  const ushort u = c.unicode();
  return (u >= 'A' && u <= 'Z') || (u >= 'a' && u <= 'z');
}

// A record begins with "TAG", in any case.
bool HasTagMark(const QByteArray& record) { return record.left(3).toUpper() == "TAG"; }

// A text field of a tail record: right-trimmed of blanks, then its
// printable characters (a NUL padding is dropped, blanks before it stay).
QString RecordText(const QByteArray& record, int offset) {
  QByteArray field = record.mid(offset, TextSize);
  while (field.endsWith(' ')) field.chop(1);
  return KeepPrintable(field);
}

// The numeric value of a text as far as it makes a number: blanks, tabs and
// line feeds are passed over anywhere, then a sign, digits and one point;
// 0 when it begins with anything else.
double ValueOf(const QString& text) {
  QString plain;
  for (QChar c : text)
    if (c != u' ' && c != u'\t' && c != u'\n') plain += c;
  qsizetype i = 0;
  bool negative = false;
  if (i < plain.size() && (plain[i] == u'-' || plain[i] == u'+')) negative = plain[i++] == u'-';
  double value = 0, scale = 0;
  for (; i < plain.size(); ++i) {
    const QChar c = plain[i];
    if (c == u'.' && scale == 0) {
      scale = 1;
    } else if (c.isDigit() && c.unicode() < 128) {
      if (scale == 0) {
        value = value * 10 + (c.unicode() - '0');
      } else {
        scale /= 10;
        value += scale * (c.unicode() - '0');
      }
    } else {
      break;
    }
  }
  return negative ? -value : value;
}
double ValueOf(const QByteArray& bytes) { return ValueOf(QString::fromLatin1(bytes)); }

// "Track 07": the number rounded, at least two digits.
QString TrackText(double number) {
  return QStringLiteral("Track %1").arg(qRound64(number), 2, 10, QLatin1Char('0'));
}

QString YearText(double year) { return QString::number(qRound64(year)); }

// A track frame's text is the number before any "/" ("7/12").
QString BeforeSlash(QString text) {
  const qsizetype slash = text.indexOf(u'/');
  if (slash >= 0) text.truncate(slash);
  return text;
}

// The index of the first genre name equal to the text in lower case; -1.
int GenreIndexOf(const QString& text) {
  const QString wanted = text.toLower();
  const QStringList& names = GenreNames();
  for (int i = 0; i < names.size(); ++i)
    if (names[i].toLower() == wanted) return i;
  return -1;
}

// ---- WMA -------------------------------------------------------------------

// The end of a WMA text: the last character's high byte and a NUL pair.
const QByteArray& WmaEndMark() {
  static const QByteArray mark(3, '\0');
  return mark;
}

// The characters of code 32 to 125.
QString CleanWmaText(const QByteArray& bytes) {
  QString text;
  for (char c : bytes)
    if (uchar(c) >= 32 && uchar(c) <= 125) text += QLatin1Char(c);
  return text;
}

// A field name as it stands in the file: 16-bit little-endian characters.
QByteArray WideName(const char* name) {
  QByteArray wide;
  for (const char* p = name; *p; ++p) {
    wide += *p;
    wide += '\0';
  }
  return wide;
}

// Where the value of the named field begins; -1 without the field.
qsizetype WmaValueAt(const QByteArray& file, const char* name) {
  const QByteArray wide = WideName(name);
  const qsizetype at = file.indexOf(wide);
  return at < 0 ? -1 : at + wide.size() + WmaValueGap;
}

// The cleaned text from `from` up to the next end mark; false when no end
// mark follows.
bool WmaTextFrom(const QByteArray& file, qsizetype from, QString& text) {
  if (from < 0 || from >= file.size()) return false;
  const qsizetype end = file.indexOf(WmaEndMark(), from);
  if (end < 0) return false;
  text = CleanWmaText(file.mid(from, end - from));
  return true;
}

bool WmaField(const QByteArray& file, const char* name, QString& text) {
  return WmaTextFrom(file, WmaValueAt(file, name), text);
}

// ---- Reading a file --------------------------------------------------------

// The last `size` bytes of the open file, or nothing when it is shorter.
QByteArray ReadTail(QFile& file, int size) {
  const qint64 length = file.size();
  if (length < size || !file.seek(length - size)) return {};
  return file.read(size);
}

QByteArray ReadHead(QFile& file, qint64 size) {
  if (!file.seek(0)) return {};
  return file.read(size);
}

QByteArray Padded(QByteArray bytes, int size) {
  bytes.truncate(size);
  if (bytes.size() < size) bytes.append(size - bytes.size(), ' ');
  return bytes;
}

// Blanks a frame's old value with zero bytes: from behind the frame's id to
// the end of the first occurrence of the value from there. A value that
// does not stand in the header as it was read (its bytes were not all
// printable) is left alone.
void WipeFrame(TagFormValues& values, const QByteArray& id, const QString& oldValue,
               std::vector<FilePatch>& patches) {
  const QByteArray& header = values.HeaderText;
  const qsizetype idAt = header.indexOf(id);
  if (idAt < 0) return;
  const qsizetype from = idAt + id.size();
  const QByteArray old = oldValue.toLatin1();
  const qsizetype found = header.indexOf(old, from);
  if (found < 0) return;
  const qsizetype end = found + old.size();  // one past the value
  // The editor's fields count from 1 and include the last byte.
  values.WipeStart = int(from + 1);
  values.WipeEnd = int(end);
  if (end > from) patches.push_back({from, QByteArray(end - from, '\0')});
}

}  // namespace

// ---- Tables ------------------------------------------------------------------

const QStringList& GenreNames() {
  static const QStringList names = {
      "Blues", "Classic Rock", "Country", "Dance", "Disco", "Funk", "Grunge", "Hip-Hop", "Jazz",
      "Metal", "New Age", "Oldies", "Other", "Pop", "Rhythm and Blues", "Rap", "Reggae", "Rock",
      "Techno", "Industrial", "Alternative", "Ska", "Death Metal", "Pranks", "Soundtrack",
      "Euro-Techno", "Ambient", "Trip-Hop", "Vocal", "Jazz+Funk", "Fusion", "Trance", "Classical",
      "Instrumental", "Acid", "House", "Game", "Sound Clip", "Gospel", "Noise", "AlternRock",
      "Bass", "Soul", "Punk", "Space", "Meditative", "Instrumental Pop", "Instrumental Rock",
      "Ethnic", "Gothic", "Darkwave", "Techno-Industrial", "Electronic", "Pop-Folk", "Eurodance",
      "Dream", "Southern Rock", "Comedy", "Cult", "Gangsta", "Top 40", "Christian Rap", "Pop/Funk",
      "Jungle", "Native American", "Cabaret", "New Wave", "Psychadelic", "Rave", "Showtunes",
      "Trailer", "Lo-Fi", "Tribal", "Acid Punk", "Acid Jazz", "Polka", "Retro", "Musical",
      "Rock and Roll", "Hard Rock", "Folk", "Folk-Rock", "National Folk", "Swing", "Fast Fusion",
      "Bebob", "Latin", "Revival", "Celtic", "Bluegrass", "Avantgarde", "Gothic Rock",
      "Progressive Rock", "Psychedelic Rock", "Symphonic Rock", "Slow Rock", "Big Band", "Chorus",
      "Easy Listening", "Acoustic", "Humour", "Speech", "Chanson", "Opera", "Chamber Music",
      "Sonata", "Symphony", "Booty Brass", "Primus", "Porn Groove", "Satire", "Slow Jam", "Club",
      "Tango", "Samba", "Folklore", "Ballad", "Poweer Ballad", "Rhytmic Soul", "Freestyle", "Duet",
      "Punk Rock", "Drum Solo", "A Capela", "Euro-House", "Dance Hall"};
  return names;
}

void FillGenreTable() {
  // The table is built on its first use; building it here keeps that cost
  // out of the first tag read.
  static_cast<void>(GenreNames());
}

const std::array<QByteArray, 17>& Id3FrameIds() {
  static const std::array<QByteArray, 17> ids = {
      QByteArray("TIT2"), "TPE1", "TALB", "TRCK", "TYER", "TCON", "TPUB", "PRIV", "MCDI",
      "UFID", "GI2", "TSSE", "GEOB", "COMM", "TT", ".mp", ".MP"};
  return ids;
}

// ---- Text rules ----------------------------------------------------------------

QString KeepPrintable(const QByteArray& bytes) {
  QString text;
  text.reserve(bytes.size());
  for (char c : bytes)
    if (uchar(c) >= 32 && uchar(c) <= 126) text += QLatin1Char(c);
  return text;
}

QString FindFrameText(const QByteArray& header, const QByteArray& id, int limit) {
  const qsizetype at = id.isEmpty() ? -1 : header.indexOf(id);
  if (at < 0) return {};
  QString text = KeepPrintable(header.mid(at + id.size())).trimmed();
  // What is left of the frame's size, flags and encoding.
  if (!text.isEmpty() && !IsLetter(text[0])) text.remove(0, 1);
  for (const QByteArray& mark : Id3FrameIds()) {
    const qsizetype end = text.indexOf(QLatin1String(mark));
    if (end >= 0) text.truncate(end);
  }
  return text.left(limit);
}

QString ExtractFrameText(const QByteArray& header, const QByteArray& id) {
  const qsizetype at = id.isEmpty() ? -1 : header.indexOf(id);
  if (at < 0) return {};
  const qsizetype start = at + FrameTextGap;
  int blanks = 0, capitals = 0;
  qsizetype end = -1;
  for (qsizetype i = start; i < header.size() && end < 0; ++i) {
    const char c = header[i];
    if (c == ' ') {
      ++blanks;
      capitals = 0;
      if (blanks == 2) end = i - 1;
    } else if (c >= 'A' && c <= 'Z') {
      blanks = 0;
      ++capitals;
      // The next frame's id has begun.
      if (capitals == 3) end = i - 2;
    } else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '(' || c == ')' ||
               c == '/') {
      blanks = capitals = 0;
    } else {
      end = i;
    }
  }
  if (end <= start) return {};
  return QString::fromLatin1(header.mid(start, end - start));
}

// ---- Reading -------------------------------------------------------------------

TagTexts ReadMp3Tags(const QByteArray& tail, const QByteArray& header) {
  TagTexts texts;
  if (tail.size() < Mp3TailSize) return texts;
  const QByteArray record = tail.right(Mp3TailSize);
  if (!HasTagMark(record)) return texts;

  const struct {
    int at;
    const char* id;
    QString* shown;
  } fields[] = {{TitleAt, "TIT2", &texts.Title},
                {ArtistAt, "TPE1", &texts.Artist},
                {AlbumAt, "TALB", &texts.Album}};
  for (const auto& field : fields) {
    QString text = RecordText(record, field.at);
    if (text.isEmpty()) text = FindFrameText(header, field.id, TextSize);
    if (!text.isEmpty()) *field.shown = text;
  }

  double year = ValueOf(record.mid(YearAt, YearSize));
  if (year <= 1900) year = ValueOf(FindFrameText(header, "TYER", YearSize));
  if (year > 1900) texts.Year = YearText(year);

  const int track = uchar(record[Mp3TrackAt]);
  if (track >= 1 && track < 32) {
    texts.Track = TrackText(track);
  } else {
    const double number = ValueOf(BeforeSlash(FindFrameText(header, "TRCK", 5)));
    if (number > 0) texts.Track = TrackText(number);
  }

  const int genre = uchar(record[Mp3GenreAt]);
  if (genre < GenreCount) {
    texts.Genre = GenreNames()[genre];
  } else {
    const int index = GenreIndexOf(FindFrameText(header, "TCON", 20));
    if (index >= 0) texts.Genre = GenreNames()[index];
  }
  return texts;
}

TagTexts ReadWavTags(const QByteArray& tail) {
  TagTexts texts;
  if (tail.size() < WavTailSize) return texts;
  const QByteArray record = tail.right(WavTailSize);
  if (!HasTagMark(record)) return texts;
  if (QString text = RecordText(record, TitleAt); !text.isEmpty()) texts.Title = text;
  if (QString text = RecordText(record, ArtistAt); !text.isEmpty()) texts.Artist = text;
  if (QString text = RecordText(record, AlbumAt); !text.isEmpty()) texts.Album = text;
  if (const double year = ValueOf(record.mid(YearAt, YearSize)); year > 1900)
    texts.Year = YearText(year);
  if (const int track = uchar(record[WavTrackAt]); track >= 1 && track <= 31)
    texts.Track = TrackText(track);
  if (const int genre = uchar(record[WavGenreAt]); genre < GenreCount)
    texts.Genre = GenreNames()[genre];
  return texts;
}

TagTexts ReadMidiTags(const QByteArray& head) {
  TagTexts texts;
  const QByteArray bytes = head.left(MidiHeadSize);
  // Text events (FF 01) and track names (FF 03): the first of each kind and
  // the last of the later ones.
  QString firstText, secondText, firstName, secondName;
  int textEvents = 0, nameEvents = 0;
  for (qsizetype i = 0; i + 2 < bytes.size() && textEvents + nameEvents < 5; ++i) {
    if (uchar(bytes[i]) != 0xFF || (bytes[i + 1] != 1 && bytes[i + 1] != 3)) continue;
    const QString text = QString::fromLatin1(bytes.mid(i + 3, uchar(bytes[i + 2])));
    if (bytes[i + 1] == 1) {
      if (textEvents++ == 0) {
        qsizetype lead = 0;
        while (lead < text.size() && text[lead] == u' ') ++lead;
        firstText = text.mid(lead);
      } else {
        secondText = text;
      }
    } else if (nameEvents++ == 0) {
      firstName = text;
    } else {
      secondName = text;
    }
  }
  // Without a first track name, a second text event brings the second
  // track name to the title, empty or not.
  if (!firstName.isEmpty())
    texts.Title = firstName;
  else if (!secondText.isEmpty())
    texts.Title = secondName;
  if (!firstText.isEmpty()) texts.Artist = firstText;
  return texts;
}

TagTexts ReadWmaTags(const QByteArray& file) {
  TagTexts texts;
  // The title stands at a fixed place, the artist behind it.
  if (file.size() > WmaTitleAt) {
    const qsizetype titleEnd = file.indexOf(WmaEndMark(), WmaTitleAt);
    if (titleEnd >= 0) {
      const QString title = CleanWmaText(file.mid(WmaTitleAt, titleEnd - WmaTitleAt));
      if (!title.isEmpty()) texts.Title = title;
      QString artist;
      if (WmaTextFrom(file, titleEnd + WmaEndMark().size(), artist) && !artist.isEmpty())
        texts.Artist = artist;
    }
  }
  QString text;
  if (WmaField(file, "WM/AlbumTitle", text)) texts.Album = text;
  if (WmaField(file, "WM/Year", text)) texts.Year = text;
  if (WmaField(file, "WM/Genre", text))
    texts.Genre = text.left(1).toUpper() + text.mid(1).toLower();
  const qsizetype trackAt = WmaValueAt(file, "WM/TrackNumber");
  if (trackAt >= 0 && trackAt < file.size())
    if (const int track = uchar(file[trackAt]); track >= 1 && track <= 31)
      texts.Track = TrackText(track);
  return texts;
}

TagTexts ReadTags(const QString& path) {
  const QString extension = QFileInfo(path).suffix().toLower();
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return TagTexts();
  if (extension == "mp1" || extension == "mp2" || extension == "mp3") {
    const QByteArray tail = ReadTail(file, Mp3TailSize);
    if (tail.isEmpty()) return TagTexts();
    return ReadMp3Tags(tail, ReadHead(file, Mp3HeaderSize));
  }
  if (extension == "mid" || extension == "midi" || extension == "rmi")
    return ReadMidiTags(ReadHead(file, MidiHeadSize));
  if (extension == "wma") return ReadWmaTags(ReadHead(file, WmaReadLimit));
  if (extension == "wav") return ReadWavTags(ReadTail(file, WavTailSize));
  return TagTexts();
}

// ---- The tag editor ----------------------------------------------------------

TagFormValues LoadTags(const QByteArray& tail, const QByteArray& header) {
  TagFormValues values;
  if (tail.size() >= Mp3TailSize) {
    values.HeaderText = header.left(FormHeaderSize);
    const QByteArray record = tail.right(Mp3TailSize);
    if (HasTagMark(record)) {
      const QByteArray& head = values.HeaderText;
      const struct {
        int at;
        const char* id;
        QString* shown;
        QString* frame;
      } fields[] = {{TitleAt, "TIT2", &values.Title, &values.FrameTitle},
                    {ArtistAt, "TPE1", &values.Artist, &values.FrameArtist},
                    {AlbumAt, "TALB", &values.Album, &values.FrameAlbum}};
      for (const auto& field : fields) {
        QString text = RecordText(record, field.at);
        if (text.isEmpty()) text = *field.frame = FindFrameText(head, field.id, TextSize);
        if (!text.isEmpty()) *field.shown = text;
      }

      double year = ValueOf(record.mid(YearAt, YearSize));
      if (year <= 1900) {
        values.FrameYear = FindFrameText(head, "TYER", YearSize);
        year = ValueOf(values.FrameYear);
      }
      if (year > 1900) values.Year = int(qRound64(year));

      const int track = uchar(record[Mp3TrackAt]);
      if (track >= 1 && track <= 31) {
        values.Track = track;
      } else {
        values.FrameTrack = BeforeSlash(FindFrameText(head, "TRCK", 5));
        if (const double number = ValueOf(values.FrameTrack); number > 0)
          values.Track = int(qRound64(number));
      }

      const int genre = uchar(record[Mp3GenreAt]);
      if (genre < GenreCount) {
        values.Genre = genre;
      } else {
        values.FrameGenre = FindFrameText(head, "TCON", 20);
        values.Genre = GenreIndexOf(values.FrameGenre);
      }
    }
  }
  // Whatever stood there: the album the frame scan finds, or nothing.
  values.Album = ExtractFrameText(values.HeaderText, "TALB").left(TextSize);
  return values;
}

TagFormValues LoadTagsFromFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return LoadTags({}, {});
  const QByteArray tail = ReadTail(file, Mp3TailSize);
  return LoadTags(tail, tail.isEmpty() ? QByteArray() : ReadHead(file, FormHeaderSize));
}

std::vector<FilePatch> SaveTags(TagFormValues& values, qint64 fileLength) {
  std::vector<FilePatch> patches;
  if (fileLength < Mp3TailSize) return patches;
  const qint64 record = fileLength - Mp3TailSize;
  patches.push_back({record, QByteArray("TAG")});

  const struct {
    int at;
    const char* id;
    const QString& text;
    const QString& frame;
  } fields[] = {{TitleAt, "TIT2", values.Title, values.FrameTitle},
                {ArtistAt, "TPE1", values.Artist, values.FrameArtist},
                {AlbumAt, "TALB", values.Album, values.FrameAlbum}};
  for (const auto& field : fields) {
    patches.push_back({record + field.at, Padded(field.text.toLatin1(), TextSize)});
    if (field.text.trimmed().isEmpty() && !field.frame.isEmpty())
      WipeFrame(values, field.id, field.frame, patches);
  }

  // The year's thirty places blank the comment behind it too.
  const QByteArray year = values.Year != 0 ? QByteArray::number(values.Year) : QByteArray();
  patches.push_back({record + YearAt, Padded(year, TextSize)});
  if (values.Year == 0 && !values.FrameYear.isEmpty())
    WipeFrame(values, "TYER", values.FrameYear, patches);

  // A track number beyond what one byte holds is kept at the most it does.
  const int track = std::clamp(values.Track, 0, 255);
  patches.push_back({record + Mp3TrackAt, QByteArray(1, char(track))});
  if (track == 0 && !values.FrameTrack.isEmpty())
    WipeFrame(values, "TRCK", values.FrameTrack, patches);

  const int genre = values.Genre >= 0 && values.Genre < GenreCount ? values.Genre : GenreCount;
  patches.push_back({record + Mp3GenreAt, QByteArray(1, char(genre))});
  if (genre == GenreCount && !values.FrameGenre.isEmpty())
    WipeFrame(values, "TCON", values.FrameGenre, patches);
  return patches;
}

bool SaveTagsToFile(const QString& path, TagFormValues& values) {
  // A file that still cannot be written after this fails below, and is
  // left as it was.
  platform::ClearAttributes(path);
  const qint64 length = platform::FileSizeBytes(path);
  if (length < Mp3TailSize) return false;
  return WriteTagEdits(path, SaveTags(values, length));
}
