#pragma once
// The TIFF library prints every complaint about a damaged file on the
// console. The program shows such a file as its InvalidImage marker
// instead, so the complaints are switched off.

namespace platform {

// Removes the TIFF library's error and warning printers. Harmless to call
// more than once, and when the library is not there.
void SilenceTiffMessages();

}  // namespace platform
