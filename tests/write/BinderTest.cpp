// A binder's documents put in, named, taken out and removed, read back after a save each time.
#include "document/XdwApi.h"
#include "engine/XdwBuilder.h"
#include "engine/write/Binder.h"
#include "engine/write/Edit.h"
#include "engine/write/Navigate.h"
#include "write/WriteSupport.h"

#include <gtest/gtest.h>

using namespace xdw;
using writetest::CodeOf;
using writetest::Reread;

namespace {

EditableFile Pages(int vCount)
{
    std::vector<xdwtest::PageSpec> pages(static_cast<size_t>(vCount));
    return LoadEditable(xdwtest::Document(pages));
}

QStringList Names(const EditableFile& vBinder)
{
    QStringList names;
    const Model model = Reread(vBinder);
    for (const DocumentEntry& d : model.Documents())
        names.append(d.name + u':' + QString::number(d.pages));
    return names;
}

} // namespace

TEST(Binder, DocumentsGoInWhereTheyAreAskedWithTheirNamesAndIds)
{
    EditableFile binder = NewBinder();
    EXPECT_EQ(DocumentCount(binder), 0);
    EXPECT_TRUE(Reread(binder).Documents().empty());
    InsertDocument(binder, 1, Pages(1), QStringLiteral("一"));
    InsertDocument(binder, 1, Pages(2), QStringLiteral("two"));
    InsertDocument(binder, 3, Pages(3), QStringLiteral("three"));
    EXPECT_EQ(Names(binder), (QStringList{"two:2", "一:1", "three:3"}));
    EXPECT_EQ(DocumentName(binder, 2), QStringLiteral("一"));
    EXPECT_EQ(Reread(binder).Pages().size(), 6u);

    std::set<qint64> ids;
    for (Node* document : edit::Documents(binder.root))
        ids.insert(edit::NumbersOf(document->Find(edit::AttrId)).at(0));
    EXPECT_EQ(ids, (std::set<qint64>{1, 2, 3}));

    EXPECT_EQ(CodeOf([&] { InsertDocument(binder, 0, Pages(1), {}); }), XdwResult::InvalidArg);
    EXPECT_EQ(CodeOf([&] { InsertDocument(binder, 5, Pages(1), {}); }), XdwResult::InvalidArg);
    EXPECT_EQ(CodeOf([&] { InsertDocument(binder, 1, NewBinder(), {}); }), XdwResult::InvalidArg);
    EXPECT_EQ(DocumentCount(binder), 3);
}

TEST(Binder, SampleBinderGivesUpAndLosesItsDocuments)
{
    SAMPLE_OR_SKIP(bytes, "binder-gen7.xbd");
    EditableFile binder = LoadEditable(bytes);
    ASSERT_EQ(DocumentCount(binder), 2);
    EXPECT_EQ(DocumentName(binder, 1), QStringLiteral("test_data8-2"));

    const EditableFile out = ExtractDocument(binder, 2);
    EXPECT_EQ(out.rootKind, KindDocument);
    EXPECT_EQ(out.root.Find(edit::AttrName), nullptr);
    const Model document = Reread(out);
    ASSERT_EQ(document.Pages().size(), 1u);
    EXPECT_EQ(document.Pages()[0].placements.at(1).text, QStringLiteral("Lorem ipsum. 吾輩は猫である。"));

    DeleteDocument(binder, 1);
    InsertDocument(binder, 2, out, QStringLiteral("copy"));
    EXPECT_EQ(Names(binder), (QStringList{"test_data8-2:1", "copy:1"}));
}

TEST(Binder, BadPositionsAndFilesThatAreNoBinderAreRefused)
{
    EditableFile binder = NewBinder(10);
    InsertDocument(binder, 1, Pages(1), QStringLiteral("a"));
    EXPECT_EQ(CodeOf([&] { (void)DocumentName(binder, 2); }), XdwResult::InvalidArg);
    EXPECT_EQ(CodeOf([&] { (void)ExtractDocument(binder, 0); }), XdwResult::InvalidArg);
    EXPECT_EQ(CodeOf([&] { DeleteDocument(binder, 2); }), XdwResult::InvalidArg);
    EXPECT_EQ(CodeOf([&] { (void)DocumentCount(Pages(2)); }), XdwResult::InvalidArg);
    DeleteDocument(binder, 1);
    EXPECT_EQ(Reread(binder).File().Generation(), 10);
}
