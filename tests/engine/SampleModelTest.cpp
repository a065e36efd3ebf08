// The container and record readers on the vendor's own files.
#include "common/TestFiles.h"
#include "engine/Model.h"
#include "engine/PageRender.h"

#include <QDir>

#include <gtest/gtest.h>

namespace {

QByteArray Sample(const char* vName)
{
    const QString dir = testfiles::SharedTestData(QStringLiteral("xdw"));
    if (dir.isEmpty())
        return {};
    return testfiles::ReadBytes(dir + u'/' + QLatin1StringView(vName));
}

#define SAMPLE_OR_SKIP(var, name)                                   \
    const QByteArray var = Sample(name);                            \
    if (var.isEmpty())                                              \
        GTEST_SKIP() << "no shared test data beside the checkout"

} // namespace

TEST(SampleModel, TenAnnotatedPagesCarryTheirNumbersInOrder)
{
    SAMPLE_OR_SKIP(bytes, "annotated-10-pages-gen7.xdw");
    const xdw::Model model(bytes);
    EXPECT_EQ(model.File().Generation(), 7);
    EXPECT_EQ(model.File().Properties().size(), 13527);
    ASSERT_EQ(model.Pages().size(), 10u);
    for (int i = 0; i < 10; ++i) {
        const xdw::Page& page = model.Pages()[static_cast<size_t>(i)];
        EXPECT_EQ(page.width, 21000);
        EXPECT_EQ(page.height, 29700);
        EXPECT_FALSE(page.HasContent());
        ASSERT_EQ(page.Annotations(), 1);
        EXPECT_EQ(page.placements[0].kind, xdw::KindTextAnnotation);
        EXPECT_EQ(page.placements[0].text, QString::number(i + 1));
        EXPECT_FALSE(model.DrawingOf(page.placements[0]).isEmpty());
    }
}

TEST(SampleModel, BlankPageHasItsContentAt600Dpi)
{
    SAMPLE_OR_SKIP(bytes, "blank-1-page-gen7.xdw");
    const xdw::Model model(bytes);
    ASSERT_EQ(model.Pages().size(), 1u);
    const xdw::Page& page = model.Pages()[0];
    EXPECT_TRUE(page.HasContent());
    EXPECT_EQ(page.Annotations(), 0);
    EXPECT_EQ(page.placements[0].dpi, 600);
}

TEST(SampleModel, Generation10TextAnnotationReadsItsWideText)
{
    SAMPLE_OR_SKIP(bytes, "text-annotation-gen10.xdw");
    const xdw::Model model(bytes);
    EXPECT_EQ(model.File().Generation(), 10);
    ASSERT_EQ(model.Pages().size(), 1u);
    const xdw::Page& page = model.Pages()[0];
    ASSERT_EQ(page.Annotations(), 2);
    EXPECT_EQ(page.placements[0].kind, 0x8045u);
    // The frame sits at (26.62, 22.88) mm, 170.69 x 65.02 mm.
    EXPECT_EQ(page.placements[0].x, 2662);
    EXPECT_EQ(page.placements[0].y, 2288);
    EXPECT_EQ(page.placements[0].width, 17069);
    EXPECT_EQ(page.placements[0].height, 6502);
    EXPECT_EQ(page.placements[1].text, QStringLiteral("Lorem ipsum. 吾輩は猫である。"));
}

TEST(SampleModel, BinderCountsPagesAcrossItsDocuments)
{
    SAMPLE_OR_SKIP(bytes, "binder-gen7.xbd");
    const xdw::Model model(bytes);
    EXPECT_TRUE(model.IsBinder());
    EXPECT_EQ(model.File().EntryCount(), 1);
    ASSERT_EQ(model.Documents().size(), 2u);
    for (const xdw::DocumentEntry& d : model.Documents()) {
        EXPECT_EQ(d.name, QStringLiteral("test_data8-2"));
        EXPECT_EQ(d.pages, 1);
    }
    ASSERT_EQ(model.Pages().size(), 2u);
    EXPECT_EQ(model.Pages()[1].document, 1);
    for (const xdw::Page& page : model.Pages()) {
        ASSERT_EQ(page.Annotations(), 2);
        EXPECT_EQ(page.placements[1].text, QStringLiteral("Lorem ipsum. 吾輩は猫である。"));
    }
}

namespace {

// Dark pixels inside and outside a rectangle of the picture.
std::pair<int, int> DarkInsideAndOutside(const QImage& vPicture, const QRect& vBox)
{
    int inside = 0, outside = 0;
    for (int y = 0; y < vPicture.height(); y += 2)
        for (int x = 0; x < vPicture.width(); x += 2)
            if (qGray(vPicture.pixel(x, y)) < 100)
                ++(vBox.contains(x, y) ? inside : outside);
    return {inside, outside};
}

QRect BoxAt150(const xdw::Placement& vPlacement)
{
    auto px = [](qint64 v) { return static_cast<int>(v * 150 / 2540); };
    return QRect(px(vPlacement.x), px(vPlacement.y), px(vPlacement.width), px(vPlacement.height));
}

} // namespace

TEST(SampleModel, AnnotatedPagesDrawTheirNumberInsideTheirBoxOnly)
{
    SAMPLE_OR_SKIP(bytes, "annotated-10-pages-gen7.xdw");
    const xdw::Model model(bytes);
    for (int i : {0, 9}) {
        const QImage page = xdw::RenderPage(model, i, 150, true);
        ASSERT_EQ(page.size(), QSize(1240, 1754));
        const auto [inside, outside] = DarkInsideAndOutside(page, BoxAt150(model.Pages()[size_t(i)].placements[0]));
        EXPECT_GT(inside, 1000) << "page " << i + 1;
        EXPECT_EQ(outside, 0) << "page " << i + 1;
        EXPECT_EQ(xdw::PageText(model, i), QString::number(i + 1));
    }
}

TEST(SampleModel, FrameAndTextOfTheGeneration10SampleLandWhereTheyAreStored)
{
    SAMPLE_OR_SKIP(bytes, "text-annotation-gen10.xdw");
    const xdw::Model model(bytes);
    const QImage page = xdw::RenderPage(model, 0, 150, true);
    ASSERT_EQ(page.size(), QSize(1240, 1754));
    const QRect frame = BoxAt150(model.Pages()[0].placements[0]);
    // The frame's band is the teal brush; its hole, and the page outside, stay white.
    const QRgb band = page.pixel(frame.left() + 6, frame.center().y());
    EXPECT_NEAR(qRed(band), 0x96, 24);
    EXPECT_NEAR(qGreen(band), 0xCB, 24);
    EXPECT_NEAR(qBlue(band), 0xC9, 24);
    EXPECT_EQ(page.pixel(frame.left() - 20, frame.center().y()), qRgb(255, 255, 255));
    const auto [inside, outside] = DarkInsideAndOutside(page, BoxAt150(model.Pages()[0].placements[1]));
    EXPECT_GT(inside, 50);
    EXPECT_EQ(outside, 0);
    EXPECT_EQ(xdw::PageText(model, 0), QStringLiteral("Lorem ipsum. 吾輩は猫である。"));
}

TEST(SampleModel, EveryPageOfEverySampleDrawsAtA4Size)
{
    const QString dir = testfiles::SharedTestData(QStringLiteral("xdw"));
    if (dir.isEmpty())
        GTEST_SKIP() << "no shared test data beside the checkout";
    for (const QString& name : QDir(dir).entryList({QStringLiteral("*.xdw"), QStringLiteral("*.xbd")})) {
        const xdw::Model model(testfiles::ReadBytes(dir + u'/' + name));
        for (int i = 0; i < static_cast<int>(model.Pages().size()); ++i) {
            EXPECT_EQ(xdw::RenderPage(model, i, 150, true).size(), QSize(1240, 1754)) << name.toStdString();
            EXPECT_EQ(xdw::RenderPage(model, i, 10, false).format(), QImage::Format_Mono);
        }
    }
}

TEST(SampleModel, StoredThumbnailIsTheWhite104By146Picture)
{
    SAMPLE_OR_SKIP(bytes, "blank-1-page-gen7.xdw");
    const QImage thumbnail = xdw::PageThumbnail(xdw::Model(bytes), 0);
    ASSERT_EQ(thumbnail.size(), QSize(104, 146));
    EXPECT_EQ(thumbnail.pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_EQ(thumbnail.pixel(103, 145), qRgb(255, 255, 255));
}

TEST(SampleModel, WordsStandInsideTheAnnotationsThatDrawThem)
{
    SAMPLE_OR_SKIP(ten, "annotated-10-pages-gen7.xdw");
    const xdw::Model model(ten);
    const std::vector<xdw::PlacedText> words = xdw::PageWords(model, 2);
    ASSERT_EQ(words.size(), 1u);
    EXPECT_EQ(words[0].text, QStringLiteral("3"));
    const xdw::Placement& note = model.Pages()[2].placements[0];
    const QRectF box(note.x, note.y, note.width, note.height);
    // Placed by the drawing, from the text's own start (20, 20 of the window) inside the box: the
    // 176 mm figure reaches past the box's foot, as it does when drawn.
    EXPECT_TRUE(box.contains(words[0].box.topLeft())) << words[0].box.x() << "," << words[0].box.y();
    EXPECT_NEAR(words[0].box.left() - box.left(), 20 * 2540 / 300.0, 30);
    EXPECT_GT(words[0].box.height(), 17000);

    SAMPLE_OR_SKIP(gen10, "text-annotation-gen10.xdw");
    const xdw::Model shaped(gen10);
    const std::vector<xdw::PlacedText> line = xdw::PageWords(shaped, 0);
    ASSERT_EQ(line.size(), 1u);
    EXPECT_EQ(line[0].text, QStringLiteral("Lorem ipsum. 吾輩は猫である。"));
    // Inside the teal frame at (26.62, 22.88) mm, 170.69 x 65.02 mm, and within the text
    // annotation's own box, one 12 pt line high.
    EXPECT_TRUE(QRectF(2662, 2288, 17069, 6502).contains(line[0].box));
    const xdw::Placement& text = shaped.Pages()[0].placements[1];
    EXPECT_TRUE(QRectF(text.x, text.y, text.width, text.height).contains(line[0].box));
    EXPECT_NEAR(line[0].box.height(), 12 * 2540 / 72.0 * 1.09, 60);
}
