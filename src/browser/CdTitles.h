#pragma once
// The titles of an audio CD's tracks, for the names on the Audios tab. The
// CD title lookup answers through the program-wide state's hook; without
// one no titles are known and the tracks keep their file names.

#include <QString>
#include <QStringList>
#include <functional>

// Fills titles (track 1 first) for the CD whose folder is given; false when
// no titles are known.
using CdTitleLookup = std::function<bool(const QString& folder, QStringList& titles)>;

void SetCdTitleLookup(CdTitleLookup lookup);
bool LookUpCdTitles(const QString& folder, QStringList& titles);
