// Page edits, each checked on the file read back after a save: which pages end up where, the
// ids and counts a later edit relies on, the entries carried along, and the geometry of a turn.
#include "document/XdwApi.h"
#include "engine/Records.h"
#include "engine/XdwBuilder.h"
#include "engine/write/Edit.h"
#include "engine/write/Emit.h"
#include "engine/write/Navigate.h"
#include "write/WriteSupport.h"

#include <gtest/gtest.h>

using namespace xdw;
using writetest::CodeOf;
using writetest::Labelled;
using writetest::Reread;

namespace {

EditableFile Labels(std::initializer_list<const char*> vTexts, const xdwtest::FileOptions& vOptions = {})
{
    std::vector<xdwtest::PageSpec> pages;
    for (const char* text : vTexts)
        pages.push_back(Labelled(QString::fromUtf8(text)));
    return LoadEditable(xdwtest::Document(pages, vOptions));
}

// The first annotation text of every page, as a reader finds it after a save.
QStringList Texts(const EditableFile& vFile)
{
    QStringList texts;
    const Model model = Reread(vFile);
    for (const Page& page : model.Pages())
        texts.append(page.Annotations() > 0 ? page.placements.back().text : QString());
    return texts;
}

// Page ids in order and the page list's count of them, for a standalone document.
std::pair<std::vector<qint64>, qint64> Ids(EditableFile& vFile)
{
    std::vector<qint64> ids;
    for (const edit::PageSlot& slot : edit::Pages(vFile.root))
        ids.push_back(edit::NumbersOf(slot.Page().Find(edit::AttrId)).at(0));
    const Node& list = edit::PageList(vFile.root);
    return {ids, edit::NumbersOf(list.Named(u"lastmid")).at(0)};
}

} // namespace

TEST(Edit, InsertedPagesLandAtThePositionAndGetFreshIds)
{
    const EditableFile source = Labels({"a", "b"});
    for (const auto& [position, expected] : std::vector<std::pair<int, QStringList>>{
             {1, {"a", "b", "1", "2", "3"}}, {2, {"1", "a", "b", "2", "3"}}, {4, {"1", "2", "3", "a", "b"}}}) {
        EditableFile target = Labels({"1", "2", "3"});
        InsertPages(target, position, source);
        EXPECT_EQ(Texts(target), expected) << position;
        const auto [ids, last] = Ids(target);
        EXPECT_EQ(last, 5);
        EXPECT_EQ(std::set<qint64>(ids.begin(), ids.end()).size(), 5u);
    }
    EditableFile target = Labels({"1", "2", "3"});
    EXPECT_EQ(CodeOf([&] { InsertPages(target, 0, source); }), XdwResult::InvalidArg);
    EXPECT_EQ(CodeOf([&] { InsertPages(target, 5, source); }), XdwResult::InvalidArg);
    EXPECT_EQ(PageCount(target), 3);
}

TEST(Edit, AFileInsertedIntoItselfDoublesItsPages)
{
    EditableFile file = Labels({"1", "2"});
    InsertPages(file, 2, file);
    EXPECT_EQ(Texts(file), (QStringList{"1", "1", "2", "2"}));
    EXPECT_EQ(Ids(file).first, (std::vector<qint64>{1, 3, 4, 2}));
}

TEST(Edit, EntriesOfInsertedPagesAreCopiedAndTheirReferencesRenumbered)
{
    xdwtest::FileOptions inEntries;
    inEntries.contentInEntries = true;
    auto withContent = [](char vFill) {
        xdwtest::PageSpec page = Labelled(QString(QLatin1Char(vFill)));
        page.content = xdwtest::DrawingFields(4, QByteArray(200, vFill), 21000, 29700, true);
        return page;
    };
    EditableFile target = LoadEditable(xdwtest::Document({withContent('t')}, inEntries));
    const EditableFile source = LoadEditable(xdwtest::Document({withContent('x'), withContent('y')}, inEntries));
    InsertPages(target, 1, source);
    EXPECT_EQ(target.EntryCount(), 3);

    const Model model = Reread(target);
    ASSERT_EQ(model.Pages().size(), 3u);
    const char fills[] = {'x', 'y', 't'};
    for (size_t i = 0; i < 3; ++i)
        EXPECT_EQ(model.DrawingOf(model.Pages()[i].placements.at(0)),
                  xdwtest::DrawingFields(4, QByteArray(200, fills[i]), 21000, 29700, true));
}

TEST(Edit, DeleteTakesThePageAndRefusesBadNumbersAndTheLastPage)
{
    EditableFile file = Labels({"1", "2", "3"});
    DeletePage(file, 2);
    EXPECT_EQ(Texts(file), (QStringList{"1", "3"}));
    EXPECT_EQ(CodeOf([&] { DeletePage(file, 0); }), XdwResult::InvalidArg);
    EXPECT_EQ(CodeOf([&] { DeletePage(file, 3); }), XdwResult::InvalidArg);
    DeletePage(file, 1);
    EXPECT_EQ(CodeOf([&] { DeletePage(file, 1); }), XdwResult::InvalidOperation);
    EXPECT_EQ(Texts(file), QStringList{"3"});
}

TEST(Edit, ExtractedPageIsADocumentOfItsOwn)
{
    SAMPLE_OR_SKIP(ten, "annotated-10-pages-gen7.xdw");
    const EditableFile source = LoadEditable(ten);
    EditableFile page = ExtractPage(source, 7);
    EXPECT_EQ(page.generation, 7);
    EXPECT_EQ(Texts(page), QStringList{"7"});
    EXPECT_EQ(Ids(page), std::make_pair(std::vector<qint64>{1}, qint64(1)));
    EXPECT_EQ(CodeOf([&] { (void)ExtractPage(source, 11); }), XdwResult::InvalidArg);
}

TEST(Edit, TurningAPageMovesItsBoxesAndTurnsTheirDrawings)
{
    xdwtest::PageSpec original = Labelled(QStringLiteral("t"));
    original.content = xdwtest::DrawingFields(4, QByteArray(64, 'c'), 21000, 29700, true);
    struct Expected {
        int degree;
        qint64 width, height, x, y, w, h;
    };
    // The annotation sits at (1000, 2000), 3000 wide and 500 high, on an A4 portrait page.
    for (const Expected& e : {Expected{90, 29700, 21000, 27200, 1000, 500, 3000},
                              Expected{180, 21000, 29700, 17000, 27200, 3000, 500},
                              Expected{270, 29700, 21000, 2000, 17000, 500, 3000}}) {
        EditableFile file = LoadEditable(xdwtest::Document({original}));
        RotatePage(file, 1, e.degree);
        const Model model = Reread(file);
        const Page& page = model.Pages().at(0);
        EXPECT_EQ(page.width, e.width);
        EXPECT_EQ(page.height, e.height);
        const Placement& content = page.placements.at(0);
        EXPECT_EQ(std::vector<qint64>({content.x, content.y, content.width, content.height}),
                  std::vector<qint64>({0, 0, e.width, e.height}));
        EXPECT_EQ(content.rotation, e.degree);
        const Placement& note = page.placements.at(1);
        EXPECT_EQ(std::vector<qint64>({note.x, note.y, note.width, note.height}),
                  std::vector<qint64>({e.x, e.y, e.w, e.h})) << e.degree;
        EXPECT_EQ(note.rotation, e.degree);
    }
}

TEST(Edit, FourQuarterTurnsGiveBackThePageRecordsAsTheyWere)
{
    SAMPLE_OR_SKIP(wide, "text-annotation-gen10.xdw");
    EditableFile file = LoadEditable(wide);
    const QByteArray before = WriteRecords(file.root);
    RotatePage(file, 1, 90);
    RotatePage(file, 1, 270);
    EXPECT_EQ(WriteRecords(file.root), before);
    for (int i = 0; i < 4; ++i)
        RotatePage(file, 1, 90);
    EXPECT_EQ(WriteRecords(file.root), before);
    for (int degree : {0, 45, 360, -90})
        EXPECT_EQ(CodeOf([&] { RotatePage(file, 1, degree); }), XdwResult::InvalidArg) << degree;
    EXPECT_EQ(CodeOf([&] { RotatePage(file, 2, 90); }), XdwResult::InvalidArg);
}

TEST(Edit, MergeTakesEveryPageOfEveryFileInOrder)
{
    const EditableFile a = Labels({"1", "2"});
    const EditableFile b = LoadEditable(xdwtest::File(xdwtest::BinderRecords({{Labelled("3")}, {Labelled("4")}}),
                                                      xdwtest::Options(7, true, KindBinder)));
    const EditableFile c = Labels({"5"}, xdwtest::Options(10, true));
    const EditableFile merged = MergeFiles({&a, &b, &c});
    EXPECT_EQ(merged.rootKind, KindDocument);
    EXPECT_EQ(merged.generation, 7);
    EXPECT_EQ(Texts(merged), (QStringList{"1", "2", "3", "4", "5"}));
    EXPECT_EQ(CodeOf([] { (void)MergeFiles({}); }), XdwResult::InvalidArg);
}

TEST(Edit, PagesOfABinderCountAcrossItsDocuments)
{
    EditableFile binder = LoadEditable(xdwtest::File(
        xdwtest::BinderRecords({{Labelled("1"), Labelled("2")}, {Labelled("3")}}), xdwtest::Options(7, true, KindBinder)));
    InsertPages(binder, 3, Labels({"x"}));
    InsertPages(binder, 5, Labels({"y"}));
    DeletePage(binder, 2);
    RotatePage(binder, 4, 180);
    EXPECT_EQ(Texts(binder), (QStringList{"1", "x", "3", "y"}));
    const Model model = Reread(binder);
    EXPECT_EQ(model.Documents().at(1).pages, 3);
    EXPECT_EQ(model.Pages().at(3).placements.at(0).rotation, 180);
}

TEST(Edit, HostileNumbersAreRefusedRatherThanOverflowed)
{
    using xdwtest::LongTlv, xdwtest::Numbers, xdwtest::Tlv;
    // A page list that has given out every id, and a box far beyond any page.
    const QByteArray lastmid = LongTlv(51, emit::Numbers({2001, 2, -1, 8}) + emit::Item(QByteArray("lastmid\0", 8)));
    const QByteArray records = xdwtest::Record(0, 0xC013, {})
        + xdwtest::Record(1, 0x1303, LongTlv(2001, Numbers({0x7FFFFFFF})) + lastmid)
        + xdwtest::Record(2, 0x1301, Tlv(0x85, Numbers({21000, 29700})) + Tlv(0x83, Numbers({1})))
        + xdwtest::Record(3, 0x1302, LongTlv(52, Numbers({qint64(1) << 62, 0})))
        + xdwtest::Record(4, 0x8011, Tlv(0x85, Numbers({10, 10})));
    EditableFile file = LoadEditable(xdwtest::File(records));
    EXPECT_EQ(CodeOf([&] { RotatePage(file, 1, 90); }), XdwResult::BadFormat);
    EXPECT_EQ(CodeOf([&] { InsertPages(file, 1, file); }), XdwResult::BadFormat);

    // Nesting a reader would refuse is not written.
    Node deep = file.root;
    for (int i = 0; i < 40; ++i)
        deep = Node{0x1302, {}, {}, {deep}};
    file.root.children.push_back(deep);
    EXPECT_EQ(CodeOf([&] { (void)SavedBytes(file); }), XdwResult::InvalidArg);
}
