// vistrel-decode: draws one metafile and writes it as PNG to standard
// output. Usage: vistrel-decode [--fit WxH] [--] FILE
// Exit codes: 0 drawn, 1 not drawable, 2 bad arguments or unreadable file,
// 3 out of memory (an allocation was refused under the ceiling the program
// sets). The program runs it as a separate process so that a file that
// crashes or hangs the drawing libraries cannot harm it.

#include <unistd.h>

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QStringList>
#include <cstdio>
#include <new>

#include "decoder/EmfRenderer.h"
#include "decoder/MemoryWatch.h"
#include "decoder/WmfRenderer.h"

namespace {

constexpr int kExitDrawn = 0;
constexpr int kExitNotDrawable = 1;
constexpr int kExitBadInput = 2;
constexpr int kExitOutOfMemory = 3;

QSize ParseSize(const QString& text) {
  const QStringList parts = text.split('x');
  if (parts.size() != 2) return QSize();
  bool okW = false, okH = false;
  const int w = parts[0].toInt(&okW), h = parts[1].toInt(&okH);
  return okW && okH && w > 0 && h > 0 ? QSize(w, h) : QSize();
}

bool WriteAll(const QByteArray& bytes) {
  qsizetype done = 0;
  while (done < bytes.size()) {
    const ssize_t n = ::write(STDOUT_FILENO, bytes.constData() + done, size_t(bytes.size() - done));
    if (n <= 0) return false;
    done += n;
  }
  return true;
}

// Draws the file and writes it out; the exit code.
int Draw(const QString& path, const QSize& fitInto) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return kExitBadInput;
  const QByteArray bytes = file.readAll();
  file.close();

  // The content decides: a file named .wmf that holds an enhanced
  // metafile is drawn as one, and the other way round.
  const QImage picture =
      decoder::LooksLikeEmf(bytes) ? decoder::RenderEmf(bytes, fitInto) : decoder::RenderWmf(bytes, fitInto);
  if (picture.isNull()) return decoder::MemoryRanOut() ? kExitOutOfMemory : kExitNotDrawable;

  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  if (!picture.save(&buffer, "PNG")) return decoder::MemoryRanOut() ? kExitOutOfMemory : kExitNotDrawable;
  return WriteAll(png) ? kExitDrawn : kExitNotDrawable;
}

}  // namespace

int main(int argc, char** argv) {
  decoder::ExitOnCrashAfterRefusal(kExitOutOfMemory);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  const QStringList arguments = QCoreApplication::arguments().mid(1);

  QSize fitInto;
  QString path;
  for (qsizetype i = 0; i < arguments.size(); ++i) {
    const QString& a = arguments[i];
    if (a == "--fit" && i + 1 < arguments.size()) {
      fitInto = ParseSize(arguments[++i]);
      if (!fitInto.isValid()) return kExitBadInput;
    } else if (a == "--" && i + 1 < arguments.size()) {
      path = arguments[++i];
    } else if (path.isEmpty() && !a.startsWith("--")) {
      path = a;
    } else {
      return kExitBadInput;
    }
  }
  if (path.isEmpty()) return kExitBadInput;

  try {
    return Draw(path, fitInto);
  } catch (const std::bad_alloc&) {
    return kExitOutOfMemory;
  } catch (...) {
    return kExitNotDrawable;
  }
}
