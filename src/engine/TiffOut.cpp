#include "engine/TiffOut.h"

#include <tiffio.h>

#include <memory>

namespace xdw {

namespace {

struct CloseTiff {
    void operator()(TIFF* vTiff) const { TIFFClose(vTiff); }
};

} // namespace

bool WriteTiff(const QImage& vPage, const QString& vPath, int vDpi, QString* vError)
{
    const bool mono = vPage.format() == QImage::Format_Mono;
    const QImage rows = mono ? vPage : vPage.convertToFormat(QImage::Format_RGB888);
    std::unique_ptr<TIFF, CloseTiff> tiff(TIFFOpen(vPath.toLocal8Bit().constData(), "w"));
    if (!tiff) {
        *vError = QStringLiteral("cannot create ") + vPath;
        return false;
    }
    TIFF* t = tiff.get();
    TIFFSetField(t, TIFFTAG_IMAGEWIDTH, static_cast<uint32_t>(rows.width()));
    TIFFSetField(t, TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(rows.height()));
    TIFFSetField(t, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(t, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(t, TIFFTAG_XRESOLUTION, static_cast<float>(vDpi));
    TIFFSetField(t, TIFFTAG_YRESOLUTION, static_cast<float>(vDpi));
    if (mono) {
        // Qt's Mono keeps its colour table; white-is-zero needs index 0 to be the white one.
        const bool zeroIsWhite = rows.colorCount() > 0 && qGray(rows.color(0)) > 127;
        TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, 1);
        TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(t, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
        TIFFSetField(t, TIFFTAG_PHOTOMETRIC, zeroIsWhite ? PHOTOMETRIC_MINISWHITE : PHOTOMETRIC_MINISBLACK);
    } else {
        TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, 3);
        TIFFSetField(t, TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE);
        TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    }
    TIFFSetField(t, TIFFTAG_ROWSPERSTRIP, static_cast<uint32_t>(rows.height()));
    for (int y = 0; y < rows.height(); ++y) {
        if (TIFFWriteScanline(t, const_cast<uchar*>(rows.constScanLine(y)), static_cast<uint32_t>(y), 0) < 0) {
            *vError = QStringLiteral("cannot write ") + vPath;
            return false;
        }
    }
    return true;
}

} // namespace xdw
