// The automation surface as other programs meet it: a private session bus started by the test,
// the real viewer program on it, and calls from this process over the bus.
#include "common/TiffWriter.h"
#include "viewer/AutomationService.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <csignal>
#include <memory>

namespace {

const QString Interface = QStringLiteral("org.ombrelark.Marnoquill");

// A bus of the test's own, with a folder of services it may start.
class PrivateBus {
public:
    explicit PrivateBus(const QString& vFolder) : folder_(vFolder)
    {
        QDir().mkpath(ServiceFolder());
        address_ = QStringLiteral("unix:path=") + folder_ + QStringLiteral("/bus");
        const QString config = folder_ + QStringLiteral("/bus.conf");
        QFile file(config);
        if (!file.open(QIODevice::WriteOnly))
            return;
        file.write(QStringLiteral(
            "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
            " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
            "<busconfig><type>session</type><listen>%1</listen><servicedir>%2</servicedir>\n"
            "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
            "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n")
                       .arg(address_, ServiceFolder())
                       .toUtf8());
        file.close();
        // What the bus starts finds the bus where every program looks for it.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address_);
        daemon_.setProcessEnvironment(environment);
        daemon_.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--config-file=") + config, QStringLiteral("--nofork"),
                                                      QStringLiteral("--print-address=1")});
        if (daemon_.waitForReadyRead(10000))
            connection_ = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(address_, folder_));
    }
    ~PrivateBus()
    {
        QDBusConnection::disconnectFromBus(folder_);
        daemon_.kill();
        daemon_.waitForFinished();
    }

    bool Up() const { return connection_ && connection_->isConnected(); }
    QString Address() const { return address_; }
    QString ServiceFolder() const { return folder_ + QStringLiteral("/services"); }
    QDBusConnection& Bus() { return *connection_; }

    // The process owning a name, 0 while nobody does; waits up to 15 s for vWanted.
    uint OwnerOf(const QString& vName, const std::function<bool(uint)>& vWanted)
    {
        uint pid = 0;
        (void)QTest::qWaitFor([&] {
            const QDBusReply<uint> reply = Bus().interface()->servicePid(vName);
            pid = reply.isValid() ? reply.value() : 0;
            return vWanted(pid);
        }, 15000);
        return pid;
    }

    QDBusMessage Call(const QString& vName, const QString& vMethod, const QVariantList& vArguments = {})
    {
        QDBusMessage call = QDBusMessage::createMethodCall(vName, QStringLiteral("/Marnoquill"), Interface, vMethod);
        call.setArguments(vArguments);
        return Bus().call(call, QDBus::Block, 20000);
    }

private:
    QString folder_;
    QString address_;
    QProcess daemon_;
    std::unique_ptr<QDBusConnection> connection_;
};

class AutomationTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")).isEmpty())
            GTEST_SKIP() << "no dbus-daemon";
        bus_ = std::make_unique<PrivateBus>(dir_.filePath(QStringLiteral("bus")));
        ASSERT_TRUE(bus_->Up());
    }
    void TearDown() override
    {
        for (auto& viewer : viewers_) {
            viewer->kill();
            viewer->waitForFinished();
        }
        viewers_.clear();
        bus_.reset();
    }

    QProcessEnvironment ViewerEnvironment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus_->Address());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), dir_.filePath(QStringLiteral("config")));
        return environment;
    }

    QProcess& StartViewer(const QStringList& vFiles = {})
    {
        viewers_.push_back(std::make_unique<QProcess>());
        QProcess& viewer = *viewers_.back();
        viewer.setProcessEnvironment(ViewerEnvironment());
        viewer.start(QStringLiteral(MQ_VIEWER_PROGRAM), vFiles);
        EXPECT_TRUE(viewer.waitForStarted());
        return viewer;
    }

    QString Tiff(const QString& vName)
    {
        const QString path = dir_.filePath(vName);
        EXPECT_TRUE(tiffwriter::WriteNumbered(path, 2, tiffwriter::Kind::BilevelG4, QSize(120, 160)));
        return path;
    }

    QString Selected(const QString& vName)
    {
        const QDBusMessage reply = bus_->Call(vName, QStringLiteral("GetFileNameOfSelectedTab"));
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << qPrintable(reply.errorMessage());
        return reply.arguments().value(0).toString();
    }

    static QString InstanceName(const QProcess& vViewer)
    {
        return Interface + QStringLiteral(".Instance") + QString::number(vViewer.processId());
    }

    QTemporaryDir dir_;
    std::unique_ptr<PrivateBus> bus_;
    std::vector<std::unique_ptr<QProcess>> viewers_;
};

} // namespace

TEST_F(AutomationTest, TheFourOperationsFromAnotherProcess)
{
    const QString a = Tiff(QStringLiteral("a.tif"));
    const QString b = Tiff(QStringLiteral("名前 with 'quote'.tif"));
    const QString c = Tiff(QStringLiteral("c.tif"));
    const QString d = Tiff(QStringLiteral("d.tif"));
    QProcess& viewer = StartViewer({a});
    ASSERT_EQ(bus_->OwnerOf(Interface, [](uint p) { return p != 0; }), uint(viewer.processId()));
    EXPECT_EQ(bus_->OwnerOf(InstanceName(viewer), [](uint p) { return p != 0; }), uint(viewer.processId()));

    EXPECT_EQ(Selected(Interface), a);
    EXPECT_EQ(bus_->Call(Interface, QStringLiteral("FileOpen"), {b, true}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(Selected(Interface), b);
    EXPECT_EQ(bus_->Call(Interface, QStringLiteral("ManyFileOpen"), {QStringList{c, d}}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(Selected(InstanceName(viewer)), c);  // the first of them is chosen
    EXPECT_EQ(bus_->Call(Interface, QStringLiteral("ExecAction"), {QStringLiteral("タブを閉じる")}).type(),
              QDBusMessage::ReplyMessage);
    EXPECT_NE(Selected(Interface), c);

    // What a caller may send: nothing of it stops the viewer answering.
    EXPECT_EQ(bus_->Call(Interface, QStringLiteral("FileOpen"), {42}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(bus_->Call(Interface, QStringLiteral("ExecAction"), {QStringLiteral("ありもしない動作")}).type(),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(bus_->Call(Interface, QStringLiteral("FileOpen"), {QString(200000, u'x') + QStringLiteral(".tif"), true}).type(),
              QDBusMessage::ReplyMessage);
    QStringList many;
    for (int i = 0; i < 3000; ++i)
        many << dir_.filePath(QStringLiteral("gone%1.tif").arg(i));
    EXPECT_EQ(bus_->Call(Interface, QStringLiteral("ManyFileOpen"), {many}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(bus_->Call(Interface, QStringLiteral("ManyFileOpen"), {QStringList()}).type(), QDBusMessage::ReplyMessage);
    EXPECT_FALSE(Selected(Interface).isEmpty());
    EXPECT_EQ(viewer.state(), QProcess::Running);
}

TEST_F(AutomationTest, AnErrorBelowReachesTheCallerAsADBusError)
{
    // Settings that cannot be read: start-up stops at its message box, which waits for a click
    // that never comes; the bus is served meanwhile, without an application object.
    const QString settings = dir_.filePath(QStringLiteral("config/Ombrelark/Marnoquill/Marnoquill.ini"));
    QDir().mkpath(QFileInfo(settings).path());
    QFile file(settings);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[!LABEL_DetailSet]\r\n\tTHREAD\tx\r\n");
    file.close();
    QProcess& viewer = StartViewer();
    ASSERT_EQ(bus_->OwnerOf(Interface, [](uint p) { return p != 0; }), uint(viewer.processId()));
    const QDBusMessage reply = bus_->Call(Interface, QStringLiteral("FileOpen"), {dir_.filePath(QStringLiteral("a.tif")), true});
    ASSERT_EQ(reply.type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(reply.errorName(), AutomationService::ErrorName);
    EXPECT_TRUE(reply.errorMessage().startsWith(QStringLiteral("91 : "))) << qPrintable(reply.errorMessage());
    EXPECT_EQ(bus_->Call(Interface, QStringLiteral("GetFileNameOfSelectedTab")).type(), QDBusMessage::ErrorMessage);
}

TEST_F(AutomationTest, TheCommonNamePassesToTheNextViewerWhenTheFirstEnds)
{
    QProcess& first = StartViewer();
    ASSERT_EQ(bus_->OwnerOf(Interface, [](uint p) { return p != 0; }), uint(first.processId()));
    QProcess& second = StartViewer({Tiff(QStringLiteral("b.tif"))});
    ASSERT_EQ(bus_->OwnerOf(InstanceName(second), [](uint p) { return p != 0; }), uint(second.processId()));
    EXPECT_EQ(bus_->OwnerOf(Interface, [](uint p) { return p != 0; }), uint(first.processId()));
    EXPECT_EQ(Selected(InstanceName(first)), QString());
    EXPECT_EQ(Selected(InstanceName(second)), dir_.filePath(QStringLiteral("b.tif")));

    first.terminate();
    ASSERT_TRUE(first.waitForFinished());
    const uint secondPid = uint(second.processId());
    EXPECT_EQ(bus_->OwnerOf(Interface, [&](uint p) { return p == secondPid; }), secondPid);
    EXPECT_EQ(Selected(Interface), dir_.filePath(QStringLiteral("b.tif")));
}

TEST_F(AutomationTest, ACallStartsTheViewerWhenNoneRuns)
{
    // The service file as installed, pointing at the program built here.
    QFile service(bus_->ServiceFolder() + QStringLiteral("/org.ombrelark.Marnoquill.service"));
    ASSERT_TRUE(service.open(QIODevice::WriteOnly));
    service.write(QStringLiteral("[D-BUS Service]\nName=org.ombrelark.Marnoquill\nExec=/usr/bin/env QT_QPA_PLATFORM=offscreen "
                                 "XDG_CONFIG_HOME=%1 %2\n")
                      .arg(dir_.filePath(QStringLiteral("config")), QStringLiteral(MQ_VIEWER_PROGRAM))
                      .toUtf8());
    service.close();
    const QString a = Tiff(QStringLiteral("a.tif"));
    EXPECT_EQ(bus_->Call(Interface, QStringLiteral("FileOpen"), {a, true}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(Selected(Interface), a);
    const uint started = bus_->OwnerOf(Interface, [](uint p) { return p != 0; });
    ASSERT_NE(started, 0u);
    ::kill(pid_t(started), SIGTERM);
    EXPECT_EQ(bus_->OwnerOf(Interface, [](uint p) { return p == 0; }), 0u);
}
