// Changes to the selected document: its pages, its attributes and a binder's documents. Each
// works on the document's record tree (XdwEngine::Edit), so a refused change leaves it as it was
// and an accepted one shows at once; SaveDocument writes them.
#include "engine/XdwEngine.h"

#include "document/XdwApi.h"
#include "engine/Drawing.h"
#include "engine/FormatError.h"
#include "engine/Model.h"
#include "engine/NoiseReduction.h"
#include "engine/emf/EmfPlayer.h"
#include "engine/write/Attributes.h"
#include "engine/write/Binder.h"
#include "engine/write/DibPicture.h"
#include "engine/write/Edit.h"
#include "engine/write/ImageFile.h"
#include "engine/write/Lh5Encode.h"
#include "engine/write/Navigate.h"
#include "engine/write/Saver.h"

#include <cmath>

namespace {

[[noreturn]] void Decline(qint32 vCode, const QString& vReason)
{
    throw xdw::FormatError{vCode, vReason};
}

// The page content record (8010) of a page, or null for a page without one.
xdw::Node* ContentOf(xdw::Node& vPage)
{
    for (xdw::Node& placement : vPage.children)
        for (xdw::Node& child : placement.children)
            if (child.kind == xdw::KindPageContent)
                return &child;
    return nullptr;
}

} // namespace

void XdwEngine::GetPage(qint32 vPage, const QString& vPath)
{
    Attempt([&] {
        xdw::EditableFile page = xdw::ExtractPage(TreeOf(SelectedDocument()), vPage);
        xdw::Save(page, vPath);
    });
}

void XdwEngine::InsertDocument(qint32 vPosition, const QString& vPath)
{
    // Read before the change, so that a document inserted into itself brings its pages once.
    std::shared_ptr<const xdw::EditableFile> source;
    if (!Attempt([&] { source = std::make_shared<const xdw::EditableFile>(xdw::LoadEditable(vPath)); }))
        return;
    Edit([&](xdw::EditableFile& vFile) { xdw::InsertPages(vFile, vPosition, *source); });
}

void XdwEngine::DeletePage(qint32 vPage)
{
    Edit([&](xdw::EditableFile& vFile) { xdw::DeletePage(vFile, vPage); });
}

void XdwEngine::RotatePage(qint32 vPage, qint32 vDegree)
{
    // The runtime takes a turn either way; the tree turns clockwise only.
    const int degree = ((vDegree % 360) + 360) % 360;
    Edit([&](xdw::EditableFile& vFile) {
        if (degree != 0)
            xdw::RotatePage(vFile, vPage, degree);
    });
}

void XdwEngine::ReducePageNoise(qint32 vPage, const QString& vLevel)
{
    const int level = xdw::NoiseLevelNames().indexOf(vLevel.trimmed().toUpper());
    Edit([&](xdw::EditableFile& vFile) {
        if (level < 0)
            Decline(XdwResult::InvalidArg, QStringLiteral("noise level %1").arg(vLevel));
        const xdw::Model& model = *SelectedDocument().model;
        if (vPage < 1 || vPage > static_cast<qint32>(model.Pages().size()))
            Decline(XdwResult::InvalidArg, QStringLiteral("no page %1").arg(vPage));
        if (!xdw::IsBilevelPage(model, vPage - 1))
            Decline(XdwResult::InvalidOperation, QStringLiteral("page %1 is not a black and white picture").arg(vPage));
        const xdw::Page& page = model.Pages()[static_cast<size_t>(vPage - 1)];
        const xdw::Placement& content = page.placements.front();
        const xdw::Drawing drawing = xdw::ReadDrawing(model.DrawingOf(content));
        QImage picture = dib::Decode(drawing.dibInfo, drawing.data);
        if (picture.isNull())
            Decline(XdwResult::BadFormat, QStringLiteral("page picture cannot be decoded"));
        if (content.dpi > 0) {
            const int perMetre = static_cast<int>(std::lround(content.dpi / 0.0254));
            picture.setDotsPerMeterX(perMetre);
            picture.setDotsPerMeterY(perMetre);
        }
        const QImage cleaned = xdw::ReduceNoise(picture.convertToFormat(QImage::Format_Mono), level);
        if (cleaned.isNull())
            Decline(XdwResult::InvalidOperation, QStringLiteral("page %1 is not a black and white picture").arg(vPage));
        xdw::Node* record = ContentOf(xdw::edit::PageAt(vFile.root, vPage).Page());
        if (!record)
            Decline(XdwResult::InvalidOperation, QStringLiteral("page %1 has no content").arg(vPage));
        record->Remove(7);
        // The stored bitmap keeps black at index 0, whatever table the cleaning left.
        record->Set(7, xdw::picture::DibDrawing(xdw::image::BlackFirst(cleaned), content.width, content.height,
                                                [](QByteArrayView v) { return lh5::Compress(v); }));
    });
}

// ---- attributes of the whole document

void XdwEngine::SetUserAttribute(const QString& vName, const QString& vValue)
{
    // Kept as UTF-8: any text a script sets comes back whole.
    Edit([&](xdw::EditableFile& vFile) { xdw::SetUserAttribute(vFile, vName, vValue.toUtf8()); });
}

QString XdwEngine::GetUserAttribute(const QString& vName)
{
    QString value;
    Attempt([&] { value = QString::fromUtf8(xdw::GetUserAttribute(TreeOf(SelectedDocument()), vName)); });
    return value;
}

void XdwEngine::DeleteUserAttribute(const QString& vName)
{
    Edit([&](xdw::EditableFile& vFile) { xdw::DeleteUserAttribute(vFile, vName); });
}

void XdwEngine::SetDocumentAttribute(const QString& vName, const QString& vValue, qint16 vType)
{
    Edit([&](xdw::EditableFile& vFile) { xdw::SetDocumentAttribute(vFile, vName, vValue, vType); });
}

QString XdwEngine::GetDocumentAttribute(const QString& vName)
{
    QString value;
    Attempt([&] {
        const xdw::DocumentAttribute attribute = xdw::GetDocumentAttribute(TreeOf(SelectedDocument()), vName);
        documentAttributeType_ = static_cast<qint16>(attribute.type);
        value = attribute.value;
    });
    return value;
}

void XdwEngine::DeleteDocumentAttribute(const QString& vName)
{
    Edit([&](xdw::EditableFile& vFile) { xdw::DeleteDocumentAttribute(vFile, vName); });
}

void XdwEngine::SucceedAttribute(const QString& vSourcePath, qint32 /*vDocument*/, qint32 /*vOption*/)
{
    std::shared_ptr<const xdw::EditableFile> source;
    if (!Attempt([&] { source = std::make_shared<const xdw::EditableFile>(xdw::LoadEditable(vSourcePath)); }))
        return;
    // The attributes a user or program gave the source; the software's own ("%..." and the
    // id counter) stay those of this document.
    Edit([&](xdw::EditableFile& vFile) {
        for (const xdw::Declaration& declared : source->root.declarations) {
            if (declared.name.startsWith(u'%') || declared.name == xdw::edit::LastId)
                continue;
            if (const xdw::NodeAttribute* value = source->root.Named(declared.name))
                vFile.root.SetNamed(declared.name, declared.type, value->value);
        }
    });
}

// ---- a binder's documents

void XdwEngine::GetDocumentInformationInBinder(qint32 vPosition)
{
    Run([&](const xdw::Model& vModel) {
        if (!vModel.IsBinder() || vPosition < 1 || vPosition > static_cast<qint32>(vModel.Documents().size()))
            Decline(XdwResult::InvalidArg, QStringLiteral("no document %1 in the binder").arg(vPosition));
        const xdw::DocumentEntry& entry = vModel.Documents()[static_cast<size_t>(vPosition - 1)];
        document_ = {};
        document_.pages = static_cast<qint16>(qMin(entry.pages, 32767));
        document_.version = static_cast<qint16>(vModel.File().Generation());
        document_.showAnnotations = 1;
    });
}

QString XdwEngine::GetDocumentNameInBinder(qint32 vPosition)
{
    QString name;
    Attempt([&] { name = xdw::DocumentName(TreeOf(SelectedDocument()), vPosition); });
    return name;
}

void XdwEngine::GetDocumentFromBinder(qint32 vPosition, const QString& vPath)
{
    Attempt([&] {
        xdw::EditableFile document = xdw::ExtractDocument(TreeOf(SelectedDocument()), vPosition);
        xdw::Save(document, vPath);
    });
}

void XdwEngine::DeleteDocumentInBinder(qint32 vPosition)
{
    Edit([&](xdw::EditableFile& vFile) { xdw::DeleteDocument(vFile, vPosition); });
}
