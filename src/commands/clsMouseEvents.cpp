#include "commands/clsMouseEvents.h"

#include "commands/MouseMessageHook.h"
#include "support/AppError.h"

#include <QMetaMethod>

#include <cstdlib>

using namespace MouseMessage;

namespace {

// Direction number of a step by its signs, at (sy + 1) * 3 + (sx + 1); y grows downwards.
constexpr std::array<qint32, 9> DirectionOfStep = {7, 0, 1, 6, -1, 2, 5, 4, 3};

// The character of each direction number; the diagonals share "／" and "＼".
constexpr char16_t DirChars[] = u"↑／→＼↓／←＼";

constexpr int Sign(qint64 v) { return (v > 0) - (v < 0); }

} // namespace

clsMouseEvents::clsMouseEvents(QObject* vParent) : QObject(vParent) {}

clsMouseEvents::~clsMouseEvents()
{
    if (alive_ != nullptr)
        *alive_ = false;
    MouseMessageHook::Forget(this);
}

void clsMouseEvents::connectNotify(const QMetaMethod& vSignal)
{
    if (vSignal == QMetaMethod::fromSignal(&clsMouseEvents::MouseMove))
        mouseMoveHeard_ = true;
}

void clsMouseEvents::disconnectNotify(const QMetaMethod& vSignal)
{
    Q_UNUSED(vSignal);
    mouseMoveHeard_ = isSignalConnected(QMetaMethod::fromSignal(&clsMouseEvents::MouseMove));
}

void clsMouseEvents::SetTarget(quintptr vHwnd)
{
    Q_UNUSED(vHwnd);
    if (target_ == 0)
        target_ = MouseMessageHook::Install(this);
}

qint32 clsMouseEvents::ActionMove(qint32 vIndex) const
{
    if (vIndex < 0 || vIndex >= actionCount_)
        return -1;
    return moves_[size_t(vIndex)];
}

QString clsMouseEvents::GetActionDirChar(qint32 vDirection)
{
    // A character taken at position direction + 1 of the table: nothing lies before its start,
    // and past its end there is only "".
    if (vDirection < 0)
        throw AppError(AppError::InvalidArgument);
    if (vDirection >= qint32(std::size(DirChars)) - 1)
        return QString();
    return QString(QChar(DirChars[vDirection]));
}

QString clsMouseEvents::GestureText() const
{
    QString text;
    text.reserve(actionCount_);
    for (qint32 i = 0; i < actionCount_; ++i)
        text += QChar(DirChars[moves_[size_t(i)]]);
    return text;
}

void clsMouseEvents::CallResetHook()
{
    MouseMessageHook::Remove();
}

bool clsMouseEvents::FireGetMessage(quintptr vHwnd, qint32 vMessage, qint32 vWParam, qint32 vLParam,
                                    qint32 vX, qint32 vY)
{
    Q_UNUSED(vHwnd);
    Q_UNUSED(vLParam);
    if (busy_)
        return false;
    // Cleared on every way out, also when a handler throws or destroys this tracker.
    struct Frame {
        clsMouseEvents* self;
        bool alive = true;
        ~Frame()
        {
            busy_ = false;
            if (alive)
                self->alive_ = nullptr;
        }
    } frame{this};
    busy_ = true;
    alive_ = &frame.alive;

    // The window's disabled state would stop the tracker here, but the target handle stays 0,
    // so the tracker works whatever state the window is in.
    pos_ = QPoint(vX, vY);
    if (vMessage >= WM_MOUSEMOVE && vMessage <= WM_XBUTTONDBLCLK) {
        RaiseMouseEvent(vMessage, vWParam);
        if (!frame.alive)
            return false;
    }
    GestureStep(vMessage, frame.alive);
    return false;
}

void clsMouseEvents::RaiseMouseEvent(qint32 vMessage, qint32 vWParam)
{
    if (vMessage == WM_MOUSEMOVE) {
        if (mouseMoveHeard_)
            Q_EMIT MouseMove(vWParam);
        return;
    }
    if (vMessage == WM_MOUSEWHEEL) {
        Q_EMIT MouseWheelRotate(vWParam >= 0 ? 5 : 6, vWParam);
        return;
    }
    qint16 button;
    qint16* state;
    int kind;   // 0 down, 1 up, 2 double click
    if (vMessage <= WM_MBUTTONDBLCLK) {
        kind = (vMessage - WM_LBUTTONDOWN) % 3;
        switch ((vMessage - WM_LBUTTONDOWN) / 3) {
        case 0: button = 1; state = &leftButton_; break;
        case 1: button = 0; state = &rightButton_; break;
        default: button = 2; state = &middleButton_; break;
        }
    } else {
        kind = vMessage - WM_XBUTTONDOWN;
        switch ((quint32(vWParam) >> 16) & 0xFFFF) {
        case 1: button = 3; state = &side1Button_; break;
        case 2: button = 4; state = &side2Button_; break;
        default: return;
        }
    }
    switch (kind) {
    case 0:
        *state = 1;
        Q_EMIT MouseDown(button, vWParam);
        break;
    case 1:
        *state = 0;
        Q_EMIT MouseUp(button, vWParam);
        break;
    default:
        Q_EMIT MouseDblClick(button, vWParam);
        break;
    }
}

void clsMouseEvents::GestureStep(qint32 vMessage, const bool& vAlive)
{
    switch (vMessage) {
    case WM_RBUTTONDOWN:
        if (!skip_) {
            tracking_ = true;
            startPoint_ = referencePoint_ = pos_;
            actionCount_ = 0;
        }
        break;
    case WM_RBUTTONUP:
        // A plain right click (no move recorded) sets the skip flag, so the press and release
        // after it are not tracked; the one after that is a gesture again.
        if (skip_) {
            skip_ = false;
            break;
        }
        endPoint_ = pos_;
        tracking_ = false;
        if (actionCount_ != 0)
            Q_EMIT OnActionEnd(actionCount_);
        else
            skip_ = true;
        break;
    case WM_MOUSEMOVE:
        if (tracking_)
            TrackMove(vAlive);
        break;
    default:
        break;
    }
}

void clsMouseEvents::TrackMove(const bool& vAlive)
{
    const qint64 dx = qint64(pos_.x()) - referencePoint_.x();
    const qint64 dy = qint64(pos_.y()) - referencePoint_.y();
    int sx = Sign(dx);
    int sy = Sign(dy);
    // Short steps don't count and don't move the reference point, so slow movement adds up.
    // The distance must be strictly above the threshold; squares compare the same way without
    // the root, since both sides are whole numbers.
    if (!(double(dx) * double(dx) + double(dy) * double(dy) > double(stepThreshold_) * stepThreshold_))
        return;
    // Only a clearly vertical or clearly horizontal step counts (one side at least three times
    // the other); anything between leaves (0, 0), records nothing, and its distance is spent.
    const double ax = double(std::llabs(dx));
    const double ay = double(std::llabs(dy));
    if (ay / 3 < ax)
        sy = 0;
    if (ax / 3 < ay)
        sx = 0;
    // The reference point moves on whether or not a move is recorded. Moving it before the
    // recording is the same thing, and leaves nothing to do after a handler has run.
    referencePoint_ = pos_;
    RecordMove(sx, sy, vAlive);
}

void clsMouseEvents::RecordMove(int vSx, int vSy, const bool& vAlive)
{
    // Moves past the eighth are dropped; the gesture stays valid with its eight.
    if (actionCount_ >= MaxActionCount)
        return;
    const qint32 direction = DirectionOfStep[size_t((vSy + 1) * 3 + vSx + 1)];
    if (direction == -1)
        return;
    // Repeats of the same direction are one move.
    if (actionCount_ > 0 && moves_[size_t(actionCount_ - 1)] == direction)
        return;
    if (actionCount_ == 0) {
        Q_EMIT OnActionStart(direction);
        if (!vAlive)
            return;
    }
    moves_[size_t(actionCount_)] = direction;
    ++actionCount_;
    Q_EMIT OnActionMove(actionCount_, direction);
}
