#pragma once
// The CD drives known to the program: App().CdDrives holds the devices and
// App().CdDriveCount their count. An audio CD shows in the program as a
// folder of files "Track01.cda", "Track02.cda" and so on.

#include <QString>
#include <QStringList>

// Every CD-ROM drive of the machine.
void FillCdDrives();
// Only the drives that hold a disc with at least one audio track.
void FillAudioCdDrives();

// The names under which the audio tracks of the disc in a drive appear:
// "Track" + track number of two digits + ".cda". Empty when the drive holds
// no audio disc.
QStringList AudioTrackFileNames(const QString& drive);
