#include "engine/write/DibPicture.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/Lh5.h"
#include "engine/emf/DibLayout.h"
#include "engine/write/Emit.h"

#include <QBuffer>

#include <cmath>

namespace xdw::picture {

namespace {

constexpr quint32 InfoHeaderSize = 40;
constexpr quint32 PackedWithLh5 = 1;
constexpr double HundredthsPerMetre = 100000.0;

QByteArray Le16(quint16 vValue)
{
    return QByteArray(1, static_cast<char>(vValue & 0xFF)) + QByteArray(1, static_cast<char>(vValue >> 8));
}

QByteArray Rgbx(int vRed, int vGreen, int vBlue)
{
    const char entry[4] = {static_cast<char>(vBlue), static_cast<char>(vGreen), static_cast<char>(vRed), 0};
    return QByteArray(entry, 4);
}

quint32 PelsPerMetre(int vPixels, qint64 vHundredths)
{
    return static_cast<quint32>(std::lround(vPixels * HundredthsPerMetre / qMax<qint64>(vHundredths, 1)));
}

// The common fields of a page content drawing: kind, the first size, the box, the role.
QByteArray Head(int vKind, qint64 vExpanded, qint64 vWidth, qint64 vHeight)
{
    using emit::Int;
    using emit::Tlv;
    return Tlv(0x80, Int(vKind)) + Tlv(0x81, Int(vExpanded)) + Tlv(0x84, Int(vWidth))
        + Tlv(0x85, Int(vHeight)) + Tlv(0x8D, Int(3));
}

} // namespace

QByteArray DibDrawing(const QImage& vImage, qint64 vWidth, qint64 vHeight, const PictureCompressor& vCompress)
{
    const int bitCount = vImage.format() == QImage::Format_Mono ? 1
        : vImage.format() == QImage::Format_Grayscale8      ? 8
                                                            : 24;
    const QImage image = bitCount == 24 ? vImage.convertToFormat(QImage::Format_RGB888) : vImage;
    const int w = image.width(), h = image.height();
    const qint64 stride = ((qint64(w) * bitCount + 31) / 32) * 4;
    if (qint64(w) * h > dib::kMaxPixels || stride * h > lh5::MaxExpanded)
        throw FormatError{XdwResult::OutOfMemory,
                          QStringLiteral("a picture of %1 x %2 pixels is too large to keep lossless; "
                                         "JPEG compression can store it").arg(w).arg(h)};

    QByteArray palette;
    if (bitCount == 1)
        palette = Rgbx(0, 0, 0) + Rgbx(255, 255, 255);
    for (int i = 0; bitCount == 8 && i < 256; ++i)
        palette += Rgbx(i, i, i);
    QByteArray info = emit::Le32(InfoHeaderSize) + emit::Le32(static_cast<quint32>(w))
        + emit::Le32(static_cast<quint32>(h)) + Le16(1) + Le16(static_cast<quint16>(bitCount))
        + emit::Le32(0) + emit::Le32(static_cast<quint32>(stride * h))
        + emit::Le32(PelsPerMetre(w, vWidth)) + emit::Le32(PelsPerMetre(h, vHeight))
        + emit::Le32(static_cast<quint32>(palette.size() / 4)) + emit::Le32(0) + palette;

    // Bottom row first, each padded to four bytes with zeros (and the spare bits of the last
    // byte of a 1-bit row cleared), so that equal pictures give equal bytes.
    QByteArray rows(stride * h, '\0');
    const qsizetype used = (qint64(w) * bitCount + 7) / 8;
    for (int y = 0; y < h; ++y) {
        char* out = rows.data() + stride * (h - 1 - y);
        const uchar* in = image.constScanLine(y);
        if (bitCount == 24) {
            for (int x = 0; x < w; ++x) {
                out[3 * x] = static_cast<char>(in[3 * x + 2]);
                out[3 * x + 1] = static_cast<char>(in[3 * x + 1]);
                out[3 * x + 2] = static_cast<char>(in[3 * x]);
            }
        } else {
            std::copy(in, in + used, out);
            if (bitCount == 1 && w % 8 != 0)
                out[used - 1] = static_cast<char>(out[used - 1] & (0xFF << (8 - w % 8)));
        }
    }
    const QByteArray packed = vCompress(rows);
    const QByteArray data = info + emit::Le32(PackedWithLh5) + emit::Le32(static_cast<quint32>(packed.size()))
        + emit::Le32(static_cast<quint32>(rows.size())) + emit::Le32(static_cast<quint32>(h)) + packed;
    return Head(7, info.size(), vWidth, vHeight) + emit::Tlv(0x89, emit::Int(data.size()))
        + emit::Tlv(0x86, data);
}

QByteArray JpegDrawing(const QByteArray& vJpeg, QSize vPixels, qint64 vWidth, qint64 vHeight)
{
    using emit::Int;
    using emit::Tlv;
    return Head(5, vJpeg.size(), vWidth, vHeight) + Tlv(0x87, Int(vPixels.width()))
        + Tlv(0x88, Int(vPixels.height())) + Tlv(0x89, Int(vJpeg.size())) + Tlv(0x86, vJpeg);
}

QByteArray EncodeJpeg(const QImage& vImage, int vQuality)
{
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    if (!vImage.save(&buffer, "JPEG", vQuality))
        throw FormatError{XdwResult::OutOfMemory, QStringLiteral("the picture cannot be made a JPEG")};
    return jpeg;
}

} // namespace xdw::picture
