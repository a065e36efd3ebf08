#include "viewer/ChromeMenus.h"

QString ButtonOperation(const QString& vKey) { return vKey.section(QLatin1Char(':'), 0, 0); }

QString ButtonArgument(const QString& vKey) { return vKey.section(QLatin1Char(':'), 1, 1); }

std::optional<QString> PopupActionOfKey(const QString& vKey)
{
    const QStringList items = vKey.split(PopupKeyDelimiter);
    if (items.size() < 2)
        return std::nullopt;
    return items.first();
}

QList<PopupItem> PopupItems(const StructuredDataClass& vDetailSet)
{
    QList<PopupItem> items;
    if (!vDetailSet.Exists(PopupMenuGroup))
        return items;
    const SDC group = vDetailSet.Thread(PopupMenuGroup);
    if (!group || !group->Exists(QStringLiteral("livPMenuList")))
        return items;
    const SDC list = group->Thread(QStringLiteral("livPMenuList"));
    if (!list || !list->Exists(QStringLiteral("ListItem")))
        return items;
    const SDC rows = list->Thread(QStringLiteral("ListItem"));
    if (!rows)
        return items;

    for (qint16 n = 1; n <= rows->Count(); ++n) {
        const SDC row = rows->ThreadOfNumber(n);
        if (!row)
            continue;  // not a row: nothing a menu could show
        const QString number = QString::number(n);
        const QString text = row->DataValue(QStringLiteral("Text"));
        if (text == PopupSeparatorText) {
            items.append({QStringLiteral("SEPARATOR") + PopupKeyDelimiter + number, {}, true});
            continue;
        }
        QString caption;
        QString accessKey;
        if (row->Exists(QStringLiteral("SubItem"))) {
            if (const SDC sub = row->Thread(QStringLiteral("SubItem"))) {
                caption = sub->DataValue(QStringLiteral("1"));
                accessKey = sub->DataValue(QStringLiteral("2"));
            }
        }
        if (!accessKey.isEmpty())
            caption += QStringLiteral("(&") + accessKey + QLatin1Char(')');
        items.append({text + PopupKeyDelimiter + number, caption, false});
    }
    return items;
}
