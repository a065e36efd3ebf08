// The settings file shipped beside the program, read as the program reads it. Its texts are the
// ones users' own files hold (action names, key names, control names, stored forms), so they
// are pinned here in full rather than sampled.
#include "commands/ActionCatalogue.h"
#include "commands/AppAcceleratorKeyClass.h"
#include "commands/AppCommandListClass.h"
#include "commands/KeyCodeClass.h"
#include "settings/DataSaveLoadClass.h"
#include "support/Cp932.h"
#include "viewer/ChromeMenus.h"

#include <QFile>
#include <QTemporaryDir>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

const QString kShipped = QStringLiteral(MQ_DEFAULT_SETTINGS);

QByteArray ShippedBytes()
{
    QFile file(kShipped);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

SDC LoadShipped()
{
    auto tree = std::make_shared<StructuredDataClass>();
    DataSaveLoadClass io;
    io.SetData(tree);
    io.Load(kShipped, QStringLiteral("DetailSet"));
    return tree;
}

// The thread reached by walking vKeys down from vTree; null where one is missing. Group keys
// hold backslashes themselves, so a path of the store can't name them.
SDC Walk(SDC vTree, const QStringList& vKeys)
{
    for (const QString& key : vKeys) {
        if (!vTree || !vTree->Exists(key))
            return nullptr;
        vTree = vTree->Thread(key);
    }
    return vTree;
}

QString At(const SDC& vTree, const QStringList& vKeys, const QString& vKey)
{
    const SDC node = Walk(vTree, vKeys);
    return node && node->Exists(vKey) ? node->DataValue(vKey) : QStringLiteral("<missing>");
}

struct Row {
    QString Text;
    QStringList SubItems;
    bool operator==(const Row&) const = default;
};

std::vector<Row> Rows(const SDC& vTree, const QString& vGroup, const QString& vList)
{
    std::vector<Row> rows;
    const SDC items = Walk(vTree, {vGroup, vList, QStringLiteral("ListItem")});
    if (!items)
        return rows;
    for (const QString& key : items->RefDataKey()) {
        const SDC row = items->Thread(key);
        Row r{row->DataValue(QStringLiteral("Text")), {}};
        const SDC sub = row->Thread(QStringLiteral("SubItem"));
        for (const QString& n : sub->RefDataKey())
            r.SubItems.append(sub->DataValue(n));
        rows.push_back(r);
    }
    return rows;
}

bool IsCatalogueAction(const QString& vName)
{
    for (const FixedAction& action : FixedActions())
        if (action.Name == vName && action.Run)
            return true;
    return false;
}

} // namespace

TEST(ShippedSettings, IsCodePage932WithCrLfAndAnHonestLineCount)
{
    const QByteArray bytes = ShippedBytes();
    ASSERT_FALSE(bytes.isEmpty()) << qPrintable(kShipped);
    EXPECT_FALSE(bytes.startsWith("\xEF\xBB\xBF"));
    EXPECT_TRUE(bytes.endsWith("\r\n"));
    EXPECT_EQ(bytes.count("\n"), bytes.count("\r\n"));
    EXPECT_FALSE(Cp932::Decode(bytes).contains(QChar::ReplacementCharacter));
    // The group names are Japanese in the file itself, not escaped or in UTF-8.
    EXPECT_TRUE(bytes.contains(Cp932::Encode(QStringLiteral("\\ウインドウ\\"))));

    const QList<QByteArray> lines = bytes.chopped(2).split('\n');
    ASSERT_TRUE(lines.first().startsWith("[!LABEL_DetailSet]\t"));
    EXPECT_EQ(lines.first().trimmed().split('\t').last().toInt(), lines.size() - 1);
    for (const QByteArray& line : lines)
        EXPECT_FALSE(line.contains("[!#]")) << "notes of the source must not be shipped";
}

TEST(ShippedSettings, IsExactlyWhatTheWriterMakesOfIt)
{
    // Saving what was read gives the same bytes: nothing in the source is lost on reading or
    // laid out otherwise than the program itself writes it.
    QTemporaryDir dir;
    const QString copy = dir.filePath(QStringLiteral("Marnoquill.ini"));
    DataSaveLoadClass io;
    io.SetData(LoadShipped());
    io.Save(copy, QStringLiteral("DetailSet"));
    QFile file(copy);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), ShippedBytes());
}

TEST(ShippedSettings, HoldsEveryDefaultOfTheOptionsPages)
{
    const SDC tree = LoadShipped();
    struct Default {
        std::initializer_list<const char*> Path;
        const char* Key;
        const char* Value;
    };
    const Default defaults[] = {
        {{"\\ウインドウ\\", "cboStartDocSize"}, "Text", "ページ全体"},
        {{"\\ウインドウ\\", "chkWindowsDisp", "0"}, "Value", "True"},
        {{"\\ウインドウ\\", "chkWindowsDisp", "1"}, "Value", "False"},
        {{"\\ウインドウ\\", "chkWindowPositionSave"}, "Value", "1"},
        {{"\\ウインドウ\\", "txtResolution"}, "Text", "150"},
        {{"\\ウインドウ\\", "txtGamma"}, "Text", "-40"},
        {{"\\ウインドウ\\", "chkWindowSort"}, "Value", "0"},
        {{"\\ウインドウ\\", "optWindowSortTarget", "0"}, "Value", "True"},
        {{"\\ウインドウ\\", "optWindowSortTarget", "1"}, "Value", "False"},
        {{"\\ウインドウ\\", "optWindowSortMode", "0"}, "Value", "True"},
        {{"\\ウインドウ\\", "optWindowSortMode", "1"}, "Value", "False"},
        {{"\\ウインドウ\\", "chkOpenOnlyOne"}, "Value", "1"},
        {{"\\ウインドウ\\", "chkActiveForm"}, "Value", "0"},
        {{"\\ウインドウ\\", "txtActiveFormTime"}, "Text", "1000"},
        {{"\\ウインドウ\\", "txtRulerWidth"}, "Text", "100"},
        {{"\\ウインドウ\\", "picRulerColor"}, "BackColor", "65280"},
        {{"\\マウス\\", "cboMouseLeftDClick"}, "Text", "なし"},
        {{"\\マウス\\", "cboMouseWheelClick"}, "Text", "なし"},
        {{"\\マウス\\", "cboMouse4thClick"}, "Text", "なし"},
        {{"\\マウス\\", "cboMouse5thClick"}, "Text", "なし"},
        {{"\\マウス\\", "cboMouseRightWheel"}, "Text", "タブの移動"},
        {{"\\マウスジェスチャ\\", "chkMouseGesture"}, "Value", "1"},  // on: the starter strokes work
        {{"\\動作\\", "chkActArrangement"}, "Value", "0"},
    };
    for (const Default& d : defaults) {
        QStringList keys;
        for (const char* key : d.Path)
            keys.append(QString::fromUtf8(key));
        EXPECT_EQ(At(tree, keys, QString::fromUtf8(d.Key)), QString::fromUtf8(d.Value)) << qPrintable(keys.join(u'|'));
    }

    // The type words tell the options dialog which control each thread belongs to.
    EXPECT_EQ(At(tree, {QStringLiteral("\\ウインドウ\\"), QStringLiteral("cboStartDocSize")}, QStringLiteral("Type")), QStringLiteral("ComboBox"));
    EXPECT_EQ(At(tree, {QStringLiteral("\\ウインドウ\\"), QStringLiteral("txtGamma")}, QStringLiteral("Type")), QStringLiteral("TextBox"));
    EXPECT_EQ(At(tree, {QStringLiteral("\\ウインドウ\\"), QStringLiteral("chkOpenOnlyOne")}, QStringLiteral("Type")), QStringLiteral("CheckBox"));
    EXPECT_EQ(At(tree, {QStringLiteral("\\ウインドウ\\"), QStringLiteral("chkWindowsDisp"), QStringLiteral("0")}, QStringLiteral("Type")), QStringLiteral("OptionButton"));
    EXPECT_EQ(At(tree, {QStringLiteral("\\ウインドウ\\"), QStringLiteral("picRulerColor")}, QStringLiteral("Type")), QStringLiteral("PictureBox"));
    EXPECT_EQ(At(tree, {QStringLiteral("\\キーボード\\"), QStringLiteral("livShortCutKey")}, QStringLiteral("Type")), QStringLiteral("ListView"));

    // The lists a user fills later are there and empty.
    EXPECT_TRUE(Rows(tree, QStringLiteral("\\複合動作\\"), QStringLiteral("livMultiActionMultiAction")).empty());
    EXPECT_TRUE(Walk(tree, {QStringLiteral("\\複合動作\\"), QStringLiteral("動作リスト")}));
    EXPECT_TRUE(Rows(tree, QStringLiteral("\\読み込み\\"), QStringLiteral("livReadFolder")).empty());
}

TEST(ShippedSettings, StarterBindingsNameCatalogueActionsAndTableKeys)
{
    const SDC tree = LoadShipped();
    const std::vector<Row> keys = {
        {"次ページ", {"Right"}},          {"次ページ", {"PageDown"}},       {"次ページ", {"Space"}},
        {"前ページ", {"Left"}},           {"前ページ", {"PageUp"}},         {"前ページ", {"Back"}},
        {"次のタブ", {"Ctrl + Tab"}},     {"前のタブ", {"Ctrl + Shift + Tab"}},
        {"タブを閉じる", {"Ctrl + W"}},   {"ファイルを開く", {"Ctrl + O"}}, {"ページ移動", {"Ctrl + G"}},
    };
    EXPECT_EQ(Rows(tree, QStringLiteral("\\キーボード\\"), QStringLiteral("livShortCutKey")), keys);
    const KeyCodeClass codes;
    for (const Row& row : keys) {
        EXPECT_TRUE(IsCatalogueAction(row.Text)) << qPrintable(row.Text);
        const QString keyString = row.SubItems.first();
        const QString name = keyString.section(QStringLiteral(" + "), -1);
        EXPECT_TRUE(codes.Keycode()->Exists(name)) << qPrintable(keyString);
        // Spelled as the keyboard page builds it, so the page finds it as a duplicate.
        EXPECT_EQ(KeyCodeClass::ShortCutKeyString(KeyCodeClass::GetMaskCode(keyString), name), keyString);
    }

    const std::vector<Row> gestures = {
        {"次ページ", {"→"}}, {"前ページ", {"←"}}, {"サイズ:横幅", {"↓"}}, {"サイズ:ページ全体", {"↑"}}};
    EXPECT_EQ(Rows(tree, QStringLiteral("\\マウスジェスチャ\\"), QStringLiteral("livMouseGesture")), gestures);
    for (const Row& row : gestures)
        EXPECT_TRUE(IsCatalogueAction(row.Text)) << qPrintable(row.Text);

    // What the trigger table makes of it: every binding reachable by its trigger.
    AppCommandListClass list;
    list.RefDetailSet(tree);
    list.CreateCommandList();
    const SDC table = list.CommandList();
    for (const Row& row : keys)
        EXPECT_EQ(table->DataValue(row.SubItems.first()), row.Text);
    for (const Row& row : gestures)
        EXPECT_EQ(table->DataValue(row.SubItems.first()), row.Text);
    EXPECT_EQ(table->DataValue(AppCommandListClass::MouseRightWheel), QStringLiteral("タブの移動"));

    // And every key is registered on the accelerator: none of them is dropped as unknown.
    QWidget owner;
    AppAcceleratorKeyClass accelerators(&owner, nullptr);
    accelerators.SetAcceleratorKey(*tree);
    ASSERT_EQ(accelerators.RegisteredKeys().size(), qsizetype(keys.size()));
    for (const Row& row : keys)
        EXPECT_NE(accelerators.ctlAccelerator1().Keycode(row.SubItems.first()), 0) << qPrintable(row.SubItems.first());
}

TEST(ShippedSettings, PopupMenuIsTheShortOne)
{
    const SDC tree = LoadShipped();
    const QList<PopupItem> items = PopupItems(*tree);
    const QStringList expected = {
        "次ページ#$%1 次ページ(&N)", "前ページ#$%2 前ページ(&P)", "SEPARATOR#$%3 ",
        "ページ移動#$%4 ページ移動(&J)", "水平ルーラーを追加#$%5 水平ルーラーを追加(&H)",
        "全てのルーラーを削除#$%6 全てのルーラーを削除(&D)", "SEPARATOR#$%7 ", "タブを閉じる#$%8 タブを閉じる(&C)"};
    QStringList shown;
    for (const PopupItem& item : items) {
        shown.append(item.Key + QLatin1Char(' ') + item.Caption);
        const auto action = PopupActionOfKey(item.Key);
        if (action && !item.Separator) {
            EXPECT_TRUE(IsCatalogueAction(*action)) << qPrintable(*action);
        }
    }
    EXPECT_EQ(shown, expected);
    // A separator row carries the display name the page insists on, not an empty one.
    const std::vector<Row> rows = Rows(tree, QStringLiteral("\\ポップアップメニュー\\"), QStringLiteral("livPMenuList"));
    ASSERT_EQ(rows.size(), 8u);
    EXPECT_EQ(rows[2], (Row{"セパレータ", {"セパレータ", ""}}));
}

TEST(ShippedSettings, WindowIsAbout1200By850CentredOnFullHd)
{
    const SDC tree = LoadShipped();
    const SDC form = Walk(tree, {QStringLiteral("FormSet"), QStringLiteral("Form")});
    ASSERT_TRUE(form);
    constexpr double kTwipsAt96Dpi = 15;
    const double left = form->DataValue(QStringLiteral("Left")).toDouble() / kTwipsAt96Dpi;
    const double top = form->DataValue(QStringLiteral("Top")).toDouble() / kTwipsAt96Dpi;
    const double width = form->DataValue(QStringLiteral("Width")).toDouble() / kTwipsAt96Dpi;
    const double height = form->DataValue(QStringLiteral("Height")).toDouble() / kTwipsAt96Dpi;
    EXPECT_NEAR(width, 1200, 20);
    EXPECT_NEAR(height, 850, 20);
    EXPECT_NEAR(left + width / 2, 960, 2);
    EXPECT_NEAR(top + height / 2, 540, 2);
}
