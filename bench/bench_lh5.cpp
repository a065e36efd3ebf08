// The LH5 writer beside its floor, zlib's deflate at level 1 on the same bytes (the cheapest
// LZ77 with Huffman codes there is), on:
// (a) a 1 MB properties block of page and annotation records;
// (b) an A4 page scanned at 200 dpi, 1 bit a pixel, with text-like strokes;
// (c) the same page blank;
// (d) 1 MB of 24-bit rows of a scanned photo: smooth gradients and sensor noise;
// (e) a 2 KB properties block, as a short document or a drawing has, where setting up costs.
// Beside them for the pages, libtiff writing the same rows as a one-strip CCITT G4 page, as a
// scanned document would otherwise be kept.
// Each run reports the packed size as a counter, so speed and size are read together.

#include "engine/write/Lh5Encode.h"
#include "lh5enc/Lh5Inputs.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <tiffio.h>
#include <zlib.h>

#include <random>

namespace {

QByteArray Photo(qsizetype vSize)
{
    QByteArray rows(vSize, Qt::Uninitialized);
    std::mt19937 random(3);
    const qsizetype row = 3 * 600;
    for (qsizetype i = 0; i < vSize; ++i) {
        const qsizetype x = i % row / 3, y = i / row;
        const int base = i % 3 == 0 ? int(x / 5) : i % 3 == 1 ? int(y / 7) : 160;
        rows[i] = static_cast<char>(base + static_cast<int>(random() % 8));
    }
    return rows;
}

const QByteArray& Input(int vWhich)
{
    static const QByteArray records = lh5test::RecordsLike(1024 * 1024);
    static const QByteArray page = lh5test::TextPage(1);
    static const QByteArray blank(page.size(), '\0');
    static const QByteArray photo = Photo(1024 * 1024);
    static const QByteArray small = lh5test::RecordsLike(2048);
    switch (vWhich) {
    case 0: return records;
    case 1: return page;
    case 2: return blank;
    case 3: return photo;
    default: return small;
    }
}

const char* Name(int vWhich)
{
    const char* names[] = {"records 1 MB", "text page", "blank page", "photo rows 1 MB", "records 2 KB"};
    return names[vWhich];
}

void BM_Lh5Floor_Deflate1(benchmark::State& state)
{
    const QByteArray& in = Input(static_cast<int>(state.range(0)));
    QByteArray out(static_cast<qsizetype>(compressBound(static_cast<uLong>(in.size()))), Qt::Uninitialized);
    uLongf packed = 0;
    for (auto _ : state) {
        packed = static_cast<uLongf>(out.size());
        compress2(reinterpret_cast<Bytef*>(out.data()), &packed,
                  reinterpret_cast<const Bytef*>(in.constData()), static_cast<uLong>(in.size()), 1);
        benchmark::DoNotOptimize(packed);
    }
    state.SetBytesProcessed(state.iterations() * in.size());
    state.counters["packed"] = static_cast<double>(packed);
    state.SetLabel(Name(static_cast<int>(state.range(0))));
}

void BM_Lh5Beside_TiffG4(benchmark::State& state)
{
    const QByteArray& in = Input(static_cast<int>(state.range(0)));
    QTemporaryDir dir;
    const QByteArray path = dir.filePath(QStringLiteral("page.tif")).toLocal8Bit();
    qint64 packed = 0;
    for (auto _ : state) {
        TIFF* tiff = TIFFOpen(path.constData(), "w");
        TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, uint32_t(lh5test::PageWidth));
        TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, uint32_t(lh5test::PageHeight));
        TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, uint16_t(1));
        TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, uint16_t(1));
        TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, uint16_t(PHOTOMETRIC_MINISWHITE));
        TIFFSetField(tiff, TIFFTAG_COMPRESSION, uint16_t(COMPRESSION_CCITTFAX4));
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, uint32_t(lh5test::PageHeight));
        TIFFWriteEncodedStrip(tiff, 0, const_cast<char*>(in.constData()), in.size());
        TIFFClose(tiff);
        packed = QFileInfo(QString::fromLocal8Bit(path)).size();
    }
    state.SetBytesProcessed(state.iterations() * in.size());
    state.counters["packed"] = static_cast<double>(packed);
    state.SetLabel(Name(static_cast<int>(state.range(0))));
}

void BM_Lh5Compress(benchmark::State& state)
{
    const QByteArray& in = Input(static_cast<int>(state.range(0)));
    qsizetype packed = 0;
    for (auto _ : state) {
        const QByteArray out = lh5::Compress(in);
        packed = out.size();
        benchmark::DoNotOptimize(out.constData());
    }
    state.SetBytesProcessed(state.iterations() * in.size());
    state.counters["packed"] = static_cast<double>(packed);
    state.SetLabel(Name(static_cast<int>(state.range(0))));
}

} // namespace

BENCHMARK(BM_Lh5Floor_Deflate1)->DenseRange(0, 4)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Lh5Beside_TiffG4)->DenseRange(1, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Lh5Compress)->DenseRange(0, 4)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
