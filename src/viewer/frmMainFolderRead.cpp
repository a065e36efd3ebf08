// frmMain: opening every file of a folder. The walk writes its finds into the file list database
// and the tabs are opened from a statement over it, sorted by SQLite when the settings ask, so
// that a folder of any size holds no list in memory. The walk and the open loop give the event
// loop turns, so the window repaints and a close request can stop the read.
#include "viewer/frmMain.h"

#include "filelist/AppFileListClass.h"
#include "settings/SettingsThreads.h"
#include "support/AppError.h"
#include "support/DirClass.h"
#include "viewer/BrowseDir.h"
#include "viewer/SortSetting.h"
#include "viewer/TabStrip.h"

#include <QCoreApplication>
#include <QScopeGuard>
#include <QStatusBar>

namespace {

const QString kReadGroup = QStringLiteral("\\読み込み\\");
const QString kNoFiles = QStringLiteral("フォルダ読み込み : ファイルは0個でした｡ ");
const QString kSubDirsToo = QStringLiteral("する");
constexpr double kRetrySec = 3.0;  // a virus scanner may hold the new file or folder a moment

void PlainMessage(const QString& vText)
{
    MessagePresenter::Current().Present({MessagePresenter::Kind::Plain, frmMain::Caption, vText});
}

// Clears a flag however the scope is left, so that a failed read never leaves the window
// unable to close or to read again.
class FlagScope {
public:
    explicit FlagScope(bool& vFlag) : flag_(vFlag) { flag_ = true; }
    ~FlagScope() { flag_ = false; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

private:
    bool& flag_;
};

} // namespace

QString frmMain::FileListDbPath() const
{
    const QString folder = DirClass::AddYen(context_.AppDataPath) + QStringLiteral("temp/filelist");
    if (!DirClass::ExistsDir(folder))
        DirClass::CreateFolder(folder, kRetrySec);
    return DirClass::AddYen(folder) + QStringLiteral("Marnoquill_FileList_")
           + QString::number(CommonLibClass::GetProcessId()) + QStringLiteral(".db");
}

void frmMain::FindFile(const QString& vFileName, const QString& vPath)
{
    fileList_->AddFileList(procNo_, vPath, vFileName, findNo_);
    ++findNo_;
    QCoreApplication::processEvents();
}

// The walk and the opening of one folder. A failure passes up with the database left behind:
// the next read of this process takes the file over.
void frmMain::ReadFolderFiles(const QString& vFolder, const QString& vPattern, bool vSubDirs)
{
    if (reading_)
        return;
    DirClass dir;
    fileList_ = std::make_unique<AppFileListClass>();
    const FlagScope reading(reading_);
    // A close asked for while nothing was read (a minimised window) must not stop this read.
    stopRead_ = false;
    try {
        fileList_->CreateDatabase(FileListDbPath());
        fileList_->BeginTransaction();
        fileList_->ClearAll();
        procNo_ = fileList_->GetProcNo(AppFileListClass::InputFileList);
        dir.SetSubDirSearchFlag(vSubDirs);
        dir.SerchFileName(vPattern, vFolder, false,
                          [this](const QString& vFileName, const QString& vPath) { FindFile(vFileName, vPath); });
        ManyFileOpenUseDb();
        fileList_->Commit();
    } catch (...) {
        fileListReader_.reset();
        fileList_.reset();
        throw;
    }
    fileList_.reset();  // closes the file, which can then go
    DirClass::DeleteFile(FileListDbPath(), kRetrySec);
}

void frmMain::ManyFileOpenUseDb()
{
    fileListReader_.reset();
    const SDC& settings = context_.DetailSet;
    const SortSetting sort = SortSetting::Read(settings->Exists(WindowGroup) ? settings->Thread(WindowGroup) : nullptr);
    if (sort.On) {
        fileListReader_ = fileList_->Sort(sort.ByName ? AppFileListClass::SortByFileName : AppFileListClass::SortByDateTime,
                                          sort.Ascending ? AppFileListClass::Ascending : AppFileListClass::Descending);
        fileCount_ = fileList_->GetFileListAfterEditRecordCount(1, fileList_->GetProcNo(AppFileListClass::InputFileList));
    } else {
        fileListReader_ = fileList_->GeteSqlOfFileListReader(fileList_->GetProcNo(AppFileListClass::InputFileList));
        fileCount_ = fileList_->GetFileListRecordCount(fileList_->GetProcNo(AppFileListClass::InputFileList));
    }

    qint32 row = 1;
    tabMain_->BeginBulkAdd();
    const auto laidOut = qScopeGuard([this] { tabMain_->EndBulkAdd(); });
    while (fileListReader_->Step() == 100) {
        if (stopRead_) {
            stopRead_ = false;
            break;
        }
        const SQLiteRow found = fileListReader_->Data();
        // The walk gives the folder with its trailing "/".
        InitialOpenFile(found.Value(QStringLiteral("Path")) + found.Value(QStringLiteral("FileName")), row == 1);
        ++row;
        if (row % 10 == 0)
            QCoreApplication::processEvents();
    }
    fileListReader_.reset();
}

void frmMain::FolderOpenDialog()
{
    // The read's own pumps may let a key or stroke ask for another; one database at a time.
    if (reading_)
        return;
    try {
        ReleaseMouseEvents();
        const SDC& settings = context_.DetailSet;
        const QString last = settings->Exists(QStringLiteral("OpenFolder")) ? settings->DataValue(QStringLiteral("OpenFolder"))
                                                                             : QStringLiteral(" ");
        const QString folder = BrowseForFolder(this, QStringLiteral("フォルダ内のファイルを全て開く"), last);
        CreateMouseEvents();
        if (folder.isEmpty())
            return;
        ReadFolderFiles(folder, QStringLiteral("*.xdw"), false);
        if (settings->Exists(QStringLiteral("OpenFolder")))
            settings->SetDataValue(QStringLiteral("OpenFolder"), folder);
        else
            settings->AddData(folder, QStringLiteral("OpenFolder"));
    } catch (const AppError& e) {
        PlainMessage(e.Description());
    }
}

void frmMain::ReadFolder(const QString& vAction)
{
    bool& busy = context_.ReadFolderBusy;
    if (busy)
        return;
    busy = true;
    try {
        const SDC& settings = context_.DetailSet;
        // Left busy, as it always was: with no read settings at all there is nothing to read.
        if (!settings->Exists(kReadGroup))
            return;
        const SDC rows = settingsthreads::ListRows(settings->Thread(kReadGroup), QStringLiteral("livReadFolder"));
        bool found = false;
        fileCount_ = 0;
        for (const QString& key : rows->RefDataKey()) {
            const SDC entry = settingsthreads::Child(rows, key);
            if (entry->DataValue(QStringLiteral("Text")) != vAction)
                continue;
            const SDC sub = settingsthreads::Child(entry, QStringLiteral("SubItem"));
            ReadFolderFiles(sub->DataValue(QStringLiteral("1")), sub->DataValue(QStringLiteral("3")),
                            sub->DataValue(QStringLiteral("2")) == kSubDirsToo);
            found = true;
            break;
        }
        // Also after a failed look-up, so that one may show both.
        if (fileCount_ == 0)
            CommonLibClass::PanelTextOut(statusBar(), 1, kNoFiles);
        if (!found)
            CommonLibClass::ErrMsgBox(QStringLiteral("読み込み設定が見つかりません。(動作 : ") + vAction + QStringLiteral(")"));
    } catch (const AppError& e) {
        PlainMessage(e.Description());
    }
    busy = false;
}
