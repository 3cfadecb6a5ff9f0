#include "fileops/WipeWork.h"

#include <unistd.h>

#include <QRandomGenerator>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <random>

namespace {

constexpr qint64 BufferBytes = 1 << 20;

// Int(r * 255) for r = value / 2^32.
quint32 Scaled255(quint32 value) { return quint32((quint64(value) * 255) >> 32); }

void FillRandom(char* buffer, qint64 size, std::mt19937_64& random) {
  for (qint64 i = 0; i < size; ++i) {
    const quint64 both = random();
    buffer[i] = char(WipeRandomByte(quint32(both >> 32), quint32(both)));
  }
}

}  // namespace

quint8 WipeRandomByte(quint32 first, quint32 second) {
  return quint8(Scaled255(first) ^ ((Scaled255(second) + 17) % 256));
}

int WriteWipePass(int fd, qint64 length, WipePass pass) {
  const std::unique_ptr<char[]> buffer(new char[BufferBytes]);
  std::mt19937_64 random(QRandomGenerator::global()->generate64());
  if (pass != WipePass::Random)
    std::memset(buffer.get(), pass == WipePass::Fives ? 0x55 : 0xAA, BufferBytes);

  qint64 position = 0;
  while (position < length) {
    const qint64 chunk = std::min(BufferBytes, length - position);
    if (pass == WipePass::Random) FillRandom(buffer.get(), chunk, random);
    qint64 done = 0;
    while (done < chunk) {
      const ssize_t written = ::pwrite(fd, buffer.get() + done, size_t(chunk - done), position + done);
      if (written < 0) {
        if (errno == EINTR) continue;
        return errno;
      }
      done += written;
    }
    position += chunk;
  }
  return ::fdatasync(fd) == 0 ? 0 : errno;
}

QString WipeName(qsizetype length, const std::function<double()>& random) {
  QString name;
  name.reserve(length);
  for (qsizetype i = 0; i < length; ++i) name += QChar(97 + int(25 * random()));
  return name;
}
