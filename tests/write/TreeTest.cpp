// The editable record tree: read from a file and written back, it must give the records the file
// had, and what it writes must be spelled as the vendor's files spell it.
#include "engine/Container.h"
#include "engine/Records.h"
#include "engine/XdwBuilder.h"
#include "engine/write/Emit.h"
#include "engine/write/Tree.h"
#include "write/WriteSupport.h"

#include <gtest/gtest.h>

using namespace xdw;

namespace {

// A record as comparable text: depth, kind, each attribute but the declaration list (class,
// number, value bytes), then the names it declares.
std::vector<QString> Flatten(const std::vector<Record>& vRecords)
{
    std::vector<QString> out;
    for (const Record& r : vRecords) {
        QString line = QStringLiteral("%1 %2").arg(r.depth).arg(r.kind, 0, 16);
        for (const Attribute& a : r.attributes)
            if (a.number != 51)
                line += QStringLiteral(" %1:%2%3=%4").arg(a.tagClass).arg(a.number)
                            .arg(a.constructed ? "c" : "").arg(QString::fromLatin1(a.value.toByteArray().toHex()));
        for (const auto& [number, name] : r.names)
            line += QStringLiteral(" [%1 %2]").arg(number).arg(name);
        out.push_back(line);
    }
    return out;
}

void ExpectSameRecords(const QByteArray& vFile, const QString& vWhat)
{
    const Container container(vFile);
    const QByteArray written = WriteRecords(ReadTree(container));
    EXPECT_EQ(Flatten(ReadRecords(written, container)), Flatten(ReadRecords(container.Properties(), container)))
        << vWhat.toStdString();
}

} // namespace

TEST(Tree, EverySampleAndBuiltFileWritesBackTheRecordsItHolds)
{
    using namespace xdwtest;
    PageSpec page;
    page.content = DrawingFields(4, QByteArray(64, 'e'), 21000, 29700, true);
    page.annotations.push_back({0x8011, 100, 200, 3000, 400, QStringLiteral("注記"), {}, 90});
    FileOptions inEntries;
    inEntries.contentInEntries = true;
    ExpectSameRecords(Document({page, PageSpec{}}, inEntries), QStringLiteral("entries"));
    ExpectSameRecords(File(BinderRecords({{page}, {PageSpec{}, page}}), Options(10, false, 0xC014)),
                      QStringLiteral("binder"));
    for (const QString& name : writetest::SampleNames())
        ExpectSameRecords(writetest::Sample(name), name);
}

TEST(Tree, LongDeclarationListInAnEntryIsReadIntoTheRecord)
{
    SAMPLE_OR_SKIP(bytes, "binder-gen7.xbd");
    const Container container(bytes);
    const Node root = ReadTree(container);
    const Node& form = root.children.at(1).children.at(0).children.at(0);
    ASSERT_EQ(form.kind, 0x802Eu);
    EXPECT_EQ(form.declarations.size(), 85u);
    EXPECT_EQ(form.Find(51), nullptr);
    ASSERT_NE(form.Named(u"%207"), nullptr);
    EXPECT_EQ(NarrowText(form.Named(u"%207")->value), QStringLiteral("Lorem ipsum."));
}

TEST(Tree, RecordsAreSpelledAsTheVendorSpellsThem)
{
    Node root;
    root.kind = KindDocument;
    Node list;
    list.kind = 0x1303;
    Node page;
    page.kind = 0x1301;
    page.SetNamed(QStringLiteral("lastmid"), NamedNumbers, emit::Numbers({2}));
    page.Set(5, emit::Numbers({21000, 29700}));
    page.Set(3, emit::Numbers({1}));
    list.children.push_back(page);
    root.children.push_back(list);
    const QByteArray written = WriteRecords(root);
    const QByteArray expected = QByteArray::fromHex(
        "620880010062030 0C013"             // depth 0, document
        "620780010162021303"                // depth 1, page list
        "622E8001026202 1301"               // depth 2, page
        "9F8F5102 0102"                     // 2001 = [2]
        "8506 02 5208 02 7404"              // size [21000, 29700]
        "8302 0101"                         // id [1]
        "9F3312 0207D1 0102 01FF 0108 08"   // 2001 is "lastmid", numbers, index -1
        "6C6173746D696400");
    EXPECT_EQ(written.toHex(' '), expected.toHex(' '));
}

TEST(Tree, NamedAttributesTakeTheFirstFreeNumberAndKeepItWhenSetAgain)
{
    Node node;
    node.kind = 0x8011;
    node.declarations.push_back({2001, NamedNumbers, -1, QStringLiteral("%hidden")});
    node.attributes.push_back({2, false, 2001, emit::Numbers({0})});
    // 2002 holds a value no declaration names: it is taken all the same.
    node.attributes.push_back({2, false, 2002, emit::Numbers({7})});

    node.SetNamed(QStringLiteral("%Text"), NamedBytes, emit::NarrowText(QStringLiteral("a")));
    ASSERT_NE(node.Declared(u"%Text"), nullptr);
    EXPECT_EQ(node.Declared(u"%Text")->number, 2003u);

    node.SetNamed(QStringLiteral("%Text"), NamedBytes, emit::NarrowText(QStringLiteral("b")));
    EXPECT_EQ(node.declarations.size(), 2u);
    EXPECT_EQ(node.Named(u"%Text")->value, QByteArray("b\0", 2));

    EXPECT_TRUE(node.RemoveNamed(u"%hidden"));
    EXPECT_FALSE(node.RemoveNamed(u"%hidden"));
    EXPECT_EQ(node.Find(2001), nullptr);
    node.SetNamed(QStringLiteral("%Size"), NamedNumbers, emit::Numbers({120}));
    EXPECT_EQ(node.Declared(u"%Size")->number, 2001u);
}
