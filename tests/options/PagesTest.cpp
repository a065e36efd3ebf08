// The pages that make bindings and user-made entries, driven by clicks as a user fills them.
#include "OptionsFixture.h"

#include "commands/KeyCodeClass.h"

TEST_F(OptionsTest, DropDownsOfferTheActions)
{
    Open();
    auto items = [&](const char* vName) {
        QStringList out;
        auto* combo = C<QComboBox>(vName);
        for (int i = 0; i < combo->count(); ++i)
            out.append(combo->itemText(i));
        return out;
    };
    const QStringList all = items("cboMouseLeftDClick");
    ASSERT_GT(all.size(), 5);
    EXPECT_EQ(all.first(), QStringLiteral("なし"));
    EXPECT_EQ(items("cboMouseGestureAction"), all.mid(1));
    EXPECT_EQ(items("cboShortCutKeyAction"), all.mid(1));
    EXPECT_EQ(items("cboMultiActionAction"), all.mid(1));
    EXPECT_EQ(items("cboPMenuAction"), QStringList{QStringLiteral("セパレータ")} + all.mid(1));
    EXPECT_EQ(items("cboMouseRightWheel"), QStringList({"タブの移動", "ページの移動"}));
    EXPECT_EQ(items("cboShortCutKey").size(), KeyCodeClass().KeyName()->Count());
    EXPECT_EQ(items("cboStartDocSize"), QStringList({"横幅", "ページ全体", "100%", "200%", "300%", "400%", "500%"}));
    EXPECT_EQ(C<QComboBox>("cboStartDocSize")->currentText(), QStringLiteral("ページ全体"));
}

TEST_F(OptionsTest, GestureEntry)
{
    Open();
    Page("マウスジェスチャ");
    QLabel* gesture = C<QLabel>("lblMouseGesture");
    Click("cmdMouseGestureAdd");
    EXPECT_EQ(LastMessage(), QStringLiteral("ゼスチャを入力してください。"));

    for (int i : {0, 1, 2, 3, 3})
        Click("cmdMouseGesture", i);
    EXPECT_EQ(gesture->text(), QStringLiteral("↑→↓←←"));
    Click("cmdMouseGestureBS");
    EXPECT_EQ(gesture->text(), QStringLiteral("↑→↓←"));
    Choose("cboMouseGestureAction", QStringLiteral("次ページ"));
    Click("cmdMouseGestureAdd");
    EXPECT_EQ(gesture->text(), QString());

    // The doubled stroke is a row of its own, though the recogniser never yields it.
    Click("cmdMouseGesture", 0);
    Click("cmdMouseGestureAdd");
    Click("cmdMouseGesture", 0);
    Click("cmdMouseGesture", 0);
    Click("cmdMouseGestureAdd");
    EXPECT_EQ(Rows("livMouseGesture", 1), QStringList({"↑→↓←", "↑", "↑↑"}));

    // Entering a bound text shows its action; a second registration is refused and the
    // entry stays for the user to change.
    for (int i : {0, 1, 2, 3})
        Click("cmdMouseGesture", i);
    EXPECT_EQ(C<QLabel>("lblMouseGestureDone")->text(), QStringLiteral("次ページ"));
    Click("cmdMouseGestureAdd");
    EXPECT_EQ(LastMessage(), QStringLiteral("既にゼスチャが登録されています。"));
    EXPECT_EQ(gesture->text(), QStringLiteral("↑→↓←"));
    Click("cmdMouseGestureBS");
    EXPECT_EQ(C<QLabel>("lblMouseGestureDone")->text(), QString());

    // Deleting needs a chosen row; once deleted, the text can be bound again.
    Click("cmdMouseGestureDelete");
    EXPECT_EQ(LastMessage(), QStringLiteral("削除する設定をリストから選択してください。"));
    Row("livMouseGesture", 0);
    Click("cmdMouseGestureDelete");
    EXPECT_EQ(Rows("livMouseGesture", 1), QStringList({"↑", "↑↑"}));
    Click("cmdMouseGesture", 3);
    Click("cmdMouseGestureAdd");
    EXPECT_EQ(Rows("livMouseGesture", 1), QStringList({"↑", "↑↑", "↑→↓←"}));
}

TEST_F(OptionsTest, KeyStringsWhateverTheOrderOfTicking)
{
    Open();
    Page("キーボード");
    Click("cmdShortCutKeyDelete");
    EXPECT_EQ(LastMessage(), QStringLiteral("削除する設定がありません。"));
    Choose("cboShortCutKey", QStringLiteral("J"));
    Choose("cboShortCutKeyAction", QStringLiteral("次ページ"));
    Click("cmdShortCutKeyAdd");  // a key alone is allowed
    Tick("chkShortCutKeyAlt");
    Tick("chkShortCutKeyShift");
    Tick("chkShortCutKeyCtrl");
    Choose("cboShortCutKeyAction", QStringLiteral("前ページ"));
    Click("cmdShortCutKeyAdd");
    EXPECT_EQ(Rows("livShortCutKey", 1), QStringList({"J", "Ctrl + Shift + Alt + J"}));
    EXPECT_EQ(Rows("livShortCutKey", 0), QStringList({"次ページ", "前ページ"}));

    // Unticked and ticked again in another order: the same string, already bound.
    for (const char* box : {"chkShortCutKeyCtrl", "chkShortCutKeyAlt"})
        Tick(box);
    EXPECT_EQ(C<QLabel>("lblShortCutKeyDone")->text(), QString());
    for (const char* box : {"chkShortCutKeyAlt", "chkShortCutKeyCtrl"})
        Tick(box);
    EXPECT_EQ(C<QLabel>("lblShortCutKeyDone")->text(), QStringLiteral("前ページ"));
    Click("cmdShortCutKeyAdd");
    EXPECT_EQ(LastMessage(), QStringLiteral("既にキーが登録されています。"));
    EXPECT_EQ(Rows("livShortCutKey").size(), 2);

    Row("livShortCutKey", 1);
    Click("cmdShortCutKeyDelete");
    EXPECT_EQ(C<QLabel>("lblShortCutKeyDone")->text(), QStringLiteral("前ページ"));  // shown until a change
    Click("cmdShortCutKeyAdd");
    EXPECT_EQ(Rows("livShortCutKey", 1), QStringList({"J", "Ctrl + Shift + Alt + J"}));
}

TEST_F(OptionsTest, CompositeActions)
{
    Open();
    Page("複合動作");
    QLineEdit* name = C<QLineEdit>("txtMultiActionMultiActionName");
    Click("cmdMultiActionMultiActionAdd");
    EXPECT_EQ(LastMessage(), QStringLiteral("複合動作名を入力してください。"));
    Type("txtMultiActionMultiActionName", QStringLiteral("二つ進む"));
    Click("cmdMultiActionMultiActionAdd");
    EXPECT_EQ(LastMessage(), QStringLiteral("動作に1件も追加が行われていません。"));

    Choose("cboMultiActionAction", QStringLiteral("次ページ"));
    Click("cmdMultiActionActionAdd");
    Click("cmdMultiActionActionAdd");
    Choose("cboMultiActionAction", QStringLiteral("表示:見開き"));
    Click("cmdMultiActionActionAdd");
    Click("cmdMultiActionMultiActionAdd");
    // Typed with its prefix, a name is taken as it is.
    Type("txtMultiActionMultiActionName", QStringLiteral("Multi:戻る"));
    Click("cmdMultiActionActionAllDel");
    EXPECT_TRUE(Rows("livMultiActionAction").isEmpty());
    Choose("cboMultiActionAction", QStringLiteral("前ページ"));
    Click("cmdMultiActionActionAdd");
    Click("cmdMultiActionMultiActionAdd");
    Type("txtMultiActionMultiActionName", QStringLiteral("戻る"));
    Click("cmdMultiActionMultiActionAdd");
    EXPECT_EQ(LastMessage(), QStringLiteral("既に同じ名前が登録されています。"));
    EXPECT_TRUE(name->hasFocus() || !dialog->isActiveWindow());
    EXPECT_EQ(Rows("livMultiActionMultiAction"), QStringList({"Multi:二つ進む", "Multi:戻る"}));

    // A click on a composite brings its name and steps back.
    Row("livMultiActionMultiAction", 0);
    EXPECT_EQ(name->text(), QStringLiteral("Multi:二つ進む"));
    EXPECT_EQ(Rows("livMultiActionAction"), QStringList({"次ページ", "次ページ", "表示:見開き"}));
    Row("livMultiActionAction", 1);
    Click("cmdMultiActionActionDel");
    EXPECT_EQ(Rows("livMultiActionAction"), QStringList({"次ページ", "表示:見開き"}));

    Row("livMultiActionMultiAction", 1);
    Click("cmdMultiActionMultiActionDel");
    Click("cmdSave");
    const SDC group = detailSet->Thread(QStringLiteral("\\複合動作\\"));
    EXPECT_EQ(group->GetAllDataKey(), QStringLiteral("livMultiActionMultiAction,Form,動作リスト"));
    const SDC list = group->Thread(QStringLiteral("動作リスト"));
    EXPECT_EQ(list->GetAllDataKey(), QStringLiteral("Multi:二つ進む"));
    EXPECT_EQ(list->Thread(QStringLiteral("Multi:二つ進む"))->GetAllDataValue(), QStringLiteral("次ページ,次ページ,表示:見開き"));
    // The new name is an action from now on.
    EXPECT_TRUE(action->ActionName()->Exists(QStringLiteral("Multi:二つ進む")));
    EXPECT_FALSE(action->ActionName()->Exists(QStringLiteral("Multi:戻る")));
}

TEST_F(OptionsTest, ReadSettings)
{
    Open();
    Page("読み込み");
    EXPECT_EQ(C<QLineEdit>("txtReadSetName")->text(), QStringLiteral("読み込み1"));
    EXPECT_EQ(C<QLineEdit>("txtReadFile")->text(), QStringLiteral("*.xdw;*.tif"));
    Click("cmdReadAdd");
    EXPECT_EQ(LastMessage(), QStringLiteral("フォルダ名を入力してください。"));
    Type("txtReadFolder", QStringLiteral("/srv/文書"));
    Type("txtReadFile", QString());
    Click("cmdReadAdd");
    EXPECT_EQ(LastMessage(), QStringLiteral("対象ファイルを入力してください。"));
    Type("txtReadFile", QStringLiteral("*.xdw"));
    Type("txtReadSetName", QStringLiteral("Read:"));
    Click("cmdReadAdd");
    EXPECT_EQ(LastMessage(), QStringLiteral("設定名を入力してください。"));
    Type("txtReadSetName", QStringLiteral("Read:受付"));
    Tick("chkReadLowerFolder");
    Click("cmdReadAdd");
    EXPECT_EQ(shown.Count(), 3);

    // "読み込み1" stands ready again when the page is shown, and is refused the second time.
    Page("動作");
    Page("読み込み");
    Type("txtReadFolder", QStringLiteral("/srv"));
    Click("cmdReadAdd");
    Page("動作");
    Page("読み込み");
    Type("txtReadFolder", QStringLiteral("/srv"));
    Click("cmdReadAdd");
    EXPECT_EQ(LastMessage(), QStringLiteral("既に同じ設定名が登録されています。"));
    EXPECT_EQ(Rows("livReadFolder"), QStringList({"Read:受付", "Read:読み込み1"}));
    EXPECT_EQ(Rows("livReadFolder", 2), QStringList({"する", "しない"}));

    Row("livReadFolder", 0);
    EXPECT_EQ(C<QLineEdit>("txtReadFolder")->text(), QStringLiteral("/srv/文書"));
    EXPECT_TRUE(C<QCheckBox>("chkReadLowerFolder")->isChecked());
    Click("cmdReadDel");
    Type("txtReadSetName", QStringLiteral("受付"));
    Click("cmdReadAdd");
    EXPECT_EQ(Rows("livReadFolder"), QStringList({"Read:読み込み1", "Read:受付"}));
}

TEST_F(OptionsTest, PopupRows)
{
    Open();
    Page("ポップアップメニュー");
    EXPECT_EQ(C<QComboBox>("cboPMenuAction")->currentText(), QStringLiteral("セパレータ"));
    Type("txtPMenuName", QString());
    Click("cmdPMenuAdd");
    EXPECT_EQ(LastMessage(), QStringLiteral("表示名を入力してください。"));
    Type("txtPMenuName", QStringLiteral("-"));
    Click("cmdPMenuAdd");
    Choose("cboPMenuAction", QStringLiteral("次ページ"));
    EXPECT_EQ(C<QLineEdit>("txtPMenuName")->text(), QStringLiteral("次ページ"));
    Type("txtPMenuShortcutKey", QStringLiteral("N"));
    Click("cmdPMenuAdd");
    Choose("cboPMenuAction", QStringLiteral("前ページ"));
    Type("txtPMenuShortcutKey", QString());
    Click("cmdPMenuAdd");
    EXPECT_EQ(Rows("livPMenuList"), QStringList({"セパレータ", "次ページ", "前ページ"}));
    EXPECT_EQ(Rows("livPMenuList", 2), QStringList({"", "N", ""}));

    Row("livPMenuList", 0);
    Click("cmdPMenuUp");
    Row("livPMenuList", 2);
    Click("cmdPMenuDown");
    EXPECT_EQ(Rows("livPMenuList"), QStringList({"セパレータ", "次ページ", "前ページ"}));
    Click("cmdPMenuUp");
    Click("cmdPMenuUp");
    EXPECT_EQ(Rows("livPMenuList"), QStringList({"前ページ", "セパレータ", "次ページ"}));
    EXPECT_EQ(C<QTreeWidget>("livPMenuList")->currentItem()->text(0), QStringLiteral("前ページ"));
    Row("livPMenuList", 1);
    Click("cmdPMenuDel");
    Click("cmdSave");
    const SDC rows = detailSet->Thread(QStringLiteral("\\ポップアップメニュー\\"))->Thread(QStringLiteral("livPMenuList"))
                         ->Thread(QStringLiteral("ListItem"));
    ASSERT_EQ(rows->Count(), 2);
    EXPECT_EQ(rows->ThreadOfNumber(2)->Thread(QStringLiteral("SubItem"))->GetAllDataValue(), QStringLiteral("次ページ,N"));
}

// Rows read from the settings count for the duplicate tests as soon as their page is shown.
TEST_F(OptionsTest, StoredBindingsAreKnownToTheirPages)
{
    const SDC keys = detailSet->CreateThread(QStringLiteral("\\キーボード\\"));
    const SDC row = keys->CreateThread(QStringLiteral("livShortCutKey"))->CreateThread(QStringLiteral("ListItem"))->CreateThread();
    row->AddData(QStringLiteral("前ページ"), QStringLiteral("Text"));
    row->CreateThread(QStringLiteral("SubItem"))->AddData(QStringLiteral("Ctrl + J"));
    Open();
    Page("キーボード");
    EXPECT_EQ(Rows("livShortCutKey", 1), QStringList{QStringLiteral("Ctrl + J")});
    Choose("cboShortCutKey", QStringLiteral("J"));
    Tick("chkShortCutKeyCtrl");
    EXPECT_EQ(C<QLabel>("lblShortCutKeyDone")->text(), QStringLiteral("前ページ"));
    Click("cmdShortCutKeyAdd");
    EXPECT_EQ(LastMessage(), QStringLiteral("既にキーが登録されています。"));
}
