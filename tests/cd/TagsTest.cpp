#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <csignal>

#include "cd/ChangeMP3.h"
#include "cd/Mp3Tags.h"
#include "controls/NumberBox.h"
#include "core/WindowRegistry.h"
#include "support/TestEnv.h"

namespace {

// The six texts the player's panel shows: title, artist, album, year,
// track, genre.
QStringList Shown(const TagTexts& t) { return {t.Title, t.Artist, t.Album, t.Year, t.Track, t.Genre}; }

QByteArray Bytes(std::initializer_list<int> values) {
  QByteArray bytes;
  for (int v : values) bytes += char(v);
  return bytes;
}

QByteArray Padded(const QByteArray& text, int size, char fill = '\0') {
  return text + QByteArray(size - text.size(), fill);
}

// A tail record as taggers write it, padded with NULs.
QByteArray Record(const QByteArray& title, const QByteArray& artist, const QByteArray& album,
                  const QByteArray& year, int track, int genre, const QByteArray& mark = "TAG") {
  return mark + Padded(title, 30) + Padded(artist, 30) + Padded(album, 30) + Padded(year, 4) +
         QByteArray(29, '\0') + Bytes({track, genre});
}

// A frame with a one-byte size (text plus its encoding byte).
QByteArray Frame(const QByteArray& id, const QByteArray& text) {
  return id + Bytes({0, 0, 0, int(text.size() + 1), 0, 0, 0}) + text;
}

QByteArray Wide(const QByteArray& text) {
  QByteArray wide;
  for (char c : text) wide += QByteArray(1, c) + '\0';
  return wide;
}

// Runs a tool; true when it succeeded.
bool RunTool(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(QStandardPaths::findExecutable(program), arguments);
  return process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit &&
         process.exitCode() == 0;
}

QByteArray Contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class TagsTest : public testing::Test {
 protected:
  void TearDown() override {
    Windows().Unload(WindowId::ChangeMP3);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  QString Path(const QString& name) { return testenv::Root() + "/home/" + name; }
  // One second of tone as MP3, with no tag of any kind.
  QString MakeMp3(const QString& name) {
    const QString path = Path(name);
    QDir().mkpath(QFileInfo(path).absolutePath());
    EXPECT_TRUE(
        RunTool("ffmpeg", {"-loglevel", "error", "-f", "lavfi", "-i", "sine=duration=1", "-c:a",
                           "libmp3lame", "-b:a", "64k", "-id3v2_version", "0", path}));
    return path;
  }
};

// The file's bytes: ID3 header, title, artist, year, track and genre
// frames; 1200 bytes with the tail record from `tail` on.
QByteArray FramedFile(const QByteArray& tail) {
  QByteArray head = Bytes({'I', 'D', '3', 3, 0, 0, 0, 0, 0x0C, 0x7F});  // 0..9
  head += Frame("TIT2", "Morning Song");                                // 10..32
  head += Frame("TPE1", "The Band");                                    // 33..51
  head += Frame("TYER", "2003");                                        // 52..66
  head += Frame("TRCK", "07/12");                                       // 67..82
  head += Frame("TCON", "(13)");                                        // 83..97
  return Padded(head, 1200 - tail.size()) + tail;
}

}  // namespace

TEST(TagRules, FrameTextIsTakenByItsRulesOfThumb) {
  const QByteArray frames = Frame("TIT2", "Morning Song") + Frame("TPE1", "The Band");
  EXPECT_EQ(FindFrameText(frames, "TIT2", 30), "Morning Song");
  EXPECT_EQ(FindFrameText(frames, "TALB", 30), "");
  // A first character that is no letter goes, taken for the size's rest:
  // a year loses its first digit, unless a printable size byte stood first.
  EXPECT_EQ(FindFrameText(Frame("TYER", "2003"), "TYER", 4), "003");
  EXPECT_EQ(FindFrameText("TYER" + Bytes({0, 0, 0, '1', 0, 0, 0}) + "2003", "TYER", 4), "2003");
  EXPECT_EQ(FindFrameText("TIT2" + Bytes({0, 0, 0, 'A', 0, 0, 0}) + "Hello", "TIT2", 30), "AHello");
  // Any frame id in the text ends it.
  EXPECT_EQ(FindFrameText(Frame("TIT2", "Go COMMander"), "TIT2", 30), "Go ");
  EXPECT_EQ(FindFrameText(Frame("TIT2", "track.mp3 mix"), "TIT2", 30), "track");
  EXPECT_EQ(FindFrameText(Frame("TIT2", "BUTTER"), "TIT2", 30), "BU");
  // A header ending at the id.
  EXPECT_EQ(FindFrameText("xxTIT2", "TIT2", 30), "");

  // The album's stricter scan.
  const QByteArray album = Frame("TALB", "Big Album (2)") + Frame("TYER", "1999");
  EXPECT_EQ(ExtractFrameText(album, "TALB"), "Big Album (2)");
  EXPECT_EQ(ExtractFrameText(Frame("TALB", "Two  Blanks") + "x.", "TALB"), "Two");
  EXPECT_EQ(ExtractFrameText(Frame("TALB", "Rock'n Roll") + ".", "TALB"), "Rock");
  EXPECT_EQ(ExtractFrameText(Frame("TALB", "ABCdef") + ".", "TALB"), "");
  EXPECT_EQ(ExtractFrameText(Frame("TALB", "no end"), "TALB"), "");
  EXPECT_EQ(ExtractFrameText("TALB" + Bytes({0, 0}), "TALB"), "");
}

TEST(TagRules, Mp3TailRecordComesFirstAndFramesFillItsGaps) {
  // Blanks are trimmed from the end, NULs dropped: blanks before NULs stay.
  TagTexts texts = ReadMp3Tags(Record("Title  ", "Artist", "Album", "1901", 7, 17, "tAg"), "");
  EXPECT_EQ(Shown(texts), (QStringList{"Title  ", "Artist", "Album", "1901", "Track 07", "Rock"}));

  // No record: not even the frames are read.
  const QByteArray frames = Frame("TIT2", "Framed") + Frame("TRCK", "09");
  texts = ReadMp3Tags(Record("", "", "", "", 0, 0, "TAB"), frames);
  EXPECT_EQ(texts.Title, "Unknown");
  EXPECT_EQ(texts.Track, "");

  // Empty fields, a year of 1900, a track byte of 32 and a genre of 255
  // look in the frames.
  texts = ReadMp3Tags(Record("", "", "", "1900", 32, 255),
                      frames + Frame("TYER", "*1999") + Frame("TCON", "hard ROCK"));
  EXPECT_EQ(Shown(texts), (QStringList{"Framed", "Unknown", "Unknown", "1999", "Track 09", "Hard Rock"}));
  texts = ReadMp3Tags(Record("", "", "", "", 0, 200),
                      Frame("TRCK", "1/5") + Frame("TCON", "(13)") + Frame("TYER", "2003"));
  EXPECT_EQ(texts.Year, "Unknown");
  EXPECT_EQ(texts.Genre, "Unknown");
}

TEST(TagRules, WavMidiAndWmaRecords) {
  QByteArray wav = "TAG" + Padded("Wave", 30) + Padded("", 30) + Padded("Album", 30) + "1900";
  TagTexts texts = ReadWavTags(QByteArray(40, 'x') + wav + Bytes({12, 3}));
  EXPECT_EQ(Shown(texts), (QStringList{"Wave", "Unknown", "Album", "Unknown", "Track 12", "Dance"}));
  texts = ReadWavTags(wav + Bytes({32, 126}));
  EXPECT_EQ(texts.Track, "");
  EXPECT_EQ(texts.Genre, "Unknown");

  const QByteArray midiHead =
      "MThd" + Bytes({0, 0, 0, 6, 0, 1, 0, 1, 0, 96}) + "MTrk" + Bytes({0, 0, 0, 60, 0});
  // A track name and no text events.
  texts = ReadMidiTags(midiHead + Bytes({0xFF, 3, 5}) + "Piano" + Bytes({0, 0xFF, 0x2F, 0}));
  EXPECT_EQ(texts.Title, "Piano");
  EXPECT_EQ(texts.Artist, "Unknown");
  // Without a first name a second text shows the second name, even none.
  texts = ReadMidiTags(midiHead + Bytes({0xFF, 3, 0, 0xFF, 1, 4}) + "  Me" + Bytes({0xFF, 1, 1}) +
                       "x" + Bytes({0xFF, 3, 4}) + "Late");
  EXPECT_EQ(texts.Title, "Late");
  EXPECT_EQ(texts.Artist, "Me");
  texts = ReadMidiTags(Bytes({0xFF, 1, 1}) + "a" + Bytes({0xFF, 1, 1}) + "b");
  EXPECT_EQ(texts.Title, "");
  // Five events end the search: a name as the sixth is not seen.
  QByteArray four;
  for (int i = 0; i < 4; ++i) four += Bytes({0xFF, 1, 1}) + "t";
  EXPECT_EQ(ReadMidiTags(four + Bytes({0xFF, 3, 4}) + "Name").Title, "Name");
  EXPECT_EQ(ReadMidiTags(four + Bytes({0xFF, 1, 1, 't', 0xFF, 3, 4}) + "Name").Title, "");

  const QByteArray wma = QByteArray(64, '\x01') + Wide("Blue~Sky") + Bytes({0, 0}) + Wide("Cloud") +
                         Bytes({0, 0}) + Wide("WM/Genre") + Bytes({0, 0, 0, 0, 8, 0}) +
                         Wide("rOCK") + Bytes({0, 0}) + Wide("WM/TrackNumber") +
                         Bytes({0, 0, 3, 0, 4, 0, 7, 0, 0, 0});
  EXPECT_EQ(Shown(ReadWmaTags(wma)), (QStringList{"BlueSky", "Cloud", "Unknown", "Unknown", "Track 07", "Rock"}));
}

TEST(TagRules, ShortAndBrokenInputGivesTheDefaults) {
  for (const QByteArray& bytes :
       {QByteArray(), QByteArray("TAG"), QByteArray(127, 'T'), Bytes({0xFF}), Bytes({0xFF, 1}),
        Bytes({0xFF, 1, 200}) + "cut", QByteArray(64, '\0'), Wide("WM/TrackNumber"),
        Wide("WM/AlbumTitle") + Bytes({0, 0, 0})}) {
    for (const TagTexts& texts :
         {ReadMp3Tags(bytes, bytes), ReadWavTags(bytes), ReadWmaTags(bytes)}) {
      EXPECT_EQ(texts.Title, "Unknown");
      EXPECT_EQ(texts.Track, "");
    }
    EXPECT_EQ(LoadTags(bytes, bytes).Title, "Unknown");
  }
  // A text event longer than what was read is cut at the end.
  EXPECT_EQ(ReadMidiTags(Bytes({0xFF, 1, 200}) + "cut").Artist, "cut");
  // A frame whose text runs past the header.
  EXPECT_EQ(
      ReadMp3Tags(Record("", "", "", "", 0, 0), Bytes({'T', 'I', 'T', '2', 0, 0, 0x7F})).Title,
      "Unknown");

  const QString missing = testenv::Root() + "/home/none.mp3";
  EXPECT_EQ(ReadTags(missing).Title, "Unknown");
  EXPECT_EQ(LoadTagsFromFile(missing).Album, "");
  for (const char* name : {"empty.mp3", "empty.wav", "empty.mid", "empty.wma"})
    EXPECT_EQ(ReadTags(testenv::MakeFile(testenv::Root() + "/home/" + name, "")).Title, "Unknown");
  EXPECT_EQ(ReadTags(testenv::Root() + "/home").Title, "Unknown");
}

TEST_F(TagsTest, FilesTaggedByOtherTools) {
  // Both kinds of tag, by one tool.
  const QString both = MakeMp3("both.mp3");
  ASSERT_TRUE(RunTool("id3v2", {"-t", "Morning Song", "-a", "The Band", "-A", "Big Album", "-y",
                                "2003", "-T", "7/12", "-g", "13", both}));
  TagTexts texts = ReadTags(both);
  EXPECT_EQ(Shown(texts), (QStringList{"Morning Song", "The Band", "Big Album", "2003", "Track 07", "Pop"}));
  EXPECT_EQ(LoadTagsFromFile(both).Genre, 13);
  // Without the tail record the frames are not read.
  ASSERT_TRUE(RunTool("id3v2", {"-s", both}));
  EXPECT_EQ(ReadTags(both).Title, "Unknown");

  // Frames of the newer kind by another tool, and a record holding only the
  // artist: the rest comes from the frames, as far as the rules find it.
  const QString mixed = MakeMp3("mixed.mp3");
  ASSERT_TRUE(RunTool("eyeD3", {"-Q", "--title", "Evening", "--artist", "Solo Act", "--album",
                                "Night", "--track", "3", "--genre", "Rock", mixed}));
  ASSERT_TRUE(RunTool("eyeD3", {"-Q", "-1", "--artist", "Late Act", mixed}));
  texts = ReadTags(mixed);
  EXPECT_EQ(Shown(texts), (QStringList{"Evening", "Late Act", "Night", "Unknown", "Track 03", "Other"}));
  EXPECT_EQ(LoadTagsFromFile(mixed).Album, "Night");

  // A record of its own: only the album in the record, none among the
  // frames, so the editor shows no album while the player does.
  const QString recordOnly = MakeMp3("record.mp3");
  ASSERT_TRUE(
      RunTool("eyeD3", {"-Q", "-1", "--album", "Night", "--release-year", "1999", recordOnly}));
  EXPECT_EQ(ReadTags(recordOnly).Album, "Night");
  EXPECT_EQ(LoadTagsFromFile(recordOnly).Album, "");
}

TEST_F(TagsTest, WavWmaAndMidiFiles) {
  const QString wav = Path("tone.wav");
  ASSERT_TRUE(RunTool(
      "sox", {"-n", "-r", "8000", "-c", "1", "-b", "16", wav, "synth", "0.05", "sine", "440"}));
  QFile file(wav);
  ASSERT_TRUE(file.open(QIODevice::Append));
  file.write("TAG" + Padded("Wave Title", 30, ' ') + Padded("Wave Artist", 30, ' ') +
             Padded("", 30, ' ') + "2010" + Bytes({5, 8}));
  file.close();
  TagTexts texts = ReadTags(wav);
  EXPECT_EQ(Shown(texts), (QStringList{"Wave Title", "Wave Artist", "Unknown", "2010", "Track 05", "Jazz"}));

  // The title and artist of this tool's files do not stand at the place
  // the rule looks; the named fields are found, and a track number written
  // as text is no track byte.
  const QString wma = Path("song.WMA");
  ASSERT_TRUE(RunTool("ffmpeg", {"-loglevel", "error",
                                 "-f",        "lavfi",
                                 "-i",        "sine=duration=1",
                                 "-c:a",      "wmav2",
                                 "-metadata", "title=Blue Sky",
                                 "-metadata", "artist=Cloud Nine",
                                 "-metadata", "album=Weather",
                                 "-metadata", "WM/Year=2004",
                                 "-metadata", "genre=jAZZ fusion",
                                 "-metadata", "track=5",
                                 wma}));
  EXPECT_EQ(Shown(ReadTags(wma)), (QStringList{"Unknown", "Unknown", "Weather", "2004", "", "Jazz fusion"}));

  const QByteArray track = Bytes({0, 0xFF, 3, 10}) + "Piano Song" + Bytes({0, 0xFF, 1, 8}) +
                           " Grieg  " + Bytes({0, 0xFF, 0x2F, 0});
  const QString midi =
      testenv::MakeFile(Path("song.mid"), "MThd" + Bytes({0, 0, 0, 6, 0, 0, 0, 1, 0, 96}) + "MTrk" +
                                              Bytes({0, 0, 0, int(track.size())}) + track);
  texts = ReadTags(midi);
  EXPECT_EQ(texts.Title, "Piano Song");
  EXPECT_EQ(texts.Artist, "Grieg  ");
  EXPECT_EQ(ReadTags(testenv::MakeFile(Path("song.ogg"), track)).Title, "Unknown");
}

TEST_F(TagsTest, SavingWritesTheRecordAndBlanksEmptiedFrames) {
  const QByteArray before = FramedFile(Record("", "", "", "", 0, 255));
  const QString path = testenv::MakeFile(Path("framed.mp3"), before);
  ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup));
  TagFormValues values = LoadTagsFromFile(path);
  EXPECT_EQ(values.FrameYear, "003");
  EXPECT_EQ(values.FrameTrack, "7");
  EXPECT_EQ(values.FrameGenre, "13)");

  values.Artist = "  ";
  ASSERT_TRUE(SaveTagsToFile(path, values));
  EXPECT_EQ(values.WipeStart, 88);
  EXPECT_EQ(values.WipeEnd, 98);
  // The frames keep their ids; what follows up to the old value is zero.
  QByteArray expected = before;
  expected.replace(37, 15, QByteArray(15, '\0'));
  expected.replace(56, 11, QByteArray(11, '\0'));
  expected.replace(87, 11, QByteArray(11, '\0'));
  expected.replace(
      1072, 128,
      "TAG" + Padded("Morning Song", 30, ' ') + QByteArray(90, ' ') + Bytes({0, 0, 0, 7, 126}));
  EXPECT_EQ(Contents(path), expected);
  // The read-only file was made writable to be written.
  EXPECT_TRUE(QFileInfo(path).isWritable());
  EXPECT_EQ(ReadTags(path).Artist, "Unknown");

  // A file without a record loses its last 128 bytes to one, and keeps its
  // length.
  const QString plain = MakeMp3("plain.mp3");
  const QByteArray audio = Contents(plain);
  TagFormValues fresh = LoadTagsFromFile(plain);
  EXPECT_EQ(fresh.Title, "Unknown");
  fresh.Year = 1999;
  fresh.Genre = 0;
  ASSERT_TRUE(SaveTagsToFile(plain, fresh));
  const QByteArray after = Contents(plain);
  ASSERT_EQ(after.size(), audio.size());
  EXPECT_EQ(after.left(audio.size() - 128), audio.left(audio.size() - 128));
  const TagTexts texts = ReadTags(plain);
  EXPECT_EQ(texts.Year, "1999");
  EXPECT_EQ(texts.Genre, "Blues");
  EXPECT_EQ(QDir(Path("")).entryList(QDir::Files | QDir::Hidden),
            QStringList({"framed.mp3", "plain.mp3"}));

  // Too short for a record: nothing is written.
  const QString tiny = testenv::MakeFile(Path("tiny.mp3"), QByteArray(127, 'x'));
  EXPECT_FALSE(SaveTagsToFile(tiny, fresh));
  EXPECT_EQ(Contents(tiny), QByteArray(127, 'x'));
}

TEST_F(TagsTest, AWriteThatFailsLeavesTheFileAsItWas) {
  const QByteArray before = FramedFile(Record("Old", "", "", "", 0, 255));
  const QString path = testenv::MakeFile(Path("songs/a.mp3"), before);
  TagFormValues values = LoadTagsFromFile(path);
  values.Title = "New";
  values.Artist = "";

  // The copy cannot grow beyond 1000 bytes (whoever runs the test).
  struct rlimit old {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  struct rlimit small = old;
  small.rlim_cur = 1000;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const bool saved = SaveTagsToFile(path, values);
  setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, oldHandler);
  EXPECT_FALSE(saved);
  EXPECT_EQ(Contents(path), before);
  EXPECT_EQ(QDir(Path("songs")).entryList(QDir::Files | QDir::Hidden), QStringList({"a.mp3"}));

  // A folder that cannot take the copy (only a user other than root is
  // kept out of it).
  if (geteuid() != 0) {
    ASSERT_TRUE(QFile::setPermissions(Path("songs"), QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_FALSE(SaveTagsToFile(path, values));
    EXPECT_EQ(Contents(path), before);
  }
  EXPECT_FALSE(SaveTagsToFile(Path("songs/missing.mp3"), values));
  EXPECT_FALSE(QFileInfo::exists(Path("songs/missing.mp3")));
}

TEST_F(TagsTest, TheEditorReadsWhenActiveSavesOnOkAndClosesOtherwise) {
  const QString path = MakeMp3("edit.mp3");
  ASSERT_TRUE(RunTool("id3v2", {"-t", "Morning Song", "-a", "The Band", "-A", "Big Album", "-y",
                                "2003", "-T", "7", "-g", "13", path}));
  const qint64 length = QFileInfo(path).size();

  auto* window = new ChangeMP3;
  EXPECT_EQ(window->windowTitle(), " MP3 Song Title");
  window->GetData(path);
  window->show();
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitFor([&] { return window->TitleLabel->text() == "Morning Song"; }));
  EXPECT_EQ(window->AlbumLabel->text(), "Big Album");
  EXPECT_EQ(window->CategoryLabel->currentText(), "Pop");
  // A text box offers its whole text however it gets the focus.
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return window->TitleLabel->selectedText() == "Morning Song"; }));
  QTest::mouseClick(window->AuthorLabel, Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([&] { return window->AuthorLabel->selectedText() == "The Band"; }));

  // Esc closes without a change.
  QTest::keyClick(window->TitleLabel, Qt::Key_Escape);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::ChangeMP3));
  const QByteArray unchanged = Contents(path);

  // Clicking elsewhere closes it too.
  window = new ChangeMP3;
  window->GetData(path);
  window->show();
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  QWidget elsewhere;
  elsewhere.show();
  elsewhere.activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([] { return !Windows().IsLoaded(WindowId::ChangeMP3); }));
  EXPECT_EQ(Contents(path), unchanged);

  window = new ChangeMP3;
  window->GetData(path);
  window->Form_Activate();
  window->TitleLabel->setText("Evening Song That Runs Well Past Thirty");
  window->AuthorLabel->setText("");
  window->AlbumLabel->setText("Night");
  window->YearLabel->SetValue("1999");
  window->TrackLabel->SetValue("");
  window->CategoryLabel->setCurrentIndex(-1);
  window->OKButton_Click();
  EXPECT_FALSE(Windows().IsLoaded(WindowId::ChangeMP3));
  EXPECT_NE(Contents(path), unchanged);
  EXPECT_EQ(QFileInfo(path).size(), length);
  const TagTexts texts = ReadTags(path);
  EXPECT_EQ(texts.Title, "Evening Song That Runs Well Pa");
  // The artist's frame is still there: the record's artist came from the
  // record, so no frame was blanked.
  EXPECT_EQ(texts.Artist, "The Band");
  EXPECT_EQ(texts.Album, "Night");
  EXPECT_EQ(texts.Track, "");
  EXPECT_EQ(texts.Genre, "Unknown");
}
