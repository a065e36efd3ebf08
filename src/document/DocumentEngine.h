#pragma once
// The document runtime as the document classes reach it: one stateful object that holds the
// selected document, the result of the last call, and the fields of the last query. A call
// never throws; it leaves a result (0 for success, else a code of XdwResult) and a text, and
// the caller reads them at once, before anything else can call the engine. The fields of a
// query are read by their own members after the query that filled them.
//
// The state lives here, so that every engine (the Linux one, the absent one, the scripted one
// of the tests) reports the same way; an engine implements the operations and fills the
// protected fields. The first group of members every engine must have; the rest have a body
// here that refuses with "その他のエラーです。" and a text naming the operation, so that an
// engine builds before it knows them all and a caller learns plainly what it can't do.

#include "document/BitmapHandleTable.h"

#include <QImage>
#include <QString>

class DocumentEngine {
public:
    DocumentEngine() = default;
    virtual ~DocumentEngine() = default;
    DocumentEngine(const DocumentEngine&) = delete;
    DocumentEngine& operator=(const DocumentEngine&) = delete;

    // ---- documents. The handle of an opened document is read by ReadDocumentHandle; every
    // other document call works on the handle selected last.
    virtual void OpenDocument(const QString& vPath, qint16 vOption) = 0;
    virtual qint32 ReadDocumentHandle() = 0;
    virtual void SelectDocumentHandle(qint32 vHandle) = 0;
    virtual void CloseSelectedDocument() = 0;

    // ---- queries
    virtual void GetDocumentInformation() = 0;
    // Fills the seven page fields; the extended form also the seven extended ones.
    virtual void GetPageInformation(qint32 vPage) = 0;
    virtual void GetPageInformationEx(qint32 vPage) = 0;
    // Installation facts by key number (1 version, 2 install path, ...).
    virtual QString GetInformation(qint16 vKey) = 0;

    // ---- pages as pictures. A handle stays live until GlobalFree; HandleImage shows its
    // picture to whoever holds the handle, as a global memory handle would.
    virtual qint32 ConvertPageToImageHandle(qint32 vPage, qint32 vDpi, qint32 vColor) = 0;
    virtual void GlobalFree(qint32 vHandle);
    const QImage* HandleImage(qint32 vHandle) const { return handles_.Get(vHandle); }
    const BitmapHandleTable& Handles() const { return handles_; }
    qint32 BitmapWidth() const { return bitmapWidth_; }
    qint32 BitmapHeight() const { return bitmapHeight_; }

    virtual void Finalize() = 0;

    // ---- saving and whole files
    virtual void SaveDocument();
    // The picture kind of the conversions to files: a compression name, for TIFF and PDF
    // whether the file ends with this page (0 no, 1 yes), for PDF the way it is made.
    virtual void SetImageTiff(const QString& vCompress, qint32 vEndOfMultiPages);
    virtual void SetImageJpeg(const QString& vCompress);
    virtual void SetImagePdf(const QString& vCompress, qint32 vEndOfMultiPages, const QString& vConvertMethod);
    virtual void ConvertPageToImageFile(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                        const QString& vType);
    // Percentages of the page's width and height.
    virtual void ConvertPageToImageFileEx(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                          qint32 vXStart, qint32 vXEnd, qint32 vYStart, qint32 vYEnd);
    virtual void ConvertPageToThumbnailImageFile(qint32 vPage, const QString& vPath);
    // How an image is placed on the page it becomes; the positions are the words "CENTER",
    // "LEFT", "RIGHT" and "CENTER", "TOP", "BOTTOM". The newer form takes the zoom once more
    // and a word for the rest, which callers give as "DEFAULT".
    virtual void SetImageToDocumentOptions(const QString& vFitImage, const QString& vCompress, qint32 vZoom,
                                           qint32 vWidth, qint32 vHeight, const QString& vHorPos,
                                           const QString& vVerPos);
    virtual void SetImageToDocumentOptionsEx2(const QString& vFitImage, const QString& vCompress, qint32 vZoom,
                                              qint32 vWidth, qint32 vHeight, const QString& vHorPos,
                                              const QString& vVerPos, qint32 vZoom2, const QString& vOther);
    virtual void CreateDocumentFromImage(const QString& vImagePath, const QString& vDocumentPath);
    // Note the order: the document first.
    virtual void CreateDocumentFromImagePdf(const QString& vDocumentPath, const QString& vImagePath);
    // A conversion by the application of the file, which runs on its own; its status is 8 or 9
    // once it has ended.
    virtual void BeginCreationFromApp(const QString& vAppFilePath, const QString& vDocumentPath, bool vWithOrg);
    virtual void EndCreationFromApp();
    virtual qint32 GetStatusCreationFromApp();
    virtual void CancelCreationFromApp();
    // A copy of vInputPath that asks for passwords; vPermission sums what stays allowed.
    virtual void ProtectDocument(const QString& vInputPath, const QString& vOutputPath, qint32 vProtectType,
                                 qint32 vPermission, const QString& vOpenPass, const QString& vFullAccessPass,
                                 const QString& vComment);
    virtual void AddMergeInput(const QString& vPath);
    virtual void ClearMergeInputs();
    virtual void MergeDocuments(const QString& vOutputPath);
    virtual void CreateBinder(const QString& vPath);
    virtual void InsertDocumentToBinder(const QString& vDocumentPath, const QString& vBinderPath, qint32 vPosition);
    // Reads an image file's header into the four image fields.
    virtual void ReadImageFile(const QString& vImagePath);
    virtual bool IsEnabledForOcr();

    // ---- OCR of the selected document
    virtual void SetOcrOptions(const QString& vNoiseReduction, const QString& vLanguage, bool vInsertSpaceCharacter,
                               bool vJapaneseKnowledgeProcessing, const QString& vForm, const QString& vColumn,
                               bool vDisplayProcess, bool vAutoDeskew);
    virtual void ApplyOcr(qint32 vPage);
    virtual void SetOcrOptionsV7(const QString& vNoiseReduction, const QString& vLanguage, bool vInsertSpaceCharacter,
                                 const QString& vForm, const QString& vColumn, bool vDisplayProcess,
                                 bool vAutoDeskew, bool vPriority, const QString& vEngineLevel,
                                 const QString& vLanguageMixedRate, bool vHalfSizeChar);
    virtual void ApplyOcrV7(qint32 vPage);
    virtual void SetOcrOptionV7AddRect(qint32 vLeft, qint32 vTop, qint32 vRight, qint32 vBottom);
    virtual void SetOcrOptionV7ClearRect();
    // The options of ClearOcrData are handed on as they come.
    virtual void SetClearOcrDataOptions(qint32 vOption1, qint32 vOption2, qint32 vOption3, const QString& vOption4);
    virtual void ClearOcrData(qint32 vPage);

    // ---- text. A page without text fails with XdwResult::InvalidOperation.
    virtual QString GetPageTextToMemory(qint32 vPage);
    // The page's words as "x,y,width,height,status" rectangles, joined by "|" within a word and
    // by "/" between words.
    virtual QString GetTextPosition(qint32 vPage);

    // ---- pages of the selected document
    virtual void GetPage(qint32 vPage, const QString& vPath);
    virtual void InsertDocument(qint32 vPosition, const QString& vPath);
    virtual void DeletePage(qint32 vPage);
    virtual void RotatePage(qint32 vPage, qint32 vDegree);
    virtual void ReducePageNoise(qint32 vPage, const QString& vLevel);
    virtual void GetPageColorInformation(qint32 vPage);
    virtual qint16 PageColor() const { return colour_.color; }
    virtual qint16 PageImageDepth() const { return colour_.imageDepth; }
    // The direct route: it leaves LastResult alone and answers with the result code.
    virtual qint32 RotatePageAuto(qint32 vDocumentHandle, qint32 vPage);

    // ---- attributes. An attribute that isn't there fails with XdwResult::InvalidArg.
    virtual void SetUserAttribute(const QString& vName, const QString& vValue);
    virtual QString GetUserAttribute(const QString& vName);
    virtual void DeleteUserAttribute(const QString& vName);
    // Types: 0 integer, 1 text, 2 date as seconds since 1970/01/01 00:00:00, 3 boolean "1"/"0".
    virtual void SetDocumentAttribute(const QString& vName, const QString& vValue, qint16 vType);
    // Leaves the type of the value in DocumentAttributeType.
    virtual QString GetDocumentAttribute(const QString& vName);
    virtual void DeleteDocumentAttribute(const QString& vName);
    qint16 DocumentAttributeType() const { return documentAttributeType_; }
    // Takes the attributes of another document over.
    virtual void SucceedAttribute(const QString& vSourcePath, qint32 vDocument, qint32 vOption);

    // ---- a binder's documents and a document's original data, by position from 1
    virtual void GetDocumentInformationInBinder(qint32 vPosition);
    virtual QString GetDocumentNameInBinder(qint32 vPosition);
    virtual void GetDocumentFromBinder(qint32 vPosition, const QString& vPath);
    virtual void DeleteDocumentInBinder(qint32 vPosition);
    virtual void InsertOriginalData(qint32 vPosition, const QString& vPath);
    virtual void DeleteOriginalData(qint32 vPosition);
    virtual QString GetFileNameOfOriginalData(qint32 vPosition);
    virtual void GetFileFromOriginalData(qint32 vPosition, const QString& vPath);

    // ---- annotations. A new one's handle is read by ReadAnnotationHandle. vWidth and vHeight
    // are the size of a rectangle or a sticky note and the run of a line; vBitmapPath is a
    // bitmap annotation's picture.
    virtual void AddAnnotation(qint32 vType, qint32 vPage, qint32 vX, qint32 vY, qint32 vWidth,
                               qint32 vHeight, const QString& vBitmapPath);
    virtual void AddAnnotationOnParentAnnotation(qint32 vType, qint32 vParentHandle, qint32 vX, qint32 vY,
                                                 qint32 vWidth, qint32 vHeight, const QString& vBitmapPath);
    virtual void AddAnnotationFromAnnFile(const QString& vAnnFilePath, qint32 vPage, qint32 vX, qint32 vY,
                                          bool vTargetGroupAnnotation, bool vTargetCustomAnnotation,
                                          qint32 vParentHandle);
    virtual qint32 ReadAnnotationHandle();
    // Fills the annotation fields for the vIndex-th annotation of a page (vParentHandle 0) or
    // of a group.
    virtual void GetAnnotationInformation(qint32 vPage, qint32 vIndex, qint32 vParentHandle);
    virtual qint32 GetAnnotationHandleFromNo(qint32 vPage, qint32 vNumber, qint32 vParentHandle);
    // The annotation the attribute and removal calls work on.
    virtual void SelectAnnotationHandle(qint32 vHandle);
    virtual QString GetAnnotationAttribute(const QString& vName);
    virtual void SetAnnotationAttribute(const QString& vName, qint32 vDataType, const QString& vValue);
    virtual void RemoveAnnotation();
    virtual void ShowAndHideAnnotation(bool vShow);

    // ---- the last call
    qint32 LastResult() const { return lastResult_; }
    QString LastErrorText() const { return lastErrorText_; }

    // ---- fields of GetDocumentInformation
    qint16 Pages() const { return document_.pages; }
    qint16 Version() const { return document_.version; }
    qint16 OriginalData() const { return document_.originalData; }
    qint16 DocumentType() const { return document_.documentType; }
    qint16 Permission() const { return document_.permission; }
    qint16 ShowAnnotations() const { return document_.showAnnotations; }
    qint16 Documents() const { return document_.documents; }
    qint16 BinderColor() const { return document_.binderColor; }
    qint16 BinderSize() const { return document_.binderSize; }

    // ---- fields of GetPageInformation; sizes in hundredths of a millimetre
    qint32 PageWidth() const { return page_.width; }
    qint32 PageHeight() const { return page_.height; }
    qint16 PageType() const { return page_.pageType; }
    qint16 PageHorRes() const { return page_.horRes; }
    qint16 PageVerRes() const { return page_.verRes; }
    qint16 PageCompress() const { return page_.compress; }
    qint16 PageAnnotations() const { return page_.annotations; }
    // ---- and the extended ones of GetPageInformationEx
    qint32 PageDegree() const { return page_.degree; }
    qint32 PageOrgWidth() const { return page_.orgWidth; }
    qint32 PageOrgHeight() const { return page_.orgHeight; }
    qint32 PageOrgHorRes() const { return page_.orgHorRes; }
    qint32 PageOrgVerRes() const { return page_.orgVerRes; }
    qint32 PageImageWidth() const { return page_.imageWidth; }
    qint32 PageImageHeight() const { return page_.imageHeight; }

    // ---- fields of ReadImageFile
    qint32 ImagePixelWidth() const { return image_.pixelWidth; }
    qint32 ImagePixelHeight() const { return image_.pixelHeight; }
    float ImageHorizontalDpi() const { return image_.horizontalDpi; }
    float ImageVerticalDpi() const { return image_.verticalDpi; }

    // ---- fields of GetAnnotationInformation; positions and sizes in hundredths of a millimetre
    qint32 AnnotationHandle() const { return annotation_.handle; }
    qint32 AnnotationX() const { return annotation_.x; }
    qint32 AnnotationY() const { return annotation_.y; }
    qint32 AnnotationWidth() const { return annotation_.width; }
    qint32 AnnotationHeight() const { return annotation_.height; }
    qint32 AnnotationChildren() const { return annotation_.children; }
    qint32 AnnotationTypeCode() const { return annotation_.typeCode; }

protected:
    struct DocumentFields {
        qint16 pages = 0, version = 0, originalData = 0, documentType = 0, permission = 0,
               showAnnotations = 0, documents = 0, binderColor = 0, binderSize = 0;
    };
    struct PageFields {
        qint32 width = 0, height = 0;
        qint16 pageType = 0, horRes = 0, verRes = 0, compress = 0, annotations = 0;
        qint32 degree = 0, orgWidth = 0, orgHeight = 0, orgHorRes = 0, orgVerRes = 0,
               imageWidth = 0, imageHeight = 0;
    };

    struct ColourFields {
        qint16 color = 0, imageDepth = 0;
    };
    struct ImageFields {
        qint32 pixelWidth = 0, pixelHeight = 0;
        float horizontalDpi = 0, verticalDpi = 0;
    };
    struct AnnotationFields {
        qint32 handle = 0, x = 0, y = 0, width = 0, height = 0, children = 0, typeCode = 0;
    };

    void Succeed();
    // A failure with the runtime's own text for the code.
    void Fail(qint32 vResult);
    void Fail(qint32 vResult, const QString& vText);
    // What the members without a body of their engine do: fail, naming vOperation. An engine
    // that stands for a runtime that isn't there answers with its own failure instead.
    virtual void Unavailable(const QString& vOperation);

    DocumentFields document_;
    PageFields page_;
    qint32 bitmapWidth_ = 0;
    qint32 bitmapHeight_ = 0;
    BitmapHandleTable handles_;
    ColourFields colour_;
    ImageFields image_;
    AnnotationFields annotation_;
    qint16 documentAttributeType_ = 0;

private:
    qint32 lastResult_ = 0;
    QString lastErrorText_;
};
