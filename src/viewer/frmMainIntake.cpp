// frmMain: files coming in as a list in hand (the command line, a drop, automation) and through
// the open dialog. Folders come through the file list database, with the folder reading.
#include "viewer/frmMain.h"

#include "support/AppError.h"
#include "support/DirClass.h"

#include <QFileDialog>
#include <QFileInfo>

namespace {

// An option button of an array under "\ウインドウ\": true when item "0" holds "True".
bool FirstOptionOn(const SDC& vGroup, const QString& vControl)
{
    if (!vGroup || !vGroup->Exists(vControl))
        return true;
    const SDC control = vGroup->Thread(vControl);
    const SDC first = control && control->Exists(QStringLiteral("0")) ? control->Thread(QStringLiteral("0")) : nullptr;
    return !first || first->DataValue(QStringLiteral("Value")) == QLatin1String("True");
}

} // namespace

void frmMain::ManyFileOpen(const SDC& vFiles)
{
    if (!vFiles)
        return;
    try {
        const SDC& settings = context_.DetailSet;
        const SDC group = settings->Exists(WindowGroup) ? settings->Thread(WindowGroup) : nullptr;
        if (group && WindowSetting(QStringLiteral("chkWindowSort"), QStringLiteral("Value")) == QLatin1String("1")) {
            const QString mode = FirstOptionOn(group, QStringLiteral("optWindowSortMode")) ? QString()
                                                                                          : QStringLiteral("DEC");
            if (FirstOptionOn(group, QStringLiteral("optWindowSortTarget"))) {
                vFiles->Sort(mode, QStringLiteral("Value"), QStringLiteral("String"));
            } else {
                // By the time of last change, as text that sorts in time order.
                auto work = std::make_shared<StructuredDataClass>();
                for (qint16 i = 1; i <= vFiles->Count(); ++i) {
                    const QString path = vFiles->DataValueOfNumber(i);
                    const SDC row = work->CreateThread();
                    row->AddData(path, QStringLiteral("FileName"));
                    row->AddData(QFileInfo(path).lastModified().toString(QStringLiteral("yyyyMMdd HH:mm:ss")),
                                 QStringLiteral("DateTime"));
                }
                work->SortEx(mode, QStringLiteral("DateTime"), QStringLiteral("String"));
                vFiles->Clear();
                for (qint16 i = 1; i <= work->Count(); ++i)
                    vFiles->AddData(work->ThreadOfNumber(i)->DataValue(QStringLiteral("FileName")));
                work->Clear();
            }
        }
    } catch (const AppError&) {
        // An unreadable sort setting leaves the files in the order they came.
    }
    for (qint16 i = 1; i <= vFiles->Count(); ++i)
        InitialOpenFile(vFiles->DataValueOfNumber(i), vFiles->GetNumberOfKey(vFiles->DataKeyOfNumber(i)) == 1);
}

void frmMain::OpenDialog()
{
    ReleaseMouseEvents();
    const QString path = QFileDialog::getOpenFileName(
        this, QString(), QString(),
        QStringLiteral("DocuWorksファイル (*.xdw *.XDW);;TIFFファイル (*.tif *.TIF)"));
    if (!path.isEmpty())
        InitialOpenFile(path, true);
    CreateMouseEvents();
}

// Reading a whole folder goes through the file list database, which comes with folder reading;
// its menu item is greyed until then, and actions bound to it do nothing.
void frmMain::FolderOpenDialog() {}

void frmMain::ReadFolder(const QString& vAction)
{
    Q_UNUSED(vAction);
}

// No sibling product is linked on this system, so none of its processes is ever offered.
void frmMain::ArrangementExec(const QString& vProcName)
{
    Q_UNUSED(vProcName);
}
