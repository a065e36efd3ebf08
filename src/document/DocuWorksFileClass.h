#pragma once
// One opened document. It holds the runtime's handle of the document and keeps what the
// runtime last reported about the document and about the page queried last, so that callers
// read fields instead of asking again. Every call selects this document's handle first and
// reads the result right after, because the engine knows one selected document and one last
// result for the whole process.
//
// The viewer needs opening, the document query and pages as bitmap handles; the families for
// conversion to files, page editing, OCR, text, attributes, binders, original data and
// annotations follow the same pattern (Select, call, Check). Unless said otherwise a failure
// raises 6300 with the operation's name + " : " + the runtime's text.

#include "store/StructuredDataClass.h"

#include <QString>
#include <QtGlobal>

#include <memory>

class DocumentEngine;
class DocuWorksAnnotationClass;

class DocuWorksFileClass {
public:
    // The engine stays the one this object was made under, so that its handle is closed where
    // it was opened.
    explicit DocuWorksFileClass(std::shared_ptr<DocumentEngine> vEngine = {});
    ~DocuWorksFileClass();  // closes a document still open
    DocuWorksFileClass(const DocuWorksFileClass&) = delete;
    DocuWorksFileClass& operator=(const DocuWorksFileClass&) = delete;

    // ---- open, close
    // An empty vPath opens the stored DwPath again. Only .xdw, .xct and .xbd files open; a file
    // another program holds is tried again for about three seconds.
    void OpenXdw(const QString& vPath, qint16 vOption);
    // Closes without looking at the result and keeps DocumentHandle, so that destruction
    // closes it once more, as it always has.
    void CloseDocument();
    void SaveDocument();

    qint32 DocumentHandle() const { return documentHandle_; }
    QString DwPath() const { return dwPath_; }
    void SetDwPath(const QString& vDwPath) { dwPath_ = vDwPath; }
    // The runtime's version; its major part decides which page query runs.
    QString DocuWorksVersion() const { return docuWorksVersion_; }
    void SetDocuWorksVersion(const QString& vVersion) { docuWorksVersion_ = vVersion; }

    // ---- the document
    void GetDocumentInformation();
    qint16 Pages() const { return pages_; }
    qint16 Version() const { return version_; }
    qint16 OriginalData() const { return originalData_; }
    qint16 DocumentType() const { return documentType_; }
    QString DocType() const;  // "DOCUMENT", "BINDER" or ""
    qint16 Permission() const { return permission_; }
    qint16 ShowAnnotations() const { return showAnnotations_; }
    qint16 Documents() const { return documents_; }
    qint16 BinderColor() const { return binderColor_; }
    qint16 BinderSize() const { return binderSize_; }
    // What the document allows, from its permission bits.
    bool PermissionOfDocumentEdit() const;
    bool PermissionOfAnnotationEdit() const;
    bool PermissionOfPrint() const;
    bool PermissionOfCopy() const;
    // The nine fields for the document at vPosition of this binder.
    void GetDocumentInformationInBinder(qint32 vPosition);

    // ---- the page queried last. Runtimes from version 5 on know the extended query.
    void GetPageInformation(qint32 vPage);
    void GetPageInformationNormal(qint32 vPage);
    void GetPageInformationEx(qint32 vPage);
    qint32 PageWidth() const { return pageWidth_; }
    qint32 PageHeight() const { return pageHeight_; }
    qint16 PageType() const { return pageType_; }
    QString PagePageType() const;  // "NULL", "FROMIMAGE", "FROMAPPL" or ""
    qint16 PageHorRes() const { return pageHorRes_; }
    qint16 PageVerRes() const { return pageVerRes_; }
    qint16 PageCompress() const { return pageCompress_; }
    QString PageCompressType() const;  // "NORMAL" ... "MRC" or ""
    qint16 PageAnnotations() const { return pageAnnotations_; }
    qint32 PageDegree() const { return pageDegree_; }
    qint32 PageOrgWidth() const { return pageOrgWidth_; }
    qint32 PageOrgHeight() const { return pageOrgHeight_; }
    qint32 PageOrgHorRes() const { return pageOrgHorRes_; }
    qint32 PageOrgVerRes() const { return pageOrgVerRes_; }
    qint32 PageImageWidth() const { return pageImageWidth_; }
    qint32 PageImageHeight() const { return pageImageHeight_; }
    void GetPageColorInformation(qint32 vPage);
    qint32 PageColor() const { return pageColor_; }
    qint32 PageImageDepth() const { return pageImageDepth_; }

    // ---- a page as a bitmap handle. vColor 0 or 1; vDpi 10 to 600, or 0 for the page's own
    // resolution. The handle is the caller's to give back with DocuWorksClass::GlobalFree.
    qint32 ConvertPageToImageHandle(qint32 vPage, qint32 vDpi, qint32 vColor);
    // Size of the last handle. Kept as 16-bit numbers, as callers always read them; a size
    // that doesn't fit raises 6 (overflow).
    qint16 BitmapWidth() const;
    qint16 BitmapHeight() const;

    // ---- pages to files. vType "TIFF", "JPEG", "PDF" or "DIB"; vDpi 10 to 600 (0 is refused
    // here). Without a SetImage call before, TIFF is written with PACKBITS and JPEG and PDF
    // with the JPEG setting "NORMAL".
    void ConvertPageToImageFile(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                const QString& vType);
    // The part from vXStart to vXEnd and vYStart to vYEnd percent; each 0 to 100, a start below
    // its end.
    void ConvertPageToImageFileEx(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                  qint32 vXStart, qint32 vXEnd, qint32 vYStart, qint32 vYEnd);
    void ConvertPageToThumbnailImageFile(qint32 vPage, const QString& vPath);
    // Choose the picture kind of the next conversions; the result isn't looked at.
    void SetImageTiff(const QString& vCompress, qint32 vEndOfMultiPages);
    void SetImageJpeg(const QString& vCompress);
    void SetImagePdf(const QString& vCompress, qint32 vEndOfMultiPages, const QString& vConvertMethod);
    QString ImageCompress() const { return imageCompress_; }
    QString ImageOption() const { return imageOption_; }

    // ---- page editing
    void GetPage(qint32 vPage, const QString& vPath);
    void InsertDocument(qint32 vPosition, const QString& vPath);
    void DeletePage(qint32 vPage);
    void RotatePage(qint32 vPage, qint32 vDegree);
    void RotatePageAuto(qint32 vPage);
    void ReducePageNoise(qint32 vPage, const QString& vLevel);

    // ---- text. A page without text gives "".
    QString GetPageTextToMemory(qint32 vPage);
    // Reads the word rectangles of vPage into TextPosition: a thread per rectangle (keys "1",
    // "2", ...) with "X", "Y", "Width", "Height", "Status", "WordIndex" and "RectIndex", then
    // the totals "WordCount" and "RectCount".
    void GetTextPosition(qint32 vPage);
    SDC TextPosition() const { return textPosition_; }

    // ---- OCR. The options are read when a page is treated.
    void ApplyOcr(qint32 vPage);      // a page made from an image only; others are left alone
    void ApplyOcrV7(qint32 vPage);
    void ApplyOcrAll();               // every page; the first failure stops
    void ApplyOcrAllV7();
    void SetOcrOptionV7ClearRect();
    void SetOcrOptionV7AddRect(qint32 vLeft, qint32 vTop, qint32 vWidth, qint32 vHeight);
    void ClearOcrData(qint32 vPage);  // a page made from an image only
    struct OcrOptions {
        QString noiseReduction = QStringLiteral("NONE");
        QString language = QStringLiteral("JAPANESE");
        bool insertSpaceCharacter = false;
        bool japaneseKnowledgeProcessing = true;  // the older OCR only
        QString form = QStringLiteral("AUTO");
        QString column = QStringLiteral("AUTO");
        bool displayProcess = true;
        bool autoDeskew = true;
        bool priority = true;  // this and the rest: the newer OCR only
        QString engineLevel = QStringLiteral("STANDARD");
        QString languageMixedRate = QStringLiteral("BALANCED");
        bool halfSizeChar = true;
    };
    OcrOptions& Ocr() { return ocr_; }
    const OcrOptions& Ocr() const { return ocr_; }

    // ---- attributes; names at most 255 bytes. An absent attribute reads as "".
    void SetUserAttribute(const QString& vName, const QString& vValue);
    QString GetUserAttribute(const QString& vName);
    void DeleteUserAttribute(const QString& vName);
    // vType "INTEGER" (at most 9 characters, a number), "STRING", "DATE" (kept as seconds since
    // 1970/01/01 00:00:00) or "BOOL" ("TRUE" or "FALSE"), in any case.
    void SetDocumentAttribute(const QString& vName, const QString& vValue, const QString& vType);
    // Dates come back as "yyyy/MM/dd H:mm:ss" ("yyyy/MM/dd" at midnight), booleans as "True"
    // or "False".
    QString GetDocumentAttribute(const QString& vName);
    void DeleteDocumentAttribute(const QString& vName);
    void SucceedAttribute(const QString& vSourcePath, qint32 vDocument, qint32 vOption);

    // ---- a binder's documents and a document's original data, by position from 1. The files
    // written must not exist yet.
    QString GetDocumentNameInBinder(qint32 vPosition);
    void GetDocumentFromBinder(qint32 vPosition, const QString& vPath);
    void DeleteDocumentInBinder(qint32 vPosition);
    void InsertOriginalData(qint32 vPosition, const QString& vPath);
    void DeleteOriginalData(qint32 vPosition);
    QString GetFileNameOfOriginalData(qint32 vPosition);
    void GetFileFromOriginalData(qint32 vPosition, const QString& vPath);

    // ---- annotations. Each one added or read joins the annotation list, which the object
    // keeps until ReleaseAllAnnotation or its end. vParentHandle 0 puts one on the page.
    SDC RefDwAnnotationData() const { return annotationData_; }
    std::shared_ptr<DocuWorksAnnotationClass> RefDwAnnotation() const;  // under the list's cursor
    std::shared_ptr<DocuWorksAnnotationClass> AddTextAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop,
                                                                qint32 vParentHandle = 0);
    std::shared_ptr<DocuWorksAnnotationClass> AddRectAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop,
                                                                qint32 vWidth, qint32 vHeight,
                                                                qint32 vParentHandle = 0);
    std::shared_ptr<DocuWorksAnnotationClass> AddLinkAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop,
                                                                qint32 vParentHandle = 0);
    std::shared_ptr<DocuWorksAnnotationClass> AddBitmapAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop,
                                                                  const QString& vBitmapPath,
                                                                  qint32 vParentHandle = 0);
    std::shared_ptr<DocuWorksAnnotationClass> AddLineAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop,
                                                                qint32 vHorVec, qint32 vVerVec,
                                                                qint32 vParentHandle = 0);
    std::shared_ptr<DocuWorksAnnotationClass> AddDateStampAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop,
                                                                     qint32 vParentHandle = 0);
    std::shared_ptr<DocuWorksAnnotationClass> AddFusenAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop,
                                                                 qint32 vWidth, qint32 vHeight,
                                                                 qint32 vParentHandle = 0);
    std::shared_ptr<DocuWorksAnnotationClass> AddAnnotationFile(const QString& vAnnFilePath, qint32 vPage,
                                                                qint32 vLeft, qint32 vTop,
                                                                bool vTargetGroupAnnotation,
                                                                bool vTargetCustomAnnotation,
                                                                qint32 vParentHandle = 0);
    // Reads every annotation on vPage (PageAnnotations of them) into the list.
    void GetAnnotation(qint32 vPage);
    void GetAllAnnotation();  // every page's
    void ReleaseAllAnnotation();
    void ShowAndHideAnnotation(bool vShow);
    qint32 GetAnnotationHandleFromNo(qint32 vPage, qint32 vNumber, qint32 vParentHandle = 0);
    // Where the vNumber-th annotation of vPage stands, in hundredths of a millimetre.
    qint32 GetAnnoInfoHorPos(qint32 vPage, qint32 vNumber);
    qint32 GetAnnoInfoVerPos(qint32 vPage, qint32 vNumber);

private:
    // The first half of every document call: make this document the engine's current one.
    DocumentEngine& Select();
    // The second half: a failure raises 6300 with vOperation + " : " + the runtime's text.
    void Check(const QString& vOperation) const;
    void CopyPageFields(bool vExtended);
    void CopyDocumentFields();
    // The page type of vPage is "made from an image", the only kind OCR works on.
    bool IsImagePage(qint32 vPage);
    void SetOcrOptions();
    void SetOcrOptionsV7();
    std::shared_ptr<DocuWorksAnnotationClass> NewAnnotation();
    std::shared_ptr<DocuWorksAnnotationClass> Add(std::shared_ptr<DocuWorksAnnotationClass> vAnnotation,
                                                  qint32 vType, qint32 vPage, qint32 vLeft, qint32 vTop,
                                                  qint32 vParentHandle);
    void ReadAnnotationInformation(qint32 vPage, qint32 vNumber);

    std::shared_ptr<DocumentEngine> engine_;
    qint32 documentHandle_ = 0;
    SDC annotationData_;
    QString dwPath_;
    QString imageCompress_;
    QString imageOption_;
    QString docuWorksVersion_;

    qint16 pages_ = 0, version_ = 0, originalData_ = 0, documentType_ = 0, permission_ = 0,
           showAnnotations_ = 0, documents_ = 0, binderColor_ = 0, binderSize_ = 0;

    qint32 pageWidth_ = 0, pageHeight_ = 0;
    qint16 pageType_ = 0, pageHorRes_ = 0, pageVerRes_ = 0, pageCompress_ = 0, pageAnnotations_ = 0;
    qint32 pageDegree_ = 0, pageOrgWidth_ = 0, pageOrgHeight_ = 0, pageOrgHorRes_ = 0,
           pageOrgVerRes_ = 0, pageImageWidth_ = 0, pageImageHeight_ = 0;

    qint32 pageColor_ = 0, pageImageDepth_ = 0;
    OcrOptions ocr_;
    qint32 bitmapWidth_ = 0, bitmapHeight_ = 0;
    SDC textPosition_;
};
