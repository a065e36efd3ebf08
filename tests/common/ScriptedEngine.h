#pragma once
// A document engine for tests, header-only (only programs that link mq_document include it).
// Documents are scripted by path; any call can be made to fail. A page renders as a picture of
// its number (common/PagePicture.h), so a test or a screenshot can tell which page a pane
// shows. Calls are counted, and the bitmap handles live in the engine's table, so a test can
// see that each one was freed.

#include "common/PagePicture.h"
#include "document/DocumentEngine.h"
#include "document/XdwApi.h"

#include <QHash>
#include <QList>
#include <QString>

#include <cmath>
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
};

struct ScriptedDocument {
    QList<ScriptedPage> pages;
    qint16 documentType = 0;
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

    int Calls(const QString& vCall) const { return calls_.value(vCall); }
    qsizetype OpenDocuments() const { return open_.size(); }

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

private:
    static QSize PixelSize(const ScriptedPage& vPage, qint32 vDpi)
    {
        const auto pixels = [vDpi](qint32 vSize) { return std::max(1, int(std::lround(vSize * vDpi / 2540.0))); };
        return {pixels(vPage.width), pixels(vPage.height)};
    }
    // Counts the call, and fails it when a failure is scripted for it.
    bool Refused(const QString& vCall)
    {
        ++calls_[vCall];
        const qint32 result = failures_.value(vCall);
        if (result != XdwResult::Success)
            Fail(result);
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
            page_ = {p->width, p->height, p->pageType, p->horRes, p->verRes, p->compress, 0,
                     0, p->width, p->height, p->horRes, p->verRes, own.width(), own.height()};
            Succeed();
        }
    }

    std::map<QString, ScriptedDocument> documents_;
    QHash<qint16, QString> information_;
    QHash<QString, qint32> failures_;
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
