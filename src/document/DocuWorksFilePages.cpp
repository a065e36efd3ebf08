// A document's pages as files and as text, and the editing of its pages.
#include "document/DocuWorksFileClass.h"

#include "document/DocumentEngine.h"
#include "document/DocumentRules.h"
#include "document/XdwApi.h"
#include "support/SplitClass.h"

#include <array>

using namespace Qt::Literals::StringLiterals;
using documentrules::DpiText;
using documentrules::MaxDpi;
using documentrules::MinDpi;
using documentrules::Raise;

namespace {

// The names of a word rectangle's numbers, in the order the runtime gives them.
const std::array<QString, 5> RectangleFields = {u"X"_s, u"Y"_s, u"Width"_s, u"Height"_s, u"Status"_s};
// A tree counts its entries in 16 bits; the rectangles beyond this many (and room for the two
// totals) are left out rather than numbered wrongly.
constexpr qint16 MostRectangles = 32000;

bool InPercent(qint32 vValue)
{
    return vValue >= 0 && vValue <= 100;
}

} // namespace

// ---- pages to files

void DocuWorksFileClass::ConvertPageToImageFile(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                                const QString& vType)
{
    const QString prefix = u"ConvertPageToImageFile : "_s;
    if (vColor != 0 && vType == u"TIFF"_s && imageCompress_ == u"G4"_s)
        Raise(prefix + u"G4圧縮の場合カラー指定はできません。"_s);
    // Unlike a bitmap handle, a file has no automatic resolution: 0 is refused with the rest.
    if (vDpi < MinDpi || vDpi > MaxDpi)
        Raise(prefix + DpiText);
    if (imageCompress_.isEmpty()) {
        if (vType == u"TIFF"_s)
            SetImageTiff(u"PACKBITS"_s, 0);
        else if (vType == u"JPEG"_s || vType == u"PDF"_s)
            SetImageJpeg(u"NORMAL"_s);  // PDF too: its pictures are JPEG ones
    }
    Select().ConvertPageToImageFile(vPage, vPath, vDpi, vColor, vType);
    Check(u"ConvertPageToImageFile"_s);
}

void DocuWorksFileClass::ConvertPageToImageFileEx(qint32 vPage, const QString& vPath, qint32 vDpi, qint32 vColor,
                                                  qint32 vXStart, qint32 vXEnd, qint32 vYStart, qint32 vYEnd)
{
    const QString prefix = u"ConvertPageToImageFileEx : "_s;
    if (vDpi < MinDpi || vDpi > MaxDpi)
        Raise(prefix + DpiText);
    if (!InPercent(vXStart))
        Raise(prefix + u"X開始位置は0～100を指定してください。"_s);
    if (!InPercent(vXEnd))
        Raise(prefix + u"X終了位置は0～100を指定してください。"_s);
    if (vXStart >= vXEnd)
        Raise(prefix + u"X開始位置はX終了位置より小さい値で指定してください。"_s);
    if (!InPercent(vYStart))
        Raise(prefix + u"Y開始位置は0～100を指定してください。"_s);
    if (!InPercent(vYEnd))
        Raise(prefix + u"Y終了位置は0～100を指定してください。"_s);
    if (vYStart >= vYEnd)
        Raise(prefix + u"Y開始位置はY終了位置より小さい値で指定してください。"_s);
    Select().ConvertPageToImageFileEx(vPage, vPath, vDpi, vColor, vXStart, vXEnd, vYStart, vYEnd);
    Check(u"ConvertPageToImageFileEx"_s);
}

void DocuWorksFileClass::ConvertPageToThumbnailImageFile(qint32 vPage, const QString& vPath)
{
    Select().ConvertPageToThumbnailImageFile(vPage, vPath);
    Check(u"ConvertPageToThumbnailImageFile"_s);
}

void DocuWorksFileClass::SetImageTiff(const QString& vCompress, qint32 vEndOfMultiPages)
{
    imageCompress_ = vCompress;
    Select().SetImageTiff(vCompress, vEndOfMultiPages);
}

void DocuWorksFileClass::SetImageJpeg(const QString& vCompress)
{
    imageCompress_ = vCompress;
    Select().SetImageJpeg(vCompress);
}

void DocuWorksFileClass::SetImagePdf(const QString& vCompress, qint32 vEndOfMultiPages,
                                     const QString& vConvertMethod)
{
    imageCompress_ = vCompress;
    imageOption_ = vConvertMethod;
    Select().SetImagePdf(vCompress, vEndOfMultiPages, vConvertMethod);
}

// ---- page editing

void DocuWorksFileClass::GetPage(qint32 vPage, const QString& vPath)
{
    Select().GetPage(vPage, vPath);
    Check(u"GetPage"_s);
}

void DocuWorksFileClass::InsertDocument(qint32 vPosition, const QString& vPath)
{
    Select().InsertDocument(vPosition, vPath);
    Check(u"InsertDocument"_s);
}

void DocuWorksFileClass::DeletePage(qint32 vPage)
{
    Select().DeletePage(vPage);
    Check(u"DeletePage"_s);
}

void DocuWorksFileClass::RotatePage(qint32 vPage, qint32 vDegree)
{
    Select().RotatePage(vPage, vDegree);
    Check(u"RotatePage"_s);
}

void DocuWorksFileClass::RotatePageAuto(qint32 vPage)
{
    // The one call that goes by the handle itself and answers with its result.
    const qint32 result = engine_->RotatePageAuto(documentHandle_, vPage);
    if (result != XdwResult::Success)
        Raise(u"RotatePageAuto : "_s + GetXdwErrorText(result));
}

void DocuWorksFileClass::ReducePageNoise(qint32 vPage, const QString& vLevel)
{
    Select().ReducePageNoise(vPage, vLevel);
    Check(u"ReducePageNoise"_s);
}

// ---- text

QString DocuWorksFileClass::GetPageTextToMemory(qint32 vPage)
{
    const QString text = Select().GetPageTextToMemory(vPage);
    // A page without text is no failure: its text is empty.
    const qint32 result = engine_->LastResult();
    if (result < 0 && result != XdwResult::InvalidOperation)
        Raise(u"GetPageTextToMemory : "_s + engine_->LastErrorText());
    return text;
}

void DocuWorksFileClass::GetTextPosition(qint32 vPage)
{
    const QString positions = Select().GetTextPosition(vPage);
    Check(u"GetTextPosition"_s);

    auto tree = std::make_shared<StructuredDataClass>();
    SplitClass words, rectangles, numbers;
    qint32 wordCount = 0, rectCount = 0;
    words.SplitD(positions, u"/"_s);
    for (qint16 w = 1; !positions.isEmpty() && w <= words.ItemCount(); ++w) {
        const QString word = words.Item(w);
        if (word.isEmpty())
            continue;
        ++wordCount;
        rectangles.SplitD(word, u"|"_s);
        qint32 rectIndex = 0;
        for (qint16 r = 1; r <= rectangles.ItemCount(); ++r) {
            const QString rectangle = rectangles.Item(r);
            if (rectangle.isEmpty() || tree->Count() >= MostRectangles)
                continue;
            ++rectCount;
            numbers.SplitD(rectangle, u","_s);
            const SDC entry = tree->CreateThread();
            for (std::size_t n = 0; n < RectangleFields.size(); ++n)
                entry->AddData(numbers.Item(static_cast<qint16>(n + 1)), RectangleFields[n]);
            entry->AddData(QString::number(wordCount), u"WordIndex"_s);
            entry->AddData(QString::number(++rectIndex), u"RectIndex"_s);
        }
    }
    tree->AddData(QString::number(wordCount), u"WordCount"_s);
    tree->AddData(QString::number(rectCount), u"RectCount"_s);
    if (textPosition_)
        textPosition_->Clear();
    textPosition_ = tree;
}
