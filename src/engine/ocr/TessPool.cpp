#include "engine/ocr/TessPool.h"

#include <QMutex>
#include <QMutexLocker>
#include <QThread>

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>

#ifdef _OPENMP
#include <omp.h>
#endif

#include <map>
#include <string>
#include <vector>

namespace ocr {

namespace {

QMutex& PoolLock()
{
    static QMutex lock;
    return lock;
}

// Idle instances by key; the key holds the data folder too, so that a test (or a user) who
// points TESSDATA_PREFIX elsewhere never gets an instance loaded from the old folder. Never
// freed: at exit Tesseract's own caches may already be gone when a pool would free its
// instances into them.
std::map<QString, std::vector<std::unique_ptr<tesseract::TessBaseAPI>>>& Idle()
{
    static auto* idle = new std::map<QString, std::vector<std::unique_ptr<tesseract::TessBaseAPI>>>;
    return *idle;
}

std::unique_ptr<tesseract::TessBaseAPI> Make(const QString& vLanguages)
{
    // Tesseract and Leptonica report on stderr by default; a viewer has no use for that, and a
    // refusal reaches the user through the result instead.
    static const bool quiet = [] {
        setMsgSeverity(L_SEVERITY_NONE);
        return true;
    }();
    Q_UNUSED(quiet);
    auto api = std::make_unique<tesseract::TessBaseAPI>();
    std::vector<std::string> names{"debug_file"};
    std::vector<std::string> values{"/dev/null"};
    // The recognition models we install are of the line recogniser only; orientation data is of
    // the older engine, which is the one that detects orientation.
    const auto mode = vLanguages == QLatin1String("osd") ? tesseract::OEM_TESSERACT_ONLY
                                                        : tesseract::OEM_LSTM_ONLY;
    if (api->Init(nullptr, vLanguages.toUtf8().constData(), mode, nullptr, 0, &names, &values, false) != 0)
        return nullptr;
    return api;
}

} // namespace

Lease::Lease(std::unique_ptr<tesseract::TessBaseAPI> vApi, QString vKey)
    : api_(std::move(vApi)), key_(std::move(vKey))
{
}

Lease::Lease(Lease&& vOther) noexcept
    : api_(std::move(vOther.api_)), key_(std::move(vOther.key_))
{
}

Lease::~Lease()
{
    if (!api_)
        return;
    // Results and the picture go now, not at the next borrow: a page's worth of memory would
    // otherwise lie idle with the instance.
    api_->Clear();
    QMutexLocker lock(&PoolLock());
    auto& idle = Idle()[key_];
    // As many as can run at once is as many as can ever be wanted again.
    if (static_cast<int>(idle.size()) < QThread::idealThreadCount())
        idle.push_back(std::move(api_));
}

Lease Borrow(const QString& vLanguages)
{
#ifdef _OPENMP
    // Tesseract reads a line with a team of threads that spin while they wait. On a machine
    // whose cores are busy that spinning took a page from 8 s to 46 s; sized to the cores left
    // free, the team shrinks to this thread alone when there are none. The setting belongs to
    // the calling thread, so every borrower makes it.
    omp_set_dynamic(1);
#endif
    const QString key = vLanguages + u'|' + qEnvironmentVariable("TESSDATA_PREFIX");
    {
        QMutexLocker lock(&PoolLock());
        auto& idle = Idle()[key];
        if (!idle.empty()) {
            auto api = std::move(idle.back());
            idle.pop_back();
            return Lease(std::move(api), key);
        }
    }
    // Made outside the lock: loading takes a while and other languages need not wait for it.
    auto api = Make(vLanguages);
    if (!api)
        return {};
    return Lease(std::move(api), key);
}

int IdleCount()
{
    QMutexLocker lock(&PoolLock());
    int n = 0;
    for (const auto& [key, apis] : Idle())
        n += static_cast<int>(apis.size());
    return n;
}

} // namespace ocr
