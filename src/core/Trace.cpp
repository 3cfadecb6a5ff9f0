#include "core/Trace.h"

Q_LOGGING_CATEGORY(TraceCategory, "vistrel.trace", QtWarningMsg)

void Trace(const QString& line) {
  if (Tracing()) qCInfo(TraceCategory).noquote() << line;
}
