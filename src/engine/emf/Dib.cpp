#include "engine/emf/DibLayout.h"
#include "engine/emf/Bytes.h"
#include "engine/emf/EmfPlayer.h"

#include <QList>

#include <bit>

namespace {

enum Compression : quint32 { kRgb = 0, kRle8 = 1, kRle4 = 2, kBitfields = 3, kAlphaBitfields = 6 };

struct Header {
    qint64 width = 0;
    qint64 height = 0;   // rows, always positive; topDown says the order
    bool topDown = false;
    int bpp = 0;
    quint32 compression = kRgb;
    qint64 colours = 0;  // entries the colour table holds
    int entrySize = 4;   // RGBQUAD, or RGBTRIPLE for the old core header
    qint64 tableAt = 0;
    quint32 masks[3] = {0, 0, 0};
};

bool Fail(QString* vError, const char* vWhy)
{
    if (vError)
        *vError = QString::fromLatin1(vWhy);
    return false;
}

bool ReadHeader(const emf::Bytes& vInfo, Header& vHeader, QString* vError)
{
    const quint32 size = vInfo.U32(0);
    if (vInfo.short_() || (size != 12 && (size < 40 || size > 124)) || size > vInfo.size())
        return Fail(vError, "bitmap header missing or of unknown size");
    Header& h = vHeader;
    qint64 masksAt = -1;
    if (size == 12) {
        h.width = vInfo.U16(4);
        h.height = vInfo.U16(6);
        h.bpp = vInfo.U16(10);
        h.entrySize = 3;
        h.tableAt = 12;
    } else {
        h.width = vInfo.I32(4);
        const qint32 height = vInfo.I32(8);
        h.topDown = height < 0;
        h.height = height < 0 ? -qint64(height) : height;
        h.bpp = vInfo.U16(14);
        h.compression = vInfo.U32(16);
        h.colours = vInfo.U32(32);
        h.tableAt = size;
        if (h.compression == kBitfields || h.compression == kAlphaBitfields) {
            masksAt = 40;
            if (size == 40)
                h.tableAt += h.compression == kBitfields ? 12 : 16;
        }
    }
    if (h.width < 1 || h.width > 65535 || h.height < 1 || h.height > 65535)
        return Fail(vError, "bitmap size outside 1 to 65535 pixels");
    if (h.width * h.height > dib::kMaxPixels)
        return Fail(vError, "bitmap larger than the pixel limit");
    switch (h.bpp) {
    case 1: case 4: case 8: case 16: case 24: case 32: break;
    default: return Fail(vError, "bitmap bits per pixel not 1, 4, 8, 16, 24 or 32");
    }
    const bool rle = h.compression == kRle8 || h.compression == kRle4;
    if (h.compression > kBitfields && h.compression != kAlphaBitfields)
        return Fail(vError, "bitmap compression not supported");
    if ((h.compression == kRle8 && h.bpp != 8) || (h.compression == kRle4 && h.bpp != 4) ||
        (masksAt >= 0 && h.bpp != 16 && h.bpp != 32) || (rle && h.topDown))
        return Fail(vError, "bitmap compression does not fit its bits per pixel");
    if (masksAt >= 0) {
        for (int i = 0; i < 3; ++i)
            h.masks[i] = vInfo.U32(masksAt + 4 * i);
        if (vInfo.short_())
            return Fail(vError, "bitmap colour masks missing");
    } else if (h.bpp == 16) {
        h.masks[0] = 0x7C00, h.masks[1] = 0x03E0, h.masks[2] = 0x001F;
    } else if (h.bpp == 32) {
        h.masks[0] = 0xFF0000, h.masks[1] = 0xFF00, h.masks[2] = 0xFF;
    }
    if (h.bpp <= 8) {
        const qint64 full = qint64(1) << h.bpp;
        if (h.colours == 0 || h.colours > full)
            h.colours = full;
        // A table cut short by the record still draws: the missing entries stay black.
        h.colours = qMin(h.colours, qMax<qint64>(0, (vInfo.size() - h.tableAt) / h.entrySize));
    } else {
        h.colours = 0;
    }
    return true;
}

QList<QRgb> ColourTable(const emf::Bytes& vInfo, const Header& vHeader)
{
    QList<QRgb> table(qint64(1) << qMin(vHeader.bpp, 8), qRgb(0, 0, 0));
    for (qint64 i = 0; i < vHeader.colours; ++i) {
        const qint64 at = vHeader.tableAt + i * vHeader.entrySize;
        table[i] = qRgb(vInfo.U8(at + 2), vInfo.U8(at + 1), vInfo.U8(at));
    }
    return table;
}

// One channel of a masked pixel, spread to 8 bits.
int Channel(quint32 vPixel, quint32 vMask)
{
    if (vMask == 0)
        return 0;
    const int shift = std::countr_zero(vMask);
    const int bits = std::popcount(vMask >> shift);
    const quint32 v = (vPixel & vMask) >> shift;
    if (bits >= 8)
        return int(v >> (bits - 8));
    const quint32 top = (1u << bits) - 1;
    return int((v * 255 + top / 2) / top);
}

QImage Uncompressed(const Header& vHeader, const QList<QRgb>& vTable, QByteArrayView vBits,
                    QString* vError)
{
    const qint64 stride = ((vHeader.width * vHeader.bpp + 31) / 32) * 4;
    if (stride * vHeader.height > vBits.size()) {
        Fail(vError, "bitmap bits shorter than the picture");
        return {};
    }
    const bool indexed = vHeader.bpp <= 8;
    QImage image(int(vHeader.width), int(vHeader.height),
                 indexed ? QImage::Format_Indexed8 : QImage::Format_RGB32);
    if (image.isNull()) {
        Fail(vError, "no memory for the bitmap");
        return {};
    }
    if (indexed)
        image.setColorTable(vTable);
    const int w = int(vHeader.width);
    for (qint64 row = 0; row < vHeader.height; ++row) {
        const auto* src = reinterpret_cast<const uchar*>(vBits.data()) + row * stride;
        const int y = int(vHeader.topDown ? row : vHeader.height - 1 - row);
        uchar* line = image.scanLine(y);
        auto* rgb = reinterpret_cast<QRgb*>(line);
        switch (vHeader.bpp) {
        case 1:
            for (int x = 0; x < w; ++x)
                line[x] = (src[x >> 3] >> (7 - (x & 7))) & 1;
            break;
        case 4:
            for (int x = 0; x < w; ++x)
                line[x] = (x & 1) ? (src[x >> 1] & 0x0F) : (src[x >> 1] >> 4);
            break;
        case 8:
            std::copy(src, src + w, line);
            break;
        case 24:
            for (int x = 0; x < w; ++x)
                rgb[x] = qRgb(src[3 * x + 2], src[3 * x + 1], src[3 * x]);
            break;
        case 16:
        case 32: {
            const int bytes = vHeader.bpp / 8;
            for (int x = 0; x < w; ++x) {
                quint32 p = 0;
                for (int b = 0; b < bytes; ++b)
                    p |= quint32(src[bytes * x + b]) << (8 * b);
                rgb[x] = qRgb(Channel(p, vHeader.masks[0]), Channel(p, vHeader.masks[1]),
                              Channel(p, vHeader.masks[2]));
            }
            break;
        }
        }
    }
    return image;
}

// Run-length bitmaps leave the pixels the runs skip untouched on the page, so they come out with
// those pixels transparent.
QImage RunLength(const Header& vHeader, const QList<QRgb>& vTable, QByteArrayView vBits,
                 QString* vError)
{
    QImage image(int(vHeader.width), int(vHeader.height), QImage::Format_ARGB32);
    if (image.isNull()) {
        Fail(vError, "no memory for the bitmap");
        return {};
    }
    image.fill(Qt::transparent);
    const bool four = vHeader.compression == kRle4;
    const qint64 w = vHeader.width, h = vHeader.height;
    qint64 x = 0, y = 0;
    auto put = [&](int vIndex) {
        if (x < w && y < h)
            reinterpret_cast<QRgb*>(image.scanLine(int(h - 1 - y)))[x] = vTable.value(vIndex, qRgb(0, 0, 0));
        ++x;
    };
    const auto* p = reinterpret_cast<const uchar*>(vBits.data());
    const qint64 n = vBits.size();
    qint64 i = 0;
    while (i + 1 < n && y < h) {
        const int count = p[i], value = p[i + 1];
        i += 2;
        if (count > 0) {
            for (int k = 0; k < count && x < w; ++k)
                put(four ? ((k & 1) ? (value & 0x0F) : (value >> 4)) : value);
            continue;
        }
        if (value == 0) {        // end of line
            x = 0, ++y;
        } else if (value == 1) { // end of bitmap
            break;
        } else if (value == 2) { // move right and up
            if (i + 1 >= n)
                break;
            x += p[i], y += p[i + 1];
            i += 2;
        } else {                 // a literal run, padded to a word
            const qint64 bytes = four ? (value + 1) / 2 : value;
            if (i + bytes > n) {
                Fail(vError, "run-length bitmap cut short");
                return {};
            }
            for (int k = 0; k < value; ++k)
                put(four ? ((k & 1) ? (p[i + k / 2] & 0x0F) : (p[i + k / 2] >> 4)) : p[i + k]);
            i += (bytes + 1) & ~qint64(1);
        }
    }
    return image;
}

} // namespace

namespace dib {

qint64 InfoSize(QByteArrayView vPacked)
{
    const emf::Bytes info(vPacked);
    Header h;
    if (!ReadHeader(info, h, nullptr))
        return -1;
    // Deep bitmaps may still carry a table (for palette devices); the bits start after it.
    const qint64 optional = h.bpp > 8 && h.entrySize == 4 ? qint64(info.U32(32)) * 4 : 0;
    const qint64 size = h.tableAt + (h.bpp > 8 ? optional : h.colours * h.entrySize);
    return size <= vPacked.size() ? size : h.tableAt;
}

QImage Decode(const QByteArray& info, const QByteArray& bits, QString* error)
{
    const emf::Bytes view(info);
    Header h;
    if (!ReadHeader(view, h, error))
        return {};
    const QList<QRgb> table = ColourTable(view, h);
    if (h.compression == kRle8 || h.compression == kRle4)
        return RunLength(h, table, bits, error);
    return Uncompressed(h, table, bits, error);
}

} // namespace dib
