// Text positions and OCR. Recognised text is kept on the page's content record, beside the
// picture it was read from, so that the page text and word positions give it back after a save
// and a reopen; a page is read from its rendering at the resolution OCR reads best at.
#include "engine/XdwEngine.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/Model.h"
#include "engine/PageRender.h"
#include "engine/write/Emit.h"
#include "engine/write/Navigate.h"
#include "engine/write/Tree.h"

#include <cmath>

namespace {

constexpr int OcrDpi = 300;
constexpr double HundredthsPerInch = 2540.0;
constexpr qint32 NotSupported = static_cast<qint32>(0x80004001);
const QString TextName = QStringLiteral("%OcrText(w");
const QString WordsName = QStringLiteral("%OcrWords(w");
const QString BoxesName = QStringLiteral("%OcrBoxes");

xdw::Node* ContentRecord(xdw::Node& vPage)
{
    for (xdw::Node& placement : vPage.children)
        for (xdw::Node& child : placement.children)
            if (child.kind == xdw::KindPageContent)
                return &child;
    return nullptr;
}

qint64 Hundredths(int vPixels)
{
    return std::llround(vPixels * HundredthsPerInch / OcrDpi);
}

} // namespace

QString XdwEngine::GetTextPosition(qint32 vPage)
{
    QStringList words;
    Run([&](const xdw::Model& vModel) {
        for (const xdw::PlacedText& word : xdw::PageWords(vModel, vPage - 1)) {
            const QRect box = word.box.toAlignedRect();
            words.append(QStringLiteral("%1,%2,%3,%4,0").arg(box.x()).arg(box.y()).arg(box.width()).arg(box.height()));
        }
    });
    return words.join(u'/');
}

bool XdwEngine::IsEnabledForOcr()
{
    Succeed();
    return ocr::Available(ocr_.language);
}

void XdwEngine::SetOcrOptions(const QString& vNoiseReduction, const QString& vLanguage, bool vInsertSpaceCharacter,
                              bool /*vJapaneseKnowledgeProcessing*/, const QString& vForm, const QString& vColumn,
                              bool /*vDisplayProcess*/, bool vAutoDeskew)
{
    ocr_.noiseReduction = vNoiseReduction;
    ocr_.language = vLanguage;
    ocr_.insertSpace = vInsertSpaceCharacter;
    ocr_.form = vForm;
    ocr_.column = vColumn;
    ocr_.autoDeskew = vAutoDeskew;
    Succeed();
}

void XdwEngine::SetOcrOptionsV7(const QString& vNoiseReduction, const QString& vLanguage, bool vInsertSpaceCharacter,
                                const QString& vForm, const QString& vColumn, bool vDisplayProcess,
                                bool vAutoDeskew, bool /*vPriority*/, const QString& /*vEngineLevel*/,
                                const QString& /*vLanguageMixedRate*/, bool vHalfSizeChar)
{
    SetOcrOptions(vNoiseReduction, vLanguage, vInsertSpaceCharacter, true, vForm, vColumn, vDisplayProcess, vAutoDeskew);
    ocr_.halfSizeChar = vHalfSizeChar;
}

void XdwEngine::SetOcrOptionV7AddRect(qint32 vLeft, qint32 vTop, qint32 vRight, qint32 vBottom)
{
    // Areas come in hundredths of a millimetre of the page; OCR reads pixels of its rendering.
    const auto px = [](qint32 v) { return static_cast<int>(std::lround(v / HundredthsPerInch * OcrDpi)); };
    ocr_.areas.push_back(QRect(QPoint(px(vLeft), px(vTop)), QPoint(px(vRight) - 1, px(vBottom) - 1)));
    Succeed();
}

void XdwEngine::SetOcrOptionV7ClearRect()
{
    ocr_.areas.clear();
    Succeed();
}

void XdwEngine::ApplyOcr(qint32 vPage)
{
    ApplyOcrTo(vPage, ocr_);
}

void XdwEngine::ApplyOcrV7(qint32 vPage)
{
    ApplyOcrTo(vPage, ocr_);
}

void XdwEngine::ApplyOcrTo(qint32 vPage, const ocr::Options& vOptions)
{
    QImage page;
    if (!Run([&](const xdw::Model& vModel) { page = xdw::RenderPage(vModel, vPage - 1, OcrDpi, true); }))
        return;
    const ocr::Result result = ocr::Recognize(page.convertToFormat(QImage::Format_Grayscale8), OcrDpi, vOptions);
    if (!result.error.isEmpty()) {
        lastReason_ = result.error;
        Fail(NotSupported, result.error);
        return;
    }
    Edit([&](xdw::EditableFile& vFile) {
        xdw::Node* content = ContentRecord(xdw::edit::PageAt(vFile.root, vPage).Page());
        // A page without a picture has nothing OCR could add to what it already says.
        if (!content)
            return;
        QStringList words;
        std::vector<qint64> boxes;
        for (const ocr::Word& word : result.words) {
            words.append(word.text);
            for (int v : {word.box.x(), word.box.y(), word.box.width(), word.box.height()})
                boxes.push_back(Hundredths(v));
        }
        content->SetNamed(TextName, xdw::NamedBytes, xdw::emit::WideText(result.text));
        content->SetNamed(WordsName, xdw::NamedBytes, xdw::emit::WideText(words.join(u'\n')));
        content->SetNamed(BoxesName, xdw::NamedNumbers, xdw::emit::Numbers(boxes));
    });
}

void XdwEngine::SetClearOcrDataOptions(qint32, qint32, qint32, const QString&)
{
    Succeed();
}

void XdwEngine::ClearOcrData(qint32 vPage)
{
    Edit([&](xdw::EditableFile& vFile) {
        if (xdw::Node* content = ContentRecord(xdw::edit::PageAt(vFile.root, vPage).Page()))
            for (const QString& name : {TextName, WordsName, BoxesName})
                content->RemoveNamed(name);
    });
}

qint32 XdwEngine::RotatePageAuto(qint32 vDocumentHandle, qint32 vPage)
{
    SelectDocumentHandle(vDocumentHandle);
    if (LastResult() != XdwResult::Success)
        return LastResult();
    QImage page;
    if (!Run([&](const xdw::Model& vModel) { page = xdw::RenderPage(vModel, vPage - 1, OcrDpi, true); }))
        return LastResult();
    // Upright already, or too little text to tell: the page stays as it is.
    const int turn = ocr::DetectRotation(page.convertToFormat(QImage::Format_Grayscale8), OcrDpi);
    if (turn > 0)
        RotatePage(vPage, turn);
    return LastResult();
}
