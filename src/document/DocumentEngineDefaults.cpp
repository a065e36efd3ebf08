// The bodies of the members an engine may leave out: each refuses, naming itself, so that the
// caller's usual failure text tells what this engine can't do.
#include "document/DocumentEngine.h"

#include "document/XdwApi.h"

using namespace Qt::Literals::StringLiterals;

void DocumentEngine::SaveDocument() { Unavailable(u"SaveDocument"_s); }
void DocumentEngine::SetImageTiff(const QString&, qint32) { Unavailable(u"SetImageTiff"_s); }
void DocumentEngine::SetImageJpeg(const QString&) { Unavailable(u"SetImageJpeg"_s); }
void DocumentEngine::SetImagePdf(const QString&, qint32, const QString&) { Unavailable(u"SetImagePdf"_s); }
void DocumentEngine::ConvertPageToImageFile(qint32, const QString&, qint32, qint32, const QString&)
{
    Unavailable(u"ConvertPageToImageFile"_s);
}
void DocumentEngine::ConvertPageToImageFileEx(qint32, const QString&, qint32, qint32, qint32, qint32, qint32, qint32)
{
    Unavailable(u"ConvertPageToImageFileEx"_s);
}
void DocumentEngine::ConvertPageToThumbnailImageFile(qint32, const QString&)
{
    Unavailable(u"ConvertPageToThumbnailImageFile"_s);
}
void DocumentEngine::SetImageToDocumentOptions(const QString&, const QString&, qint32, qint32, qint32, const QString&, const QString&)
{
    Unavailable(u"SetImageToDocumentOptions"_s);
}
void DocumentEngine::SetImageToDocumentOptionsEx2(const QString&, const QString&, qint32, qint32, qint32, const QString&, const QString&, qint32, const QString&)
{
    Unavailable(u"SetImageToDocumentOptionsEx2"_s);
}
void DocumentEngine::CreateDocumentFromImage(const QString&, const QString&)
{
    Unavailable(u"CreateDocumentFromImage"_s);
}
void DocumentEngine::CreateDocumentFromImagePdf(const QString&, const QString&)
{
    Unavailable(u"CreateDocumentFromImagePdf"_s);
}
void DocumentEngine::BeginCreationFromApp(const QString&, const QString&, bool)
{
    Unavailable(u"BeginCreationFromApp"_s);
}
void DocumentEngine::EndCreationFromApp() { Unavailable(u"EndCreationFromApp"_s); }
qint32 DocumentEngine::GetStatusCreationFromApp() { Unavailable(u"GetStatusCreationFromApp"_s); return {}; }
void DocumentEngine::CancelCreationFromApp() { Unavailable(u"CancelCreationFromApp"_s); }
void DocumentEngine::ProtectDocument(const QString&, const QString&, qint32, qint32, const QString&, const QString&, const QString&)
{
    Unavailable(u"ProtectDocument"_s);
}
void DocumentEngine::AddMergeInput(const QString&) { Unavailable(u"AddMergeInput"_s); }
void DocumentEngine::ClearMergeInputs() { Unavailable(u"ClearMergeInputs"_s); }
void DocumentEngine::MergeDocuments(const QString&) { Unavailable(u"MergeDocuments"_s); }
void DocumentEngine::CreateBinder(const QString&) { Unavailable(u"CreateBinder"_s); }
void DocumentEngine::InsertDocumentToBinder(const QString&, const QString&, qint32)
{
    Unavailable(u"InsertDocumentToBinder"_s);
}
void DocumentEngine::ReadImageFile(const QString&) { Unavailable(u"ReadImageFile"_s); }
bool DocumentEngine::IsEnabledForOcr() { Unavailable(u"IsEnabledForOcr"_s); return {}; }
void DocumentEngine::SetOcrOptions(const QString&, const QString&, bool, bool, const QString&, const QString&, bool, bool)
{
    Unavailable(u"SetOcrOptions"_s);
}
void DocumentEngine::ApplyOcr(qint32) { Unavailable(u"ApplyOcr"_s); }
void DocumentEngine::SetOcrOptionsV7(const QString&, const QString&, bool, const QString&, const QString&, bool, bool, bool, const QString&, const QString&, bool)
{
    Unavailable(u"SetOcrOptionsV7"_s);
}
void DocumentEngine::ApplyOcrV7(qint32) { Unavailable(u"ApplyOcrV7"_s); }
void DocumentEngine::SetOcrOptionV7AddRect(qint32, qint32, qint32, qint32)
{
    Unavailable(u"SetOcrOptionV7AddRect"_s);
}
void DocumentEngine::SetOcrOptionV7ClearRect() { Unavailable(u"SetOcrOptionV7ClearRect"_s); }
void DocumentEngine::SetClearOcrDataOptions(qint32, qint32, qint32, const QString&)
{
    Unavailable(u"SetClearOcrDataOptions"_s);
}
void DocumentEngine::ClearOcrData(qint32) { Unavailable(u"ClearOcrData"_s); }
QString DocumentEngine::GetPageTextToMemory(qint32) { Unavailable(u"GetPageTextToMemory"_s); return {}; }
QString DocumentEngine::GetTextPosition(qint32) { Unavailable(u"GetTextPosition"_s); return {}; }
void DocumentEngine::GetPage(qint32, const QString&) { Unavailable(u"GetPage"_s); }
void DocumentEngine::InsertDocument(qint32, const QString&) { Unavailable(u"InsertDocument"_s); }
void DocumentEngine::DeletePage(qint32) { Unavailable(u"DeletePage"_s); }
void DocumentEngine::RotatePage(qint32, qint32) { Unavailable(u"RotatePage"_s); }
void DocumentEngine::ReducePageNoise(qint32, const QString&) { Unavailable(u"ReducePageNoise"_s); }
void DocumentEngine::GetPageColorInformation(qint32) { Unavailable(u"GetPageColorInformation"_s); }
qint32 DocumentEngine::RotatePageAuto(qint32, qint32)
{
    Unavailable(u"RotatePageAuto"_s); return XdwResult::Unexpected;
}
void DocumentEngine::SetUserAttribute(const QString&, const QString&) { Unavailable(u"SetUserAttribute"_s); }
QString DocumentEngine::GetUserAttribute(const QString&) { Unavailable(u"GetUserAttribute"_s); return {}; }
void DocumentEngine::DeleteUserAttribute(const QString&) { Unavailable(u"DeleteUserAttribute"_s); }
void DocumentEngine::SetDocumentAttribute(const QString&, const QString&, qint16)
{
    Unavailable(u"SetDocumentAttribute"_s);
}
QString DocumentEngine::GetDocumentAttribute(const QString&)
{
    Unavailable(u"GetDocumentAttribute"_s); return {};
}
void DocumentEngine::DeleteDocumentAttribute(const QString&) { Unavailable(u"DeleteDocumentAttribute"_s); }
void DocumentEngine::SucceedAttribute(const QString&, qint32, qint32) { Unavailable(u"SucceedAttribute"_s); }
void DocumentEngine::GetDocumentInformationInBinder(qint32)
{
    Unavailable(u"GetDocumentInformationInBinder"_s);
}
QString DocumentEngine::GetDocumentNameInBinder(qint32)
{
    Unavailable(u"GetDocumentNameInBinder"_s); return {};
}
void DocumentEngine::GetDocumentFromBinder(qint32, const QString&)
{
    Unavailable(u"GetDocumentFromBinder"_s);
}
void DocumentEngine::DeleteDocumentInBinder(qint32) { Unavailable(u"DeleteDocumentInBinder"_s); }
void DocumentEngine::InsertOriginalData(qint32, const QString&) { Unavailable(u"InsertOriginalData"_s); }
void DocumentEngine::DeleteOriginalData(qint32) { Unavailable(u"DeleteOriginalData"_s); }
QString DocumentEngine::GetFileNameOfOriginalData(qint32)
{
    Unavailable(u"GetFileNameOfOriginalData"_s); return {};
}
void DocumentEngine::GetFileFromOriginalData(qint32, const QString&)
{
    Unavailable(u"GetFileFromOriginalData"_s);
}
void DocumentEngine::AddAnnotation(qint32, qint32, qint32, qint32, qint32, qint32, const QString&)
{
    Unavailable(u"AddAnnotation"_s);
}
void DocumentEngine::AddAnnotationOnParentAnnotation(qint32, qint32, qint32, qint32, qint32, qint32, const QString&)
{
    Unavailable(u"AddAnnotationOnParentAnnotation"_s);
}
void DocumentEngine::AddAnnotationFromAnnFile(const QString&, qint32, qint32, qint32, bool, bool, qint32)
{
    Unavailable(u"AddAnnotationFromAnnFile"_s);
}
qint32 DocumentEngine::ReadAnnotationHandle() { Unavailable(u"ReadAnnotationHandle"_s); return {}; }
void DocumentEngine::GetAnnotationInformation(qint32, qint32, qint32)
{
    Unavailable(u"GetAnnotationInformation"_s);
}
qint32 DocumentEngine::GetAnnotationHandleFromNo(qint32, qint32, qint32)
{
    Unavailable(u"GetAnnotationHandleFromNo"_s); return {};
}
void DocumentEngine::SelectAnnotationHandle(qint32) { Unavailable(u"SelectAnnotationHandle"_s); }
QString DocumentEngine::GetAnnotationAttribute(const QString&)
{
    Unavailable(u"GetAnnotationAttribute"_s); return {};
}
void DocumentEngine::SetAnnotationAttribute(const QString&, qint32, const QString&)
{
    Unavailable(u"SetAnnotationAttribute"_s);
}
void DocumentEngine::RemoveAnnotation() { Unavailable(u"RemoveAnnotation"_s); }
void DocumentEngine::ShowAndHideAnnotation(bool) { Unavailable(u"ShowAndHideAnnotation"_s); }
