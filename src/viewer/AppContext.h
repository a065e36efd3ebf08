#pragma once
// The objects that live from start-up to the closing of the main window and that every part of
// the viewer reaches: the common functions, the settings tree and where it is kept.

#include "settings/StructuredDataClass.h"
#include "support/CommonLibClass.h"

#include <QString>

struct AppContext {
    CommonLibClass Common;
    SDC DetailSet = std::make_shared<StructuredDataClass>();
    QString SettingsPath;   // where the settings tree is saved
    QString AppDataPath;    // the program's folder of per-user data
};
