#pragma once
// One opened document. It holds the runtime's handle of the document and keeps what the
// runtime last reported about the document and about the page queried last, so that callers
// read fields instead of asking again. Every call selects this document's handle first and
// reads the result right after, because the engine knows one selected document and one last
// result for the whole process.
//
// The viewer needs opening, the document query and pages as bitmap handles; the families for
// annotations, OCR, attributes, binders and conversion to files follow the same pattern
// (Select, call, Check) when they are needed.

#include <QString>
#include <QtGlobal>

#include <memory>

class DocumentEngine;

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

    // ---- a page as a bitmap handle. vColor 0 or 1; vDpi 10 to 600, or 0 for the page's own
    // resolution. The handle is the caller's to give back with DocuWorksClass::GlobalFree.
    qint32 ConvertPageToImageHandle(qint32 vPage, qint32 vDpi, qint32 vColor);
    // Size of the last handle. Kept as 16-bit numbers, as callers always read them; a size
    // that doesn't fit raises 6 (overflow).
    qint16 BitmapWidth() const;
    qint16 BitmapHeight() const;

private:
    // The first half of every document call: make this document the engine's current one.
    DocumentEngine& Select();
    // The second half: a failure raises 6300 with vOperation + " : " + the runtime's text.
    void Check(const QString& vOperation) const;
    void CopyPageFields(bool vExtended);

    std::shared_ptr<DocumentEngine> engine_;
    qint32 documentHandle_ = 0;
    QString dwPath_;
    QString docuWorksVersion_;

    qint16 pages_ = 0, version_ = 0, originalData_ = 0, documentType_ = 0, permission_ = 0,
           showAnnotations_ = 0, documents_ = 0, binderColor_ = 0, binderSize_ = 0;

    qint32 pageWidth_ = 0, pageHeight_ = 0;
    qint16 pageType_ = 0, pageHorRes_ = 0, pageVerRes_ = 0, pageCompress_ = 0, pageAnnotations_ = 0;
    qint32 pageDegree_ = 0, pageOrgWidth_ = 0, pageOrgHeight_ = 0, pageOrgHorRes_ = 0,
           pageOrgVerRes_ = 0, pageImageWidth_ = 0, pageImageHeight_ = 0;

    qint32 bitmapWidth_ = 0, bitmapHeight_ = 0;
};
