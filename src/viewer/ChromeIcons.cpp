#include "viewer/ChromeIcons.h"

#include <QApplication>
#include <QHash>
#include <QStyle>

namespace {

struct IconSource {
    const char* Key;
    const char* ThemeName;  // freedesktop icon naming
    QStyle::StandardPixmap Fallback;
};

constexpr IconSource kIcons[] = {
    {"FILE01_16", "text-x-generic", QStyle::SP_FileIcon},
    {"FILE02_16", "x-office-document", QStyle::SP_FileIcon},
    {"OPENFOLDER_16", "folder-open", QStyle::SP_DirOpenIcon},
    {"RIGHTLEFT_16", "format-text-direction-rtl", QStyle::SP_ArrowBack},
    {"UPDATE_16", "view-refresh", QStyle::SP_BrowserReload},
    {"OPTION_16", "preferences-system", QStyle::SP_FileDialogDetailedView},
    {"WINDOWCLOSE01_16", "window-close", QStyle::SP_DialogCloseButton},
    {"HELP01_16", "help-contents", QStyle::SP_DialogHelpButton},
    {"INFO_16", "help-about", QStyle::SP_MessageBoxInformation},
    {"WINDOWCLOSE03_16", "tab-close", QStyle::SP_TitleBarCloseButton},
};

QIcon MakeIcon(const QString& vKey)
{
    for (const IconSource& source : kIcons) {
        if (vKey != QLatin1String(source.Key))
            continue;
        const QIcon themed = QIcon::fromTheme(QLatin1String(source.ThemeName));
        if (!themed.isNull())
            return themed;
        return QApplication::style()->standardIcon(source.Fallback);
    }
    return {};
}

} // namespace

// Made once per key and shared: every tab carries the file icon, and a style's icon made anew
// holds its own pictures in several sizes, some 60 KB a tab over a folder of thousands.
QIcon ChromeIcon(const QString& vKey)
{
    static QHash<QString, QIcon> made;
    const auto known = made.constFind(vKey);
    if (known != made.constEnd())
        return *known;
    const QIcon icon = MakeIcon(vKey);
    made.insert(vKey, icon);
    return icon;
}
