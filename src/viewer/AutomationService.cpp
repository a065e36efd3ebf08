#include "viewer/AutomationService.h"

#include "support/AppError.h"
#include "viewer/MarnoquillClass.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>

AutomationService::AutomationService(QObject* vParent) : QObject(vParent) {}

AutomationService::~AutomationService()
{
    // The bus frees the names when the process ends; a service taken down earlier (the tests
    // make several in one process) lets them go at once.
    if (!registered_)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterObject(ObjectPath);
    bus.unregisterService(ServiceName + QStringLiteral(".Instance") + QString::number(QCoreApplication::applicationPid()));
    bus.unregisterService(ServiceName);
}

bool AutomationService::Register()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface())
        return false;
    if (!bus.registerObject(ObjectPath, this, QDBusConnection::ExportAllSlots))
        return false;
    registered_ = true;
    bus.registerService(ServiceName + QStringLiteral(".Instance") + QString::number(QCoreApplication::applicationPid()));
    // Each launch is a process of its own; a later one queues for the common name and takes it
    // when the one holding it ends.
    bus.interface()->registerService(ServiceName, QDBusConnectionInterface::QueueService,
                                     QDBusConnectionInterface::DontAllowReplacement);
    return true;
}

template <typename Call>
auto AutomationService::Run(Call vCall) -> decltype(vCall(std::declval<MarnoquillClass&>()))
{
    using Result = decltype(vCall(std::declval<MarnoquillClass&>()));
    try {
        if (!application_)
            throw AppError(AppError::ObjectNotSet);
        return vCall(*application_);
    } catch (const AppError& e) {
        if (calledFromDBus())
            sendErrorReply(ErrorName, e.Message());
    } catch (const std::exception& e) {
        if (calledFromDBus())
            sendErrorReply(ErrorName, QString::fromLocal8Bit(e.what()));
    }
    return Result();
}

void AutomationService::FileOpen(const QString& path, bool selected)
{
    Run([&](MarnoquillClass& vApp) { vApp.FileOpen(path, selected); });
}

void AutomationService::ManyFileOpen(const QStringList& paths)
{
    Run([&](MarnoquillClass& vApp) { vApp.ManyFileOpen(paths); });
}

void AutomationService::ExecAction(const QString& name)
{
    Run([&](MarnoquillClass& vApp) { vApp.ExecAction(name); });
}

QString AutomationService::GetFileNameOfSelectedTab()
{
    return Run([](MarnoquillClass& vApp) { return vApp.GetFileNameOfSelectedTab(); });
}
