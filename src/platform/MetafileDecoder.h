#pragma once
// Metafile pictures (.wmf, .emf) are drawn by the decoding helper process
// vistrel-decode, so that a file that crashes or hangs the drawing libraries
// costs at most the time limit and never the program. The helper runs with a
// ceiling on its memory, and is killed as soon as its picture is no longer
// wanted.

#include <QImage>
#include <QSize>
#include <QString>
#include <QtGlobal>
#include <functional>

namespace platform {

// Why a picture was or was not decoded. Only NotAPicture says something
// about the file itself; every other failure may go away on a later try.
enum class DecodeOutcome {
  Decoded,
  // The decoder read the file and refused it, or the helper crashed or
  // reported an error on it.
  NotAPicture,
  // The file is missing, is no plain file, or cannot be opened for reading.
  Unreadable,
  // There is no helper program, or it cannot be started.
  HelperMissing,
  // The helper took longer than the time limit and was killed.
  TimedOut,
  // The helper ran out of memory under its ceiling (or was killed by the
  // system for want of memory).
  OutOfMemory,
  // The caller stopped wanting the picture; the helper was killed.
  Cancelled,
};

// The folder searched for the helper when it is not beside the running
// program (the tests give the build's program folder).
void SetDecoderFolder(const QString& folder);
// How long the helper may take before it is killed, in milliseconds
// (5000 unless changed).
void SetDecoderTimeLimit(int milliseconds);
int DecoderTimeLimit();
// The address space the helper may take, in bytes (1 GiB unless changed;
// never more than this process may take itself).
void SetDecoderMemoryLimit(qint64 bytes);
qint64 DecoderMemoryLimit();
// Full path of the helper, or "" when there is none.
QString DecoderProgramPath();

// Draws the metafile at its natural size, or reduced to fit into fitInto
// (aspect kept) when that is valid and smaller. picture is set only when
// the result is Decoded. stillWanted, when given, is asked every few
// hundredths of a second while the helper runs (from the calling thread);
// once it answers false the helper is killed and the result is Cancelled.
DecodeOutcome DecodeMetafile(const QString& path, const QSize& fitInto, QImage& picture,
                             const std::function<bool()>& stillWanted = {});

}  // namespace platform
