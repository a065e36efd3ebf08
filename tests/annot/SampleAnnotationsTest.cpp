// The vendor's own files: their annotations as the reader lists them, kind and box, and their
// named attributes read by property through the same table the writer uses.

#include "common/TestFiles.h"
#include "engine/Model.h"
#include "engine/Records.h"
#include "engine/write/AnnotationProperties.h"

#include <gtest/gtest.h>

namespace {

xdw::Model Open(const char* vName)
{
    return xdw::Model(testfiles::ReadBytes(testfiles::SharedTestData(QStringLiteral("xdw")) + u'/' + QLatin1String(vName)));
}

// The text records of a file as editable records, their values copied out of the file.
std::vector<xdw::Node> TextRecords(const char* vName)
{
    const xdw::Container file(xdw::MemorySource(
        testfiles::ReadBytes(testfiles::SharedTestData(QStringLiteral("xdw")) + u'/' + QLatin1String(vName))));
    std::vector<xdw::Node> out;
    for (const xdw::Record& r : xdw::ReadRecords(file.Properties(), file)) {
        if (r.kind != 0x8011)
            continue;
        xdw::Node node;
        node.kind = r.kind;
        for (const xdw::Attribute& a : r.attributes)
            node.attributes.push_back({a.tagClass, a.constructed, a.number, xdw::ValueOf(a, file).toByteArray()});
        for (const auto& [number, name] : r.names)
            node.declarations.push_back({number, xdw::NamedBytes, -1, name});
        out.push_back(std::move(node));
    }
    return out;
}

} // namespace

TEST(SampleAnnotations, KindsAndBoxesOfTheVendorsFiles)
{
    if (testfiles::SharedTestData(QStringLiteral("xdw")).isEmpty())
        GTEST_SKIP() << "no shared samples beside this checkout";
    const xdw::Model tenPages = Open("annotated-10-pages-gen7.xdw");
    ASSERT_EQ(tenPages.Pages().size(), 10u);
    for (const xdw::Page& page : tenPages.Pages()) {
        ASSERT_EQ(page.placements.size(), 1u);
        EXPECT_EQ(page.placements.front().kind, 0x8011u);
    }
    const xdw::Placement& first = tenPages.Pages().front().placements.front();
    EXPECT_EQ(first.x, 0x140E);
    EXPECT_EQ(first.y, 0x14E9);
    EXPECT_EQ(first.width, 0x23CA);
    EXPECT_EQ(first.height, 0x4638);
    const xdw::Model gen10 = Open("text-annotation-gen10.xdw");
    const std::vector<xdw::Placement>& shown = gen10.Pages().front().placements;
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].kind, 0x8045u);
    EXPECT_EQ(shown[0].x, 0x0A66);
    EXPECT_EQ(shown[0].y, 0x08F0);
    EXPECT_EQ(shown[0].width, 0x42AD);
    EXPECT_EQ(shown[0].height, 0x1966);
    EXPECT_EQ(shown[1].kind, 0x8011u);
    EXPECT_EQ(shown[1].width, 0x16F8);
    EXPECT_EQ(shown[1].height, 0x0386);
    EXPECT_EQ(shown[1].text, QStringLiteral("Lorem ipsum. 吾輩は猫である。"));
    // The binder's page form sits outside any page and is not listed.
    const xdw::Model binder = Open("binder-gen7.xbd");
    ASSERT_EQ(binder.Pages().size(), 2u);
    for (const xdw::Page& page : binder.Pages()) {
        ASSERT_EQ(page.placements.size(), 2u);
        EXPECT_EQ(page.placements[0].kind, 0x8045u);
        EXPECT_EQ(page.placements[1].kind, 0x8011u);
    }
}

TEST(SampleAnnotations, VendorsTextAttributesReadByProperty)
{
    if (testfiles::SharedTestData(QStringLiteral("xdw")).isEmpty())
        GTEST_SKIP() << "no shared samples beside this checkout";
    using xdw::annot::GetValue;
    const std::vector<xdw::Node> narrow = TextRecords("annotated-10-pages-gen7.xdw");
    ASSERT_EQ(narrow.size(), 10u);
    EXPECT_EQ(GetValue(narrow[2], u"Text"), QVariant(QStringLiteral("3")));
    EXPECT_EQ(GetValue(narrow[2], u"FontName"), QVariant(QStringLiteral("ＭＳ ゴシック")));
    EXPECT_EQ(GetValue(narrow[2], u"FontSize"), QVariant(qint64(5000)));
    EXPECT_EQ(GetValue(narrow[2], u"BackColor"), QVariant(qint64(65793)));
    EXPECT_EQ(GetValue(narrow[2], u"TextLeftMargin"), QVariant(qint64(170)));
    EXPECT_EQ(GetValue(narrow[2], u"LineSpace"), QVariant(qint64(100)));
    EXPECT_EQ(GetValue(narrow[2], u"FontBold"), QVariant(false));
    EXPECT_FALSE(xdw::annot::IsWide(narrow[2]));

    const std::vector<xdw::Node> wide = TextRecords("text-annotation-gen10.xdw");
    ASSERT_EQ(wide.size(), 1u);
    EXPECT_TRUE(xdw::annot::IsWide(wide[0]));
    EXPECT_EQ(GetValue(wide[0], u"Text"), QVariant(QStringLiteral("Lorem ipsum. 吾輩は猫である。")));
    EXPECT_EQ(GetValue(wide[0], u"FontName"), QVariant(QStringLiteral("Yu Gothic UI")));
    EXPECT_EQ(GetValue(wide[0], u"FontSize"), QVariant(qint64(120)));
    EXPECT_EQ(GetValue(wide[0], u"FontCharSet"), QVariant(qint64(128)));
}
