#include "albums/SelectionRules.h"

#include "catalogue/MediaTypes.h"

namespace selectionrules {

namespace {

constexpr int MaskLength = 20;
// Icons and cursors keep the last position of the picture mask.
constexpr int IconsPosition = 20;

template <size_t N>
QString MaskOf(const std::array<bool, N>& ticks, int (*positionOf)(int)) {
  QString mask(MaskLength, QLatin1Char('0'));
  for (size_t i = 0; i < N; ++i)
    if (ticks[i]) mask[positionOf(int(i) + 1) - 1] = QLatin1Char('1');
  return mask;
}

template <size_t N>
std::array<bool, N> TicksOf(const QString& mask, int (*positionOf)(int)) {
  std::array<bool, N> ticks{};
  for (size_t i = 0; i < N; ++i) ticks[i] = MaskBitSet(mask, positionOf(int(i) + 1));
  return ticks;
}

int SamePosition(int box) { return box; }

}  // namespace

// The captions are the window's own, written as the window has always
// shown them (the video captions' "*mpeg" and "'" among them).
const QStringList& PictureCaptions() {
  static const QStringList captions{
      "Bitmaps (*.bmp;*.dib;*.rle)",
      "Graphics interchange format files (*.gif)",
      "JPEG Images (*.jpeg;*.jpg;*.jpe)",
      "Metafiles (*.wmf;*.emf)",
      "Network graphics images (*.png;*.mng)",
      "Tagged image format files (*.tif;*.tiff;*.jfx)",
      "PC Paintbrush images (*.pcx)",
      "Xerox image format files (*.xif)",
      "Icons and cursors (*.ico;*.cur)",
  };
  return captions;
}

const QStringList& VideoCaptions() {
  static const QStringList captions{
      "Video Files (*.avi;*.ivf)",
      "Movie Files (*.mpg;*.mpe;*mpeg;*.mpv2;*.m1v)",
      "Windows Video Files (*.wmv'*.asx)",
      "Real Video Files (*.rm)",
  };
  return captions;
}

const QStringList& AudioCaptions() {
  static const QStringList captions{
      "MP3 Files (*.mp3;*.mp1;*.mp2;*.mpa)",
      "WAV Files (*.wav)",
      "Windows Audio Files (*.wma;*.asf)",
      "CD Audio Track Files (*.cda)",
      "MIDI Files (*.mid;*.midi;*.rmi)",
      "Real Audio Files (*.ra;*.ram)",
  };
  return captions;
}

const QStringList& SortOrderCaptions() {
  static const QStringList captions{"By file name", "By file extension", "By file date",
                                    "By file size"};
  return captions;
}

int PicturePosition(int box) { return box == PictureBoxes ? IconsPosition : box; }

QString PicturesMaskOf(const PictureTicks& ticks) { return MaskOf(ticks, PicturePosition); }
QString VideosMaskOf(const VideoTicks& ticks) { return MaskOf(ticks, SamePosition); }
QString AudiosMaskOf(const AudioTicks& ticks) { return MaskOf(ticks, SamePosition); }

PictureTicks PictureTicksOf(const QString& mask) {
  return TicksOf<PictureBoxes>(mask, PicturePosition);
}
VideoTicks VideoTicksOf(const QString& mask) { return TicksOf<VideoBoxes>(mask, SamePosition); }
AudioTicks AudioTicksOf(const QString& mask) { return TicksOf<AudioBoxes>(mask, SamePosition); }

}  // namespace selectionrules
