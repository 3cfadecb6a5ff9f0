#pragma once
// How the program's own controls show to a screen reader. Most of them are
// painted by hand on a plain widget, so Qt's accessibility layer would see
// nameless surfaces; the interfaces registered here give each one the role
// it plays (button, check box, option button, spin box, slider, label, tab
// list, dialog), its name and its state, read from the control when asked.
//
// The Notify calls tell a listening screen reader that a state changed.
// They cost nothing while no screen reader listens.

#include <QVariant>

class QObject;
class QWidget;

namespace accessible {

// Registers the controls' interfaces with Qt's accessibility layer. The
// program does it as its application object starts; calling it again does
// nothing.
void InstallControls();

// The checked state of a check box or option button changed.
void NotifyChecked(QObject* control);
// A button went down or came up.
void NotifyPressed(QObject* control);
// A slider, scroll bar or spin box took a new value.
void NotifyValue(QObject* control, const QVariant& value);
// A label's text, or a control's caption, changed.
void NotifyNameChanged(QObject* control);

}  // namespace accessible
