#pragma once
// Small helpers the harnesses share: the fuzzer's bytes as Qt values, and
// the bytes cut into pieces at a separator.

#include <QByteArray>
#include <QList>
#include <cstddef>
#include <cstdint>

namespace fuzz {

// The bytes, copied (a reader may keep them beyond the call).
inline QByteArray Bytes(const uint8_t* data, size_t size) {
  return QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
}

// The bytes cut at each '\0' into at most `count` pieces; the last piece
// keeps the rest. Missing pieces are empty.
inline QList<QByteArray> Pieces(const uint8_t* data, size_t size, int count) {
  QList<QByteArray> pieces;
  QByteArray rest = Bytes(data, size);
  while (pieces.size() < count - 1) {
    const qsizetype cut = rest.indexOf('\0');
    if (cut < 0) break;
    pieces << rest.left(cut);
    rest = rest.mid(cut + 1);
  }
  pieces << rest;
  while (pieces.size() < count) pieces << QByteArray();
  return pieces;
}

}  // namespace fuzz

#include <QCoreApplication>

namespace fuzz {

// An application object for the harnesses that decode pictures: without
// one, Qt looks for its image plugins again at every decode, which makes a
// run slow and its memory grow.
inline void MakeApplication() {
  static int argc = 1;
  static char name[] = "fuzz";
  static char* argv[] = {name, nullptr};
  static QCoreApplication application(argc, argv);
}

}  // namespace fuzz
