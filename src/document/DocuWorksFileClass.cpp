#include "document/DocuWorksFileClass.h"

#include "document/DocuWorksAnnotationClass.h"
#include "document/DocuWorksClass.h"
#include "document/DocumentEngine.h"
#include "document/DocumentRules.h"
#include "document/XdwApi.h"
#include "support/AppError.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;
using documentrules::MaxDpi;
using documentrules::MinDpi;
using documentrules::Raise;

namespace {

// A document locked by another program is tried this often, with this wait between tries.
constexpr int OpenTries = 30;
constexpr qint32 OpenRetryWaitMs = 100;

// From this major version on the runtime answers the extended page query.
constexpr int ExtendedPageQueryVersion = 5;

// The permission bits of a document, as a protected copy is asked for them.
enum PermissionBit : qint16 { DocumentEdit = 2, AnnotationEdit = 4, Print = 8, Copy = 16 };

QString FileSuffix(const QString& vPath)
{
    return u" [File="_s + vPath + u']';
}

qint16 As16(qint32 vValue)
{
    if (vValue < std::numeric_limits<qint16>::min() || vValue > std::numeric_limits<qint16>::max())
        throw AppError(AppError::Overflow);
    return static_cast<qint16>(vValue);
}

QString WordOf(qint16 vNumber, std::initializer_list<const char16_t*> vWords)
{
    if (vNumber < 0 || vNumber >= static_cast<qint16>(vWords.size()))
        return {};
    return QString::fromUtf16(vWords.begin()[vNumber]);
}

} // namespace

DocuWorksFileClass::DocuWorksFileClass(std::shared_ptr<DocumentEngine> vEngine)
    : engine_(vEngine ? std::move(vEngine) : XdwApiObject()),
      annotationData_(std::make_shared<StructuredDataClass>())
{
}

DocuWorksFileClass::~DocuWorksFileClass()
{
    ReleaseAllAnnotation();
    if (textPosition_)
        textPosition_->Clear();
    if (documentHandle_ != 0)
        CloseDocument();
}

DocumentEngine& DocuWorksFileClass::Select()
{
    engine_->SelectDocumentHandle(documentHandle_);
    return *engine_;
}

void DocuWorksFileClass::Check(const QString& vOperation) const
{
    if (engine_->LastResult() != XdwResult::Success)
        Raise(vOperation + u" : "_s + engine_->LastErrorText());
}

// ---- open, close

void DocuWorksFileClass::OpenXdw(const QString& vPath, qint16 vOption)
{
    if (!vPath.isEmpty())
        dwPath_ = vPath;
    const QString type = dwPath_.right(3).toUpper();
    if (type != u"XDW"_s && type != u"XCT"_s && type != u"XBD"_s)
        Raise(u"OpenXdw : DocuWorks文書以外はオープンできません。"_s + FileSuffix(dwPath_));

    // Another program (a scanner's writer, a copy in progress) may hold the file for a
    // moment. The first failure is tried again at once; after that every try waits.
    qint32 result = XdwResult::Success;
    int tries = 0;
    do {
        engine_->OpenDocument(dwPath_, vOption);
        result = engine_->LastResult();
        if (result != XdwResult::Success && tries >= 1)
            XdwRetryWait(OpenRetryWaitMs);
        ++tries;
    } while (tries < OpenTries && result == XdwResult::FileInUse);

    if (engine_->LastResult() != XdwResult::Success)
        Raise(u"OpenXdw : "_s + engine_->LastErrorText() + FileSuffix(dwPath_));
    documentHandle_ = engine_->ReadDocumentHandle();
}

void DocuWorksFileClass::CloseDocument()
{
    Select().CloseSelectedDocument();
}

void DocuWorksFileClass::SaveDocument()
{
    Select().SaveDocument();
    Check(u"SaveDocument"_s);
}

// ---- the document

void DocuWorksFileClass::GetDocumentInformation()
{
    Select().GetDocumentInformation();
    Check(u"GetDocumentInformation"_s);
    CopyDocumentFields();
}

void DocuWorksFileClass::GetDocumentInformationInBinder(qint32 vPosition)
{
    Select().GetDocumentInformationInBinder(vPosition);
    Check(u"GetDocumentInformationInBinder"_s);
    CopyDocumentFields();
}

void DocuWorksFileClass::CopyDocumentFields()
{
    const DocumentEngine& engine = *engine_;
    pages_ = engine.Pages();
    version_ = engine.Version();
    originalData_ = engine.OriginalData();
    documentType_ = engine.DocumentType();
    permission_ = engine.Permission();
    showAnnotations_ = engine.ShowAnnotations();
    documents_ = engine.Documents();
    binderColor_ = engine.BinderColor();
    binderSize_ = engine.BinderSize();
}

QString DocuWorksFileClass::DocType() const
{
    return WordOf(documentType_, {u"DOCUMENT", u"BINDER"});
}

bool DocuWorksFileClass::PermissionOfDocumentEdit() const
{
    return (permission_ & DocumentEdit) != 0;
}

bool DocuWorksFileClass::PermissionOfAnnotationEdit() const
{
    return (permission_ & AnnotationEdit) != 0;
}

bool DocuWorksFileClass::PermissionOfPrint() const
{
    return (permission_ & Print) != 0;
}

bool DocuWorksFileClass::PermissionOfCopy() const
{
    return (permission_ & Copy) != 0;
}

// ---- pages

void DocuWorksFileClass::GetPageInformation(qint32 vPage)
{
    // A version that doesn't read as a number (a document opened without asking the runtime)
    // gets the plain query, which every runtime answers.
    const int major = DocuWorksClass::GetPartOfMajorVersion(docuWorksVersion_).trimmed().toInt();
    if (major < ExtendedPageQueryVersion)
        GetPageInformationNormal(vPage);
    else
        GetPageInformationEx(vPage);
}

void DocuWorksFileClass::GetPageInformationNormal(qint32 vPage)
{
    Select().GetPageInformation(vPage);
    Check(u"GetPageInformation"_s);
    CopyPageFields(false);
}

void DocuWorksFileClass::GetPageInformationEx(qint32 vPage)
{
    Select().GetPageInformationEx(vPage);
    Check(u"GetPageInformationEx"_s);
    CopyPageFields(true);
}

void DocuWorksFileClass::CopyPageFields(bool vExtended)
{
    const DocumentEngine& engine = *engine_;
    pageWidth_ = engine.PageWidth();
    pageHeight_ = engine.PageHeight();
    pageType_ = engine.PageType();
    pageHorRes_ = engine.PageHorRes();
    pageVerRes_ = engine.PageVerRes();
    pageCompress_ = engine.PageCompress();
    pageAnnotations_ = engine.PageAnnotations();
    if (!vExtended)
        return;
    pageDegree_ = engine.PageDegree();
    pageOrgWidth_ = engine.PageOrgWidth();
    pageOrgHeight_ = engine.PageOrgHeight();
    pageOrgHorRes_ = engine.PageOrgHorRes();
    pageOrgVerRes_ = engine.PageOrgVerRes();
    pageImageWidth_ = engine.PageImageWidth();
    pageImageHeight_ = engine.PageImageHeight();
}

void DocuWorksFileClass::GetPageColorInformation(qint32 vPage)
{
    DocumentEngine& engine = Select();
    engine.GetPageColorInformation(vPage);
    Check(u"GetPageColorInformation"_s);
    pageColor_ = engine.PageColor();
    pageImageDepth_ = engine.PageImageDepth();
}

QString DocuWorksFileClass::PagePageType() const
{
    return WordOf(pageType_, {u"NULL", u"FROMIMAGE", u"FROMAPPL"});
}

QString DocuWorksFileClass::PageCompressType() const
{
    return WordOf(pageCompress_, {u"NORMAL", u"LOSSLESS", u"HIGHQUALITY", u"HIGHCOMPRESS",
                                  u"NOCOMPRESS", u"JPEG", u"PACKBITS", u"G4", u"MRC_NORMAL",
                                  u"MRC_HIGHQUALITY", u"MRC_HIGHCOMPRESS", u"MRC"});
}

// ---- pages as bitmaps

qint32 DocuWorksFileClass::ConvertPageToImageHandle(qint32 vPage, qint32 vDpi, qint32 vColor)
{
    const QString prefix = u"ConvertPageToImageHandle : "_s;
    if (vColor != 0 && vColor != 1)
        Raise(prefix + u"カラー指定が正しくありません。"_s);
    qint32 dpi = vDpi;
    if (dpi == 0) {
        // The page's own resolution, so that a scan shows its pixels one for one.
        GetPageInformation(vPage);
        dpi = pageVerRes_ > pageHorRes_ ? pageVerRes_ : pageHorRes_;
    } else if (dpi < MinDpi || dpi > MaxDpi) {
        Raise(prefix + documentrules::DpiText);
    }

    DocumentEngine& engine = Select();
    const qint32 handle = engine.ConvertPageToImageHandle(vPage, dpi, vColor);
    Check(u"ConvertPageToImageHandle"_s);
    bitmapWidth_ = engine.BitmapWidth();
    bitmapHeight_ = engine.BitmapHeight();
    return handle;
}

qint16 DocuWorksFileClass::BitmapWidth() const
{
    return As16(bitmapWidth_);
}

qint16 DocuWorksFileClass::BitmapHeight() const
{
    return As16(bitmapHeight_);
}
