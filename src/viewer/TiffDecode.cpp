#include "viewer/TiffDecode.h"

#include "viewer/TiffFile.h"
#include "viewer/TiffPages.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace tiffdecode {
namespace {

const QString CannotDecode = QStringLiteral("ページを読み込めません。");

struct PageInfo {
    uint32_t width = 0;
    uint32_t height = 0;
    uint16_t bits = 1;
    uint16_t samples = 1;
    uint16_t photometric = 0xFFFF;  // absent: only the RGBA reader may guess
    uint16_t planar = PLANARCONFIG_CONTIG;
    uint16_t orientation = ORIENTATION_TOPLEFT;
    uint16_t compression = COMPRESSION_NONE;
};

PageInfo ReadInfo(TIFF* vTif)
{
    PageInfo i;
    TIFFGetField(vTif, TIFFTAG_IMAGEWIDTH, &i.width);
    TIFFGetField(vTif, TIFFTAG_IMAGELENGTH, &i.height);
    TIFFGetFieldDefaulted(vTif, TIFFTAG_BITSPERSAMPLE, &i.bits);
    TIFFGetFieldDefaulted(vTif, TIFFTAG_SAMPLESPERPIXEL, &i.samples);
    TIFFGetField(vTif, TIFFTAG_PHOTOMETRIC, &i.photometric);
    TIFFGetFieldDefaulted(vTif, TIFFTAG_PLANARCONFIG, &i.planar);
    TIFFGetFieldDefaulted(vTif, TIFFTAG_ORIENTATION, &i.orientation);
    TIFFGetFieldDefaulted(vTif, TIFFTAG_COMPRESSION, &i.compression);
    return i;
}

// Refused on the header alone, before anything of the page's size is allocated.
void CheckSize(const TiffFile& vFile, const PageInfo& vInfo)
{
    if (vInfo.width == 0 || vInfo.height == 0)
        vFile.Fail(CannotDecode);
    if (vInfo.width > uint32_t(TiffPages::MaxSide) || vInfo.height > uint32_t(TiffPages::MaxSide)
        || qint64(vInfo.width) * vInfo.height > TiffPages::MaxPixels)
        vFile.Fail(QStringLiteral("画像が大きすぎるため読み込めません。"),
                   QStringLiteral("%1 x %2").arg(vInfo.width).arg(vInfo.height));
}

QImage Allocated(const TiffFile& vFile, const PageInfo& vInfo, QImage::Format vFormat)
{
    QImage image(int(vInfo.width), int(vInfo.height), vFormat);
    if (image.isNull())
        vFile.Fail(QStringLiteral("メモリが不足しているため読み込めません。"));
    return image;
}

enum class Layout { Bilevel, Grey8, Palette8, Rgb8, Other };

Layout Classify(const PageInfo& vInfo)
{
    // Old-style JPEG hides its real layout behind the tags; the RGBA reader knows its ways.
    if (vInfo.compression == COMPRESSION_OJPEG)
        return Layout::Other;
    if (vInfo.samples == 1 && vInfo.bits == 1
        && (vInfo.photometric == PHOTOMETRIC_MINISWHITE || vInfo.photometric == PHOTOMETRIC_MINISBLACK
            || vInfo.photometric == PHOTOMETRIC_PALETTE))
        return Layout::Bilevel;
    if (vInfo.samples == 1 && vInfo.bits == 8) {
        if (vInfo.photometric == PHOTOMETRIC_MINISWHITE || vInfo.photometric == PHOTOMETRIC_MINISBLACK)
            return Layout::Grey8;
        if (vInfo.photometric == PHOTOMETRIC_PALETTE)
            return Layout::Palette8;
    }
    if (vInfo.samples == 3 && vInfo.bits == 8 && vInfo.photometric == PHOTOMETRIC_RGB
        && vInfo.planar == PLANARCONFIG_CONTIG)
        return Layout::Rgb8;
    return Layout::Other;
}

// The rows of a strip-organised page, one scanline at a time straight into the picture: no
// buffer the size of a strip, however big the file says its strips are. A row libtiff can't
// decode is left as zeros and the rest is read on, as libtiff's own reader does: a damaged fax
// page still shows its good part.
void ReadStrips(TIFF* vTif, QImage& vImage)
{
    for (int y = 0; y < vImage.height(); ++y) {
        uchar* row = vImage.scanLine(y);
        if (TIFFReadScanline(vTif, row, uint32_t(y), 0) < 0)
            std::memset(row, 0, size_t(vImage.bytesPerLine()));
    }
}

// A tiled page, tile by tile through one tile buffer.
void ReadTiles(const TiffFile& vFile, QImage& vImage, int vBitsPerPixel)
{
    TIFF* tif = vFile.Handle();
    uint32_t tileWidth = 0;
    uint32_t tileHeight = 0;
    TIFFGetField(tif, TIFFTAG_TILEWIDTH, &tileWidth);
    TIFFGetField(tif, TIFFTAG_TILELENGTH, &tileHeight);
    const tmsize_t tileSize = TIFFTileSize(tif);
    const tmsize_t tileRow = TIFFTileRowSize(tif);
    // A tile is a small piece of a page; one claiming more than 64 MB is a damaged header.
    if (tileWidth == 0 || tileHeight == 0 || tileSize <= 0 || tileSize > tmsize_t(64) << 20
        || tileRow <= 0 || (qint64(tileWidth) * vBitsPerPixel) % 8 != 0)
        vFile.Fail(CannotDecode);
    std::vector<uchar> tile(static_cast<size_t>(tileSize));
    const qint64 width = vImage.width();
    for (uint32_t ty = 0; ty < uint32_t(vImage.height()); ty += tileHeight) {
        for (uint32_t tx = 0; tx < width; tx += tileWidth) {
            std::fill(tile.begin(), tile.end(), uchar(0));
            TIFFReadEncodedTile(tif, TIFFComputeTile(tif, tx, ty, 0, 0), tile.data(), tileSize);
            const qint64 offset = qint64(tx) * vBitsPerPixel / 8;
            const qint64 bytes = std::min<qint64>(tileRow, ((width - tx) * vBitsPerPixel + 7) / 8);
            const uint32_t rows = std::min<uint32_t>(tileHeight, uint32_t(vImage.height()) - ty);
            for (uint32_t r = 0; r < rows; ++r)
                std::memcpy(vImage.scanLine(int(ty + r)) + offset, tile.data() + qint64(r) * tileRow,
                            size_t(bytes));
        }
    }
}

void ReadRaster(const TiffFile& vFile, QImage& vImage, int vBitsPerPixel)
{
    if (TIFFIsTiled(vFile.Handle())) {
        ReadTiles(vFile, vImage, vBitsPerPixel);
        return;
    }
    // A line of the file must be exactly the pixels of a line of the picture, or libtiff would
    // write past a row.
    const qint64 rowBytes = (qint64(vImage.width()) * vBitsPerPixel + 7) / 8;
    if (TIFFScanlineSize(vFile.Handle()) != rowBytes)
        vFile.Fail(CannotDecode);
    ReadStrips(vFile.Handle(), vImage);
}

QRgb PaletteColour(const uint16_t* vRed, const uint16_t* vGreen, const uint16_t* vBlue, int vIndex,
                   bool vWide)
{
    const int shift = vWide ? 8 : 0;
    return qRgb(vRed[vIndex] >> shift, vGreen[vIndex] >> shift, vBlue[vIndex] >> shift);
}

// The palette, or an error when the page has none. Old writers put 8-bit values into the 16-bit
// entries; when no entry goes above 255 that is what they are.
QList<QRgb> Palette(const TiffFile& vFile, int vEntries)
{
    uint16_t* red = nullptr;
    uint16_t* green = nullptr;
    uint16_t* blue = nullptr;
    if (!TIFFGetField(vFile.Handle(), TIFFTAG_COLORMAP, &red, &green, &blue) || !red || !green || !blue)
        vFile.Fail(CannotDecode, QStringLiteral("Colormap"));
    bool wide = false;
    for (int i = 0; i < vEntries && !wide; ++i)
        wide = red[i] > 255 || green[i] > 255 || blue[i] > 255;
    QList<QRgb> colours;
    colours.reserve(vEntries);
    for (int i = 0; i < vEntries; ++i)
        colours.append(PaletteColour(red, green, blue, i, wide));
    return colours;
}

QImage DecodeFast(const TiffFile& vFile, const PageInfo& vInfo, Layout vLayout)
{
    switch (vLayout) {
    case Layout::Bilevel: {
        // libtiff hands out bits most significant first whatever the file's fill order.
        QImage image = Allocated(vFile, vInfo, QImage::Format_Mono);
        const QRgb white = qRgb(255, 255, 255);
        const QRgb black = qRgb(0, 0, 0);
        if (vInfo.photometric == PHOTOMETRIC_PALETTE)
            image.setColorTable(Palette(vFile, 2));
        else if (vInfo.photometric == PHOTOMETRIC_MINISWHITE)
            image.setColorTable({white, black});
        else
            image.setColorTable({black, white});
        ReadRaster(vFile, image, 1);
        return image;
    }
    case Layout::Grey8: {
        QImage image = Allocated(vFile, vInfo, QImage::Format_Grayscale8);
        ReadRaster(vFile, image, 8);
        if (vInfo.photometric == PHOTOMETRIC_MINISWHITE)
            image.invertPixels();
        return image;
    }
    case Layout::Palette8: {
        QImage image = Allocated(vFile, vInfo, QImage::Format_Indexed8);
        image.setColorTable(Palette(vFile, 256));
        ReadRaster(vFile, image, 8);
        return image;
    }
    case Layout::Rgb8: {
        QImage image = Allocated(vFile, vInfo, QImage::Format_RGB888);
        ReadRaster(vFile, image, 24);
        return image;
    }
    case Layout::Other: break;
    }
    return {};
}

bool HasExtraSamples(TIFF* vTif)
{
    uint16_t count = 0;
    uint16_t* kinds = nullptr;
    return TIFFGetFieldDefaulted(vTif, TIFFTAG_EXTRASAMPLES, &count, &kinds) && count > 0;
}

// Everything else: libtiff's RGBA reader, which knows every photometric and depth it supports.
// It is asked for the rows in stored order (its own flips would handle only half of the
// orientations); Oriented turns them afterwards, as it does for the fast paths.
QImage DecodeRgba(const TiffFile& vFile, const PageInfo& vInfo)
{
    TIFF* tif = vFile.Handle();
    char message[1024] = {};
    if (!TIFFRGBAImageOK(tif, message))
        vFile.Fail(CannotDecode, QString::fromLocal8Bit(message));
    // libtiff's pixel is R, G, B, A in memory; with an alpha sample it premultiplies.
    const bool alpha = HasExtraSamples(tif);
    QImage image = Allocated(vFile, vInfo, alpha ? QImage::Format_RGBA8888_Premultiplied
                                                 : QImage::Format_RGBX8888);
    if (image.bytesPerLine() != qsizetype(vInfo.width) * 4)
        vFile.Fail(CannotDecode);
    if (!TIFFReadRGBAImageOriented(tif, vInfo.width, vInfo.height, reinterpret_cast<uint32_t*>(image.bits()),
                                   vInfo.orientation, 0))
        vFile.Fail(CannotDecode);
    image.convertTo(alpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return image;
}

} // namespace

QImage DecodeCurrentPage(TiffFile& vFile)
{
    TIFF* tif = vFile.Handle();
    const PageInfo info = ReadInfo(tif);
    CheckSize(vFile, info);
    if (!TIFFIsCODECConfigured(info.compression))
        vFile.Fail(QStringLiteral("この圧縮形式のページは読み込めません。"),
                   QStringLiteral("Compression %1").arg(info.compression));
    const Layout layout = Classify(info);
    const QImage raster = layout == Layout::Other ? DecodeRgba(vFile, info) : DecodeFast(vFile, info, layout);
    return Oriented(raster, info.orientation);
}

} // namespace tiffdecode
