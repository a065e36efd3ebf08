// Documents made from other files: images, images or PDF, application files, and a document
// made again from pictures of its own pages.
#include "document/DocuWorksClass.h"

#include "document/DocuWorksFileClass.h"
#include "document/DocumentEngine.h"
#include "document/DocumentRules.h"
#include "document/XdwApi.h"
#include "support/DirClass.h"
#include "support/TempFileClass.h"

#include <QCoreApplication>

using namespace Qt::Literals::StringLiterals;
using documentrules::Raise;

namespace {

// An image another program still writes is tried this often, with this wait between tries.
constexpr int InUseTries = 31;
constexpr qint32 InUseWaitMs = 100;
// The application's conversion is looked at this often, this far apart: about ten seconds.
constexpr int CreationRounds = 1000;
constexpr qint32 CreationWaitMs = 10;
constexpr qint32 CreationEnded = 8;
constexpr qint32 CreationEndedToo = 9;
// A file in the way of the conversion's own files may be held for this long.
constexpr double DeleteRetrySec = 5.0;

void DeleteIfThere(const QString& vPath)
{
    if (DirClass::ExistsFile(vPath))
        DirClass::DeleteFile(vPath, DeleteRetrySec);
}

} // namespace

qint32 DocuWorksClass::RetryWhileInUse(const std::function<void()>& vCall) const
{
    for (int tries = 0; tries < InUseTries; ++tries) {
        vCall();
        if (engine_->LastResult() != XdwResult::FileInUse)
            break;
        XdwRetryWait(InUseWaitMs);
    }
    return engine_->LastResult();
}

void DocuWorksClass::CreateXdwFromImageFile(const QString& vImagePath, const QString& vXdwPath)
{
    engine_->SetImageToDocumentOptions(fitImage_, compress_, zoom_, width_, height_, HorPos(), VerPos());
    engine_->CreateDocumentFromImage(vImagePath, vXdwPath);
    if (engine_->LastResult() != XdwResult::Success)
        Raise(u"CreateXdwFromImageFile : "_s + engine_->LastErrorText());
}

void DocuWorksClass::CreateXdwFromImageFileEx2(const QString& vImagePath, const QString& vXdwPath)
{
    engine_->SetImageToDocumentOptionsEx2(fitImage_, compress_, zoom_, width_, height_, HorPos(), VerPos(), zoom_,
                                          u"DEFAULT"_s);
    if (RetryWhileInUse([&] { engine_->CreateDocumentFromImage(vImagePath, vXdwPath); }) == XdwResult::Success)
        return;
    // The older operation's name stands in front: logs have always been searched for it.
    Raise(u"CreateXdwFromImageFile : "_s + engine_->LastErrorText() + u" FitImage="_s + fitImage_
          + u" Compress="_s + compress_ + u" Zoom="_s + QString::number(zoom_) + u" Width="_s
          + QString::number(width_) + u" Height="_s + QString::number(height_) + u" HorPos="_s + HorPos()
          + u" VerPos="_s + VerPos() + u" ImagePath="_s + vImagePath + u" XdwPath="_s + vXdwPath);
}

void DocuWorksClass::CreateXdwFromImagePdfFile(const QString& vImagePath, const QString& vXdwPath)
{
    if (RetryWhileInUse([&] { engine_->CreateDocumentFromImagePdf(vXdwPath, vImagePath); }) != XdwResult::Success)
        Raise(u"CreateXdwFromImagePdfFile : "_s + engine_->LastErrorText() + u" ImagePath="_s + vImagePath
              + u" XdwPath="_s + vXdwPath);
}

void DocuWorksClass::BeginCreationFromAppFile(const QString& vAppFilePath, const QString& vXdwPath, bool vWithOrg)
{
    const QString prefix = u"BeginCreationFromAppFile : "_s;
    engine_->BeginCreationFromApp(vAppFilePath, vXdwPath, vWithOrg);
    if (engine_->LastResult() != XdwResult::Success)
        Raise(prefix + engine_->LastErrorText());
    QCoreApplication::processEvents();
    for (int round = 0; round < CreationRounds; ++round) {
        // Asked twice, as the application may move on between the two looks.
        if (engine_->GetStatusCreationFromApp() == CreationEnded
            || engine_->GetStatusCreationFromApp() == CreationEndedToo) {
            engine_->EndCreationFromApp();
            return;
        }
        XdwRetryWait(CreationWaitMs);
        QCoreApplication::processEvents();
    }
    engine_->CancelCreationFromApp();
    engine_->EndCreationFromApp();
    Raise(prefix + u"タイムオーバーでDocuWorks化に失敗しました。"_s);
}

void DocuWorksClass::ConvertXdwOfImage(const QString& vTargetFileName, const QString& vTempFolderPath,
                                       qint32 vDpi, qint32 vColor)
{
    const QString process = u"ConvertXdwOfImage"_s;
    if (!DirClass::ExistsDir(vTempFolderPath))
        Raise(process + u" : 作業用フォルダが存在しません。"_s);

    QString base;
    {
        // The source stays open until every page is a picture in the new document.
        DocuWorksClass source;
        source.OpenXdw(vTargetFileName, 1);
        source.RefDwFileData()->TopData();
        const std::shared_ptr<DocuWorksFileClass> file = source.RefDwFile();
        file->GetDocumentInformation();
        if (progressStart_)
            progressStart_(process, file->Pages());
        for (qint32 page = 1; page <= file->Pages(); ++page) {
            ConvertPageOfImage(*file, page, vTempFolderPath, vDpi, vColor, base);
            if (progressNext_)
                progressNext_(process);
        }
    }
    // A document without pages has nothing to be replaced by.
    if (base.isEmpty())
        return;
    DirClass::DeleteFile(vTargetFileName, DeleteRetrySec);
    DirClass::MoveFile(base, vTargetFileName);
}

void DocuWorksClass::ConvertPageOfImage(DocuWorksFileClass& vSource, qint32 vPage, const QString& vTempFolderPath,
                                        qint32 vDpi, qint32 vColor, QString& vBase)
{
    TempFileClass temp;  // takes the page's picture along when it goes
    const QString picture = temp.RegisterTempFile(DirClass::AddYen(vTempFolderPath) + u"TempImage.bmp"_s,
                                                  vTempFolderPath);
    vSource.ConvertPageToImageFile(vPage, picture, vDpi, vColor, u"DIB"_s);

    // Without loss, and filling the page, so that the picture is the page as it was.
    DocuWorksClass converter;
    converter.SetCompress(u"LOSSLESS"_s);
    converter.SetFitImage(u"FIT"_s);
    if (vPage == 1) {
        vBase = picture.left(picture.size() - 4) + u"_base.xdw"_s;
        DeleteIfThere(vBase);
        converter.CreateXdwFromImageFile(picture, vBase);
        return;
    }
    const QString pageDocument = picture.left(picture.size() - 3) + u"xdw"_s;
    DeleteIfThere(pageDocument);
    converter.CreateXdwFromImageFile(picture, pageDocument);
    // The gathering document closes with the converter, at the end of the page.
    const std::shared_ptr<DocuWorksFileClass> gathered = converter.OpenXdw(vBase, 1);
    gathered->InsertDocument(vPage, pageDocument);
    gathered->SaveDocument();
    DirClass::DeleteFile(pageDocument, DeleteRetrySec);
}
