#pragma once
// The CD drives known to the program: App().CdDrives holds the devices and
// App().CdDriveCount their count. An audio CD shows in the program as a
// folder of files "Track01.cda", "Track02.cda" and so on.

#include <QList>
#include <QString>
#include <QStringList>

// Every CD-ROM drive of the machine.
void FillCdDrives();
// Only the drives that hold a disc with at least one audio track.
void FillAudioCdDrives();

// The CD drives as the folder tree shows them: the drive's path (the folder
// of its tracks) and a label telling what it holds, "Audio CD (sr0)" for a
// disc with audio tracks, "CD Drive (sr0)" otherwise.
struct CdDriveFolder {
  QString Drive;
  QString Label;
  // The drive holds a readable disc.
  bool Ready = false;
};
QList<CdDriveFolder> CdDriveFolders();

// The folder is one of the known CD drives (App().CdDrives), whose files are
// the tracks of its disc rather than entries of the file system.
bool IsCdDriveFolder(const QString& folder);

// A folder the browser can show: a folder of the file system, or a CD drive.
bool IsBrowsableFolder(const QString& folder);

// The drive holds a disc that can be read.
bool CdDiscReady(const QString& drive);

// The names under which the audio tracks of the disc in a drive appear:
// "Track" + track number of two digits + ".cda". Empty when the drive holds
// no audio disc.
QStringList AudioTrackFileNames(const QString& drive);
