#pragma once
// Title, artist, album, year, track and genre of audio files, for the
// player's audio panel and for the tag editor ChangeMP3.
//
// The reading is no parser of the tag formats. For mp1, mp2 and mp3 files
// the fixed 128-byte record at the end of the file ("TAG", title, artist,
// album, year, comment, track byte, genre byte) comes first; a field that is
// empty there is looked for in the first kilobyte of the file by a frame's
// four-letter id, and the text behind the id is taken by rules of thumb.
// WAV files carry a 99-byte record of the same kind at their end; MIDI
// files give their text and track-name events; WMA files the texts of their
// header. The rules are kept exactly, odd results included: they are what
// the user has always seen for a file.
//
// Everything works on bytes handed in, one character a byte, so that the
// rules can be tried on any bytes; ReadTags and the file functions read
// what the rules need from a file.

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <array>
#include <vector>

#include "cd/TagFileWriter.h"

// The 126 genre names, index 0 to 125, as the genre byte of the tail record
// numbers them (spelled as the program has always shown them).
const QStringList& GenreNames();
// Makes the genre table ready; called once at start.
void FillGenreTable();

// The 17 frame ids that the rules know. The first six name the fields:
// title, artist, album, track, year, genre; all seventeen end a frame's text.
const std::array<QByteArray, 17>& Id3FrameIds();

// The characters of code 32 to 126 of the bytes, in order.
QString KeepPrintable(const QByteArray& bytes);
// The text behind the first occurrence of id in the header: what follows
// it, printable characters only, trimmed; a first character that is no
// letter dropped (the rest of the frame's size, flags and encoding); cut
// before any of the 17 frame ids it holds; at most limit characters. Empty
// when the id is not there.
QString FindFrameText(const QByteArray& header, const QByteArray& id, int limit);
// The stricter scan used for the album: the text 11 bytes behind the id
// (id, size, flags, encoding), up to two blanks in a row, three capitals in
// a row (the next frame's id) or a character that is not a letter, digit,
// blank, "(", ")" or "/". Empty when the id is not there, when the header
// ends before such an end, or when nothing stands before the end.
QString ExtractFrameText(const QByteArray& header, const QByteArray& id);

// The six texts of the audio panel. Before a file is read they stand at
// "Unknown", the track at nothing; a rule that finds a field replaces its
// text. The panel shows all six once the file has been read.
struct TagTexts {
  QString Title = QStringLiteral("Unknown");
  QString Artist = QStringLiteral("Unknown");
  QString Album = QStringLiteral("Unknown");
  QString Year = QStringLiteral("Unknown");
  QString Track;  // "Track 07"
  QString Genre = QStringLiteral("Unknown");
};

// The sizes the rules read.
constexpr int Mp3TailSize = 128;
constexpr int WavTailSize = 99;
constexpr int Mp3HeaderSize = 1028;   // the player's look at the frames
constexpr int FormHeaderSize = 1024;  // the tag editor's
constexpr int MidiHeadSize = 512;
// A WMA file's texts stand in its header object at the start; the whole
// file is looked at, but no more than this much of it.
constexpr int WmaReadLimit = 256 * 1024;

// tail: the last 128 bytes of the file (the whole file when it is shorter);
// header: its first 1028 bytes.
TagTexts ReadMp3Tags(const QByteArray& tail, const QByteArray& header);
// tail: the last 99 bytes of the file (the whole file when it is shorter).
TagTexts ReadWavTags(const QByteArray& tail);
// head: the first 512 bytes of the file.
TagTexts ReadMidiTags(const QByteArray& head);
// file: the file's bytes.
TagTexts ReadWmaTags(const QByteArray& file);
// Reads the file by its lower-cased extension: mp1, mp2, mp3; mid, midi,
// rmi; wma; wav. Any other file, or one that cannot be read, gives the
// texts as they stand before a read.
TagTexts ReadTags(const QString& path);

// ---- The tag editor ----------------------------------------------------------

// What the tag editor shows and keeps for one file.
struct TagFormValues {
  QString Title = QStringLiteral("Unknown");
  QString Artist = QStringLiteral("Unknown");
  QString Album;
  int Year = 0;    // 0: the box stays empty
  int Track = 0;   // 0: the box stays empty
  int Genre = -1;  // index into GenreNames, -1 for none
  // The first 1024 bytes of the file as they were read.
  QByteArray HeaderText;
  // The values found through frames, each empty when the tail record gave
  // the field: a box emptied by the user blanks its frame's old value.
  QString FrameTitle, FrameArtist, FrameAlbum, FrameGenre, FrameTrack, FrameYear;
  // The last range of bytes blanked by a save, 1-based and inclusive.
  int WipeStart = 0, WipeEnd = 0;
};

// The editor's values from the last 128 bytes of the file (the whole file
// when shorter) and its first 1024 bytes. The album is always what
// ExtractFrameText finds for "TALB", cut to 30 characters: a file without
// that frame shows an empty album in the editor, whatever its tail record
// holds.
TagFormValues LoadTags(const QByteArray& tail, const QByteArray& header);
// The same, read from the file.
TagFormValues LoadTagsFromFile(const QString& path);

// What a save does to a file of the given length, in the order it is done:
// "TAG", title, artist and album at length - 128 onwards, the year (which
// blanks most of the comment), the track and genre bytes, and between them
// the frames' old values blanked with zero bytes where the user emptied a
// field that came from a frame. A file shorter than 128 bytes gets nothing.
// The record overwrites the last 128 bytes whether a record stood there or
// not; frames are only ever blanked, never rewritten. values' WipeStart and
// WipeEnd take the last range blanked.
std::vector<FilePatch> SaveTags(TagFormValues& values, qint64 fileLength);

// The editor's save: the file is made writable first (a read-only file is
// written, and stays writable afterwards), then SaveTags and WriteTagEdits
// (TagFileWriter.h).
// Nothing is said when it fails: a file on a read-only medium, a missing
// file or a full disk leave the file unchanged. True when the file was
// written; a file shorter than 128 bytes is not.
bool SaveTagsToFile(const QString& path, TagFormValues& values);
