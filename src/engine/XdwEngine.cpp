#include "engine/XdwEngine.h"

#include "document/XdwApi.h"
#include "engine/Drawing.h"
#include "engine/FormatError.h"
#include "engine/Model.h"
#include "engine/PageRender.h"

#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 MaxFileSize = 2LL * 1024 * 1024 * 1024;
// Page content is printed at this resolution unless its drawing says otherwise.
constexpr qint16 PrintResolution = 600;
constexpr qint16 PageTypeNull = 0, PageTypeImage = 1, PageTypeApplication = 2;

// The open file, or a result code saying why not. A file another program holds under an
// exclusive lock is "in use", which the callers retry. Only the pieces the reader asks for are
// read, so opening a long scanned document does not read its pictures.
qint32 OpenFile(const QString& vPath, std::unique_ptr<xdw::ByteSource>& vSource)
{
    const QByteArray path = vPath.toLocal8Bit();
    const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return errno == ENOENT || errno == ENOTDIR ? XdwResult::FileNotFound : XdwResult::NoPermission;
    struct stat st {};
    qint32 result = XdwResult::Success;
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || st.st_size > MaxFileSize)
        result = XdwResult::BadFormat;
    else if (::flock(fd, LOCK_SH | LOCK_NB) != 0)
        result = errno == EWOULDBLOCK ? XdwResult::FileInUse : XdwResult::NoPermission;
    if (result != XdwResult::Success) {
        ::close(fd);
        return result;
    }
    vSource = xdw::FileSource(fd, st.st_size);
    return XdwResult::Success;
}

} // namespace

QString XdwEngine::EngineVersion()
{
    return QStringLiteral("1.0.0");
}

XdwEngine::XdwEngine() = default;
XdwEngine::~XdwEngine() = default;

bool XdwEngine::Run(const std::function<void(const xdw::Model&)>& vStep)
{
    const auto it = documents_.find(selected_);
    if (it == documents_.end()) {
        lastReason_ = QStringLiteral("no document selected");
        Fail(XdwResult::InvalidArg);
        return false;
    }
    try {
        vStep(*it->second);
    } catch (const xdw::FormatError& e) {
        lastReason_ = e.reason;
        Fail(e.code);
        return false;
    } catch (const std::bad_alloc&) {
        lastReason_ = QStringLiteral("out of memory");
        Fail(XdwResult::OutOfMemory);
        return false;
    }
    lastReason_.clear();
    Succeed();
    return true;
}

void XdwEngine::OpenDocument(const QString& vPath, qint16 /*vOption*/)
{
    std::unique_ptr<xdw::ByteSource> source;
    const qint32 opened = OpenFile(vPath, source);
    if (opened != XdwResult::Success) {
        lastReason_ = GetXdwErrorText(opened);
        Fail(opened);
        return;
    }
    try {
        auto model = std::make_shared<const xdw::Model>(std::move(source));
        openedHandle_ = nextHandle_++;
        documents_.emplace(openedHandle_, std::move(model));
        lastReason_.clear();
        Succeed();
    } catch (const xdw::FormatError& e) {
        lastReason_ = e.reason;
        Fail(e.code);
    } catch (const std::bad_alloc&) {
        lastReason_ = QStringLiteral("out of memory");
        Fail(XdwResult::OutOfMemory);
    }
}

void XdwEngine::SelectDocumentHandle(qint32 vHandle)
{
    selected_ = vHandle;
    if (documents_.contains(vHandle))
        Succeed();
    else
        Fail(XdwResult::InvalidArg);
}

void XdwEngine::CloseSelectedDocument()
{
    if (documents_.erase(selected_) == 0) {
        Fail(XdwResult::InvalidArg);
        return;
    }
    selected_ = 0;
    Succeed();
}

void XdwEngine::GetDocumentInformation()
{
    Run([this](const xdw::Model& vModel) {
        document_ = {};
        document_.pages = static_cast<qint16>(qMin<size_t>(vModel.Pages().size(), 32767));
        document_.version = static_cast<qint16>(vModel.File().Generation());
        document_.documentType = vModel.IsBinder() ? 1 : 0;
        document_.showAnnotations = 1;
        document_.documents = static_cast<qint16>(qMin<size_t>(vModel.Documents().size(), 32767));
    });
}

void XdwEngine::SetPage(const xdw::Model& vModel, qint32 vPage)
{
    if (vPage < 1 || vPage > static_cast<qint32>(vModel.Pages().size()))
        throw xdw::FormatError{XdwResult::InvalidArg, QStringLiteral("no page %1").arg(vPage)};
    const xdw::Page& page = vModel.Pages()[static_cast<size_t>(vPage - 1)];
    page_ = {};
    page_.width = static_cast<qint32>(page.width);
    page_.height = static_cast<qint32>(page.height);
    qint16 resolution = PrintResolution;
    page_.pageType = PageTypeNull;
    if (page.HasContent()) {
        const xdw::Placement& content = page.placements.front();
        const int kind = xdw::KindOf(vModel.DrawingOf(content));
        page_.pageType = kind == static_cast<int>(xdw::DrawingKind::Jpeg)
                || kind == static_cast<int>(xdw::DrawingKind::Dib)
            ? PageTypeImage
            : PageTypeApplication;
        if (content.dpi >= xdw::MinDpi && content.dpi <= xdw::MaxDpi)
            resolution = static_cast<qint16>(content.dpi);
        // The content's own turn inside its box: what a rotation of the page left on it.
        page_.degree = content.rotation;
    }
    page_.horRes = page_.verRes = resolution;
    page_.annotations = static_cast<qint16>(qMin(page.Annotations(), 32767));
    page_.orgWidth = page_.width;
    page_.orgHeight = page_.height;
    page_.orgHorRes = page_.orgVerRes = resolution;
    const QSize pixels = xdw::PixelSize(page, resolution);
    page_.imageWidth = pixels.width();
    page_.imageHeight = pixels.height();
}

void XdwEngine::GetPageInformation(qint32 vPage)
{
    Run([&](const xdw::Model& vModel) { SetPage(vModel, vPage); });
}

void XdwEngine::GetPageInformationEx(qint32 vPage)
{
    GetPageInformation(vPage);
}

QString XdwEngine::GetInformation(qint16 vKey)
{
    if (vKey == 1) {
        Succeed();
        return EngineVersion();
    }
    // No installation paths: nothing of this engine lives in folders of its own.
    Fail(XdwResult::InfoNotFound);
    return {};
}

qint32 XdwEngine::ConvertPageToImageHandle(qint32 vPage, qint32 vDpi, qint32 vColor)
{
    qint32 handle = 0;
    Run([&](const xdw::Model& vModel) {
        if (vColor != 0 && vColor != 1)
            throw xdw::FormatError{XdwResult::InvalidArg, QStringLiteral("colour %1").arg(vColor)};
        QImage image = xdw::RenderPage(vModel, vPage - 1, vDpi, vColor == 1);
        bitmapWidth_ = image.width();
        bitmapHeight_ = image.height();
        handle = handles_.Take(std::move(image));
    });
    return handle;
}

void XdwEngine::Finalize()
{
    images_.EndSet();
    documents_.clear();
    selected_ = 0;
    Succeed();
}

QString XdwEngine::GetPageTextToMemory(qint32 vPage)
{
    QString text;
    if (Run([&](const xdw::Model& vModel) { text = xdw::PageText(vModel, vPage - 1); })
        && text.isEmpty()) {
        lastReason_ = QStringLiteral("page %1 holds no text").arg(vPage);
        Fail(XdwResult::InvalidOperation);
    }
    return text;
}

void XdwEngine::GetPageColorInformation(qint32 vPage)
{
    Run([&](const xdw::Model& vModel) {
        SetPage(vModel, vPage);
        // Anything but a blank page may hold colour; telling for sure would mean drawing it.
        const bool colour = page_.pageType != PageTypeNull
            || vModel.Pages()[static_cast<size_t>(vPage - 1)].Annotations() > 0;
        pageColor_ = colour ? 1 : 0;
        pageImageDepth_ = colour ? 24 : 1;
    });
}
