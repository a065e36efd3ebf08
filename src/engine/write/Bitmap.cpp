#include "engine/write/Bitmap.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"

#include <QtEndian>

#include <cmath>
#include <cstdlib>

namespace xdw::annot {

namespace {

constexpr qsizetype FileHeader = 14;
constexpr qsizetype InfoHeader = 40;
constexpr qsizetype LargestInfoHeader = 124;
constexpr qint64 MaxSide = 65535;
constexpr double DefaultDpi = 96;

[[noreturn]] void Refuse(const char* vWhy)
{
    throw FormatError{XdwResult::BadFormat, QStringLiteral("bitmap: ") + QString::fromLatin1(vWhy)};
}

quint32 U32(QByteArrayView vBytes, qsizetype vAt) { return qFromLittleEndian<quint32>(vBytes.data() + vAt); }
qint32 I32(QByteArrayView vBytes, qsizetype vAt) { return qFromLittleEndian<qint32>(vBytes.data() + vAt); }
quint16 U16(QByteArrayView vBytes, qsizetype vAt) { return qFromLittleEndian<quint16>(vBytes.data() + vAt); }

int Hundredths(qint64 vPixels, qint32 vPerMetre)
{
    const double dpi = vPerMetre > 0 ? vPerMetre * 0.0254 : DefaultDpi;
    constexpr double Largest = 240000;   // 2.4 m, as far as any annotation reaches
    return static_cast<int>(std::clamp<double>(std::lround(vPixels / dpi * 2540.0), 1, Largest));
}

} // namespace

Bitmap ReadBmp(QByteArrayView vFile)
{
    if (vFile.size() < FileHeader + InfoHeader || vFile[0] != 'B' || vFile[1] != 'M')
        Refuse("not a BMP file");
    const qint64 bitsAt = U32(vFile, 10);
    const qint64 headerSize = U32(vFile, FileHeader);
    if (headerSize < InfoHeader || headerSize > LargestInfoHeader || FileHeader + headerSize > bitsAt
        || bitsAt > vFile.size())
        Refuse("header does not fit the file");
    const qint64 width = I32(vFile, 18), height = I32(vFile, 22);
    const int bpp = U16(vFile, 28);
    if (width < 1 || width > MaxSide || height == 0 || std::abs(height) > MaxSide)
        Refuse("size out of range");
    if (bpp != 1 && bpp != 4 && bpp != 8 && bpp != 24 && bpp != 32)
        Refuse("unsupported depth");
    if (U32(vFile, 30) != 0)
        Refuse("compressed pixels");
    const qint64 stride = (width * bpp + 31) / 32 * 4;
    const qint64 rows = stride * std::abs(height);
    if (rows > vFile.size() - bitsAt)
        Refuse("pixels shorter than the header says");
    Bitmap b;
    // A longer header (V4, V5) is cut to the plain one; the palette follows it either way.
    b.info = vFile.sliced(FileHeader, InfoHeader).toByteArray();
    qToLittleEndian<quint32>(InfoHeader, b.info.data());
    b.info += vFile.sliced(FileHeader + headerSize, bitsAt - FileHeader - headerSize).toByteArray();
    b.bits = vFile.sliced(bitsAt, rows).toByteArray();
    b.pixels = QSize(static_cast<int>(width), static_cast<int>(std::abs(height)));
    b.size = QSize(Hundredths(width, I32(vFile, 38)), Hundredths(std::abs(height), I32(vFile, 42)));
    return b;
}

} // namespace xdw::annot
