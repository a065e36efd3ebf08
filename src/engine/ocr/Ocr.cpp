#include "engine/ocr/Ocr.h"

#include "engine/ocr/OcrSettings.h"
#include "engine/ocr/PagePrep.h"
#include "engine/ocr/TessPool.h"
#include "engine/ocr/TextBuilder.h"

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <algorithm>
#include <memory>

namespace ocr {

namespace {

// Tesseract keeps coordinates in 16 bits; and a page this size at 600 dpi would be a metre
// across, so a larger picture is a mistake, not a page.
constexpr int kMaxSide = 32767;
constexpr qint64 kMaxPixels = qint64(1) << 28;
// Tesseract's range of believable resolutions; a page outside it is read as the nearest.
constexpr int kMinDpi = 70;
constexpr int kMaxDpi = 2400;
// An orientation below this confidence is a guess; Tesseract calls 15 reasonably confident.
constexpr float kMinOrientationConfidence = 2.0f;

Result Failure(const QString& vError)
{
    Result r;
    r.error = vError;
    return r;
}

bool Unusable(const QImage& vPage)
{
    return vPage.isNull() || vPage.width() > kMaxSide || vPage.height() > kMaxSide
        || qint64(vPage.width()) * vPage.height() > kMaxPixels;
}

QImage Gray(const QImage& vPage)
{
    return vPage.format() == QImage::Format_Grayscale8
        ? vPage : vPage.convertToFormat(QImage::Format_Grayscale8);
}

tesseract::PageSegMode ModeOf(Layout vLayout)
{
    switch (vLayout) {
    case Layout::SingleBlock: return tesseract::PSM_SINGLE_BLOCK;
    case Layout::SingleVerticalBlock: return tesseract::PSM_SINGLE_BLOCK_VERT_TEXT;
    case Layout::Sparse: return tesseract::PSM_SPARSE_TEXT;
    case Layout::Auto:
    case Layout::AutoVertical: break;
    }
    return tesseract::PSM_AUTO;
}

std::vector<QRect> AreasOf(const Options& vOptions, const QRect& vPage)
{
    if (vOptions.areas.empty())
        return {vPage};
    std::vector<QRect> areas;
    for (const QRect& area : vOptions.areas) {
        // An area reaching past the page is read as far as the page goes; one wholly outside
        // it holds nothing to read.
        const QRect inside = area.normalized().intersected(vPage);
        if (!inside.isEmpty())
            areas.push_back(inside);
    }
    return areas;
}

// Reads one prepared area into the builder; false when Tesseract fails.
bool Read(tesseract::TessBaseAPI& vApi, const Prepared& vArea, int vDpi, TextBuilder& vBuilder)
{
    vApi.SetImage(vArea.pix.get());
    vApi.SetSourceResolution(vDpi);
    if (vApi.Recognize(nullptr) != 0)
        return false;
    std::unique_ptr<tesseract::ResultIterator> it(vApi.GetIterator());
    if (!it || it->Empty(tesseract::RIL_WORD))
        return true;
    vBuilder.BreakLine();
    do {
        if (it->Empty(tesseract::RIL_WORD))
            continue;
        const bool lineStart = it->IsAtBeginningOf(tesseract::RIL_TEXTLINE);
        const std::unique_ptr<char[]> text(it->GetUTF8Text(tesseract::RIL_WORD));
        int left = 0, top = 0, right = 0, bottom = 0;
        if (!text || !it->BoundingBox(tesseract::RIL_WORD, &left, &top, &right, &bottom))
            continue;
        // Tesseract's right and bottom lie just outside the box.
        const QRect box(QPoint(left, top), QPoint(right - 1, bottom - 1));
        vBuilder.Add(QString::fromUtf8(text.get()), vArea.ToPage(box),
                     qRound(it->Confidence(tesseract::RIL_WORD)), lineStart);
    } while (it->Next(tesseract::RIL_WORD));
    return true;
}

} // namespace

bool Available(const QString& vLanguage)
{
    const QString languages = LanguagesOf(vLanguage);
    return !languages.isEmpty() && static_cast<bool>(Borrow(languages));
}

Result Recognize(const QImage& vPage, int vDpi, const Options& vOptions)
{
    const Settings settings = Interpret(vOptions);
    if (!settings.error.isEmpty())
        return Failure(settings.error);
    if (vPage.isNull())
        return Failure(NoPictureText());
    if (Unusable(vPage))
        return Failure(TooLargeText());
    Lease api = Borrow(settings.languages);
    if (!api)
        return Failure(MissingDataText(settings.languages));
    const int dpi = std::clamp(vDpi, kMinDpi, kMaxDpi);
    // Instances are shared between calls, so every setting a call may change is set each time.
    api->SetPageSegMode(ModeOf(settings.layout));
    api->SetVariable("textord_tabfind_force_vertical_text",
                     settings.layout == Layout::AutoVertical ? "1" : "0");
    const QImage gray = Gray(vPage);
    const int speck = SpeckSize(settings.noiseLevel, dpi);
    TextBuilder builder(vOptions.insertSpace, vOptions.halfSizeChar);
    for (const QRect& area : AreasOf(vOptions, gray.rect())) {
        const Prepared prepared = Prepare(gray, area, speck, vOptions.autoDeskew);
        if (!prepared.pix || !Read(*api.get(), prepared, dpi, builder))
            return Failure(FailedText());
    }
    return builder.Take();
}

int DetectRotation(const QImage& vPage, int vDpi)
{
    if (Unusable(vPage))
        return -1;
    Lease api = Borrow(QStringLiteral("osd"));
    if (!api)
        return -1;
    const QImage gray = Gray(vPage);
    const PixPtr pix = ToPix(gray, gray.rect());
    if (!pix)
        return -1;
    api->SetPageSegMode(tesseract::PSM_OSD_ONLY);
    api->SetImage(pix.get());
    api->SetSourceResolution(std::clamp(vDpi, kMinDpi, kMaxDpi));
    int degrees = 0;
    float confidence = 0;
    const char* script = nullptr;
    float scriptConfidence = 0;
    if (!api->DetectOrientationScript(&degrees, &confidence, &script, &scriptConfidence))
        return -1;
    if (confidence < kMinOrientationConfidence)
        return -1;
    // Tesseract names how far the picture is turned clockwise; undoing it is the rest of a turn.
    return (360 - degrees) % 360;
}

} // namespace ocr
