#pragma once
// TIFF files for tests, written with libtiff: each page is given as the picture it should show
// and stored in the layout asked for (compression, photometric, fill order, strips or tiles).
//
//   Mono          1 bit; a pixel darker than mid-grey is black
//   Grayscale8    8-bit grey;  Grayscale16: 16-bit grey
//   RGB888        8-bit RGB;   Indexed8: 8-bit palette

#include <QFile>
#include <QImage>
#include <QString>

#include <tiffio.h>

#include <algorithm>
#include <vector>

namespace tifffixtures {

struct Page {
    QImage picture;
    uint16_t compression = COMPRESSION_NONE;
    uint16_t photometric = 0xFFFF;  // the usual one for the picture's format
    uint16_t fillOrder = FILLORDER_MSB2LSB;
    uint16_t orientation = ORIENTATION_TOPLEFT;  // only the tag: the picture is stored as given
    uint32_t rowsPerStrip = 0;                   // 0: one strip
    uint32_t tileSide = 0;                       // a multiple of 16; 0: strips
};

// One stored row of vPage's picture, in the file's sample layout.
inline std::vector<uchar> StoredRow(const Page& vPage, uint16_t vPhotometric, int vY)
{
    const QImage& p = vPage.picture;
    const int w = p.width();
    std::vector<uchar> row;
    switch (p.format()) {
    case QImage::Format_Mono:
    case QImage::Format_MonoLSB:
        row.assign(size_t((w + 7) / 8), 0);
        for (int x = 0; x < w; ++x) {
            const bool black = qGray(p.pixel(x, vY)) < 128;
            if (black == (vPhotometric == PHOTOMETRIC_MINISWHITE))
                row[size_t(x / 8)] |= uchar(0x80 >> (x % 8));
        }
        break;
    case QImage::Format_Grayscale8:
    case QImage::Format_Indexed8:
        row.assign(p.constScanLine(vY), p.constScanLine(vY) + w);
        if (vPhotometric == PHOTOMETRIC_MINISWHITE)
            for (uchar& v : row)
                v = uchar(255 - v);
        break;
    case QImage::Format_Grayscale16:
        row.assign(p.constScanLine(vY), p.constScanLine(vY) + 2 * w);
        break;
    default:
        row.assign(p.constScanLine(vY), p.constScanLine(vY) + 3 * w);
        break;
    }
    return row;
}

inline bool WritePage(TIFF* vTif, const Page& vPage)
{
    const QImage& p = vPage.picture;
    uint16_t bits = 8;
    uint16_t samples = 1;
    uint16_t photometric = PHOTOMETRIC_MINISBLACK;
    switch (p.format()) {
    case QImage::Format_Mono:
    case QImage::Format_MonoLSB: bits = 1; photometric = PHOTOMETRIC_MINISWHITE; break;
    case QImage::Format_Grayscale16: bits = 16; break;
    case QImage::Format_Indexed8: photometric = PHOTOMETRIC_PALETTE; break;
    case QImage::Format_RGB888: samples = 3; photometric = PHOTOMETRIC_RGB; break;
    default: break;
    }
    if (vPage.photometric != 0xFFFF)
        photometric = vPage.photometric;
    TIFFSetField(vTif, TIFFTAG_IMAGEWIDTH, uint32_t(p.width()));
    TIFFSetField(vTif, TIFFTAG_IMAGELENGTH, uint32_t(p.height()));
    TIFFSetField(vTif, TIFFTAG_BITSPERSAMPLE, bits);
    TIFFSetField(vTif, TIFFTAG_SAMPLESPERPIXEL, samples);
    TIFFSetField(vTif, TIFFTAG_PHOTOMETRIC, photometric);
    TIFFSetField(vTif, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(vTif, TIFFTAG_COMPRESSION, vPage.compression);
    TIFFSetField(vTif, TIFFTAG_FILLORDER, vPage.fillOrder);
    TIFFSetField(vTif, TIFFTAG_ORIENTATION, vPage.orientation);
    if (photometric == PHOTOMETRIC_PALETTE) {
        std::vector<uint16_t> r(256), g(256), b(256);
        for (int i = 0; i < 256; ++i) {
            const QRgb c = p.colorTable().value(i);
            r[size_t(i)] = uint16_t(qRed(c) * 257);
            g[size_t(i)] = uint16_t(qGreen(c) * 257);
            b[size_t(i)] = uint16_t(qBlue(c) * 257);
        }
        TIFFSetField(vTif, TIFFTAG_COLORMAP, r.data(), g.data(), b.data());
    }
    if (vPage.tileSide) {
        const uint32_t t = vPage.tileSide;
        TIFFSetField(vTif, TIFFTAG_TILEWIDTH, t);
        TIFFSetField(vTif, TIFFTAG_TILELENGTH, t);
        const size_t tileRow = size_t(t) * bits * samples / 8;
        for (uint32_t ty = 0; ty < uint32_t(p.height()); ty += t)
            for (uint32_t tx = 0; tx < uint32_t(p.width()); tx += t) {
                std::vector<uchar> tile(tileRow * t, 0);
                const size_t from = size_t(tx) * bits * samples / 8;
                for (uint32_t r = 0; r < t && ty + r < uint32_t(p.height()); ++r) {
                    const std::vector<uchar> row = StoredRow(vPage, photometric, int(ty + r));
                    const size_t n = std::min(tileRow, row.size() - from);
                    std::copy_n(row.begin() + long(from), n, tile.begin() + long(r * tileRow));
                }
                if (TIFFWriteTile(vTif, tile.data(), tx, ty, 0, 0) < 0)
                    return false;
            }
    } else {
        const uint32_t rows = vPage.rowsPerStrip ? vPage.rowsPerStrip : uint32_t(p.height());
        TIFFSetField(vTif, TIFFTAG_ROWSPERSTRIP, rows);
        for (uint32_t y0 = 0, s = 0; y0 < uint32_t(p.height()); y0 += rows, ++s) {
            std::vector<uchar> strip;
            for (uint32_t y = y0; y < y0 + rows && y < uint32_t(p.height()); ++y) {
                const std::vector<uchar> row = StoredRow(vPage, photometric, int(y));
                strip.insert(strip.end(), row.begin(), row.end());
            }
            if (TIFFWriteEncodedStrip(vTif, s, strip.data(), tmsize_t(strip.size())) < 0)
                return false;
        }
    }
    return TIFFWriteDirectory(vTif) != 0;
}

inline bool Write(const QString& vPath, const std::vector<Page>& vPages)
{
    TIFF* tif = TIFFOpen(QFile::encodeName(vPath).constData(), "w");
    if (!tif)
        return false;
    bool ok = true;
    for (const Page& page : vPages)
        ok = ok && WritePage(tif, page);
    TIFFClose(tif);
    return ok;
}

// A file whose header claims a vWidth x vHeight 8-bit grey page in one uncompressed strip, and
// that holds 16 bytes of it. Written byte by byte: libtiff won't write such a lie.
inline QByteArray HeaderOnly(uint32_t vWidth, uint32_t vHeight)
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
        if (e.type == 3) {
            put16(uint16_t(e.value));
            put16(0);
        } else {
            put32(e.value);
        }
    }
    put32(0);
    out.append(16, '\x7f');
    return out;
}

} // namespace tifffixtures
