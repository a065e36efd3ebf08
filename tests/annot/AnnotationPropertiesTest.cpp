// Properties of annotations by name: the names the file keeps them under, set values surviving
// the trip through bytes, the drawing made again so that what shows follows, hiding, removal,
// and the fixed tables of types and colours that scripts name things by.

#include "TreeBytes.h"

#include "engine/Records.h"
#include "engine/write/AnnotationProperties.h"
#include "engine/write/Annotations.h"
#include "engine/write/NodeAccess.h"
#include "engine/write/TextLayout.h"

#include <gtest/gtest.h>

using namespace xdw::annot;

namespace {

xdw::Node Text(const QString& vText, int vGeneration = 7)
{
    AnnotationRequest s;
    s.text = vText;
    s.x = 2000;
    s.y = 2000;
    s.generation = vGeneration;
    return MakeAnnotation(s);
}

// The attribute of the file's one annotation record, read back from its bytes.
QByteArray StoredAttribute(const QByteArray& vFile, QStringView vName)
{
    const xdw::Container file(xdw::MemorySource(vFile));
    for (const xdw::Record& r : xdw::ReadRecords(file.Properties(), file))
        if ((r.kind & 0xFF00) == 0x8000)
            if (const xdw::Attribute* a = r.Named(vName))
                return xdw::ValueOf(*a, file).toByteArray();
    return {};
}

} // namespace

TEST(AnnotationProperties, EveryPropertyHasTheAttributeNamePinnedHere)
{
    // Files written by this program name their attributes so; changing one orphans what users saved.
    const char* const expected[][2] = {
        {"Text", "%Text"}, {"FontName", "%Face"}, {"FontBold", "%Style"}, {"FontItalic", "%Style"},
        {"FontUnderLine", "%Style"}, {"FontStrikeOut", "%Style"}, {"FontSize", "%Size"},
        {"ForeColor", "%Color"}, {"FontPitchAndFamily", "%PitchAndFamily"}, {"FontCharSet", "%CharSet"},
        {"BackColor", "%ATTR_BKGND_COLOR"}, {"WordWrap", "%Turnover"}, {"AutoResize", "%AutoResize"},
        {"TextDirection", "%TextVerticalWriting"}, {"TextOrientation", "%TextRotationAngle"},
        {"LineSpace", "%TextBetweenLine"}, {"TextSpacing", "%Spacing"}, {"TextTopMargin", "%TopMargin"},
        {"TextLeftMargin", "%LeftMargin"}, {"TextBottomMargin", "%BottomMargin"},
        {"TextRightMargin", "%RightMargin"}, {"TextAutoResizeHeight", "%AutoResizeHeight"},
        {"Caption", "%Caption"}, {"Url", "%Url"}, {"XdwPath", "%XdwPath"}, {"ShowIcon", "%ShowIcon"},
        {"LinkType", "%LinkType"}, {"XdwPage", "%XdwPage"}, {"XdwNameInXbd", "%XdwNameInXbd"},
        {"BorderStyle", "%BorderStyle"}, {"BorderWidth", "%BorderWidth"}, {"BorderColor", "%BorderColor"},
        {"BorderTransparent", "%BorderPermeable"}, {"ArrowheadType", "%ArrowheadType"},
        {"ArrowheadStyle", "%ArrowheadStyle"}, {"FillStyle", "%FillStyle"}, {"FillColor", "%FillColor"},
        {"FillTransparent", "%FillPermeable"}, {"Invisible", "%Invisible"}, {"PageFrom", "%PageFrom"},
        {"TopField", "%TopField"}, {"BottomField", "%BottomField"}, {"DateStyle", "%DateStyle"},
        {"YearField", "%YearField"}, {"MonthField", "%MonthField"}, {"DayField", "%DayField"},
        {"BasisYearStyle", "%BasisYearStyle"}, {"BasisYear", "%BasisYear"},
        {"DateField_FirstChar", "%DateField_FirstChar"}, {"Alignment", "%Align"},
        {"LeftRightMargin", "%LeftRightMargin"}, {"TopBottomMargin", "%TopBottomMargin"},
        {"VerPosition", "%VerPosition"}, {"StartingNumber", "%StartingNumber"}, {"Digit", "%Digit"},
        {"PageRange", "%PageRange"}, {"BeginningPage", "%BeginningPage"}, {"EndingPage", "%EndingPage"},
        {"Zoom", "%Zoom"}, {"ImageFile", "%ImageFile"},
    };
    const std::vector<PropertyName>& names = PropertyNames();
    ASSERT_EQ(names.size(), std::size(expected));
    for (size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(names[i].property, QLatin1String(expected[i][0]));
        EXPECT_EQ(names[i].attribute, QLatin1String(expected[i][1])) << expected[i][0];
    }
    EXPECT_EQ(FindProperty(u"fontsize"), FindProperty(u"FontSize"));
    EXPECT_EQ(FindProperty(u"NoSuchThing"), nullptr);
    EXPECT_TRUE(FindProperty(u"TextAutoResizeHeight")->textFamily);
    EXPECT_FALSE(FindProperty(u"Caption")->textFamily);
}

TEST(AnnotationProperties, TextAttributesAreWrittenAsTheVendorsRecordsHoldThem)
{
    // Generation 7: cp932 under %Text; generation 10: UTF-16 under %Text(w with the code page.
    const QByteArray narrow = annottest::FileWith({Text(QStringLiteral("猫"))});
    EXPECT_EQ(StoredAttribute(narrow, u"%Text"), QByteArray("\x94\x4c\0", 3));
    EXPECT_EQ(StoredAttribute(narrow, u"%Face"), QByteArray("\x82\x6c\x82\x72\x20\x83\x53\x83\x56\x83\x62\x83\x4e\0", 14));
    EXPECT_EQ(StoredAttribute(narrow, u"%Size"), QByteArray("\x01\x78", 2));
    EXPECT_EQ(StoredAttribute(narrow, u"%ATTR_BKGND_COLOR"), QByteArray("\x03\x01\x01\x01", 4));
    EXPECT_EQ(StoredAttribute(narrow, u"%LeftMargin"), QByteArray("\x02\x00\xaa", 3));
    EXPECT_EQ(StoredAttribute(narrow, u"%CharSet"), QByteArray("\x02\x00\x80", 3));
    EXPECT_EQ(StoredAttribute(narrow, u"%hidden"), QByteArray("\x01\x00", 2));
    EXPECT_TRUE(StoredAttribute(narrow, u"%Text(w").isEmpty());

    const QByteArray wide = annottest::FileWith({Text(QStringLiteral("猫"), 10)}, 10);
    EXPECT_EQ(StoredAttribute(wide, u"%Text(w"), QByteArray("\x2b\x73\0\0", 4));
    EXPECT_EQ(StoredAttribute(wide, u"%CCP_#name"), QByteArray("\x02\x03\xa4", 3));
    EXPECT_TRUE(StoredAttribute(wide, u"%Text").isEmpty());
    EXPECT_FALSE(StoredAttribute(wide, u"%Face(w").isEmpty());
}

TEST(AnnotationProperties, SetValuesRoundTripThroughBytesAndRedrawWhatShows)
{
    xdw::Node placement = Text(QStringLiteral("before"));
    const qint64 narrowWidth = ListAnnotations([&] { xdw::Node p = annottest::BlankPage(); p.children.push_back(placement); return p; }())[0].width;
    ASSERT_TRUE(SetProperty(placement, u"Text", QStringLiteral("after, and longer")));
    ASSERT_TRUE(SetProperty(placement, u"ForeColor", 255));
    ASSERT_TRUE(SetProperty(placement, u"FontBold", true));
    ASSERT_TRUE(SetProperty(placement, u"FontItalic", true));
    ASSERT_TRUE(SetProperty(placement, u"FontBold", false));
    EXPECT_FALSE(SetProperty(placement, u"NoSuchThing", 1));
    EXPECT_FALSE(SetProperty(placement, u"FontSize", QStringLiteral("large")));

    const QByteArray file = annottest::FileWith({placement});
    EXPECT_EQ(StoredAttribute(file, u"%Color"), QByteArray("\x02\x00\xff", 3));
    EXPECT_EQ(StoredAttribute(file, u"%Style"), QByteArray("\x01\x02", 2));   // italic only
    EXPECT_EQ(GetProperty(placement, u"FontItalic"), QVariant(true));
    EXPECT_EQ(GetProperty(placement, u"FontBold"), QVariant(false));
    EXPECT_EQ(GetProperty(placement, u"ForeColor"), QVariant(qint64(255)));
    EXPECT_FALSE(GetProperty(placement, u"Url").has_value());

    // The drawing says the new text, in red, and the box grew with it.
    const xdw::Model model(file);
    EXPECT_EQ(xdw::PageText(model, 0), QStringLiteral("after, and longer"));
    const xdw::Placement& shown = model.Pages().front().placements.front();
    EXPECT_GT(shown.width, narrowWidth);
    const QImage image = xdw::RenderPage(model, 0, 150, true);
    int red = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            red += qRed(image.pixel(x, y)) > 200 && qGreen(image.pixel(x, y)) < 80;
    EXPECT_GT(red, 20);
}

TEST(AnnotationProperties, ShapeAndStampPropertiesChangeTheirDrawings)
{
    AnnotationRequest rect;
    rect.type = AddType::Rectangle;
    rect.x = rect.y = 1000;
    rect.width = rect.height = 3000;
    xdw::Node placement = MakeAnnotation(rect);
    auto middleInk = [&] {
        const xdw::Model model(annottest::FileWith({placement}));
        return annottest::Inked(xdw::RenderPage(model, 0, 100, true), 2000, 2000, 1000, 1000, 100);
    };
    EXPECT_EQ(middleInk(), 0);   // a frame, empty inside
    ASSERT_TRUE(SetProperty(placement, u"FillStyle", 1));
    ASSERT_TRUE(SetProperty(placement, u"FillColor", 0x00FF00));
    EXPECT_GT(middleInk(), 100);

    AnnotationRequest stamp;
    stamp.type = AddType::DateStamp;
    stamp.date = QDate(2026, 3, 4);
    xdw::Node stamped = MakeAnnotation(stamp);
    EXPECT_EQ(xdw::PageText(xdw::Model(annottest::FileWith({stamped})), 0), QStringLiteral("26.03.04"));
    ASSERT_TRUE(SetProperty(stamped, u"DateStyle", 2));
    ASSERT_TRUE(SetProperty(stamped, u"TopField", QStringLiteral("受付")));
    EXPECT_EQ(xdw::PageText(xdw::Model(annottest::FileWith({stamped})), 0), QStringLiteral("受付\n2026/03/04"));
    // Each date style's form, as users' stamps were set up with them.
    const char* const forms[] = {"26.03.04", "2026.03.04", "2026/03/04", "3/4", "26.03.04"};
    for (int style = 0; style < 5; ++style) {
        ASSERT_TRUE(SetValue(stamped.children.front(), u"DateStyle", style));
        EXPECT_EQ(StampDate(stamped.children.front()), QLatin1String(forms[style])) << style;
    }
}

TEST(AnnotationProperties, OutlandishSettingsStayWithinAPageSizedBox)
{
    xdw::Node placement = Text(QStringLiteral("big\nbigger"));
    ASSERT_TRUE(SetProperty(placement, u"FontSize", qint64(1) << 40));
    ASSERT_TRUE(SetProperty(placement, u"LineSpace", -5));
    ASSERT_TRUE(SetProperty(placement, u"TextLeftMargin", qint64(1) << 50));
    xdw::Node page = annottest::BlankPage();
    page.children.push_back(placement);
    const AnnotationInfo info = ListAnnotations(page).front();
    EXPECT_GT(info.width, 0);
    EXPECT_LE(info.width, 240000);
    EXPECT_LE(info.height, 240000);
    EXPECT_EQ(xdw::PageText(xdw::Model(annottest::PageFile(page)), 0), QStringLiteral("big\nbigger"));
}

TEST(AnnotationProperties, HiddenAnnotationsNeitherShowNorGiveText)
{
    xdw::Node page = annottest::BlankPage();
    page.children.push_back(Text(QStringLiteral("seen")));
    page.children.push_back(Text(QStringLiteral("hidden")));
    xdw::nodes::Set(page.children[1], 52, xdw::emit::Numbers({2000, 10000}));
    SetHidden(page.children[1], true);
    EXPECT_TRUE(IsHidden(page.children[1]));
    EXPECT_TRUE(ListAnnotations(page)[1].hidden);
    const AnnotationInfo hidden = ListAnnotations(page)[1];
    {
        const xdw::Model model(annottest::PageFile(page));
        EXPECT_EQ(model.Pages().front().placements.size(), 1u);
        EXPECT_EQ(xdw::PageText(model, 0), QStringLiteral("seen"));
        const QImage image = xdw::RenderPage(model, 0, 100, true);
        EXPECT_EQ(annottest::Inked(image, hidden.x, hidden.y, hidden.width, hidden.height, 100), 0);
    }
    SetHidden(page.children[1], false);
    const xdw::Model model(annottest::PageFile(page));
    EXPECT_EQ(xdw::PageText(model, 0), QStringLiteral("seen\nhidden"));
}

TEST(AnnotationProperties, RemovedAnnotationsLeaveTheOthersInOrder)
{
    xdw::Node page = annottest::BlankPage();
    for (const char* t : {"one", "two", "three"}) {
        AnnotationRequest s;
        s.text = QString::fromLatin1(t);
        AddAnnotation(page, s);
    }
    EXPECT_FALSE(RemoveAnnotation(page, 3));
    EXPECT_TRUE(RemoveAnnotation(page, 1));
    ASSERT_EQ(ListAnnotations(page).size(), 2u);
    EXPECT_EQ(GetProperty(*AnnotationAt(page, 1), u"Text")->toString(), QStringLiteral("three"));
    EXPECT_EQ(AnnotationAt(page, 2), nullptr);
}

TEST(AnnotationProperties, TypeWordsAndJapaneseNamesAsScriptsUseThem)
{
    const std::pair<quint32, const char16_t*> words[] = {
        {32794, u"FUSEN"}, {32785, u"TEXT"}, {32819, u"STAMP"}, {32828, u"STRAIGHTLINE"},
        {32829, u"RECTANGLE"}, {32830, u"ARC"}, {32795, u"MARKER"}, {49199, u"LINK"},
        {32814, u"PAGEFORM"}, {32783, u"OLE"}, {32831, u"BITMAP"}, {32834, u"POLYGON"},
        {32838, u"TITLE"}, {32837, u"CUSTOM"}, {32839, u"GROUP"},
    };
    for (const auto& [code, word] : words)
        EXPECT_EQ(TypeName(code), QString::fromUtf16(word)) << code;
    EXPECT_EQ(TypeName(0x8010), QString());
    const std::pair<const char16_t*, const char16_t*> japanese[] = {
        {u"FUSEN", u"付箋"}, {u"TEXT", u"テキスト"}, {u"STAMP", u"日付印"}, {u"STRAIGHTLINE", u"直線"},
        {u"RECTANGLE", u"矩形"}, {u"ARC", u"楕円"}, {u"MARKER", u"フリーハンド/マーカー"},
        {u"LINK", u"リンク"}, {u"PAGEFORM", u"見出し/ページ番号"}, {u"OLE", u"OLE"},
        {u"BITMAP", u"ビットマップ"}, {u"POLYGON", u"多角形"}, {u"TITLE", u"タイトル"},
        {u"CUSTOM", u"カスタム"}, {u"GROUP", u"グループ"},
    };
    for (const auto& [word, name] : japanese)
        EXPECT_EQ(JapaneseName(QStringView(word)), QString::fromUtf16(name));
    EXPECT_EQ(JapaneseName(u"SQUIGGLE"), QString());
    const quint32 kinds[] = {0, 0x8011, 0x803D, 0xC02F, 0x803F, 0x803C, 0x8033, 0x801A, 0};
    for (int type = 0; type <= 8; ++type)
        EXPECT_EQ(KindOf(type), kinds[type]) << type;
}

TEST(AnnotationProperties, ColoursByNameBothWays)
{
    const std::pair<const char16_t*, qint64> colours[] = {
        {u"黒", 0}, {u"茶色", 128}, {u"緑", 32768}, {u"オリーブ", 32896}, {u"紺", 8388608},
        {u"紫", 8388736}, {u"青緑", 8421376}, {u"灰色", 8421504}, {u"銀", 12632256}, {u"赤", 255},
        {u"黄緑", 65280}, {u"黄", 65535}, {u"青", 16711680}, {u"赤紫", 16711935},
        {u"水色", 16776960}, {u"白", 16777215}, {u"付箋赤", 16761599}, {u"付箋青", 16760733},
        {u"付箋黄", 6619135}, {u"付箋緑", 12779421}, {u"背景色なし", 65793}, {u"なし", 65793},
    };
    for (const auto& [name, value] : colours) {
        EXPECT_EQ(ColorByName(QStringView(name)), value);
        if (value != 65793) {
            EXPECT_EQ(ColorName(value), QString::fromUtf16(name));
            EXPECT_EQ(BackColorName(value), QString::fromUtf16(name));
        }
    }
    EXPECT_EQ(ColorName(65793), QStringLiteral("なし"));
    EXPECT_EQ(BackColorName(65793), QStringLiteral("背景色なし"));
    EXPECT_EQ(ColorName(1), QString());
    EXPECT_EQ(ColorByName(u"まだら"), -1);
}

TEST(AnnotationProperties, TextRunsOnToTheNextLineAtTheEdgeOfAFixedBox)
{
    // The default 12 pt font is 50 units high at 300 units per inch; full-width characters
    // advance by the whole height, Latin ones by half.
    const xdw::Node text;
    EXPECT_EQ(xdw::annot::Wrap(text, QStringLiteral("あいうえおかきくけこ"), 225),
              QStringLiteral("あいうえ\nおかきく\nけこ"));
    EXPECT_EQ(xdw::annot::Wrap(text, QStringLiteral("alpha beta gamma"), 250), QStringLiteral("alpha beta\ngamma"));
    EXPECT_EQ(xdw::annot::Wrap(text, QStringLiteral("付箋: 要確認\nok"), 1000), QStringLiteral("付箋: 要確認\nok"));
    // However narrow the box, each line takes a character and the text ends.
    EXPECT_EQ(xdw::annot::Wrap(text, QStringLiteral("あい"), 10), QStringLiteral("あ\nい"));
}
