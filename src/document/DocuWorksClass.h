#pragma once
// The doorway to the document runtime: opens documents into DocuWorksFileClass objects and
// keeps them in its opened list, answers what the runtime knows of its installation, and gives
// bitmap handles back. A caller makes one for a job and drops it afterwards; dropping it drops
// the documents it opened, and so closes them.
//
//     DocuWorksClass dw;
//     dw.OpenXdw(path, 1);
//     SDC list = dw.RefDwFileData();
//     for (list->TopData(); !list->EndOfData(); list->NextData()) {
//         std::shared_ptr<DocuWorksFileClass> file = dw.RefDwFile();
//         ...
//     }
//
// It also carries the whole-file work: images and application files made into documents, a
// document made image-only, merging, binders and protected copies. Their settings are fields
// of this object, set before the call.

#include "store/StructuredDataClass.h"

#include <QString>
#include <QtGlobal>

#include <functional>
#include <memory>

class DocumentEngine;
class DocuWorksFileClass;

class DocuWorksClass {
public:
    DocuWorksClass();
    ~DocuWorksClass();  // releases the opened documents in opening order
    DocuWorksClass(const DocuWorksClass&) = delete;
    DocuWorksClass& operator=(const DocuWorksClass&) = delete;

    // Every document opened through this object, as references, in opening order; walk it
    // with TopData, EndOfData and NextData.
    SDC RefDwFileData() const { return dwFileData_; }
    // The document under the opened list's cursor, or null past its end.
    std::shared_ptr<DocuWorksFileClass> RefDwFile() const;

    // The input paths of MergeXdwDocument, made on first use; add them with AddData.
    SDC RefMergeFileList();

    // ---- placing of an image on the page it becomes
    QString Compress() const { return compress_; }
    void SetCompress(const QString& vCompress) { compress_ = vCompress; }
    QString FitImage() const { return fitImage_; }
    void SetFitImage(const QString& vFitImage) { fitImage_ = vFitImage; }
    qint32 Zoom() const { return zoom_; }
    void SetZoom(qint32 vZoom) { zoom_ = vZoom; }
    qint32 Width() const { return width_; }
    void SetWidth(qint32 vWidth) { width_ = vWidth; }
    qint32 Height() const { return height_; }
    void SetHeight(qint32 vHeight) { height_ = vHeight; }
    // "CENTER", "LEFT", "RIGHT" and "CENTER", "TOP", "BOTTOM"; any other text, lower case
    // included, is "CENTER".
    QString HorPos() const;
    void SetHorPos(const QString& vHorPos);
    QString VerPos() const;
    void SetVerPos(const QString& vVerPos);

    // ---- what a protected copy allows, and its texts (each at most 255 bytes, checked when
    // the copy is made). A flag counts once however often it is set.
    void SetProtectPermissionDocEdit(bool vAllow) { SetPermission(protectDocEdit_, vAllow, 2); }
    void SetProtectPermissionAnnoEdit(bool vAllow) { SetPermission(protectAnnoEdit_, vAllow, 4); }
    void SetProtectPermissionPrint(bool vAllow) { SetPermission(protectPrint_, vAllow, 8); }
    void SetProtectPermissionCopy(bool vAllow) { SetPermission(protectCopy_, vAllow, 16); }
    void SetProtectOpenPass(const QString& vPass) { protectOpenPass_ = vPass; }
    void SetProtectFullAccessPass(const QString& vPass) { protectFullAccessPass_ = vPass; }
    void SetProtectComment(const QString& vComment) { protectComment_ = vComment; }

    // ---- progress of ConvertXdwOfImage: the process name and the page count at the start,
    // the process name after each page.
    using ProgressStartHandler = std::function<void(const QString& vProcessName, qint32 vCount)>;
    using ProgressNextHandler = std::function<void(const QString& vProcessName)>;
    void OnProgressStart(ProgressStartHandler vHandler) { progressStart_ = std::move(vHandler); }
    void OnProgressNext(ProgressNextHandler vHandler) { progressNext_ = std::move(vHandler); }

    // Raises 6300 for a file that isn't there, and with the document's own texts when it
    // doesn't open; a document that failed to open stays in the list all the same.
    std::shared_ptr<DocuWorksFileClass> OpenXdw(const QString& vPath, qint16 vOption);

    // True when vPath opens as a document (and is closed again at once); any failure is False.
    bool OpenCheck(const QString& vPath);
    // OpenCheck until it succeeds or vRetrySec seconds have passed, with a pause of 100 ms
    // between tries in which the window stays alive. 0 seconds makes no try and says False.
    bool RetryOpenCheck(const QString& vPath, qint32 vRetrySec);

    // ---- whole files; every failure raises 6300 with the operation's name in front
    // With the seven placing values, once.
    void CreateXdwFromImageFile(const QString& vImagePath, const QString& vXdwPath);
    // With the newer placing call, and tried again while the image is in use.
    void CreateXdwFromImageFileEx2(const QString& vImagePath, const QString& vXdwPath);
    void CreateXdwFromImagePdfFile(const QString& vImagePath, const QString& vXdwPath);
    // Waits about ten seconds for the application's conversion, then cancels it.
    void BeginCreationFromAppFile(const QString& vAppFilePath, const QString& vXdwPath, bool vWithOrg);
    // Turns the document into one of page pictures, in place, through files in vTempFolderPath.
    void ConvertXdwOfImage(const QString& vTargetFileName, const QString& vTempFolderPath, qint32 vDpi,
                           qint32 vColor);
    void ProtectDocument(const QString& vInputPath, const QString& vOutputPath);
    // Merges the merge list's paths, in order, into vOutputPath.
    void MergeXdwDocument(const QString& vOutputPath);
    void CreateBinder(const QString& vXdwFilePath);
    void InsertDocumentToBinder(const QString& vXdwFilePath, const QString& vBinderFilePath, qint32 vPosition);

    // ---- an image's size before it becomes a document. GetImageInformation raises 6800.
    void GetImageInformation(const QString& aImagePathFileName);
    // In hundredths of a millimetre, rounded to the nearest (halves to even).
    qint32 GetImageWidth() const;
    qint32 GetImageHeight() const;
    // vFullSizeMm / vFullSizePixel * vTargetPixel, rounded as above.
    static qint32 ConvertMillimeter(qint32 vFullSizeMm, qint32 vFullSizePixel, qint32 vTargetPixel);

    static qint64 GetProcessId();
    bool IsEnabledForOcr() const;

    // What the runtime knows of its installation: "VERSION", "INSTALLPATH", "BINPATH",
    // "PLUGINPATH", "FOLDERROOTPATH", "USERFOLDERPATH", "SYSTEMFOLDERPATH", "RECEIVEFOLDERPATH",
    // "SENDFOLDERPATH", "DWINPUTPATH", "DWDESKPATH", "DWVIEWERPATH", "DWVLTPATH"; any other key
    // is taken as "VERSION".
    QString GetInformation(const QString& vKey) const;
    QString DocuWorksVersion() const { return GetInformation(QStringLiteral("VERSION")); }
    // The text before the first "." ("7" of "7.3.0"), or the whole text when it has none.
    static QString GetPartOfMajorVersion(const QString& vVersionString);

    // Gives back a handle of DocuWorksFileClass::ConvertPageToImageHandle.
    void GlobalFree(qint32 vHandle) const;
    // Shuts the runtime down, once, at the end of the program.
    void Finalize() const;

    // Bytes of the text on code page 932: the runtime's names are limited in those.
    static qsizetype CLibLenB(const QString& pInString);

private:
    static qint16 InformationKeyNumber(const QString& vKey);
    void SetPermission(bool& vFlag, bool vAllow, qint16 vValue);
    // Converts until the result is something else than the file being in use, 31 tries at
    // most; returns the last result.
    qint32 RetryWhileInUse(const std::function<void()>& vCall) const;
    // One page of ConvertXdwOfImage; vBase is the document the pages gather in.
    void ConvertPageOfImage(DocuWorksFileClass& vSource, qint32 vPage, const QString& vTempFolderPath,
                            qint32 vDpi, qint32 vColor, QString& vBase);

    std::shared_ptr<DocumentEngine> engine_;
    SDC dwFileData_;
    SDC mergeFileList_;

    QString compress_ = QStringLiteral("NORMAL");
    QString fitImage_ = QStringLiteral("FITDEF");
    qint32 zoom_ = 0, width_ = 0, height_ = 0;
    qint16 horPos_ = 0, verPos_ = 0;

    qint16 permission_ = 0;
    bool protectDocEdit_ = false, protectAnnoEdit_ = false, protectPrint_ = false, protectCopy_ = false;
    QString protectOpenPass_, protectFullAccessPass_, protectComment_;

    ProgressStartHandler progressStart_;
    ProgressNextHandler progressNext_;
};
