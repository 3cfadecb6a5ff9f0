// The metafile helper's own look at its input: whether the bytes are an
// enhanced metafile, the natural size from its header, and the size it
// draws at for a requested fit, before anything goes to a renderer.
#include "decoder/EmfRenderer.h"
#include "decoder/Fit.h"
#include <QtEndian>

#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes = fuzz::Bytes(data, size);
  decoder::LooksLikeEmf(bytes);
  const QSize natural = decoder::EmfNaturalSize(bytes);
  QSize fit;
  if (size >= 8) fit = QSize(qFromLittleEndian<qint32>(data + size - 8), qFromLittleEndian<qint32>(data + size - 4));
  const QSize drawn = decoder::OutputSize(natural.isValid() ? natural : QSize(size, size / 2 + 1), fit);
  if (drawn.width() < 1 || drawn.height() < 1 || drawn.width() > decoder::kMaxSide ||
      drawn.height() > decoder::kMaxSide)
    __builtin_trap();
  return 0;
}
