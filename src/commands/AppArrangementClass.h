#pragma once
// The link to the sibling product Brackenfold, as far as the action lists need it: creating the
// sibling and asking it for its processes. The sibling is another product that may well be
// absent; creating the link then fails with error 429, and whoever asked (the action list)
// decides what that means. The sibling itself is reached through a creator that whoever can
// provide one installs; with none installed, creation fails, as it does where no sibling exists.

#include "store/StructuredDataClass.h"

#include <functional>
#include <memory>

// The sibling's automation object: the members the link calls on it.
class BrackenfoldObject {
public:
    virtual ~BrackenfoldObject() = default;
    virtual void DefaultLoadSetting() = 0;
    // The processes, each keyed by its key; the value is the process's name.
    virtual SDC GetProcList() = 0;
};

class AppArrangementClass {
public:
    static inline const QString ProgId = QStringLiteral("BrackenfoldDll.BrackenfoldClass");
    using Creator = std::function<std::shared_ptr<BrackenfoldObject>(const QString& vProgId)>;

    // Creates the sibling and lets it load its own settings; raises 429 when it can't be created.
    AppArrangementClass();
    ~AppArrangementClass();
    AppArrangementClass(const AppArrangementClass&) = delete;
    AppArrangementClass& operator=(const AppArrangementClass&) = delete;

    // The processes, name as key and as value; asked of the sibling once, then kept.
    SDC ProcList();

    // Puts vCreator in place (an empty one: none) and gives back the one that was there.
    static Creator InstallCreator(Creator vCreator);

private:
    std::shared_ptr<BrackenfoldObject> object_;
    SDC procList_;
};
