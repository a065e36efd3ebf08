// The engine's pages as files and on other painters: whole pages and parts of them as PNG, TIFF
// or JPEG, thumbnails, and pages drawn onto a PDF writer's painter.
#include "engine/XdwEngine.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/Model.h"
#include "engine/PageRender.h"
#include "engine/TiffOut.h"

#include <QFileInfo>
#include <QImageWriter>

void XdwEngine::ConvertPageToImageFile(qint32 vPage, const QString& vPath, qint32 vDpi,
                                       qint32 vColor, const QString& vType)
{
    ConvertPart(vPage, vPath, vDpi, vColor, vType, {0, 100, 0, 100});
}

void XdwEngine::ConvertPageToImageFileEx(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                         qint32 vXStart, qint32 vXEnd, qint32 vYStart, qint32 vYEnd)
{
    ConvertPart(vPage, vPath, vDpi, vColor, QFileInfo(vPath).suffix(), {vXStart, vXEnd, vYStart, vYEnd});
}

void XdwEngine::ConvertPart(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                            const QString& vType, std::array<qint32, 4> vPercent)
{
    Run([&](const xdw::Model& vModel) {
        const auto [xStart, xEnd, yStart, yEnd] = vPercent;
        auto percent = [](qint32 v) { return v >= 0 && v <= 100; };
        if (!percent(xStart) || !percent(xEnd) || !percent(yStart) || !percent(yEnd)
            || xStart >= xEnd || yStart >= yEnd)
            throw xdw::FormatError{XdwResult::InvalidArg, QStringLiteral("part of the page out of range")};
        const QImage whole = xdw::RenderPage(vModel, vPage - 1, vDpi, vColor == 1);
        const int left = whole.width() * xStart / 100, top = whole.height() * yStart / 100;
        const QRect part(left, top, qMax(1, whole.width() * xEnd / 100 - left),
                         qMax(1, whole.height() * yEnd / 100 - top));
        WritePicture(part == whole.rect() ? whole : whole.copy(part), vPath, vDpi, vColor, vType);
    });
}

void XdwEngine::ConvertPageToThumbnailImageFile(qint32 vPage, const QString& vPath)
{
    Run([&](const xdw::Model& vModel) {
        WritePicture(xdw::PageThumbnail(vModel, vPage - 1), vPath, 12, 1, QFileInfo(vPath).suffix());
    });
}

// The picture as a file of the kind vType names (the path's ending will do: png, tif, jpg).
void XdwEngine::WritePicture(QImage vPicture, const QString& vPath, qint32 vDpi, qint32 vColor,
                             const QString& vType)
{
    QByteArray format = vType.toUpper().toLatin1();
    if (format == "TIF")
        format = "TIFF";
    if (format == "JPG")
        format = "JPEG";
    if (format != "PNG" && format != "TIFF" && format != "JPEG")
        throw xdw::FormatError{XdwResult::InvalidArg, QStringLiteral("image type ") + vType};
    if (format == "JPEG")  // no black-and-white JPEG: grey keeps it small all the same
        vPicture = vPicture.convertToFormat(vColor == 1 ? QImage::Format_RGB32 : QImage::Format_Grayscale8);
    if (format == "TIFF") {
        QString error;
        if (!xdw::WriteTiff(vPicture, vPath, vDpi, &error))
            throw xdw::FormatError{XdwResult::WriteFault, error};
        return;
    }
    QImageWriter writer(vPath, format);
    const double dotsPerMetre = vDpi / 0.0254;
    vPicture.setDotsPerMeterX(qRound(dotsPerMetre));
    vPicture.setDotsPerMeterY(qRound(dotsPerMetre));
    if (!writer.write(vPicture))
        throw xdw::FormatError{XdwResult::WriteFault, QStringLiteral("cannot write %1: %2").arg(vPath, writer.errorString())};
}

void XdwEngine::PaintPage(QPainter& vPainter, qint32 vPage, double vScale)
{
    Run([&](const xdw::Model& vModel) { xdw::PaintPage(vPainter, vModel, vPage - 1, vScale); });
}
