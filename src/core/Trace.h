#pragma once
// What the program shows, in lines on the standard error for whoever drives
// it from outside and must know what is on the screen: the windows as they
// come and go and where they stand, the browser's counts, the viewer's file.
// Off unless switched on with QT_LOGGING_RULES="vistrel.trace.info=true";
// each line reads "vistrel.trace: shown OptionsEntry 385,339 496x403".

#include <QLoggingCategory>
#include <QString>

Q_DECLARE_LOGGING_CATEGORY(TraceCategory)

inline bool Tracing() { return TraceCategory().isInfoEnabled(); }
void Trace(const QString& line);
