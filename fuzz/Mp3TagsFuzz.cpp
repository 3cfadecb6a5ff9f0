// The audio panel's reading of an mp1/mp2/mp3 file: its tail record and the
// frame texts of its first bytes, as ReadTags hands them over.
#include "cd/Mp3Tags.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  FillGenreTable();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray file = fuzz::Bytes(data, size);
  if (file.isEmpty()) return 0;
  ReadMp3Tags(file.right(Mp3TailSize), file.left(Mp3HeaderSize));
  return 0;
}
