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
// The whole-file conversions (from images, merging, binders, protection) come with their
// users; their settings and lists will be fields of this class.

#include "store/StructuredDataClass.h"

#include <QString>
#include <QtGlobal>

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

    // Raises 6300 for a file that isn't there, and with the document's own texts when it
    // doesn't open; a document that failed to open stays in the list all the same.
    std::shared_ptr<DocuWorksFileClass> OpenXdw(const QString& vPath, qint16 vOption);

    // True when vPath opens as a document (and is closed again at once); any failure is False.
    bool OpenCheck(const QString& vPath);
    // OpenCheck until it succeeds or vRetrySec seconds have passed, with a pause of 100 ms
    // between tries in which the window stays alive. 0 seconds makes no try and says False.
    bool RetryOpenCheck(const QString& vPath, qint32 vRetrySec);

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

    std::shared_ptr<DocumentEngine> engine_;
    SDC dwFileData_;
};
