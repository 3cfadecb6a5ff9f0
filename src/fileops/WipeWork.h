#pragma once
// The pieces of a wipe: the bytes of the three passes that overwrite a
// file's space before it goes, and the random name it takes on its way
// out, so that neither its contents nor its name stay on the disk.

#include <QString>
#include <QtGlobal>
#include <functional>

// The three passes, in the order they run: random bytes, then 0x55, then
// 0xAA.
enum class WipePass { Random, Fives, Tens };

// One byte of the random pass from two random numbers, each standing for a
// fraction first / 2^32 in [0, 1): Int(r1 * 255) XOR ((Int(r2 * 255) + 17)
// modulo 256).
quint8 WipeRandomByte(quint32 first, quint32 second);

// Writes `length` bytes of the pass over the open file from its start,
// through a fixed buffer, and flushes them to the disk. 0, or the errno of
// the first failure. Blocking; safe on a worker thread.
int WriteWipePass(int fd, qint64 length, WipePass pass);

// The name a wiped file takes: `length` lower-case letters, each
// Chr(97 + Int(25 * r)) for a fresh random r in [0, 1), so "a" to "y".
QString WipeName(qsizetype length, const std::function<double()>& random);
