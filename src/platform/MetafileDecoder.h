#pragma once
// Metafile pictures (.wmf, .emf) are drawn by the decoding helper process
// vistrel-decode, so that a file that crashes or hangs the drawing libraries
// costs at most the time limit and never the program.

#include <QImage>
#include <QSize>
#include <QString>

namespace platform {

// The folder searched for the helper when it is not beside the running
// program (the tests give the build's program folder).
void SetDecoderFolder(const QString& folder);
// How long the helper may take before it is killed, in milliseconds
// (5000 unless changed).
void SetDecoderTimeLimit(int milliseconds);
int DecoderTimeLimit();
// Full path of the helper, or "" when there is none.
QString DecoderProgramPath();

// Draws the metafile at its natural size, or reduced to fit into fitInto
// (aspect kept) when that is valid and smaller. False on any failure of the
// helper (missing, error, crash, time-out, unreadable output).
bool DecodeMetafile(const QString& path, const QSize& fitInto, QImage& picture);

}  // namespace platform
