// The document engine beside its floors:
// (a) expanding a 1 MB properties block through the engine's LH5 module against liblhasa alone
//     on the same bytes into a buffer made beforehand;
// (b) opening a document and drawing page 1 at 150 dpi for documents of 5, 50 and 500 pages,
//     which must cost the same at every length, since drawings are only expanded when drawn;
// (c) drawing an A4 JPEG page at 150 dpi against Qt decoding the same JPEG and scaling it to
//     the same pixels.

#include "document/DocumentEngine.h"
#include "engine/Lh5.h"
#include "engine/XdwBuilder.h"
#include "engine/XdwEngine.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <lha_decoder.h>

#include <cstring>
#include <random>

using namespace xdwtest;

namespace {

// Records as a real properties block holds them: pages with text annotations, repeated until
// the block is 1 MB.
QByteArray MegabyteOfRecords()
{
    std::vector<PageSpec> pages(1);
    QByteArray records;
    int n = 0;
    while (records.size() < 1024 * 1024) {
        pages.front().annotations.push_back({0x8011, 100 * n, 200, 3000, 800,
                                             QStringLiteral("注記 %1").arg(n), {}, 0});
        ++n;
        if (n % 500 == 0)
            records += DocumentRecords(pages), pages.front().annotations.clear();
    }
    return records.left(1024 * 1024);
}

struct Input {
    const QByteArray* bytes;
    qsizetype pos;
};

size_t Feed(void* vBuffer, size_t vLength, void* vUser)
{
    auto* in = static_cast<Input*>(vUser);
    const size_t n = qMin<size_t>(vLength, static_cast<size_t>(in->bytes->size() - in->pos));
    std::memcpy(vBuffer, in->bytes->constData() + in->pos, n);
    in->pos += static_cast<qsizetype>(n);
    return n;
}

const QByteArray& Records()
{
    static const QByteArray records = MegabyteOfRecords();
    return records;
}

const QByteArray& Stream()
{
    static const QByteArray stream = Lh5Literal(Records());
    return stream;
}

void BM_Lh5Floor_LiblhasaAlone(benchmark::State& state)
{
    static char name[] = "-lh5-";
    LHADecoderType* type = lha_decoder_for_name(name);
    QByteArray out(Records().size(), Qt::Uninitialized);
    for (auto _ : state) {
        Input in{&Stream(), 0};
        LHADecoder* decoder = lha_decoder_new(type, Feed, &in, static_cast<size_t>(out.size()));
        size_t done = 0;
        while (done < static_cast<size_t>(out.size())) {
            const size_t n = lha_decoder_read(decoder, reinterpret_cast<uint8_t*>(out.data()) + done,
                                              static_cast<size_t>(out.size()) - done);
            if (n == 0)
                break;
            done += n;
        }
        lha_decoder_free(decoder);
        benchmark::DoNotOptimize(done);
    }
    state.SetBytesProcessed(state.iterations() * Records().size());
}

void BM_Lh5Engine(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(lh5::Expand(Stream(), Records().size()));
    state.SetBytesProcessed(state.iterations() * Records().size());
}

QImage Photo(QSize vSize)
{
    // Smooth gradients and noise, so the JPEG is the size of a scanned photo page.
    QImage image(vSize, QImage::Format_RGB32);
    std::mt19937 random(3);
    for (int y = 0; y < vSize.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < vSize.width(); ++x)
            line[x] = qRgb((x / 5) % 256, (y / 7) % 256, static_cast<int>(random() % 64) + 128);
    }
    return image;
}

struct Files {
    QTemporaryDir dir;
    QString Write(const QString& vName, const QByteArray& vBytes)
    {
        QFile f(dir.filePath(vName));
        f.open(QIODevice::WriteOnly);
        f.write(vBytes);
        return f.fileName();
    }
};

Files& TheFiles()
{
    static Files files;
    return files;
}

void OpenAndDrawPageOne(XdwEngine& vEngine, const QString& vPath)
{
    vEngine.OpenDocument(vPath, 1);
    vEngine.SelectDocumentHandle(vEngine.ReadDocumentHandle());
    const qint32 handle = vEngine.ConvertPageToImageHandle(1, 150, 1);
    if (vEngine.LastResult() != 0)
        qFatal("%s", qPrintable(vEngine.LastReason()));
    vEngine.GlobalFree(handle);
    vEngine.CloseSelectedDocument();
}

void BM_OpenAndDrawPageOne(benchmark::State& state)
{
    // Every page a JPEG page kept in an entry, with a text annotation: a scanned, stamped document.
    PageSpec page;
    page.content = JpegContent(Photo(QSize(827, 1169)), page.width, page.height);
    page.annotations.push_back({0x8011, 1000, 1000, 5000, 800, QStringLiteral("受付"), {}, 0});
    const std::vector<PageSpec> pages(static_cast<size_t>(state.range(0)), page);
    FileOptions options;
    options.contentInEntries = true;
    const QString path = TheFiles().Write(QStringLiteral("pages-%1.xdw").arg(state.range(0)), Document(pages, options));
    XdwEngine engine;
    for (auto _ : state) {
        if (state.range(1) == 0) {
            engine.OpenDocument(path, 1);
            engine.SelectDocumentHandle(engine.ReadDocumentHandle());
            engine.CloseSelectedDocument();
        } else {
            OpenAndDrawPageOne(engine, path);
        }
    }
}

const QByteArray& A4Jpeg()
{
    static const QByteArray jpeg = Jpeg(Photo(QSize(1240, 1754)));
    return jpeg;
}

void BM_JpegPageFloor_QtDecodeAndScale(benchmark::State& state)
{
    for (auto _ : state) {
        const QImage decoded = QImage::fromData(A4Jpeg(), "JPEG");
        QImage page(1240, 1754, QImage::Format_RGB32);
        QPainter painter(&page);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRectF(0, 0, 1240, 1754), decoded);
        benchmark::DoNotOptimize(page.constBits());
    }
}

void BM_JpegPageEngine(benchmark::State& state)
{
    PageSpec page;
    page.content = DrawingFields(5, A4Jpeg(), page.width, page.height, false);
    const QString path = TheFiles().Write(QStringLiteral("jpeg.xdw"), Document({page}));
    XdwEngine engine;
    engine.OpenDocument(path, 1);
    engine.SelectDocumentHandle(engine.ReadDocumentHandle());
    for (auto _ : state) {
        const qint32 handle = engine.ConvertPageToImageHandle(1, 150, 1);
        engine.GlobalFree(handle);
    }
}

} // namespace

BENCHMARK(BM_Lh5Floor_LiblhasaAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Lh5Engine)->Unit(benchmark::kMillisecond);
// Second argument 0: open and close only.
BENCHMARK(BM_OpenAndDrawPageOne)->ArgsProduct({{5, 50, 500}, {0, 1}})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_JpegPageFloor_QtDecodeAndScale)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_JpegPageEngine)->Unit(benchmark::kMillisecond);
