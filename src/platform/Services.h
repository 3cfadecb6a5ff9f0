#pragma once
// What stands in for the desktop where the program meets it: the finder of
// the siblings' windows, the starter of programs, the sink of system
// messages, the probe of the speech engine, the CD devices, the General
// MIDI sound font and the probe of a folder's write access. Empty means the real desktop. One object for the whole
// program; tests set what they need and reset it between cases.

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace platform {

struct Services {
  std::function<quint64(const QString& caption)> WindowFinder;
  std::function<bool(const QString& path, const QStringList& arguments)> ProgramStarter;
  std::function<void(const QString& text, const QString& title)> MessageSink;
  std::function<bool()> SpeechProbe;
  std::optional<QStringList> CdDevices;
  QString SoundFont;
  std::function<bool(const QString& folder)> FolderWriteProbe;
};

Services& TheServices();
// Back to the real desktop.
void ResetServices();

}  // namespace platform
