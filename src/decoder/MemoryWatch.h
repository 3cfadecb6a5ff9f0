#pragma once
// The helper runs under a ceiling on its memory. A decode that fails or
// crashes because an allocation was refused says nothing about the file (a
// smaller box, or a machine with more memory, may draw it), so the helper
// tells that case apart: it watches the allocator and, after a refusal,
// turns a failure or a crash into its own exit code for "out of memory".

namespace decoder {

// True once an allocation of this process has been refused.
bool MemoryRanOut();
// From now on a crash (segmentation fault, bus error, abort) after a refused
// allocation ends the process with exitCode instead of the signal.
void ExitOnCrashAfterRefusal(int exitCode);

}  // namespace decoder
