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

// Narrow text with its spacing array, which gives one width per byte: a double-byte character
// advances by both of its widths. The advances come out one per UTF-16 unit of the text.
QString DecodeNarrow(QByteArrayView vBytes, int vCharset, const QList<double>& vPerByte,
                     QList<double>* vPerUnit);

} // namespace emf
