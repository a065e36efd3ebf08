#pragma once
// The tap on the thread's message stream that feeds the mouse tracker: one application-wide
// event filter. An event travels through several widgets on its way, so it is counted once, when
// it reaches a top-level QWindow, and translated there to its Windows message number, wParam and
// screen position. Nothing is ever swallowed: every window still sees every event.
//
// Module state: one registered tracker and one installed filter, shared by the whole process.

#include <QObject>

class clsMouseEvents;

class MouseMessageHook : public QObject {
    Q_OBJECT
public:
    // Removes the filter if it is in, registers vTracker and installs the filter again. Returns
    // 0, which is what the tracker keeps as its target.
    static quintptr Install(clsMouseEvents* vTracker);
    // Takes the filter out; the registration stays until the tracker goes.
    static void Remove();
    // Called as a tracker is destroyed: when it is the registered one, the filter goes with it.
    static void Forget(clsMouseEvents* vTracker);

    static bool IsInstalled() { return installed_; }
    static clsMouseEvents* Tracker() { return tracker_; }

protected:
    bool eventFilter(QObject* vReceiver, QEvent* vEvent) override;

private:
    explicit MouseMessageHook(QObject* vParent) : QObject(vParent) {}
    static inline clsMouseEvents* tracker_ = nullptr;
    static inline bool installed_ = false;
};
