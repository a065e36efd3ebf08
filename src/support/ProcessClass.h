#pragma once
// Starting a program and waiting for it, and window order and activation within this
// application. On Windows the window helpers reached other programs' windows through handles;
// here a window is one of ours, found by its title.

#include <QString>

class QWidget;

class ProcessClass {
public:
    bool StopFlag() const { return stopFlag_; }
    void SetStopFlag(bool v) { stopFlag_ = v; }
    bool WaitFlag() const { return waitFlag_; }
    QString message() const { return message_; }
    void Setmessage(const QString& v) { message_ = v; }
    bool ErrorFlag() const { return errorFlag_; }
    void SetErrorFlag(bool v) { errorFlag_ = v; }
    // Run without a window of its own: the program's output is not shown anywhere.
    bool Hide() const { return hide_; }
    void SetHide(bool v) { hide_ = v; }

    // Starts the program with the command line (split as a shell would) and waits until it
    // ends, looking every 100 ms; with vEvents the window keeps being drawn and answering
    // meanwhile. StopFlag, set meanwhile (by a handler the pump runs), ends the program. True
    // when the program ended by itself; a program that can't start sets ErrorFlag and message.
    bool ExecWait(const QString& vExeFileName, const QString& vCommandLine, bool vEvents);

    // The insert-after values the window order takes: -1 above all others, -2 back among them.
    static constexpr int TopMost = -1;
    static constexpr int NoTopMost = -2;

    // Puts a top-level window above all others or back among them, without hiding it.
    static void SetWindowZOrder(QWidget* vWindow, int vOrder);
    // Brings a window to the front and gives it the keyboard.
    static void SetForceForegroundWindow(QWidget* vWindow);
    // The same for the first visible top-level window of this application with the title.
    static bool SetForceForegroundWindowCaption(const QString& vWindowName);
    static QWidget* GetWindowHandle(const QString& vWindowName);
    // Asks a window of this application to close, as its close box would: found by its class
    // (the widget's class or object name) when given, else by its title. False when none is.
    static bool CloseWindow(const QString& vClassName, const QString& vWindowName);

private:
    bool stopFlag_ = false;
    bool waitFlag_ = false;
    bool hide_ = false;
    QString message_;
    bool errorFlag_ = false;
};
