// Saving, and the work on whole files: documents made from images, merged documents, binders.
// Outputs are new files, written through the saver so that a failure leaves nothing half made.
#include "engine/XdwEngine.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/Model.h"
#include "engine/write/Binder.h"
#include "engine/write/Edit.h"
#include "engine/write/Emit.h"
#include "engine/write/ImagePages.h"
#include "engine/write/Lh5Encode.h"
#include "engine/write/Navigate.h"
#include "engine/write/Saver.h"

#include <QFileInfo>

namespace {

// Operations whose stored form the format notes do not give. They are refused with a code the
// runtime's table does not hold, so the text can say why.
constexpr qint32 NotSupported = static_cast<qint32>(0x80004001);

int HorizontalWord(const QString& vWord)
{
    return vWord == QLatin1String("LEFT") ? 1 : vWord == QLatin1String("RIGHT") ? 2 : 0;
}

int VerticalWord(const QString& vWord)
{
    return vWord == QLatin1String("TOP") ? 1 : vWord == QLatin1String("BOTTOM") ? 2 : 0;
}

QByteArray Pack(QByteArrayView vData)
{
    return lh5::Compress(vData);
}

// A page's picture goes into an entry of its own, referred to from its record, as scanned
// documents keep their pages: the records stay small, and merging or inserting pages copies
// the pictures' bytes instead of packing them again with the records.
void PictureToEntry(xdw::EditableFile& vFile, xdw::Node& vPage)
{
    constexpr quint32 AttrDrawing = 7;
    for (xdw::Node& placement : vPage.children)
        for (xdw::Node& content : placement.children) {
            xdw::NodeAttribute* drawing = content.Find(AttrDrawing);
            if (content.kind != xdw::KindPageContent || !drawing || drawing->tagClass != 2)
                continue;
            const qint64 entry = vFile.AddEntry(drawing->value);
            drawing->tagClass = 3;
            drawing->constructed = false;
            drawing->value = xdw::emit::Tlv(0x81, xdw::emit::Int(entry))
                + xdw::emit::Tlv(0x82, xdw::emit::Int(drawing->value.size()));
        }
}

// A document of the image's pages, each with its id in the page list.
xdw::EditableFile DocumentOfImage(const QString& vImagePath, const xdw::Placing& vPlacing)
{
    xdw::EditableFile file = xdw::NewDocument(7);
    xdw::Node& list = xdw::edit::PageList(file.root);
    for (xdw::Node& page : xdw::PagesFromImage(vImagePath, vPlacing, Pack)) {
        page.Set(xdw::edit::AttrId, xdw::emit::Numbers({xdw::edit::NextId(list)}));
        PictureToEntry(file, page);
        list.children.push_back(std::move(page));
    }
    return file;
}

} // namespace

void XdwEngine::SaveDocument()
{
    Attempt([&] {
        Opened& opened = SelectedDocument();
        if (!opened.edit)
            return;   // nothing changed: the file already holds the document
        xdw::Save(*opened.edit, opened.path);
        opened.model = std::make_shared<const xdw::Model>(OpenedFile(opened.path));
    });
}

void XdwEngine::SetImageToDocumentOptions(const QString& vFitImage, const QString& vCompress, qint32 vZoom,
                                          qint32 vWidth, qint32 vHeight, const QString& vHorPos,
                                          const QString& vVerPos)
{
    placing_ = {vFitImage, vCompress, vZoom, vWidth, vHeight, HorizontalWord(vHorPos), VerticalWord(vVerPos)};
    Succeed();
}

void XdwEngine::SetImageToDocumentOptionsEx2(const QString& vFitImage, const QString& vCompress, qint32 vZoom,
                                             qint32 vWidth, qint32 vHeight, const QString& vHorPos,
                                             const QString& vVerPos, qint32 /*vZoom2*/, const QString& /*vOther*/)
{
    SetImageToDocumentOptions(vFitImage, vCompress, vZoom, vWidth, vHeight, vHorPos, vVerPos);
}

void XdwEngine::CreateDocumentFromImage(const QString& vImagePath, const QString& vDocumentPath)
{
    Attempt([&] {
        xdw::EditableFile file = DocumentOfImage(vImagePath, placing_);
        xdw::Save(file, vDocumentPath);
    });
}

void XdwEngine::CreateDocumentFromImagePdf(const QString& vDocumentPath, const QString& vImagePath)
{
    if (QFileInfo(vImagePath).suffix().compare(QLatin1String("pdf"), Qt::CaseInsensitive) == 0) {
        lastReason_ = QStringLiteral("PDF input needs a PDF renderer");
        Fail(NotSupported, QStringLiteral("PDFファイルからの文書作成には対応していません。画像ファイルを指定してください。"));
        return;
    }
    // Images go as they go without the placing options: each at its own size.
    Attempt([&] {
        xdw::EditableFile file = DocumentOfImage(vImagePath, xdw::Placing{});
        xdw::Save(file, vDocumentPath);
    });
}

void XdwEngine::BeginCreationFromApp(const QString&, const QString&, bool)
{
    lastReason_ = QStringLiteral("no application printer to DocuWorks on this system");
    Fail(NotSupported, QStringLiteral("アプリケーションファイルからのDocuWorks文書作成には対応していません。"));
}

void XdwEngine::EndCreationFromApp()
{
    Succeed();
}

qint32 XdwEngine::GetStatusCreationFromApp()
{
    // Nothing was started, so nothing is running: the status that ends a wait.
    Succeed();
    return 9;
}

void XdwEngine::CancelCreationFromApp()
{
    Succeed();
}

void XdwEngine::ProtectDocument(const QString&, const QString&, qint32, qint32, const QString&,
                                const QString&, const QString&)
{
    lastReason_ = QStringLiteral("the format of protected documents is not public");
    Fail(NotSupported, QStringLiteral("保護された文書の形式は公開されていないため、文書の保護には対応していません。"));
}

void XdwEngine::AddMergeInput(const QString& vPath)
{
    mergeInputs_.append(vPath);
    Succeed();
}

void XdwEngine::ClearMergeInputs()
{
    mergeInputs_.clear();
    Succeed();
}

void XdwEngine::MergeDocuments(const QString& vOutputPath)
{
    Attempt([&] {
        std::vector<xdw::EditableFile> inputs;
        inputs.reserve(static_cast<size_t>(mergeInputs_.size()));
        for (const QString& path : mergeInputs_)
            inputs.push_back(xdw::LoadEditable(path));
        std::vector<const xdw::EditableFile*> files;
        for (const xdw::EditableFile& input : inputs)
            files.push_back(&input);
        xdw::EditableFile merged = xdw::MergeFiles(files);
        xdw::Save(merged, vOutputPath);
    });
}

void XdwEngine::CreateBinder(const QString& vPath)
{
    Attempt([&] {
        xdw::EditableFile binder = xdw::NewBinder(7);
        xdw::Save(binder, vPath);
    });
}

void XdwEngine::InsertDocumentToBinder(const QString& vDocumentPath, const QString& vBinderPath, qint32 vPosition)
{
    Attempt([&] {
        const xdw::EditableFile document = xdw::LoadEditable(vDocumentPath);
        xdw::EditableFile binder = xdw::LoadEditable(vBinderPath);
        xdw::InsertDocument(binder, vPosition, document, QFileInfo(vDocumentPath).completeBaseName());
        xdw::Save(binder, vBinderPath);
    });
}

void XdwEngine::ReadImageFile(const QString& vImagePath)
{
    Attempt([&] {
        const xdw::ImageInformation info = xdw::ReadImageInformation(vImagePath);
        image_ = {info.pixelWidth, info.pixelHeight, info.horDpi, info.verDpi};
    });
}

// ---- original data: the notes say only that attached files sit under record 1306; how one is
// stored is not known, so nothing is written and nothing is guessed.

namespace {

const QString OriginalDataText =
    QStringLiteral("原本データの格納形式は公開されていないため、原本データの操作には対応していません。");

} // namespace

void XdwEngine::InsertOriginalData(qint32, const QString&)
{
    lastReason_ = QStringLiteral("the stored form of original data is not known");
    Fail(NotSupported, OriginalDataText);
}

void XdwEngine::DeleteOriginalData(qint32 vPosition)
{
    InsertOriginalData(vPosition, {});
}

QString XdwEngine::GetFileNameOfOriginalData(qint32 vPosition)
{
    InsertOriginalData(vPosition, {});
    return {};
}

void XdwEngine::GetFileFromOriginalData(qint32 vPosition, const QString&)
{
    InsertOriginalData(vPosition, {});
}
