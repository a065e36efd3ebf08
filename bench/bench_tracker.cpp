// The mouse tracker's share of a mouse move: moves sent to a top-level QWindow with the tracker's
// application-wide filter installed, beside the same moves with an empty application filter in
// its place, the floor any such tap costs. The tracker is in a gesture, a right stroke going to
// and fro, so that the recogniser does its whole step and records moves now and then.

#include "commands/MouseMessageHook.h"
#include "commands/clsMouseEvents.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QWindow>
#include <benchmark/benchmark.h>

namespace {

class EmptyFilter : public QObject {
protected:
    bool eventFilter(QObject*, QEvent*) override { return false; }
};

// Moves of 7 pixels along a zigzag: every second one passes the threshold. Each event is built
// just before it is sent, on both sides: events of one device share their point until they are
// sent, so they can't be made beforehand, and Qt builds one per move anyway.
QPointF MoveAt(size_t vI)
{
    const size_t k = vI % 32;
    return QPointF(100 + 7 * double(k < 16 ? k : 32 - k), 100 + 7 * double(vI % 2));
}

void SendMoves(benchmark::State& state, QWindow& window)
{
    window.create();
    size_t i = 0;
    for (auto _ : state) {
        const QPointF at = MoveAt(i++);
        QMouseEvent move(QEvent::MouseMove, at, at, Qt::NoButton, Qt::RightButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &move);
    }
    state.SetItemsProcessed(state.iterations());
}

void MoveThroughEmptyFilter(benchmark::State& state)
{
    QWindow window;
    EmptyFilter filter;
    qApp->installEventFilter(&filter);
    SendMoves(state, window);
    qApp->removeEventFilter(&filter);
}

void MoveThroughTracker(benchmark::State& state)
{
    QWindow window;
    clsMouseEvents tracker;
    tracker.SetTarget(0);
    // In a gesture, with the handlers the window connects; it has none for plain moves.
    qint64 seen = 0;
    QObject::connect(&tracker, &clsMouseEvents::MouseDown, [&seen](qint16, qint32) { ++seen; });
    QObject::connect(&tracker, &clsMouseEvents::MouseUp, [&seen](qint16, qint32) { ++seen; });
    QObject::connect(&tracker, &clsMouseEvents::OnActionMove, [&seen](qint32, qint32) { ++seen; });
    QObject::connect(&tracker, &clsMouseEvents::OnActionEnd, [&seen](qint32) { ++seen; });
    tracker.FireGetMessage(0, MouseMessage::WM_RBUTTONDOWN, MouseMessage::MK_RBUTTON, 0, 100, 100);
    SendMoves(state, window);
    benchmark::DoNotOptimize(seen);
    tracker.CallResetHook();
}

// What the filter costs an event that isn't the mouse's.
void OtherEventThroughEmptyFilter(benchmark::State& state)
{
    QWindow window;
    EmptyFilter filter;
    qApp->installEventFilter(&filter);
    QEvent event(QEvent::User);
    for (auto _ : state)
        QCoreApplication::sendEvent(&window, &event);
    qApp->removeEventFilter(&filter);
}

void OtherEventThroughTracker(benchmark::State& state)
{
    QWindow window;
    clsMouseEvents tracker;
    tracker.SetTarget(0);
    QEvent event(QEvent::User);
    for (auto _ : state)
        QCoreApplication::sendEvent(&window, &event);
    tracker.CallResetHook();
}

} // namespace

BENCHMARK(MoveThroughEmptyFilter);
BENCHMARK(MoveThroughTracker);
BENCHMARK(OtherEventThroughEmptyFilter);
BENCHMARK(OtherEventThroughTracker);
