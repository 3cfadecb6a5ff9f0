#include "support/HostileFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>

#include "support/TestEnv.h"

namespace hostile {

namespace {

// The name whose bytes are no UTF-8: 0xFF never stands in UTF-8 text.
const QByteArray kUndecodable = QByteArrayLiteral("bad-\xFF.png");

// A picture of 64 x 48 pixels in the given format, with a diagonal so that
// its content is not one colour.
QByteArray GoodPicture(const char* format) {
  QImage image(64, 48, QImage::Format_RGB32);
  image.fill(QColor(40, 120, 200));
  QPainter painter(&image);
  painter.setPen(QPen(Qt::yellow, 3));
  painter.drawLine(0, 0, 64, 48);
  painter.end();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes;
}

QByteArray Fixture(const char* name) {
  QFile file(testenv::DataFolder() + "/pictures/" + name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The middle third of the bytes overwritten with a pattern no decoder
// expects there; head and tail stay, so a decoder reads into the damage.
QByteArray Torn(QByteArray bytes) {
  const qsizetype third = bytes.size() / 3;
  for (qsizetype i = third; i < 2 * third; ++i) bytes[i] = char(0xA5 ^ (i & 0x0F));
  return bytes;
}

}  // namespace

QString MakeHostileFiles(const QString& folder) {
  QDir().mkpath(folder);
  // Qt writes the kinds it can; the others come from the fixture pictures.
  const struct {
    const char* extension;
    QByteArray bytes;
  } kinds[] = {
      {"bmp", GoodPicture("bmp")},          {"emf", Fixture("picture.emf")},
      {"gif", Fixture("picture.gif")},      {"ico", GoodPicture("ico")},
      {"jpg", GoodPicture("jpg")},          {"pcx", Fixture("picture.pcx")},
      {"png", GoodPicture("png")},          {"tif", GoodPicture("tif")},
      {"wmf", Fixture("picture.wmf")},      {"xif", GoodPicture("tif")},
  };
  for (const auto& kind : kinds) {
    testenv::MakeFile(folder + "/cut." + kind.extension, kind.bytes.left(10));
    testenv::MakeFile(folder + "/torn." + kind.extension, Torn(kind.bytes));
  }

  const QByteArray png = GoodPicture("png");
  for (const char* name : {"good.png", "it's.png", "say \"cheese\".png", "a;b.png", "two\nlines.png",
                           "\u00C6r\u00F8 \u00E9t\u00E9.png", "sub/deep.png", "locked/secret.png"})
    testenv::MakeFile(folder + "/" + QString::fromUtf8(name), png);
  for (const char* name : {"empty.png", "empty.avi", "empty.mp3", "empty.txt"})
    testenv::MakeFile(folder + "/" + name, QByteArray());

  // A text name can't hold these bytes: the file is made by its bytes.
  const QByteArray raw = QFile::encodeName(folder) + '/' + kUndecodable;
  const int fd = ::open(raw.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (fd >= 0) {
    if (::write(fd, png.constData(), size_t(png.size())) != png.size()) ::unlink(raw.constData());
    ::close(fd);
  }

  QFile::link("loop-b.jpg", folder + "/loop-a.jpg");
  QFile::link("loop-a.jpg", folder + "/loop-b.jpg");
  QFile::link(".", folder + "/here");
  QFile::link("..", folder + "/sub/up");
  QFile::setPermissions(folder + "/locked", QFileDevice::Permissions());
  return folder;
}

void RemoveHostileFiles(const QString& folder) {
  ::unlink((QFile::encodeName(folder) + '/' + kUndecodable).constData());
  QFile::setPermissions(folder + "/locked", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

bool MakeManyFiles(const QString& folder, int count) {
  if (!QDir().mkpath(folder)) return false;
  const QByteArray base = QFile::encodeName(folder);
  char name[32];
  for (int i = 0; i < count; ++i) {
    std::snprintf(name, sizeof name, "/p%06d.jpg", i);
    const int fd = ::open((base + name).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) return false;
    ::close(fd);
  }
  return true;
}

}  // namespace hostile
