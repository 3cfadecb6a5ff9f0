// A thumbnail cache entry's bytes, checked against a picture's stamp.
#include "browser/ThumbnailCache.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::MakeApplication();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  PictureStamp stamp;
  stamp.Valid = true;
  stamp.MTimeMs = 1700000000000;
  stamp.Size = 1234;
  QImage image;
  ReadThumbnailEntry(fuzz::Bytes(data, size), QStringLiteral("file:///tmp/picture.jpg"), stamp, image);
  return 0;
}
