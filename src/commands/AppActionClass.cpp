#include "commands/AppActionClass.h"

#include "commands/ActionCatalogue.h"
#include "commands/AppArrangementClass.h"
#include "settings/SettingsThreads.h"
#include "commands/ViewerOperations.h"

using settingsthreads::Child;

AppActionClass::AppActionClass(const SDC& vDetailSet)
    : detailSet_(vDetailSet),
      actionName_(std::make_shared<StructuredDataClass>()),
      wheelActionName_(std::make_shared<StructuredDataClass>())
{
    LoadAction();
}

AppActionClass::~AppActionClass()
{
    actionName_->Clear();
    wheelActionName_->Clear();
}

SDC AppActionClass::DetailSet() const
{
    if (!detailSet_)
        throw AppError(AppError::ObjectNotSet);
    return detailSet_;
}

ViewerOperations& AppActionClass::Form() const
{
    if (!form_)
        throw AppError(AppError::ObjectNotSet);
    return *form_;
}

void AppActionClass::LoadAction()
{
    // Up to the sibling's processes nothing may stop the lists from being built: a sibling that
    // is absent or refuses only means that its processes are not offered.
    try {
        actionName_->Clear();
        wheelActionName_->Clear();
        for (const FixedAction& action : FixedActions())
            actionName_->AddData(action.Name, action.Name);
        AddBrackenfoldActions();
    } catch (const std::exception&) {
    }

    const SDC settings = DetailSet();
    if (settings->Exists(ReadGroup)) {
        // A read setting's stored text already carries its prefix.
        const SDC rows = settingsthreads::ListRows(Child(settings, ReadGroup), QStringLiteral("livReadFolder"));
        for (const QString& key : rows->RefDataKey()) {
            const QString name = Child(rows, key)->DataValue(QStringLiteral("Text"));
            actionName_->AddData(name, name);
        }
    }
    if (settings->Exists(MultiGroup)) {
        // So does a composite's key.
        for (const QString& name : Child(Child(settings, MultiGroup), MultiList)->RefDataKey())
            actionName_->AddData(name, name);
    }
    wheelActionName_->AddData(WheelMoveTab, WheelMoveTab);
    wheelActionName_->AddData(WheelMovePage, WheelMovePage);
}

void AppActionClass::AddBrackenfoldActions()
{
    const SDC settings = DetailSet();
    if (!settings->Exists(ActionGroup))
        return;
    const SDC link = Child(Child(settings, ActionGroup), QStringLiteral("chkActArrangement"));
    if (link->DataValue(QStringLiteral("Value")) != QStringLiteral("1"))
        return;
    AppArrangementClass arrangement;
    const SDC procs = arrangement.ProcList();
    for (const QString& key : procs->RefDataKey()) {
        const QString name = BrackenfoldPrefix + procs->DataValue(key);
        actionName_->AddData(name, name);
    }
}
