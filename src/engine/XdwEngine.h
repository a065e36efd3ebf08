#pragma once
// The engine that reads DocuWorks files on Linux, behind the same interface as the Windows
// runtime: documents opened by path and kept by handle, a selected one, and a last result with
// the runtime's own texts. Every failure of a reader is caught here and becomes a result code;
// the line saying what in the file did not fit is kept apart in LastReason, for logs and the
// command line, so that LastErrorText stays the text callers compare against.
//
// Beyond the interface, the members the command line needs: page text, colour, and pages
// written to image files.

#include "document/DocumentEngine.h"
#include "engine/ImageFiles.h"

#include <QString>

#include <array>
#include <functional>
#include <map>
#include <memory>

class QPainter;
namespace xdw {
class Model;
}

class XdwEngine final : public DocumentEngine {
public:
    // What GetInformation answers for "VERSION": this engine's own version.
    static QString EngineVersion();

    XdwEngine();
    ~XdwEngine() override;

    void OpenDocument(const QString& vPath, qint16 vOption) override;
    qint32 ReadDocumentHandle() override { return openedHandle_; }
    void SelectDocumentHandle(qint32 vHandle) override;
    void CloseSelectedDocument() override;

    void GetDocumentInformation() override;
    void GetPageInformation(qint32 vPage) override;
    void GetPageInformationEx(qint32 vPage) override;
    QString GetInformation(qint16 vKey) override;

    qint32 ConvertPageToImageHandle(qint32 vPage, qint32 vDpi, qint32 vColor) override;
    void Finalize() override;

    // The page's text; a page without any fails with InvalidOperation and gives "".
    QString GetPageTextToMemory(qint32 vPage);
    // The kind of file and compression later pages are written with, and whether the next page
    // ends a multi-page set (ImageFiles.h); an unknown name fails with InvalidArg.
    void SetImageTiff(const QString& vCompress, qint32 vEndOfMultiPages);
    void SetImageJpeg(const QString& vCompress);
    void SetImagePdf(const QString& vCompress, qint32 vEndOfMultiPages, const QString& vConvertMethod);
    // Writes the page as a file of the kind vType names ("TIFF", "JPEG", "PDF", "DIB", "PNG").
    void ConvertPageToImageFile(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                const QString& vType);
    // A part of the page, from vXStart to vXEnd and vYStart to vYEnd percent of its width and
    // height, written as ConvertPageToImageFile writes the whole; the kind by the path's ending,
    // else the one chosen last.
    void ConvertPageToImageFileEx(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                  qint32 vXStart, qint32 vXEnd, qint32 vYStart, qint32 vYEnd);
    // The page's thumbnail as a picture file, its kind by the path's ending.
    void ConvertPageToThumbnailImageFile(qint32 vPage, const QString& vPath);
    // Draws a page of the selected document onto vPainter, vScale device units to a hundredth
    // of a millimetre: vector output such as PDF pages.
    void PaintPage(QPainter& vPainter, qint32 vPage, double vScale);
    // 1 for a page that holds colour, 0 for black and white (and blank); depth 24 or 1.
    void GetPageColorInformation(qint32 vPage);
    qint16 PageColor() const { return pageColor_; }
    qint16 PageImageDepth() const { return pageImageDepth_; }

    // Why the last call failed, in a line about the file; empty after a success.
    QString LastReason() const { return lastReason_; }

private:
    // Runs vStep on the selected document; a reader's refusal becomes the last result.
    bool Run(const std::function<void(const xdw::Model&)>& vStep);
    void SetPage(const xdw::Model& vModel, qint32 vPage);
    // Percentages: x start, x end, y start, y end.
    void ConvertPart(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                     const QString& vType, std::array<qint32, 4> vPercent);
    void WritePicture(QImage vPicture, const QString& vPath, qint32 vDpi, qint32 vColor, const QString& vType);
    void Chosen(bool vKnown, const QString& vWhat);

    std::map<qint32, std::shared_ptr<const xdw::Model>> documents_;
    qint32 nextHandle_ = 1;
    qint32 openedHandle_ = 0;
    qint32 selected_ = 0;
    qint16 pageColor_ = 0, pageImageDepth_ = 0;
    QString lastReason_;
    xdw::ImageWriter images_;
};
