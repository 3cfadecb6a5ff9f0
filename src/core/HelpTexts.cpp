#include "core/HelpTexts.h"

const QList<HelpEntry>& HelpTable() {
  static const QList<HelpEntry> table = {
      {"PositionNumber(1)", "Position on Picture Number",
       {"Enter a number to position on a specific", "picture file in the thumbnail list"}},
      {"PositionNumber(2)", "Position on Video Number",
       {"Enter a number to position on a specific", "video file in the thumbnail list"}},
      {"PositionNumber(3)", "Position on Audio Number",
       {"Enter a number to position on a specific", "audio file in the thumbnail list"}},
      {"ThumbnailSize", "Thumbnail Size",
       {"Enter the size (in inches) that you wish", "for picture thumbnail images to appear"}},
      {"DirectoryName", "Folder/Album", {"Displays the currently selected folder or album"}},
      {"DirectoryButton", "Open Folder", {"Click here to find and open a different folder"}},
      {"refreshButton", "Refresh", {"Click here to refresh the current display"}},
      {"searchButton", "File Search",
       {"Click here to search for and open", "any of the media files supported",
        "by the Vistrel program"}},
      {"sortButton", "File Sort Order and Selection",
       {"Click here to determine which file types", "and in what order files are displayed on",
        "this screen"}},
      {"optionsButton", "Program Options", {"Click here to define program options"}},
      {"multimediaButton", "Multimedia Properties",
       {"Click here to view or update Windows", "multimedia properties"}},
      {"mixerButton", "Audio Mixer",
       {"Click here to access the Windows", "audio-mixer settings"}},
      {"sleepButton", "Sleep Timer", {"Click here to set the sleep timer"}},
      {"alarmButton", "Alarm Clock", {"Click here to set the alarm clock"}},
      {"paintButton", "Tintara", {"Click here to open the Tintara program"}},
      {"ejectButton", "CD Open", {"Click here to open the CD door"}},
      {"closeButton", "CD Close", {"Click here to close the CD door"}},
      {"cdButton", "CD Player", {"Click here to start the CD music player"}},
      {"audioButton", "Audio Playlist", {"Click here to open the audio/music playlist"}},
      {"videoButton", "Video Playlist", {"Click here to open the video playlist"}},
      {"albumButton", "Media Album",
       {"Click here to open, create, modify,", "or delete a media album"}},
      {"dvdButton", "DVD Player",
       {"Click here to start the DVD player", "(if one is installed on your computer)"}},
      {"internetButton", "Web Browser", {"Click here to open the Internet web browser"}},
      {"magnifierButton", "Screen Magnifier", {"Click here to open the screen magnifier"}},
      {"aboutButton", "Ostrand Works",
       {"Click here to view program and company-", "contact information"}},
      {"HelpButton", "Program Tutorial", {"Click here to start an animated program tutorial"}},
      {"Slider1", "Volume", {"Use this control to change the", "computer's sound volume"}},
      {"muteButton", "Mute", {"Click here to mute or unmute", "the computer's speakers"}},
  };
  return table;
}

const HelpEntry* FindHelp(const QString& control) {
  for (const HelpEntry& entry : HelpTable())
    if (entry.Control == control) return &entry;
  return nullptr;
}

QString HelpTitle(const QString& control) {
  const HelpEntry* entry = FindHelp(control);
  return entry ? entry->Title : QString();
}

QString HelpText(const QString& control) {
  const HelpEntry* entry = FindHelp(control);
  return entry ? entry->Lines.join("\r\n") : QString();
}
