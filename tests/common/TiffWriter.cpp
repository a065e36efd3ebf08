#include "common/TiffWriter.h"

#include "common/PagePicture.h"

#include <QFile>

#include <algorithm>
#include <memory>

namespace tiffwriter {

namespace {

bool WritePage(TIFF* vTif, const Page& vPage, int vDpi, int vIndex, int vCount)
{
    QImage p = vPage.picture;
    uint16_t bits = 8, samples = 1, photometric = PHOTOMETRIC_MINISBLACK;
    switch (p.format()) {
    case QImage::Format_MonoLSB: p = p.convertToFormat(QImage::Format_Mono); [[fallthrough]];
    case QImage::Format_Mono: bits = 1; photometric = PHOTOMETRIC_MINISWHITE; break;
    case QImage::Format_Grayscale8: break;
    case QImage::Format_Grayscale16: bits = 16; break;
    case QImage::Format_Indexed8: photometric = PHOTOMETRIC_PALETTE; break;
    default: p = p.convertToFormat(QImage::Format_RGB888); samples = 3; photometric = PHOTOMETRIC_RGB; break;
    }
    if (vPage.photometric != 0xFFFF)
        photometric = vPage.photometric;
    // A set bit is black in a min-is-white file, whichever of its two colours the picture gives
    // it, and 8-bit grey counts down from white in such a file.
    const bool whiteIsZero = photometric == PHOTOMETRIC_MINISWHITE;
    const bool inverted = bits == 1 ? (qGray(p.color(1)) < 128) != whiteIsZero : bits == 8 && samples == 1 && whiteIsZero;
    const uint32_t width = uint32_t(p.width()), height = uint32_t(p.height());
    TIFFSetField(vTif, TIFFTAG_SUBFILETYPE, FILETYPE_PAGE);
    TIFFSetField(vTif, TIFFTAG_PAGENUMBER, vIndex, vCount);
    TIFFSetField(vTif, TIFFTAG_IMAGEWIDTH, width);
    TIFFSetField(vTif, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(vTif, TIFFTAG_BITSPERSAMPLE, bits);
    TIFFSetField(vTif, TIFFTAG_SAMPLESPERPIXEL, samples);
    TIFFSetField(vTif, TIFFTAG_PHOTOMETRIC, photometric);
    TIFFSetField(vTif, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(vTif, TIFFTAG_COMPRESSION, vPage.compression);
    TIFFSetField(vTif, TIFFTAG_FILLORDER, vPage.fillOrder);
    TIFFSetField(vTif, TIFFTAG_ORIENTATION, vPage.orientation);
    TIFFSetField(vTif, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(vTif, TIFFTAG_XRESOLUTION, float(vDpi));
    TIFFSetField(vTif, TIFFTAG_YRESOLUTION, float(vDpi));
    if (photometric == PHOTOMETRIC_PALETTE) {
        std::vector<uint16_t> r(256), g(256), b(256);
        for (size_t i = 0; i < 256; ++i) {
            const QRgb c = p.colorTable().value(qsizetype(i));
            r[i] = uint16_t(qRed(c) * 257);
            g[i] = uint16_t(qGreen(c) * 257);
            b[i] = uint16_t(qBlue(c) * 257);
        }
        TIFFSetField(vTif, TIFFTAG_COLORMAP, r.data(), g.data(), b.data());
    }
    const size_t rowBytes = (size_t(width) * bits * samples + 7) / 8;
    std::vector<uchar> data;  // the page as stored, row after row
    for (int y = 0; y < p.height(); ++y)
        data.insert(data.end(), p.constScanLine(y), p.constScanLine(y) + rowBytes);
    if (inverted)
        std::for_each(data.begin(), data.end(), [](uchar& v) { v = uchar(~v); });
    if (const uint32_t t = vPage.tileSide) {
        TIFFSetField(vTif, TIFFTAG_TILEWIDTH, t);
        TIFFSetField(vTif, TIFFTAG_TILELENGTH, t);
        const size_t tileRow = size_t(t) * bits * samples / 8;
        for (uint32_t ty = 0; ty < height; ty += t)
            for (uint32_t tx = 0; tx < width; tx += t) {
                std::vector<uchar> tile(tileRow * t, 0);
                const size_t from = size_t(tx) * bits * samples / 8;
                for (uint32_t r = 0; r < t && ty + r < height; ++r)
                    std::copy_n(data.begin() + long((ty + r) * rowBytes + from), std::min(tileRow, rowBytes - from),
                                tile.begin() + long(r * tileRow));
                if (TIFFWriteTile(vTif, tile.data(), tx, ty, 0, 0) < 0)
                    return false;
            }
    } else {
        const uint32_t rows = vPage.rowsPerStrip ? vPage.rowsPerStrip : height;
        TIFFSetField(vTif, TIFFTAG_ROWSPERSTRIP, rows);
        for (uint32_t y = 0; y < height; y += rows)
            if (TIFFWriteEncodedStrip(vTif, y / rows, data.data() + y * rowBytes,
                                      tmsize_t(std::min(rows, height - y) * rowBytes)) < 0)
                return false;
    }
    return TIFFWriteDirectory(vTif) != 0;
}

} // namespace

bool Write(const QString& vPath, const std::vector<Page>& vPages, int vDpi)
{
    std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(QFile::encodeName(vPath).constData(), "w"), &TIFFClose);
    if (!tiff)
        return false;
    for (size_t i = 0; i < vPages.size(); ++i)
        if (!WritePage(tiff.get(), vPages[i], vDpi, int(i), int(vPages.size())))
            return false;
    return true;
}

bool Write(const QString& vPath, const QList<QImage>& vPages, Kind vKind, int vDpi)
{
    std::vector<Page> pages;
    for (const QImage& picture : vPages) {
        if (vKind == Kind::BilevelG4)
            pages.push_back({.picture = picture.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither),
                             .compression = COMPRESSION_CCITTFAX4});
        else if (vKind == Kind::GreyLzw)
            pages.push_back({.picture = picture.convertToFormat(QImage::Format_Grayscale8),
                             .compression = COMPRESSION_LZW, .rowsPerStrip = 64});
        else
            pages.push_back({.picture = picture.convertToFormat(QImage::Format_RGB888),
                             .compression = COMPRESSION_ADOBE_DEFLATE, .rowsPerStrip = 32});
    }
    return Write(vPath, pages, vDpi);
}

bool WriteNumbered(const QString& vPath, int vCount, Kind vKind, QSize vSize)
{
    QList<QImage> pages;
    for (int page = 1; page <= vCount; ++page)
        pages.append(pagepicture::Draw(page, vSize));
    return Write(vPath, pages, vKind);
}

QByteArray HeaderOnly(uint32_t vWidth, uint32_t vHeight)
{
    QByteArray out("II*\0", 4);
    auto put16 = [&](uint16_t v) { out.append(char(v & 0xFF)).append(char(v >> 8)); };
    auto put32 = [&](uint32_t v) { put16(uint16_t(v & 0xFFFF)); put16(uint16_t(v >> 16)); };
    put32(8);
    const uint32_t data = 8 + 2 + 9 * 12 + 4;
    const struct { uint16_t tag, type; uint32_t value; } entries[] = {
        {256, 4, vWidth}, {257, 4, vHeight}, {258, 3, 8}, {259, 3, 1}, {262, 3, 1},
        {273, 4, data}, {277, 3, 1}, {278, 4, vHeight}, {279, 4, 16}};
    put16(9);
    for (const auto& e : entries) {
        put16(e.tag);
        put16(e.type);
        put32(1);
        // A short sits in the first two bytes of the value field.
        e.type == 3 ? (put16(uint16_t(e.value)), put16(0)) : put32(e.value);
    }
    put32(0);
    out.append(16, '\x7f');
    return out;
}

} // namespace tiffwriter
