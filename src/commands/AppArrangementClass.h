#pragma once
// The link to the sibling product Brackenfold: creating the sibling, asking it for its
// processes, and handing it the shown file to run a process on. The sibling is another product that may well be
// absent; creating the link then fails with error 429, and whoever asked (the action list)
// decides what that means. The sibling is reached through a creator: by default the plugins of
// the sibling (QPluginLoader); tests may install their own.

#include "store/StructuredDataClass.h"

#include <QObject>
#include <QVariant>

#include <functional>
#include <memory>

// The sibling's message object (its Msg): where its run's messages go. Outputs are the viewer's
// widgets (a status bar panel) or none (its own message box, type 2), and whether each is logged
// comes from the sibling's own log object.
class BrackenfoldMessages {
public:
    virtual ~BrackenfoldMessages() = default;
    virtual void RegisterControl(const QString& vCategory, QObject* vControl, int vType,
                                 const QString& vStatus = QStringLiteral("ALL")) = 0;
    virtual void SetControlPropertyOfLog(const QString& vCategory, const QVariant& vLogOut,
                                         const QString& vStatus = QStringLiteral("ALL")) = 0;
};

// The sibling's automation object: the members the link calls on it.
class BrackenfoldObject {
public:
    virtual ~BrackenfoldObject() = default;
    virtual void DefaultLoadSetting() = 0;
    // The processes, each keyed by its key; the value is the process's name.
    virtual SDC GetProcList() = 0;
    virtual QString SearchProcName(const QString& vName) = 0;
    virtual void SetLogSet(const QString& vKey) = 0;
    virtual BrackenfoldMessages& Msg() = 0;
    virtual QVariant GetLogOut(const QString& vKey) = 0;
    // The input file store: one thread per file, keyed by its path.
    virtual SDC FileList() = 0;
    virtual void ClearExecData() = 0;
    virtual void EntryExecProc(const QString& vKey) = 0;
    virtual void ExecProc() = 0;
};

// What a plugin of the sibling offers: its automation object, made by identifier. Plugins lie in
// "plugins" beside the program or in ~/.local/lib/marnoquill/plugins.
class BrackenfoldPlugin {
public:
    virtual ~BrackenfoldPlugin() = default;
    virtual std::shared_ptr<BrackenfoldObject> Create(const QString& vProgId) = 0;
};
#define BrackenfoldPlugin_iid "org.ombrelark.Marnoquill.BrackenfoldPlugin/1.0"
Q_DECLARE_INTERFACE(BrackenfoldPlugin, BrackenfoldPlugin_iid)

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
    // Only DocuWorks files go to the sibling; others are dropped without a word.
    void AddFile(const QString& vFilePath);
    // Runs the named process on the files added, its messages in vStatusPanel meanwhile.
    void ExecArrange(const QString& vProcName, QObject* vStatusPanel);
    QString SearchProcName(const QString& vProcName) { return object_->SearchProcName(vProcName); }

    // The creator of the sibling's plugins, the one in place when nothing else is installed.
    static std::shared_ptr<BrackenfoldObject> CreateFromPlugins(const QString& vProgId);

    // Puts vCreator in place (an empty one: none) and gives back the one that was there.
    static Creator InstallCreator(Creator vCreator);

private:
    std::shared_ptr<BrackenfoldObject> object_;
    SDC procList_;
};
