#include "document/DocuWorksAnnotationClass.h"

#include "document/DocumentEngine.h"
#include "document/DocumentRules.h"
#include "document/XdwApi.h"
#include "support/AppError.h"
#include "support/DirClass.h"

using namespace Qt::Literals::StringLiterals;
using documentrules::Raise;

namespace {

// The page's coordinates and a line's run reach this far either way.
constexpr qint32 MostPosition = 240000;
constexpr qint32 LeastRectangleSide = 100;
constexpr qint32 LeastFusenSide = 500;
constexpr qint32 MostFusenSide = 50000;

void CheckSides(const QString& vPrefix, qint32 vWidth, qint32 vHeight, qint32 vLeast, qint32 vMost)
{
    const QString least = QString::number(vLeast), most = QString::number(vMost);
    if (vWidth < vLeast)
        Raise(vPrefix + u"幅には"_s + least + u"より小さい値を設定できません。"_s);
    if (vHeight < vLeast)
        Raise(vPrefix + u"高さには"_s + least + u"より小さい値を設定できません。"_s);
    if (vWidth > vMost)
        Raise(vPrefix + u"幅には"_s + most + u"より大きい値を設定できません。"_s);
    if (vHeight > vMost)
        Raise(vPrefix + u"高さには"_s + most + u"より大きい値を設定できません。"_s);
}

} // namespace

DocuWorksAnnotationClass::DocuWorksAnnotationClass(std::shared_ptr<DocumentEngine> vEngine)
    : engine_(vEngine ? std::move(vEngine) : XdwApiObject()), colorName_(MakeColorTree())
{
}

DocumentEngine& DocuWorksAnnotationClass::SelectAnnotation()
{
    engine_->SelectDocumentHandle(documentHandle_);
    engine_->SelectAnnotationHandle(annotationHandle_);
    return *engine_;
}

// ---- properties

QString DocuWorksAnnotationClass::Property(const QString& vName)
{
    if (!PropertyNames().contains(vName))
        throw AppError(AppError::InvalidArgument);
    const QString value = SelectAnnotation().GetAnnotationAttribute(vName);
    properties_.insert(vName, value);
    return value;
}

void DocuWorksAnnotationClass::SetProperty(const QString& vName, const QString& vValue)
{
    if (!PropertyNames().contains(vName))
        throw AppError(AppError::InvalidArgument);
    properties_.insert(vName, vValue);
    SelectAnnotation().SetAnnotationAttribute(vName, PropertyDataType(vName), vValue);
}

// ---- operations

void DocuWorksAnnotationClass::CheckPosition(const QString& vPrefix, qint32 vLeft, qint32 vTop)
{
    if (vLeft < -MostPosition)
        Raise(vPrefix + u"X座標には-240000より小さい値を設定できません。"_s);
    if (vTop < -MostPosition)
        Raise(vPrefix + u"Y座標には-240000より小さい値を設定できません。"_s);
    // One text for both: a Y too far down has always been reported as an X.
    if (vLeft > MostPosition || vTop > MostPosition)
        Raise(vPrefix + u"X座標には240000より大きい値を設定できません。"_s);
}

void DocuWorksAnnotationClass::CheckShape(qint32 vType) const
{
    const QString prefix = u"AddAnnotation : "_s;
    switch (vType) {
    case Rect:
        CheckSides(prefix, width_, height_, LeastRectangleSide, MostPosition);
        break;
    case Bitmap:
        if (bitmapPath_.isEmpty())
            Raise(prefix + u"DIBファイルの指定がありません。"_s);
        if (!DirClass::ExistsFile(bitmapPath_))
            Raise(prefix + bitmapPath_ + u"が見つかりません。"_s);
        break;
    case Line:
        if (horVec_ < -MostPosition)
            Raise(prefix + u"水平移動量には-240000より小さい値を設定できません。"_s);
        if (verVec_ < -MostPosition)
            Raise(prefix + u"垂直移動量には-240000より小さい値を設定できません。"_s);
        if (horVec_ > MostPosition)
            Raise(prefix + u"水平移動量には240000より大きい値を設定できません。"_s);
        if (verVec_ > MostPosition)
            Raise(prefix + u"垂直移動量には240000より大きい値を設定できません。"_s);
        break;
    case Fusen:
        CheckSides(prefix, width_, height_, LeastFusenSide, MostFusenSide);
        break;
    default:
        break;
    }
}

void DocuWorksAnnotationClass::AddAnnotation(qint32 vType, qint32 vPage, qint32 vLeft, qint32 vTop,
                                             qint32 vParentHandle)
{
    CheckPosition(u"AddAnnotation : "_s, vLeft, vTop);
    CheckShape(vType);
    page_ = vPage;
    xPosition_ = vLeft;
    yPosition_ = vTop;
    // A line's size is its run.
    const qint32 width = vType == Line ? horVec_ : width_;
    const qint32 height = vType == Line ? verVec_ : height_;
    engine_->SelectDocumentHandle(documentHandle_);
    if (vParentHandle != 0) {
        engine_->AddAnnotationOnParentAnnotation(vType, vParentHandle, vLeft, vTop, width, height, bitmapPath_);
        if (engine_->LastResult() != XdwResult::Success)
            Raise(u"AddAnnotationOnParentAnnotation : "_s + engine_->LastErrorText());
    } else {
        engine_->AddAnnotation(vType, vPage, vLeft, vTop, width, height, bitmapPath_);
        if (engine_->LastResult() != XdwResult::Success)
            Raise(u"AddAnnotation : "_s + engine_->LastErrorText());
    }
    annotationHandle_ = engine_->ReadAnnotationHandle();
}

void DocuWorksAnnotationClass::AddAnnotationFile(const QString& vAnnFilePath, qint32 vPage, qint32 vLeft,
                                                 qint32 vTop, bool vTargetGroupAnnotation,
                                                 bool vTargetCustomAnnotation, qint32 vParentHandle)
{
    const QString prefix = u"AddAnnotationFile : "_s;
    CheckPosition(prefix, vLeft, vTop);
    if (vAnnFilePath.isEmpty())
        Raise(prefix + u"アノテーションツールファイルの指定がありません。"_s);
    if (!DirClass::ExistsFile(vAnnFilePath))
        Raise(prefix + vAnnFilePath + u"が見つかりません。"_s);
    page_ = vPage;
    xPosition_ = vLeft;
    yPosition_ = vTop;
    engine_->SelectDocumentHandle(documentHandle_);
    engine_->AddAnnotationFromAnnFile(vAnnFilePath, vPage, vLeft, vTop, vTargetGroupAnnotation,
                                      vTargetCustomAnnotation, vParentHandle);
    if (engine_->LastResult() != XdwResult::Success)
        Raise(prefix + engine_->LastErrorText());
    annotationHandle_ = engine_->ReadAnnotationHandle();
}

void DocuWorksAnnotationClass::GetAnnotation(qint32 vPage, qint32 vIndex, qint32 vParentHandle)
{
    page_ = vPage;
    index_ = vIndex;
    engine_->SelectDocumentHandle(documentHandle_);
    engine_->GetAnnotationInformation(vPage, vIndex, vParentHandle);
    if (engine_->LastResult() != XdwResult::Success)
        Raise(u"GetAnnotationInformation : "_s + engine_->LastErrorText());
    annotationHandle_ = engine_->AnnotationHandle();
    xPosition_ = engine_->AnnotationX();
    yPosition_ = engine_->AnnotationY();
    width_ = engine_->AnnotationWidth();
    height_ = engine_->AnnotationHeight();
    childAnnotations_ = engine_->AnnotationChildren();
    const QString type = TypeOfCode(engine_->AnnotationTypeCode());
    if (type.isEmpty())
        return;
    annotationType_ = type;
    if (type == u"STRAIGHTLINE"_s) {
        // A line's size is its run, which may point up or left.
        horVec_ = engine_->AnnotationWidth();
        verVec_ = engine_->AnnotationHeight();
    }
}

void DocuWorksAnnotationClass::RemoveAnnotation()
{
    SelectAnnotation().RemoveAnnotation();
    if (engine_->LastResult() != XdwResult::Success)
        Raise(u"RemoveAnnotation : "_s + engine_->LastErrorText());
}
