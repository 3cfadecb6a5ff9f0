#pragma once
// The popup help of the command bar and the browser: for each control a
// title and a few lines of text. The lines are joined by a carriage return
// and a line feed, which the popup shows as line breaks.

#include <QList>
#include <QString>
#include <QStringList>

struct HelpEntry {
  // The control's name; an element of a control array carries its index,
  // "PositionNumber(1)".
  QString Control;
  QString Title;
  QStringList Lines;
};

// Every entry, in the order the controls are given their popups.
const QList<HelpEntry>& HelpTable();

// The entry of a control; null when the control has no help.
const HelpEntry* FindHelp(const QString& control);
// The title, and the text with its lines joined by "\r\n"; empty when the
// control has no help.
QString HelpTitle(const QString& control);
QString HelpText(const QString& control);
