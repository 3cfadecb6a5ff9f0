#pragma once
// Reading the message box's style word and its answers. The style word is
// the one the program's callers have always passed: a button set below 16,
// an icon in steps of 16, and the default button in steps of 256.

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace msgbox {

// Result codes of MsgBoxEnhanced::MsgBox.
enum Result : qint16 {
  TimedOut = 0,  // also: the form could not be shown, or a modeless show
  ResultOk = 1,
  ResultCancel = 2,  // "Cancel", the Escape key and the close box
  ResultAbort = 3,
  ResultRetry = 4,
  ResultIgnore = 5,
  ResultYes = 6,
  ResultNo = 7
};

// Identifiers of the four icons, in the order of the style word's icon part:
// stop, question, exclamation, information.
inline constexpr int IconIdentifiers[4] = {32513, 32514, 32515, 32516};

struct Style {
  int DefaultButton = 0;  // index asked for; only honoured within the set
  int IconIndex = -1;     // 0 stop, 1 question, 2 exclamation, 3 information; -1 none
  int ButtonSet = 0;      // 0 to 5; any other value shows no button
  QStringList Captions;   // the captions of the set, from button 0

  // The default button's index when it lies within the set, else -1.
  int EffectiveDefault() const;
};

Style DecodeStyle(qint16 buttons);

// The captions of a button set; empty for an unknown set.
QStringList CaptionsOfSet(int buttonSet);

// A button's result, decided by its caption alone; 0 for a caption that is
// none of the box's own.
qint16 ResultOfCaption(const QString& caption);

// The direction kept by the GradientDirection property for a given one:
// outside 1 to 16 becomes 1; 5 and 6, 7 and 8, ..., 15 and 16 trade places.
qint16 StoredGradientDirection(int given);

}  // namespace msgbox
