// Work on whole files that the runtime does by paths: protected copies, merging, binders, and
// the size an image will have as a page.
#include "document/DocuWorksClass.h"

#include "document/DocumentEngine.h"
#include "document/DocumentRules.h"
#include "document/XdwApi.h"
#include "support/AppError.h"
#include "support/CommonLibClass.h"
#include "support/DirClass.h"

#include <cmath>
#include <limits>

using namespace Qt::Literals::StringLiterals;
using documentrules::Raise;
using documentrules::TooLong;

namespace {

// A copy that asks for passwords is the one kind of protection there is.
constexpr qint32 PasswordProtection = 1;
// Results of the system's own failures carry its error number in their low word.
constexpr quint32 SystemFacility = 0x8007;

// To the nearest whole number, halves to even, as a 32-bit one; beyond that is an overflow.
qint32 RoundToInt32(double vValue)
{
    const double rounded = std::nearbyint(vValue);
    if (!std::isfinite(rounded) || rounded < std::numeric_limits<qint32>::min()
        || rounded > std::numeric_limits<qint32>::max())
        throw AppError(AppError::Overflow);
    return static_cast<qint32>(rounded);
}

} // namespace

void DocuWorksClass::ProtectDocument(const QString& vInputPath, const QString& vOutputPath)
{
    const QString prefix = u"ProtectDocument : "_s;
    if (TooLong(vInputPath))
        Raise(prefix + u"入力ファイル名は255バイト以下で設定してください。"_s);
    if (TooLong(vOutputPath))
        Raise(prefix + u"出力ファイル名は255バイト以下で設定してください。"_s);
    if (!DirClass::ExistsFile(vInputPath))
        Raise(prefix + vInputPath + u"が見つかりません。"_s);
    if (DirClass::ExistsFile(vOutputPath))
        Raise(prefix + vOutputPath + u"が既に存在しています。"_s);
    engine_->ProtectDocument(vInputPath, vOutputPath, PasswordProtection, permission_, protectOpenPass_,
                             protectFullAccessPass_, protectComment_);
    if (engine_->LastResult() != XdwResult::Success)
        Raise(prefix + engine_->LastErrorText());
}

void DocuWorksClass::MergeXdwDocument(const QString& vOutputPath)
{
    const QString prefix = u"MergeXdwDocument : "_s;
    if (TooLong(vOutputPath))
        Raise(prefix + u"出力ファイル名は255バイト以下で設定してください。"_s);
    if (DirClass::ExistsFile(vOutputPath))
        Raise(prefix + vOutputPath + u"が既に存在しています。"_s);
    const QString noInput = prefix + u"入力ファイルが登録されていません。"_s;
    if (!mergeFileList_)
        Raise(noInput);
    engine_->ClearMergeInputs();
    if (mergeFileList_->Count() == 0)
        Raise(noInput);
    for (mergeFileList_->TopData(); !mergeFileList_->EndOfData();) {
        const QString input = mergeFileList_->CurrentDataValue();
        if (TooLong(input))
            Raise(prefix + u"入力ファイル名は255バイト以下で設定してください。"_s);
        if (!DirClass::ExistsFile(input))
            Raise(prefix + input + u"が見つかりません。"_s);
        mergeFileList_->NextData();
        engine_->AddMergeInput(input);
    }
    engine_->MergeDocuments(vOutputPath);
    if (engine_->LastResult() != XdwResult::Success)
        Raise(prefix + engine_->LastErrorText());
}

void DocuWorksClass::CreateBinder(const QString& vXdwFilePath)
{
    const QString prefix = u"CreateBinder : "_s;
    if (TooLong(vXdwFilePath))
        Raise(prefix + u"ファイル名は255バイト以下で設定してください。"_s);
    if (DirClass::ExistsFile(vXdwFilePath))
        Raise(prefix + vXdwFilePath + u"が既に存在しています。"_s);
    engine_->CreateBinder(vXdwFilePath);
    if (engine_->LastResult() != XdwResult::Success)
        Raise(prefix + engine_->LastErrorText());
}

void DocuWorksClass::InsertDocumentToBinder(const QString& vXdwFilePath, const QString& vBinderFilePath,
                                            qint32 vPosition)
{
    const QString prefix = u"InsertDocumentToBinder : "_s;
    if (TooLong(vXdwFilePath))
        Raise(prefix + u"XDWファイル名は255バイト以下で設定してください。"_s);
    if (TooLong(vBinderFilePath))
        Raise(prefix + u"バインダファイル名は255バイト以下で設定してください。"_s);
    for (const QString& path : {vXdwFilePath, vBinderFilePath}) {
        if (!DirClass::ExistsFile(path))
            Raise(prefix + path + u"が見つかりません。"_s);
    }
    engine_->InsertDocumentToBinder(vXdwFilePath, vBinderFilePath, vPosition);
    if (engine_->LastResult() != XdwResult::Success)
        Raise(prefix + engine_->LastErrorText());
}

void DocuWorksClass::GetImageInformation(const QString& aImagePathFileName)
{
    const qint32 result = RetryWhileInUse([&] { engine_->ReadImageFile(aImagePathFileName); });
    if (result == XdwResult::Success)
        return;
    QString reason;
    if (result < 0 && static_cast<quint32>(result) >> 16 == SystemFacility)
        reason = CommonLibClass::LastDllErrorText(result & 0xFFFF);
    else if (result < 0)
        reason = u"予期しないエラーが発生しました。(COM ERROR)"_s;
    else
        reason = u"対応していない画像形式です。"_s;
    throw AppError(AppError::FileSystem,
                   u"GetImageInformation: ErrorNo="_s + QString::number(result)
                       + u" DW変換前の画像解像度を取得する処理でエラーが発生しました。"_s + reason
                       + u"FileName = \""_s + aImagePathFileName + u'"');
}

qint32 DocuWorksClass::GetImageWidth() const
{
    // In this order, step by step, so that a size on a half rounds the same every time.
    return RoundToInt32(engine_->ImagePixelWidth() / static_cast<double>(engine_->ImageHorizontalDpi()) * 25.4
                        * 100);
}

qint32 DocuWorksClass::GetImageHeight() const
{
    return RoundToInt32(engine_->ImagePixelHeight() / static_cast<double>(engine_->ImageVerticalDpi()) * 25.4
                        * 100);
}

qint32 DocuWorksClass::ConvertMillimeter(qint32 vFullSizeMm, qint32 vFullSizePixel, qint32 vTargetPixel)
{
    return RoundToInt32(static_cast<double>(vFullSizeMm) / vFullSizePixel * vTargetPixel);
}
