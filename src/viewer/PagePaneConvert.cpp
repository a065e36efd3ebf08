#include "viewer/PagePaneImage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace pagepane {
namespace {

inline quint16 Rgb555(QRgb vColour)
{
    return quint16(((qRed(vColour) >> 3) << 10) | ((qGreen(vColour) >> 3) << 5) | (qBlue(vColour) >> 3));
}

// Eight pixels at a time: each byte of a 1-bit row looks up its eight 16-bit pixels.
void ExpandBits(const QImage& vSource, QImage& vOut)
{
    const QList<QRgb> table = vSource.colorTable();
    const quint16 colours[2] = {Rgb555(table.value(0, qRgb(0, 0, 0))), Rgb555(table.value(1, qRgb(255, 255, 255)))};
    const bool msbFirst = vSource.format() == QImage::Format_Mono;
    std::array<std::array<quint16, 8>, 256> eights;
    for (int b = 0; b < 256; ++b)
        for (int i = 0; i < 8; ++i)
            eights[b][i] = colours[msbFirst ? (b >> (7 - i)) & 1 : (b >> i) & 1];

    const int width = vSource.width();
    const int whole = width / 8;
    const int rest = width % 8;
    const uchar* src = vSource.constBits();
    const qsizetype srcLine = vSource.bytesPerLine();
    uchar* dst = vOut.bits();
    const qsizetype dstLine = vOut.bytesPerLine();
    for (int y = 0; y < vSource.height(); ++y) {
        const uchar* s = src + y * srcLine;
        quint16* d = reinterpret_cast<quint16*>(dst + y * dstLine);
        for (int k = 0; k < whole; ++k)
            std::memcpy(d + 8 * k, eights[s[k]].data(), sizeof(eights[0]));
        if (rest)
            std::memcpy(d + 8 * whole, eights[s[whole]].data(), rest * sizeof(quint16));
    }
}

void Lookup8(const QImage& vSource, QImage& vOut, const std::array<quint16, 256>& vTable)
{
    const int width = vSource.width();
    for (int y = 0; y < vSource.height(); ++y) {
        const uchar* s = vSource.constScanLine(y);
        quint16* d = reinterpret_cast<quint16*>(vOut.scanLine(y));
        for (int x = 0; x < width; ++x)
            d[x] = vTable[s[x]];
    }
}

void Pack32(const QImage& vSource, QImage& vOut)
{
    const int width = vSource.width();
    for (int y = 0; y < vSource.height(); ++y) {
        const QRgb* s = reinterpret_cast<const QRgb*>(vSource.constScanLine(y));
        quint16* d = reinterpret_cast<quint16*>(vOut.scanLine(y));
        for (int x = 0; x < width; ++x)
            d[x] = Rgb555(s[x]);
    }
}

void Pack24(const QImage& vSource, QImage& vOut)
{
    const int width = vSource.width();
    for (int y = 0; y < vSource.height(); ++y) {
        const uchar* s = vSource.constScanLine(y);
        quint16* d = reinterpret_cast<quint16*>(vOut.scanLine(y));
        for (int x = 0; x < width; ++x, s += 3)
            d[x] = quint16(((s[0] >> 3) << 10) | ((s[1] >> 3) << 5) | (s[2] >> 3));
    }
}

} // namespace

QImage To16Bit(const QImage& vPicture)
{
    const QImage::Format format = vPicture.format();
    if (vPicture.isNull() || format == QImage::Format_RGB555)
        return vPicture;
    QImage out(vPicture.size(), QImage::Format_RGB555);
    if (out.isNull())
        return vPicture;  // no memory for the copy: the picture stays as it is, and still paints
    switch (format) {
    case QImage::Format_Mono:
    case QImage::Format_MonoLSB:
        ExpandBits(vPicture, out);
        break;
    case QImage::Format_Indexed8: {
        const QList<QRgb> colours = vPicture.colorTable();
        std::array<quint16, 256> table{};
        for (int i = 0; i < colours.size() && i < 256; ++i)
            table[i] = Rgb555(colours[i]);
        Lookup8(vPicture, out, table);
        break;
    }
    case QImage::Format_Grayscale8: {
        std::array<quint16, 256> table{};
        for (int i = 0; i < 256; ++i)
            table[i] = Rgb555(qRgb(i, i, i));
        Lookup8(vPicture, out, table);
        break;
    }
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
        // The colour channels as they are: a page has no background to blend its alpha with.
        Pack32(vPicture, out);
        break;
    case QImage::Format_RGB888:
        Pack24(vPicture, out);
        break;
    default:
        return vPicture.convertToFormat(QImage::Format_RGB555);
    }
    out.setDotsPerMeterX(vPicture.dotsPerMeterX());
    out.setDotsPerMeterY(vPicture.dotsPerMeterY());
    return out;
}

void ApplyGamma(QImage& vImage, int vGamma)
{
    if (vGamma == 100 || vImage.isNull())
        return;
    const double exponent = 100.0 / std::max(vGamma, 1);
    std::array<uchar, 256> curve;
    for (int v = 0; v < 256; ++v)
        curve[v] = uchar(std::lround(255.0 * std::pow(v / 255.0, exponent)));
    for (int y = 0; y < vImage.height(); ++y) {
        QRgb* line = reinterpret_cast<QRgb*>(vImage.scanLine(y));
        for (int x = 0; x < vImage.width(); ++x) {
            const QRgb p = line[x];
            line[x] = qRgba(curve[qRed(p)], curve[qGreen(p)], curve[qBlue(p)], qAlpha(p));
        }
    }
}

} // namespace pagepane
