// OCR of one A4 page at 300 dpi beside its floor:
// (a) floor: Tesseract alone, its instance loaded beforehand, reading the same grey picture and
//     handing out every word's text and box;
// (b) ocr::Recognize with the default options (the skew measured, spaces beside Japanese
//     dropped, boxes taken back to the page), and without the skew measurement;
// (b') the part of (b) that is not Tesseract's: the page copied for Leptonica, specks taken
//      away (strong noise reduction) and the skew measured;
// (c) what a call would cost if it loaded its own instance instead of borrowing a pooled one;
// (d) the orientation of the same page, for automatic rotation.
// Tesseract may spread a page over threads: the times are wall-clock times, and the floor sizes
// its teams of threads to the free cores as ocr::Recognize does (see TessPool.cpp).

#include "engine/ocr/Ocr.h"
#include "engine/ocr/PagePrep.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <omp.h>

#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kDpi = 300;

// A page of body text as a letter or a report has it: 10.5-point lines, Japanese with Latin
// words among them, down the whole A4 sheet.
const QImage& Page()
{
    static const QImage page = [] {
        const QString lines[] = {
            QStringLiteral("吾輩は猫である。名前はまだ無い。どこで生れたかとんと見当がつかぬ。"),
            QStringLiteral("The quick brown fox jumps over the lazy dog 12345 times."),
            QStringLiteral("何でも薄暗いじめじめした所でニャーニャー泣いていた事だけは記憶している。"),
            QStringLiteral("DocuWorks文書をTIFFに変換し、2026年11月25日に保存しました。"),
        };
        QImage sheet(2480, 3508, QImage::Format_Grayscale8);
        sheet.fill(255);
        QPainter painter(&sheet);
        QFont font(QStringLiteral("Noto Sans CJK JP"));
        font.setPixelSize(qRound(10.5 * kDpi / 72));
        painter.setFont(font);
        for (int i = 0; i < 64; ++i)
            painter.drawText(236, 280 + 48 * i, lines[i % 4]);
        return sheet;
    }();
    return page;
}

std::unique_ptr<tesseract::TessBaseAPI> Loaded(const char* vLanguages)
{
    auto api = std::make_unique<tesseract::TessBaseAPI>();
    std::vector<std::string> names{"debug_file"};
    std::vector<std::string> values{"/dev/null"};
    if (api->Init(nullptr, vLanguages, tesseract::OEM_LSTM_ONLY, nullptr, 0, &names, &values, false) != 0)
        return nullptr;
    return api;
}

void BM_OcrFloor_TesseractAlone(benchmark::State& state)
{
    auto api = Loaded("jpn");
    if (!api) {
        state.SkipWithError("no Tesseract data for jpn");
        return;
    }
    const QImage& page = Page();
    omp_set_dynamic(1);
    api->SetPageSegMode(tesseract::PSM_AUTO);
    for (auto _ : state) {
        api->SetImage(page.constBits(), page.width(), page.height(), 1, static_cast<int>(page.bytesPerLine()));
        api->SetSourceResolution(kDpi);
        api->Recognize(nullptr);
        std::unique_ptr<tesseract::ResultIterator> it(api->GetIterator());
        int words = 0;
        if (it && !it->Empty(tesseract::RIL_WORD)) {
            do {
                const std::unique_ptr<char[]> text(it->GetUTF8Text(tesseract::RIL_WORD));
                int l = 0, t = 0, r = 0, b = 0;
                it->BoundingBox(tesseract::RIL_WORD, &l, &t, &r, &b);
                words += text != nullptr;
            } while (it->Next(tesseract::RIL_WORD));
        }
        benchmark::DoNotOptimize(words);
        api->Clear();
    }
}

void BM_OcrRecognize(benchmark::State& state)
{
    ocr::Options options;
    options.autoDeskew = state.range(0) != 0;
    if (!ocr::Available(options.language)) {
        state.SkipWithError("no Tesseract data for jpn");
        return;
    }
    int words = 0;
    for (auto _ : state) {
        const ocr::Result r = ocr::Recognize(Page(), kDpi, options);
        words = static_cast<int>(r.words.size());
        benchmark::DoNotOptimize(r);
    }
    state.counters["words"] = words;
}

void BM_OcrPrepareOnly(benchmark::State& state)
{
    const int speck = static_cast<int>(state.range(0));
    const bool deskew = state.range(1) != 0;
    for (auto _ : state) {
        const ocr::Prepared p = ocr::Prepare(Page(), Page().rect(), speck, deskew);
        benchmark::DoNotOptimize(p.pix.get());
    }
}

void BM_OcrLoadOnly(benchmark::State& state)
{
    for (auto _ : state) {
        auto api = Loaded("jpn");
        benchmark::DoNotOptimize(api.get());
    }
}

void BM_OcrDetectRotation(benchmark::State& state)
{
    int turn = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(turn = ocr::DetectRotation(Page(), kDpi));
    state.counters["turn"] = turn;
}

} // namespace

BENCHMARK(BM_OcrFloor_TesseractAlone)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(5);
BENCHMARK(BM_OcrRecognize)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(5);
BENCHMARK(BM_OcrPrepareOnly)->Args({0, 0})->Args({0, 1})->Args({4, 1})->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_OcrLoadOnly)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_OcrDetectRotation)->Unit(benchmark::kMillisecond)->UseRealTime();
