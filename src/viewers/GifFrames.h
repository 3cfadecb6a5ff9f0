#pragma once
// Cutting an animated GIF into its frames. The file's bytes are searched
// for the start of each graphic control block; every piece between two
// such marks becomes a small single-frame GIF of its own (the file's header
// and colour table, the piece, a trailer) that the picture decoder reads.
// The frame records keep what the decoder does not tell: delay, disposal
// and position.

#include <QByteArray>
#include <QImage>
#include <vector>

struct GifFrame {
  // The decoded frame. The first frame is the whole logical screen as the
  // decoder drew it; every later frame is its own rectangle only.
  QImage Picture;
  // Milliseconds until the next frame, from 1 to 65535.
  int Delay = 10;
  // 0 none, 1 leave in place, 2 restore to the background, 3 restore to
  // the previous picture (4 to 7 are undefined but kept as read).
  int Disposal = 0;
  // Where Picture goes on the composition, in pixels.
  int Left = 0;
  int Top = 0;
};

struct GifSplit {
  // The logical screen of the file's header; 0 when it is not a GIF.
  int PictureWidth = 0, PictureHeight = 0;
  std::vector<GifFrame> Frames;
  // The pixels the decoder filled for the pieces, and those the frames
  // hold: splitting stops when either grows too large.
  qint64 DecodedPixels = 0;
  qint64 HeldPixels = 0;
};

// Splits the bytes of a GIF file into frames. Bytes that are not a GIF give
// no frames; pieces that do not decode are left out. Never reads outside
// the bytes, whatever they hold. A file whose frames would take seconds to
// decode or more than 1 GB to hold gives the frames up to that point.
GifSplit SplitFrames(const QByteArray& bytes);
