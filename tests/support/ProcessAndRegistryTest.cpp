// Waiting for a real program, and stopping it from inside the wait; the registry's file of the
// user's own, written and read back.
#include "support/ProcessClass.h"
#include "support/RegistryClass.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

TEST(ProcessClass, ExecWaitWaitsForTheProgramAndStopsItOnRequest)
{
    QTemporaryDir dir;
    const QString marker = dir.filePath(QStringLiteral("done"));
    // A command line splits as the Windows build's did: blanks, and double quotes around a part.
    ProcessClass process;
    EXPECT_TRUE(process.ExecWait(QStringLiteral("/bin/sh"), QStringLiteral("-c \"sleep 0.3; touch %1\"").arg(marker), true));
    EXPECT_TRUE(QFile::exists(marker));  // the wait ended with the program, not before
    EXPECT_FALSE(process.WaitFlag());

    // A handler the pump runs sets the stop flag: the program is ended and the wait returns.
    bool sawWaiting = false;
    QTimer::singleShot(200, [&] {
        sawWaiting = process.WaitFlag();
        process.SetStopFlag(true);
    });
    const QString never = dir.filePath(QStringLiteral("never"));
    EXPECT_FALSE(process.ExecWait(QStringLiteral("/bin/sh"), QStringLiteral("-c \"sleep 30; touch %1\"").arg(never), true));
    EXPECT_TRUE(sawWaiting);
    EXPECT_FALSE(QFile::exists(never));

    ProcessClass missing;
    EXPECT_FALSE(missing.ExecWait(dir.filePath(QStringLiteral("no-such-program")), {}, false));
    EXPECT_TRUE(missing.ErrorFlag());
    EXPECT_FALSE(missing.message().isEmpty());
}

TEST(ProcessClass, CloseWindowFindsOurWindowByClassOrTitle)
{
    QWidget window;
    window.setObjectName(QStringLiteral("frmTest"));
    window.setWindowTitle(QStringLiteral("試験の窓"));
    window.show();
    EXPECT_FALSE(ProcessClass::CloseWindow({}, QStringLiteral("ほかの窓")));
    EXPECT_TRUE(ProcessClass::CloseWindow({}, QStringLiteral("試験の窓")));
    EXPECT_FALSE(window.isVisible());
    window.show();
    EXPECT_TRUE(ProcessClass::CloseWindow(QStringLiteral("frmTest"), {}));
    EXPECT_FALSE(window.isVisible());
}

TEST(RegistryClass, ValuesKeepTheirTypesUnderTheirRootsAndKeys)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("Registry.ini"));
    RegistryClass registry(file);
    registry.Select_CURRENT_USER();
    ASSERT_TRUE(registry.SetValue(QStringLiteral("Software\\Ombrelark\\Marnoquill\\"), QStringLiteral("版"), QStringLiteral("1.0 日本語")));
    ASSERT_TRUE(registry.SetValue(QStringLiteral("Software\\Ombrelark\\Marnoquill"), QStringLiteral("Count"), 42));
    ASSERT_TRUE(registry.SetValue(QStringLiteral("Software\\Ombrelark\\Marnoquill\\Sub"), {}, QStringLiteral("unnamed")));

    const RegistryClass again(file);  // read from the file, not from memory
    EXPECT_EQ(again.GetValue(QStringLiteral("Software\\Ombrelark\\Marnoquill"), QStringLiteral("版")), QVariant(QStringLiteral("1.0 日本語")));
    const QVariant count = again.GetValue(QStringLiteral("Software\\Ombrelark\\Marnoquill"), QStringLiteral("Count"));
    EXPECT_EQ(count.typeId(), QMetaType::Int);
    EXPECT_EQ(count.toInt(), 42);
    EXPECT_EQ(again.GetValue(QStringLiteral("Software\\Nobody"), QStringLiteral("x"), QStringLiteral("既定")),
              QVariant(QStringLiteral("既定")));
    EXPECT_EQ(again.EnumKeys(QStringLiteral("Software\\Ombrelark\\Marnoquill")), QStringList({QStringLiteral("Sub")}));

    const SDC rows = again.EnumValue(QStringLiteral("Software\\Ombrelark\\Marnoquill\\Sub"));
    ASSERT_EQ(rows->Count(), 1);
    EXPECT_EQ(rows->ThreadOfNumber(1)->DataValue(QStringLiteral("Name")), QStringLiteral("(標準)"));
    EXPECT_EQ(rows->ThreadOfNumber(1)->DataValue(QStringLiteral("Type")), QStringLiteral("REZ_SZ"));
    const SDC typed = again.EnumValue(QStringLiteral("Software\\Ombrelark\\Marnoquill"));
    QStringList types;
    for (qint16 i = 1; i <= typed->Count(); ++i)
        types << typed->ThreadOfNumber(i)->DataValue(QStringLiteral("Name")) + QLatin1Char('=')
                     + typed->ThreadOfNumber(i)->DataValue(QStringLiteral("Type")) + QLatin1Char(':')
                     + typed->ThreadOfNumber(i)->DataValue(QStringLiteral("Data"));
    types.sort();
    EXPECT_EQ(types, QStringList({QStringLiteral("Count=REG_DWORD:42"), QStringLiteral("版=REZ_SZ:1.0 日本語")}));

    // Another root is another tree.
    RegistryClass machine(file);
    machine.Select_LOCAL_MACHINE();
    EXPECT_FALSE(machine.GetValue(QStringLiteral("Software\\Ombrelark\\Marnoquill"), QStringLiteral("Count")).isValid());

    EXPECT_TRUE(registry.DeleteValue(QStringLiteral("Software\\Ombrelark\\Marnoquill"), QStringLiteral("Count")));
    EXPECT_FALSE(registry.DeleteValue(QStringLiteral("Software\\Ombrelark\\Marnoquill"), QStringLiteral("Count")));
    EXPECT_TRUE(registry.DeleteKey(QStringLiteral("Software\\Ombrelark\\Marnoquill"), QStringLiteral("Sub")));
    EXPECT_TRUE(registry.EnumKeys(QStringLiteral("Software\\Ombrelark\\Marnoquill")).isEmpty());
}
