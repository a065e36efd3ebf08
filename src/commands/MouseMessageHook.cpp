#include "commands/MouseMessageHook.h"

#include "commands/clsMouseEvents.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWheelEvent>
#include <QWindow>

using namespace MouseMessage;

namespace {

// The one filter object; it belongs to the application and is put in and taken out, never
// rebuilt, so that releasing the tracker around a dialog costs nothing.
QPointer<MouseMessageHook>& Filter()
{
    static QPointer<MouseMessageHook> filter;
    return filter;
}

// The key-state bits a mouse message carries in the low word of wParam.
qint32 KeyState(Qt::MouseButtons vButtons, Qt::KeyboardModifiers vModifiers)
{
    qint32 state = 0;
    if (vButtons & Qt::LeftButton) state |= MK_LBUTTON;
    if (vButtons & Qt::RightButton) state |= MK_RBUTTON;
    if (vButtons & Qt::MiddleButton) state |= MK_MBUTTON;
    if (vButtons & Qt::XButton1) state |= MK_XBUTTON1;
    if (vButtons & Qt::XButton2) state |= MK_XBUTTON2;
    if (vModifiers & Qt::ShiftModifier) state |= MK_SHIFT;
    if (vModifiers & Qt::ControlModifier) state |= MK_CONTROL;
    return state;
}

qint32 PackWords(qint32 vLow, qint32 vHigh)
{
    return qint32((quint32(quint16(vHigh)) << 16) | quint16(vLow));
}

// Message, wParam and lParam of a mouse event; false for what Windows would not send.
bool TranslateMouse(QEvent::Type vType, const QMouseEvent& vEvent, qint32& vMessage, qint32& vWParam,
                    qint32& vLParam)
{
    qint32 highWord = 0;
    if (vType == QEvent::MouseMove) {
        vMessage = WM_MOUSEMOVE;
    } else {
        // Qt delivers the second press of a double click and then the double click itself;
        // Windows sends only the double click in its place.
        if (vType == QEvent::MouseButtonPress && (vEvent.flags() & Qt::MouseEventCreatedDoubleClick))
            return false;
        const qint32 kind = vType == QEvent::MouseButtonPress ? 0 : vType == QEvent::MouseButtonRelease ? 1 : 2;
        switch (vEvent.button()) {
        case Qt::LeftButton: vMessage = WM_LBUTTONDOWN + kind; break;
        case Qt::RightButton: vMessage = WM_RBUTTONDOWN + kind; break;
        case Qt::MiddleButton: vMessage = WM_MBUTTONDOWN + kind; break;
        case Qt::XButton1: vMessage = WM_XBUTTONDOWN + kind; highWord = 1; break;
        case Qt::XButton2: vMessage = WM_XBUTTONDOWN + kind; highWord = 2; break;
        default: return false;
        }
    }
    vWParam = PackWords(KeyState(vEvent.buttons(), vEvent.modifiers()), highWord);
    const QPointF local = vEvent.position();
    vLParam = PackWords(qRound(local.x()), qRound(local.y()));
    return true;
}

// The wheel: the turn in the high word, positive away from the user; a sideways turn has a
// message of its own, which moves the position and raises nothing.
bool TranslateWheel(const QWheelEvent& vEvent, QPoint vGlobal, qint32& vMessage, qint32& vWParam,
                    qint32& vLParam)
{
    const QPoint delta = vEvent.angleDelta();
    int turn = delta.y();
    vMessage = WM_MOUSEWHEEL;
    if (turn == 0) {
        if (delta.x() == 0)
            return false;
        turn = delta.x();
        vMessage = WM_MOUSEHWHEEL;
    }
    vWParam = PackWords(KeyState(vEvent.buttons(), vEvent.modifiers()), qBound(-32768, turn, 32767));
    vLParam = PackWords(vGlobal.x(), vGlobal.y());
    return true;
}

} // namespace

quintptr MouseMessageHook::Install(clsMouseEvents* vTracker)
{
    Remove();
    tracker_ = vTracker;
    QCoreApplication* app = QCoreApplication::instance();
    if (app == nullptr)
        return 0;
    if (Filter().isNull())
        Filter() = new MouseMessageHook(app);
    app->installEventFilter(Filter());
    installed_ = true;
    return 0;
}

void MouseMessageHook::Remove()
{
    if (installed_ && !Filter().isNull())
        QCoreApplication::instance()->removeEventFilter(Filter());
    installed_ = false;
}

void MouseMessageHook::Forget(clsMouseEvents* vTracker)
{
    if (tracker_ != vTracker)
        return;
    Remove();
    tracker_ = nullptr;
}

bool MouseMessageHook::eventFilter(QObject* vReceiver, QEvent* vEvent)
{
    // Every event of the thread passes here: the type test comes first and is all that most
    // of them cost.
    const QEvent::Type type = vEvent->type();
    switch (type) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
        break;
    default:
        return false;
    }
    if (tracker_ == nullptr || !vReceiver->isWindowType())
        return false;

    const auto* pointer = static_cast<const QSinglePointEvent*>(vEvent);
    const QPoint global = pointer->globalPosition().toPoint();
    qint32 message = 0;
    qint32 wParam = 0;
    qint32 lParam = 0;
    const bool known = type == QEvent::Wheel
        ? TranslateWheel(*static_cast<const QWheelEvent*>(vEvent), global, message, wParam, lParam)
        : TranslateMouse(type, *static_cast<const QMouseEvent*>(vEvent), message, wParam, lParam);
    if (known)
        tracker_->FireGetMessage(static_cast<QWindow*>(vReceiver)->winId(), message, wParam, lParam,
                                 global.x(), global.y());
    return false;
}
