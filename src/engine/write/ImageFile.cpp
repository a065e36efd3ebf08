#include "engine/write/ImageFile.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>

#include <cmath>

namespace xdw::image {

namespace {

constexpr double MetresPerInch = 0.0254;
constexpr qint64 MaxFileSize = 1LL << 30;

quint32 Be16(QByteArrayView vBytes, qsizetype vAt)
{
    return quint32(quint8(vBytes[vAt])) << 8 | quint8(vBytes[vAt + 1]);
}

quint32 Be32(QByteArrayView vBytes, qsizetype vAt)
{
    return Be16(vBytes, vAt) << 16 | Be16(vBytes, vAt + 2);
}

qint32 Le16(QByteArrayView vBytes, qsizetype vAt)
{
    return quint8(vBytes[vAt]) | quint8(vBytes[vAt + 1]) << 8;
}

qint32 Le32(QByteArrayView vBytes, qsizetype vAt)
{
    quint32 v = 0;
    for (int i = 3; i >= 0; --i)
        v = (v << 8) | quint8(vBytes[vAt + i]);
    return static_cast<qint32>(v);
}

enum class Format { Jpeg, Png, Bmp };

// The JFIF density, when the file has one in inches or centimetres, and whether the coded data
// reaches its end marker: a cut-off JPEG still decodes (to grey below the cut), so the marker is
// how a truncated one is told from a whole one.
bool WalkJpeg(QByteArrayView vBytes, double* vHor, double* vVer)
{
    qsizetype at = 2;
    while (at + 4 <= vBytes.size() && quint8(vBytes[at]) == 0xFF) {
        const quint8 marker = quint8(vBytes[at + 1]);
        if (marker == 0xFF) {   // fill byte before a marker
            ++at;
            continue;
        }
        const qsizetype length = Be16(vBytes, at + 2);
        if (length < 2 || at + 2 + length > vBytes.size())
            return false;
        if (marker == 0xE0 && length >= 14 && vBytes.sliced(at + 4, 5) == QByteArrayView("JFIF\0", 5)) {
            const quint8 unit = quint8(vBytes[at + 11]);
            const double scale = unit == 1 ? 1.0 : unit == 2 ? 2.54 : 0.0;
            *vHor = Be16(vBytes, at + 12) * scale;
            *vVer = Be16(vBytes, at + 14) * scale;
        }
        if (marker == 0xDA)
            return vBytes.indexOf(QByteArrayView("\xFF\xD9", 2), at + 2 + length) >= 0;
        at += 2 + length;
    }
    return false;
}

// The pHYs chunk of a PNG, when it is in pixels per metre.
void WalkPng(QByteArrayView vBytes, double* vHor, double* vVer)
{
    qsizetype at = 8;
    while (at + 12 <= vBytes.size()) {
        const qint64 length = Be32(vBytes, at);
        const QByteArrayView type = vBytes.sliced(at + 4, 4);
        if (length > vBytes.size() - at - 12 || type == "IDAT")
            return;
        if (type == "pHYs" && length == 9 && quint8(vBytes[at + 16]) == 1) {
            *vHor = Be32(vBytes, at + 8) * MetresPerInch;
            *vVer = Be32(vBytes, at + 12) * MetresPerInch;
        }
        at += 12 + static_cast<qsizetype>(length);
    }
}

// The BMP resolution, and whether the file holds all the rows its header promises: Qt draws the
// missing ones black rather than failing.
bool WalkBmp(QByteArrayView vBytes, double* vHor, double* vVer)
{
    if (vBytes.size() < 26)
        return false;
    const qint64 headerSize = Le32(vBytes, 14);
    const bool core = headerSize == 12;
    if (!core && (headerSize < 40 || vBytes.size() < 54))
        return false;
    const qint64 width = core ? Le16(vBytes, 18) : Le32(vBytes, 18);
    const qint64 height = core ? Le16(vBytes, 20) : Le32(vBytes, 22);
    const qint64 bits = Le16(vBytes, core ? 24 : 28);
    const qint64 compression = core ? 0 : Le32(vBytes, 30);
    if (!core) {
        *vHor = Le32(vBytes, 38) * MetresPerInch;
        *vVer = Le32(vBytes, 42) * MetresPerInch;
    }
    const qint64 pixelsAt = Le32(vBytes, 10);
    // Run-length rows have no fixed size; plain and bit-field ones do.
    const bool fixedRows = compression == 0 || compression == 3 || compression == 6;
    const qint64 rows = fixedRows ? (width * bits + 31) / 32 * 4 * qAbs(height) : 1;
    return pixelsAt > 0 && pixelsAt + rows <= vBytes.size();
}

// JPEG, PNG and BMP: one page each, decoded by Qt from the file's bytes held in memory.
class QtImage final : public ImageFile {
public:
    QtImage(QByteArray vBytes, Format vFormat) : bytes_(std::move(vBytes)), format_(vFormat)
    {
        double hor = 0, ver = 0;
        complete_ = true;
        if (format_ == Format::Jpeg)
            complete_ = WalkJpeg(bytes_, &hor, &ver);
        else if (format_ == Format::Png)
            WalkPng(bytes_, &hor, &ver);
        else
            complete_ = WalkBmp(bytes_, &hor, &ver);
        SaneDpi(hor, ver, &horDpi_, &verDpi_);
    }

    int Pages() const override { return 1; }

    ImageInformation Information(int) override
    {
        QBuffer buffer(&bytes_);
        QImageReader reader(&buffer, Name());
        const QSize size = reader.size();
        if (!size.isValid() || size.isEmpty())
            RefuseImage(QStringLiteral("the %1 header cannot be read").arg(QString::fromLatin1(Name())));
        return {size.width(), size.height(), horDpi_, verDpi_};
    }

    Picture Read(int) override
    {
        const ImageInformation info = Information(0);
        CheckPixels(info.pixelWidth, info.pixelHeight, QString::fromLatin1(Name()));
        if (!complete_)
            RefuseImage(QStringLiteral("the %1 data is cut off before its end").arg(QString::fromLatin1(Name())));
        QBuffer buffer(&bytes_);
        QImageReader reader(&buffer, Name());
        // Our own limits have been checked; Qt's smaller default would refuse a large scan.
        reader.setAllocationLimit(static_cast<int>(MaxPixels * 4 / (1024 * 1024) + 1));
        QImage decoded;
        if (!reader.read(&decoded))
            RefuseImage(QStringLiteral("the %1 image is damaged: %2")
                            .arg(QString::fromLatin1(Name()), reader.errorString()));
        Picture picture = ToPicture(std::move(decoded), horDpi_, verDpi_);
        if (format_ == Format::Jpeg)
            picture.jpeg = bytes_;
        return picture;
    }

private:
    const char* Name() const { return format_ == Format::Jpeg ? "jpeg" : format_ == Format::Png ? "png" : "bmp"; }

    QByteArray bytes_;
    Format format_;
    bool complete_ = true;
    float horDpi_ = DefaultDpi, verDpi_ = DefaultDpi;
};

} // namespace

void RefuseImage(const QString& vReason)
{
    throw FormatError{XdwResult::BadFormat, vReason};
}

void SaneDpi(double vHor, double vVer, float* vOutHor, float* vOutVer)
{
    const auto usable = [](double v) { return std::isfinite(v) && v >= 10.0 && v <= 10000.0; };
    const bool hor = usable(vHor), ver = usable(vVer);
    *vOutHor = static_cast<float>(hor ? vHor : ver ? vVer : DefaultDpi);
    *vOutVer = static_cast<float>(ver ? vVer : hor ? vHor : DefaultDpi);
}

void CheckPixels(qint64 vWidth, qint64 vHeight, const QString& vWhat)
{
    if (vWidth < 1 || vHeight < 1)
        RefuseImage(QStringLiteral("the %1 image has no pixels").arg(vWhat));
    if (vWidth > MaxSide || vHeight > MaxSide || vWidth * vHeight > MaxPixels)
        throw FormatError{XdwResult::OutOfMemory,
                          QStringLiteral("the %1 image of %2 x %3 pixels is larger than a page picture may be")
                              .arg(vWhat).arg(vWidth).arg(vHeight)};
}

QImage BlackFirst(QImage vMono)
{
    QImage mono = vMono.convertToFormat(QImage::Format_Mono);
    if (mono.colorCount() >= 1 && qGray(mono.color(0)) > 127)
        mono.invertPixels();
    mono.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    return mono;
}

Picture ToPicture(QImage vImage, float vHorDpi, float vVerDpi)
{
    Picture picture;
    picture.horDpi = vHorDpi;
    picture.verDpi = vVerDpi;
    const QList<QRgb> blackWhite{qRgb(0, 0, 0), qRgb(255, 255, 255)};
    const QList<QRgb> whiteBlack{qRgb(255, 255, 255), qRgb(0, 0, 0)};
    const bool oneBit = vImage.format() == QImage::Format_Mono || vImage.format() == QImage::Format_MonoLSB;
    if (vImage.hasAlphaChannel()) {
        // Paper is white: what is transparent shows it.
        QImage paper(vImage.size(), QImage::Format_RGB888);
        paper.fill(Qt::white);
        QPainter(&paper).drawImage(0, 0, vImage);
        picture.image = paper;
    } else if (oneBit && (vImage.colorTable() == blackWhite || vImage.colorTable() == whiteBlack)) {
        picture.image = BlackFirst(vImage);
        picture.tone = Tone::Bilevel;
    } else if (vImage.format() == QImage::Format_Grayscale8 || vImage.format() == QImage::Format_Grayscale16
               || (vImage.colorCount() > 0 && vImage.isGrayscale())) {
        picture.image = vImage.convertToFormat(QImage::Format_Grayscale8);
        picture.tone = Tone::Grey;
    } else {
        picture.image = vImage.convertToFormat(QImage::Format_RGB888);
    }
    if (picture.image.isNull())
        throw FormatError{XdwResult::OutOfMemory, QStringLiteral("no memory for the picture")};
    return picture;
}

std::unique_ptr<ImageFile> OpenImage(const QString& vPath)
{
    const QFileInfo info(vPath);
    if (!info.exists() || !info.isFile())
        throw FormatError{XdwResult::FileNotFound, QStringLiteral("no image file ") + vPath};
    QFile file(vPath);
    if (!file.open(QIODevice::ReadOnly))
        throw FormatError{XdwResult::NoPermission, QStringLiteral("cannot read ") + vPath};
    const QByteArray head = file.peek(8);
    // Classic and big TIFF, in either byte order.
    if (head.startsWith("II*") || head.startsWith("II+") || head.startsWith(QByteArrayView("MM\0*", 4))
        || head.startsWith(QByteArrayView("MM\0+", 4))) {
        file.close();
        return OpenTiff(vPath);
    }
    if (head.startsWith("%PDF"))
        RefuseImage(QStringLiteral("PDF input needs a PDF renderer"));
    Format format;
    if (head.startsWith("\xFF\xD8\xFF"))
        format = Format::Jpeg;
    else if (head.startsWith(QByteArrayView("\x89PNG\r\n\x1A\n", 8)))
        format = Format::Png;
    else if (head.startsWith("BM"))
        format = Format::Bmp;
    else
        RefuseImage(QStringLiteral("not an image this program reads (TIFF, JPEG, PNG or BMP): ") + vPath);
    if (file.size() > MaxFileSize)
        throw FormatError{XdwResult::OutOfMemory, QStringLiteral("image file larger than 1 GiB")};
    QByteArray bytes = file.readAll();
    if (bytes.size() != file.size())
        throw FormatError{XdwResult::NoPermission, QStringLiteral("cannot read ") + vPath};
    return std::make_unique<QtImage>(std::move(bytes), format);
}

} // namespace xdw::image
