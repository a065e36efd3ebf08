#include "commands/AppAcceleratorKeyClass.h"

#include "commands/AppCommandListClass.h"
#include "commands/KeyCodeClass.h"
#include "settings/SettingsThreads.h"

AppAcceleratorKeyClass::AppAcceleratorKeyClass(QWidget* vOwner, KeyHandler vOnKey)
    : accelerator_(vOwner)
{
    accelerator_.SetHandler(
        [onKey = std::move(vOnKey)](const QString& vKey, qint32, qint16, bool&) {
            if (onKey)
                onKey(vKey);
        });
}

void AppAcceleratorKeyClass::SetAcceleratorKey(const StructuredDataClass& vDetailSet)
{
    RemoveAcceleratorKey();
    if (!vDetailSet.Exists(AppCommandListClass::KeyboardGroup))
        return;
    const KeyCodeClass codes;
    const SDC rows = settingsthreads::ListRows(vDetailSet.Thread(AppCommandListClass::KeyboardGroup),
                                               QStringLiteral("livShortCutKey"));
    for (const QString& key : rows->RefDataKey()) {
        const SDC row = rows->Thread(key);
        if (!row)
            continue;  // a plain value where a row belongs: nothing to bind
        const SDC sub = row->Thread(QStringLiteral("SubItem"));
        const QString keyString = sub ? sub->DataValue(QStringLiteral("1")) : QString();
        registered_.append(keyString);
        accelerator_.Add(keyString, KeyCodeClass::GetMaskCode(keyString),
                         codes.GetKeyCode(keyString), ctlAccelerator::AccelEvent);
    }
}

void AppAcceleratorKeyClass::RemoveAcceleratorKey()
{
    for (const QString& key : std::as_const(registered_))
        accelerator_.Remove(key);
    registered_.clear();
}
