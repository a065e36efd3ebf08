#include "viewer/MarnoquillClass.h"

#include "settings/DataSaveLoadClass.h"
#include "settings/IniFilePathClass.h"
#include "support/AppError.h"
#include "support/BusyCursor.h"
#include "viewer/AutomationService.h"
#include "viewer/CommandLineClass.h"
#include "viewer/frmMain.h"

#include <QApplication>

namespace {

const QString kStep = QStringLiteral("MarnoquillClass Class_Initialize ");

} // namespace

MarnoquillClass::MarnoquillClass(const QStringList& vArguments) : context_(std::make_unique<AppContext>())
{
    QString step = kStep + QStringLiteral("Start");
    // The hourglass from the first step until the window is about to load, also on a failure.
    BusyCursor cursor;
    try {

        step = kStep + QStringLiteral("INIファイルのパス取得");
        IniFilePathClass iniPath;
        iniPath.SetCompanyName(QStringLiteral("Ombrelark"));
        iniPath.SetApplicationName(QStringLiteral("Marnoquill"));
        iniPath.SetIniFileName(QStringLiteral("Marnoquill.ini"));
        context_->SettingsPath = iniPath.GetIniFilePathForOpen();
        context_->AppDataPath = iniPath.MyAppDataPath();

        step = kStep + QStringLiteral("処理設定のロード");
        DataSaveLoadClass loader;
        loader.SetData(context_->DetailSet);
        loader.Load(context_->SettingsPath, QStringLiteral("DetailSet"));

        // Reading and saving may use different files: the default beside the program is read
        // until the user's own copy exists, and saving always goes to the user's copy.
        step = kStep + QStringLiteral("保存用にパスをセット");
        context_->SettingsPath = iniPath.IniFilePathForSave();

        step = kStep + QStringLiteral("コマンドリストの読み込み");
        context_->CreateCommands();
        step = kStep + QStringLiteral("InitCommonControls");
        cursor.Reset();

        step = kStep + QStringLiteral("メイン画面のロード");
        form_ = new frmMain(*context_);
        form_->setAttribute(Qt::WA_DeleteOnClose);
        form_->Load();
        context_->Action->RefForm(form_);

        step = kStep + QStringLiteral("メイン画面を表示");
        form_->show();

        step = kStep + QStringLiteral("コマンドラインからの起動");
        ExecCommandLine(vArguments);

        step = kStep + QStringLiteral("End");
    } catch (const AppError& e) {
        failedStep_ = step;
        cursor.Reset();
        CommonLibClass::ErrMsgBox(e.Description() + QLatin1Char(' ') + step);
    }
}

MarnoquillClass::~MarnoquillClass()
{
    if (form_)
        delete form_.data();
}

frmMain* MarnoquillClass::MainForm() const { return form_.data(); }

frmMain& MarnoquillClass::Form() const
{
    if (!form_)
        throw AppError(AppError::ObjectNotSet);
    return *form_;
}

int MarnoquillClass::Serve(const QStringList& vArguments)
{
    // Served from the start, so that a caller that started the program through the bus reaches
    // it as soon as it can answer.
    AutomationService automation;
    automation.Register();
    MarnoquillClass marnoquill(vArguments);
    automation.SetApplication(&marnoquill);
    const int result = QApplication::exec();
    automation.SetApplication(nullptr);
    return result;
}

void MarnoquillClass::ExecCommandLine(const QStringList& vArguments)
{
    if (vArguments.size() < 2 || !form_)
        return;
    CommandLineClass commandLine;
    commandLine.AnalyzeArguments(QStringList{QStringLiteral("Marnoquill.exe")} + vArguments.mid(1));
    form_->ManyFileOpen(commandLine.Files());
}

void MarnoquillClass::FileOpen(const QString& vFileName, bool vSelected)
{
    Form().InitialOpenFile(vFileName, vSelected);
    Form().ActiveMe();
}

void MarnoquillClass::ManyFileOpen(const QStringList& vFiles)
{
    auto files = std::make_shared<StructuredDataClass>();
    for (const QString& path : vFiles)
        files->AddData(path);
    Form().ManyFileOpen(files);
    files->Clear();
    Form().ActiveMe();
}

// The keyboard accelerators are off while the action runs, since an action may open a dialog.
void MarnoquillClass::ExecAction(const QString& vAction)
{
    Form().RemoveAcceleratorKey();
    if (!context_->Action)
        throw AppError(AppError::ObjectNotSet);
    context_->Action->ExecAction(vAction);
    Form().SetAcceleratorKey();
}

QString MarnoquillClass::GetFileNameOfSelectedTab() const
{
    const auto file = form_ ? form_->SelectedFile() : nullptr;
    return file ? file->FileName() : QString();
}
