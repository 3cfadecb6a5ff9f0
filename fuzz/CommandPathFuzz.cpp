// The program named by an association's command line.
#include "browser/Opening.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QString found = ParseCommandPath(QString::fromUtf8(fuzz::Bytes(data, size)));
  if (!found.isEmpty() && !found.endsWith(QLatin1String(".exe"))) __builtin_trap();
  return 0;
}
