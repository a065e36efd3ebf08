#include "commands/AppArrangementClass.h"

#include "support/AppError.h"
#include "support/CommonLibClass.h"

#include <QCoreApplication>
#include <QDir>
#include <QPluginLoader>

namespace {

AppArrangementClass::Creator& CurrentCreator()
{
    static AppArrangementClass::Creator creator;
    return creator;
}

// What a user of the Windows build reads when the sibling is not installed.
constexpr int CannotCreateObject = 429;
const QString CannotCreateObjectText = QStringLiteral("ActiveX コンポーネントはオブジェクトを作成できません。");

} // namespace

AppArrangementClass::AppArrangementClass()
{
    if (const Creator& create = CurrentCreator())
        object_ = create(ProgId);
    else
        object_ = CreateFromPlugins(ProgId);
    if (!object_)
        throw AppError(CannotCreateObject, CannotCreateObjectText);
    object_->DefaultLoadSetting();
}

AppArrangementClass::~AppArrangementClass()
{
    if (procList_)
        procList_->Clear();
}

SDC AppArrangementClass::ProcList()
{
    if (procList_)
        return procList_;
    auto list = std::make_shared<StructuredDataClass>();
    const SDC procs = object_->GetProcList();
    if (!procs)
        throw AppError(AppError::ObjectNotSet);
    for (const QString& key : procs->RefDataKey()) {
        const QString name = procs->DataValue(key);
        list->AddData(name, name);
    }
    procList_ = list;
    return procList_;
}

AppArrangementClass::Creator AppArrangementClass::InstallCreator(Creator vCreator)
{
    Creator previous = std::move(CurrentCreator());
    CurrentCreator() = std::move(vCreator);
    return previous;
}

std::shared_ptr<BrackenfoldObject> AppArrangementClass::CreateFromPlugins(const QString& vProgId)
{
    const QStringList folders = {QCoreApplication::applicationDirPath() + QStringLiteral("/plugins"),
                                 QDir::homePath() + QStringLiteral("/.local/lib/marnoquill/plugins")};
    for (const QString& folder : folders) {
        const QDir dir(folder);
        for (const QString& name : dir.entryList({QStringLiteral("*.so")}, QDir::Files, QDir::Name)) {
            QPluginLoader loader(dir.filePath(name));
            // A plugin that doesn't load, isn't the sibling's or can't make the object is passed
            // over; with none left, creation fails as where no sibling is installed.
            auto* plugin = qobject_cast<BrackenfoldPlugin*>(loader.instance());
            if (!plugin)
                continue;
            try {
                if (auto object = plugin->Create(vProgId))
                    return object;
            } catch (...) {
            }
        }
    }
    return nullptr;
}

void AppArrangementClass::AddFile(const QString& vFilePath)
{
    if (vFilePath.size() <= 3 || vFilePath.right(3).toUpper() != QLatin1String("XDW"))
        return;
    const SDC files = object_->FileList();
    if (!files)
        throw AppError(AppError::ObjectNotSet);
    files->CreateThread(vFilePath)->AddData(vFilePath, QStringLiteral("フルパスファイル名"));
}

void AppArrangementClass::ExecArrange(const QString& vProcName, QObject* vStatusPanel)
{
    if (!ProcList()->Exists(vProcName)) {
        CommonLibClass::ErrMsgBox(QStringLiteral("Brackenfoldの設定に設定名(") + vProcName + QStringLiteral(")が存在しません。"));
        return;
    }
    const QString key = object_->SearchProcName(vProcName);
    object_->SetLogSet(key);
    BrackenfoldMessages& messages = object_->Msg();
    // The sibling's messages show in the status bar during the run, its errors through its own
    // message box; each logged as the process's settings say.
    messages.RegisterControl(QStringLiteral("Msg1"), vStatusPanel, 4);
    messages.SetControlPropertyOfLog(QStringLiteral("Msg1"), object_->GetLogOut(key));
    messages.RegisterControl(QStringLiteral("Msg1"), nullptr, 2, QStringLiteral("ERR"));
    messages.SetControlPropertyOfLog(QStringLiteral("Msg1"), object_->GetLogOut(key), QStringLiteral("ERR"));
    object_->ClearExecData();
    object_->EntryExecProc(key);
    object_->ExecProc();
}
