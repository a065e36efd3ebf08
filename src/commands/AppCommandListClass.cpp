#include "commands/AppCommandListClass.h"

#include "settings/SettingsThreads.h"

#include <array>
#include <utility>

using settingsthreads::Child;

AppCommandListClass::AppCommandListClass() : commandList_(std::make_shared<StructuredDataClass>()) {}

AppCommandListClass::~AppCommandListClass()
{
    commandList_->Clear();
}

void AppCommandListClass::CreateCommandList()
{
    commandList_->Clear();
    if (!detailSet_)
        throw AppError(AppError::ObjectNotSet);

    if (detailSet_->Exists(MouseGroup)) {
        // Each fixed trigger has its own drop-down on the mouse page, storing the action's text.
        const std::array<std::pair<QString, const QString*>, 5> mouse = {{
            {QStringLiteral("cboMouseLeftDClick"), &MouseLeftDClick},
            {QStringLiteral("cboMouseWheelClick"), &MouseWheelClick},
            {QStringLiteral("cboMouse4thClick"), &Mouse4thClick},
            {QStringLiteral("cboMouse5thClick"), &Mouse5thClick},
            {QStringLiteral("cboMouseRightWheel"), &MouseRightWheel},
        }};
        const SDC group = Child(detailSet_, MouseGroup);
        for (const auto& [control, trigger] : mouse)
            commandList_->AddData(Child(group, control)->DataValue(QStringLiteral("Text")), *trigger);
    }
    // Gestures are entered whether or not they are switched on: the gesture handler filters.
    if (detailSet_->Exists(GestureGroup))
        AddListBindings(GestureGroup, QStringLiteral("livMouseGesture"));
    if (detailSet_->Exists(KeyboardGroup))
        AddListBindings(KeyboardGroup, QStringLiteral("livShortCutKey"));
}

// A binding list stores one row per binding: the action as the row's text, the trigger as its
// first sub-item.
void AppCommandListClass::AddListBindings(const QString& vGroup, const QString& vList)
{
    const SDC rows = settingsthreads::ListRows(Child(detailSet_, vGroup), vList);
    for (const QString& key : rows->RefDataKey()) {
        const SDC row = Child(rows, key);
        const QString action = row->DataValue(QStringLiteral("Text"));
        const QString trigger = Child(row, QStringLiteral("SubItem"))->DataValue(QStringLiteral("1"));
        commandList_->AddData(action, trigger);
    }
}
