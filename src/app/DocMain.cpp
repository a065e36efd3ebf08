// marnoquill-doc: DocuWorks files on the command line, for those who need their pages and text
// without the window.
#include "app/DocCommand.h"

#include <QGuiApplication>

#include <cstdio>
#include <unistd.h>

int main(int argc, char** argv)
{
    // Pages are drawn off screen; a terminal without a display must do.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Errors reach the user as one line each; the toolkit's own chatter would break that.
    qInstallMessageHandler([](QtMsgType vType, const QMessageLogContext&, const QString& vText) {
        if (vType == QtFatalMsg)
            std::fputs(qPrintable(vText + u'\n'), stderr);
    });
    QGuiApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return RunDocCommand(QGuiApplication::arguments().mid(1), out, err, ::isatty(STDERR_FILENO) != 0);
}
