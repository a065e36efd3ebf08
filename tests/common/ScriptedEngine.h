#pragma once
// A document engine for tests. Documents are scripted by path: pages with their sizes and
// resolutions, failures of chosen calls, and a file that is "in use" for its first opens. A
// page renders as a picture of its number (common/PagePicture.h), so a test or a screenshot
// can tell which page a pane shows. Every call is counted, and the bitmap handles live in the
// engine's table, so a test can see that each one was freed.
//
// Header-only: the test kit stands below the document library, so only test programs that
// link mq_document include this.
//
//     ScopedScriptedEngine engine;                 // installed for the scope
//     engine->AddDocument(dir.filePath("a.xdw"), 3);
//     ... DocuWorksClass dw; dw.OpenXdw(...) ...
//     EXPECT_EQ(engine->Handles().LiveCount(), 0);

#include "common/PagePicture.h"
#include "document/DocumentEngine.h"
#include "document/XdwApi.h"

#include <QColor>
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
    QColor paper = Qt::white;
    int inUseOpens = 0;                 // this many opens fail with the file in use
    QHash<QString, qint32> failures;    // call name -> result, for every such call on it
    int opens = 0;                      // opens tried so far
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
    ScriptedDocument* Document(const QString& vPath)
    {
        const auto it = documents_.find(vPath);
        return it == documents_.end() ? nullptr : &it->second;
    }
    // Installation facts by key number; 1 (the version) is "9.0.0" unless told otherwise.
    void SetInformation(qint16 vKey, const QString& vText) { information_[vKey] = vText; }
    void ClearInformation(qint16 vKey) { information_.remove(vKey); }
    // Every call of that name fails with vResult, on any document; 0 takes it back.
    void FailCall(const QString& vCall, qint32 vResult) { failures_[vCall] = vResult; }

    int Calls(const QString& vCall) const { return calls_.value(vCall); }
    qsizetype OpenDocuments() const { return open_.size(); }
    // Dpi and colour of the last render, as the engine was asked.
    qint32 LastDpi() const { return lastDpi_; }
    qint32 LastColor() const { return lastColor_; }

    static QSize PixelSize(const ScriptedPage& vPage, qint32 vDpi)
    {
        const auto pixels = [vDpi](qint32 vSize) {
            return std::max(1, static_cast<int>(std::lround(vSize * double(vDpi) / 2540.0)));
        };
        return {pixels(vPage.width), pixels(vPage.height)};
    }

    // ---- the engine
    void OpenDocument(const QString& vPath, qint16) override
    {
        if (Refuse(QStringLiteral("OpenDocument"), nullptr))
            return;
        ScriptedDocument* doc = Document(vPath);
        if (!doc)
            return Fail(XdwResult::FileNotFound);
        if (++doc->opens <= doc->inUseOpens)
            return Fail(XdwResult::FileInUse);
        if (Refuse(QStringLiteral("OpenDocument"), doc))
            return;
        lastOpened_ = ++lastHandle_;
        open_.insert(lastOpened_, vPath);
        Succeed();
    }
    qint32 ReadDocumentHandle() override
    {
        Count(QStringLiteral("ReadDocumentHandle"));
        Succeed();
        return lastOpened_;
    }
    void SelectDocumentHandle(qint32 vHandle) override
    {
        Count(QStringLiteral("SelectDocumentHandle"));
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
            document_.version = 7;
            document_.documentType = doc->documentType;
            document_.documents = doc->documentType == 1 ? 1 : 0;
            Succeed();
        }
    }
    void GetPageInformation(qint32 vPage) override { QueryPage(QStringLiteral("GetPageInformation"), vPage, false); }
    void GetPageInformationEx(qint32 vPage) override { QueryPage(QStringLiteral("GetPageInformationEx"), vPage, true); }
    QString GetInformation(qint16 vKey) override
    {
        if (Refuse(QStringLiteral("GetInformation"), nullptr))
            return {};
        if (!information_.contains(vKey)) {
            Fail(XdwResult::InfoNotFound);
            return {};
        }
        Succeed();
        return information_.value(vKey);
    }
    qint32 ConvertPageToImageHandle(qint32 vPage, qint32 vDpi, qint32 vColor) override
    {
        const ScriptedDocument* doc = Selected(QStringLiteral("ConvertPageToImageHandle"));
        if (!doc)
            return 0;
        if (vPage < 1 || vPage > doc->pages.size() || vDpi < 1 || (vColor != 0 && vColor != 1)) {
            Fail(XdwResult::InvalidArg);
            return 0;
        }
        lastDpi_ = vDpi;
        lastColor_ = vColor;
        QImage picture = pagepicture::Draw(vPage, PixelSize(doc->pages[vPage - 1], vDpi), doc->paper);
        if (vColor == 0)
            picture = picture.convertToFormat(QImage::Format_Grayscale8);
        bitmapWidth_ = picture.width();
        bitmapHeight_ = picture.height();
        Succeed();
        return handles_.Take(std::move(picture));
    }
    void GlobalFree(qint32 vHandle) override
    {
        if (!Refuse(QStringLiteral("GlobalFree"), nullptr))
            DocumentEngine::GlobalFree(vHandle);
    }
    void Finalize() override
    {
        if (!Refuse(QStringLiteral("Finalize"), nullptr))
            Succeed();
    }

private:
    void Count(const QString& vCall) { ++calls_[vCall]; }

    // Counts the call and fails it when a failure is scripted for it, engine-wide or on vDoc.
    bool Refuse(const QString& vCall, const ScriptedDocument* vDoc)
    {
        if (!vDoc)
            Count(vCall);
        const qint32 result = vDoc ? vDoc->failures.value(vCall) : failures_.value(vCall);
        if (result != XdwResult::Success)
            Fail(result);
        return result != XdwResult::Success;
    }
    // The selected document for a document call, or null after failing the call.
    const ScriptedDocument* Selected(const QString& vCall)
    {
        if (Refuse(vCall, nullptr))
            return nullptr;
        const ScriptedDocument* doc = open_.contains(selected_) ? Document(open_.value(selected_)) : nullptr;
        if (!doc) {
            Fail(XdwResult::InvalidArg);
            return nullptr;
        }
        return Refuse(vCall, doc) ? nullptr : doc;
    }
    void QueryPage(const QString& vCall, qint32 vPage, bool vExtended)
    {
        const ScriptedDocument* doc = Selected(vCall);
        if (!doc)
            return;
        if (vPage < 1 || vPage > doc->pages.size())
            return Fail(XdwResult::InvalidArg);
        const ScriptedPage& p = doc->pages[vPage - 1];
        page_ = {};
        page_.width = p.width;
        page_.height = p.height;
        page_.pageType = p.pageType;
        page_.horRes = p.horRes;
        page_.verRes = p.verRes;
        page_.compress = p.compress;
        if (vExtended) {
            page_.orgWidth = p.width;
            page_.orgHeight = p.height;
            page_.orgHorRes = p.horRes;
            page_.orgVerRes = p.verRes;
            const QSize own = PixelSize(p, std::max(p.horRes, p.verRes));
            page_.imageWidth = own.width();
            page_.imageHeight = own.height();
        }
        Succeed();
    }

    std::map<QString, ScriptedDocument> documents_;
    QHash<qint16, QString> information_;
    QHash<QString, qint32> failures_;
    QHash<QString, int> calls_;
    QHash<qint32, QString> open_;   // handle -> path
    qint32 lastHandle_ = 0x1000;
    qint32 lastOpened_ = 0;
    qint32 selected_ = 0;
    qint32 lastDpi_ = 0;
    qint32 lastColor_ = -1;
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
    ScriptedEngine& operator*() const { return *engine_; }
    std::shared_ptr<ScriptedEngine> Shared() const { return engine_; }

    std::vector<qint32> pauses;  // the waits asked for, in milliseconds

private:
    std::shared_ptr<ScriptedEngine> engine_ = std::make_shared<ScriptedEngine>();
    XdwRetryPause previousPause_;
};
