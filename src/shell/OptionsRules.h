#pragma once
// The plain rules of the options window: the captions of its boxes, which
// position of the PictureOptions, VideoOptions and AudioOptions masks each
// box stands for, the masks written at a save, the checks a save makes
// first, the rule of "&Restore Defaults" and the help popups.
//
// The picture boxes 1 to 8 are positions 1 to 8, box 9 (icons and cursors)
// position 20 and box 10 (ART images) position 19. The video boxes 1 to 4
// are positions 1 to 4 and box 0 (DVD movies) position 20. The audio boxes
// are the positions of their number.

#include <QList>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>

namespace optionsrules {

inline constexpr int PictureBoxes = 10;  // picSelection 1 to 10
inline constexpr int VideoBoxes = 5;     // VidSelection 0 to 4
inline constexpr int AudioBoxes = 6;     // AudSelection 1 to 6
inline constexpr int GeneralBoxes = 7;   // GenSelection 1 to 7

// Ticks by box: pictures and audios from box 1 at index 0; videos by their
// own number, DVD movies (box 0) at index 0.
using PictureTicks = std::array<bool, PictureBoxes>;
using VideoTicks = std::array<bool, VideoBoxes>;
using AudioTicks = std::array<bool, AudioBoxes>;

// The masks as the options read them when they were never saved.
inline constexpr const char* PictureOptionsDefault = "11111111000000000001";
inline constexpr const char* VideoOptionsDefault = "11100000000000000001";
inline constexpr const char* AudioOptionsDefault = "11111100000000000000";

// The pages of the window, and the limits of the alarm's numbers.
enum Page { PicturesPage = 0, VideosPage, AudiosPage, GeneralPage, CdTitlesPage, PageCount };
inline constexpr int SnoozeMinimum = 1, SnoozeMaximum = 60;
inline constexpr int VolumeMinimum = 0, VolumeMaximum = 100;
inline constexpr int PortMaximum = 65535;

// The captions of the boxes: pictures and audios from box 1, videos from
// box 0; the general boxes from GenSelection(1).
const QStringList& PictureCaptions();
const QStringList& VideoCaptions();
const QStringList& AudioCaptions();
const QStringList& GeneralCaptions();
const QStringList& PageCaptions();

// The mask position of a box.
int PicturePosition(int box);
int VideoPosition(int box);

// The boxes read from a mask; a position the mask does not reach, or that
// holds anything but "1", is unticked.
PictureTicks PictureTicksOf(const QString& mask);
VideoTicks VideoTicksOf(const QString& mask);
AudioTicks AudioTicksOf(const QString& mask);

// The masks a save writes: pictures 1 to 8, ten "0", then boxes 10 and 9;
// videos 1 to 4, fifteen "0", then box 0; audios 1 to 6, fourteen "0".
QString PictureOptionsOf(const PictureTicks& ticks);
QString VideoOptionsOf(const VideoTicks& ticks);
QString AudioOptionsOf(const AudioTicks& ticks);

// What a save checks before it writes anything, in this order. The first
// check that fails names its page, its message and the control to take the
// focus.
enum class FocusTarget { DirectoryButton, Address1, Address2 };
struct SaveRefusal {
  Page GoTo;
  QString Message;
  FocusTarget Focus;
};
struct SaveInput {
  bool FolderExists = true;
  bool CddbAccess = false;
  QString ServerAddress;
  bool ProxyServer = false;
  QString ProxyAddress;
};
std::optional<SaveRefusal> FirstRefusal(const SaveInput& input);

// "&Restore Defaults": the server address becomes the default server
// unless it holds it already (in any case), the port 80 unless it is 80. A
// field that already holds its default keeps its value, so that it counts
// as no change; empty when it stays.
struct ServerReset {
  std::optional<QString> Address;
  std::optional<QString> Port;
};
ServerReset RestoreServerDefaults(const QString& address, const QString& port);
QString DefaultServerAddress();
inline constexpr int DefaultServerPort = 80;

// The help popups: a control's name ("picSelection", "Port1"...; the
// boxes of one array share their popup), its heading and lines.
struct OptionHelp {
  QString Control;
  QString Heading;
  QStringList Lines;
};
const QList<OptionHelp>& HelpTable();
const OptionHelp* FindOptionHelp(const QString& control);

}  // namespace optionsrules
