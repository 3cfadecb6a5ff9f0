#pragma once
// The start routine of the program.

class QApplication;

// Refuses a second instance, prepares the program-wide state, loads the
// main window and runs the program. Returns the exit code.
int Main(QApplication& application);
