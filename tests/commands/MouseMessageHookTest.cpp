// Real Qt events through the application-wide filter: each reaches the tracker once, however
// many widgets it passes, with its message number, key state and screen position.

#include "commands/MouseMessageHook.h"
#include "commands/clsMouseEvents.h"
#include "MouseEventLog.h"

#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>
#include <gtest/gtest.h>

using namespace MouseMessage;

namespace {

// A top-level widget with a child over all of it that ignores the mouse, so that every event
// travels from the window to the child and on to its parent.
struct HookedWindow {
    QWidget top;
    QWidget* child = new QWidget(&top);
    clsMouseEvents tracker;
    MouseEventLog log;

    HookedWindow()
    {
        top.setGeometry(40, 60, 300, 200);
        child->setGeometry(0, 0, 300, 200);
        top.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&top));
        log.Watch(tracker);
        tracker.SetTarget(top.winId());
    }
    QWindow* Window() { return top.windowHandle(); }
    void Send(QEvent& vEvent) { QCoreApplication::sendEvent(Window(), &vEvent); }
};

TEST(MouseMessageHook, ARightStrokeOnAWindowBecomesOneGesture)
{
    HookedWindow w;
    QTest::mouseMove(w.Window(), QPoint(10, 10));
    QTest::mousePress(w.Window(), Qt::RightButton, Qt::ShiftModifier, QPoint(10, 10));
    QTest::mouseMove(w.Window(), QPoint(60, 10));
    QTest::mouseRelease(w.Window(), Qt::RightButton, {}, QPoint(60, 10));
    EXPECT_EQ(w.log.lines, (QStringList{"Move 0 0", "Down 0 6", "Move 0 2", "Start 2 0", "Action 1 2",
                                        "Up 0 0", "End 1 0"}));
    EXPECT_EQ(QPoint(w.tracker.x(), w.tracker.y()), w.Window()->mapToGlobal(QPoint(60, 10)));
    EXPECT_EQ(w.tracker.Target(), 0u);
}

TEST(MouseMessageHook, SideButtonsAndTheWheel)
{
    HookedWindow w;
    const QPointF local(5, 5);
    const QPointF global = w.Window()->mapToGlobal(local);
    // Built one at a time: events of one device share their point until they are sent.
    auto wheel = [&](int vTurn, Qt::MouseButtons vButtons) {
        QWheelEvent event(local, global, QPoint(), QPoint(0, vTurn), vButtons, {}, Qt::NoScrollPhase, false);
        w.Send(event);
    };
    QMouseEvent press(QEvent::MouseButtonPress, local, global, Qt::XButton2, Qt::XButton2, Qt::ControlModifier);
    w.Send(press);
    QMouseEvent release(QEvent::MouseButtonRelease, local, global, Qt::XButton2, Qt::NoButton, Qt::NoModifier);
    w.Send(release);
    wheel(120, Qt::RightButton);
    wheel(-240, Qt::NoButton);
    EXPECT_EQ(w.log.lines, (QStringList{QString("Down 4 %1").arg(0x20000 | MK_XBUTTON2 | MK_CONTROL),
                                        "Up 4 131072", QString("Wheel 5 %1").arg(120 * 65536 + MK_RBUTTON),
                                        QString("Wheel 6 %1").arg(-240 * 65536)}));
}

// Taken out around a dialog, a click is not seen; put back, a double click comes as Windows
// sends it, without the second press Qt delivers before it.
TEST(MouseMessageHook, ReleasedAroundADialogThenADoubleClick)
{
    HookedWindow w;
    w.tracker.CallResetHook();
    QTest::mouseClick(w.Window(), Qt::LeftButton, {}, QPoint(20, 20));
    w.tracker.SetTarget(w.top.winId());
    QTest::mouseDClick(w.Window(), Qt::LeftButton, {}, QPoint(20, 20));
    QTest::mouseClick(w.Window(), Qt::MiddleButton, {}, QPoint(20, 20));
    EXPECT_EQ(w.log.WithoutMoves(), (QStringList{"Down 1 1", "Up 1 0", "Dbl 1 1", "Up 1 0", "Down 2 16", "Up 2 0"}));
}

} // namespace
