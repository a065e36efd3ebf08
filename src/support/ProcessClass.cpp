#include "support/ProcessClass.h"

#include <QApplication>
#include <QProcess>
#include <QScopeGuard>
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

bool ProcessClass::CloseWindow(const QString& vClassName, const QString& vWindowName)
{
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (!w->isVisible())
            continue;
        const bool byClass = !vClassName.isEmpty()
                             && (QLatin1String(w->metaObject()->className()) == vClassName || w->objectName() == vClassName);
        if (byClass || (vClassName.isEmpty() && w->windowTitle() == vWindowName)) {
            w->close();  // asked, as WM_CLOSE asks: the window may still refuse
            return true;
        }
    }
    return false;
}

bool ProcessClass::SetForceForegroundWindowCaption(const QString& vWindowName)
{
    QWidget* window = GetWindowHandle(vWindowName);
    SetForceForegroundWindow(window);
    return window != nullptr;
}

bool ProcessClass::ExecWait(const QString& vExeFileName, const QString& vCommandLine, bool vEvents)
{
    QProcess process;
    process.setProgram(vExeFileName);
    process.setArguments(QProcess::splitCommand(vCommandLine));
    // Without a window of its own the program's output goes nowhere; shown, it goes to ours.
    process.setProcessChannelMode(hide_ ? QProcess::SeparateChannels : QProcess::ForwardedChannels);
    if (hide_) {
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
    }
    process.start();
    if (!process.waitForStarted()) {
        errorFlag_ = true;
        message_ = process.errorString();
        return false;
    }
    waitFlag_ = true;
    const auto done = qScopeGuard([this] { waitFlag_ = false; });
    // The pump may see the end before the wait does; a finished process then makes every wait
    // fail at once, so the state is what the loop asks.
    while (process.state() != QProcess::NotRunning && !process.waitForFinished(100)) {
        if (vEvents)
            QCoreApplication::processEvents();
        if (stopFlag_) {
            process.kill();
            process.waitForFinished();
            return false;
        }
    }
    return true;
}
