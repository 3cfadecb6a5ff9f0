#pragma once
// The program's file-type associations, kept in its own registry store: the
// media types the user ticked in the options are handed to the viewer
// through the class "Vistrel.File", what stood before is kept in the
// "Prior..." settings, and a type the user unticks is given back. Nothing
// here ever shows a message; failed writes are passed over.

#include <QString>

class RegistryStore;

// Writes every association anew from the settings "PictureOptions",
// "VideoOptions" and "AudioOptions": the class, the viewer's application
// path, the AutoPlay handler, each row of the association table taken over
// or given back, and ".vrd" last. Uses App().ViewerProgramPath,
// App().ManagerProgramPath and App().ProgramFolder. The store file is read
// once and written once, atomically.
void ResetFileAssociations();
// The same on a store the caller holds (the tests' before and after dumps).
void ResetFileAssociations(RegistryStore& store);

// The three steps for one extension ("bmp", or the words "dvd", "cda",
// "web" where they apply), on a store the caller holds.
void SavePriorAssociation(RegistryStore& store, const QString& extension);
void SetAssociation(RegistryStore& store, const QString& extension, const QString& contentWord);
void RestoreAssociation(RegistryStore& store, const QString& extension);

// The machine has a DVD player: "DVD\shell" names a default verb and that
// verb's "\command" gives a non-empty text other than "Error!". The store
// answers this key from the desktop (a handler of x-content/video-dvd).
bool DvdPlayerPresent();
