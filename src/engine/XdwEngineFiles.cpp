// The engine's pages as files and on other painters: whole pages and parts of them as TIFF, JPEG,
// PDF, bitmap or PNG files, thumbnails, and pages drawn onto a PDF writer's painter.
#include "engine/XdwEngine.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/Model.h"
#include "engine/PageRender.h"

#include <QFileInfo>

void XdwEngine::ConvertPageToImageFile(qint32 vPage, const QString& vPath, qint32 vDpi,
                                       qint32 vColor, const QString& vType)
{
    ConvertPart(vPage, vPath, vDpi, vColor, vType, {0, 100, 0, 100});
}

void XdwEngine::ConvertPageToImageFileEx(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                         qint32 vXStart, qint32 vXEnd, qint32 vYStart, qint32 vYEnd)
{
    ConvertPart(vPage, vPath, vDpi, vColor, images_.TypeForPath(vPath), {vXStart, vXEnd, vYStart, vYEnd});
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
        // The paper the part stands for, so that a PDF page of it has the page's own scale.
        const xdw::Page& page = vModel.Pages()[static_cast<size_t>(vPage - 1)];
        const QSizeF paper(page.width / 100.0 * part.width() / whole.width(),
                           page.height / 100.0 * part.height() / whole.height());
        images_.Write({part == whole.rect() ? whole : whole.copy(part), vDpi, paper}, vPath, vType);
    });
}

void XdwEngine::ConvertPageToThumbnailImageFile(qint32 vPage, const QString& vPath)
{
    Run([&](const xdw::Model& vModel) {
        WritePicture(xdw::PageThumbnail(vModel, vPage - 1), vPath, 12, 1, images_.TypeForPath(vPath));
    });
}

// The picture as a file of the kind vType names (the path's ending will do: png, tif, jpg, ...).
void XdwEngine::WritePicture(QImage vPicture, const QString& vPath, qint32 vDpi, qint32 /*vColor*/,
                             const QString& vType)
{
    images_.Write({std::move(vPicture), vDpi, {}}, vPath, vType);
}

void XdwEngine::SetImageTiff(const QString& vCompress, qint32 vEndOfMultiPages)
{
    Chosen(images_.SetTiff(vCompress, vEndOfMultiPages), QStringLiteral("TIFF compression ") + vCompress);
}

void XdwEngine::SetImageJpeg(const QString& vCompress)
{
    Chosen(images_.SetJpeg(vCompress), QStringLiteral("JPEG compression ") + vCompress);
}

void XdwEngine::SetImagePdf(const QString& vCompress, qint32 vEndOfMultiPages, const QString& vConvertMethod)
{
    Chosen(images_.SetPdf(vCompress, vEndOfMultiPages, vConvertMethod),
           QStringLiteral("PDF compression %1 by %2").arg(vCompress, vConvertMethod));
}

// The settings stand either way; a page written with unknown ones is refused as well.
void XdwEngine::Chosen(bool vKnown, const QString& vWhat)
{
    if (vKnown) {
        lastReason_.clear();
        Succeed();
        return;
    }
    lastReason_ = vWhat;
    Fail(XdwResult::InvalidArg);
}

void XdwEngine::PaintPage(QPainter& vPainter, qint32 vPage, double vScale)
{
    Run([&](const xdw::Model& vModel) { xdw::PaintPage(vPainter, vModel, vPage - 1, vScale); });
}
