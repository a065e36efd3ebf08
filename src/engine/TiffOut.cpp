#include "engine/TiffOut.h"

#include <tiffio.h>

#include <memory>

namespace xdw {

namespace {

struct CloseTiff {
    void operator()(TIFF* vTiff) const { TIFFClose(vTiff); }
};

bool IsJpeg(TiffCompress vCompress)
{
    return vCompress == TiffCompress::Jpeg || vCompress == TiffCompress::JpegTtn2;
}

// The rows in the layout the compression takes: one bit for G4 (and for a black-and-white
// page under the lossless ones), 8-bit grey or RGB otherwise.
QImage RowsFor(const QImage& vPage, TiffCompress vCompress)
{
    const bool mono = vPage.format() == QImage::Format_Mono;
    if (vCompress == TiffCompress::G4)
        return mono ? vPage : vPage.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
    if (IsJpeg(vCompress))
        return vPage.convertToFormat(mono || vPage.isGrayscale() ? QImage::Format_Grayscale8 : QImage::Format_RGB888);
    return mono ? vPage : vPage.convertToFormat(QImage::Format_RGB888);
}

quint16 CodecOf(TiffCompress vCompress, bool vMono)
{
    switch (vCompress) {
    case TiffCompress::Auto: return vMono ? COMPRESSION_CCITTFAX4 : COMPRESSION_ADOBE_DEFLATE;
    case TiffCompress::None: return COMPRESSION_NONE;
    case TiffCompress::PackBits: return COMPRESSION_PACKBITS;
    case TiffCompress::Lzw: return COMPRESSION_LZW;
    case TiffCompress::Deflate: return COMPRESSION_ADOBE_DEFLATE;
    case TiffCompress::Jpeg:
    case TiffCompress::JpegTtn2: return COMPRESSION_JPEG;
    case TiffCompress::G4: return COMPRESSION_CCITTFAX4;
    }
    return COMPRESSION_NONE;
}

} // namespace

bool WriteTiff(const QImage& vPage, const QString& vPath, int vDpi, QString* vError,
               const TiffOptions& vOptions)
{
    const QImage rows = RowsFor(vPage, vOptions.compress);
    const bool mono = rows.format() == QImage::Format_Mono;
    const bool grey = rows.format() == QImage::Format_Grayscale8;
    std::unique_ptr<TIFF, CloseTiff> tiff(
        TIFFOpen(vPath.toLocal8Bit().constData(), vOptions.append ? "a" : "w"));
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
    TIFFSetField(t, TIFFTAG_COMPRESSION, CodecOf(vOptions.compress, mono));
    if (mono) {
        // Qt's Mono keeps its colour table; white-is-zero needs index 0 to be the white one.
        const bool zeroIsWhite = rows.colorCount() > 0 && qGray(rows.color(0)) > 127;
        TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, 1);
        TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(t, TIFFTAG_PHOTOMETRIC, zeroIsWhite ? PHOTOMETRIC_MINISWHITE : PHOTOMETRIC_MINISBLACK);
    } else {
        TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, grey ? 1 : 3);
        if (grey)
            TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
        else if (vOptions.compress == TiffCompress::JpegTtn2) {
            // The layout of the technical note most readers expect: YCbCr, chroma halved both
            // ways, the codec turning our RGB rows into it.
            TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_YCBCR);
            TIFFSetField(t, TIFFTAG_YCBCRSUBSAMPLING, 2, 2);
        } else
            TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    }
    if (IsJpeg(vOptions.compress)) {
        TIFFSetField(t, TIFFTAG_JPEGQUALITY, vOptions.jpegQuality);
        if (!grey)
            TIFFSetField(t, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
    }
    // Strips of about 64 KB: a reader decodes a band without holding the whole page.
    const qint64 stride = rows.bytesPerLine() > 0 ? rows.bytesPerLine() : 1;
    const uint32_t strip = TIFFDefaultStripSize(t, static_cast<uint32_t>(qMax<qint64>(1, 65536 / stride)));
    TIFFSetField(t, TIFFTAG_ROWSPERSTRIP, strip);
    for (int y = 0; y < rows.height(); ++y) {
        if (TIFFWriteScanline(t, const_cast<uchar*>(rows.constScanLine(y)), static_cast<uint32_t>(y), 0) < 0) {
            *vError = QStringLiteral("cannot write ") + vPath;
            return false;
        }
    }
    if (!TIFFWriteDirectory(t)) {
        *vError = QStringLiteral("cannot write ") + vPath;
        return false;
    }
    return true;
}

} // namespace xdw
