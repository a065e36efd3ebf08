// A document's annotations: made on a page or in a group, read page by page into the list the
// document keeps, shown or hidden together.
#include "document/DocuWorksFileClass.h"

#include "document/DocuWorksAnnotationClass.h"
#include "document/DocumentEngine.h"
#include "document/DocumentRules.h"
#include "document/XdwApi.h"

using namespace Qt::Literals::StringLiterals;
using documentrules::Raise;
using Annotation = std::shared_ptr<DocuWorksAnnotationClass>;

std::shared_ptr<DocuWorksAnnotationClass> DocuWorksFileClass::RefDwAnnotation() const
{
    return annotationData_->CurrentDataReference().As<DocuWorksAnnotationClass>();
}

Annotation DocuWorksFileClass::NewAnnotation()
{
    auto annotation = std::make_shared<DocuWorksAnnotationClass>(engine_);
    annotation->SetDocumentHandle(documentHandle_);
    return annotation;
}

Annotation DocuWorksFileClass::Add(Annotation vAnnotation, qint32 vType, qint32 vPage, qint32 vLeft, qint32 vTop,
                                   qint32 vParentHandle)
{
    vAnnotation->AddAnnotation(vType, vPage, vLeft, vTop, vParentHandle);
    annotationData_->AddReference(vAnnotation);
    return vAnnotation;
}

Annotation DocuWorksFileClass::AddTextAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop, qint32 vParentHandle)
{
    return Add(NewAnnotation(), DocuWorksAnnotationClass::Text, vPage, vLeft, vTop, vParentHandle);
}

Annotation DocuWorksFileClass::AddRectAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop, qint32 vWidth,
                                                 qint32 vHeight, qint32 vParentHandle)
{
    Annotation annotation = NewAnnotation();
    annotation->SetWidth(vWidth);
    annotation->SetHeight(vHeight);
    return Add(annotation, DocuWorksAnnotationClass::Rect, vPage, vLeft, vTop, vParentHandle);
}

Annotation DocuWorksFileClass::AddLinkAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop, qint32 vParentHandle)
{
    return Add(NewAnnotation(), DocuWorksAnnotationClass::Link, vPage, vLeft, vTop, vParentHandle);
}

Annotation DocuWorksFileClass::AddBitmapAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop,
                                                   const QString& vBitmapPath, qint32 vParentHandle)
{
    Annotation annotation = NewAnnotation();
    annotation->SetBitmapPath(vBitmapPath);
    return Add(annotation, DocuWorksAnnotationClass::Bitmap, vPage, vLeft, vTop, vParentHandle);
}

Annotation DocuWorksFileClass::AddLineAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop, qint32 vHorVec,
                                                 qint32 vVerVec, qint32 vParentHandle)
{
    Annotation annotation = NewAnnotation();
    annotation->SetHorVec(vHorVec);
    annotation->SetVerVec(vVerVec);
    return Add(annotation, DocuWorksAnnotationClass::Line, vPage, vLeft, vTop, vParentHandle);
}

Annotation DocuWorksFileClass::AddDateStampAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop,
                                                      qint32 vParentHandle)
{
    return Add(NewAnnotation(), DocuWorksAnnotationClass::DateStamp, vPage, vLeft, vTop, vParentHandle);
}

Annotation DocuWorksFileClass::AddFusenAnnotation(qint32 vPage, qint32 vLeft, qint32 vTop, qint32 vWidth,
                                                  qint32 vHeight, qint32 vParentHandle)
{
    Annotation annotation = NewAnnotation();
    annotation->SetWidth(vWidth);
    annotation->SetHeight(vHeight);
    return Add(annotation, DocuWorksAnnotationClass::Fusen, vPage, vLeft, vTop, vParentHandle);
}

Annotation DocuWorksFileClass::AddAnnotationFile(const QString& vAnnFilePath, qint32 vPage, qint32 vLeft,
                                                 qint32 vTop, bool vTargetGroupAnnotation,
                                                 bool vTargetCustomAnnotation, qint32 vParentHandle)
{
    Annotation annotation = NewAnnotation();
    annotation->AddAnnotationFile(vAnnFilePath, vPage, vLeft, vTop, vTargetGroupAnnotation,
                                  vTargetCustomAnnotation, vParentHandle);
    annotationData_->AddReference(annotation);
    return annotation;
}

void DocuWorksFileClass::GetAnnotation(qint32 vPage)
{
    GetPageInformation(vPage);
    const qint16 count = pageAnnotations_;
    for (qint32 index = 1; index <= count; ++index) {
        Annotation annotation = NewAnnotation();
        annotation->GetAnnotation(vPage, index, 0);
        annotationData_->AddReference(annotation);
    }
}

void DocuWorksFileClass::GetAllAnnotation()
{
    GetDocumentInformation();
    for (qint32 page = 1; page <= pages_; ++page)
        GetAnnotation(page);
}

void DocuWorksFileClass::ReleaseAllAnnotation()
{
    for (qint16 i = 1; i <= annotationData_->Count(); ++i)
        annotationData_->SetDataReferenceOfNumber(i, nullptr);
    annotationData_->Clear();
}

void DocuWorksFileClass::ShowAndHideAnnotation(bool vShow)
{
    Select().ShowAndHideAnnotation(vShow);
    Check(u"ShowAndHideAnnotation"_s);
}

qint32 DocuWorksFileClass::GetAnnotationHandleFromNo(qint32 vPage, qint32 vNumber, qint32 vParentHandle)
{
    const qint32 handle = Select().GetAnnotationHandleFromNo(vPage, vNumber, vParentHandle);
    if (engine_->LastResult() != XdwResult::Success)
        Raise(u"アノテーション番号が不正です。 GetAnnotationHandleFromNo : "_s + engine_->LastErrorText());
    return handle;
}

void DocuWorksFileClass::ReadAnnotationInformation(qint32 vPage, qint32 vNumber)
{
    Select().GetAnnotationInformation(vPage, vNumber, 0);
    Check(u"GetAnnotationInformation"_s);
}

qint32 DocuWorksFileClass::GetAnnoInfoHorPos(qint32 vPage, qint32 vNumber)
{
    ReadAnnotationInformation(vPage, vNumber);
    return engine_->AnnotationX();
}

qint32 DocuWorksFileClass::GetAnnoInfoVerPos(qint32 vPage, qint32 vNumber)
{
    ReadAnnotationInformation(vPage, vNumber);
    return engine_->AnnotationY();
}
