#include "commands/AppActionClass.h"
#include "commands/AppArrangementClass.h"
#include "commands/AppCommandListClass.h"
#include "commands/RecordingViewer.h"
#include "common/RecordingPresenter.h"

#include <gtest/gtest.h>

using namespace settingstree;

namespace {

QStringList FixedNames()
{
    QStringList names{"なし"};
    for (const auto& row : FixedActionCalls)
        names.append(row.first);
    return names;
}

// Names in list order, after checking that each entry's key is its value.
QStringList Names(const SDC& vList)
{
    for (const QString& key : vList->RefDataKey())
        EXPECT_EQ(vList->DataValue(key), key);
    return vList->RefDataKey();
}

void SetSiblingLink(const SDC& vRoot, const QString& vValue)
{
    Group(vRoot, "\\動作\\")->CreateThread("chkActArrangement")->AddData(vValue, "Value");
}

class FakeSibling : public BrackenfoldObject {
public:
    bool Refuses = false;
    void DefaultLoadSetting() override {}
    SDC GetProcList() override
    {
        if (Refuses)
            throw AppError(440, "refused");
        auto list = std::make_shared<StructuredDataClass>();
        list->AddData("月次整理", "P1");
        list->AddData("印刷", "P2");
        return list;
    }
    // The listing never runs a process; the rest of the sibling is the plugin tests' matter.
    QString SearchProcName(const QString& vName) override { return vName; }
    void SetLogSet(const QString&) override {}
    BrackenfoldMessages& Msg() override { throw AppError(AppError::ObjectNotSet); }
    QVariant GetLogOut(const QString&) override { return {}; }
    SDC FileList() override { return nullptr; }
    void ClearExecData() override {}
    void EntryExecProc(const QString&) override {}
    void ExecProc() override {}
};

} // namespace

TEST(ActionName, FamiliesFollowTheFixedRowsAndTheListsFollowTheLiveTree)
{
    ScopedRecordingPresenter shown;
    SDC settings = std::make_shared<StructuredDataClass>();
    AppActionClass actions(settings);
    EXPECT_EQ(Names(actions.ActionName()), FixedNames());
    EXPECT_EQ(Names(actions.WheelActionName()), QStringList({"タブの移動", "ページの移動"}));

    // The options dialog saves by putting a new tree in the variable.
    settings = std::make_shared<StructuredDataClass>();
    SetSiblingLink(settings, "1");  // switched on, but no sibling can be created
    AddComposite(settings, "Multi:見開き右左", {"表示:見開き", "表示方向:右左"});
    const SDC read = Group(settings, "\\読み込み\\");
    AddRow(read, "livReadFolder", "Read:月報", {"/srv/月報", "する", "*.xdw"});
    AddRow(read, "livReadFolder", "Read:FAX", {"/srv/fax", "しない", "*.tif"});
    actions.LoadAction();
    EXPECT_EQ(Names(actions.ActionName()), FixedNames() + QStringList({"Read:月報", "Read:FAX", "Multi:見開き右左"}));
    EXPECT_EQ(actions.WheelActionName()->Count(), 2);
    EXPECT_EQ(shown.Count(), 0);  // an absent sibling is no failure
}

TEST(ActionName, SiblingProcessesAreOfferedOnlyWhenSwitchedOnAndTheSiblingAnswers)
{
    auto sibling = std::make_shared<FakeSibling>();
    const auto previous = AppArrangementClass::InstallCreator([&](const QString& vProgId) {
        EXPECT_EQ(vProgId, "BrackenfoldDll.BrackenfoldClass");
        return sibling;
    });
    const SDC settings = std::make_shared<StructuredDataClass>();
    AddRow(Group(settings, "\\読み込み\\"), "livReadFolder", "Read:月報", {"/srv", "する", "*"});
    const QStringList read = {"Read:月報"};

    SetSiblingLink(settings, "1");
    AppActionClass actions(settings);
    EXPECT_EQ(Names(actions.ActionName()), FixedNames() + QStringList({"Brackenfold:月次整理", "Brackenfold:印刷"}) + read);
    SetSiblingLink(settings, "0");
    actions.LoadAction();
    EXPECT_EQ(Names(actions.ActionName()), FixedNames() + read);
    SetSiblingLink(settings, "1");
    sibling->Refuses = true;
    actions.LoadAction();
    EXPECT_EQ(Names(actions.ActionName()), FixedNames() + read);

    AppArrangementClass::InstallCreator(previous);
}

TEST(CommandList, FlattensMouseWordsGesturesAndKeysIntoOneTable)
{
    const SDC settings = std::make_shared<StructuredDataClass>();
    const QStringList controls = {"cboMouseLeftDClick", "cboMouseWheelClick", "cboMouse4thClick",
                                  "cboMouse5thClick", "cboMouseRightWheel"};
    const QStringList triggers = {"左ダブルクリック", "ホイールクリック", "第4クリック", "第5クリック", "右ボタンホイール"};
    const QStringList stored = {"画面更新", "なし", "次のタブ", "前のタブ", "ページの移動"};
    for (int i = 0; i < controls.size(); ++i)
        Group(settings, "\\マウス\\")->CreateThread(controls[i])->AddData(stored[i], "Text");
    AddRow(Group(settings, "\\マウスジェスチャ\\"), "livMouseGesture", "次ページ", {"→"});
    AddRow(Group(settings, "\\マウスジェスチャ\\"), "livMouseGesture", "Multi:見開き右左", {"↓→"});
    AddRow(Group(settings, "\\キーボード\\"), "livShortCutKey", "終了", {"Ctrl + Shift + A"});

    AppCommandListClass commands;
    commands.RefDetailSet(settings);
    commands.CreateCommandList();
    const SDC list = commands.CommandList();
    for (int i = 0; i < triggers.size(); ++i)
        EXPECT_EQ(list->DataValue(triggers[i]), stored[i]) << triggers[i].toStdString();
    EXPECT_EQ(list->DataValue("→"), "次ページ");
    EXPECT_EQ(list->DataValue("↓→"), "Multi:見開き右左");
    EXPECT_EQ(list->DataValue("Ctrl + Shift + A"), "終了");
    EXPECT_EQ(list->DataValue("←"), "");  // unbound: quietly nothing
    EXPECT_EQ(list->Count(), 8);

    // A rebuild starts from nothing: what the new tree lacks is gone.
    commands.RefDetailSet(std::make_shared<StructuredDataClass>());
    commands.CreateCommandList();
    EXPECT_EQ(list->Count(), 0);
}
