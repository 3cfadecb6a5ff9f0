// The PC Paintbrush decoder.
#include "catalogue/PcxDecoder.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes = fuzz::Bytes(data, size);
  const QImage picture = DecodePcx(bytes);
  // A picture comes only from bytes that look like one.
  if (!picture.isNull() && !LooksLikePcx(bytes)) __builtin_trap();
  return 0;
}
