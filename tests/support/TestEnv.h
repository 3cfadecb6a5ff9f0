#pragma once
// Every test runs in a world of its own: a fresh temporary HOME, XDG
// configuration, data, cache and runtime folders, and a program folder that
// stands for the folder of the installed program. The program-wide state is
// reset before each test.

#include <QString>

namespace testenv {

// Root of the current test's temporary world.
QString Root();
// The current test's program folder (App().ProgramFolder points at it).
QString ProgramFolder();
// The program folder of the build: Vistrel.VRD, helpers and resources.
QString BuildProgramFolder();
// Folder of the small fixture files kept with the tests.
QString DataFolder();

// Copies a fresh data file, as the build makes it, into the test's program folder; its path.
QString InstallDataFile();
// Makes a file of the given bytes (folders created as needed); its path.
QString MakeFile(const QString& path, const QByteArray& bytes);

}  // namespace testenv
