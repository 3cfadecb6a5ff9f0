#include <gtest/gtest.h>

#include <QFile>
#include <QTest>

#include "platform/MailProgram.h"
#include "support/TestEnv.h"

namespace {

// PATH as the test sets it, back as it was afterwards (the desktop's fake
// applications live on it).
class MailProgramTest : public testing::Test {
 protected:
  void SetUp() override { savedPath_ = qgetenv("PATH"); }
  void TearDown() override { qputenv("PATH", savedPath_); }

  QByteArray savedPath_;
};

QStringList LinesOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
  if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
  return lines;
}

}  // namespace

TEST_F(MailProgramTest, TheMailCommandGetsEveryFileAsOneAttachment) {
  // A mail command that writes its arguments one to a line, and only then
  // shows the file under its final name.
  const QString bin = testenv::Root() + "/bin";
  const QString record = testenv::Root() + "/arguments.txt";
  testenv::MakeFile(bin + "/xdg-email",
                    ("#!/bin/sh\nfor a in \"$@\"; do printf '%s\\n' \"$a\"; done > '" + record +
                     ".part' && mv '" + record + ".part' '" + record + "'\n")
                        .toUtf8());
  QFile::setPermissions(bin + "/xdg-email", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  qputenv("PATH", bin.toUtf8() + ":" + savedPath_);
  ASSERT_TRUE(platform::MailProgramAvailable());

  const QString first =
      testenv::MakeFile(testenv::Root() + "/media/Straße am Meer – Ölbild 1.jpg", "x");
  const QString second = testenv::MakeFile(testenv::Root() + "/media/song.mp3", "y");
  EXPECT_TRUE(platform::ComposeMailWithAttachments({first, second}));
  EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(record); }));
  EXPECT_EQ(LinesOf(record),
            QStringList({"--attach", testenv::Root() + "/media/Straße am Meer – Ölbild 1.jpg",
                         "--attach", testenv::Root() + "/media/song.mp3"}));
}
