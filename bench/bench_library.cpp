// The document library's writing beside its floors:
// (a) making a 100-page document from a 100-page A4 G4 fax against libtiff writing the same
//     pages into a multi-page G4 TIFF (the pages decoded beforehand for both);
// (b) merging ten 50-page documents into one against copying their bytes into one file.

#include "engine/XdwEngine.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <tiffio.h>

namespace {

constexpr int FaxPages = 100;
const QSize A4At200(1654, 2339);

// A fax page of text-like strokes, different on every page.
QImage FaxPage(int vNumber)
{
    QImage page(A4At200, QImage::Format_Mono);
    page.fill(1);
    QPainter painter(&page);
    painter.setPen(QPen(Qt::black, 2));
    for (int y = 150; y < A4At200.height() - 150; y += 40)
        for (int x = 120; x < A4At200.width() - 300; x += 60 + (x * vNumber + y) % 37)
            painter.drawLine(x, y, x + 30 + (x + y + vNumber) % 20, y + (x % 3));
    return page;
}

const std::vector<QImage>& FaxPages100()
{
    static const std::vector<QImage> pages = [] {
        std::vector<QImage> all;
        for (int i = 0; i < FaxPages; ++i)
            all.push_back(FaxPage(i));
        return all;
    }();
    return pages;
}

bool WriteFax(const QString& vPath, const std::vector<QImage>& vPages)
{
    TIFF* tiff = TIFFOpen(vPath.toLocal8Bit().constData(), "w");
    if (!tiff)
        return false;
    for (const QImage& page : vPages) {
        TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, uint32_t(page.width()));
        TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, uint32_t(page.height()));
        TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, uint16_t(1));
        TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, uint16_t(1));
        TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
        TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, uint32_t(page.height()));
        TIFFSetField(tiff, TIFFTAG_XRESOLUTION, 200.0f);
        TIFFSetField(tiff, TIFFTAG_YRESOLUTION, 200.0f);
        TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
        TIFFSetField(tiff, TIFFTAG_SUBFILETYPE, FILETYPE_PAGE);
        // Qt's Mono has 1 for white; a min-is-white TIFF wants 1 for black.
        QImage row = page.copy();
        row.invertPixels();
        for (int y = 0; y < page.height(); ++y)
            TIFFWriteScanline(tiff, const_cast<uchar*>(row.constScanLine(y)), uint32_t(y));
        TIFFWriteDirectory(tiff);
    }
    TIFFClose(tiff);
    return true;
}

// Floor: the same decoded pages into a multi-page G4 TIFF.
void BM_FaxTiffFloor(benchmark::State& state)
{
    const auto& pages = FaxPages100();
    QTemporaryDir dir;
    for (auto _ : state)
        benchmark::DoNotOptimize(WriteFax(dir.filePath(QStringLiteral("floor.tif")), pages));
}

// The document, made as a user makes it: the G4 TIFF decoded, each page stored, the file saved.
void BM_FaxDocument(benchmark::State& state)
{
    QTemporaryDir dir;
    WriteFax(dir.filePath(QStringLiteral("fax.tif")), FaxPages100());
    XdwEngine engine;
    engine.SetImageToDocumentOptions(QStringLiteral("FITDEF"), QStringLiteral("NORMAL"), 0, 0, 0, {}, {});
    int round = 0;
    for (auto _ : state)
        engine.CreateDocumentFromImage(dir.filePath(QStringLiteral("fax.tif")),
                                       dir.filePath(QStringLiteral("fax%1.xdw").arg(round++)));
    state.counters["result"] = engine.LastResult();
}

// The same as a user meets it: decoding the G4 TIFF is part of the work, so the floor here
// decodes it too before writing.
void BM_FaxTiffFloorWithDecode(benchmark::State& state)
{
    QTemporaryDir dir;
    WriteFax(dir.filePath(QStringLiteral("fax.tif")), FaxPages100());
    for (auto _ : state) {
        std::vector<QImage> decoded;
        TIFF* tiff = TIFFOpen(dir.filePath(QStringLiteral("fax.tif")).toLocal8Bit().constData(), "r");
        do {
            QImage page(A4At200, QImage::Format_Mono);
            for (int y = 0; y < page.height(); ++y)
                TIFFReadScanline(tiff, page.scanLine(y), uint32_t(y));
            decoded.push_back(page);
        } while (TIFFReadDirectory(tiff));
        TIFFClose(tiff);
        benchmark::DoNotOptimize(WriteFax(dir.filePath(QStringLiteral("floor.tif")), decoded));
    }
}

QStringList FiftyPageDocuments(const QTemporaryDir& vDir)
{
    QStringList paths;
    std::vector<QImage> fifty(FaxPages100().begin(), FaxPages100().begin() + 50);
    WriteFax(vDir.filePath(QStringLiteral("fifty.tif")), fifty);
    XdwEngine engine;
    engine.SetImageToDocumentOptions(QStringLiteral("FITDEF"), QStringLiteral("NORMAL"), 0, 0, 0, {}, {});
    for (int i = 0; i < 10; ++i) {
        paths << vDir.filePath(QStringLiteral("doc%1.xdw").arg(i));
        engine.CreateDocumentFromImage(vDir.filePath(QStringLiteral("fifty.tif")), paths.back());
    }
    return paths;
}

// Floor: the ten files' bytes read and written one after another into one file.
void BM_MergeCopyFloor(benchmark::State& state)
{
    QTemporaryDir dir;
    const QStringList paths = FiftyPageDocuments(dir);
    for (auto _ : state) {
        QFile out(dir.filePath(QStringLiteral("copy.bin")));
        out.open(QIODevice::WriteOnly);
        for (const QString& path : paths) {
            QFile in(path);
            in.open(QIODevice::ReadOnly);
            out.write(in.readAll());
        }
    }
}

void BM_MergeDocuments(benchmark::State& state)
{
    QTemporaryDir dir;
    const QStringList paths = FiftyPageDocuments(dir);
    XdwEngine engine;
    for (const QString& path : paths)
        engine.AddMergeInput(path);
    int round = 0;
    for (auto _ : state)
        engine.MergeDocuments(dir.filePath(QStringLiteral("merged%1.xdw").arg(round++)));
    state.counters["result"] = engine.LastResult();
}

} // namespace

BENCHMARK(BM_FaxTiffFloor)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_FaxTiffFloorWithDecode)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_FaxDocument)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_MergeCopyFloor)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_MergeDocuments)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
