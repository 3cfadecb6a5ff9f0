// Cutting a GIF file into single-frame GIFs, each decoded by Qt.
#include <QImageReader>

#include "FuzzInput.h"
#include "viewers/GifFrames.h"

// Qt's own decoder may take up to 128 MB for each frame of a large logical
// screen; that is pixel filling in Qt, not the splitting, and would slow the
// run a hundredfold. Frames beyond 1 MB are refused by the decoder here.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::MakeApplication();
  QImageReader::setAllocationLimit(1);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const GifSplit split = SplitFrames(fuzz::Bytes(data, size));
  for (const GifFrame& frame : split.Frames) {
    if (frame.Delay < 1 || frame.Delay > 65535 || frame.Disposal < 0 || frame.Disposal > 7) __builtin_trap();
  }
  return 0;
}
