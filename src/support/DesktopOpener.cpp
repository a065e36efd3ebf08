#include "support/DesktopOpener.h"

#include <QProcess>
#include <QStandardPaths>

namespace desktopopener {

QString OpenerProgram() { return QStandardPaths::findExecutable(QStringLiteral("xdg-open")); }

void Open(const QString& vPath, const std::function<void()>& vOnFailure)
{
    auto fail = [&vOnFailure] {
        if (vOnFailure)
            vOnFailure();
    };
    const QString program = OpenerProgram();
    if (program.isEmpty())
        return fail();
    // No parent: a process object deleted with a window would kill the viewer it started.
    auto* process = new QProcess;
    process->setProgram(program);
    process->setArguments({vPath});
    process->setStandardInputFile(QProcess::nullDevice());
    // What the opened program says goes where ours goes; kept in a pipe, it would pile up in
    // memory for as long as that program runs.
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    QObject::connect(process, &QProcess::finished, process,
                     [process, onFailure = vOnFailure](int vExitCode, QProcess::ExitStatus vStatus) {
                         if ((vStatus != QProcess::NormalExit || vExitCode != 0) && onFailure)
                             onFailure();
                         process->deleteLater();
                     });
    process->start();
    if (!process->waitForStarted()) {
        delete process;
        fail();
    }
}

} // namespace desktopopener
