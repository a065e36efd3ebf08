#pragma once
// Whole-file reads and replacing writes, with errors a user can act on. A replacing write goes
// to a temporary file in the same folder and is renamed over the old file only once every byte
// is down, so a full disk or a vanished folder never leaves a half-written settings file.

#include "support/AppError.h"

#include <QByteArray>
#include <QString>

namespace FileBytes {

// The error a failed read or write of vPath raises, chosen by the system's error code.
AppError ErrorFor(int vErrno, const QString& vPath);

bool Exists(const QString& vPath);
QByteArray ReadAll(const QString& vPath);
void WriteReplacing(const QString& vPath, const QByteArray& vBytes);

// Splits at CR LF, and at a lone CR or LF as well; a final line end adds no empty line.
template <class View, class Text, class Emit>
void ForEachLine(const Text& vText, Emit vEmit)
{
    const auto n = vText.size();
    decltype(vText.size()) start = 0;
    for (decltype(vText.size()) i = 0; i < n; ++i) {
        const auto c = vText[i];
        if (c != '\r' && c != '\n')
            continue;
        vEmit(View(vText).sliced(start, i - start));
        if (c == '\r' && i + 1 < n && vText[i + 1] == '\n')
            ++i;
        start = i + 1;
    }
    if (start < n)
        vEmit(View(vText).sliced(start));
}

} // namespace FileBytes
