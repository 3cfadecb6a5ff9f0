#pragma once
// Folders of files that a user's disk may hold and a browser must pass over:
// broken pictures of every listed kind, empty files, awkward names, links
// that loop and a folder that can't be read. The outcomes are written down
// in tests/data/hostile/README.md.

#include <QString>

namespace hostile {

// Makes the collection in `folder` (created as needed):
//   cut.<ext>   the first 10 bytes of a good picture, for bmp, emf, gif,
//               ico, jpg, pcx, png, tif, wmf and xif;
//   torn.<ext>  the same pictures whole, their middle third overwritten;
//   good.png, it's.png, say "cheese".png, a;b.png, "two\nlines.png",
//   Ærø été.png   good pictures of 64 x 48 pixels;
//   "bad-\xFF.png"  a good picture whose name is no UTF-8 (the program's
//               file names are text: it reads as "bad-\uFFFD.png");
//   empty.png, empty.avi, empty.mp3, empty.txt   zero bytes each;
//   loop-a.jpg -> loop-b.jpg -> loop-a.jpg   links that never end;
//   here -> .   a link to the folder that holds it;
//   sub/deep.png and sub/up -> ..   a picture one folder down, and a link
//               back to the folder above;
//   locked/secret.png   in a folder nobody but the superuser may open.
// Returns `folder`.
QString MakeHostileFiles(const QString& folder);

// Removes what the test world's clean-up can't reach by a text name: the
// file whose name is no UTF-8, and the lock of the locked folder.
void RemoveHostileFiles(const QString& folder);

// count empty files p000000.jpg, p000001.jpg, ... in a new `folder`.
// Returns false when one could not be made.
bool MakeManyFiles(const QString& folder, int count);

}  // namespace hostile
