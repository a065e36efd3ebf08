#pragma once
// The objects that live from start-up to the closing of the main window and that every part of
// the viewer reaches: the common functions, the settings tree and where it is kept, the trigger
// table and the dispatcher.

#include "commands/AppActionClass.h"
#include "commands/AppCommandListClass.h"
#include "store/StructuredDataClass.h"
#include "support/CommonLibClass.h"

#include <QString>

#include <memory>

struct AppContext {
    CommonLibClass Common;
    SDC DetailSet = std::make_shared<StructuredDataClass>();
    QString SettingsPath;   // where the settings tree is saved
    QString AppDataPath;    // the program's folder of per-user data
    std::unique_ptr<AppCommandListClass> CommandList;
    std::unique_ptr<AppActionClass> Action;
    // One folder read at a time, whichever way it was asked for.
    bool ReadFolderBusy = false;

    // The trigger table and the dispatcher over the settings tree, made once at start-up; the
    // dispatcher reads the tree through DetailSet itself, so a replaced tree is seen at once.
    void CreateCommands()
    {
        CommandList = std::make_unique<AppCommandListClass>();
        CommandList->RefDetailSet(DetailSet);
        CommandList->CreateCommandList();
        Action = std::make_unique<AppActionClass>(DetailSet);
    }

    // The action bound to a trigger (a mouse word, a gesture text, a key string); "" when none.
    QString ActionOf(const QString& vTrigger) const
    {
        return CommandList ? CommandList->CommandList()->DataValue(vTrigger) : QString();
    }
};
