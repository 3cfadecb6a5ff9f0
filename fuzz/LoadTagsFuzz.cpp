// The tag editor's reading of a file, and the save that follows from what
// it read (the patches only; nothing is written).
#include "cd/Mp3Tags.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  FillGenreTable();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray file = fuzz::Bytes(data, size);
  const QByteArray tail = file.right(Mp3TailSize);
  TagFormValues values = LoadTags(tail, tail.isEmpty() ? QByteArray() : file.left(FormHeaderSize));
  SaveTags(values, file.size());
  return 0;
}
