#include "common/TiffWriter.h"

#include "common/PagePicture.h"

#include <QFile>
#include <tiffio.h>

#include <memory>
#include <vector>

namespace tiffwriter {

namespace {

struct TiffCloser {
    void operator()(TIFF* vTiff) const { TIFFClose(vTiff); }
};

bool WritePage(TIFF* vTiff, const QImage& vPage, Kind vKind, int vDpi, int vIndex, int vCount)
{
    const int width = vPage.width();
    const int height = vPage.height();
    TIFFSetField(vTiff, TIFFTAG_IMAGEWIDTH, width);
    TIFFSetField(vTiff, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(vTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(vTiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(vTiff, TIFFTAG_XRESOLUTION, static_cast<float>(vDpi));
    TIFFSetField(vTiff, TIFFTAG_YRESOLUTION, static_cast<float>(vDpi));
    TIFFSetField(vTiff, TIFFTAG_SUBFILETYPE, FILETYPE_PAGE);
    TIFFSetField(vTiff, TIFFTAG_PAGENUMBER, vIndex, vCount);
    QImage rows;
    switch (vKind) {
    case Kind::BilevelG4:
        rows = vPage.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
        // Qt's mono puts colour index 0 first; make index 1 black, as min-is-white wants.
        if (qGray(rows.color(0)) < 128)
            rows.invertPixels();
        TIFFSetField(vTiff, TIFFTAG_BITSPERSAMPLE, 1);
        TIFFSetField(vTiff, TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(vTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
        TIFFSetField(vTiff, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
        TIFFSetField(vTiff, TIFFTAG_ROWSPERSTRIP, height);
        break;
    case Kind::GreyLzw:
        rows = vPage.convertToFormat(QImage::Format_Grayscale8);
        TIFFSetField(vTiff, TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(vTiff, TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(vTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
        TIFFSetField(vTiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
        TIFFSetField(vTiff, TIFFTAG_ROWSPERSTRIP, 64);
        break;
    case Kind::RgbDeflate:
        rows = vPage.convertToFormat(QImage::Format_RGB888);
        TIFFSetField(vTiff, TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(vTiff, TIFFTAG_SAMPLESPERPIXEL, 3);
        TIFFSetField(vTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
        TIFFSetField(vTiff, TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE);
        TIFFSetField(vTiff, TIFFTAG_ROWSPERSTRIP, 32);
        break;
    }
    for (int y = 0; y < height; ++y) {
        // libtiff takes a non-const row buffer.
        std::vector<uchar> row(rows.constScanLine(y), rows.constScanLine(y) + rows.bytesPerLine());
        if (TIFFWriteScanline(vTiff, row.data(), static_cast<uint32_t>(y), 0) < 0)
            return false;
    }
    return TIFFWriteDirectory(vTiff) != 0;
}

} // namespace

bool Write(const QString& vPath, const QList<QImage>& vPages, Kind vKind, int vDpi)
{
    std::unique_ptr<TIFF, TiffCloser> tiff(TIFFOpen(QFile::encodeName(vPath).constData(), "w"));
    if (!tiff)
        return false;
    for (int i = 0; i < vPages.size(); ++i)
        if (!WritePage(tiff.get(), vPages[i], vKind, vDpi, i, static_cast<int>(vPages.size())))
            return false;
    return true;
}

bool WriteNumbered(const QString& vPath, int vCount, Kind vKind, QSize vSize)
{
    QList<QImage> pages;
    for (int page = 1; page <= vCount; ++page)
        pages.append(pagepicture::Draw(page, vSize));
    return Write(vPath, pages, vKind);
}

} // namespace tiffwriter
