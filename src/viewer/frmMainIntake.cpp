// frmMain: files coming in as a list in hand (the command line, a drop, automation) and through
// the open dialog. Whole folders come through the file list database (frmMainFolderRead.cpp).
#include "viewer/frmMain.h"

#include "support/AppError.h"
#include "viewer/SortSetting.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMimeData>

namespace {

const QString kOpenFilter = QStringLiteral("DocuWorksファイル (*.xdw);;TIFFファイル (*.tif)");

// The local files among dropped URLs; anything else a program may offer is not ours to open.
QStringList LocalFiles(const QMimeData* vData)
{
    QStringList files;
    if (!vData || !vData->hasUrls())
        return files;
    for (const QUrl& url : vData->urls())
        if (url.isLocalFile())
            files << url.toLocalFile();
    return files;
}

} // namespace

void frmMain::ManyFileOpen(const SDC& vFiles)
{
    if (!vFiles)
        return;
    try {
        const SDC& settings = context_.DetailSet;
        const SortSetting sort = SortSetting::Read(settings->Exists(WindowGroup) ? settings->Thread(WindowGroup) : nullptr);
        const QString mode = sort.Ascending ? QString() : QStringLiteral("DEC");
        if (sort.On && sort.ByName) {
            vFiles->Sort(mode, QStringLiteral("Value"), QStringLiteral("String"));
        } else if (sort.On) {
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
    } catch (const AppError&) {
        // An unreadable sort setting leaves the files in the order they came.
    }
    for (qint16 i = 1; i <= vFiles->Count(); ++i)
        InitialOpenFile(vFiles->DataValueOfNumber(i), vFiles->GetNumberOfKey(vFiles->DataKeyOfNumber(i)) == 1);
}

void frmMain::OpenDialog()
{
    ReleaseMouseEvents();
    QFileDialog dialog(this);
    dialog.setObjectName(QStringLiteral("OpenDialog"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    // Patterns match without regard to case, so "*.xdw" also offers "A.XDW".
    dialog.setNameFilter(kOpenFilter);
    dialog.selectNameFilter(dialog.nameFilters().value(0));
    // A cancel is no failure and shows nothing.
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
        InitialOpenFile(dialog.selectedFiles().constFirst(), true);
    CreateMouseEvents();
}

// ---- dropping files on the window ----------------------------------------------------------

void frmMain::mcDragDrop_evDragDrop(const SDC& vFiles) { ManyFileOpen(vFiles); }

void frmMain::dragEnterEvent(QDragEnterEvent* vEvent)
{
    if (LocalFiles(vEvent->mimeData()).isEmpty())
        return;
    vEvent->setDropAction(Qt::CopyAction);
    vEvent->accept();
}

void frmMain::dragMoveEvent(QDragMoveEvent* vEvent)
{
    if (LocalFiles(vEvent->mimeData()).isEmpty())
        return;
    vEvent->setDropAction(Qt::CopyAction);
    vEvent->accept();
}

// A dropped folder is not opened up: every path goes to the tabs as it is, and only the files
// of the two types become tabs.
void frmMain::dropEvent(QDropEvent* vEvent)
{
    const QStringList paths = LocalFiles(vEvent->mimeData());
    if (paths.isEmpty())
        return;
    vEvent->setDropAction(Qt::CopyAction);
    vEvent->accept();
    auto files = std::make_shared<StructuredDataClass>();
    for (const QString& path : paths)
        files->AddData(path);
    mcDragDrop_evDragDrop(files);
}
