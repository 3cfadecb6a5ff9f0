#pragma once
// The peak resident memory of this process, in megabytes (-1 when the
// system does not tell).

#include <QFile>

inline double PeakMemoryMb() {
  QFile status("/proc/self/status");
  if (!status.open(QIODevice::ReadOnly)) return -1;
  for (const QByteArray& line : status.readAll().split('\n'))
    if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024;
  return -1;
}
