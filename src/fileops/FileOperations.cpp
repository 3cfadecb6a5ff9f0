#include "fileops/FileOperations.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QRandomGenerator>
#include <QTimer>
#include <cerrno>

#include "controls/MsgBoxEnhanced.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "fileops/FileCopy.h"
#include "fileops/MessageWindows.h"
#include "fileops/ReplaceVerify.h"
#include "fileops/WipeWork.h"
#include "core/WorkerWait.h"
#include "platform/FileTimes.h"
#include "platform/LeftoverFiles.h"
#include "platform/SystemMessage.h"
#include "platform/Trash.h"

namespace {

bool lastCopyComplete = false;

// How long a wipe waits, letting events run, before the file goes.
constexpr int WipeWaitMs = 3000;

void ShowFileMessage(const QString& text) {
  if (MsgBoxEnhanced* box = App().MsgBox)
    box->MsgBox(text, 48, QString());
  else
    platform::ShowSystemMessage(text, "Vistrel", platform::MessageIcon::Exclamation);
}

QString FolderOf(const QString& path) {
  const qsizetype slash = path.lastIndexOf('/');
  if (slash < 0) return ".";
  return slash == 0 ? "/" : path.left(slash);
}

QString JoinName(const QString& folder, const QString& name) {
  return folder.endsWith('/') ? folder + name : folder + "/" + name;
}

// Whether a file may be made in the folder: a probe folder is made there
// and taken away again. A folder part that is no folder fails too.
bool FolderWritable(const QString& folder) {
  const QString probePath = JoinName(folder, "temporary_vistrel_folder");
  const QByteArray probe = QFile::encodeName(probePath);
  // Noted first: a probe left by a run cut off goes at the next start.
  const QString note = ::access(probe.constData(), F_OK) != 0 ? platform::NoteProbeFolder(probePath) : QString();
  if (::mkdir(probe.constData(), 0700) != 0) {
    const int failure = errno;
    platform::ForgetLeftover(note);
    // One left from an earlier run: the folder's own permission answers.
    if (failure == EEXIST) return ::access(QFile::encodeName(folder).constData(), W_OK) == 0;
    return false;
  }
  ::rmdir(probe.constData());
  platform::ForgetLeftover(note);
  return true;
}

bool Exists(const QString& path) {
  struct stat info {};
  return ::lstat(QFile::encodeName(path).constData(), &info) == 0;
}

// Gives the file another name in its folder, never taking the name of a
// file that is there.
bool RenameWithoutReplacing(const QString& from, const QString& to) {
  const QByteArray source = QFile::encodeName(from), target = QFile::encodeName(to);
  if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
    return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // A file system without the no-replace rename.
  if (Exists(to)) {
    errno = EEXIST;
    return false;
  }
  return ::rename(source.constData(), target.constData()) == 0;
}

// Lets events run for the time given.
void WaitLettingEventsRun(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

}  // namespace

bool CopyMediaFile(const QString& source, const QString& target) {
  AppState& app = App();
  lastCopyComplete = false;
  if (!FolderWritable(FolderOf(target))) {
    ShowFileMessage("The destination drive is write protected.");
    app.ReplaceAnswer = 7;
    return false;
  }
  // A read-only target can then be replaced; a missing one is no failure.
  platform::ClearAttributes(target);

  app.ReplaceAnswer = 6;
  if (Exists(target)) {
    app.ReplaceSource = source;
    app.ReplaceTarget = target;
    ShowReplaceVerify();
    if (app.ReplaceAnswer == 7) return false;
  }
  // Esc and Yes both let the copy go on.
  const int error = RunWhileWindowsPaint([source, target] { return CopyFileContents(source, target); });
  lastCopyComplete = error == 0;
  return lastCopyComplete;
}

bool LastCopyComplete() { return lastCopyComplete; }

bool DeleteMediaFile(const QString& path) {
  if (platform::ClearAttributes(path) == 75) {
    ShowFileMessage("The file is write protected.");
    App().ReplaceAnswer = 7;
    return false;
  }
  const QString option = settings::GetSetting("DeleteOption", "0").trimmed();
  if (option == "1") return QFile::remove(path);
  if (option == "2") return WipeFile(path);
  // "0", and a value the program never writes, take the wastebasket.
  return RecycleFile(path);
}

bool RecycleFile(const QString& path) { return platform::MoveToTrash(path); }

bool WipeFile(const QString& path) {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  ShowDeleteMessage();
  int error = 0;
  const auto note = [&error](int result) {
    if (!error) error = result;
  };

  // From the first byte overwritten the file can only go: should the program
  // end before it is gone, the next start removes it.
  const QString wipeNote = platform::NoteFileToRemove(path);
  // A link is not followed: the file it points to is not the one to wipe.
  const int fd = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW);
  if (fd >= 0) {
    struct stat info {};
    const qint64 length = ::fstat(fd, &info) == 0 ? qint64(info.st_size) : 0;
    for (const WipePass pass : {WipePass::Random, WipePass::Fives, WipePass::Tens}) {
      note(RunWhileWindowsPaint([fd, length, pass] { return WriteWipePass(fd, length, pass); }));
      RefreshMessage(WindowId::DeleteMessage);
    }
    if (::close(fd) != 0) note(errno);
  } else if (errno != ELOOP) {
    note(errno);
  }
  QCoreApplication::processEvents();
  WaitLettingEventsRun(WipeWaitMs);
  RefreshMessage(WindowId::DeleteMessage);

  // The old name goes from the folder before the file does.
  const QString folder = FolderOf(path);
  const QString name = path.mid(path.lastIndexOf('/') + 1);
  const auto random = [] { return QRandomGenerator::global()->generateDouble(); };
  QString renamed, renamedNote;
  for (int attempt = 0; attempt < 100 && renamed.isEmpty(); ++attempt) {
    const QString candidate = JoinName(folder, WipeName(name.size(), random));
    const QString nameNote = platform::NoteFileToRemove(path, candidate);
    if (RenameWithoutReplacing(path, candidate)) {
      renamed = candidate;
      renamedNote = nameNote;
      break;
    }
    const int failure = errno;
    platform::ForgetLeftover(nameNote);
    errno = failure;
    if (errno != EEXIST) break;
  }
  if (renamed.isEmpty()) {
    note(errno ? errno : EEXIST);
    renamed = path;
  }
  if (::unlink(QFile::encodeName(renamed).constData()) != 0) note(errno);
  platform::ForgetLeftover(renamedNote);
  platform::ForgetLeftover(wipeNote);

  HideDeleteMessage();
  QApplication::restoreOverrideCursor();
  return error == 0;
}
