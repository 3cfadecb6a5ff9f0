#include "platform/SoundFont.h"
#include "platform/Services.h"

#include <QFileInfo>

namespace platform {

namespace {

QString& Override() { return TheServices().SoundFont; }

}  // namespace

QString GeneralMidiSoundFont() {
  const QString path =
      Override().isEmpty() ? QStringLiteral("/usr/share/sounds/sf2/TimGM6mb.sf2") : Override();
  return QFileInfo(path).isFile() ? path : QString();
}

void SetGeneralMidiSoundFont(const QString& path) { Override() = path; }

}  // namespace platform
