#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

#include "platform/LeftoverFiles.h"
#include "support/TestEnv.h"

namespace {

QStringList Names(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                QDir::Name);
}

}  // namespace

TEST(LeftoverFilesTest, TheNextStartRemovesOnlyWhatTheNotesName) {
  const QString folder = testenv::Root() + "/home/a\tfolder\\with\nodd names";
  const QString notes = testenv::Root() + "/data/Vistrel/leftovers";
  for (const char* name : {".vistrel-copy-Ab12Cd", ".vistrel-copy-", ".vistrel-tags-x1y2z3", ".vistrel-copy-dir/x",
                           "vistrel-copy-abcdef", "photo.jpg"})
    testenv::MakeFile(folder + "/" + name, "bytes");
  ASSERT_EQ(::symlink("photo.jpg", QFile::encodeName(folder + "/.vistrel-copy-link").constData()), 0);
  const QString copies = platform::NoteTemporaries(folder, ".vistrel-copy-");
  EXPECT_TRUE(copies.startsWith(notes + "/note-")) << copies.toStdString();
  // Only the program's own prefixes are taken.
  EXPECT_EQ(platform::NoteTemporaries(folder, "photo"), "");
  EXPECT_EQ(platform::NoteTemporaries(folder, ".vistrel-"), "");

  // A file on its way out goes only while it is the file that was noted: a
  // new file under its name (here the noted name is given to another file)
  // stays.
  const QString wiped = testenv::MakeFile(testenv::Root() + "/home/diary.txt", "secret");
  const QString renamed = testenv::Root() + "/home/qwertyuio";
  EXPECT_FALSE(platform::NoteFileToRemove(wiped, renamed).isEmpty());
  ASSERT_TRUE(QFile::rename(wiped, renamed));
  const QString replaced = testenv::MakeFile(testenv::Root() + "/home/letter.txt", "mine");
  EXPECT_FALSE(platform::NoteFileToRemove(replaced).isEmpty());
  ASSERT_TRUE(QFile::remove(replaced));
  testenv::MakeFile(replaced, "a new file of mine");
  EXPECT_EQ(platform::NoteFileToRemove(testenv::Root() + "/home/absent"), "");

  // A probe folder goes while it is empty.
  ASSERT_TRUE(QDir().mkpath(testenv::Root() + "/home/empty/temporary_vistrel_folder"));
  ASSERT_TRUE(QDir().mkpath(testenv::Root() + "/home/used/temporary_vistrel_folder/mine"));
  EXPECT_FALSE(platform::NoteProbeFolder(testenv::Root() + "/home/empty/temporary_vistrel_folder").isEmpty());
  EXPECT_FALSE(platform::NoteProbeFolder(testenv::Root() + "/home/used/temporary_vistrel_folder").isEmpty());

  // A note cut short before its line ended is of a work that had not begun.
  QByteArray escaped = QFile::encodeName(folder);
  escaped.replace("\\", "\\\\").replace("\t", "\\t").replace("\n", "\\n");
  testenv::MakeFile(notes + "/note-cutoff", "T\t" + escaped + "\t.vistrel-tags-");
  // A finished work leaves nothing to do.
  platform::ForgetLeftover(platform::NoteTemporaries(testenv::Root() + "/home", ".vistrel-copy-"));
  EXPECT_EQ(Names(notes).size(), 6);

  EXPECT_EQ(platform::CleanLeftovers(), 4);
  EXPECT_EQ(Names(folder), QStringList({".vistrel-copy-dir", ".vistrel-copy-link", ".vistrel-tags-x1y2z3",
                                        "photo.jpg", "vistrel-copy-abcdef"}));
  EXPECT_EQ(Names(testenv::Root() + "/home"),
            QStringList({"a\tfolder\\with\nodd names", "empty", "letter.txt", "used"}));
  EXPECT_EQ(Names(testenv::Root() + "/home/empty"), QStringList());
  EXPECT_EQ(Names(testenv::Root() + "/home/used"), QStringList{"temporary_vistrel_folder"});
  EXPECT_EQ(Names(notes), QStringList());
  EXPECT_EQ(platform::CleanLeftovers(), 0);
}
