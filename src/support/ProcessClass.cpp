#include "support/ProcessClass.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

void ProcessClass::SetWindowZOrder(QWidget* vWindow, int vOrder)
{
    if (!vWindow)
        return;
    // The flag is set on the native window: changing the widget's flags would hide and re-create
    // it, which the user sees as a flicker.
    if (QWindow* handle = vWindow->windowHandle())
        handle->setFlag(Qt::WindowStaysOnTopHint, vOrder == TopMost);
    if (vOrder == TopMost)
        vWindow->raise();
}

void ProcessClass::SetForceForegroundWindow(QWidget* vWindow)
{
    if (!vWindow)
        return;
    if (vWindow->isMinimized())
        vWindow->showNormal();
    vWindow->raise();
    vWindow->activateWindow();
}

QWidget* ProcessClass::GetWindowHandle(const QString& vWindowName)
{
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && w->windowTitle() == vWindowName)
            return w;
    return nullptr;
}

bool ProcessClass::SetForceForegroundWindowCaption(const QString& vWindowName)
{
    QWidget* window = GetWindowHandle(vWindowName);
    SetForceForegroundWindow(window);
    return window != nullptr;
}
