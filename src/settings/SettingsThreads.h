#pragma once
// Small readers of the settings tree, shared by every part that reads a control's stored value.

#include "store/StructuredDataClass.h"
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

// The stored form vForm (such as "Text" or "Value") of control vControl in a settings group.
inline QString Setting(const SDC& vGroup, const QString& vControl, const QString& vForm)
{
    return Child(vGroup, vControl)->DataValue(vForm);
}

} // namespace settingsthreads
