// Tesseract's words made into the result: spaces beside Japanese characters go unless asked
// for, lines and areas break, full-width letters become half-width.

#include "engine/ocr/TextBuilder.h"

#include <gtest/gtest.h>

using namespace ocr;

namespace {

QRect Box(int vX) { return QRect(vX, 10, 20, 30); }

} // namespace

TEST(TextBuilder, WordsMeetingBesideJapaneseBecomeOneWord)
{
    TextBuilder b(false, true);
    b.Add(QStringLiteral("Windows"), Box(0), 90, true);
    b.Add(QStringLiteral("10"), Box(30), 80, false);
    b.Add(QStringLiteral("の第"), Box(60), 70, false);
    b.Add(QStringLiteral("1"), Box(90), 95, false);
    b.Add(QStringLiteral("章"), Box(120), 60, false);
    b.Add(QStringLiteral("and"), Box(150), 99, false);
    b.Add(QStringLiteral("more"), Box(180), 99, false);
    const Result r = b.Take();
    EXPECT_EQ(r.text, QStringLiteral("Windows 10の第1章and more"));
    ASSERT_EQ(r.words.size(), 3u);
    EXPECT_EQ(r.words[0].text, QStringLiteral("Windows"));
    EXPECT_EQ(r.words[1].text, QStringLiteral("10の第1章and"));
    EXPECT_EQ(r.words[1].box, QRect(30, 10, 140, 30));
    EXPECT_EQ(r.words[1].confidence, 60);
    EXPECT_EQ(r.words[2].text, QStringLiteral("more"));
    EXPECT_TRUE(r.error.isEmpty());
}

TEST(TextBuilder, AskedForSpacesStayEverywhere)
{
    TextBuilder b(true, true);
    b.Add(QStringLiteral("吾輩"), Box(0), 90, true);
    b.Add(QStringLiteral("は"), Box(30), 90, false);
    b.Add(QStringLiteral("cat"), Box(60), 90, false);
    const Result r = b.Take();
    EXPECT_EQ(r.text, QStringLiteral("吾輩 は cat"));
    EXPECT_EQ(r.words.size(), 3u);
}

TEST(TextBuilder, LinesAndAreasBreakAndNeverJoin)
{
    TextBuilder b(false, true);
    b.Add(QStringLiteral("名前は"), Box(0), 90, true);
    b.Add(QStringLiteral("まだ"), Box(30), 90, true);      // a new line, though both are Japanese
    b.Add(QStringLiteral("無い。"), Box(60), 90, false);
    b.BreakLine();                                         // the next area
    b.Add(QStringLiteral("fox"), Box(90), 90, false);
    b.Add(QStringLiteral("  "), Box(120), 90, false);      // blank words are no words
    b.Add(QString(), Box(150), 90, true);
    const Result r = b.Take();
    EXPECT_EQ(r.text, QStringLiteral("名前は\nまだ無い。\nfox"));
    ASSERT_EQ(r.words.size(), 3u);
    EXPECT_EQ(r.words[1].text, QStringLiteral("まだ無い。"));
    // A break asked for before the first word makes no empty first line, and Take starts afresh.
    b.BreakLine();
    b.Add(QStringLiteral("again"), Box(0), 90, false);
    EXPECT_EQ(b.Take().text, QStringLiteral("again"));
    EXPECT_TRUE(b.Take().words.empty());
}

TEST(TextBuilder, FullWidthLettersBecomeHalfWidthOnlyWhenAsked)
{
    EXPECT_EQ(HalfWidth(QStringLiteral("ＡＢＣｚ０９！～　カナ漢字")), QStringLiteral("ABCz09!~　カナ漢字"));
    TextBuilder on(false, true);
    on.Add(QStringLiteral("ＡＢＣ"), Box(0), 90, true);
    on.Add(QStringLiteral("ＤＥ"), Box(30), 90, false);
    // Once half-width they are Latin, and Latin words keep their space.
    EXPECT_EQ(on.Take().text, QStringLiteral("ABC DE"));
    TextBuilder off(false, false);
    off.Add(QStringLiteral("ＡＢＣ"), Box(0), 90, true);
    off.Add(QStringLiteral("ＤＥ"), Box(30), 90, false);
    EXPECT_EQ(off.Take().text, QStringLiteral("ＡＢＣＤＥ"));
}
