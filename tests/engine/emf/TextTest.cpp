#include "MetafileWriter.h"
#include "Render.h"

#include "engine/emf/Fonts.h"
#include "support/Cp932.h"

#include <QFontInfo>
#include <gtest/gtest.h>

using namespace testemf;

TEST(EmfText, TextComesOutInDrawingOrderInTheSelectedFontsCodePage)
{
    const QString japanese = QStringLiteral("吾輩は猫である。");
    const QByteArray sjis = Cp932::Encode(japanese);
    const QByteArray emf = Emf()
                               .TextW(0, 0, QStringLiteral("Lorem ipsum. 吾輩"))
                               .Font(1, -10, 128, QStringLiteral("ＭＳ ゴシック"))
                               .Text(0, 20, sjis, qint32(sjis.size()), false)
                               .Font(2, -10, 0, QStringLiteral("Century"))
                               .Text(0, 40, QByteArray("\x80 5"), 3, false)
                               .Finish();
    EXPECT_EQ(emf::Text(emf), (QStringList{QStringLiteral("Lorem ipsum. 吾輩"), japanese, QStringLiteral("€ 5")}));
    // The text of a drawing that breaks off is what came before the break.
    QByteArray cut = emf;
    cut.truncate(cut.size() - 60);
    qToLittleEndian(quint32(cut.size()), cut.data() + 48);
    EXPECT_EQ(emf::Text(cut).value(0), QStringLiteral("Lorem ipsum. 吾輩"));
}

TEST(EmfText, CharactersLandInTheirBoxAtTheirSpacing)
{
    // Three characters 30 units apart, top-left aligned at (5, 10), 20 units high.
    const QByteArray emf = Emf()
                               .Font(1, -20, 128, QStringLiteral("ＭＳ ゴシック"))
                               .Add(18, {1})
                               .TextW(5, 10, QStringLiteral("ＭＭＭ"), {30, 30, 30})
                               .Finish();
    const QImage image = Render(emf);
    EXPECT_GT(DarkIn(image, QRect(5, 10, 20, 20)), 20);
    EXPECT_GT(DarkIn(image, QRect(35, 10, 20, 20)), 20);
    EXPECT_GT(DarkIn(image, QRect(65, 10, 20, 20)), 20);
    EXPECT_EQ(DarkIn(image, QRect(0, 35, 100, 65)), 0);   // nothing below the line
    EXPECT_EQ(DarkIn(image, QRect(0, 0, 100, 8)), 0);     // nor above its top
    // Baseline alignment puts the same text above the reference point instead.
    const QImage above = Render(Emf()
                                    .Font(1, -20, 128, QStringLiteral("ＭＳ ゴシック"))
                                    .Add(22, {24})
                                    .TextW(5, 50, QStringLiteral("ＭＭＭ"), {30, 30, 30})
                                    .Finish());
    EXPECT_GT(DarkIn(above, QRect(0, 30, 100, 20)), 40);
    EXPECT_EQ(DarkIn(above, QRect(0, 53, 100, 47)), 0);
}

TEST(EmfText, TopAlignedTextStaysInsideItsCellWhateverTheStandInFont)
{
    // A page-number annotation: one digit whose em nearly fills the box, aligned by its top.
    const QImage image = Render(Emf().Font(1, -90, 128, QStringLiteral("ＭＳ ゴシック")).Add(18, {1})
                                    .TextW(5, 5, QStringLiteral("3")).Finish());
    EXPECT_GT(DarkIn(image, QRect(0, 60, 100, 35)), 50);   // the digit's lower half is there
    EXPECT_EQ(DarkIn(image, QRect(0, 96, 100, 4)), 0);     // and ends above the cell's bottom
}

TEST(EmfText, DoubleByteCharactersAdvanceByBothOfTheirWidths)
{
    // "日本" with one width per byte: 0 and 40 for each character puts the second at x = 40.
    const QByteArray sjis = Cp932::Encode(QStringLiteral("日本"));
    const QByteArray emf = Emf()
                               .Font(1, -20, 128, QStringLiteral("ＭＳ 明朝"))
                               .Add(18, {1})
                               .Text(0, 10, sjis, 4, false, {0, 40, 0, 40})
                               .Finish();
    const QImage image = Render(emf);
    EXPECT_GT(DarkIn(image, QRect(0, 10, 22, 22)), 10);
    EXPECT_GT(DarkIn(image, QRect(40, 10, 22, 22)), 10);
    EXPECT_EQ(DarkIn(image, QRect(24, 0, 14, 100)), 0);
    EXPECT_EQ(DarkIn(image, QRect(64, 0, 36, 100)), 0);
}

TEST(EmfText, JapaneseFaceNamesReachAnInstalledJapaneseFont)
{
    for (const QString& face : {QStringLiteral("ＭＳ ゴシック"), QStringLiteral("ＭＳ 明朝"), QStringLiteral("Yu Gothic UI"),
                                QStringLiteral("ＭＳ Ｐゴシック"), QStringLiteral("MS Mincho"), QStringLiteral("@ＭＳ 明朝")}) {
        QFont font;
        font.setFamilies(emf::FontFamilies(face, 128));
        const QString family = QFontInfo(font).family();
        EXPECT_TRUE(family.contains(QStringLiteral("CJK")) || family.startsWith(QStringLiteral("IPA")))
            << face.toStdString() << " became " << family.toStdString();
    }
}

TEST(EmfText, FaceNameTableIsPinned)
{
    // Documents name these faces; which installed font stands in decides how every page looks.
    const QStringList sansFixed{QStringLiteral("Noto Sans Mono CJK JP"), QStringLiteral("IPAGothic")};
    const QStringList serifFixed{QStringLiteral("IPAMincho"), QStringLiteral("Noto Serif CJK JP")};
    const QStringList sans{QStringLiteral("Noto Sans CJK JP"), QStringLiteral("IPAPGothic"), QStringLiteral("IPAGothic")};
    const QStringList serif{QStringLiteral("Noto Serif CJK JP"), QStringLiteral("IPAPMincho"), QStringLiteral("IPAMincho")};
    const QList<std::pair<QString, QStringList>> table{
        {QStringLiteral("ＭＳ ゴシック"), sansFixed},  {QStringLiteral("MS Gothic"), sansFixed},
        {QStringLiteral("@ＭＳ ゴシック"), sansFixed}, {QStringLiteral("ＭＳ 明朝"), serifFixed},
        {QStringLiteral("MS Mincho"), serifFixed},     {QStringLiteral("ＭＳ Ｐゴシック"), sans},
        {QStringLiteral("MS UI Gothic"), sans},        {QStringLiteral("Yu Gothic UI"), sans},
        {QStringLiteral("游ゴシック"), sans},          {QStringLiteral("メイリオ"), sans},
        {QStringLiteral("Meiryo UI"), sans},           {QStringLiteral("ＭＳ Ｐ明朝"), serif},
        {QStringLiteral("游明朝"), serif},             {QStringLiteral("HG明朝E"), serif},
    };
    for (const auto& [face, stand] : table)
        EXPECT_EQ(emf::FontFamilies(face, 0), QStringList{face} + stand) << face.toStdString();
    // Unknown faces: Japanese text gets the proportional sans, Latin a serif before it.
    EXPECT_EQ(emf::FontFamilies(QStringLiteral("Foo"), 128), QStringList{QStringLiteral("Foo")} + sans);
    const QStringList century = QStringList{QStringLiteral("Century"), QStringLiteral("serif")} + sans;
    EXPECT_EQ(emf::FontFamilies(QStringLiteral("Century"), 0), century);
    EXPECT_EQ(emf::FontFamilies(QString(), 128), sans);
}

TEST(EmfText, WesternCodePageHighHalfIsPinned)
{
    QByteArray high;
    for (int b = 0x80; b < 0xA0; ++b)
        high.append(char(b));
    EXPECT_EQ(emf::DecodeNarrow(high, 0),
              QString::fromUtf8("€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F\u0090‘’“”•–—˜™š›œ\u009DžŸ"));
    EXPECT_EQ(emf::DecodeNarrow(QByteArray("\xE9t\xE9"), 0), QString::fromUtf8("été"));
    // The system character set is Japanese where these documents are made.
    EXPECT_EQ(emf::DecodeNarrow(Cp932::Encode(QStringLiteral("ｶﾅ漢字")), 1), QStringLiteral("ｶﾅ漢字"));
}

TEST(EmfText, PolyTextOutGivesOneEntryPerStringAndGlyphIndexTextNone)
{
    // Two strings in one record, each with its own reference point and offsets.
    QByteArray record = Words({0, 0, -1, -1, 1, 0, 0, 2});
    const qint32 first = 40 + 2 * 40, second = first + 4;
    record += Words({0, 0, 2, first, 0, 0, 0, 0, 0, 0});
    record += Words({0, 30, 1, second, 0, 0, 0, 0, 0, 0});
    record += QByteArray("ab\0\0z\0\0\0", 8);
    const QByteArray emf = Emf().Add(96, record).Text(0, 0, QByteArray("\x01\x00", 2), 1, true, {}, 0x10).Finish();
    EXPECT_EQ(emf::Text(emf), (QStringList{QStringLiteral("ab"), QStringLiteral("z"), QString()}));
    emf::PlayResult result;
    Render(emf, emf::Mapping::Page, {100, 100}, &result);
    EXPECT_TRUE(result.ok) << result.error.toStdString();
    EXPECT_EQ(result.unsupportedRecords, 0);
}
