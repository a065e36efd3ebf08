// A page turn through a TIFF file: a 400 dpi A4 fax page (3307 x 4677, CCITT G4, text-like
// strokes) loaded into a page pane and brought to 16 bits per pixel, beside its floor: libtiff
// decoding the same page into a buffer and nothing else. Then the first paint of that page at a
// usual window size, fit page and smooth, which is when the one scaled copy is made.

#include "viewer/AppContext.h"
#include "viewer/PagePane.h"
#include "viewer/frmMain.h"
#include "viewer/TiffPages.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <tiffio.h>

#include <random>
#include <vector>

namespace {

constexpr uint32_t Width = 3307;
constexpr uint32_t Height = 4677;

struct Fixture {
    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("a4-400dpi-g4.tif"));

    Fixture()
    {
        // Lines of "words": short runs of vertical and horizontal strokes 3 to 5 pixels thick,
        // 24 lines of text in 400 dpi margins, as a typed page looks to a fax coder.
        const uint32_t rowBytes = (Width + 7) / 8;
        std::vector<uint8_t> page(size_t(rowBytes) * Height, 0);
        auto black = [&](uint32_t x, uint32_t y) { page[size_t(y) * rowBytes + x / 8] |= uint8_t(0x80 >> (x % 8)); };
        std::mt19937 random(7);
        for (uint32_t line = 0; line < 40; ++line) {
            const uint32_t top = 400 + line * 95;
            uint32_t x = 300;
            while (x < Width - 400) {
                const uint32_t word = 60 + random() % 240;
                for (uint32_t cx = x; cx < x + word; cx += 18 + random() % 10) {
                    const uint32_t thick = 3 + random() % 3;
                    for (uint32_t y = top; y < top + 50; ++y)
                        for (uint32_t t = 0; t < thick; ++t)
                            black(cx + t, y);
                    if (random() % 2)
                        for (uint32_t y = top + 20; y < top + 20 + thick; ++y)
                            for (uint32_t dx = 0; dx < 14; ++dx)
                                black(cx + dx, y);
                }
                x += word + 40;
            }
        }
        // Two pages of it, so that the window can turn back and forth.
        TIFF* tif = TIFFOpen(QFile::encodeName(path).constData(), "w");
        for (int copy = 0; copy < 2; ++copy) {
            TIFFSetField(tif, TIFFTAG_IMAGEWIDTH, Width);
            TIFFSetField(tif, TIFFTAG_IMAGELENGTH, Height);
            TIFFSetField(tif, TIFFTAG_BITSPERSAMPLE, 1);
            TIFFSetField(tif, TIFFTAG_SAMPLESPERPIXEL, 1);
            TIFFSetField(tif, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
            TIFFSetField(tif, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
            TIFFSetField(tif, TIFFTAG_ROWSPERSTRIP, Height);
            TIFFSetField(tif, TIFFTAG_XRESOLUTION, 400.0f);
            TIFFSetField(tif, TIFFTAG_YRESOLUTION, 400.0f);
            TIFFSetField(tif, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
            TIFFWriteEncodedStrip(tif, 0, page.data(), tmsize_t(page.size()));
            TIFFWriteDirectory(tif);
        }
        TIFFClose(tif);
    }
};

Fixture& Shared()
{
    static Fixture fixture;
    return fixture;
}

// The floor: open, decode the one strip into a buffer, close.
void DecodeFloor(benchmark::State& state)
{
    const QByteArray path = QFile::encodeName(Shared().path);
    std::vector<uint8_t> buffer(size_t((Width + 7) / 8) * Height);
    for (auto _ : state) {
        TIFF* tif = TIFFOpen(path.constData(), "r");
        TIFFReadEncodedStrip(tif, 0, buffer.data(), tmsize_t(buffer.size()));
        TIFFClose(tif);
        benchmark::DoNotOptimize(buffer.data());
    }
}

// What a page turn does with a TIFF page.
void LoadAndConvert(benchmark::State& state)
{
    PagePane pane;
    for (auto _ : state) {
        pane.LoadTiffPage(Shared().path, 1);
        pane.ConvertTo16Bit();
        benchmark::DoNotOptimize(pane.BitmapSize());
    }
}

// The same with the 16-bit copy of the fax page made, as when someone asks for the picture: what
// converting eagerly would cost on every page turn.
void LoadConvertAndCopy(benchmark::State& state)
{
    PagePane pane;
    for (auto _ : state) {
        pane.LoadTiffPage(Shared().path, 1);
        pane.ConvertTo16Bit();
        benchmark::DoNotOptimize(pane.Bitmap().constBits());
    }
}

// The load alone, to see what the conversion adds.
void LoadOnly(benchmark::State& state)
{
    PagePane pane;
    for (auto _ : state) {
        pane.LoadTiffPage(Shared().path, 1);
        benchmark::DoNotOptimize(pane.Bitmap().constBits());
    }
}

// The first paint after a page turn: the scaled copy is made, then blitted.
void FirstPaint(benchmark::State& state)
{
    PagePane pane;
    pane.resize(1000, 1300);
    pane.show();
    QCoreApplication::processEvents();
    pane.SetPaintSizeMode(PagePane::SizeFitPage);
    pane.SetPaintScaling(state.range(0) ? PagePane::ScalingSmooth : PagePane::ScalingFast);
    const QImage page = TiffPages::ReadPage(Shared().path, 1);
    QImage target(pane.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        // The page as a page turn leaves it, without decoding it again.
        pane.SetBitmap(page);
        pane.ConvertTo16Bit();
        pane.viewport()->render(&target);
        benchmark::DoNotOptimize(target.constBits());
    }
    state.SetLabel(state.range(0) ? "smooth" : "fast");
}

// A repaint with nothing changed: a blit of the scaled copy.
void Repaint(benchmark::State& state)
{
    PagePane pane;
    pane.resize(1000, 1300);
    pane.show();
    QCoreApplication::processEvents();
    pane.SetPaintSizeMode(PagePane::SizeFitPage);
    pane.SetPaintScaling(PagePane::ScalingSmooth);
    pane.LoadTiffPage(Shared().path, 1);
    pane.ConvertTo16Bit();
    QImage target(pane.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    pane.viewport()->render(&target);
    for (auto _ : state) {
        pane.viewport()->render(&target);
        benchmark::DoNotOptimize(target.constBits());
    }
}

// A page turn as the user makes it: NextPage and PreviousPage of the real window, in turn
// between the two pages, until the page is in the pane.
void WindowPageTurn(benchmark::State& state)
{
    AppContext context;
    context.SettingsPath = Shared().dir.filePath(QStringLiteral("Marnoquill.ini"));
    frmMain window(context);
    window.Load();
    window.resize(1000, 1300);
    window.show();
    window.InitialOpenFile(Shared().path, true);
    QCoreApplication::processEvents();
    bool forward = true;
    for (auto _ : state) {
        if (forward)
            window.NextPage();
        else
            window.PreviousPage();
        forward = !forward;
    }
}

} // namespace

BENCHMARK(WindowPageTurn)->Unit(benchmark::kMillisecond);
BENCHMARK(DecodeFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadAndConvert)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadConvertAndCopy)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(FirstPaint)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(Repaint)->Unit(benchmark::kMillisecond);
