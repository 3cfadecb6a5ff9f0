// The text and track-name events at the start of a MIDI file.
#include "cd/Mp3Tags.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ReadMidiTags(fuzz::Bytes(data, size).left(MidiHeadSize));
  return 0;
}
