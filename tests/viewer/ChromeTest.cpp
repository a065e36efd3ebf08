// The parts of the window's chrome that stand on their own: what button keys mean, the popup
// entries read from the settings, the icons and the version box.
#include "viewer/ChromeIcons.h"
#include "viewer/ChromeMenus.h"
#include "viewer/frmAbout.h"

#include <QCoreApplication>
#include <QLabel>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(ChromeMenusTest, PopupEntriesAreNumberedInOrderWithTheirAccessLetters)
{
    const SDC settings = std::make_shared<StructuredDataClass>();
    const SDC list = settings->CreateThread(PopupMenuGroup)->CreateThread(u"livPMenuList"_s);
    EXPECT_TRUE(PopupItems(*settings).isEmpty());  // a list without rows
    const SDC rows = list->CreateThread(u"ListItem"_s);
    rows->CreateThread()->AddData(u"Read:資料フォルダ"_s, u"Text"_s);  // no sub-items: an empty caption
    using Row = std::tuple<QString, QString, QString>;
    for (const auto& [text, caption, access] : {Row(u"セパレータ"_s, u"x"_s, u"X"_s), Row(u"次ページ"_s, u"次へ"_s, u"B"_s),
                                                Row(u"次ページ"_s, u"もう一度次へ"_s, QString())}) {
        const SDC row = rows->CreateThread();
        row->AddData(text, u"Text"_s);
        const SDC sub = row->CreateThread(u"SubItem"_s);
        sub->AddData(caption, u"1"_s);
        sub->AddData(access, u"2"_s);
    }
    const std::tuple<QString, QString, bool> expected[] = {
        {u"Read:資料フォルダ#$%1"_s, QString(), false}, {u"SEPARATOR#$%2"_s, QString(), true},
        {u"次ページ#$%3"_s, u"次へ(&B)"_s, false}, {u"次ページ#$%4"_s, u"もう一度次へ"_s, false}};
    const QList<PopupItem> items = PopupItems(*settings);
    ASSERT_EQ(items.size(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(std::tuple(items[i].Key, items[i].Caption, items[i].Separator), expected[i]) << i;
}

TEST(ChromeMenusTest, PopupKeysNameTheirActionWholeAndButtonKeysNone)
{
    EXPECT_EQ(PopupActionOfKey(u"Brackenfold:印刷:両面#$%7"_s), u"Brackenfold:印刷:両面"_s);
    EXPECT_EQ(ButtonOperation(u"Brackenfold:印刷:両面#$%7"_s), u"Brackenfold"_s);
    EXPECT_FALSE(PopupActionOfKey(u"DOUBLE_DISP:2"_s).has_value());
}

TEST(ChromeIconsTest, EveryKeyOfTheBarsHasAPicture)
{
    for (const char* key : {"FILE01_16", "FILE02_16", "OPENFOLDER_16", "RIGHTLEFT_16", "UPDATE_16",
                            "OPTION_16", "WINDOWCLOSE01_16", "HELP01_16", "INFO_16", "WINDOWCLOSE03_16"})
        EXPECT_FALSE(ChromeIcon(QLatin1String(key)).isNull()) << key;
    EXPECT_TRUE(ChromeIcon(u"NO_SUCH_16"_s).isNull());
}

TEST(frmAboutTest, VersionHasThreeParts)
{
    const QString before = QCoreApplication::applicationVersion();
    for (const auto& [given, shown] : {std::pair(QString(), u"0.1.0"_s), std::pair(u"2.3"_s, u"2.3.0"_s)}) {
        QCoreApplication::setApplicationVersion(given);
        EXPECT_EQ(frmAbout().lblVersion()->text(), u"Version "_s + shown);
    }
    QCoreApplication::setApplicationVersion(before);
}
