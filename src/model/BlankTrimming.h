#pragma once

#include <QString>
#include <QStringView>

// Trims blanks and tabs (any space separator) from both ends, but never line breaks: names the
// user types and names the shortcuts tool prints are trimmed the same way.
QString trimmedBlanks(QStringView text);
