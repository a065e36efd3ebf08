#include "commands/AppArrangementClass.h"

#include "support/AppError.h"

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
