// Files made to hurt a reader, each aimed at one limit: the refusal must come from the check
// meant for it, before any allocation taken from a claimed size.
#include "common/TestFiles.h"
#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/Lh5.h"
#include "engine/Model.h"
#include "engine/PageRender.h"
#include "engine/Tlv.h"
#include "engine/XdwBuilder.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace xdwtest;

namespace {

// The code and reason of the refusal, or code 0 when the file was read.
xdw::FormatError Refusal(const QByteArray& vFile)
{
    try {
        const xdw::Model model(vFile);
    } catch (const xdw::FormatError& e) {
        return e;
    }
    return {0, {}};
}

QByteArray Plain(const QByteArray& vRecords)
{
    return File(vRecords, Options(7, false));
}

QByteArray Page(int vDepth)
{
    return Record(vDepth, 0x1301, Tlv(0x85, Numbers({21000, 29700})));
}

} // namespace

TEST(Hostile, CompressedSizesAreCheckedBeforeAnythingIsDecoded)
{
    const QByteArray stream = Lh5Literal(QByteArray(1000, 'a'));
    EXPECT_EQ(lh5::Expand(stream, 1000), QByteArray(1000, 'a'));
    // A claim beyond the ratio, beyond the cap, negative; a stream that ends early; and one that
    // would give more than it promised is cut at the promise.
    for (qint64 claim : {lh5::MaxRatio * stream.size() + lh5::RatioSlack + 1, lh5::MaxExpanded + 1, qint64(-1), qint64(5000)})
        EXPECT_THROW(lh5::Expand(stream, claim), xdw::FormatError) << claim;
    EXPECT_THROW(lh5::Expand(stream.first(stream.size() / 2), 1000), xdw::FormatError);
    EXPECT_EQ(lh5::Expand(stream, 10), QByteArray(10, 'a'));
    // A block of zero codes is no block.
    EXPECT_THROW(lh5::Expand(QByteArray(16, '\0'), 100), xdw::FormatError);
}

TEST(Hostile, RecordTreesThatCannotBeATreeAreRefused)
{
    const QByteArray root = Record(0, 0xC013, {});
    const std::vector<std::pair<const char*, QByteArray>> cases = {
        {"skips a level", root + Record(2, 0x1301, {})},
        {"two roots", root + Record(0, 0xC013, {})},
        {"root of the wrong kind", Record(0, 0xC014, {})},
        {"no records", QByteArray()},
        {"page of no width", root + Record(1, 0x1303, {}) + Record(2, 0x1301, Tlv(0x85, Numbers({0, 29700})))},
        {"page without a size", root + Record(1, 0x1303, {}) + Record(2, 0x1301, {})},
        {"page ten metres and more", root + Record(1, 0x1303, {}) + Record(2, 0x1301, Tlv(0x85, Numbers({1000001, 5})))},
        {"declarations not in fives", root + Record(1, 0x1303, LongTlv(51, Numbers({2001, 2})))},
        {"reference to an entry that is not there", root + Record(1, 0x1303, LongTlv(51, Tlv(0x81, Int(0)) + Tlv(0x82, Int(10)), 0xC0))},
        {"rotation that is no quarter turn", root + Record(1, 0x1303, {}) + Page(2) + Record(3, 0x1302, {})
                                                 + Record(4, 0x8011, LongTlv(61, Numbers({45})))},
    };
    for (const auto& [what, records] : cases) {
        const xdw::FormatError e = Refusal(Plain(records));
        EXPECT_EQ(e.code, XdwResult::BadFormat) << what;
        EXPECT_FALSE(e.reason.isEmpty()) << what;
    }
    // Nesting is refused past its limit without recursion: a thousand levels cost one check.
    QByteArray deep = root;
    for (int d = 1; d < 1000; ++d)
        deep += Record(d, 0x1303, {});
    EXPECT_EQ(Refusal(Plain(deep)).code, XdwResult::BadFormat);
}

TEST(Hostile, ContainerDamageIsRefusedWhereverItFalls)
{
    const QByteArray good = Document({PageSpec{}});
    ASSERT_EQ(Refusal(good).code, 0);
    auto with = [&](qsizetype vAt, char vByte) {
        QByteArray b = good;
        b[vAt < 0 ? b.size() + vAt : vAt] = vByte;
        return b;
    };
    EXPECT_EQ(Refusal(with(4, 0x09)).code, 0);      // another generation still reads
    EXPECT_EQ(Refusal(with(9, 0x15)).code, XdwResult::BadFormat);   // unknown root kind
    EXPECT_EQ(Refusal(with(-4, 0x7F)).code, XdwResult::BadFormat);  // trailer longer than it is
    EXPECT_EQ(Refusal(with(-1, 0x40)).code, XdwResult::BadFormat);  // trailer length beyond the cap
    EXPECT_EQ(Refusal(good.first(good.size() - 1) + 'x').code, XdwResult::BadFormat);
    // Entry offsets past the properties block, and entries that are not entries.
    FileOptions entries = Options(7, true);
    entries.entries.push_back(QByteArray("body"));
    QByteArray file = Document({PageSpec{}}, entries);
    ASSERT_EQ(Refusal(file).code, 0);
    const qsizetype table = file.lastIndexOf(QByteArray::fromHex("8104"));   // the trailer's table
    ASSERT_GT(table, 0);
    file[table + 2] = char(0xF0);
    EXPECT_EQ(Refusal(file).code, XdwResult::BadFormat);
    // Integers of more than eight bytes never reach arithmetic.
    EXPECT_THROW(xdw::Integer(QByteArray(9, '\x01')), xdw::FormatError);
    EXPECT_EQ(xdw::Integer(QByteArray::fromHex("00C013")), 0xC013);
    EXPECT_EQ(xdw::Integer(QByteArray::fromHex("FF")), -1);
}

TEST(Hostile, PageWithADrawingOfAnUnknownKindCountsButDoesNotDraw)
{
    PageSpec page;
    page.content = DrawingFields(9, QByteArray(64, 'x'), 21000, 29700, false);
    const QByteArray file = Document({page, PageSpec{}});
    const xdw::Model model(file);
    ASSERT_EQ(model.Pages().size(), 2u);
    try {
        (void)xdw::RenderPage(model, 0, 50, true);
        FAIL() << "an unknown page image was drawn";
    } catch (const xdw::FormatError& e) {
        EXPECT_EQ(e.code, XdwResult::NewerVersion);
        EXPECT_TRUE(e.reason.contains(QStringLiteral("unsupported page image")));
    }
    EXPECT_EQ(xdw::RenderPage(model, 1, 50, true).width(), 413);
    // A drawing that names JPEG but holds something else is refused, not decoded.
    page.content = DrawingFields(5, QByteArray(64, 'x'), 21000, 29700, true);
    EXPECT_THROW((void)xdw::RenderPage(xdw::Model(Document({page})), 0, 50, true), xdw::FormatError);
}

TEST(Hostile, FilesCutAtEveryLengthOpenAsAnEarlierSaveOrAreRefused)
{
    const QString dir = testfiles::SharedTestData(QStringLiteral("xdw"));
    if (dir.isEmpty())
        GTEST_SKIP() << "no shared test data beside the checkout";
    for (const QString& name : QDir(dir).entryList({QStringLiteral("*.xdw"), QStringLiteral("*.xbd")})) {
        const QByteArray whole = testfiles::ReadBytes(dir + u'/' + name);
        int opened = 0;
        for (qsizetype n = 0; n < whole.size(); ++n) {
            const xdw::FormatError e = Refusal(whole.first(n));
            if (e.code == 0)
                ++opened;
            else
                EXPECT_TRUE(e.code == XdwResult::BadFormat || e.code == XdwResult::NewerVersion) << n;
        }
        // A file cut where an earlier save ended is that save, whole: the three-save binder has
        // two such places (the first an empty binder), the one-save documents none.
        EXPECT_EQ(opened, name.endsWith(QStringLiteral(".xbd")) ? 2 : 0) << name.toStdString();
    }
}
