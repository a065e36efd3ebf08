#include "viewer/TiffFile.h"

#include "support/AppError.h"

#include <QFile>

#include <cstdarg>
#include <cstdio>
#include <memory>
#include <mutex>

namespace {

// The file whose messages this thread is collecting. Messages that come while no file is open
// here (or from another thread's library user) are dropped, never printed.
thread_local TiffFile* collecting = nullptr;

// A damaged file can produce an error per line; a few are enough to explain a failure.
constexpr int MaxMessages = 20;

// No single buffer of libtiff's own may exceed this: a damaged header that claims a gigantic strip
// or tile then fails instead of taking the machine's memory, and a real page that needs a buffer
// that big in one piece is beyond what a pane shows anyway (see TiffPages).
constexpr tmsize_t MaxLibraryAllocation = tmsize_t(512) * 1024 * 1024;

void Handler(const char* vModule, const char* vFormat, va_list vArgs)
{
    if (!collecting)
        return;
    char text[512];
    std::vsnprintf(text, sizeof text, vFormat, vArgs);
    QString message = QString::fromLocal8Bit(text);
    if (vModule && *vModule)
        message = QString::fromLocal8Bit(vModule) + QStringLiteral(": ") + message;
    collecting->Collect(message);
}

// Warnings (unknown tags, odd but readable values) say nothing a user could act on.
void WarningHandler(const char*, const char*, va_list) {}

void InstallHandlersOnce()
{
    static std::once_flag once;
    std::call_once(once, [] {
        TIFFSetErrorHandler(Handler);
        TIFFSetWarningHandler(WarningHandler);
    });
}

QString Described(const QString& vText, const QString& vPath, const QString& vDetail)
{
    QString out = vText + QStringLiteral(" (") + vPath;
    if (!vDetail.isEmpty())
        out += QStringLiteral(": ") + vDetail;
    return out + QLatin1Char(')');
}

} // namespace

TiffFile::TiffFile(const QString& vPath) : path_(vPath), outer_(collecting)
{
    InstallHandlersOnce();
    collecting = this;
    std::unique_ptr<TIFFOpenOptions, void (*)(TIFFOpenOptions*)> options(TIFFOpenOptionsAlloc(),
                                                                          TIFFOpenOptionsFree);
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), MaxLibraryAllocation);
    // "m": read, don't map. A file that shrinks while mapped would kill the process with SIGBUS;
    // reading a page's strips costs next to nothing more.
    tif_ = TIFFOpenExt(QFile::encodeName(vPath).constData(), "rm", options.get());
    if (!tif_) {
        const QString detail = FirstError();
        collecting = outer_;
        throw AppError(AppError::PathFileAccess,
                       Described(QStringLiteral("ファイルを読み込めません。"), path_, detail));
    }
}

TiffFile::~TiffFile()
{
    TIFFClose(tif_);
    collecting = outer_;
}

void TiffFile::Collect(const QString& vMessage)
{
    if (errors_.size() < MaxMessages)
        errors_.append(vMessage);
}

int TiffFile::PageCount() const
{
    return static_cast<int>(TIFFNumberOfDirectories(tif_));
}

void TiffFile::SelectPage(int vIndex, int vPageCount)
{
    if (vIndex < 0 || vIndex >= vPageCount)
        throw AppError(AppError::SubscriptOutOfRange,
                       Described(QStringLiteral("指定のページがありません。"), path_,
                                 QStringLiteral("%1 / %2 ページ").arg(vIndex + 1).arg(vPageCount)));
    if (!TIFFSetDirectory(tif_, static_cast<tdir_t>(vIndex)))
        Fail(QStringLiteral("ページを読み込めません。"));
}

void TiffFile::Fail(const QString& vText, const QString& vDetail) const
{
    throw AppError(AppError::PathFileAccess, Described(vText, path_, vDetail));
}
