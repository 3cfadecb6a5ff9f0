#include "cd/CdCommands.h"

#include <QStringList>
#include <map>

#include "catalogue/CommandWords.h"

namespace {

// One open alias: the drive (or image) it names and how it counts time.
struct OpenDrive {
  QString device;
  QString timeFormat = QStringLiteral("msf");
};

// By alias in lower case.
std::map<QString, OpenDrive>& Aliases() {
  static std::map<QString, OpenDrive> aliases;
  return aliases;
}

QStringList Words(const QString& command) { return CommandWords(command); }

bool IsFlag(const QString& word) {
  const QString key = word.toLower();
  return key == "wait" || key == "shareable" || key == "notify";
}

// The words after the alias, lower case, without the flags.
QStringList Arguments(const QStringList& words) {
  QStringList arguments;
  for (int i = 2; i < words.size(); ++i)
    if (!IsFlag(words[i])) arguments << words[i].toLower();
  return arguments;
}

int Open(const QStringList& words) {
  if (words.size() < 2) return CdMissingParameter;
  const QString device = words[1];
  QString type, alias;
  for (int i = 2; i < words.size(); ++i) {
    if (IsFlag(words[i])) continue;
    const QString key = words[i].toLower();
    if (key != "type" && key != "alias") return CdUnknownWord;
    if (i + 1 >= words.size()) return CdMissingParameter;
    (key == "type" ? type : alias) = words[++i].toLower();
  }
  if (type.isEmpty() || alias.isEmpty()) return CdMissingParameter;
  if (type != "cdaudio") return CdUnknownDevice;
  if (alias == "all") return CdUnknownWord;
  if (Aliases().count(alias)) return CdAliasInUse;
  if (!platform::CdDeviceExists(device)) return CdDeviceMissing;
  Aliases()[alias] = OpenDrive{device};
  return CdSuccess;
}

int Close(const QString& alias) {
  if (alias == "all") {
    CdCloseAll();
    return CdSuccess;
  }
  return Aliases().erase(alias) ? CdSuccess : CdNotOpen;
}

int Set(OpenDrive& drive, const QStringList& arguments) {
  if (arguments.isEmpty()) return CdMissingParameter;
  if (arguments[0] == "door") {
    if (arguments.size() < 2) return CdMissingParameter;
    if (arguments[1] != "open" && arguments[1] != "closed") return CdUnknownWord;
    if (platform::IsCdImage(drive.device)) return CdNoDoor;
    const bool done = arguments[1] == "open" ? platform::EjectCdTray(drive.device)
                                             : platform::CloseCdTray(drive.device);
    return done ? CdSuccess : CdTrayFailed;
  }
  if (arguments[0] == "time") {
    if (arguments.size() < 3) return CdMissingParameter;
    if (arguments[1] != "format") return CdUnknownWord;
    const QString format = arguments[2] == "ms" ? QStringLiteral("milliseconds") : arguments[2];
    if (format != "tmsf" && format != "msf" && format != "milliseconds") return CdUnknownWord;
    drive.timeFormat = format;
    return CdSuccess;
  }
  return CdUnknownWord;
}

int Status(const OpenDrive& drive, const QStringList& arguments, QString* returned) {
  const QString item = arguments.join(' ');
  if (item.isEmpty()) return CdMissingParameter;
  if (item == "mode") {
    // "mode" answers even without a disc: that is how one learns of it.
    const platform::CdDisc disc = platform::ReadCdDisc(drive.device);
    if (!disc.ready)
      *returned = QStringLiteral("not ready");
    else
      *returned = platform::IsCdPlaying(drive.device) ? QStringLiteral("playing") : QStringLiteral("stopped");
    return CdSuccess;
  }
  if (item == "media present") {
    *returned = platform::ReadCdDisc(drive.device).ready ? QStringLiteral("true") : QStringLiteral("false");
    return CdSuccess;
  }
  if (item == "length" || item.startsWith(QLatin1String("length track "))) {
    const platform::CdDisc disc = platform::ReadCdDisc(drive.device);
    if (!disc.ready || disc.tracks.isEmpty()) return CdNoDisc;
    int sectors = disc.leadoutSector - disc.tracks.first().startSector;
    if (item != "length") {
      bool ok = false;
      const int number = item.mid(13).toInt(&ok);
      const int index = number - disc.firstTrack;
      if (!ok || index < 0 || index >= disc.tracks.size()) return CdOutOfRange;
      const int end = index + 1 < disc.tracks.size() ? disc.tracks[index + 1].startSector
                                                     : disc.leadoutSector;
      sectors = end - disc.tracks[index].startSector;
    }
    *returned = CdLengthText(sectors, drive.timeFormat);
    return CdSuccess;
  }
  if (item == "number of tracks") {
    const platform::CdDisc disc = platform::ReadCdDisc(drive.device);
    if (!disc.ready) return CdNoDisc;
    *returned = QString::number(disc.trackCount);
    return CdSuccess;
  }
  return CdUnknownWord;
}

int Info(const OpenDrive& drive, const QStringList& arguments, QString* returned) {
  if (arguments.isEmpty()) return CdMissingParameter;
  if (arguments.size() != 1 || arguments[0] != "identity") return CdUnknownWord;
  const platform::CdDisc disc = platform::ReadCdDisc(drive.device);
  if (!disc.ready) return CdNoDisc;
  *returned = CdIdentityOf(disc);
  return CdSuccess;
}

int Run(const QString& command, QString* returned) {
  const QStringList words = Words(command);
  if (words.isEmpty()) return CdUnknownCommand;
  const QString verb = words[0].toLower();
  if (verb == "open") return Open(words);
  if (verb != "close" && verb != "set" && verb != "status" && verb != "info") return CdUnknownCommand;
  if (words.size() < 2) return CdMissingParameter;
  const QString alias = words[1].toLower();
  if (verb == "close") return Close(alias);
  const auto found = Aliases().find(alias);
  if (found == Aliases().end()) return CdNotOpen;
  const QStringList arguments = Arguments(words);
  if (verb == "set") return Set(found->second, arguments);
  if (verb == "status") return Status(found->second, arguments, returned);
  return Info(found->second, arguments, returned);
}

// The sum of the decimal digits of a number.
int DigitSum(int number) {
  int sum = 0;
  for (; number > 0; number /= 10) sum += number % 10;
  return sum;
}

}  // namespace

int CdCommand(const QString& command, QString* returned) {
  QString answer;
  const int code = Run(command, &answer);
  if (returned) *returned = code == CdSuccess ? answer : QString();
  return code;
}

QString CdSendString(const QString& command, QString* returned) {
  return CdErrorText(CdCommand(command, returned));
}

QString CdErrorText(int code) {
  switch (code) {
    case CdSuccess: return QStringLiteral("Success");
    case CdNotOpen: return QStringLiteral("The specified device is not open or is not recognized.");
    case CdUnknownCommand: return QStringLiteral("The command is not recognized. Check its first word.");
    case CdUnknownWord: return QStringLiteral("The command holds a word that is not recognized here.");
    case CdMissingParameter: return QStringLiteral("A parameter is missing from the command.");
    case CdUnknownDevice: return QStringLiteral("The device type is not known.");
    case CdDeviceMissing: return QStringLiteral("The CD drive cannot be found or cannot be opened.");
    case CdAliasInUse: return QStringLiteral("The alias is already in use. Choose another alias.");
    case CdNoDisc: return QStringLiteral("There is no readable disc in the CD drive.");
    case CdNoDoor: return QStringLiteral("This CD device has no door to open or close.");
    case CdTrayFailed: return QStringLiteral("The CD drive did not open or close its door.");
    case CdOutOfRange: return QStringLiteral("The track number is out of range for this disc.");
    default: return QStringLiteral("The CD device reported an unknown error.");
  }
}

void CdCloseAll() { Aliases().clear(); }

QString CdLengthText(int sectors, const QString& timeFormat) {
  sectors = qMax(0, sectors);
  if (timeFormat == QLatin1String("milliseconds")) return QString::number(qint64(sectors) * 1000 / 75);
  return QStringLiteral("%1:%2:%3")
      .arg(sectors / (60 * 75), 2, 10, QLatin1Char('0'))
      .arg(sectors / 75 % 60, 2, 10, QLatin1Char('0'))
      .arg(sectors % 75, 2, 10, QLatin1Char('0'));
}

quint32 CdLookupId(const platform::CdDisc& disc) {
  if (!disc.ready || disc.tracks.isEmpty()) return 0;
  int digits = 0;
  for (const platform::CdTrack& track : disc.tracks) digits += DigitSum(track.startSector / 75);
  const int seconds = disc.leadoutSector / 75 - disc.tracks.first().startSector / 75;
  return (quint32(digits % 0xff) << 24) | (quint32(seconds & 0xffff) << 8) |
         quint32(disc.trackCount & 0xff);
}

QString CdIdentityOf(const platform::CdDisc& disc) {
  if (!disc.ready) return QString();
  return QStringLiteral("%1-%2-%3")
      .arg(CdLookupId(disc), 8, 16, QLatin1Char('0'))
      .arg(disc.trackCount)
      .arg(disc.leadoutSector);
}
