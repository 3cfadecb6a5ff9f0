// The texts in the header object of a WMA file.
#include "cd/Mp3Tags.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ReadWmaTags(fuzz::Bytes(data, size).left(WmaReadLimit));
  return 0;
}
