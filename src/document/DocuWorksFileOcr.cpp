// OCR of a document's pages: the older and the newer engine, page by page or all at once, and
// the areas the newer one reads.
#include "document/DocuWorksFileClass.h"

#include "document/DocumentEngine.h"
#include "support/AppError.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

// The page type of a page made from an image: the only pages that have pixels to read.
constexpr qint16 FromImage = 1;

qint32 Sum(qint32 vStart, qint32 vLength)
{
    const qint64 sum = qint64(vStart) + vLength;
    if (sum < std::numeric_limits<qint32>::min() || sum > std::numeric_limits<qint32>::max())
        throw AppError(AppError::Overflow);
    return static_cast<qint32>(sum);
}

} // namespace

bool DocuWorksFileClass::IsImagePage(qint32 vPage)
{
    GetPageInformation(vPage);
    return pageType_ == FromImage;
}

void DocuWorksFileClass::SetOcrOptions()
{
    Select().SetOcrOptions(ocr_.noiseReduction, ocr_.language, ocr_.insertSpaceCharacter,
                           ocr_.japaneseKnowledgeProcessing, ocr_.form, ocr_.column, ocr_.displayProcess,
                           ocr_.autoDeskew);
}

void DocuWorksFileClass::SetOcrOptionsV7()
{
    Select().SetOcrOptionsV7(ocr_.noiseReduction, ocr_.language, ocr_.insertSpaceCharacter, ocr_.form, ocr_.column,
                             ocr_.displayProcess, ocr_.autoDeskew, ocr_.priority, ocr_.engineLevel,
                             ocr_.languageMixedRate, ocr_.halfSizeChar);
}

void DocuWorksFileClass::ApplyOcr(qint32 vPage)
{
    if (!IsImagePage(vPage))
        return;
    SetOcrOptions();
    Select().ApplyOcr(vPage);
    Check(u"ApplyOcr"_s);
}

void DocuWorksFileClass::ApplyOcrV7(qint32 vPage)
{
    if (!IsImagePage(vPage))
        return;
    SetOcrOptionsV7();
    Select().ApplyOcrV7(vPage);
    Check(u"ApplyOcrV7"_s);
}

void DocuWorksFileClass::ApplyOcrAll()
{
    GetDocumentInformation();
    SetOcrOptions();
    for (qint32 page = 1; page <= pages_; ++page) {
        Select().ApplyOcr(page);
        Check(u"ApplyOcr"_s);
    }
}

void DocuWorksFileClass::ApplyOcrAllV7()
{
    GetDocumentInformation();
    SetOcrOptionsV7();
    for (qint32 page = 1; page <= pages_; ++page) {
        Select().ApplyOcrV7(page);
        Check(u"ApplyOcrV7"_s);
    }
}

void DocuWorksFileClass::SetOcrOptionV7ClearRect()
{
    Select().SetOcrOptionV7ClearRect();
    Check(u"SetOcrOptionV7ClearRect"_s);
}

void DocuWorksFileClass::SetOcrOptionV7AddRect(qint32 vLeft, qint32 vTop, qint32 vWidth, qint32 vHeight)
{
    Select().SetOcrOptionV7AddRect(vLeft, vTop, Sum(vLeft, vWidth), Sum(vTop, vHeight));
    Check(u"SetOcrOptionV7AddRect"_s);
}

void DocuWorksFileClass::ClearOcrData(qint32 vPage)
{
    if (!IsImagePage(vPage))
        return;
    DocumentEngine& engine = Select();
    engine.SetClearOcrDataOptions(0, 0, 1, QString());
    engine.ClearOcrData(vPage);
    Check(u"ClearOcrData"_s);
}
