#pragma once
// Small readers of the settings tree shared by the trigger table and the action lists.

#include "settings/StructuredDataClass.h"
#include "support/AppError.h"

#include <QString>

namespace settingsthreads {

// The child thread vKey of vParent. An absent key raises the store's own 6000; a key that holds
// data, not a thread, raises 91, as using an empty object does.
inline SDC Child(const SDC& vParent, const QString& vKey)
{
    if (!vParent)
        throw AppError(AppError::ObjectNotSet);
    SDC child = vParent->Thread(vKey);
    if (!child)
        throw AppError(AppError::ObjectNotSet);
    return child;
}

// The rows of a list view as the binding stores them: vGroup\vList\"ListItem".
inline SDC ListRows(const SDC& vGroup, const QString& vList)
{
    return Child(Child(vGroup, vList), QStringLiteral("ListItem"));
}

} // namespace settingsthreads
