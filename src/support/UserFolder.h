#pragma once
// The user's own folder of this program ($XDG_CONFIG_HOME/Ombrelark/Marnoquill), where what
// the program writes for the user lives when it can't lie beside the program: logs, the
// registry's file. The settings file's own location rules are the settings library's.

#include <QStandardPaths>
#include <QString>

inline QString UserDataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/Ombrelark/Marnoquill");
}
