// Annotations of the selected document. A handle names an annotation by its page and its place
// among its parent's annotations, level by level, so it survives the tree being read again after
// every change; removing one moves the handles of those after it down by one.
#include "engine/XdwEngine.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/write/AnnotationProperties.h"
#include "engine/write/Annotations.h"
#include "engine/write/Lh5Encode.h"
#include "engine/write/Navigate.h"
#include "engine/write/Saver.h"

#include <QFile>

namespace {

constexpr qint32 NotSupported = static_cast<qint32>(0x80004001);

[[noreturn]] void BadHandle(const QString& vReason)
{
    throw xdw::FormatError{XdwResult::InvalidArg, vReason};
}

QByteArray Pack(QByteArrayView vData)
{
    return lh5::Compress(vData);
}

xdw::annot::AnnotationRequest SpecOf(qint32 vType, qint32 vX, qint32 vY, qint32 vWidth, qint32 vHeight,
                                  const QString& vBitmapPath, int vGeneration)
{
    if (xdw::annot::KindOf(vType) == 0)
        BadHandle(QStringLiteral("annotation type %1").arg(vType));
    xdw::annot::AnnotationRequest spec;
    spec.type = static_cast<xdw::annot::AddType>(vType);
    spec.x = vX;
    spec.y = vY;
    if (spec.type == xdw::annot::AddType::Line) {
        spec.horVec = vWidth;
        spec.verVec = vHeight;
    } else {
        spec.width = vWidth;
        spec.height = vHeight;
    }
    if (spec.type == xdw::annot::AddType::Bitmap) {
        QFile file(vBitmapPath);
        if (!file.open(QIODevice::ReadOnly))
            throw xdw::FormatError{XdwResult::FileNotFound, QStringLiteral("cannot read ") + vBitmapPath};
        spec.bitmap = file.readAll();
    }
    spec.generation = vGeneration;
    return spec;
}

QString ValueText(const QVariant& vValue)
{
    if (vValue.typeId() == QMetaType::Bool)
        return vValue.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    return vValue.toString();
}

} // namespace

xdw::Node& XdwEngine::AnnotationNode(xdw::EditableFile& vFile, const AnnotationRef& vRef)
{
    xdw::Node* node = &xdw::edit::PageAt(vFile.root, vRef.page).Page();
    for (int index : vRef.path) {
        node = xdw::annot::AnnotationAt(*node, index - 1);
        if (!node)
            BadHandle(QStringLiteral("the annotation is gone"));
    }
    return *node;
}

qint32 XdwEngine::AnnotationHandleFor(AnnotationRef vRef)
{
    for (const auto& [handle, ref] : annotations_)
        if (ref.document == vRef.document && ref.page == vRef.page && ref.path == vRef.path)
            return handle;
    const qint32 handle = nextAnnotation_++;
    annotations_.emplace(handle, std::move(vRef));
    return handle;
}

void XdwEngine::AddAnnotation(qint32 vType, qint32 vPage, qint32 vX, qint32 vY, qint32 vWidth,
                              qint32 vHeight, const QString& vBitmapPath)
{
    int index = 0;
    if (Edit([&](xdw::EditableFile& vFile) {
            xdw::Node& page = xdw::edit::PageAt(vFile.root, vPage).Page();
            index = xdw::annot::AddAnnotation(page, SpecOf(vType, vX, vY, vWidth, vHeight, vBitmapPath, vFile.generation), Pack);
        }))
        newAnnotation_ = AnnotationHandleFor({selected_, vPage, {index + 1}});
}

void XdwEngine::AddAnnotationOnParentAnnotation(qint32 vType, qint32 vParentHandle, qint32 vX, qint32 vY,
                                                qint32 vWidth, qint32 vHeight, const QString& vBitmapPath)
{
    const auto parent = annotations_.find(vParentHandle);
    if (parent == annotations_.end() || parent->second.document != selected_) {
        lastReason_ = QStringLiteral("no annotation %1").arg(vParentHandle);
        Fail(XdwResult::InvalidArg);
        return;
    }
    const AnnotationRef parentRef = parent->second;
    int index = 0;
    if (Edit([&](xdw::EditableFile& vFile) {
            xdw::Node& holder = AnnotationNode(vFile, parentRef);
            index = xdw::annot::AddAnnotation(holder, SpecOf(vType, vX, vY, vWidth, vHeight, vBitmapPath, vFile.generation), Pack);
        })) {
        AnnotationRef ref = parentRef;
        ref.path.push_back(index + 1);
        newAnnotation_ = AnnotationHandleFor(std::move(ref));
    }
}

void XdwEngine::AddAnnotationFromAnnFile(const QString&, qint32, qint32, qint32, bool, bool, qint32)
{
    lastReason_ = QStringLiteral("the annotation tool file format is not public");
    Fail(NotSupported, QStringLiteral("アノテーションツールファイルの形式は公開されていないため、読み込みには対応していません。"));
}

void XdwEngine::GetAnnotationInformation(qint32 vPage, qint32 vIndex, qint32 vParentHandle)
{
    Attempt([&] {
        xdw::EditableFile& file = TreeOf(SelectedDocument());
        AnnotationRef ref{selected_, vPage, {}};
        if (vParentHandle != 0) {
            const auto parent = annotations_.find(vParentHandle);
            if (parent == annotations_.end() || parent->second.document != selected_)
                BadHandle(QStringLiteral("no annotation %1").arg(vParentHandle));
            ref = parent->second;
        }
        const std::vector<xdw::annot::AnnotationInfo> list = xdw::annot::ListAnnotations(AnnotationNode(file, ref));
        if (vIndex < 1 || vIndex > static_cast<qint32>(list.size()))
            BadHandle(QStringLiteral("no annotation %1").arg(vIndex));
        const xdw::annot::AnnotationInfo& info = list[static_cast<size_t>(vIndex - 1)];
        ref.path.push_back(vIndex);
        const bool line = xdw::annot::TypeName(info.kind) == QLatin1String("STRAIGHTLINE");
        annotation_ = {AnnotationHandleFor(std::move(ref)), static_cast<qint32>(info.x), static_cast<qint32>(info.y),
                       static_cast<qint32>(line ? info.horVec : info.width),
                       static_cast<qint32>(line ? info.verVec : info.height), info.children,
                       static_cast<qint32>(info.kind)};
    });
}

qint32 XdwEngine::GetAnnotationHandleFromNo(qint32 vPage, qint32 vNumber, qint32 vParentHandle)
{
    GetAnnotationInformation(vPage, vNumber, vParentHandle);
    return LastResult() == XdwResult::Success ? annotation_.handle : 0;
}

void XdwEngine::SelectAnnotationHandle(qint32 vHandle)
{
    if (annotations_.contains(vHandle)) {
        selectedAnnotation_ = vHandle;
        Succeed();
    } else {
        Fail(XdwResult::InvalidArg);
    }
}

QString XdwEngine::GetAnnotationAttribute(const QString& vName)
{
    QString value;
    Attempt([&] {
        const auto it = annotations_.find(selectedAnnotation_);
        if (it == annotations_.end())
            BadHandle(QStringLiteral("no annotation selected"));
        const std::optional<QVariant> read = xdw::annot::GetProperty(AnnotationNode(TreeOf(SelectedDocument()), it->second), vName);
        if (!read)
            BadHandle(QStringLiteral("the annotation has no %1").arg(vName));
        value = ValueText(*read);
    });
    return value;
}

void XdwEngine::SetAnnotationAttribute(const QString& vName, qint32 /*vDataType*/, const QString& vValue)
{
    const auto it = annotations_.find(selectedAnnotation_);
    if (it == annotations_.end()) {
        Fail(XdwResult::InvalidArg);
        return;
    }
    const AnnotationRef ref = it->second;
    Edit([&](xdw::EditableFile& vFile) {
        const xdw::annot::PropertyName* property = xdw::annot::FindProperty(vName);
        if (!property)
            BadHandle(QStringLiteral("no property %1").arg(vName));
        QVariant value = vValue;
        bool ok = true;
        if (property->form == xdw::annot::ValueForm::Number)
            value = vValue.trimmed().toLongLong(&ok);
        else if (property->form == xdw::annot::ValueForm::StyleBit)
            value = vValue.trimmed() != QLatin1String("0") && vValue.trimmed().compare(QLatin1String("false"), Qt::CaseInsensitive) != 0;
        if (!ok || !xdw::annot::SetProperty(AnnotationNode(vFile, ref), vName, value, Pack))
            BadHandle(QStringLiteral("%1 cannot be %2").arg(vName, vValue));
    });
}

void XdwEngine::RemoveAnnotation()
{
    const auto it = annotations_.find(selectedAnnotation_);
    if (it == annotations_.end()) {
        Fail(XdwResult::InvalidArg);
        return;
    }
    const AnnotationRef gone = it->second;
    if (!Edit([&](xdw::EditableFile& vFile) {
            AnnotationRef parent = gone;
            parent.path.pop_back();
            if (!xdw::annot::RemoveAnnotation(AnnotationNode(vFile, parent), gone.path.back() - 1))
                BadHandle(QStringLiteral("the annotation is gone"));
        }))
        return;
    // Handles below the removed one go with it; those after it on the same level move up.
    const size_t depth = gone.path.size();
    for (auto h = annotations_.begin(); h != annotations_.end();) {
        AnnotationRef& ref = h->second;
        const bool sameParent = ref.document == gone.document && ref.page == gone.page && ref.path.size() >= depth
            && std::equal(gone.path.begin(), gone.path.end() - 1, ref.path.begin());
        if (sameParent && ref.path[depth - 1] == gone.path.back()) {
            h = annotations_.erase(h);
            continue;
        }
        if (sameParent && ref.path[depth - 1] > gone.path.back())
            --ref.path[depth - 1];
        ++h;
    }
    selectedAnnotation_ = 0;
}

void XdwEngine::ShowAndHideAnnotation(bool vShow)
{
    Edit([&](xdw::EditableFile& vFile) {
        for (const xdw::edit::PageSlot& slot : xdw::edit::Pages(vFile.root)) {
            xdw::Node& page = slot.Page();
            const size_t count = xdw::annot::ListAnnotations(page).size();
            for (size_t i = 0; i < count; ++i)
                xdw::annot::SetHidden(*xdw::annot::AnnotationAt(page, static_cast<int>(i)), !vShow);
        }
    });
}
