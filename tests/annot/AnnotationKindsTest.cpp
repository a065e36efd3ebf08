// Each kind AddAnnotation makes, put on a page, saved as records and read back through the
// reader: its kind and box as the reader sees them, its drawing painting inside the box and
// nowhere else, and its text where it has one.

#include "TreeBytes.h"

#include "common/TestFiles.h"
#include "engine/FormatError.h"
#include "engine/Tlv.h"
#include "engine/XdwEngine.h"
#include "engine/write/Annotations.h"
#include "engine/write/NodeAccess.h"

#include <QBuffer>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace xdw::annot;

namespace {

constexpr int Dpi = 100;

QByteArray Bmp(const QImage& vImage)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    vImage.save(&buffer, "BMP");
    return bytes;
}

struct Case {
    const char* name;
    AnnotationRequest request;
    quint32 kind;
};

std::vector<Case> SevenKinds()
{
    QImage picture(30, 20, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    std::vector<Case> cases;
    auto add = [&](const char* vName, AddType vType, quint32 vKind) -> AnnotationRequest& {
        AnnotationRequest s;
        s.type = vType;
        s.x = 3000;
        s.y = 4000;
        cases.push_back({vName, s, vKind});
        return cases.back().request;
    };
    add("text", AddType::Text, 0x8011).text = QStringLiteral("Hello 世界");
    AnnotationRequest& rect = add("rectangle", AddType::Rectangle, 0x803D);
    rect.width = 5000;
    rect.height = 3000;
    AnnotationRequest& link = add("link", AddType::Link, 0xC02F);
    link.text = QStringLiteral("Example");
    link.url = QStringLiteral("https://example.org/");
    add("bitmap", AddType::Bitmap, 0x803F).bitmap = Bmp(picture);
    AnnotationRequest& line = add("line", AddType::Line, 0x803C);
    line.horVec = 6000;
    line.verVec = -2000;
    add("date stamp", AddType::DateStamp, 0x8033).date = QDate(2026, 11, 25);
    AnnotationRequest& note = add("sticky note", AddType::Fusen, 0x801A);
    note.text = QStringLiteral("memo");
    note.width = 4000;
    note.height = 2000;
    return cases;
}

} // namespace

TEST(AnnotationKinds, EachKindReadsBackWithItsBoxAndPaintsOnlyInsideIt)
{
    for (const Case& c : SevenKinds()) {
        SCOPED_TRACE(c.name);
        const xdw::Node placement = MakeAnnotation(c.request);
        const std::vector<AnnotationInfo> listed = [&] {
            xdw::Node page = annottest::BlankPage();
            page.children.push_back(placement);
            return ListAnnotations(page);
        }();
        ASSERT_EQ(listed.size(), 1u);
        const xdw::Model model(annottest::FileWith({placement}));
        ASSERT_EQ(model.Pages().size(), 1u);
        const xdw::Page& page = model.Pages().front();
        ASSERT_EQ(page.placements.size(), 1u);
        const xdw::Placement& shown = page.placements.front();
        EXPECT_EQ(shown.kind, c.kind);
        EXPECT_EQ(listed[0].kind, c.kind);
        EXPECT_EQ(shown.x, listed[0].x);
        EXPECT_EQ(shown.y, listed[0].y);
        EXPECT_EQ(shown.width, listed[0].width);
        EXPECT_EQ(shown.height, listed[0].height);
        EXPECT_GT(shown.width, 0);
        EXPECT_GT(shown.height, 0);
        if (c.request.width != 0) {   // the kinds that take a size keep it, and their position
            EXPECT_EQ(shown.x, c.request.x);
            EXPECT_EQ(shown.y, c.request.y);
            EXPECT_EQ(shown.width, c.request.width);
            EXPECT_EQ(shown.height, c.request.height);
        }
        const QImage image = xdw::RenderPage(model, 0, Dpi, true);
        EXPECT_GT(annottest::Inked(image, shown.x, shown.y, shown.width, shown.height, Dpi), 10);
        EXPECT_EQ(annottest::InkedOutside(image, shown.x, shown.y, shown.width, shown.height, Dpi), 0);
    }
}

TEST(AnnotationKinds, TextsComeBackThroughTheEnginesPageText)
{
    AnnotationRequest text;
    text.text = QStringLiteral("吾輩は猫である。\nLine two");
    text.x = 1000;
    text.y = 1000;
    AnnotationRequest note;
    note.type = AddType::Fusen;
    note.text = QStringLiteral("付箋の文");
    note.x = 1000;
    note.y = 9000;
    AnnotationRequest link;
    link.type = AddType::Link;
    link.url = QStringLiteral("https://example.org/");
    link.x = 1000;
    link.y = 15000;
    QTemporaryDir dir;
    for (int generation : {7, 10}) {
        SCOPED_TRACE(generation);
        text.generation = note.generation = link.generation = generation;
        const QString path = dir.filePath(QStringLiteral("g%1.xdw").arg(generation));
        testfiles::WriteBytes(path, annottest::FileWith({MakeAnnotation(text), MakeAnnotation(note), MakeAnnotation(link)},
                                                        generation));
        XdwEngine engine;
        engine.OpenDocument(path, 1);
        ASSERT_EQ(engine.LastResult(), 0) << engine.LastReason().toStdString();
        engine.SelectDocumentHandle(engine.ReadDocumentHandle());
        EXPECT_EQ(engine.GetPageTextToMemory(1),
                  QStringLiteral("吾輩は猫である。\nLine two\n付箋の文\nhttps://example.org/"));
    }
}

TEST(AnnotationKinds, TextSizesItselfByTheVendorsRule)
{
    // Half-width characters advance half the height, the rest the full height, with 1.7 mm
    // margins: at 12 pt "Lorem ipsum. 吾輩は猫である。" is 765 x 90 units at 300 per inch, as the
    // vendor's own drawing of that text says.
    AnnotationRequest s;
    s.text = QStringLiteral("Lorem ipsum. 吾輩は猫である。");
    const std::vector<AnnotationInfo> info = [&] {
        xdw::Node page = annottest::BlankPage();
        page.children.push_back(MakeAnnotation(s));
        return ListAnnotations(page);
    }();
    EXPECT_EQ(Logical(info[0].width), 765);
    EXPECT_EQ(Logical(info[0].height), 90);
}

TEST(AnnotationKinds, LineRunsFromItsStartByItsVectorsEitherWay)
{
    for (auto [hor, ver] : {std::pair<qint64, qint64>{4000, 2000}, {-4000, 2000}, {4000, -2000}, {-4000, -2000}, {5000, 0}}) {
        SCOPED_TRACE(QStringLiteral("%1 %2").arg(hor).arg(ver).toStdString());
        AnnotationRequest s;
        s.type = AddType::Line;
        s.x = 10000;
        s.y = 10000;
        s.horVec = hor;
        s.verVec = ver;
        xdw::Node page = annottest::BlankPage();
        page.children.push_back(MakeAnnotation(s));
        const AnnotationInfo info = ListAnnotations(page).front();
        EXPECT_EQ(info.horVec, hor);
        EXPECT_EQ(info.verVec, ver);
        EXPECT_LE(info.x, std::min(s.x, s.x + hor));
        EXPECT_LE(info.y, std::min(s.y, s.y + ver));
        EXPECT_GE(info.x + info.width, std::max(s.x, s.x + hor));
        EXPECT_GE(info.y + info.height, std::max(s.y, s.y + ver));
        // The two ends are inked, the corners the line does not pass are not.
        const xdw::Model model(annottest::PageFile(page));
        const QImage image = xdw::RenderPage(model, 0, Dpi, true);
        auto near = [&](qint64 vX, qint64 vY) { return annottest::Inked(image, vX - 60, vY - 60, 120, 120, Dpi); };
        EXPECT_GT(near(s.x, s.y), 0);
        EXPECT_GT(near(s.x + hor, s.y + ver), 0);
        if (ver != 0) {
            EXPECT_EQ(near(s.x + hor, s.y), 0);
            EXPECT_EQ(near(s.x, s.y + ver), 0);
        }
    }
}

TEST(AnnotationKinds, StickyNoteHoldsItsTextAsAChildAnnotation)
{
    xdw::Node page = annottest::BlankPage();
    AnnotationRequest s;
    s.type = AddType::Fusen;
    s.text = QStringLiteral("note");
    AddAnnotation(page, s);
    AddAnnotation(page, AnnotationRequest{});
    const std::vector<AnnotationInfo> listed = ListAnnotations(page);
    ASSERT_EQ(listed.size(), 2u);
    EXPECT_EQ(listed[0].children, 1);
    EXPECT_EQ(listed[1].children, 0);
    const xdw::Node* note = AnnotationAt(page, 0);
    const std::vector<AnnotationInfo> held = ListAnnotations(*note);
    ASSERT_EQ(held.size(), 1u);
    EXPECT_EQ(held[0].kind, 0x8011u);
    EXPECT_EQ(GetProperty(*AnnotationAt(*note, 0), u"Text")->toString(), QStringLiteral("note"));
    EXPECT_EQ(GetProperty(*note, u"Text")->toString(), QStringLiteral("note"));
    // Ids come from the page: the note, its text, then the next annotation.
    EXPECT_EQ(xdw::nodes::NamedNumber(page, u"lastmid"), 3);
}

TEST(AnnotationKinds, DrawingsAreStoredCompressedOnlyWhenThatSavesBytes)
{
    // Annotation drawings carry no "compressed" flag: a reader knows them by the expanded size
    // exceeding the stored one, so a compressor that saves nothing must be passed over.
    AnnotationRequest s;
    s.text = QStringLiteral("packed");
    auto drawing = [&](const Compressor& vCompress) {
        const xdw::Node placement = MakeAnnotation(s, vCompress);
        return xdw::nodes::Find(placement.children.front(), 7)->value;
    };
    const QByteArray plain = drawing({});
    const xdw::Fields stored(plain);
    const qint64 emfSize = stored.IntegerOr(1, 0);
    EXPECT_EQ(stored.IntegerOr(9, 0), emfSize);
    EXPECT_EQ(stored.Get(6)->size(), emfSize);
    EXPECT_EQ(stored.IntegerOr(0, 0), 4);    // EMF
    EXPECT_EQ(stored.IntegerOr(13, 0), 1);   // an annotation's drawing

    const Compressor literal = [](QByteArrayView v) { return xdwtest::Lh5Literal(v.toByteArray()); };
    EXPECT_EQ(drawing(literal), plain);
    const xdw::Fields packed(drawing([](QByteArrayView) { return QByteArray("xy"); }));
    EXPECT_EQ(packed.IntegerOr(1, 0), emfSize);
    EXPECT_EQ(packed.IntegerOr(9, 0), 2);
    EXPECT_EQ(*packed.Get(6), QByteArrayView("xy"));
}

TEST(AnnotationKinds, RefusesWhatTheKindDoesNotAllow)
{
    auto refused = [](AnnotationRequest vRequest) {
        try {
            MakeAnnotation(vRequest);
        } catch (const xdw::FormatError&) {
            return true;
        }
        return false;
    };
    auto request = [](AddType vType, qint64 vWidth, qint64 vHeight, qint64 vY = 0, qint64 vVerVec = 0) {
        AnnotationRequest s;
        s.type = vType;
        s.width = vWidth;
        s.height = vHeight;
        s.y = vY;
        s.verVec = vVerVec;
        return s;
    };
    // The limits themselves pass; one past them is refused.
    EXPECT_FALSE(refused(request(AddType::Rectangle, 100, 100)));
    EXPECT_TRUE(refused(request(AddType::Rectangle, 100, 99)));
    EXPECT_FALSE(refused(request(AddType::Fusen, 500, 500)));
    EXPECT_TRUE(refused(request(AddType::Fusen, 50001, 500)));
    EXPECT_TRUE(refused(request(AddType::Text, 0, 0, 240001)));
    EXPECT_TRUE(refused(request(AddType::Line, 0, 0, 0, -240001)));
    AnnotationRequest bitmap;
    bitmap.type = AddType::Bitmap;
    EXPECT_TRUE(refused(bitmap));
    bitmap.bitmap = Bmp(QImage(4, 4, QImage::Format_RGB32)).left(60);   // rows cut off
    EXPECT_TRUE(refused(bitmap));
}
