#pragma once
// The fonts and code pages a drawing names, on a machine that has none of Windows' fonts: the
// Japanese faces documents ask for come out in the Japanese fonts installed here, and the bytes of
// a narrow string are read in the code page of the font's character set.

#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace emf {

// The families to ask fontconfig for, best first: the named face itself, then an installed font
// of the same kind.
QStringList FontFamilies(const QString& vFace, int vCharset);

// Narrow text in the code page of a character set: 128 (Shift-JIS) and 1 (the system's, which is
// Japanese where these documents are written) read as cp932, everything else as cp1252.
QString DecodeNarrow(QByteArrayView vBytes, int vCharset);

// Bytes per character of narrow text in that character set, for the spacing arrays that give one
// width per byte.
QList<int> NarrowCharacterBytes(QByteArrayView vBytes, int vCharset);

} // namespace emf
