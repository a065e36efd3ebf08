#pragma once
// The application object: its constructor brings the whole program up, step by step, and its
// four public operations are what other programs may ask of a running Marnoquill.

#include "viewer/AppContext.h"

#include <QPointer>
#include <QStringList>

#include <memory>

class frmMain;

class MarnoquillClass {
public:
    // vArguments: the program's command line as the shell cut it, the program first.
    explicit MarnoquillClass(const QStringList& vArguments = {});
    ~MarnoquillClass();
    MarnoquillClass(const MarnoquillClass&) = delete;
    MarnoquillClass& operator=(const MarnoquillClass&) = delete;

    void FileOpen(const QString& vFileName, bool vSelected);
    void ManyFileOpen(const QStringList& vFiles);
    void ExecAction(const QString& vAction);
    QString GetFileNameOfSelectedTab() const;

    // The process's life: start-up, then serving until the main window closes. A start-up step
    // that fails has shown its message, and the process stays up with what was built, so that
    // a caller that made it can still reach it.
    static int Serve(const QStringList& vArguments);

    frmMain* MainForm() const;
    AppContext& Context() { return *context_; }
    // The step at which start-up stopped, "" when it went through.
    QString FailedStep() const { return failedStep_; }

private:
    void ExecCommandLine(const QStringList& vArguments);
    // The main window, or 91 when start-up stopped before it was made.
    frmMain& Form() const;

    std::unique_ptr<AppContext> context_;
    QPointer<frmMain> form_;
    QString failedStep_;
};
