#include "viewer/ChromeIcons.h"

#include <QHash>

namespace {

struct IconSource {
    const char* Key;        // icon key, or the key of a button that has its own picture
    const char* ThemeName;  // freedesktop icon naming
    const char* Own;        // our picture in the resource folder ":/icons"
};

constexpr IconSource kIcons[] = {
    {"PREV_PAGE", "go-previous", "go-previous"},
    {"NEXT_PAGE", "go-next", "go-next"},
    {"FILE01_16", "text-x-generic", "document"},
    {"FILE02_16", "document-open", "document-open"},
    {"OPENFOLDER_16", "folder-open", "folder-open"},
    {"RIGHTLEFT_16", "format-text-direction-rtl", "text-direction-rtl"},
    {"UPDATE_16", "view-refresh", "view-refresh"},
    {"OPTION_16", "preferences-system", "preferences"},
    {"WINDOWCLOSE01_16", "window-close", "window-close"},
    {"HELP01_16", "help-contents", "help-contents"},
    {"INFO_16", "help-about", "help-about"},
    {"WINDOWCLOSE03_16", "tab-close", "tab-close"},
};

// Made once per picture and theme, and shared: every tab carries the file icon, and an icon made
// anew holds its own pictures in several sizes, some 60 KB a tab over a folder of thousands.
QIcon Themed(const char* vThemeName, const char* vOwn)
{
    static QHash<QString, QIcon> made;
    const QString key = QIcon::themeName() + QLatin1Char('/') + QLatin1String(vThemeName);
    const auto known = made.constFind(key);
    if (known != made.constEnd())
        return *known;
    const QIcon icon = QIcon::fromTheme(QLatin1String(vThemeName),
                                        QIcon(QStringLiteral(":/icons/") + QLatin1String(vOwn) + QStringLiteral(".svg")));
    made.insert(key, icon);
    return icon;
}

} // namespace

QIcon ChromeIcon(const QString& vKey, const QString& vButtonKey)
{
    for (const QString& key : {vButtonKey, vKey}) {
        if (key.isEmpty())
            continue;
        for (const IconSource& source : kIcons) {
            if (key == QLatin1String(source.Key))
                return Themed(source.ThemeName, source.Own);
        }
    }
    return {};
}

QIcon ApplicationIcon() { return Themed("marnoquill", "marnoquill"); }
