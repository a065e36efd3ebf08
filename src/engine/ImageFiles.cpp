#include "engine/ImageFiles.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/TiffOut.h"

#include <QFile>
#include <QFileInfo>
#include <QImageWriter>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QtEndian>

#include <limits>
#include <map>

namespace xdw {

namespace {

constexpr double MetresPerInch = 0.0254;
constexpr double MmPerInch = 25.4;

// The TIFF compressions by the names users give them, in the order a list shows them.
struct TiffName {
    const char* name;
    TiffCompress compress;
};
constexpr TiffName TiffNames[] = {
    {"NOCOMPRESS", TiffCompress::None}, {"PACKBITS", TiffCompress::PackBits}, {"JPEG", TiffCompress::Jpeg},
    {"JPEG_TTN2", TiffCompress::JpegTtn2}, {"G4", TiffCompress::G4}, {"LZW", TiffCompress::Lzw},
    {"DEFLATE", TiffCompress::Deflate},
};

[[noreturn]] void Fail(qint32 vCode, const QString& vReason)
{
    throw FormatError{vCode, vReason};
}

bool Takes(const QStringList& vNames, const QString& vName)
{
    return vName.isEmpty() || vNames.contains(vName.toUpper());
}

QSizeF PaperOf(const PagePicture& vPicture)
{
    if (!vPicture.sizeMm.isEmpty())
        return vPicture.sizeMm;
    return QSizeF(vPicture.image.width(), vPicture.image.height()) * (MmPerInch / vPicture.dpi);
}

void SaveBytes(const QByteArray& vBytes, const QString& vPath)
{
    QFile file(vPath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(vBytes) != vBytes.size()
        || !file.flush())
        Fail(XdwResult::WriteFault, QStringLiteral("cannot write %1: %2").arg(vPath, file.errorString()));
}

void WriteQtPicture(QImage vImage, const QString& vPath, int vDpi, const char* vFormat, int vQuality)
{
    const int dotsPerMetre = qRound(vDpi / MetresPerInch);
    vImage.setDotsPerMeterX(dotsPerMetre);
    vImage.setDotsPerMeterY(dotsPerMetre);
    QImageWriter writer(vPath, vFormat);
    if (vQuality > 0)
        writer.setQuality(vQuality);
    if (!writer.write(vImage))
        Fail(XdwResult::WriteFault, QStringLiteral("cannot write %1: %2").arg(vPath, writer.errorString()));
}

void Put16(QByteArray& vOut, quint16 vValue)
{
    const quint16 little = qToLittleEndian(vValue);
    vOut.append(reinterpret_cast<const char*>(&little), 2);
}

void Put32(QByteArray& vOut, quint32 vValue)
{
    const quint32 little = qToLittleEndian(vValue);
    vOut.append(reinterpret_cast<const char*>(&little), 4);
}

} // namespace

std::optional<ImageKind> ImageKindOf(const QString& vName)
{
    static const std::map<QString, ImageKind> kinds{
        {QStringLiteral("TIFF"), ImageKind::Tiff}, {QStringLiteral("TIF"), ImageKind::Tiff},
        {QStringLiteral("JPEG"), ImageKind::Jpeg}, {QStringLiteral("JPG"), ImageKind::Jpeg},
        {QStringLiteral("PDF"), ImageKind::Pdf},   {QStringLiteral("DIB"), ImageKind::Dib},
        {QStringLiteral("BMP"), ImageKind::Dib},   {QStringLiteral("PNG"), ImageKind::Png},
    };
    const auto it = kinds.find(vName.toUpper());
    return it == kinds.end() ? std::nullopt : std::optional(it->second);
}

const QStringList& TiffCompressNames()
{
    static const QStringList names = [] {
        QStringList list;
        for (const TiffName& t : TiffNames)
            list << QString::fromLatin1(t.name);
        return list;
    }();
    return names;
}

const QStringList& JpegCompressNames()
{
    static const QStringList names{QStringLiteral("NORMAL"), QStringLiteral("HIGHQUALITY"),
                                   QStringLiteral("HIGHCOMPRESS")};
    return names;
}

const QStringList& PdfCompressNames()
{
    static const QStringList names = JpegCompressNames() + QStringList{QStringLiteral("LOSSLESS")};
    return names;
}

const QStringList& PdfConvertMethods()
{
    static const QStringList names{QStringLiteral("IMAGE")};
    return names;
}

int JpegQuality(const QString& vCompress)
{
    const QString name = vCompress.isEmpty() ? QStringLiteral("NORMAL") : vCompress.toUpper();
    return name == u"NORMAL" ? 75 : name == u"HIGHQUALITY" ? 90 : name == u"HIGHCOMPRESS" ? 40 : 0;
}

QByteArray DibBytes(const QImage& vImage, int vDpi)
{
    const bool mono = vImage.format() == QImage::Format_Mono;
    const QImage rows = mono ? vImage : vImage.convertToFormat(QImage::Format_RGB888);
    const int bits = mono ? 1 : 24;
    const qint64 stride = (qint64(rows.width()) * bits + 31) / 32 * 4;
    const quint32 paletteSize = mono ? 8 : 0;
    const quint32 offset = 14 + 40 + paletteSize;
    const qint64 fileSize = offset + stride * rows.height();
    if (rows.isNull() || fileSize > std::numeric_limits<qint32>::max())
        Fail(XdwResult::InvalidArg, QStringLiteral("no bitmap file of %1 x %2 pixels").arg(vImage.width()).arg(vImage.height()));
    QByteArray out;
    out.reserve(fileSize);
    out.append("BM", 2);
    Put32(out, static_cast<quint32>(fileSize));
    Put32(out, 0);
    Put32(out, offset);
    Put32(out, 40);
    Put32(out, static_cast<quint32>(rows.width()));
    Put32(out, static_cast<quint32>(rows.height()));   // positive: bottom row first
    Put16(out, 1);
    Put16(out, static_cast<quint16>(bits));
    Put32(out, 0);                                      // BI_RGB
    Put32(out, static_cast<quint32>(stride * rows.height()));
    const quint32 dotsPerMetre = static_cast<quint32>(qRound(vDpi / MetresPerInch));
    Put32(out, dotsPerMetre);
    Put32(out, dotsPerMetre);
    Put32(out, mono ? 2 : 0);
    Put32(out, 0);
    if (mono) {
        // Black at index 0, as every Windows monochrome bitmap has it; Qt's table may be either way.
        Put32(out, 0x00000000);
        Put32(out, 0x00FFFFFF);
    }
    const bool invert = mono && rows.colorCount() > 0 && qGray(rows.color(0)) > 127;
    const int used = mono ? (rows.width() + 7) / 8 : rows.width() * 3;
    const uchar lastMask = mono && rows.width() % 8 ? uchar(0xFF << (8 - rows.width() % 8)) : uchar(0xFF);
    QByteArray line(stride, '\0');
    for (int y = rows.height() - 1; y >= 0; --y) {
        const uchar* from = rows.constScanLine(y);
        char* to = line.data();
        if (mono) {
            for (int i = 0; i < used; ++i)
                to[i] = static_cast<char>(invert ? ~from[i] : from[i]);
            to[used - 1] = static_cast<char>(to[used - 1] & lastMask);
        } else {
            for (int x = 0; x < rows.width(); ++x) {   // RGB to the file's BGR
                to[3 * x] = static_cast<char>(from[3 * x + 2]);
                to[3 * x + 1] = static_cast<char>(from[3 * x + 1]);
                to[3 * x + 2] = static_cast<char>(from[3 * x]);
            }
        }
        out.append(line);
    }
    return out;
}

// An open PDF: the painter stays on the writer until the set ends, since a PDF gets its page
// list and cross-reference table only when it is finished.
struct ImageWriter::PdfSet {
    QString path;
    QPdfWriter writer;
    QPainter painter;
    explicit PdfSet(const QString& vPath) : path(vPath), writer(vPath) {}
};

ImageWriter::ImageWriter() = default;

ImageWriter::~ImageWriter()
{
    EndSet();
}

bool ImageWriter::SetTiff(const QString& vCompress, qint32 vEndOfMultiPages)
{
    settings_ = {ImageKind::Tiff, vCompress, vEndOfMultiPages, {}};
    return Takes(TiffCompressNames(), vCompress);
}

bool ImageWriter::SetJpeg(const QString& vCompress)
{
    settings_ = {ImageKind::Jpeg, vCompress, 1, {}};
    return Takes(JpegCompressNames(), vCompress);
}

bool ImageWriter::SetPdf(const QString& vCompress, qint32 vEndOfMultiPages, const QString& vConvertMethod)
{
    settings_ = {ImageKind::Pdf, vCompress, vEndOfMultiPages, vConvertMethod};
    return Takes(PdfCompressNames(), vCompress) && Takes(PdfConvertMethods(), vConvertMethod);
}

void ImageWriter::Write(const PagePicture& vPicture, const QString& vPath, const QString& vType)
{
    const std::optional<ImageKind> kind = ImageKindOf(vType);
    if (!kind)
        Fail(XdwResult::InvalidArg, QStringLiteral("image type ") + vType);
    if (vPicture.image.isNull() || vPicture.dpi <= 0)
        Fail(XdwResult::InvalidArg, QStringLiteral("no picture to write"));
    // The settings speak for the kind they were made for; PDF also takes those of JPEG, as the
    // document library passes them. Any other kind is written as it is by default, alone.
    QString compress;
    bool last = true;
    if (settings_.kind == kind || (kind == ImageKind::Pdf && settings_.kind == ImageKind::Jpeg)) {
        compress = settings_.compress.toUpper();
        last = settings_.kind == ImageKind::Jpeg || settings_.endOfMultiPages != 0;
    }
    const bool known = kind == ImageKind::Tiff ? Takes(TiffCompressNames(), compress)
        : kind == ImageKind::Jpeg              ? Takes(JpegCompressNames(), compress)
        : kind == ImageKind::Pdf               ? Takes(PdfCompressNames(), compress)
                                                   && Takes(PdfConvertMethods(), settings_.convertMethod)
                                               : true;
    if (!known)
        Fail(XdwResult::InvalidArg, QStringLiteral("%1 for %2").arg(QStringList{compress, settings_.convertMethod}.join(u' ').trimmed(), vType.toUpper()));

    // A page elsewhere ends the open sets.
    if (pdf_ && (kind != ImageKind::Pdf || pdf_->path != vPath))
        Finish();
    if (kind != ImageKind::Tiff || openTiff_ != vPath)
        openTiff_.clear();

    switch (*kind) {
    case ImageKind::Tiff: WriteTiffPage(vPicture, vPath, compress, last); break;
    case ImageKind::Pdf: WritePdf(vPicture, vPath, compress, last); break;
    case ImageKind::Dib: SaveBytes(DibBytes(vPicture.image, vPicture.dpi), vPath); break;
    case ImageKind::Png: WriteQtPicture(vPicture.image, vPath, vPicture.dpi, "PNG", 0); break;
    case ImageKind::Jpeg: {
        // No black-and-white JPEG: grey keeps it small all the same.
        const bool mono = vPicture.image.format() == QImage::Format_Mono;
        WriteQtPicture(vPicture.image.convertToFormat(mono ? QImage::Format_Grayscale8 : QImage::Format_RGB32),
                       vPath, vPicture.dpi, "JPEG", JpegQuality(compress));
        break;
    }
    }
}

void ImageWriter::WriteTiffPage(const PagePicture& vPicture, const QString& vPath, const QString& vCompress, bool vLast)
{
    TiffOptions options;
    for (const TiffName& t : TiffNames)
        if (vCompress == QLatin1StringView(t.name))
            options.compress = t.compress;
    options.append = openTiff_ == vPath && QFileInfo::exists(vPath);
    openTiff_ = vLast ? QString() : vPath;
    QString error;
    if (!WriteTiff(vPicture.image, vPath, vPicture.dpi, &error, options)) {
        openTiff_.clear();
        Fail(XdwResult::WriteFault, error);
    }
}

void ImageWriter::WritePdf(const PagePicture& vPicture, const QString& vPath, const QString& vCompress, bool vLast)
{
    const bool first = !pdf_;
    if (first) {
        pdf_ = std::make_unique<PdfSet>(vPath);
        pdf_->writer.setCreator(QStringLiteral("Marnoquill"));
        pdf_->writer.setPageMargins(QMarginsF());
    }
    const QSizeF paper = PaperOf(vPicture);
    pdf_->writer.setPageSize(QPageSize(paper, QPageSize::Millimeter, QString(), QPageSize::ExactMatch));
    if (first ? !pdf_->painter.begin(&pdf_->writer) : !pdf_->writer.newPage()) {
        pdf_.reset();
        Fail(XdwResult::WriteFault, QStringLiteral("cannot write ") + vPath);
    }
    // Qt writes pictures as JPEG unless told to keep them lossless. A black-and-white page is
    // always kept lossless: JPEG would blur its edges and make it larger besides.
    const bool mono = vPicture.image.format() == QImage::Format_Mono;
    pdf_->painter.setRenderHint(QPainter::LosslessImageRendering, mono || vCompress == u"LOSSLESS");
    const double unitsPerMm = pdf_->writer.resolution() / MmPerInch;
    pdf_->painter.drawImage(QRectF(QPointF(0, 0), paper * unitsPerMm), vPicture.image);
    if (vLast)
        Finish();
}

void ImageWriter::Finish()
{
    const QString path = pdf_ ? pdf_->path : QString();
    if (!EndSet())
        Fail(XdwResult::WriteFault, QStringLiteral("cannot write ") + path);
}

bool ImageWriter::EndSet()
{
    if (!pdf_)
        return true;
    const std::unique_ptr<PdfSet> set = std::move(pdf_);
    return set->painter.end();
}

QString ImageWriter::TypeForPath(const QString& vPath) const
{
    static const QStringList words{QStringLiteral("TIFF"), QStringLiteral("JPEG"), QStringLiteral("PDF"),
                                   QStringLiteral("DIB"), QStringLiteral("PNG")};
    const QString ending = QFileInfo(vPath).suffix();
    if (ImageKindOf(ending) || !settings_.kind)
        return ending;
    return words[static_cast<int>(*settings_.kind)];
}

} // namespace xdw
