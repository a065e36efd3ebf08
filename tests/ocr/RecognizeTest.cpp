// Pages drawn with known text, read back through Tesseract: the words, where they lie, the
// areas, the skew, the orientation, and what happens without the language data. Each test skips
// when Tesseract's data for it is not installed.

#include "DrawnPage.h"
#include "engine/ocr/Ocr.h"
#include "engine/ocr/OcrSettings.h"
#include "engine/ocr/TessPool.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QThread>
#include <QTransform>
#include <gtest/gtest.h>

#include <thread>

using namespace ocrtest;

namespace {

const QString kFox = QStringLiteral("The quick brown fox 12345");
const QString kCat = QStringLiteral("吾輩は猫である。名前はまだ無い。");

#define NEED(language)                                                        \
    if (!ocr::Available(QStringLiteral(language)))                            \
        GTEST_SKIP() << "no Tesseract data for " language;

// The two lines on a strip of A4, drawn once for all the tests.
const DrawnPage& TwoLines()
{
    static const DrawnPage page = Draw(A4(0.25), {{kFox, {200, 250}}, {kCat, {300, 550}}});
    return page;
}

ocr::Options InAreas(std::vector<QRect> vAreas)
{
    ocr::Options o;
    o.areas = std::move(vAreas);
    return o;
}

// Within a few pixels of where the ink was: Tesseract's boxes hug the ink of the characters.
void ExpectNear(const QRect& vFound, const QRect& vInked, int vSlack = 12)
{
    EXPECT_NEAR(vFound.left(), vInked.left(), vSlack);
    EXPECT_NEAR(vFound.right(), vInked.right(), vSlack);
    EXPECT_NEAR(vFound.center().y(), vInked.center().y(), vSlack);
}

// The box of the words whose text makes up the wanted line.
QRect LineBox(const ocr::Result& vResult, int vLine)
{
    QRect box;
    int line = 0;
    qsizetype at = 0;
    for (const ocr::Word& w : vResult.words) {
        at = vResult.text.indexOf(w.text, at);
        line = static_cast<int>(vResult.text.left(at).count(u'\n'));
        if (line == vLine)
            box = box.united(w.box);
        at += w.text.size();
    }
    return box;
}

} // namespace

TEST(Recognize, ReadsLatinAndJapaneseWhereTheyWereDrawn)
{
    NEED("JAPANESE");
    const ocr::Result r = ocr::Recognize(TwoLines().image, kDpi, ocr::Options{});
    ASSERT_EQ(r.error, QString());
    const QStringList lines = r.text.split(u'\n');
    ASSERT_EQ(lines.size(), 2) << r.text.toStdString();
    EXPECT_GE(Similarity(lines[0], kFox), 0.9) << lines[0].toStdString();
    // No blanks inside Japanese by default: the line is compared as it is.
    EXPECT_GE(Similarity(lines[1], kCat), 0.9) << lines[1].toStdString();
    EXPECT_FALSE(lines[1].contains(u' '));
    ExpectNear(LineBox(r, 0), TwoLines().inked[0]);
    ExpectNear(LineBox(r, 1), TwoLines().inked[1]);
    ASSERT_GE(r.words.size(), 6u);
    EXPECT_EQ(r.words[0].text, QStringLiteral("The"));
    EXPECT_GT(r.words[0].confidence, 50);
    EXPECT_LE(r.words[0].confidence, 100);
    // Asked for, Tesseract's blanks between Japanese characters stay.
    ocr::Options spaced;
    spaced.insertSpace = true;
    const ocr::Result s = ocr::Recognize(TwoLines().image, kDpi, spaced);
    EXPECT_GT(s.words.size(), r.words.size());
    EXPECT_GE(Similarity(Squeezed(s.text.split(u'\n').value(1)), kCat), 0.9);
}

TEST(Recognize, AreasRestrictAndFollowTheOrderGiven)
{
    NEED("JAPANESE");
    const QRect fox = TwoLines().inked[0].adjusted(-30, -30, 30, 30);
    const QRect cat = TwoLines().inked[1].adjusted(-30, -30, 30, 30);
    // The Japanese line alone, its boxes in the page's pixels, not the area's.
    const ocr::Result catOnly = ocr::Recognize(TwoLines().image, kDpi, InAreas({cat}));
    ASSERT_EQ(catOnly.error, QString());
    EXPECT_GE(Similarity(catOnly.text, kCat), 0.9) << catOnly.text.toStdString();
    EXPECT_FALSE(catOnly.text.contains(QStringLiteral("fox")));
    ExpectNear(LineBox(catOnly, 0), TwoLines().inked[1]);
    // Two areas, the lower first: read in that order, one line each. An area that reaches past
    // the page is read as far as the page goes; one wholly outside adds nothing.
    const QRect past = fox.adjusted(-fox.left() - 500, 0, 0, 0);
    const QRect outside(-400, -400, 100, 100);
    const ocr::Result both = ocr::Recognize(TwoLines().image, kDpi, InAreas({cat, outside, past}));
    ASSERT_EQ(both.error, QString());
    const QStringList lines = both.text.split(u'\n');
    ASSERT_EQ(lines.size(), 2) << both.text.toStdString();
    EXPECT_GE(Similarity(lines[0], kCat), 0.9);
    EXPECT_GE(Similarity(lines[1], kFox), 0.9);
    // Only white paper in the area: nothing, and no failure.
    const ocr::Result blank = ocr::Recognize(TwoLines().image, kDpi, InAreas({QRect(0, 0, 150, 150), outside}));
    EXPECT_EQ(blank.error, QString());
    EXPECT_TRUE(blank.text.isEmpty());
    EXPECT_TRUE(blank.words.empty());
}

TEST(Recognize, AskewPageIsStraightenedAndBoxesComeBackToIt)
{
    NEED("JAPANESE");
    const DrawnPage page = Draw(A4(0.35), {{kFox, {250, 300}},
                                           {QStringLiteral("Pack my box with five dozen jugs"), {250, 500}},
                                           {kCat, {250, 700}}}, 4.0);
    const ocr::Result r = ocr::Recognize(page.image, kDpi, ocr::Options{});
    ASSERT_EQ(r.error, QString());
    const QStringList lines = r.text.split(u'\n');
    ASSERT_EQ(lines.size(), 3) << r.text.toStdString();
    EXPECT_GE(Similarity(lines[0], kFox), 0.9) << lines[0].toStdString();
    EXPECT_GE(Similarity(lines[2], kCat), 0.9) << lines[2].toStdString();
    // A box around a turned word is its turned box's bounding box: as tall as the turn makes it.
    const QRect found = LineBox(r, 0);
    const QRect inked = page.inked[0];
    EXPECT_NEAR(found.left(), inked.left(), 25);
    EXPECT_NEAR(found.right(), inked.right(), 25);
    EXPECT_NEAR(found.top(), inked.top(), 25);
    EXPECT_NEAR(found.bottom(), inked.bottom(), 25);
}

TEST(Recognize, VerticalColumnsReadRightToLeft)
{
    NEED("JAPANESE");
    // Two columns of characters set one under another, the first on the right.
    QImage page(1200, 1000, QImage::Format_Grayscale8);
    page.fill(255);
    QPainter painter(&page);
    QFont font(QStringLiteral("Noto Sans CJK JP"));
    font.setPixelSize(58);
    painter.setFont(font);
    const QStringList columns = kCat.split(u'。', Qt::SkipEmptyParts);
    for (int c = 0; c < columns.size(); ++c) {
        const QString column = columns[c] + u'。';
        for (int i = 0; i < column.size(); ++i)
            painter.drawText(QRect(900 - c * 120, 100 + i * 70, 70, 70), Qt::AlignCenter, column.mid(i, 1));
    }
    painter.end();
    for (const char* column : {"VERTICAL_SINGLE", "VERTICAL_MULTI"}) {
        SCOPED_TRACE(column);
        ocr::Options o;
        o.column = QString::fromLatin1(column);
        const ocr::Result r = ocr::Recognize(page, kDpi, o);
        if (r.error == ocr::MissingDataText(QStringLiteral("jpn_vert+jpn")))
            GTEST_SKIP() << "no Tesseract data for vertical Japanese";
        ASSERT_EQ(r.error, QString());
        EXPECT_GE(Similarity(Squeezed(r.text), kCat), 0.9) << r.text.toStdString();
        ASSERT_EQ(r.words.size(), 2u);
        // Tall boxes, the first column's to the right of the second's.
        EXPECT_GT(r.words[0].box.height(), 4 * r.words[0].box.width());
        EXPECT_NEAR(r.words[0].box.center().x(), 935, 20);
        EXPECT_NEAR(r.words[1].box.center().x(), 815, 20);
    }
}

TEST(Recognize, OrientationOfATurnedPage)
{
    if (!ocr::Borrow(QStringLiteral("osd")))
        GTEST_SKIP() << "no Tesseract orientation data";
    std::vector<Line> lines;
    for (int i = 0; i < 6; ++i)
        lines.push_back({i % 2 ? kCat : kFox, {200, 200 + 150 * i}});
    const DrawnPage page = Draw(A4(0.35), lines);
    EXPECT_EQ(ocr::DetectRotation(page.image, kDpi), 0);
    // Turned a quarter clockwise, it needs three more quarters clockwise to stand upright.
    EXPECT_EQ(ocr::DetectRotation(page.image.transformed(QTransform().rotate(90)), kDpi), 270);
    EXPECT_EQ(ocr::DetectRotation(page.image.transformed(QTransform().rotate(270)), kDpi), 90);
    EXPECT_EQ(ocr::DetectRotation(page.image.transformed(QTransform().rotate(180)), kDpi), 180);
    QImage white(A4(0.2), QImage::Format_Grayscale8);
    white.fill(255);
    EXPECT_EQ(ocr::DetectRotation(white, kDpi), -1);
    EXPECT_EQ(ocr::DetectRotation(QImage(), kDpi), -1);
}

TEST(Recognize, CallsFromSeveralThreadsAtOnceEachGetTheirOwnReading)
{
    NEED("ENGLISH");
    ocr::Options o = InAreas({TwoLines().inked[0].adjusted(-30, -30, 30, 30)});
    o.language = QStringLiteral("english");
    // Black-and-white pages come as one bit a pixel.
    const QImage mono = TwoLines().image.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
    std::vector<ocr::Result> results(3);
    std::vector<std::thread> threads;
    for (ocr::Result& result : results)
        threads.emplace_back([&] { result = ocr::Recognize(mono, kDpi, o); });
    for (std::thread& t : threads)
        t.join();
    for (const ocr::Result& r : results) {
        EXPECT_GE(Similarity(r.text, kFox), 0.9) << r.text.toStdString();
        ExpectNear(LineBox(r, 0), TwoLines().inked[0]);
    }
    // The instances went back to the pool, no more of them than can run at once.
    EXPECT_GE(ocr::IdleCount(), 1);
    EXPECT_LE(ocr::IdleCount(), 3 * QThread::idealThreadCount());
}

TEST(Recognize, RefusalsComeBackAsSentencesAndOddPicturesReadAsNothing)
{
    ocr::Options bad;
    bad.column = QStringLiteral("DIAGONAL");
    // An unknown word is named whether or not any data is installed.
    EXPECT_TRUE(ocr::Recognize(TwoLines().image, kDpi, bad).error.startsWith(QStringLiteral("OCRの段組は")));
    EXPECT_FALSE(ocr::Available(QStringLiteral("KLINGON")));
    NEED("JAPANESE");
    EXPECT_EQ(ocr::Recognize(QImage(), kDpi, ocr::Options{}).error, ocr::NoPictureText());
    const ocr::Result huge = ocr::Recognize(QImage(40000, 1, QImage::Format_Grayscale8), kDpi, ocr::Options{});
    EXPECT_EQ(huge.error, ocr::TooLargeText());
    EXPECT_TRUE(huge.text.isEmpty());
    // A resolution no page has is read as the nearest believable one, not refused.
    EXPECT_EQ(ocr::Recognize(TwoLines().image, 0, InAreas({QRect(0, 0, 50, 50)})).error, QString());
    // Pictures with nothing to read in them read as nothing.
    QImage dot(1, 1, QImage::Format_Grayscale8);
    dot.fill(0);
    QImage strip(1, 5000, QImage::Format_Mono);
    strip.fill(1);
    QImage black(400, 300, QImage::Format_RGB32);
    black.fill(Qt::black);
    ocr::Options strong;
    strong.noiseReduction = QStringLiteral("STRONG");
    for (const QImage& odd : {dot, strip, black}) {
        const ocr::Result r = ocr::Recognize(odd, kDpi, strong);
        EXPECT_EQ(r.error, QString());
        EXPECT_TRUE(r.words.empty());
        EXPECT_EQ(ocr::DetectRotation(odd, kDpi), -1);
    }
}

TEST(Recognize, MissingLanguageDataIsSaidPlainly)
{
    QTemporaryDir empty;
    ASSERT_TRUE(empty.isValid());
    const QByteArray before = qgetenv("TESSDATA_PREFIX");
    const bool had = qEnvironmentVariableIsSet("TESSDATA_PREFIX");
    qputenv("TESSDATA_PREFIX", empty.path().toLocal8Bit() + '/');
    EXPECT_FALSE(ocr::Available(QStringLiteral("JAPANESE")));
    const ocr::Result r = ocr::Recognize(TwoLines().image, kDpi, ocr::Options{});
    ocr::Options vertical;
    vertical.column = QStringLiteral("VERTICAL_SINGLE");
    const ocr::Result v = ocr::Recognize(TwoLines().image, kDpi, vertical);
    const int turn = ocr::DetectRotation(TwoLines().image, kDpi);
    if (had)
        qputenv("TESSDATA_PREFIX", before);
    else
        qunsetenv("TESSDATA_PREFIX");
    EXPECT_EQ(r.error, QStringLiteral("OCRに必要なTesseractの言語データがありません。(jpn)"));
    EXPECT_TRUE(r.words.empty());
    EXPECT_EQ(v.error, QStringLiteral("OCRに必要なTesseractの言語データがありません。(jpn_vert, jpn)"));
    EXPECT_EQ(turn, -1);
}
