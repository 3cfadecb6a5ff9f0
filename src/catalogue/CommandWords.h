#pragma once
// The words of a media command line: blanks separate them, and a text in
// double quotes (a path with blanks) is one word without its quotes.

#include <QString>
#include <QStringList>

QStringList CommandWords(const QString& command);
