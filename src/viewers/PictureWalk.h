#pragma once
// How the picture viewer walks its list: the nearest entry that is not
// empty before or after the one shown, and what to do when there is none.
// An empty entry is a file deleted while listed.

#include <QChar>
#include <QStringList>
#include <QtGlobal>

struct WalkStep {
  qint32 Index = 0;
  QChar Direction = '+';
  // The window closes instead of showing anything.
  bool Close = false;
};

// Backward from `index`: the nearest entry before it that is not empty,
// walking on backward. With none, the walk turns forward from the first
// entry, unless that is the only one: then the window closes.
WalkStep StepBackward(const QStringList& files, qint32 count, qint32 index);
// Forward likewise; with none the walk turns backward from the last entry,
// unless the list has one entry only.
WalkStep StepForward(const QStringList& files, qint32 count, qint32 index);

// Which walking buttons are enabled at an index: first and previous away
// from the first entry, next and last away from the last.
struct WalkButtons {
  bool First = false, Previous = false, Next = false, Last = false;
};
WalkButtons WalkButtonsAt(qint32 index, qint32 count);
