// frmMain: handing the shown file to the sibling product, which runs one of its processes on it.
#include "viewer/frmMain.h"

#include "commands/AppArrangementClass.h"
#include "viewer/TabStrip.h"

#include <QLabel>

namespace {

// Process-wide, as the one hand-over that may run. A hand-over that fails leaves it up, so that
// no other runs until the program starts again: the sibling may be left half-way.
bool arrangementBusy = false;

} // namespace

void frmMain::ArrangementExec(const QString& vProcName)
{
    if (arrangementBusy)
        return;
    arrangementBusy = true;
    try {
        AppArrangementClass arrangement;
        if (tabMain_->Count() >= 1) {
            if (const auto file = SelectedFile())
                arrangement.AddFile(file->FileName());
        } else {
            // Processes that need no input still run; the name is fixed.
            arrangement.AddFile(QStringLiteral("C:\\dammy.xdw"));
        }
        arrangement.ExecArrange(vProcName, StatusPanel(2));
    } catch (...) {
        return;  // ends silently, the flag left up
    }
    arrangementBusy = false;
}
