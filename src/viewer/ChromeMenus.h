#pragma once
// What the keys of the bar buttons mean, and the entries of the popup menu a user puts together
// in the options. Kept apart from the window so that both can be read without one.
//
// A button's key names its operation before the first ":" and an argument behind it
// ("DISPSIZE:3"). A popup entry's key is the action's name, "#$%" and the entry's number, so
// that two entries running the same action stay two buttons; the action name itself may hold a
// ":" ("Read:...", "Brackenfold:..."), which is why the popup split is a separate one.

#include "store/StructuredDataClass.h"

#include <QList>
#include <QString>

#include <optional>

inline const QString PopupKeyDelimiter = QStringLiteral("#$%");
inline const QString PopupMenuGroup = QStringLiteral("\\ポップアップメニュー\\");
inline const QString PopupSeparatorText = QStringLiteral("セパレータ");

QString ButtonOperation(const QString& vKey);  // the item before the first ":"
QString ButtonArgument(const QString& vKey);   // the second item, "" when there is none
// The action a popup key runs; nothing for keys of the fixed buttons.
std::optional<QString> PopupActionOfKey(const QString& vKey);

struct PopupItem {
    QString Key;
    QString Caption;  // "" for a separator
    bool Separator = false;
};

// The popup entries stored under "\ポップアップメニュー\", livPMenuList, "ListItem", in order,
// numbered from 1. A missing group or list gives no entries.
QList<PopupItem> PopupItems(const StructuredDataClass& vDetailSet);
