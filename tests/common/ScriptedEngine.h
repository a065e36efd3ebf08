#pragma once
// A document engine for tests, header-only (only programs that link mq_document include it).
// Documents are scripted by path; any call can be made to fail, always, the next few times, or
// with a text of the test's own. A page renders as a picture of its number
// (common/PagePicture.h), so a test or a screenshot can tell which page a pane shows. Calls are
// counted, the library's calls are written down with their arguments, and the bitmap handles
// live in the engine's table, so a test can see that each one was freed.
//
// The library's members do just enough to be believable: documents made from images become
// scripted documents of one page on disk, inserting adds pages, attributes are kept by name,
// annotations are handed out from a scripted list. Answers of queries (text, status numbers)
// are scripted per call; the query fields are the test's to fill through the Fill... members.

#include "common/PagePicture.h"
#include "document/DocumentEngine.h"
#include "document/XdwApi.h"

#include <QHash>
#include <QList>
#include <QString>

#include <QFile>

#include <cmath>
#include <deque>
#include <map>
#include <memory>
#include <vector>

struct ScriptedPage {
    qint32 width = 21000;   // hundredths of a millimetre: A4 upright
    qint32 height = 29700;
    qint16 horRes = 200;
    qint16 verRes = 200;
    qint16 pageType = 1;    // made from an image
    qint16 compress = 0;
    qint16 annotations = 0;
};

struct ScriptedDocument {
    QList<ScriptedPage> pages;
    qint16 documentType = 0;
    qint16 permission = 0;
    int inUseOpens = 0;     // this many opens fail with the file in use
    int opens = 0;          // opens that reached the document so far
};

class ScriptedEngine : public DocumentEngine {
public:
    ScriptedEngine() { information_[1] = QStringLiteral("9.0.0"); }

    ScriptedDocument& AddDocument(const QString& vPath, int vPages, ScriptedPage vPage = {})
    {
        ScriptedDocument& doc = documents_[vPath];
        doc.pages = QList<ScriptedPage>(vPages, vPage);
        return doc;
    }
    ScriptedDocument* Document(const QString& vPath) { return &documents_.at(vPath); }
    // Installation facts by key number; 1 (the version) is "9.0.0" until told otherwise.
    void SetInformation(qint16 vKey, const QString& vText) { information_[vKey] = vText; }
    // Every later call of that name fails with vResult; 0 takes it back.
    void FailCall(const QString& vCall, qint32 vResult) { failures_[vCall] = vResult; }
    // The next vTimes calls of that name fail with vResult, before any failure set for good.
    void FailNext(const QString& vCall, qint32 vResult, int vTimes = 1)
    {
        nextFailures_[vCall].insert(nextFailures_[vCall].end(), vTimes, vResult);
    }
    // Failures of that call carry vText instead of the runtime's text for their code.
    void SetFailureText(const QString& vCall, const QString& vText) { failureTexts_[vCall] = vText; }
    // What a query call answers, one by one; the last answer stays.
    void SetAnswers(const QString& vCall, const QStringList& vAnswers) { answers_[vCall] = vAnswers; }

    int Calls(const QString& vCall) const { return calls_.value(vCall); }
    qsizetype OpenDocuments() const { return open_.size(); }

    // The library's calls in order, each as its name and its arguments as text ("true" and
    // "false" for flags).
    struct Call {
        QString name;
        QStringList args;
    };
    const std::vector<Call>& Log() const { return log_; }
    void ClearLog() { log_.clear(); }
    QStringList Names() const
    {
        QStringList names;
        for (const Call& call : log_)
            names.append(call.name);
        return names;
    }
    // The arguments of the last call of that name; empty when it wasn't made.
    QStringList Last(const QString& vCall) const
    {
        for (auto it = log_.rbegin(); it != log_.rend(); ++it) {
            if (it->name == vCall)
                return it->args;
        }
        return {};
    }

    // The fields the queries leave, for the test to fill.
    ImageFields& FillImage() { return image_; }
    ColourFields& FillColour() { return colour_; }
    // GetAnnotationInformation answers annotations[index - 1], whatever the page.
    std::vector<AnnotationFields> annotations;
    // Attributes as they stand: user ones by name, document ones by name with their type.
    QHash<QString, QString> userAttributes;
    std::map<QString, std::pair<QString, qint16>> documentAttributes;
    QStringList mergeInputs;

    void OpenDocument(const QString& vPath, qint16) override
    {
        if (Refused(QStringLiteral("OpenDocument")))
            return;
        if (!documents_.contains(vPath))
            return Fail(XdwResult::FileNotFound);
        if (ScriptedDocument& doc = documents_.at(vPath); ++doc.opens <= doc.inUseOpens)
            return Fail(XdwResult::FileInUse);
        open_.insert(++lastHandle_, vPath);
        Succeed();
    }
    qint32 ReadDocumentHandle() override { Succeed(); return lastHandle_; }
    void SelectDocumentHandle(qint32 vHandle) override
    {
        selected_ = vHandle;
        open_.contains(vHandle) ? Succeed() : Fail(XdwResult::InvalidArg);
    }
    void CloseSelectedDocument() override
    {
        if (Selected(QStringLiteral("CloseSelectedDocument"))) {
            open_.remove(selected_);
            Succeed();
        }
    }
    void GetDocumentInformation() override
    {
        if (const ScriptedDocument* doc = Selected(QStringLiteral("GetDocumentInformation"))) {
            document_ = {};
            document_.pages = static_cast<qint16>(doc->pages.size());
            document_.documentType = doc->documentType;
            document_.permission = doc->permission;
            Succeed();
        }
    }
    // The plain query fills the extended fields too: the caller mustn't read them after it.
    void GetPageInformation(qint32 vPage) override { QueryPage(QStringLiteral("GetPageInformation"), vPage); }
    void GetPageInformationEx(qint32 vPage) override { QueryPage(QStringLiteral("GetPageInformationEx"), vPage); }
    QString GetInformation(qint16 vKey) override
    {
        if (Refused(QStringLiteral("GetInformation")))
            return {};
        information_.contains(vKey) ? Succeed() : Fail(XdwResult::InfoNotFound);
        return information_.value(vKey);
    }
    qint32 ConvertPageToImageHandle(qint32 vPage, qint32 vDpi, qint32) override
    {
        const ScriptedPage* page = SelectedPage(QStringLiteral("ConvertPageToImageHandle"), vPage);
        if (!page)
            return 0;
        QImage picture = pagepicture::Draw(vPage, PixelSize(*page, vDpi));  // in colour, whatever asked
        bitmapWidth_ = picture.width();
        bitmapHeight_ = picture.height();
        Succeed();
        return handles_.Take(std::move(picture));
    }
    void Finalize() override
    {
        if (!Refused(QStringLiteral("Finalize")))
            Succeed();
    }

    // ---- saving and whole files
    void SaveDocument() override { Doc(u"SaveDocument"); }
    void SetImageTiff(const QString& vCompress, qint32 vEnd) override { Doc(u"SetImageTiff", vCompress, vEnd); }
    void SetImageJpeg(const QString& vCompress) override { Doc(u"SetImageJpeg", vCompress); }
    void SetImagePdf(const QString& vCompress, qint32 vEnd, const QString& vMethod) override
    {
        Doc(u"SetImagePdf", vCompress, vEnd, vMethod);
    }
    void ConvertPageToImageFile(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                const QString& vType) override
    {
        if (const ScriptedDocument* doc = Doc(u"ConvertPageToImageFile", vPage, vPath, vDpi, vColor, vType))
            WriteIfPage(*doc, vPage, vPath);
    }
    void ConvertPageToImageFileEx(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor, qint32 vXStart,
                                  qint32 vXEnd, qint32 vYStart, qint32 vYEnd) override
    {
        if (const ScriptedDocument* doc = Doc(u"ConvertPageToImageFileEx", vPage, vPath, vDpi, vColor, vXStart,
                                              vXEnd, vYStart, vYEnd))
            WriteIfPage(*doc, vPage, vPath);
    }
    void ConvertPageToThumbnailImageFile(qint32 vPage, const QString& vPath) override
    {
        if (const ScriptedDocument* doc = Doc(u"ConvertPageToThumbnailImageFile", vPage, vPath))
            WriteIfPage(*doc, vPage, vPath);
    }
    void SetImageToDocumentOptions(const QString& vFit, const QString& vCompress, qint32 vZoom, qint32 vWidth,
                                   qint32 vHeight, const QString& vHorPos, const QString& vVerPos) override
    {
        Take(u"SetImageToDocumentOptions", vFit, vCompress, vZoom, vWidth, vHeight, vHorPos, vVerPos);
    }
    void SetImageToDocumentOptionsEx2(const QString& vFit, const QString& vCompress, qint32 vZoom, qint32 vWidth,
                                      qint32 vHeight, const QString& vHorPos, const QString& vVerPos,
                                      qint32 vZoom2, const QString& vOther) override
    {
        Take(u"SetImageToDocumentOptionsEx2", vFit, vCompress, vZoom, vWidth, vHeight, vHorPos, vVerPos, vZoom2,
             vOther);
    }
    void CreateDocumentFromImage(const QString& vImagePath, const QString& vDocumentPath) override
    {
        if (Take(u"CreateDocumentFromImage", vImagePath, vDocumentPath))
            MakeDocument(vImagePath, vDocumentPath);
    }
    void CreateDocumentFromImagePdf(const QString& vDocumentPath, const QString& vImagePath) override
    {
        if (Take(u"CreateDocumentFromImagePdf", vDocumentPath, vImagePath))
            MakeDocument(vImagePath, vDocumentPath);
    }
    void BeginCreationFromApp(const QString& vApp, const QString& vDocument, bool vWithOrg) override
    {
        Take(u"BeginCreationFromApp", vApp, vDocument, vWithOrg);
    }
    void EndCreationFromApp() override { Take(u"EndCreationFromApp"); }
    qint32 GetStatusCreationFromApp() override { return Number(u"GetStatusCreationFromApp"); }
    void CancelCreationFromApp() override { Take(u"CancelCreationFromApp"); }
    void ProtectDocument(const QString& vIn, const QString& vOut, qint32 vType, qint32 vPermission,
                         const QString& vOpenPass, const QString& vFullPass, const QString& vComment) override
    {
        Take(u"ProtectDocument", vIn, vOut, vType, vPermission, vOpenPass, vFullPass, vComment);
    }
    void AddMergeInput(const QString& vPath) override
    {
        if (Take(u"AddMergeInput", vPath))
            mergeInputs.append(vPath);
    }
    void ClearMergeInputs() override
    {
        if (Take(u"ClearMergeInputs"))
            mergeInputs.clear();
    }
    void MergeDocuments(const QString& vOutputPath) override { Take(u"MergeDocuments", vOutputPath); }
    void CreateBinder(const QString& vPath) override { Take(u"CreateBinder", vPath); }
    void InsertDocumentToBinder(const QString& vDocument, const QString& vBinder, qint32 vPosition) override
    {
        Take(u"InsertDocumentToBinder", vDocument, vBinder, vPosition);
    }
    void ReadImageFile(const QString& vPath) override { Take(u"ReadImageFile", vPath); }
    bool IsEnabledForOcr() override { return Number(u"IsEnabledForOcr") != 0; }

    // ---- OCR
    void SetOcrOptions(const QString& vNoise, const QString& vLanguage, bool vSpace, bool vKnowledge,
                       const QString& vForm, const QString& vColumn, bool vDisplay, bool vDeskew) override
    {
        Doc(u"SetOcrOptions", vNoise, vLanguage, vSpace, vKnowledge, vForm, vColumn, vDisplay, vDeskew);
    }
    void ApplyOcr(qint32 vPage) override { Doc(u"ApplyOcr", vPage); }
    void SetOcrOptionsV7(const QString& vNoise, const QString& vLanguage, bool vSpace, const QString& vForm,
                         const QString& vColumn, bool vDisplay, bool vDeskew, bool vPriority,
                         const QString& vLevel, const QString& vMixedRate, bool vHalfSize) override
    {
        Doc(u"SetOcrOptionsV7", vNoise, vLanguage, vSpace, vForm, vColumn, vDisplay, vDeskew, vPriority, vLevel,
            vMixedRate, vHalfSize);
    }
    void ApplyOcrV7(qint32 vPage) override { Doc(u"ApplyOcrV7", vPage); }
    void SetOcrOptionV7AddRect(qint32 vLeft, qint32 vTop, qint32 vRight, qint32 vBottom) override
    {
        Doc(u"SetOcrOptionV7AddRect", vLeft, vTop, vRight, vBottom);
    }
    void SetOcrOptionV7ClearRect() override { Doc(u"SetOcrOptionV7ClearRect"); }
    void SetClearOcrDataOptions(qint32 v1, qint32 v2, qint32 v3, const QString& v4) override
    {
        Doc(u"SetClearOcrDataOptions", v1, v2, v3, v4);
    }
    void ClearOcrData(qint32 vPage) override { Doc(u"ClearOcrData", vPage); }

    // ---- text
    QString GetPageTextToMemory(qint32 vPage) override { return Text(u"GetPageTextToMemory", vPage); }
    QString GetTextPosition(qint32 vPage) override { return Text(u"GetTextPosition", vPage); }

    // ---- pages
    void GetPage(qint32 vPage, const QString& vPath) override { Doc(u"GetPage", vPage, vPath); }
    void InsertDocument(qint32 vPosition, const QString& vPath) override
    {
        const ScriptedDocument* doc = Doc(u"InsertDocument", vPosition, vPath);
        if (!doc)
            return;
        if (!documents_.contains(vPath) || vPosition < 1 || vPosition > doc->pages.size() + 1)
            return Fail(XdwResult::InvalidArg);
        ScriptedDocument& into = documents_.at(open_.value(selected_));
        const QList<ScriptedPage> pages = documents_.at(vPath).pages;
        for (qsizetype i = 0; i < pages.size(); ++i)
            into.pages.insert(vPosition - 1 + i, pages[i]);
    }
    void DeletePage(qint32 vPage) override { Doc(u"DeletePage", vPage); }
    void RotatePage(qint32 vPage, qint32 vDegree) override { Doc(u"RotatePage", vPage, vDegree); }
    void ReducePageNoise(qint32 vPage, const QString& vLevel) override { Doc(u"ReducePageNoise", vPage, vLevel); }
    void GetPageColorInformation(qint32 vPage) override { Doc(u"GetPageColorInformation", vPage); }
    qint32 RotatePageAuto(qint32 vHandle, qint32 vPage) override
    {
        // The direct route: the result is the answer, LastResult stays as it was.
        const qint32 kept = LastResult();
        const QString keptText = LastErrorText();
        const qint32 result = Take(u"RotatePageAuto", vHandle, vPage) ? XdwResult::Success : LastResult();
        kept == XdwResult::Success ? Succeed() : Fail(kept, keptText);
        return result;
    }

    // ---- attributes
    void SetUserAttribute(const QString& vName, const QString& vValue) override
    {
        if (Doc(u"SetUserAttribute", vName, vValue))
            userAttributes.insert(vName, vValue);
    }
    QString GetUserAttribute(const QString& vName) override
    {
        if (!Doc(u"GetUserAttribute", vName))
            return {};
        if (!userAttributes.contains(vName))
            Fail(XdwResult::InvalidArg);
        return userAttributes.value(vName);
    }
    void DeleteUserAttribute(const QString& vName) override
    {
        if (Doc(u"DeleteUserAttribute", vName))
            userAttributes.remove(vName);
    }
    void SetDocumentAttribute(const QString& vName, const QString& vValue, qint16 vType) override
    {
        if (Doc(u"SetDocumentAttribute", vName, vValue, vType))
            documentAttributes[vName] = {vValue, vType};
    }
    QString GetDocumentAttribute(const QString& vName) override
    {
        if (!Doc(u"GetDocumentAttribute", vName))
            return {};
        const auto found = documentAttributes.find(vName);
        if (found == documentAttributes.end()) {
            Fail(XdwResult::InvalidArg);
            return {};
        }
        documentAttributeType_ = found->second.second;
        return found->second.first;
    }
    void DeleteDocumentAttribute(const QString& vName) override
    {
        if (Doc(u"DeleteDocumentAttribute", vName))
            documentAttributes.erase(vName);
    }
    void SucceedAttribute(const QString& vPath, qint32 vDocument, qint32 vOption) override
    {
        Doc(u"SucceedAttribute", vPath, vDocument, vOption);
    }

    // ---- binders and original data
    void GetDocumentInformationInBinder(qint32 vPosition) override
    {
        if (const ScriptedDocument* doc = Doc(u"GetDocumentInformationInBinder", vPosition)) {
            document_ = {};
            document_.pages = static_cast<qint16>(doc->pages.size());
        }
    }
    QString GetDocumentNameInBinder(qint32 vPosition) override { return Text(u"GetDocumentNameInBinder", vPosition); }
    void GetDocumentFromBinder(qint32 vPosition, const QString& vPath) override
    {
        Doc(u"GetDocumentFromBinder", vPosition, vPath);
    }
    void DeleteDocumentInBinder(qint32 vPosition) override { Doc(u"DeleteDocumentInBinder", vPosition); }
    void InsertOriginalData(qint32 vPosition, const QString& vPath) override
    {
        Doc(u"InsertOriginalData", vPosition, vPath);
    }
    void DeleteOriginalData(qint32 vPosition) override { Doc(u"DeleteOriginalData", vPosition); }
    QString GetFileNameOfOriginalData(qint32 vPosition) override
    {
        return Text(u"GetFileNameOfOriginalData", vPosition);
    }
    void GetFileFromOriginalData(qint32 vPosition, const QString& vPath) override
    {
        Doc(u"GetFileFromOriginalData", vPosition, vPath);
    }

    // ---- annotations; handles count up from 0x2000
    void AddAnnotation(qint32 vType, qint32 vPage, qint32 vX, qint32 vY, qint32 vWidth, qint32 vHeight,
                       const QString& vBitmapPath) override
    {
        if (Doc(u"AddAnnotation", vType, vPage, vX, vY, vWidth, vHeight, vBitmapPath))
            ++lastAnnotation_;
    }
    void AddAnnotationOnParentAnnotation(qint32 vType, qint32 vParent, qint32 vX, qint32 vY, qint32 vWidth,
                                         qint32 vHeight, const QString& vBitmapPath) override
    {
        if (Doc(u"AddAnnotationOnParentAnnotation", vType, vParent, vX, vY, vWidth, vHeight, vBitmapPath))
            ++lastAnnotation_;
    }
    void AddAnnotationFromAnnFile(const QString& vPath, qint32 vPage, qint32 vX, qint32 vY, bool vGroup,
                                  bool vCustom, qint32 vParent) override
    {
        if (Doc(u"AddAnnotationFromAnnFile", vPath, vPage, vX, vY, vGroup, vCustom, vParent))
            ++lastAnnotation_;
    }
    qint32 ReadAnnotationHandle() override { Succeed(); return lastAnnotation_; }
    void GetAnnotationInformation(qint32 vPage, qint32 vIndex, qint32 vParent) override
    {
        if (!Doc(u"GetAnnotationInformation", vPage, vIndex, vParent))
            return;
        if (vIndex < 1 || vIndex > qint32(annotations.size()))
            return Fail(XdwResult::InvalidArg);
        annotation_ = annotations[std::size_t(vIndex - 1)];
    }
    qint32 GetAnnotationHandleFromNo(qint32 vPage, qint32 vNumber, qint32 vParent) override
    {
        if (!Doc(u"GetAnnotationHandleFromNo", vPage, vNumber, vParent))
            return 0;
        if (vNumber < 1 || vNumber > qint32(annotations.size())) {
            Fail(XdwResult::InvalidArg);
            return 0;
        }
        return annotations[std::size_t(vNumber - 1)].handle;
    }
    void SelectAnnotationHandle(qint32 vHandle) override { Take(u"SelectAnnotationHandle", vHandle); }
    QString GetAnnotationAttribute(const QString& vName) override { return Text(u"GetAnnotationAttribute", vName); }
    void SetAnnotationAttribute(const QString& vName, qint32 vType, const QString& vValue) override
    {
        Take(u"SetAnnotationAttribute", vName, vType, vValue);
    }
    void RemoveAnnotation() override { Doc(u"RemoveAnnotation"); }
    void ShowAndHideAnnotation(bool vShow) override { Doc(u"ShowAndHideAnnotation", vShow); }

private:
    static QString Arg(const QString& vText) { return vText; }
    static QString Arg(bool vFlag) { return vFlag ? QStringLiteral("true") : QStringLiteral("false"); }
    static QString Arg(qint32 vNumber) { return QString::number(vNumber); }
    static QString Arg(qint16 vNumber) { return QString::number(vNumber); }
    // Writes the call down, counts it and fails it when a failure is scripted; true when it
    // goes on (and has succeeded so far).
    template <class... A>
    bool Take(const char16_t* vCall, const A&... vArgs)
    {
        const QString call = QString::fromUtf16(vCall);
        log_.push_back({call, {Arg(vArgs)...}});
        if (Refused(call))
            return false;
        Succeed();
        return true;
    }
    // Take for a call on the selected document: null when it is refused or none is selected.
    template <class... A>
    const ScriptedDocument* Doc(const char16_t* vCall, const A&... vArgs)
    {
        if (!Take(vCall, vArgs...))
            return nullptr;
        if (open_.contains(selected_))
            return Document(open_.value(selected_));
        Fail(XdwResult::InvalidArg);
        return nullptr;
    }
    QString Answer(const QString& vCall)
    {
        QStringList& answers = answers_[vCall];
        if (answers.size() > 1)
            return answers.takeFirst();
        return answers.value(0);
    }
    template <class... A>
    QString Text(const char16_t* vCall, const A&... vArgs)
    {
        const QString answer = Answer(QString::fromUtf16(vCall));  // an answer is used up either way
        return Take(vCall, vArgs...) ? answer : QString();
    }
    qint32 Number(const char16_t* vCall) { return Text(vCall).toInt(); }
    void WriteIfPage(const ScriptedDocument& vDoc, qint32 vPage, const QString& vPath)
    {
        if (vPage < 1 || vPage > vDoc.pages.size())
            return Fail(XdwResult::InvalidArg);
        QFile file(vPath);
        if (!file.open(QIODevice::WriteOnly))
            return Fail(XdwResult::NoPermission);
        file.write(QByteArray("page ") + QByteArray::number(vPage));
    }
    // An image (or PDF) becomes a document of one page, on disk and known to this engine.
    void MakeDocument(const QString& vImagePath, const QString& vDocumentPath)
    {
        if (!QFile::exists(vImagePath))
            return Fail(XdwResult::FileNotFound);
        if (QFile::exists(vDocumentPath))
            return Fail(XdwResult::FileExists);
        QFile file(vDocumentPath);
        if (!file.open(QIODevice::WriteOnly))
            return Fail(XdwResult::NoPermission);
        AddDocument(vDocumentPath, 1);
    }

    static QSize PixelSize(const ScriptedPage& vPage, qint32 vDpi)
    {
        const auto pixels = [vDpi](qint32 vSize) { return std::max(1, int(std::lround(vSize * vDpi / 2540.0))); };
        return {pixels(vPage.width), pixels(vPage.height)};
    }
    // Counts the call, and fails it when a failure is scripted for it.
    bool Refused(const QString& vCall)
    {
        ++calls_[vCall];
        qint32 result = failures_.value(vCall);
        if (auto next = nextFailures_.find(vCall); next != nextFailures_.end() && !next->second.empty()) {
            result = next->second.front();
            next->second.pop_front();
        }
        if (result != XdwResult::Success)
            failureTexts_.contains(vCall) ? Fail(result, failureTexts_.value(vCall)) : Fail(result);
        return result != XdwResult::Success;
    }
    // The selected document for a document call, or null after failing the call.
    const ScriptedDocument* Selected(const QString& vCall)
    {
        if (Refused(vCall))
            return nullptr;
        if (open_.contains(selected_))
            return Document(open_.value(selected_));
        Fail(XdwResult::InvalidArg);
        return nullptr;
    }
    const ScriptedPage* SelectedPage(const QString& vCall, qint32 vPage)
    {
        const ScriptedDocument* doc = Selected(vCall);
        if (doc && vPage >= 1 && vPage <= doc->pages.size())
            return &doc->pages[vPage - 1];
        if (doc)
            Fail(XdwResult::InvalidArg);
        return nullptr;
    }
    void QueryPage(const QString& vCall, qint32 vPage)
    {
        if (const ScriptedPage* p = SelectedPage(vCall, vPage)) {
            const QSize own = PixelSize(*p, std::max(p->horRes, p->verRes));
            page_ = {p->width, p->height, p->pageType, p->horRes, p->verRes, p->compress, p->annotations,
                     0, p->width, p->height, p->horRes, p->verRes, own.width(), own.height()};
            Succeed();
        }
    }

    std::map<QString, ScriptedDocument> documents_;
    QHash<qint16, QString> information_;
    QHash<QString, qint32> failures_;
    std::map<QString, std::deque<qint32>> nextFailures_;
    QHash<QString, QString> failureTexts_;
    QHash<QString, QStringList> answers_;
    std::vector<Call> log_;
    qint32 lastAnnotation_ = 0x2000;
    QHash<QString, int> calls_;
    QHash<qint32, QString> open_;   // handle -> path
    qint32 lastHandle_ = 0x1000;
    qint32 selected_ = 0;
};

// Installs a fresh ScriptedEngine for its scope and the absent runtime again afterwards. The
// retries on a file in use don't wait meanwhile; their pauses are written down instead.
class ScopedScriptedEngine {
public:
    ScopedScriptedEngine() : previousPause_(SetXdwRetryPause([this](qint32 vMs) { pauses.push_back(vMs); }))
    {
        SetXdwApiObject(engine_);
    }
    ~ScopedScriptedEngine()
    {
        SetXdwApiObject(nullptr);
        SetXdwRetryPause(std::move(previousPause_));
    }
    ScopedScriptedEngine(const ScopedScriptedEngine&) = delete;
    ScopedScriptedEngine& operator=(const ScopedScriptedEngine&) = delete;

    ScriptedEngine* operator->() const { return engine_.get(); }

    std::vector<qint32> pauses;  // the waits asked for, in milliseconds

private:
    std::shared_ptr<ScriptedEngine> engine_ = std::make_shared<ScriptedEngine>();
    XdwRetryPause previousPause_;
};
