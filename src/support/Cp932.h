#pragma once
// Code page 932 (Shift-JIS as Windows has it) and back. Settings files, text files and every
// byte count of the program go through here, so that a file written on Linux reads the same on
// the Windows build. Nothing else in the program converts text to or from bytes of that page.

#include <QByteArray>
#include <QString>

namespace Cp932 {

// A character that the code page has no place for becomes "?", as it does on Windows.
QByteArray Encode(QStringView vText);

// Bytes that are no character of the code page become U+FFFD, one per faulty byte.
QString Decode(QByteArrayView vBytes);

// Length of the text in bytes of the code page.
qsizetype ByteLength(QStringView vText);

// True for the first byte of a double-byte character (0x81 to 0x9F, 0xE0 to 0xFC).
inline bool IsLeadByte(unsigned char vByte)
{
    return (vByte >= 0x81 && vByte <= 0x9F) || (vByte >= 0xE0 && vByte <= 0xFC);
}

} // namespace Cp932
