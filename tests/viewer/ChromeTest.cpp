// The parts of the window's chrome that stand on their own: what button keys mean, the popup
// entries read from the settings, the icons and the version box.
#include "viewer/ChromeIcons.h"
#include "viewer/ChromeMenus.h"
#include "viewer/frmAbout.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// The list rows of the popup menu page, as the options dialog stores them.
SDC PopupRows(const SDC& vSettings)
{
    return vSettings->CreateThread(PopupMenuGroup)
        ->CreateThread(u"livPMenuList"_s)
        ->CreateThread(u"ListItem"_s);
}

void AddRow(const SDC& vRows, const QString& vText, const QString& vCaption = {}, const QString& vAccess = {})
{
    const SDC row = vRows->CreateThread();
    row->AddData(vText, u"Text"_s);
    row->AddData(u"0"_s, u"Checked"_s);
    const SDC sub = row->CreateThread(u"SubItem"_s);
    sub->AddData(vCaption, u"1"_s);
    sub->AddData(vAccess, u"2"_s);
}

} // namespace

TEST(ChromeMenusTest, PopupEntriesKeepTheirOrderAndAreKeptApartByNumber)
{
    const SDC settings = std::make_shared<StructuredDataClass>();
    const SDC rows = PopupRows(settings);
    AddRow(rows, u"次ページ"_s, u"次へ"_s, u"B"_s);
    AddRow(rows, u"セパレータ"_s);
    AddRow(rows, u"次ページ"_s, u"もう一度次へ"_s);
    AddRow(rows, u"Read:資料フォルダ"_s, u"資料"_s, u"R"_s);

    const QList<PopupItem> items = PopupItems(*settings);
    ASSERT_EQ(items.size(), 4);
    EXPECT_EQ(items[0].Key, u"次ページ#$%1"_s);
    EXPECT_EQ(items[0].Caption, u"次へ(&B)"_s);
    EXPECT_FALSE(items[0].Separator);
    EXPECT_EQ(items[1].Key, u"SEPARATOR#$%2"_s);
    EXPECT_TRUE(items[1].Separator);
    EXPECT_EQ(items[2].Key, u"次ページ#$%3"_s);
    EXPECT_EQ(items[2].Caption, u"もう一度次へ"_s);  // no letter, no brackets
    EXPECT_EQ(items[3].Key, u"Read:資料フォルダ#$%4"_s);
    EXPECT_EQ(items[3].Caption, u"資料(&R)"_s);
}

TEST(ChromeMenusTest, MissingOrEmptyListsGiveNoEntries)
{
    const SDC settings = std::make_shared<StructuredDataClass>();
    EXPECT_TRUE(PopupItems(*settings).isEmpty());
    settings->CreateThread(PopupMenuGroup);
    EXPECT_TRUE(PopupItems(*settings).isEmpty());
    PopupRows(settings);
    EXPECT_TRUE(PopupItems(*settings).isEmpty());
    // A row without sub-items still makes an entry, with an empty caption.
    PopupRows(settings)->CreateThread()->AddData(u"前ページ"_s, u"Text"_s);
    ASSERT_EQ(PopupItems(*settings).size(), 1);
    EXPECT_EQ(PopupItems(*settings).first().Caption, QString());
}

TEST(ChromeMenusTest, ButtonKeysSplitAtTheColonAndPopupKeysAtTheirOwnMark)
{
    EXPECT_EQ(ButtonOperation(u"DISPSIZE:3"_s), u"DISPSIZE"_s);
    EXPECT_EQ(ButtonArgument(u"DISPSIZE:3"_s), u"3"_s);
    EXPECT_EQ(ButtonOperation(u"NEXT_PAGE"_s), u"NEXT_PAGE"_s);
    EXPECT_EQ(ButtonArgument(u"NEXT_PAGE"_s), QString());
    EXPECT_FALSE(PopupActionOfKey(u"DOUBLE_DISP:2"_s).has_value());

    // An action name holding ":" is split apart from the first split, and survives whole.
    const QString key = u"Brackenfold:印刷:両面#$%7"_s;
    EXPECT_EQ(ButtonOperation(key), u"Brackenfold"_s);
    EXPECT_EQ(PopupActionOfKey(key), u"Brackenfold:印刷:両面"_s);
}

TEST(ChromeIconsTest, EveryKeyOfTheBarsHasAPicture)
{
    for (const char* key : {"FILE01_16", "FILE02_16", "OPENFOLDER_16", "RIGHTLEFT_16", "UPDATE_16",
                            "OPTION_16", "WINDOWCLOSE01_16", "HELP01_16", "INFO_16", "WINDOWCLOSE03_16"})
        EXPECT_FALSE(ChromeIcon(QLatin1String(key)).isNull()) << key;
    EXPECT_TRUE(ChromeIcon(u"NO_SUCH_16"_s).isNull());
}

TEST(frmAboutTest, CaptionVersionAndClosing)
{
    const QString before = QCoreApplication::applicationVersion();
    QCoreApplication::setApplicationVersion(QString());
    {
        frmAbout about;
        EXPECT_EQ(about.windowTitle(), u"Marnoquillのﾊﾞｰｼﾞｮﾝ情報"_s);
        EXPECT_EQ(about.lblTitle()->text(), u"Marnoquill"_s);
        EXPECT_EQ(about.lblVersion()->text(), u"Version 0.1.0"_s);
        EXPECT_FALSE(about.lblDescription()->text().isEmpty());
        EXPECT_FALSE(about.lblDisclaimer()->text().isEmpty());
        about.show();
        QTest::mouseClick(about.cmdOK(), Qt::LeftButton);
        EXPECT_FALSE(about.isVisible());
    }
    // A version given in two parts still shows three.
    QCoreApplication::setApplicationVersion(u"2.3"_s);
    EXPECT_EQ(frmAbout::VersionText(), u"2.3.0"_s);
    QCoreApplication::setApplicationVersion(u"1.4.7"_s);
    EXPECT_EQ(frmAbout().lblVersion()->text(), u"Version 1.4.7"_s);
    QCoreApplication::setApplicationVersion(before);
}
