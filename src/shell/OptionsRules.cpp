#include "shell/OptionsRules.h"

#include "catalogue/MediaTypes.h"
#include "cd/CddbLookup.h"

namespace optionsrules {

namespace {

QChar Digit(bool ticked) { return ticked ? QLatin1Char('1') : QLatin1Char('0'); }

int SamePosition(int box) { return box; }

template <size_t N>
std::array<bool, N> TicksOf(const QString& mask, int first, int (*positionOf)(int)) {
  std::array<bool, N> ticks{};
  for (size_t i = 0; i < N; ++i) ticks[i] = MaskBitSet(mask, positionOf(first + int(i)));
  return ticks;
}

}  // namespace

// The options keep their own captions, written as the window has always
// shown them: small letters after the first word.
const QStringList& PictureCaptions() {
  static const QStringList captions{
      "Bitmaps (*.bmp;*.dib;*.rle)",
      "Graphics interchange format files (*.gif)",
      "JPEG images (*.jpeg;*.jpg;*.jpe)",
      "Metafiles (*.wmf;*.emf)",
      "Network graphics images (*.png;*.mng)",
      "Tagged image format files (*.tif;*.tiff;*.jfx)",
      "PC Paintbrush images (*.pcx)",
      "Xerox image format files (*.xif)",
      "Icons and cursors (*.ico;*.cur)",
      "ART images (*.art)",
  };
  return captions;
}

const QStringList& VideoCaptions() {
  static const QStringList captions{
      "DVD movies",
      "Video files (*.avi;*.ivf)",
      "Movie files (*.mpg;*.mpe;*.mpeg;*.mpv2;*.m1v)",
      "Windows video files (*.wmv;*.asx)",
      "Real video files (*.rm)",
  };
  return captions;
}

const QStringList& AudioCaptions() {
  static const QStringList captions{
      "MP3 files (*.mp3;*.mp1;*.mp2;*.mpa)",
      "WAV files (*.wav)",
      "Windows audio files (*.wma;*.asf)",
      "CD audio track files (*.cda)",
      "MIDI files (*.mid;*.midi;*.rmi)",
      "Real audio files (*.ra;*.ram)",
  };
  return captions;
}

const QStringList& GeneralCaptions() {
  static const QStringList captions{
      "Load viewer (in tray) at Windows StartUp?",
      "Display \"file data\" in popup windows",
      "Display splash screen at program StartUp?",
      "Display \"help data\" in popup windows",
      "Allow entry and display of picture captions?",
      "Get music CD song titles from Internet?",
      "Use proxy server?",
  };
  return captions;
}

const QStringList& PageCaptions() {
  static const QStringList captions{"Pictures", "Videos", "Audios", "General", "CD Titles"};
  return captions;
}

int PicturePosition(int box) {
  if (box == 9) return 20;
  if (box == 10) return 19;
  return box;
}

int VideoPosition(int box) { return box == 0 ? 20 : box; }

PictureTicks PictureTicksOf(const QString& mask) {
  return TicksOf<PictureBoxes>(mask, 1, PicturePosition);
}
VideoTicks VideoTicksOf(const QString& mask) { return TicksOf<VideoBoxes>(mask, 0, VideoPosition); }
AudioTicks AudioTicksOf(const QString& mask) { return TicksOf<AudioBoxes>(mask, 1, SamePosition); }

QString PictureOptionsOf(const PictureTicks& ticks) {
  QString mask;
  for (int box = 1; box <= 8; ++box) mask += Digit(ticks[size_t(box - 1)]);
  mask += QStringLiteral("0000000000");
  mask += Digit(ticks[9]);  // ART images, position 19
  mask += Digit(ticks[8]);  // icons and cursors, position 20
  return mask;
}

QString VideoOptionsOf(const VideoTicks& ticks) {
  QString mask;
  for (int box = 1; box <= 4; ++box) mask += Digit(ticks[size_t(box)]);
  mask += QStringLiteral("000000000000000");
  mask += Digit(ticks[0]);  // DVD movies, position 20
  return mask;
}

QString AudioOptionsOf(const AudioTicks& ticks) {
  QString mask;
  for (bool ticked : ticks) mask += Digit(ticked);
  mask += QStringLiteral("00000000000000");
  return mask;
}

std::optional<SaveRefusal> FirstRefusal(const SaveInput& input) {
  if (!input.FolderExists)
    return SaveRefusal{GeneralPage, "The default folder no longer exists.",
                       FocusTarget::DirectoryButton};
  if (input.CddbAccess && input.ServerAddress.isEmpty())
    return SaveRefusal{CdTitlesPage, "A CDDB server address must be entered.",
                       FocusTarget::Address1};
  if (input.ProxyServer && input.ProxyAddress.isEmpty())
    return SaveRefusal{CdTitlesPage, "A CDDB proxy server address must be entered.",
                       FocusTarget::Address2};
  return std::nullopt;
}

QString DefaultServerAddress() { return CddbServer{}.Address; }

ServerReset RestoreServerDefaults(const QString& address, const QString& port) {
  ServerReset reset;
  const QString server = DefaultServerAddress();
  if (address.compare(server, Qt::CaseInsensitive) != 0) reset.Address = server;
  bool number = false;
  if (port.trimmed().toInt(&number) != DefaultServerPort || !number)
    reset.Port = QString::number(DefaultServerPort);
  return reset;
}

const QList<OptionHelp>& HelpTable() {
  static const QList<OptionHelp> table{
      {"AllPictures", "All Picture Files",
       {"Check this option to choose Vistrel as",
        "the default viewer for all the listed picture files"}},
      {"picSelection", "Picture File Viewer",
       {"Check this option to choose Vistrel as",
        "the default viewer for this type of picture file"}},
      {"AllVideos", "All Video Files",
       {"Check this option to choose Vistrel as",
        "the default player for all the listed video files"}},
      {"VidSelection", "Video File Player",
       {"Check this option to choose Vistrel as",
        "the default player for this type of video file"}},
      {"AllAudios", "All Audio Files",
       {"Check this option to choose Vistrel as",
        "the default player for all the listed audio files"}},
      {"AudSelection", "Audio File Player",
       {"Check this option to choose Vistrel as",
        "the default player for this type of audio file"}},
      {"SnoozeMinutes", "Alarm Clock 'Snooze' Minutes",
       {"Enter the number of minutes that the alarm", "clock waits before it sounds again"}},
      {"AlarmVolume", "Alarm Clock Volume Level",
       {"Enter the volume level (in percent)", "at which the alarm clock sounds"}},
      {"GenSelection(1)", "Load Viewer",
       {"Check this option to load the viewer (in the", "tray) each time you start your computer"}},
      {"QuickLaunch", "Quick Launch",
       {"Check this option to place a link to", "the viewer in the Quick Launch bar"}},
      {"GenSelection(3)", "Splash Screen",
       {"Check this option to display the splash", "screen each time the program starts"}},
      {"GenSelection(2)", "Popup File Data",
       {"Check this option to display file data", "in popup windows over the thumbnails"}},
      {"GenSelection(4)", "Popup Help Data",
       {"Check this option to display help data", "in popup windows such as this one"}},
      {"GenSelection(5)", "Picture Captions",
       {"Check this option to enter and display", "a caption for each of your pictures"}},
      {"DefaultFolder", "Default Folder",
       {"Click here to choose the folder that is", "displayed when the program starts"}},
      {"GenSelection(6)", "CD Song Titles",
       {"Check this option to get the song titles", "of music CDs from the Internet"}},
      {"Address1", "Address", {"Enter the address of the CDDB server"}},
      {"Port1", "Port", {"Enter the port number of the CDDB server"}},
      {"resetButton", "Restore Defaults",
       {"Click here to restore the default", "CDDB server address and port"}},
      {"GenSelection(7)", "Use Proxy Server?",
       {"Check this option if you reach the", "Internet through a proxy server"}},
      {"Address2", "Address", {"Enter the address of the proxy server"}},
      {"Port2", "Port", {"Enter the port number of the proxy server"}},
  };
  return table;
}

const OptionHelp* FindOptionHelp(const QString& control) {
  for (const OptionHelp& help : HelpTable())
    if (help.Control == control) return &help;
  return nullptr;
}

}  // namespace optionsrules
