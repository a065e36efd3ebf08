#pragma once
// A main window with read settings and real folders of small TIFF files, for the tests of
// opening folders, dialogs and drops.

#include "common/SettingsTree.h"
#include "common/TestFiles.h"
#include "viewer/MainWindowFixture.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QTabBar>
#include <QTimer>

class IntakeTest : public MainWindowTest {
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        context.AppDataPath = dir.filePath(QStringLiteral("appdata"));
        AddWindowGroup(context.DetailSet, false);
    }

    // A TIFF of one small page at vRelative below the test folder, its folders made on the way.
    QString File(const QString& vRelative, const QDateTime& vWritten = {})
    {
        const QString path = dir.filePath(vRelative);
        QDir().mkpath(QFileInfo(path).path());
        EXPECT_TRUE(tiffwriter::WriteNumbered(path, 1, tiffwriter::Kind::BilevelG4, QSize(40, 52)));
        if (vWritten.isValid()) {
            QFile f(path);
            EXPECT_TRUE(f.open(QIODevice::ReadWrite));
            EXPECT_TRUE(f.setFileTime(vWritten, QFileDevice::FileModificationTime));
        }
        return path;
    }

    void AddReadSetting(const QString& vName, const QString& vFolder, bool vSubDirs, const QString& vPattern)
    {
        settingstree::AddRow(settingstree::Group(context.DetailSet, QStringLiteral("\\読み込み\\")),
                             QStringLiteral("livReadFolder"), vName,
                             {vFolder, vSubDirs ? QStringLiteral("する") : QStringLiteral("しない"), vPattern});
    }

    void SetSort(bool vOn, bool vByName, bool vAscending)
    {
        const SDC group = context.DetailSet->Thread(frmMain::WindowGroup);
        group->Thread(QStringLiteral("chkWindowSort"))->SetDataValue(QStringLiteral("Value"), vOn ? QStringLiteral("1") : QStringLiteral("0"));
        auto option = [&](const QString& vControl, bool vFirst) {
            const SDC control = group->CreateThread(vControl);
            control->CreateThread(QStringLiteral("0"))->AddData(vFirst ? QStringLiteral("True") : QStringLiteral("False"), QStringLiteral("Value"));
            control->CreateThread(QStringLiteral("1"))->AddData(vFirst ? QStringLiteral("False") : QStringLiteral("True"), QStringLiteral("Value"));
        };
        for (const QString& control : {QStringLiteral("optWindowSortTarget"), QStringLiteral("optWindowSortMode")})
            if (group->Exists(control))
                group->DeleteData(control);
        option(QStringLiteral("optWindowSortTarget"), vByName);
        option(QStringLiteral("optWindowSortMode"), vAscending);
    }

    // The tabs' captions (file names) from left to right.
    QStringList Captions() const
    {
        QStringList captions;
        for (int i = 0; i < Tabs(); ++i)
            captions << form->tabMain()->Bar()->tabText(i);
        return captions;
    }

    // Runs vAnswer on the modal dialog of type T as soon as it is up, from inside its own loop.
    // The watch ends with the answer; a test that expects no dialog deletes the returned watch.
    template <typename T, typename F>
    static QTimer* WhenDialogUp(F vAnswer)
    {
        auto* poll = new QTimer;
        poll->setInterval(0);
        QObject::connect(poll, &QTimer::timeout, poll, [poll, vAnswer] {
            if (auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget())) {
                poll->stop();
                poll->deleteLater();
                vAnswer(dialog);
            }
        });
        poll->start();
        return poll;
    }
};
