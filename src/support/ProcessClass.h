#pragma once
// Window order and activation within this application. On Windows these reached other
// programs' windows through handles; here a window is one of ours, found by its title.

#include <QString>

class QWidget;

class ProcessClass {
public:
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
};
