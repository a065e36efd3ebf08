#include "viewer/SortSetting.h"

#include "settings/SettingsThreads.h"

namespace {

// An option button of an array: true when its item "0" holds "True". An array that was never
// saved counts as its first button chosen, the way the options page shows it.
bool FirstOptionOn(const SDC& vGroup, const QString& vControl)
{
    if (!vGroup->Exists(vControl))
        return true;
    const SDC control = vGroup->Thread(vControl);
    const SDC first = control && control->Exists(QStringLiteral("0")) ? control->Thread(QStringLiteral("0")) : nullptr;
    return !first || first->DataValue(QStringLiteral("Value")) == QLatin1String("True");
}

} // namespace

SortSetting SortSetting::Read(const SDC& vWindowGroup)
{
    SortSetting sort;
    if (!vWindowGroup)
        return sort;
    sort.On = settingsthreads::Setting(vWindowGroup, QStringLiteral("chkWindowSort"), QStringLiteral("Value")) == QLatin1String("1");
    sort.ByName = FirstOptionOn(vWindowGroup, QStringLiteral("optWindowSortTarget"));
    sort.Ascending = FirstOptionOn(vWindowGroup, QStringLiteral("optWindowSortMode"));
    return sort;
}
