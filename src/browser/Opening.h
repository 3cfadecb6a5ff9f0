#pragma once
// What opens an item of the browser: the tests of the types that go to an
// outside program, and the desktop's program for a file's type.

#include <QString>

// Whether the file's extension is one of the videos that an outside program
// plays ("flv", "mp4", "rm", "ram", "mov"), or of the documents ("txt",
// "text", "rdf", "doc", "docx", "pdf"). The extension is compared exactly as
// GetFileExtension gives it; none gives false.
bool IsExteriorPgmTypeV(const QString& name);
bool IsExteriorPgmTypeD(const QString& name);

// The program that the desktop runs for the file's type (its default
// application's executable), or "".
QString GetAssocPgm(const QString& name);

// The program of a command line as an association writes it: quotes
// dropped, lower-cased, cut behind the last ".exe"; the result when that
// file exists, with a leading "%systemroot%" read as "c:\windows"; else "".
QString ParseCommandPath(const QString& command);

// The file handed to an outside program: the folder on display, "/" and the
// entry, joined without a test (in album mode the folder is the album's name
// and the entry a full path, and the name given does not exist).
QString ExteriorFilePath(const QString& currentFolder, const QString& entry);

// Starts the desktop's program for the entry's type on the file; a type
// without a program starts nothing, silently.
void StartExteriorProgram(const QString& entry, const QString& file);
