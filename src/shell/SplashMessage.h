#pragma once
// Writes a stage text into the splash window's message line and lets it
// paint; does nothing while the splash is not up.

#include <QString>

void ShowSplashMessage(const QString& text);
