#pragma once
// The engine that reads DocuWorks files on Linux, behind the same interface as the Windows
// runtime: documents opened by path and kept by handle, a selected one, and a last result with
// the runtime's own texts. Every failure of a reader is caught here and becomes a result code;
// the line saying what in the file did not fit is kept apart in LastReason, for logs and the
// command line, so that LastErrorText stays the text callers compare against.
//
// A document is read from its file; the first change loads it as an editable record tree, and
// from then on the reader works on what that tree would save, so every query sees the change
// before SaveDocument writes it. Whole-file work (documents from images, merging, binders)
// writes its output at once. Where the format notes leave a structure unknown (protection,
// original data, conversion by another application) the engine refuses with a text saying so
// rather than write bytes other software may misread.
//
// Beyond the interface, the members the command line needs: page text, colour, and pages
// written to image files.

#include "document/DocumentEngine.h"
#include "engine/ImageFiles.h"
#include "engine/ocr/Ocr.h"
#include "engine/write/ImagePlacing.h"

#include <QString>

#include <array>
#include <functional>
#include <map>
#include <memory>

class QPainter;
namespace xdw {
class ByteSource;
class Model;
struct EditableFile;
struct Node;
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
    QString GetPageTextToMemory(qint32 vPage) override;
    // The kind of file and compression later pages are written with, and whether the next page
    // ends a multi-page set (ImageFiles.h); an unknown name fails with InvalidArg.
    void SetImageTiff(const QString& vCompress, qint32 vEndOfMultiPages) override;
    void SetImageJpeg(const QString& vCompress) override;
    void SetImagePdf(const QString& vCompress, qint32 vEndOfMultiPages, const QString& vConvertMethod) override;
    // Writes the page as a file of the kind vType names ("TIFF", "JPEG", "PDF", "DIB", "PNG").
    void ConvertPageToImageFile(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                const QString& vType) override;
    // A part of the page, from vXStart to vXEnd and vYStart to vYEnd percent of its width and
    // height, written as ConvertPageToImageFile writes the whole; the kind by the path's ending,
    // else the one chosen last.
    void ConvertPageToImageFileEx(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                  qint32 vXStart, qint32 vXEnd, qint32 vYStart, qint32 vYEnd) override;
    // The page's thumbnail as a picture file, its kind by the path's ending.
    void ConvertPageToThumbnailImageFile(qint32 vPage, const QString& vPath) override;
    // Draws a page of the selected document onto vPainter, vScale device units to a hundredth
    // of a millimetre: vector output such as PDF pages.
    void PaintPage(QPainter& vPainter, qint32 vPage, double vScale);
    // 1 for a page that holds colour, 0 for black and white (and blank); depth 24 or 1.
    void GetPageColorInformation(qint32 vPage) override;
    qint16 PageColor() const override { return pageColor_; }
    qint16 PageImageDepth() const override { return pageImageDepth_; }

    // ---- saving, whole files (XdwEngineEdit.cpp)
    void SaveDocument() override;
    void SetImageToDocumentOptions(const QString& vFitImage, const QString& vCompress, qint32 vZoom,
                                   qint32 vWidth, qint32 vHeight, const QString& vHorPos,
                                   const QString& vVerPos) override;
    void SetImageToDocumentOptionsEx2(const QString& vFitImage, const QString& vCompress, qint32 vZoom,
                                      qint32 vWidth, qint32 vHeight, const QString& vHorPos,
                                      const QString& vVerPos, qint32 vZoom2, const QString& vOther) override;
    void CreateDocumentFromImage(const QString& vImagePath, const QString& vDocumentPath) override;
    void CreateDocumentFromImagePdf(const QString& vDocumentPath, const QString& vImagePath) override;
    void BeginCreationFromApp(const QString& vAppFilePath, const QString& vDocumentPath, bool vWithOrg) override;
    void EndCreationFromApp() override;
    qint32 GetStatusCreationFromApp() override;
    void CancelCreationFromApp() override;
    void ProtectDocument(const QString& vInputPath, const QString& vOutputPath, qint32 vProtectType,
                         qint32 vPermission, const QString& vOpenPass, const QString& vFullAccessPass,
                         const QString& vComment) override;
    void AddMergeInput(const QString& vPath) override;
    void ClearMergeInputs() override;
    void MergeDocuments(const QString& vOutputPath) override;
    void CreateBinder(const QString& vPath) override;
    void InsertDocumentToBinder(const QString& vDocumentPath, const QString& vBinderPath, qint32 vPosition) override;
    void ReadImageFile(const QString& vImagePath) override;

    // ---- pages, attributes, binders, original data (XdwEngineEdit.cpp, XdwEnginePages.cpp)
    void GetPage(qint32 vPage, const QString& vPath) override;
    void InsertDocument(qint32 vPosition, const QString& vPath) override;
    void DeletePage(qint32 vPage) override;
    void RotatePage(qint32 vPage, qint32 vDegree) override;
    void ReducePageNoise(qint32 vPage, const QString& vLevel) override;
    qint32 RotatePageAuto(qint32 vDocumentHandle, qint32 vPage) override;
    void SetUserAttribute(const QString& vName, const QString& vValue) override;
    QString GetUserAttribute(const QString& vName) override;
    void DeleteUserAttribute(const QString& vName) override;
    void SetDocumentAttribute(const QString& vName, const QString& vValue, qint16 vType) override;
    QString GetDocumentAttribute(const QString& vName) override;
    void DeleteDocumentAttribute(const QString& vName) override;
    void SucceedAttribute(const QString& vSourcePath, qint32 vDocument, qint32 vOption) override;
    void GetDocumentInformationInBinder(qint32 vPosition) override;
    QString GetDocumentNameInBinder(qint32 vPosition) override;
    void GetDocumentFromBinder(qint32 vPosition, const QString& vPath) override;
    void DeleteDocumentInBinder(qint32 vPosition) override;
    void InsertOriginalData(qint32 vPosition, const QString& vPath) override;
    void DeleteOriginalData(qint32 vPosition) override;
    QString GetFileNameOfOriginalData(qint32 vPosition) override;
    void GetFileFromOriginalData(qint32 vPosition, const QString& vPath) override;

    // ---- text and OCR (XdwEngineOcr.cpp)
    QString GetTextPosition(qint32 vPage) override;
    bool IsEnabledForOcr() override;
    void SetOcrOptions(const QString& vNoiseReduction, const QString& vLanguage, bool vInsertSpaceCharacter,
                       bool vJapaneseKnowledgeProcessing, const QString& vForm, const QString& vColumn,
                       bool vDisplayProcess, bool vAutoDeskew) override;
    void ApplyOcr(qint32 vPage) override;
    void SetOcrOptionsV7(const QString& vNoiseReduction, const QString& vLanguage, bool vInsertSpaceCharacter,
                         const QString& vForm, const QString& vColumn, bool vDisplayProcess,
                         bool vAutoDeskew, bool vPriority, const QString& vEngineLevel,
                         const QString& vLanguageMixedRate, bool vHalfSizeChar) override;
    void ApplyOcrV7(qint32 vPage) override;
    void SetOcrOptionV7AddRect(qint32 vLeft, qint32 vTop, qint32 vRight, qint32 vBottom) override;
    void SetOcrOptionV7ClearRect() override;
    void SetClearOcrDataOptions(qint32 vOption1, qint32 vOption2, qint32 vOption3, const QString& vOption4) override;
    void ClearOcrData(qint32 vPage) override;

    // ---- annotations (XdwEngineAnnotations.cpp)
    void AddAnnotation(qint32 vType, qint32 vPage, qint32 vX, qint32 vY, qint32 vWidth,
                       qint32 vHeight, const QString& vBitmapPath) override;
    void AddAnnotationOnParentAnnotation(qint32 vType, qint32 vParentHandle, qint32 vX, qint32 vY,
                                         qint32 vWidth, qint32 vHeight, const QString& vBitmapPath) override;
    void AddAnnotationFromAnnFile(const QString& vAnnFilePath, qint32 vPage, qint32 vX, qint32 vY,
                                  bool vTargetGroupAnnotation, bool vTargetCustomAnnotation,
                                  qint32 vParentHandle) override;
    qint32 ReadAnnotationHandle() override { return newAnnotation_; }
    void GetAnnotationInformation(qint32 vPage, qint32 vIndex, qint32 vParentHandle) override;
    qint32 GetAnnotationHandleFromNo(qint32 vPage, qint32 vNumber, qint32 vParentHandle) override;
    void SelectAnnotationHandle(qint32 vHandle) override;
    QString GetAnnotationAttribute(const QString& vName) override;
    void SetAnnotationAttribute(const QString& vName, qint32 vDataType, const QString& vValue) override;
    void RemoveAnnotation() override;
    void ShowAndHideAnnotation(bool vShow) override;

    // Why the last call failed, in a line about the file; empty after a success.
    QString LastReason() const { return lastReason_; }

private:
    struct Opened {
        QString path;
        std::shared_ptr<const xdw::Model> model;
        std::shared_ptr<xdw::EditableFile> edit;   // from the first change on
    };
    // An annotation by the page it lies on and its 1-based index at each level down from it.
    struct AnnotationRef {
        qint32 document = 0;
        int page = 0;
        std::vector<int> path;
    };

    // The file opened for reading, as OpenDocument opens it; FormatError with the result code.
    static std::unique_ptr<xdw::ByteSource> OpenedFile(const QString& vPath);
    // The selected document's tree, loaded from its file on first use.
    xdw::EditableFile& TreeOf(Opened& vOpened);
    // Runs vStep; a refusal (FormatError) or a want of memory becomes the last result.
    bool Attempt(const std::function<void()>& vStep);
    // Runs vStep on the selected document; a reader's refusal becomes the last result.
    bool Run(const std::function<void(const xdw::Model&)>& vStep);
    // Runs vStep on the selected document's tree, loading it on the first change, and reads the
    // changed tree again so that later queries see the change.
    bool Edit(const std::function<void(xdw::EditableFile&)>& vStep);
    Opened& SelectedDocument();
    // The placement of an annotation in the selected document's tree; FormatError when gone.
    xdw::Node& AnnotationNode(xdw::EditableFile& vFile, const AnnotationRef& vRef);
    qint32 AnnotationHandleFor(AnnotationRef vRef);
    void ApplyOcrTo(qint32 vPage, const ocr::Options& vOptions);
    void SetPage(const xdw::Model& vModel, qint32 vPage);
    // Percentages: x start, x end, y start, y end.
    void ConvertPart(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                     const QString& vType, std::array<qint32, 4> vPercent);
    void WritePicture(QImage vPicture, const QString& vPath, qint32 vDpi, qint32 vColor, const QString& vType);
    void Chosen(bool vKnown, const QString& vWhat);

    std::map<qint32, Opened> documents_;
    std::map<qint32, AnnotationRef> annotations_;
    qint32 nextAnnotation_ = 1, newAnnotation_ = 0, selectedAnnotation_ = 0;
    xdw::Placing placing_;
    QStringList mergeInputs_;
    ocr::Options ocr_;
    qint32 nextHandle_ = 1;
    qint32 openedHandle_ = 0;
    qint32 selected_ = 0;
    qint16 pageColor_ = 0, pageImageDepth_ = 0;
    QString lastReason_;
    xdw::ImageWriter images_;
};
