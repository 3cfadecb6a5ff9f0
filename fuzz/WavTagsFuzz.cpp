// The record at the end of a WAV file.
#include "cd/Mp3Tags.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  FillGenreTable();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ReadWavTags(fuzz::Bytes(data, size).right(WavTailSize));
  return 0;
}
