// The frame of the options dialog: its tree and pages, the checks of the page "ウインドウ", and
// what "保存" and "キャンセル" leave in the live tree and in the settings file.
#include "OptionsFixture.h"

#include "options/OptionValidation.h"
#include "settings/ColorSwatch.h"
#include "support/Cp932.h"

#include <QRadioButton>
#include <QSplitter>

namespace {

QString Dump(const SDC& vNode)
{
    DataSaveLoadClass io;
    io.SetData(vNode);
    return io.GetSaveString(QStringLiteral("X"));
}

// A group's lines as they would stand at the top level.
QString Unindented(const QString& vText)
{
    QString out = vText;
    return out.replace(QStringLiteral("\r\n\t"), QStringLiteral("\r\n"));
}

} // namespace

TEST_F(OptionsTest, TreeHoldsTheEightPagesInOrder)
{
    frmOption& d = Open();
    EXPECT_EQ(d.windowTitle(), QStringLiteral("オプション設定"));
    // The sort options and the time follow their check boxes.
    EXPECT_FALSE(C<QRadioButton>("optWindowSortMode", 1)->isEnabled());
    Tick("chkWindowSort");
    Tick("chkActiveForm");
    EXPECT_TRUE(C<QRadioButton>("optWindowSortMode", 1)->isEnabled());
    EXPECT_TRUE(C<QLineEdit>("txtActiveFormTime")->isEnabled());
    auto* tree = C<QTreeWidget>("TreeView1");
    QStringList nodes;
    QStringList keys;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        nodes.append(tree->topLevelItem(i)->text(0));
        keys.append(tree->topLevelItem(i)->data(0, Qt::UserRole).toString());
        EXPECT_EQ(tree->topLevelItem(i)->data(0, Qt::UserRole + 1).toInt(), i + 1);
    }
    EXPECT_EQ(nodes, QStringList({"ウインドウ", "マウス", "マウスジェスチャ", "キーボード", "動作", "複合動作", "読み込み",
                                  "ポップアップメニュー"}));
    EXPECT_EQ(keys, QStringList({"\\ウインドウ\\", "\\マウス\\", "\\マウスジェスチャ\\", "\\キーボード\\", "\\動作\\",
                                 "\\複合動作\\", "\\読み込み\\", "\\ポップアップメニュー\\"}));
    // The pages need 7335 by 6375 twips beside the tree, whatever width the bar gives it.
    auto* splitter = d.findChild<QSplitter*>(QStringLiteral("ctlSplitter1"));
    EXPECT_EQ(d.minimumSize(), QSize(splitter->sizes().first() + 489, 425));
    splitter->setSizes({200, 10000});
    Q_EMIT splitter->splitterMoved(200, 1);
    EXPECT_EQ(d.minimumWidth(), 200 + 489);
    // Each node shows its own page, headed by its caption.
    const char* captions[] = {"ウインドウ設定", "マウス設定", "マウスジェスチャ設定", "キーボード設定", "動作設定",
                              "複合動作設定", "読み込み設定", "ポップアップメニュー設定"};
    for (int i = 7; i >= 0; --i) {
        Page(nodes[i].toUtf8().constData());
        EXPECT_EQ(d.CurrentImage(), i + 1);
        QWidget* page = d.Ctl<QWidget>(QStringLiteral("picOptionMain"), i);
        ASSERT_TRUE(page->isVisible());
        EXPECT_EQ(page->findChild<QLabel*>()->text(), QString::fromUtf8(captions[i]));
    }
}

// Every bound of the four fields at and beside its edge, and the texts that are no whole
// number; the messages are the user's own and stand here in full.
TEST_F(OptionsTest, WindowPageChecksItsNumbers)
{
    const std::tuple<int, const char*, const char*> cases[] = {
        {0, "75", ""}, {0, "600", ""}, {0, "74", "表示解像度は75～600の範囲で入力してください。"},
        {0, "601", "表示解像度は75～600の範囲で入力してください。"}, {0, "1e2", ""}, {0, " 150 ", ""},
        {0, "abc", "表示解像度は数字で入力してください。"}, {0, "", "表示解像度は数字で入力してください。"},
        {0, "150.0", "表示解像度は整数で入力してください。"}, {0, "70000", "表示解像度は75～600の範囲で入力してください。"},
        {1, "-100", ""}, {1, "100", ""}, {1, "-101", "ガンマ値は-100～100の範囲で入力してください。"},
        {1, "101", "ガンマ値は-100～100の範囲で入力してください。"}, {1, "1.5", "ガンマ値は整数で入力してください。"},
        {1, "x", "ガンマ値は数字で入力してください。"},
        {2, "100", ""}, {2, "5000", ""}, {2, "99", "アクティブ秒数は100～5000の範囲で入力してください。"},
        {2, "5001", "アクティブ秒数は100～5000の範囲で入力してください。"}, {2, "1e3.", "アクティブ秒数は数字で入力してください。"},
        {2, "2.", "アクティブ秒数は整数で入力してください。"},
        {3, "1", ""}, {3, "500", ""}, {3, "0", "ルーラーの太さは1～500の範囲で入力してください。"},
        {3, "501", "ルーラーの太さは1～500の範囲で入力してください。"}, {3, "-", "ルーラーの太さは数字で入力してください。"},
        {3, "0.5", "ルーラーの太さは整数で入力してください。"},
    };
    for (const auto& [field, text, message] : cases)
        EXPECT_EQ(CheckNumberField(kNumberFields[field], QString::fromUtf8(text)), QString::fromUtf8(message))
            << kNumberFields[field].Control << " " << text;
}

// A failed check keeps the page and puts the tree's selection back on it; the first failing
// field in the fixed order speaks, and gets the focus.
TEST_F(OptionsTest, FailedCheckKeepsThePageAndItsNode)
{
    frmOption& d = Open();
    QApplication::setActiveWindow(&d);
    Type("txtGamma", QStringLiteral("1.5"));
    Type("txtRulerWidth", QStringLiteral("0"));
    Page("キーボード");
    EXPECT_EQ(LastMessage(), QStringLiteral("ガンマ値は整数で入力してください。"));
    EXPECT_EQ(d.CurrentImage(), 1);
    EXPECT_EQ(C<QTreeWidget>("TreeView1")->currentItem()->text(0), QStringLiteral("ウインドウ"));
    EXPECT_TRUE(d.Ctl<QWidget>(QStringLiteral("picOptionMain"), 0)->isVisible());
    EXPECT_TRUE(C<QLineEdit>("txtGamma")->hasFocus());

    Type("txtGamma", QStringLiteral("1e1"));
    Page("キーボード");
    EXPECT_EQ(LastMessage(), QStringLiteral("ルーラーの太さは1～500の範囲で入力してください。"));
    Type("txtRulerWidth", QStringLiteral("1"));
    Page("キーボード");
    EXPECT_EQ(d.CurrentImage(), 4);
    EXPECT_EQ(shown.Count(), 2);
    // "保存" checks the page shown too, and stays on a failure.
    Page("ウインドウ");
    Type("txtResolution", QStringLiteral("601"));
    Click("cmdSave");
    EXPECT_EQ(LastMessage(), QStringLiteral("表示解像度は75～600の範囲で入力してください。"));
    EXPECT_TRUE(d.isVisible());
    EXPECT_FALSE(QFile::exists(path));
}

// The page's defaults as the settings file stores them, the table users' files depend on.
TEST_F(OptionsTest, SavingTheWindowPageWritesItsDefaults)
{
    Open();
    Click("cmdSave");
    EXPECT_FALSE(dialog->isVisible());
    const SDC group = detailSet->Thread(QStringLiteral("\\ウインドウ\\"));
    group->DeleteData(QStringLiteral("Form"));  // where the dialog stood: the screen's business
    EXPECT_EQ(Unindented(Dump(group)), QStringLiteral(
        "[!LABEL_X]\r\n"
        "[!Thread]\tcboStartDocSize\tcboStartDocSize\r\n"
        "\tType\tComboBox\r\n"
        "\tText\tページ全体\r\n"
        "[!Thread]\tchkWindowsDisp\tchkWindowsDisp\r\n"
        "\t[!Thread]\t0\t0\r\n"
        "\t\tValue\tTrue\r\n"
        "\t\tType\tOptionButton\r\n"
        "\t[!Thread]\t1\t1\r\n"
        "\t\tValue\tFalse\r\n"
        "\t\tType\tOptionButton\r\n"
        "[!Thread]\tchkWindowPositionSave\tchkWindowPositionSave\r\n"
        "\tValue\t1\r\n"
        "\tType\tCheckBox\r\n"
        "[!Thread]\ttxtResolution\ttxtResolution\r\n"
        "\tText\t150\r\n"
        "\tType\tTextBox\r\n"
        "[!Thread]\ttxtGamma\ttxtGamma\r\n"
        "\tText\t-40\r\n"
        "\tType\tTextBox\r\n"
        "[!Thread]\tchkWindowSort\tchkWindowSort\r\n"
        "\tValue\t0\r\n"
        "\tType\tCheckBox\r\n"
        "[!Thread]\toptWindowSortTarget\toptWindowSortTarget\r\n"
        "\t[!Thread]\t0\t0\r\n"
        "\t\tValue\tTrue\r\n"
        "\t\tType\tOptionButton\r\n"
        "\t[!Thread]\t1\t1\r\n"
        "\t\tValue\tFalse\r\n"
        "\t\tType\tOptionButton\r\n"
        "[!Thread]\toptWindowSortMode\toptWindowSortMode\r\n"
        "\t[!Thread]\t0\t0\r\n"
        "\t\tValue\tTrue\r\n"
        "\t\tType\tOptionButton\r\n"
        "\t[!Thread]\t1\t1\r\n"
        "\t\tValue\tFalse\r\n"
        "\t\tType\tOptionButton\r\n"
        "[!Thread]\tchkOpenOnlyOne\tchkOpenOnlyOne\r\n"
        "\tValue\t1\r\n"
        "\tType\tCheckBox\r\n"
        "[!Thread]\tchkActiveForm\tchkActiveForm\r\n"
        "\tValue\t0\r\n"
        "\tType\tCheckBox\r\n"
        "[!Thread]\ttxtActiveFormTime\ttxtActiveFormTime\r\n"
        "\tText\t1000\r\n"
        "\tType\tTextBox\r\n"
        "[!Thread]\ttxtRulerWidth\ttxtRulerWidth\r\n"
        "\tText\t100\r\n"
        "\tType\tTextBox\r\n"
        "[!Thread]\tpicRulerColor\tpicRulerColor\r\n"
        "\tVisible\tTrue\r\n"
        "\tBackColor\t65280\r\n"
        "\tType\tPictureBox\r\n"));
    // The file holds the same tree, and the trigger table was rebuilt from it.
    SDC back = std::make_shared<StructuredDataClass>();
    DataSaveLoadClass io;
    io.SetData(back);
    io.Load(path, QStringLiteral("DetailSet"));
    EXPECT_EQ(back->Thread(QStringLiteral("\\ウインドウ\\"))->Thread(QStringLiteral("txtGamma"))->DataValue(QStringLiteral("Text")),
              QStringLiteral("-40"));
}

// Changes on several pages, then "キャンセル": the live tree and the file are as they were.
TEST_F(OptionsTest, CancelLeavesTreeAndFileUntouched)
{
    Open();
    Click("cmdSave");  // a file with the window page
    const QByteArray before = testfiles::ReadBytes(path);
    const QString tree = Dump(detailSet);
    const SDC live = detailSet;

    Open();
    Type("txtResolution", QStringLiteral("300"));
    C<ColorSwatch>("picRulerColor")->SetBackColor(255);
    Page("キーボード");
    Choose("cboShortCutKey", QStringLiteral("J"));
    Click("cmdShortCutKeyAdd");
    Page("動作");
    Tick("chkActArrangement");
    Page("ポップアップメニュー");
    Click("cmdPMenuAdd");
    Click("cmdCancel");

    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(detailSet, live);
    EXPECT_EQ(Dump(detailSet), tree);
    EXPECT_EQ(testfiles::ReadBytes(path), before);
}

// A file the dialog wrote, holding every group, comes back byte for byte from an opening with
// every page visited and nothing changed.
TEST_F(OptionsTest, SaveWithoutChangesKeepsTheFileByteForByte)
{
    Open();
    Page("マウス");
    Choose("cboMouse4thClick", QStringLiteral("次ページ"));
    Page("マウスジェスチャ");
    Tick("chkMouseGesture");
    Click("cmdMouseGesture", 2);
    Click("cmdMouseGestureAdd");
    Page("キーボード");
    Click("cmdShortCutKeyAdd");
    Page("動作");
    Page("複合動作");
    Type("txtMultiActionMultiActionName", QStringLiteral("二つ進む"));
    Click("cmdMultiActionActionAdd");
    Click("cmdMultiActionActionAdd");
    Click("cmdMultiActionMultiActionAdd");
    Page("読み込み");
    Type("txtReadFolder", dir.path());
    Click("cmdReadAdd");
    Page("ポップアップメニュー");
    Click("cmdPMenuAdd");
    Click("cmdSave");
    EXPECT_EQ(shown.Count(), 0);
    for (const char* group : {"\\ウインドウ\\", "\\マウス\\", "\\マウスジェスチャ\\", "\\キーボード\\", "\\動作\\",
                              "\\複合動作\\", "\\読み込み\\", "\\ポップアップメニュー\\"})
        EXPECT_TRUE(detailSet->Exists(QString::fromUtf8(group))) << group;
    // The first save also placed the dialog, which opened at its default size with nothing
    // stored; from then on it opens where and as large as it was saved.
    detailSet = std::make_shared<StructuredDataClass>();
    {
        DataSaveLoadClass io;
        io.SetData(detailSet);
        io.Load(path, QStringLiteral("DetailSet"));
    }
    Open();
    Click("cmdSave");
    const QByteArray first = testfiles::ReadBytes(path);

    // As the program starts: the tree read from the file.
    detailSet = std::make_shared<StructuredDataClass>();
    DataSaveLoadClass io;
    io.SetData(detailSet);
    io.Load(path, QStringLiteral("DetailSet"));
    Open();
    for (const char* node : {"マウス", "マウスジェスチャ", "キーボード", "動作", "複合動作", "読み込み", "ポップアップメニュー"})
        Page(node);
    Click("cmdSave");
    EXPECT_EQ(Cp932::Decode(testfiles::ReadBytes(path)).toStdString(), Cp932::Decode(first).toStdString());
    EXPECT_EQ(commands->CommandList()->DataValue(QStringLiteral("↓")), detailSet->Thread(QStringLiteral("\\マウスジェスチャ\\"))
                  ->Thread(QStringLiteral("livMouseGesture"))->Thread(QStringLiteral("ListItem"))->ThreadOfNumber(1)
                  ->DataValue(QStringLiteral("Text")));
    EXPECT_EQ(commands->CommandList()->DataValue(QStringLiteral("第4クリック")), QStringLiteral("次ページ"));
}

// A file that can't be written is told, and the new settings are in force all the same.
TEST_F(OptionsTest, UnwritableFileIsToldAndTheSettingsStillApply)
{
    path = dir.filePath(QStringLiteral("missing/folder/Marnoquill.ini"));
    Open();
    Page("キーボード");
    Choose("cboShortCutKey", QStringLiteral("J"));
    Click("cmdShortCutKeyAdd");
    Click("cmdSave");
    EXPECT_EQ(shown.Count(), 1);
    EXPECT_TRUE(LastMessage().contains(QStringLiteral(" : "))) << LastMessage().toStdString();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_FALSE(commands->CommandList()->DataValue(QStringLiteral("J")).isEmpty());
}

// Hand-edited damage is told, not a crash: a value that is no number when its page loads, a
// group without its list when the tables are rebuilt.
TEST_F(OptionsTest, DamagedSettingsAreTold)
{
    detailSet->CreateThread(QStringLiteral("\\ウインドウ\\"))->CreateThread(QStringLiteral("chkWindowSort"))
        ->AddData(QStringLiteral("x"), QStringLiteral("Value"));
    detailSet->CreateThread(QStringLiteral("\\キーボード\\"));
    Open();
    EXPECT_EQ(LastMessage(), QStringLiteral("13 : 型が一致しません。"));
    EXPECT_TRUE(dialog->isVisible());
    Click("cmdSave");
    EXPECT_EQ(shown.Count(), 2);
    EXPECT_FALSE(dialog->isVisible());
}
