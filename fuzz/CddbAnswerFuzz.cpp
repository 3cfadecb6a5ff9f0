// What a lookup makes of a server's answer for a disc that may hold texts
// of its own. The input is the answer's lines as UTF-8, as the reply's
// reader hands them over: title, artist, genre, year, then track titles;
// a first byte gives the disc's own state (which texts it has, its ticks).
#include "cd/CddbLookup.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const uint8_t state = data[0];
  const QList<QByteArray> lines = fuzz::Bytes(data + 1, size - 1).split('\n');
  CddbDisc answer;
  answer.Title = QString::fromUtf8(lines.value(0));
  answer.Artist = QString::fromUtf8(lines.value(1));
  answer.Genre = QString::fromUtf8(lines.value(2));
  answer.Year = lines.value(3).toInt();
  for (qsizetype i = 4; i < lines.size(); ++i) answer.TrackTitles << QString::fromUtf8(lines[i]);

  CdTitle current;
  if (state & 1) current.MediaTitle = QStringLiteral("Own title");
  if (state & 2) current.MediaArtist = QStringLiteral("Own artist");
  if (state & 4) current.MediaStyle = QStringLiteral("Own style");
  if (state & 8) current.MediaYear = 1999;
  QList<bool> kept;
  for (int i = 4; i < 8; ++i) kept << bool(state >> i & 1);

  const CdLookupRows rows = MakeCdLookupRows(current, kept, answer);
  if (rows.Songs.size() != answer.TrackTitles.size() || rows.Title.size() > 50 || rows.Artist.size() > 50 ||
      rows.Style.size() > 30)
    __builtin_trap();
  return 0;
}
