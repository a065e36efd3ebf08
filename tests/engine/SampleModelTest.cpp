// The container and record readers on the vendor's own files.
#include "common/TestFiles.h"
#include "engine/Model.h"

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
