#pragma once
// The document runtime as the document classes reach it: one stateful object that holds the
// selected document, the result of the last call, and the fields of the last query. A call
// never throws; it leaves a result (0 for success, else a code of XdwResult) and a text, and
// the caller reads them at once, before anything else can call the engine. The fields of a
// query are read by their own members after the query that filled them.
//
// The state lives here, so that every engine (the Linux one, the absent one, the scripted one
// of the tests) reports the same way; an engine implements the operations and fills the
// protected fields. Members for attributes, annotations, OCR and conversion to files join this
// interface when the classes above need them.

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

    void Succeed();
    // A failure with the runtime's own text for the code.
    void Fail(qint32 vResult);
    void Fail(qint32 vResult, const QString& vText);

    DocumentFields document_;
    PageFields page_;
    qint32 bitmapWidth_ = 0;
    qint32 bitmapHeight_ = 0;
    BitmapHandleTable handles_;

private:
    qint32 lastResult_ = 0;
    QString lastErrorText_;
};
