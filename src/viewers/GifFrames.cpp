#include "viewers/GifFrames.h"

#include <QByteArrayView>
#include <QRect>
#include <algorithm>

namespace {

// The end of a block (00) followed by the start of a graphic control
// extension (21 F9): where a frame begins.
constexpr char FrameMarkBytes[] = {'\x00', '\x21', '\xF9'};
// The byte that ends a GIF file.
constexpr char Trailer = '\x3B';
// A graphic control extension: 21 F9 04, packed fields, delay (two bytes,
// hundredths of a second), transparent index, 00.
constexpr qsizetype ControlBlockSize = 8;
// The delay of a frame that has no control block, in milliseconds.
constexpr int PlainFrameDelay = 10;
constexpr int LongestDelay = 65535;
// The decoder draws every piece onto the whole logical screen, so a small
// file may claim a large screen and thousands of frames. Splitting stops
// once the pieces decoded have filled 2^29 pixels (seconds of work) or the
// frames kept hold 2^28 (1 GB): the frames so far are what is played.
constexpr qint64 DecodeBudget = qint64(1) << 29;
constexpr qint64 HeldBudget = qint64(1) << 28;

int ByteAt(const QByteArray& bytes, qsizetype at) {
  return at >= 0 && at < bytes.size() ? uchar(bytes[at]) : 0;
}

// A little-endian 16-bit value, as every measure in a GIF is stored.
int WordAt(const QByteArray& bytes, qsizetype at) {
  return ByteAt(bytes, at) + 256 * ByteAt(bytes, at + 1);
}

qsizetype FindMark(const QByteArray& bytes, qsizetype from) {
  if (from >= bytes.size()) return -1;
  return bytes.indexOf(QByteArrayView(FrameMarkBytes, sizeof FrameMarkBytes), from);
}

// Where the image descriptor (2C) of a piece that begins with a control
// block lies: right behind that block, or behind other extensions (a
// comment, say) that stand between the two. -1 when there is none.
qsizetype DescriptorAt(const QByteArray& piece) {
  qsizetype at = ControlBlockSize;
  while (at < piece.size()) {
    const int introducer = ByteAt(piece, at);
    if (introducer == 0x2C) return at;
    if (introducer != 0x21) return -1;
    at += 2;  // the introducer and the extension's label
    while (at < piece.size()) {  // its data sub-blocks, up to the empty one
      const int length = ByteAt(piece, at);
      at += 1 + length;
      if (length == 0) break;
    }
  }
  return -1;
}

// Decodes one piece as a GIF of its own: the file's header and colour
// table, the piece, a trailer. A null picture when it does not decode.
QImage DecodePiece(GifSplit& split, const QByteArray& header, const QByteArray& piece) {
  QByteArray single;
  single.reserve(header.size() + piece.size() + 1);
  single.append(header).append(piece).append(Trailer);
  const QImage picture = QImage::fromData(single, "GIF");
  split.DecodedPixels += qint64(picture.width()) * picture.height();
  if (picture.isNull()) return picture;
  return picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

void Keep(GifSplit& split, GifFrame&& frame) {
  split.HeldPixels += qint64(frame.Picture.width()) * frame.Picture.height();
  split.Frames.push_back(std::move(frame));
}

bool WithinBudget(const GifSplit& split) {
  return split.DecodedPixels < DecodeBudget && split.HeldPixels < HeldBudget;
}

// A piece without a control block: what lies between the header and the
// first frame mark, or the whole file when there is no mark at all.
void AddPlainFrame(GifSplit& split, const QByteArray& header, const QByteArray& piece) {
  GifFrame frame;
  frame.Picture = DecodePiece(split, header, piece);
  if (frame.Picture.isNull()) return;
  frame.Delay = PlainFrameDelay;
  Keep(split, std::move(frame));
}

// A piece that begins with a control block, read for delay, disposal and,
// from the second frame on, the frame's own rectangle.
void AddControlledFrame(GifSplit& split, const QByteArray& header, const QByteArray& piece) {
  GifFrame frame;
  frame.Picture = DecodePiece(split, header, piece);
  if (frame.Picture.isNull()) return;
  frame.Disposal = (ByteAt(piece, 3) & 28) / 4;
  const int delay = WordAt(piece, 4) * 10;
  frame.Delay = delay == 0 ? 1 : std::min(delay, LongestDelay);

  // The decoder draws every frame onto the whole logical screen. The first
  // frame stays so, at the origin; a later one keeps only its rectangle,
  // placed relative to the first, so that what lies around it on the
  // composition shows through. A frame reaching past the screen is cut.
  if (!split.Frames.empty()) {
    const qsizetype at = DescriptorAt(piece);
    if (at >= 0) {
      const QRect own(WordAt(piece, at + 1), WordAt(piece, at + 3), WordAt(piece, at + 5),
                      WordAt(piece, at + 7));
      const QRect shown = own.intersected(frame.Picture.rect());
      if (shown.isEmpty()) return;  // nothing of it lies on the screen
      frame.Picture = frame.Picture.copy(shown);
      frame.Left = split.Frames.front().Left + shown.left();
      frame.Top = split.Frames.front().Top + shown.top();
    }
  }
  Keep(split, std::move(frame));
}

}  // namespace

GifSplit SplitFrames(const QByteArray& bytes) {
  GifSplit split;
  if (bytes.size() < 13 || !bytes.startsWith("GIF")) return split;

  // The logical screen descriptor: size, and whether a global colour table
  // of 3 × 2^(n + 1) bytes follows it.
  split.PictureWidth = WordAt(bytes, 6);
  split.PictureHeight = WordAt(bytes, 8);
  const int packed = ByteAt(bytes, 10);
  const qsizetype tableSize = (packed & 0x80) ? 3 * (qsizetype(2) << (packed & 7)) : 0;
  const qsizetype headerSize = std::min(13 + tableSize, bytes.size());
  const QByteArray header = bytes.left(headerSize);

  // Where the first control block begins (its 21 byte). The header's end
  // counts as the end of a block, so a control block right behind it is
  // found whatever the colour table's last byte is.
  qsizetype start = -1;
  if (ByteAt(bytes, headerSize) == 0x21 && ByteAt(bytes, headerSize + 1) == 0xF9) {
    start = headerSize;
  } else {
    const qsizetype mark = FindMark(bytes, headerSize);
    if (mark >= 0) start = mark + 1;
  }
  if (start < 0) {
    AddPlainFrame(split, header, bytes.mid(headerSize));
    return split;
  }
  // A file may hold an image before its first control block; a loop
  // extension there decodes to nothing and is passed over.
  if (start > headerSize) AddPlainFrame(split, header, bytes.mid(headerSize, start - headerSize));

  // Each frame runs from its control block up to the block end in front of
  // the next one; the last runs to the end of the bytes.
  while (start >= 0 && WithinBudget(split)) {
    const qsizetype mark = FindMark(bytes, start + ControlBlockSize - 1);
    const qsizetype end = mark < 0 ? bytes.size() : mark + 1;
    AddControlledFrame(split, header, bytes.mid(start, end - start));
    start = mark < 0 ? -1 : mark + 1;
  }
  return split;
}
