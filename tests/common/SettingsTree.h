#pragma once
// Settings trees in the shape the options dialog stores them, for tests that bind actions.

#include "store/StructuredDataClass.h"

#include <QStringList>

namespace settingstree {

inline SDC Group(const SDC& vRoot, const QString& vGroup) { return vRoot->CreateThread(vGroup); }

// A list view row: its text and its sub-items "1", "2", ...
inline void AddRow(const SDC& vGroup, const QString& vList, const QString& vText, const QStringList& vSubItems = {})
{
    const SDC row = vGroup->CreateThread(vList)->CreateThread(QStringLiteral("ListItem"))->CreateThread();
    row->AddData(vText, QStringLiteral("Text"));
    const SDC sub = row->CreateThread(QStringLiteral("SubItem"));
    for (const QString& item : vSubItems)
        sub->AddData(item);
}

inline void AddComposite(const SDC& vRoot, const QString& vName, const QStringList& vSteps)
{
    const SDC steps = Group(vRoot, QStringLiteral("\\複合動作\\"))->CreateThread(QStringLiteral("動作リスト"))->CreateThread(vName);
    for (const QString& step : vSteps)
        steps->AddData(step);
}

} // namespace settingstree
