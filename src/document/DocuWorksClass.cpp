#include "document/DocuWorksClass.h"

#include "document/DocuWorksFileClass.h"
#include "document/DocumentEngine.h"
#include "document/XdwApi.h"
#include "support/AppError.h"
#include "support/CommonLibClass.h"
#include "support/DirClass.h"

#include <QTime>

#include <array>
#include <vector>

using namespace Qt::Literals::StringLiterals;

DocuWorksClass::DocuWorksClass()
    : engine_(XdwApiObject()), dwFileData_(std::make_shared<StructuredDataClass>())
{
}

DocuWorksClass::~DocuWorksClass()
{
    // One by one from the first, so that documents close in the order they were opened. The
    // references are taken out first: the list is the caller's to walk and must not be able to
    // make this destructor fail.
    std::vector<AnyRef> opened;
    for (qint16 i = 1; i <= dwFileData_->Count(); ++i)
        opened.push_back(dwFileData_->DataReferenceOfNumber(i));
    dwFileData_->Clear();
    for (AnyRef& file : opened)
        file = nullptr;
    if (mergeFileList_)
        mergeFileList_->Clear();
}

SDC DocuWorksClass::RefMergeFileList()
{
    if (!mergeFileList_)
        mergeFileList_ = std::make_shared<StructuredDataClass>();
    return mergeFileList_;
}

// ---- placing

namespace {

const std::array<QString, 3> HorPosWords = {u"CENTER"_s, u"LEFT"_s, u"RIGHT"_s};
const std::array<QString, 3> VerPosWords = {u"CENTER"_s, u"TOP"_s, u"BOTTOM"_s};

// The number of an exact word; anything else is the first, the centre.
qint16 PositionOf(const std::array<QString, 3>& vWords, const QString& vWord)
{
    for (std::size_t i = 0; i < vWords.size(); ++i) {
        if (vWords[i] == vWord)
            return static_cast<qint16>(i);
    }
    return 0;
}

} // namespace

QString DocuWorksClass::HorPos() const
{
    return HorPosWords[static_cast<std::size_t>(horPos_)];
}

void DocuWorksClass::SetHorPos(const QString& vHorPos)
{
    horPos_ = PositionOf(HorPosWords, vHorPos);
}

QString DocuWorksClass::VerPos() const
{
    return VerPosWords[static_cast<std::size_t>(verPos_)];
}

void DocuWorksClass::SetVerPos(const QString& vVerPos)
{
    verPos_ = PositionOf(VerPosWords, vVerPos);
}

void DocuWorksClass::SetPermission(bool& vFlag, bool vAllow, qint16 vValue)
{
    // Only a change of state moves the sum, so that setting a flag twice counts it once.
    if (vFlag != vAllow)
        permission_ = static_cast<qint16>(permission_ + (vAllow ? vValue : -vValue));
    vFlag = vAllow;
}

std::shared_ptr<DocuWorksFileClass> DocuWorksClass::RefDwFile() const
{
    return dwFileData_->CurrentDataReference().As<DocuWorksFileClass>();
}

std::shared_ptr<DocuWorksFileClass> DocuWorksClass::OpenXdw(const QString& vPath, qint16 vOption)
{
    if (!DirClass::ExistsFile(vPath))
        throw AppError(AppError::Document, u"OpenXdw : "_s + vPath + u"が見つかりません。"_s);
    auto file = std::make_shared<DocuWorksFileClass>(engine_);
    dwFileData_->AddReference(file);
    file->OpenXdw(vPath, vOption);
    file->SetDocuWorksVersion(GetInformation(u"VERSION"_s));
    return file;
}

bool DocuWorksClass::OpenCheck(const QString& vPath)
{
    try {
        DocuWorksFileClass file(engine_);
        file.OpenXdw(vPath, 1);
        return true;
    } catch (const AppError&) {
        return false;
    }
}

bool DocuWorksClass::RetryOpenCheck(const QString& vPath, qint32 vRetrySec)
{
    // The clock is the seconds since midnight in single precision, as the retry has always
    // read it; the sum after midnight stands as it always was, however long it makes the wait.
    auto now = [] { return static_cast<float>(QTime::currentTime().msecsSinceStartOfDay()) / 1000.0f; };
    const float start = now();
    float current = start;
    while (start + static_cast<float>(vRetrySec) > current) {
        if (OpenCheck(vPath))
            return true;
        XdwRetryWait(100);
        current = now();
        if (current < start)
            current = start + current + 1;
    }
    return false;
}

qint64 DocuWorksClass::GetProcessId()
{
    return CommonLibClass::GetProcessId();
}

bool DocuWorksClass::IsEnabledForOcr() const
{
    return engine_->IsEnabledForOcr();
}

qint16 DocuWorksClass::InformationKeyNumber(const QString& vKey)
{
    static const std::array<QString, 13> keys = {
        u"VERSION"_s, u"INSTALLPATH"_s, u"BINPATH"_s, u"PLUGINPATH"_s, u"FOLDERROOTPATH"_s,
        u"USERFOLDERPATH"_s, u"SYSTEMFOLDERPATH"_s, u"RECEIVEFOLDERPATH"_s, u"SENDFOLDERPATH"_s,
        u"DWINPUTPATH"_s, u"DWDESKPATH"_s, u"DWVIEWERPATH"_s, u"DWVLTPATH"_s,
    };
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i] == vKey)
            return static_cast<qint16>(i + 1);
    }
    return 1;
}

QString DocuWorksClass::GetInformation(const QString& vKey) const
{
    const QString answer = engine_->GetInformation(InformationKeyNumber(vKey));
    if (engine_->LastResult() < 0)
        throw AppError(AppError::Document, u"GetInformation : "_s + engine_->LastErrorText());
    return answer;
}

QString DocuWorksClass::GetPartOfMajorVersion(const QString& vVersionString)
{
    const qsizetype dot = vVersionString.indexOf(u'.');
    return dot < 0 ? vVersionString : vVersionString.left(dot);
}

void DocuWorksClass::GlobalFree(qint32 vHandle) const
{
    engine_->GlobalFree(vHandle);
}

void DocuWorksClass::Finalize() const
{
    engine_->Finalize();
    if (engine_->LastResult() != XdwResult::Success)
        throw AppError(AppError::Document, u"Finalize : "_s + engine_->LastErrorText());
}

qsizetype DocuWorksClass::CLibLenB(const QString& pInString)
{
    return CommonLibClass::CLibLenB(pInString);
}
