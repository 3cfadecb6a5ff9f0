#pragma once
// The rules of the file properties window without its widgets: the texts
// of the access date and time, and the name that hides a file or shows it
// again (on this system a file is hidden by a leading dot).

#include <QDateTime>
#include <QString>

// "MM/dd/yyyy " and "hh:mm:ss AM " (twelve-hour clock, "AM" or "PM"), each
// with a trailing blank; empty for an invalid time.
QString AccessedDateText(const QDateTime& accessed);
QString AccessedTimeText(const QDateTime& accessed);

// True when the file name (no folder) is a hidden one.
bool IsHiddenName(const QString& name);
// The file name that gives the file the wanted state: a dot put in front
// to hide it, the leading dots taken away to show it. A name that is
// nothing but dots cannot be shown and stays as it is.
QString NameForHidden(const QString& name, bool hidden);
