#include "MetafileWriter.h"
#include "Render.h"

#include "support/Cp932.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

using namespace testemf;

namespace {

// One drawing with a record of every family the player reads, so that damage lands in each.
QByteArray EveryKindOfEmf()
{
    QByteArray poly = Words({0, 0, 0, 0, 3});
    for (int v : {1, 1, 50, 1, 50, 50})
        Put16(poly, quint16(v));
    QByteArray region = Words({32, 1, 1, 16, 0, 0, 100, 100, 0, 0, 60, 60});
    const QByteArray sjis = Cp932::Encode(QStringLiteral("吾輩は猫"));
    QByteArray dw("DW\x20\x80", 4);   // a self-standing polygon in the nibble form
    dw += Words({3}) + Shorts({10, 10}) + QByteArray::fromHex("5008 f0");
    QByteArray comment = Words({qint32(dw.size())}) + dw;
    return Emf()
        .Add(10, {-5, -5})
        .Add(19, {2})
        .Pen(1, kBlueRef, 3)
        .Brush(2, kRedRef, 2, 3)
        .Add(33, {})
        .Add(30, {0, 0, 90, 90})
        .Add(75, Words({qint32(region.size()), 1}) + region)
        .Add(86, poly)
        .Add(59, {})
        .Add(42, {10, 10, 40, 40})
        .Add(60, {})
        .Add(63, {0, 0, 0, 0})
        .Add(34, {-1})
        .Font(3, -12, 128, QStringLiteral("ＭＳ ゴシック"))
        .Text(2, 60, sjis, qint32(sjis.size()), false, {6, 6, 6, 6, 6, 6, 6, 6})
        .TextW(2, 80, QStringLiteral("Lorem"), {7, 7, 7, 7, 7})
        .StretchDib(60, 60, 30, 30, DibInfo(4, 2, 8, 1, {0xFF0000, 0x0000FF}), QByteArray::fromHex("0401 0000 0002 0001"), 4, 2)
        .Add(70, comment)
        .Add(45, {0, 0, 100, 100, 100, 50, 0, 50})
        .Finish();
}

QByteArray EveryKindOfWmf()
{
    QByteArray brush = Shorts({0});
    Put32(brush, kRedRef);
    QByteArray stretch;
    Put32(stretch, 0xCC0020);
    stretch += Shorts({0, 1, 1, 0, 0, 10, 10, 0, 0}) + DibInfo(1, 1, 24) + QByteArray::fromHex("0000ff00");
    return Wmf()
        .Add(0x020C, {100, 100})
        .Add(0x02FC, brush + Shorts({0}))
        .Add(0x012D, {0})
        .Add(0x0324, Shorts({3, 0, 0, 50, 0, 50, 50}))
        .Add(0x0538, Shorts({2, 3, 3, 0, 0, 9, 0, 9, 9, 20, 20, 29, 20, 29, 29}))
        .Add(0x0A32, Shorts({10, 10, 3, 0}) + QByteArray("abc\0", 4) + Shorts({5, 5, 5}))
        .Add(0x0F43, stretch)
        .Add(0x0626, Shorts({15, 3}) + QByteArray("DW\x02\0", 4))
        .Finish();
}

// Plays the bytes as a page or as an annotation (the two map differently) and reads their text.
void PlayBoth(const QByteArray& vBytes, emf::Mapping vMapping = emf::Mapping::Page)
{
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    emf::PlayOptions options;
    options.mapping = vMapping;
    emf::PlayResult result = emf::Play(painter, vBytes, QRectF(0, 0, 40, 40), options);
    if (!result.ok) {
        EXPECT_FALSE(result.error.isEmpty());
    }
    EXPECT_FALSE(result.error.contains(u'\n'));
    emf::Text(vBytes);
}

} // namespace

TEST(HostileBytes, TheSampleDrawingsPlayCleanly)
{
    for (const QByteArray& bytes : {EveryKindOfEmf(), EveryKindOfWmf()}) {
        emf::PlayResult result;
        Render(bytes, emf::Mapping::Page, {100, 100}, &result);
        EXPECT_TRUE(result.ok) << result.error.toStdString();
        EXPECT_EQ(result.unsupportedRecords, 0);
    }
    EXPECT_EQ(emf::Text(EveryKindOfEmf()).size(), 2);
}

TEST(HostileBytes, EveryTruncationEndsInAnErrorOrAShorterDrawing)
{
    const QByteArray emf = EveryKindOfEmf();
    for (qsizetype n = 0; n < emf.size(); ++n) {
        QByteArray cut = emf.left(n);
        if (n >= 52)   // also let the header claim only what is there, to reach the records
            qToLittleEndian(quint32(n), cut.data() + 48);
        PlayBoth(cut);
    }
    QByteArray cut = emf.left(emf.size() - 30);
    qToLittleEndian(quint32(cut.size()), cut.data() + 48);
    emf::PlayResult result;
    Render(cut, emf::Mapping::Page, {50, 50}, &result);
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.error.startsWith(QStringLiteral("metafile record at byte"))) << result.error.toStdString();
    const QByteArray wmf = EveryKindOfWmf();
    for (qsizetype n = 0; n < wmf.size(); ++n)
        PlayBoth(wmf.left(n));
    // Nothing at all, and something that is neither kind.
    Render({}, emf::Mapping::Page, {10, 10}, &result);
    EXPECT_FALSE(result.ok);
    Render(QByteArray(200, 'x'), emf::Mapping::Annotation, {10, 10}, &result);
    EXPECT_EQ(result.error, QStringLiteral("not a metafile: no enhanced or 16-bit metafile header"));
}

TEST(HostileBytes, FlippedBytesAndHugeClaimsNeverCrashOrHang)
{
    QRandomGenerator random(20261124);
    for (const QByteArray& original : {EveryKindOfEmf(), EveryKindOfWmf()}) {
        for (int variant = 0; variant < 1500; ++variant) {
            QByteArray bytes = original;
            const int flips = 1 + variant % 4;
            for (int k = 0; k < flips; ++k) {
                const qsizetype at = random.bounded(bytes.size());
                // Half the time a plain flip, half a value that sizes and counts trip over.
                static constexpr char kNasty[] = {'\x00', '\x7F', '\x80', '\xFF'};
                bytes[at] = variant % 2 ? char(bytes[at] ^ (1 << random.bounded(8))) : kNasty[random.bounded(4)];
            }
            PlayBoth(bytes, variant % 3 ? emf::Mapping::Page : emf::Mapping::Annotation);
        }
    }
    // A font two to the thirtieth units high, a dashed line and an ellipse across the whole
    // coordinate range, and a saved state nested past any real drawing.
    Emf deep;
    deep.Font(1, 1 << 30, 0, QStringLiteral("Arial")).TextW(0, 0, QStringLiteral("x"));
    deep.Pen(2, kBlueRef, 0, 1).Add(27, {INT32_MIN, INT32_MIN}).Add(54, {INT32_MAX, INT32_MAX});
    deep.Add(59, {}).Add(42, {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}).Add(60, {}).Add(64, {0, 0, 0, 0});
    for (int i = 0; i < 1100; ++i)
        deep.Add(33, {});
    emf::PlayResult result;
    Render(deep.Finish(), emf::Mapping::Page, {50, 50}, &result);
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.error.contains(QStringLiteral("saved states"))) << result.error.toStdString();
}
