// The tracker fed with messages by number, as the hook would feed it.

#include "commands/MouseMessageHook.h"
#include "commands/clsMouseEvents.h"
#include "MouseEventLog.h"

#include <gtest/gtest.h>

#include <memory>

using namespace MouseMessage;

namespace {

struct Tracked {
    clsMouseEvents t;
    MouseEventLog log;
    Tracked() { log.Watch(t); }
    void Send(qint32 vMessage, qint32 vX, qint32 vY, qint32 vWParam = 0) { t.FireGetMessage(0, vMessage, vWParam, 0, vX, vY); }
    void Press(qint32 vX, qint32 vY) { Send(WM_RBUTTONDOWN, vX, vY, MK_RBUTTON); }
    void Move(qint32 vX, qint32 vY) { Send(WM_MOUSEMOVE, vX, vY, MK_RBUTTON); }
    void Release(qint32 vX, qint32 vY) { Send(WM_RBUTTONUP, vX, vY); }
    QStringList Ends() const { return log.WithoutMoves().filter(QStringLiteral("End")); }
};

TEST(MouseGesture, OnlyStepsBeyondTenPixelsAndThreeToOneCount)
{
    struct Case { int dx, dy; const char16_t* text; };
    const Case cases[] = {
        {10, 0, u""}, {11, 0, u"→"}, {-11, 0, u"←"}, {0, -10, u""}, {0, -11, u"↑"}, {0, 11, u"↓"},
        {6, 8, u""}, {4, 12, u"↓"}, {-4, -12, u"↑"}, {5, 12, u""}, {12, -5, u""}, {12, -4, u"→"},
        {30, 30, u""}, {-300, 300, u""},   // 45 degrees, however long
    };
    for (const Case& c : cases) {
        Tracked g;
        g.Press(500, 500);
        g.Move(500 + c.dx, 500 + c.dy);
        EXPECT_EQ(g.t.GestureText(), QString::fromUtf16(c.text)) << c.dx << "," << c.dy;
    }
}

TEST(MouseGesture, ShortStepsAddUpButAnUncountedStepSpendsItsDistance)
{
    Tracked g;
    g.Press(0, 0);
    g.Move(4, 0);
    g.Move(8, 0);
    g.Move(12, 0);   // 12 from the press point: the reference point stayed
    g.Move(32, 20);  // between the axes: no move, but the reference point moves on
    g.Move(32, 28);  // 8 down from there: too short
    EXPECT_EQ(g.t.GestureText(), QStringLiteral("→"));
    g.Move(32, 39);
    EXPECT_EQ(g.t.GestureText(), QStringLiteral("→↓"));
}

TEST(MouseGesture, RepeatsCollapseAndTheReleaseEndsAfterMouseUp)
{
    Tracked g;
    g.Press(100, 100);
    for (QPoint p : {QPoint(120, 100), QPoint(140, 100), QPoint(140, 80), QPoint(160, 80)})
        g.Move(p.x(), p.y());
    g.Release(160, 80);
    EXPECT_EQ(g.log.WithoutMoves(), (QStringList{"Down 0 2", "Start 2 0", "Action 1 2", "Action 2 0",
                                                 "Action 3 2", "Up 0 0", "End 3 0"}));
    EXPECT_EQ(g.t.ActionMove(1), 0);
    EXPECT_EQ(g.t.ActionMove(3), -1);
}

TEST(MouseGesture, TheNinthMoveIsDroppedAndTheGestureStaysValid)
{
    Tracked g;
    g.Press(0, 0);
    for (int i = 1; i <= 9; ++i)
        g.Move(20 * ((i + 1) / 2), 20 * (i / 2));   // right, down, right, ...
    EXPECT_EQ(g.t.GestureText(), QStringLiteral("→↓→↓→↓→↓"));
    EXPECT_EQ(g.t.ActionMove(8), -1);
    g.Release(0, 0);
    EXPECT_EQ(g.Ends(), QStringList{"End 8 0"});
}

TEST(MouseGesture, APlainRightClickMakesTheNextPressAndReleaseNoGesture)
{
    Tracked g;
    auto strokeRight = [&] { g.Press(0, 0); g.Move(50, 0); g.Release(50, 0); };
    g.Press(0, 0);
    g.Release(0, 0);      // a plain click: the skip flag goes up
    strokeRight();        // so this one is not tracked, and its release clears the flag
    g.Press(0, 0);
    g.Move(30, 30);       // a 45-degree stroke records nothing: a plain click again
    g.Release(30, 30);
    strokeRight();        // skipped
    strokeRight();        // counts
    EXPECT_EQ(g.Ends(), QStringList{"End 1 0"});
    EXPECT_EQ(g.log.WithoutMoves().filter(QStringLiteral("Down 0")).size(), 5);
}

// An action may open a dialog from a handler: the window takes the tracker out and makes a new
// one afterwards, and the messages pumped meanwhile reach no tracker at all.
TEST(MouseEvents, AHandlerSeesNothingOfWhatItPumpsAndMayReplaceTheTracker)
{
    auto first = std::make_unique<Tracked>();
    first->t.SetTarget(1);
    std::unique_ptr<Tracked> next;
    QObject::connect(&first->t, &clsMouseEvents::OnActionEnd, [&] {
        first->Send(WM_MOUSEMOVE, 900, 900);
        first->t.CallResetHook();
        first.reset();
        next = std::make_unique<Tracked>();
        next->t.SetTarget(1);
        next->Send(WM_LBUTTONDOWN, 900, 900);
    });
    first->Press(0, 0);
    first->Move(20, 0);
    first->Release(20, 0);
    ASSERT_TRUE(next && !first);
    EXPECT_TRUE(MouseMessageHook::Tracker() == &next->t && MouseMessageHook::IsInstalled());
    EXPECT_EQ(next->t.LeftButton(), 0);
    next->Send(WM_MOUSEMOVE, 3, 4);   // the busy word was cleared on the way out
    EXPECT_EQ(next->t.x(), 3);
    next.reset();
    EXPECT_TRUE(MouseMessageHook::Tracker() == nullptr && !MouseMessageHook::IsInstalled());
}

} // namespace
