#pragma once
// What other programs may ask of a running Marnoquill, on the user's session bus: the object
// /Marnoquill with the interface org.ombrelark.Marnoquill and the application object's four
// operations. Every process serves its own object under org.ombrelark.Marnoquill.Instance<pid>;
// the first one also holds org.ombrelark.Marnoquill, and the others wait in line for it, so that
// the name passes on when its holder ends.
//
// The calls go straight to MarnoquillClass and carry no error handling of their own: an error
// raised below reaches the caller as a D-Bus error, named org.ombrelark.Marnoquill.Error, whose
// message is "number : description". A call that comes while start-up is still running (from
// inside a message box it shows) finds no application object yet and gets 91.

#include <QDBusContext>
#include <QObject>
#include <QStringList>

class MarnoquillClass;

class AutomationService : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.ombrelark.Marnoquill")
public:
    static inline const QString ServiceName = QStringLiteral("org.ombrelark.Marnoquill");
    static inline const QString ObjectPath = QStringLiteral("/Marnoquill");
    static inline const QString ErrorName = QStringLiteral("org.ombrelark.Marnoquill.Error");

    explicit AutomationService(QObject* vParent = nullptr);
    ~AutomationService() override;

    // Takes the object and the names on the session bus; false when there is no session bus.
    bool Register();
    void SetApplication(MarnoquillClass* vApplication) { application_ = vApplication; }

    // The parameters' names are those callers see in the bus's description of the interface.
public Q_SLOTS:
    void FileOpen(const QString& path, bool selected);
    void ManyFileOpen(const QStringList& paths);
    void ExecAction(const QString& name);
    QString GetFileNameOfSelectedTab();

private:
    template <typename Call>
    auto Run(Call vCall) -> decltype(vCall(std::declval<MarnoquillClass&>()));

    MarnoquillClass* application_ = nullptr;
    bool registered_ = false;
};
