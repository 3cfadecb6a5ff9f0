#pragma once
// The program-wide state: one instance, alive from the start routine to the
// end, read and written by every window. Reached through App().

#include <QColor>
#include <QString>
#include <QStringList>
#include <QtGlobal>

class QWidget;
class Database;
class MsgBoxEnhanced;

struct AppState {
  // Shared colours, set by the start routine before any window loads.
  QColor ColorDarkGrey{150, 150, 150};
  QColor ColorLightGrey{192, 192, 192};

  QString CurrentFolder;
  QString LastTargetFolder;

  // The four lists behind the browser's tabs. Each holds one scratch
  // element beyond the count of its tab; "" marks a file deleted while listed.
  QStringList PictureFiles, VideoFiles, AudioFiles, DocumentFiles;
  // Current item of each tab. Kept 32-bit so that lists beyond 32,767 work.
  qint32 CurrentPicture = 0, CurrentVideo = 0, CurrentAudio = 0, CurrentDocument = 0;

  QString PendingFile;
  // The file a copy or move works on, and what the folder chooser answers:
  // the folder picked, the name typed for the file, and whether it was left
  // without OK.
  QString SourceFile;
  QString ChosenFolder, OperationFileName;
  bool DirectoryCancelled = true;
  // Set by the rename window when Enter closed it, so that the same key
  // press does not open the file just renamed.
  bool SkipNextEnter = false;
  QString SearchResultFile, SearchResultFolder;
  qint32 SelectedAlbumId = 0;
  bool AlbumMode = false;
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

  qint32 MainClientHeight = 0, MainClientWidth = 0;
  qint32 TitleBarHeight = 0;
  QWidget* CurrentForm = nullptr;

  // Whether a window is open (SingleImageOpen and the like) is asked of the
  // window registry: Windows().IsLoaded(WindowId::SingleImage).
  bool FindFilesTreeLive = false;

  // The system family. The program only runs on the one family here.
  bool IsNtPlatform = true, IsNotNtPlatform = false;

  // Shared objects, created at start and released at the close. The file
  // system service and the picture library of the original design are Qt's
  // own file classes and LoadMediaPicture, which need no object.
  Database* DatabaseConnection = nullptr;
  MsgBoxEnhanced* MsgBox = nullptr;

  bool AssociationsReset = false;

  QStringList CdDrives;
  int CdDriveCount = 0;
};

// The one instance.
AppState& App();
// Puts every value back to its start value and forgets every window (used
// by tests between cases).
void ResetAppState();
