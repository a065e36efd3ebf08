// TIFF files through libtiff: every directory is a page. Bilevel and 8-bit grey strips are read
// row by row into pictures of their own depth (a fax page stays one bit a pixel); everything else
// goes through libtiff's RGBA reader, which knows palettes, CMYK, YCbCr, tiles and orientations.

#include "engine/write/ImageFile.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"

#include <tiffio.h>

#include <cstdarg>
#include <cstdio>

namespace xdw::image {

namespace {

struct CloseTiff {
    void operator()(TIFF* vTiff) const { TIFFClose(vTiff); }
};

class TiffImage final : public ImageFile {
public:
    explicit TiffImage(const QString& vPath)
    {
        TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
        TIFFOpenOptionsSetErrorHandlerExtR(options, &TiffImage::OnError, this);
        TIFFOpenOptionsSetWarningHandlerExtR(options, &TiffImage::OnWarning, this);
        // Bounds a single buffer libtiff makes from what the file claims.
        TIFFOpenOptionsSetMaxSingleMemAlloc(options, static_cast<tmsize_t>(MaxPixels * 4 + 1024));
        tiff_.reset(TIFFOpenExt(vPath.toLocal8Bit().constData(), "r", options));
        TIFFOpenOptionsFree(options);
        if (!tiff_)
            Fail(QStringLiteral("the TIFF file cannot be opened"));
        const tdir_t count = TIFFNumberOfDirectories(tiff_.get());
        if (count < 1 || count > MaxPages)
            Fail(QStringLiteral("a TIFF file of %1 pages").arg(count));
        pages_ = static_cast<int>(count);
    }

    int Pages() const override { return pages_; }

    ImageInformation Information(int vPage) override
    {
        Select(vPage);
        uint32_t width = 0, height = 0;
        TIFFGetField(tiff_.get(), TIFFTAG_IMAGEWIDTH, &width);
        TIFFGetField(tiff_.get(), TIFFTAG_IMAGELENGTH, &height);
        if (width == 0 || height == 0)
            Fail(QStringLiteral("TIFF page %1 has no size").arg(vPage + 1));
        float x = 0, y = 0;
        uint16_t unit = RESUNIT_INCH;
        TIFFGetField(tiff_.get(), TIFFTAG_XRESOLUTION, &x);
        TIFFGetField(tiff_.get(), TIFFTAG_YRESOLUTION, &y);
        TIFFGetFieldDefaulted(tiff_.get(), TIFFTAG_RESOLUTIONUNIT, &unit);
        const double scale = unit == RESUNIT_INCH ? 1.0 : unit == RESUNIT_CENTIMETER ? 2.54 : 0.0;
        ImageInformation info;
        info.pixelWidth = static_cast<qint32>(qMin<uint32_t>(width, INT32_MAX));
        info.pixelHeight = static_cast<qint32>(qMin<uint32_t>(height, INT32_MAX));
        SaneDpi(x * scale, y * scale, &info.horDpi, &info.verDpi);
        return info;
    }

    Picture Read(int vPage) override
    {
        const ImageInformation info = Information(vPage);
        CheckPixels(info.pixelWidth, info.pixelHeight, QStringLiteral("TIFF"));
        uint16_t bits = 1, samples = 1, photometric = PHOTOMETRIC_MINISWHITE, orientation = ORIENTATION_TOPLEFT;
        TIFFGetFieldDefaulted(tiff_.get(), TIFFTAG_BITSPERSAMPLE, &bits);
        TIFFGetFieldDefaulted(tiff_.get(), TIFFTAG_SAMPLESPERPIXEL, &samples);
        TIFFGetFieldDefaulted(tiff_.get(), TIFFTAG_ORIENTATION, &orientation);
        TIFFGetField(tiff_.get(), TIFFTAG_PHOTOMETRIC, &photometric);
        const bool grey = photometric == PHOTOMETRIC_MINISWHITE || photometric == PHOTOMETRIC_MINISBLACK;
        Picture picture;
        if (grey && samples == 1 && (bits == 1 || bits == 8) && !TIFFIsTiled(tiff_.get())
            && orientation == ORIENTATION_TOPLEFT) {
            picture.image = Rows(info, bits == 1, photometric == PHOTOMETRIC_MINISWHITE);
            picture.tone = bits == 1 ? Tone::Bilevel : Tone::Grey;
        } else {
            picture = ToPicture(Rgba(info), info.horDpi, info.verDpi);
            if (grey && bits == 1) {
                picture.image = BlackFirst(picture.image.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither));
                picture.tone = Tone::Bilevel;
            } else if (grey) {
                picture.image = picture.image.convertToFormat(QImage::Format_Grayscale8);
                picture.tone = Tone::Grey;
            }
        }
        picture.horDpi = info.horDpi;
        picture.verDpi = info.verDpi;
        return picture;
    }

private:
    static int OnError(TIFF*, void* vSelf, const char* vModule, const char* vFormat, va_list vArgs)
    {
        auto* self = static_cast<TiffImage*>(vSelf);
        if (self->error_.isEmpty()) {
            char text[256];
            std::vsnprintf(text, sizeof text, vFormat, vArgs);
            self->error_ = QString::fromLocal8Bit(vModule ? vModule : "") + QStringLiteral(": ")
                + QString::fromLocal8Bit(text);
        }
        return 1;
    }

    static int OnWarning(TIFF*, void*, const char*, const char*, va_list) { return 1; }

    [[noreturn]] void Fail(const QString& vWhat) const
    {
        RefuseImage(error_.isEmpty() ? vWhat : vWhat + QStringLiteral(" (") + error_ + u')');
    }

    void Select(int vPage)
    {
        if (vPage < 0 || vPage >= pages_)
            throw FormatError{XdwResult::InvalidArg, QStringLiteral("no TIFF page %1").arg(vPage + 1)};
        if (!TIFFSetDirectory(tiff_.get(), static_cast<tdir_t>(vPage)))
            Fail(QStringLiteral("TIFF page %1 cannot be read").arg(vPage + 1));
    }

    QImage Blank(const ImageInformation& vInfo, QImage::Format vFormat) const
    {
        QImage image(vInfo.pixelWidth, vInfo.pixelHeight, vFormat);
        if (image.isNull())
            throw FormatError{XdwResult::OutOfMemory, QStringLiteral("no memory for the TIFF page")};
        return image;
    }

    QImage Rows(const ImageInformation& vInfo, bool vOneBit, bool vZeroIsWhite)
    {
        QImage image = Blank(vInfo, vOneBit ? QImage::Format_Mono : QImage::Format_Grayscale8);
        const tmsize_t row = vOneBit ? (vInfo.pixelWidth + 7) / 8 : vInfo.pixelWidth;
        if (TIFFScanlineSize(tiff_.get()) != row)
            Fail(QStringLiteral("TIFF rows of an unexpected size"));
        for (int y = 0; y < vInfo.pixelHeight; ++y) {
            if (TIFFReadScanline(tiff_.get(), image.scanLine(y), static_cast<uint32_t>(y), 0) < 0)
                Fail(QStringLiteral("TIFF page data is damaged at row %1").arg(y));
        }
        if (vZeroIsWhite)
            image.invertPixels();
        if (vOneBit)
            image.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
        return image;
    }

    QImage Rgba(const ImageInformation& vInfo)
    {
        char reason[1024] = {};
        if (!TIFFRGBAImageOK(tiff_.get(), reason))
            Fail(QStringLiteral("a TIFF page this program cannot decode: ") + QString::fromLocal8Bit(reason));
        // libtiff packs R in the low byte of each 32-bit word: RGBA byte order on this machine.
        QImage image = Blank(vInfo, QImage::Format_RGBA8888);
        if (!TIFFReadRGBAImageOriented(tiff_.get(), static_cast<uint32_t>(vInfo.pixelWidth),
                                       static_cast<uint32_t>(vInfo.pixelHeight),
                                       reinterpret_cast<uint32_t*>(image.bits()), ORIENTATION_TOPLEFT, 0))
            Fail(QStringLiteral("TIFF page data is damaged"));
        return image;
    }

    std::unique_ptr<TIFF, CloseTiff> tiff_;
    int pages_ = 0;
    QString error_;
};

} // namespace

std::unique_ptr<ImageFile> OpenTiff(const QString& vPath)
{
    return std::make_unique<TiffImage>(vPath);
}

} // namespace xdw::image
