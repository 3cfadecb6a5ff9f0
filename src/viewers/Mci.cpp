#include "viewers/Mci.h"

#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <QRect>
#include <QStringList>
#include <map>
#include <memory>

#include "catalogue/CommandWords.h"
#include "platform/MediaDevice.h"
#include "platform/MidiDevice.h"
#include "platform/MidiFile.h"
#include "platform/MpvDevice.h"
#include "viewers/VideoFrame.h"

namespace {

const QString Success = QStringLiteral("Success");

// The error texts, at most 128 characters each.
namespace Reply {
const char* const NotOpen = "The specified device is not open or is not recognized.";
const char* const UnknownCommand = "The command is not recognized. Check its first word.";
const char* const UnknownWord = "The command holds a word that is not recognized here.";
const char* const MissingParameter = "A parameter is missing from the command.";
const char* const BadNumber = "A number in the command is not a valid whole number.";
const char* const OutOfRange = "The position given lies outside the file.";
const char* const FileMissing = "The file cannot be found. Check its folder and its name.";
const char* const CannotPlay =
    "The file cannot be played: it may be damaged, or its format is not one this device knows.";
const char* const UnknownDevice = "The device type is not known.";
const char* const AliasInUse = "The alias is already in use. Choose another alias.";
const char* const NoWindow = "The window named in the command does not exist.";
const char* const NoPicture = "The file has no picture to show.";
const char* const NoLength = "The device cannot tell the length or the position of the file.";
const char* const NoLibrary = "The media library could not be started.";
const char* const NoSoundFont = "No sound font is installed, so MIDI files cannot be played.";
}  // namespace Reply

// One open alias: its device, and the window its film is drawn into.
struct OpenAlias {
  std::unique_ptr<platform::MediaDevice> device;
  QPointer<VideoFrame> frame;
};

struct Interpreter {
  // By alias in lower case.
  std::map<QString, OpenAlias> aliases;
  std::function<void(const QString&, const QString&)> watcher;
  bool closeAtExit = false;
};

Interpreter& TheInterpreter() {
  static Interpreter interpreter;
  return interpreter;
}

QStringList Words(const QString& command) { return CommandWords(command); }

bool WholeNumber(const QString& text, qint64& value) {
  bool ok = false;
  value = text.toLongLong(&ok);
  return ok;
}

bool IsMidiFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) && platform::LooksLikeMidi(file.read(12));
}

QString Open(const QStringList& words) {
  if (words.size() < 2) return Reply::MissingParameter;
  const QString path = words[1];
  QString type = QStringLiteral("mpegvideo"), alias, parent;
  for (int i = 2; i < words.size(); ++i) {
    const QString key = words[i].toLower();
    if (key == "wait" || key == "shareable") continue;
    if (key != "type" && key != "alias" && key != "parent" && key != "style") return Reply::UnknownWord;
    if (i + 1 >= words.size()) return Reply::MissingParameter;
    const QString value = words[++i];
    if (key == "type") type = value.toLower();
    if (key == "alias") alias = value.toLower();
    if (key == "parent") parent = value;
  }
  if (alias.isEmpty()) return Reply::MissingParameter;
  Interpreter& it = TheInterpreter();
  if (it.aliases.count(alias)) return Reply::AliasInUse;
  if (type != "mpegvideo" && type != "avivideo" && type != "sequencer") return Reply::UnknownDevice;
  QPointer<VideoFrame> frame;
  if (!parent.isEmpty() && parent != "0") {
    frame = VideoFrame::FromHandle(parent);
    if (!frame) return Reply::NoWindow;
  }
  if (!QFile::exists(path)) return Reply::FileMissing;

  platform::MediaOpenFailure failure = platform::MediaOpenFailure::None;
  std::unique_ptr<platform::MediaDevice> device;
  // The media library plays no MIDI: a MIDI file goes to the synthesizer
  // whatever device it was opened on.
  const bool midi = type == "sequencer" || IsMidiFile(path);
  if (midi)
    device = platform::MidiDevice::Open(path, &failure);
  else
    device = platform::MpvDevice::Open(path, &failure);
  if (!device) {
    switch (failure) {
      case platform::MediaOpenFailure::Missing: return Reply::FileMissing;
      case platform::MediaOpenFailure::NoEngine: return midi ? Reply::NoSoundFont : Reply::NoLibrary;
      default: return Reply::CannotPlay;
    }
  }
  if (frame) {
    device->SetPictureSink([frame](const QImage& picture) {
      if (frame) VideoFrameDrawing::Show(frame, picture);
    });
    device->SetPictureTargetSize(VideoFrameDrawing::TargetSize(frame));
  }
  it.aliases[alias] = OpenAlias{std::move(device), frame};
  // Devices hold threads of the libraries: they go before the application.
  if (!it.closeAtExit) {
    qAddPostRoutine(MciCloseAll);
    it.closeAtExit = true;
  }
  return Success;
}

QString Close(const QString& alias) {
  Interpreter& it = TheInterpreter();
  if (alias == "all") {
    MciCloseAll();
    return Success;
  }
  const auto found = it.aliases.find(alias);
  if (found == it.aliases.end()) return Reply::NotOpen;
  const QPointer<VideoFrame> frame = found->second.frame;
  it.aliases.erase(found);
  if (frame) VideoFrameDrawing::Forget(frame);
  return Success;
}

QString Status(OpenAlias& open, const QStringList& words, QString* returned) {
  if (words.size() < 3) return Reply::MissingParameter;
  const QString item = words[2].toLower();
  qint64 value = -1;
  if (item == "length")
    value = open.device->LengthMs();
  else if (item == "position")
    value = open.device->PositionMs();
  else
    return Reply::UnknownWord;
  if (value < 0) return Reply::NoLength;
  if (returned) *returned = QString::number(value);
  return Success;
}

QString Play(OpenAlias& open, const QStringList& words) {
  qint64 from = -1, to = -1;
  bool hasFrom = false, hasTo = false;
  for (int i = 2; i < words.size(); ++i) {
    const QString key = words[i].toLower();
    if (key == "wait" || key == "notify") continue;
    if (key != "from" && key != "to") return Reply::UnknownWord;
    if (i + 1 >= words.size()) return Reply::MissingParameter;
    qint64 value = 0;
    if (!WholeNumber(words[++i], value)) return Reply::BadNumber;
    (key == "from" ? from : to) = value;
    (key == "from" ? hasFrom : hasTo) = true;
  }
  const qint64 length = open.device->LengthMs();
  if (hasFrom && (from < 0 || (length >= 0 && from > length))) return Reply::OutOfRange;
  if (hasTo && (to < 0 || (length >= 0 && to > length) || (hasFrom && to < from))) return Reply::OutOfRange;
  if (!hasFrom && !hasTo) {
    open.device->Resume();
  } else {
    open.device->PlayFrom(hasFrom ? from : qMax<qint64>(0, open.device->PositionMs()), hasTo ? to : -1);
  }
  return Success;
}

QString SetTimeFormat(const QStringList& words) {
  if (words.size() < 5) return Reply::MissingParameter;
  if (words[2].toLower() != "time" || words[3].toLower() != "format") return Reply::UnknownWord;
  const QString format = words[4].toLower();
  // Nothing here counts frames: "frames" are milliseconds too.
  if (format != "ms" && format != "milliseconds" && format != "frames") return Reply::UnknownWord;
  return Success;
}

QString Where(OpenAlias& open, const QStringList& words, QString* returned) {
  if (words.size() < 3) return Reply::MissingParameter;
  const QString item = words[2].toLower();
  if (item != "destination" && item != "source") return Reply::UnknownWord;
  QSize size;
  if (!open.device->PictureSize(size)) return Reply::NoPicture;
  if (returned) *returned = QStringLiteral("0 0 %1 %2").arg(size.width()).arg(size.height());
  return Success;
}

QString Put(OpenAlias& open, const QStringList& words) {
  if (words.size() < 8) return Reply::MissingParameter;
  if (words[2].toLower() != "window" || words[3].toLower() != "at") return Reply::UnknownWord;
  qint64 numbers[4];
  for (int i = 0; i < 4; ++i)
    if (!WholeNumber(words[4 + i], numbers[i])) return Reply::BadNumber;
  if (open.frame) {
    VideoFrameDrawing::SetRect(open.frame, QRect(int(numbers[0]), int(numbers[1]), int(numbers[2]),
                                                 int(numbers[3])));
    open.device->SetPictureTargetSize(VideoFrameDrawing::TargetSize(open.frame));
  }
  return Success;
}

QString Run(const QString& command, QString* returned) {
  const QStringList words = Words(command);
  if (words.isEmpty()) return Reply::UnknownCommand;
  const QString verb = words[0].toLower();
  if (verb == "open") return Open(words);
  if (words.size() < 2) return Reply::MissingParameter;
  const QString alias = words[1].toLower();
  if (verb == "close") return Close(alias);
  static const QStringList verbs = {"set", "status", "play", "pause", "resume", "stop", "where", "put"};
  if (!verbs.contains(verb)) return Reply::UnknownCommand;
  Interpreter& it = TheInterpreter();
  const auto found = it.aliases.find(alias);
  if (found == it.aliases.end()) return Reply::NotOpen;
  OpenAlias& open = found->second;
  if (verb == "set") return SetTimeFormat(words);
  if (verb == "status") return Status(open, words, returned);
  if (verb == "play") return Play(open, words);
  if (verb == "where") return Where(open, words, returned);
  if (verb == "put") return Put(open, words);
  if (verb == "pause") open.device->Pause();
  if (verb == "resume") open.device->Resume();
  if (verb == "stop") open.device->Stop();
  return Success;
}

}  // namespace

QString MciSendString(const QString& command, QString* returned) {
  if (returned) returned->clear();
  const QString reply = Run(command, returned);
  if (const auto& watcher = TheInterpreter().watcher) watcher(command, reply);
  return reply;
}

void MciCloseAll() {
  Interpreter& it = TheInterpreter();
  // Taken out first: a device that goes may run events that send commands.
  std::map<QString, OpenAlias> closing;
  closing.swap(it.aliases);
  for (auto& [alias, open] : closing)
    if (open.frame) VideoFrameDrawing::Forget(open.frame);
  closing.clear();
}

void MciWatchCommands(std::function<void(const QString& command, const QString& reply)> watcher) {
  TheInterpreter().watcher = std::move(watcher);
}
