#pragma once
// The mouse tracker. It sees every mouse message of the user-interface thread, keeps the pointer
// position and the button states, raises one set of events with one button numbering, and
// recognises right-button strokes as gestures. Side buttons, the wheel and the wheel's click
// reach the program only through here: the page panes don't report them.
//
// Messages come in with their Windows numbers (512 to 525), so that the recogniser is one and the
// same whatever delivers them: MouseMessageHook translates Qt's events, tests feed numbers.
//
// Button numbers: 0 right, 1 left, 2 middle, 3 and 4 side, 5 wheel away, 6 wheel towards.
// Direction numbers: 0 up, 2 right, 4 down, 6 left (odd numbers are the diagonals, which the
// recogniser never produces), -1 none.

#include <QObject>
#include <QPoint>
#include <QString>

#include <array>

// The message numbers the tracker understands; everything else only moves the position.
namespace MouseMessage {
inline constexpr qint32 WM_MOUSEMOVE = 512;
inline constexpr qint32 WM_LBUTTONDOWN = 513;
inline constexpr qint32 WM_LBUTTONUP = 514;
inline constexpr qint32 WM_LBUTTONDBLCLK = 515;
inline constexpr qint32 WM_RBUTTONDOWN = 516;
inline constexpr qint32 WM_RBUTTONUP = 517;
inline constexpr qint32 WM_RBUTTONDBLCLK = 518;
inline constexpr qint32 WM_MBUTTONDOWN = 519;
inline constexpr qint32 WM_MBUTTONUP = 520;
inline constexpr qint32 WM_MBUTTONDBLCLK = 521;
inline constexpr qint32 WM_MOUSEWHEEL = 522;
inline constexpr qint32 WM_XBUTTONDOWN = 523;
inline constexpr qint32 WM_XBUTTONUP = 524;
inline constexpr qint32 WM_XBUTTONDBLCLK = 525;
inline constexpr qint32 WM_MOUSEHWHEEL = 526;
// Key-state bits of a mouse message's wParam; side buttons put 1 or 2 in its high word.
inline constexpr qint32 MK_LBUTTON = 0x01;
inline constexpr qint32 MK_RBUTTON = 0x02;
inline constexpr qint32 MK_SHIFT = 0x04;
inline constexpr qint32 MK_CONTROL = 0x08;
inline constexpr qint32 MK_MBUTTON = 0x10;
inline constexpr qint32 MK_XBUTTON1 = 0x20;
inline constexpr qint32 MK_XBUTTON2 = 0x40;
}

class clsMouseEvents : public QObject {
    Q_OBJECT
public:
    explicit clsMouseEvents(QObject* vParent = nullptr);
    // Takes the hook and the process-wide reference with it when they are this tracker's.
    ~clsMouseEvents() override;

    // Last pointer position in screen pixels, and the button states (1 pressed, 0 released).
    qint32 x() const { return pos_.x(); }
    qint32 y() const { return pos_.y(); }
    qint16 RightButton() const { return rightButton_; }
    qint16 LeftButton() const { return leftButton_; }
    qint16 MiddleButton() const { return middleButton_; }
    qint16 Side1Button() const { return side1Button_; }
    qint16 Side2Button() const { return side2Button_; }

    // Writing any handle makes this the process-wide tracker and (re)installs the hook. What is
    // kept is what the installing routine returns, 0, so Target reads 0 and every write installs
    // again. The value itself is never looked at; the window passes its winId().
    quintptr Target() const { return target_; }
    void SetTarget(quintptr vHwnd);

    qint32 ActionCount() const { return actionCount_; }
    // Direction of recorded move vIndex (from 0), -1 outside the recorded moves.
    qint32 ActionMove(qint32 vIndex) const;
    qint32 MaxAction() const { return MaxActionCount; }
    // The character of a direction, "" above 7; a negative direction raises error 5.
    static QString GetActionDirChar(qint32 vDirection);
    // The characters of the recorded moves in order: the gesture's key in the command list.
    QString GestureText() const;

    void CallResetHook();

    // One message of the thread: vWParam comes out again as the events' Vector. Always false,
    // so that nothing is swallowed.
    bool FireGetMessage(quintptr vHwnd, qint32 vMessage, qint32 vWParam, qint32 vLParam, qint32 vX, qint32 vY);

Q_SIGNALS:
    void MouseMove(qint32 Vector);
    void MouseDown(qint16 Button, qint32 Vector);
    void MouseUp(qint16 Button, qint32 Vector);
    void MouseDblClick(qint16 Button, qint32 Vector);
    void MouseWheelRotate(qint16 Button, qint32 Vector);
    void OnActionStart(qint32 MoveDir);
    void OnActionMove(qint32 MoveCount, qint32 MoveDir);
    void OnActionEnd(qint32 MoveCount);

protected:
    void connectNotify(const QMetaMethod& vSignal) override;
    void disconnectNotify(const QMetaMethod& vSignal) override;

private:
    static constexpr qint32 MaxActionCount = 8;

    void RaiseMouseEvent(qint32 vMessage, qint32 vWParam);
    // vAlive is FireGetMessage's own flag: false once a handler has destroyed this tracker.
    void GestureStep(qint32 vMessage, const bool& vAlive);
    void TrackMove(const bool& vAlive);
    void RecordMove(int vSx, int vSy, const bool& vAlive);

    quintptr target_ = 0;
    // Whether anything listens to MouseMove: the commonest message then costs no signal at all.
    bool mouseMoveHeard_ = false;
    QPoint pos_;
    qint16 rightButton_ = 0;
    qint16 leftButton_ = 0;
    qint16 middleButton_ = 0;
    qint16 side1Button_ = 0;
    qint16 side2Button_ = 0;
    qint32 stepThreshold_ = 10;
    std::array<qint32, MaxActionCount> moves_{};
    qint32 actionCount_ = 0;
    bool tracking_ = false;
    bool skip_ = false;
    QPoint startPoint_;
    QPoint endPoint_;
    QPoint referencePoint_;
    // Set while FireGetMessage runs: a handler may release this tracker (the window does around
    // every modal dialog), and the steps after that event must then leave the object alone.
    bool* alive_ = nullptr;
    // One for all trackers: while any handler runs, also inside a dialog's own event loop, no
    // tracker sees anything.
    static inline bool busy_ = false;
};
