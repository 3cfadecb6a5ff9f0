#pragma once
// The program-wide state: one instance, alive from the start routine to the
// end, read and written by every window. Reached through App().

#include <QColor>
#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <functional>
#include <memory>

#include "core/BrowserSession.h"
#include "core/MediaTables.h"

class QWidget;
class Database;
class MsgBoxEnhanced;
// The open audio mixer; made and used by the mixer module alone.
struct MixerConnection;

// What the browser has on display (the folder or album, the list and the
// current item of each tab) is the BrowserSession part: App().CurrentFolder,
// App().PictureFiles(), App().CurrentPicture(), App().List(tab) ...
struct AppState : BrowserSession {
  // Shared colours, set by the start routine before any window loads.
  QColor ColorDarkGrey{150, 150, 150};
  QColor ColorLightGrey{192, 192, 192};

  QString LastTargetFolder;

  // A file that a viewer asks to rename (full path); "" when the browser's
  // current item is meant.
  QString PendingFile;
  // The file a copy, move, delete or rename works on and its target (full
  // paths), and what the folder chooser answers: the folder picked, the
  // name typed for the file, and whether it was left without OK.
  QString SourceFile, TargetFile;
  // The last answer of a verification window: 6 yes, 7 no, 2 cancelled, 0
  // not asked. A copy that answers 7 copied nothing.
  qint16 ReplaceAnswer = 0;
  // The deletion of the current file is the second half of a move.
  bool RemoveWithoutVerify = false;
  // The two files that the replace verification compares.
  QString ReplaceSource, ReplaceTarget;
  // The message box style a caller asks for, and the answer it got.
  qint16 MessageStyle = 0, MessageAnswer = 0;
  // The file to send by e-mail, and the picture to print.
  QString EmailFile, CurrentMediaFile;
  // The session with the mail program, signed on at the first e-mail; 0
  // before.
  int MailSessionId = 0;
  QString ChosenFolder, OperationFileName;
  bool DirectoryCancelled = true;
  // Set by the rename window when Enter closed it, so that the same key
  // press does not open the file just renamed.
  bool SkipNextEnter = false;
  QString SearchResultFile, SearchResultFolder;
  bool OpenedFromSearch = false;

  QString SelectPicturesMask, SelectVideosMask, SelectAudiosMask;
  qint16 SortOrderCode = 1;
  bool SortDescendingFlag = false;
  bool ListingStale = false;
  qint16 ThumbnailSizeTwips = 1440;

  bool ShowPopupData = true, ShowPopupHelp = true;

  // Main windows of the siblings at the last look, 0 when absent.
  quint64 ViewerWindow = 0, PainterWindow = 0;
  QString ViewerProgramPath, ManagerProgramPath;
  QString ProgramFolder;  // working folder, no trailing "/" (but for the root)
  QString TempFolder;     // system temporary folder, at most 64 characters
  QString AgentCharacterFile;

  bool SplashShown = false;
  bool MainActivated = false;
  bool IgnoreNextResize = false;
  bool RefitInProgress = false, RefitDone = false;
  bool ShuttingDown = false;
  bool CloseRefused = false;
  bool QuickExit = false;
  // A slideshow is on: the picture viewer stands on Background without its
  // buttons, and the slideshow controller decides what comes next.
  bool SlideshowRunning = false;

  qint32 MainClientHeight = 0, MainClientWidth = 0;
  qint32 TitleBarHeight = 0;
  QWidget* CurrentForm = nullptr;

  // Whether a window is open (SingleImageOpen and the like) is asked of the
  // window registry: Windows().IsLoaded(WindowId::SingleImage).
  bool FindFilesTreeLive = false;

  // The system family. The program only runs on the one family here.
  bool IsNtPlatform = true, IsNotNtPlatform = false;

  // Shared objects, created at start and released at the close. Files and
  // pictures need no shared object: Qt's file classes and LoadMediaPicture
  // serve every window.
  Database* DatabaseConnection = nullptr;
  MsgBoxEnhanced* MsgBox = nullptr;
  // The audio mixer while it is open (OpenMixer to CloseMixer).
  std::shared_ptr<MixerConnection> Mixer;

  bool AssociationsReset = false;

  // The CD title lookup, for the names on the Audios tab: fills the titles
  // (track 1 first) of the CD whose folder is given; false when none are
  // known. Empty until the CD access joins the program.
  std::function<bool(const QString& folder, QStringList& titles)> CdTitles;

  // The extension tables of the media types, filled at start.
  MediaTableSet MediaTables;

  QStringList CdDrives;
  int CdDriveCount = 0;
};

// The one instance.
AppState& App();
// Puts every value back to its start value and forgets every window (used
// by tests between cases).
void ResetAppState();
