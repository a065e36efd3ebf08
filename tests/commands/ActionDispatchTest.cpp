#include "commands/AppActionClass.h"
#include "commands/RecordingViewer.h"
#include "common/RecordingPresenter.h"

#include <gtest/gtest.h>

using namespace settingstree;

namespace {

class Dispatch : public ::testing::Test {
protected:
    Dispatch() { actions.RefForm(&viewer); }

    QStringList Messages() const
    {
        QStringList texts;
        for (const auto& message : shown.Shown())
            texts.append(message.text);
        return texts;
    }

    ScopedRecordingPresenter shown;
    SDC settings = std::make_shared<StructuredDataClass>();
    RecordingViewer viewer;
    AppActionClass actions{settings};
};

} // namespace

TEST_F(Dispatch, EveryFixedNameReachesItsOperationWithItsArgument)
{
    for (const auto& [name, call] : FixedActionCalls) {
        viewer.Calls.clear();
        actions.ExecAction(name);
        EXPECT_EQ(viewer.Calls, QStringList{call}) << name.toStdString();
    }
    EXPECT_EQ(shown.Count(), 0);
}

TEST_F(Dispatch, PrefixesPassTheirNamesOnAndAnythingElseDoesNothingQuietly)
{
    // "なし", an empty lookup, the wheel's own names, a stale binding, near misses.
    for (const QString name : {"なし", "", "タブの移動", "ページの移動", "消えた動作", "次ページ ", "read:月報"})
        actions.ExecAction(name);
    actions.ExecAction("Brackenfold:月次整理");
    actions.ExecAction("Read:月報");
    actions.ExecAction("Read:");  // names no setting either: ReadFolder decides
    EXPECT_EQ(viewer.Calls, QStringList({"ArrangementExec(月次整理)", "ReadFolder(Read:月報)", "ReadFolder(Read:)"}));
    EXPECT_EQ(shown.Count(), 0);
}

TEST_F(Dispatch, ACompositeRunsItsStepsInOrderThroughNestedFamilies)
{
    AddComposite(settings, "Multi:内側", {"表示方向:右左", "Read:FAX"});
    AddComposite(settings, "Multi:外側", {"表示:見開き", "Multi:内側", "Multi:消えた", "なし", "次ページ"});
    AddComposite(settings, "Multi:空", {});
    actions.ExecAction("Multi:外側");
    actions.ExecAction("Multi:空");
    EXPECT_EQ(viewer.Calls, QStringList({"SetDoubleDisp(2)", "SetDispDirection(RL)", "ReadFolder(Read:FAX)", "NextPage"}));
    // A step naming a deleted composite says so, and the composite goes on.
    EXPECT_EQ(Messages(), QStringList{"複合動作が見つかりません。(動作 : Multi:消えた)"});
}

TEST_F(Dispatch, AFailingStepEndsTheCompositeWithOneMessageAndFreesTheGate)
{
    AddComposite(settings, "Multi:A", {"次ページ", "前ページ", "終了"});
    viewer.OnCall = [](const QString& vCall) {
        if (vCall == "PreviousPage")
            throw AppError(6300, "PageCount : 失敗");
    };
    actions.ExecAction("Multi:A");
    EXPECT_EQ(viewer.Calls, QStringList({"NextPage", "PreviousPage"}));
    EXPECT_EQ(Messages(), QStringList{"6300 : PageCount : 失敗"});
    EXPECT_TRUE(shown.Last().title.isEmpty());

    viewer.OnCall = nullptr;
    actions.ExecAction("終了");
    EXPECT_EQ(viewer.Calls.last(), "EndApp");
}

TEST_F(Dispatch, AnActionTriggeredWhileAnotherRunsIsDropped)
{
    // The options dialog turns the message loop, and a key arrives meanwhile.
    AddComposite(settings, "Multi:B", {"オプション", "次ページ"});
    viewer.OnCall = [this](const QString& vCall) {
        if (vCall == "OptionWindowOpen")
            actions.ExecAction("前のタブ");
    };
    actions.ExecAction("Multi:B");
    EXPECT_EQ(viewer.Calls, QStringList({"OptionWindowOpen", "NextPage"}));
    actions.ExecAction("前のタブ");
    EXPECT_EQ(viewer.Calls.last(), "PreviousTab");
}

TEST_F(Dispatch, CompositesThatReachThemselvesEndInTheOutOfStackMessage)
{
    AddComposite(settings, "Multi:自分", {"次ページ", "Multi:自分"});
    AddComposite(settings, "Multi:甲", {"Multi:乙"});
    AddComposite(settings, "Multi:乙", {"Multi:甲"});
    actions.ExecAction("Multi:自分");
    EXPECT_GT(viewer.Calls.size(), 100);  // it did recurse, as deep as the stack allowed
    actions.ExecAction("Multi:甲");
    EXPECT_EQ(Messages(), QStringList(2, "28 : スタック領域が不足しています。"));

    viewer.Calls.clear();
    actions.ExecAction("次ページ");
    EXPECT_EQ(viewer.Calls, QStringList{"NextPage"});
}
