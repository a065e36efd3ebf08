#pragma once
// Trimming as the settings and command lines of the Windows build know it: blanks only. A TAB
// or an ideographic space at either end is part of the text.

#include <QString>

inline QString TrimRightBlanks(const QString& vText)
{
    qsizetype last = vText.size();
    while (last > 0 && vText[last - 1] == QLatin1Char(' '))
        --last;
    return vText.left(last);
}

inline QString TrimBlanks(const QString& vText)
{
    qsizetype first = 0;
    while (first < vText.size() && vText[first] == QLatin1Char(' '))
        ++first;
    return TrimRightBlanks(vText.mid(first));
}
