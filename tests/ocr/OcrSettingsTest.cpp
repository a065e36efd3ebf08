// The option words users' scripts hold, what each asks of Tesseract, and the sentences that
// refuse the rest: pinned word for word, since a changed word breaks a script that worked.

#include "engine/ocr/OcrSettings.h"

#include <gtest/gtest.h>

using namespace ocr;

namespace {

Settings With(const QString& vLanguage, const QString& vForm, const QString& vColumn,
              const QString& vNoise = QStringLiteral("NONE"))
{
    Options o;
    o.language = vLanguage;
    o.form = vForm;
    o.column = vColumn;
    o.noiseReduction = vNoise;
    return Interpret(o);
}

} // namespace

TEST(OcrSettings, DefaultsReadJapaneseWithTheWholeLayoutAnalysis)
{
    const Settings s = Interpret(Options{});
    EXPECT_EQ(s.error, QString());
    EXPECT_EQ(s.languages, QStringLiteral("jpn"));
    EXPECT_EQ(s.layout, Layout::Auto);
    EXPECT_EQ(s.noiseLevel, 0);
    const Options o;
    EXPECT_FALSE(o.insertSpace);
    EXPECT_TRUE(o.autoDeskew);
    EXPECT_TRUE(o.halfSizeChar);
    EXPECT_TRUE(o.areas.empty());
}

TEST(OcrSettings, EveryAcceptedWordAndWhatItAsks)
{
    struct Case {
        const char* language;
        const char* form;
        const char* column;
        const char* noise;
        const char* languages;
        Layout layout;
        int noiseLevel;
    };
    const Case cases[] = {
        {"AUTO", "AUTO", "AUTO", "NONE", "jpn+eng", Layout::Auto, 0},
        {"JAPANESE", "WRITING", "HORIZONTAL_MULTI", "WEAK", "jpn", Layout::Auto, 1},
        {"ENGLISH", "AUTO", "HORIZONTAL_SINGLE", "NORMAL", "eng", Layout::SingleBlock, 2},
        {"JAPANESE", "AUTO", "VERTICAL_SINGLE", "STRONG", "jpn_vert+jpn", Layout::SingleVerticalBlock, 3},
        {"AUTO", "WRITING", "VERTICAL_MULTI", "NONE", "jpn_vert+jpn+eng", Layout::AutoVertical, 0},
        // English has no vertical model; its lines are still looked for upright.
        {"ENGLISH", "AUTO", "VERTICAL_MULTI", "NONE", "eng", Layout::AutoVertical, 0},
        // A table's cells are read wherever they are, whatever the columns.
        {"JAPANESE", "TABLE", "HORIZONTAL_SINGLE", "NONE", "jpn", Layout::Sparse, 0},
        {"JAPANESE", "TABLE", "VERTICAL_SINGLE", "NONE", "jpn_vert+jpn", Layout::Sparse, 0},
        // Case and surrounding blanks don't matter.
        {" japanese ", "table", "Vertical_Multi", " strong", "jpn_vert+jpn", Layout::Sparse, 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.language) + "/" + c.form + "/" + c.column + "/" + c.noise);
        const Settings s = With(QString::fromLatin1(c.language), QString::fromLatin1(c.form),
                                QString::fromLatin1(c.column), QString::fromLatin1(c.noise));
        EXPECT_EQ(s.error, QString());
        EXPECT_EQ(s.languages, QString::fromLatin1(c.languages));
        EXPECT_EQ(s.layout, c.layout);
        EXPECT_EQ(s.noiseLevel, c.noiseLevel);
    }
}

TEST(OcrSettings, UnknownWordsAreRefusedNamingTheAcceptedOnes)
{
    const QString a = QStringLiteral("AUTO");
    EXPECT_EQ(With(QStringLiteral("FRENCH"), a, a).error,
              QStringLiteral("OCRの言語はAUTO,JAPANESE,ENGLISHの何れかを指定してください。(FRENCH)"));
    EXPECT_EQ(With(QStringLiteral("jpn"), a, a).error,
              QStringLiteral("OCRの言語はAUTO,JAPANESE,ENGLISHの何れかを指定してください。(jpn)"));
    EXPECT_EQ(With(a, QStringLiteral("FORM"), a).error,
              QStringLiteral("OCRの書式はAUTO,WRITING,TABLEの何れかを指定してください。(FORM)"));
    EXPECT_EQ(With(a, a, QStringLiteral("")).error,
              QStringLiteral("OCRの段組はAUTO,HORIZONTAL_SINGLE,HORIZONTAL_MULTI,VERTICAL_SINGLE,"
                             "VERTICAL_MULTIの何れかを指定してください。()"));
    EXPECT_EQ(With(a, a, a, QStringLiteral("%1")).error,
              QStringLiteral("OCRのノイズ除去はNONE,WEAK,NORMAL,STRONGの何れかを指定してください。(%1)"));
    // The first unknown word is the one named.
    EXPECT_TRUE(With(QStringLiteral("X"), QStringLiteral("Y"), a).error.startsWith(QStringLiteral("OCRの言語")));
    EXPECT_EQ(LanguagesOf(QStringLiteral("KOREAN")), QString());
}

TEST(OcrSettings, FailureSentences)
{
    EXPECT_EQ(MissingDataText(QStringLiteral("jpn_vert+jpn")),
              QStringLiteral("OCRに必要なTesseractの言語データがありません。(jpn_vert, jpn)"));
    EXPECT_EQ(NoPictureText(), QStringLiteral("OCRするページの画像がありません。"));
    EXPECT_EQ(TooLargeText(), QStringLiteral("OCRするページの画像が大きすぎます。"));
    EXPECT_EQ(FailedText(), QStringLiteral("OCRに失敗しました。"));
}
