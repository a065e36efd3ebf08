// A text-heavy printed page played by the metafile player, beside its floor: QPainter drawing the
// same glyphs at the same places in the same font straight away. The page is A4 at 600 dpi as
// DocuWorks prints it: 60 lines of 40 Japanese characters, one ExtTextOutA in code page 932 with a
// spacing array per line, rendered at 150 dpi.

#include "MetafileWriter.h"
#include "engine/emf/EmfPlayer.h"
#include "engine/emf/Fonts.h"
#include "support/Cp932.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>

namespace {

constexpr int kLines = 60, kColumns = 40, kEm = 100, kPitch = 100;   // device pixels at 600 dpi
const QSize kPage(1240, 1754);

QString LineText(int vLine)
{
    static const QString kText = QStringLiteral("吾輩は猫である。名前はまだ無い。どこで生れたかとんと見当がつかぬ。何でも薄暗い");
    return kText.mid(vLine % 5, kColumns);
}

QByteArray TextPage()
{
    testemf::Emf page(21000, 29700, 4961, 7016, 210, 297);
    page.Add(10, {-109, -109}).Font(1, -kEm, 128, QStringLiteral("ＭＳ 明朝")).Add(18, {1});
    for (int line = 0; line < kLines; ++line) {
        const QByteArray sjis = Cp932::Encode(LineText(line));
        QList<qint32> dx;
        for (int i = 0; i < sjis.size(); ++i)
            dx << (i % 2 ? kPitch : 0);
        page.Text(300, 300 + line * 110, sjis, qint32(sjis.size()), false, dx);
    }
    return page.Finish();
}

QImage Blank()
{
    QImage image(kPage, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

void PlayTextPage(benchmark::State& state)
{
    const QByteArray page = TextPage();
    for (auto _ : state) {
        QImage image = Blank();
        QPainter painter(&image);
        benchmark::DoNotOptimize(emf::Play(painter, page, QRectF(QPointF(), kPage)));
    }
}

// The floor: the same font at the same size, each character drawn at its place.
void PaintSameGlyphs(benchmark::State& state)
{
    const double scale = 150.0 / 600.0;
    QFont font;
    font.setFamilies(emf::FontFamilies(QStringLiteral("ＭＳ 明朝"), 128));
    font.setPixelSize(qRound(kEm * scale));
    for (auto _ : state) {
        QImage image = Blank();
        QPainter painter(&image);
        painter.setFont(font);
        const QFontMetricsF metrics(font);
        for (int line = 0; line < kLines; ++line) {
            const QString text = LineText(line);
            const double y = (300 + 109 + line * 110) * scale + metrics.ascent();
            for (int i = 0; i < text.size(); ++i)
                painter.drawText(QPointF((300 + 109 + i * kPitch) * scale, y), text.mid(i, 1));
        }
    }
}

} // namespace

BENCHMARK(PlayTextPage)->Unit(benchmark::kMillisecond);
BENCHMARK(PaintSameGlyphs)->Unit(benchmark::kMillisecond);
