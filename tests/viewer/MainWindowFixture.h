#pragma once
// A real main window on the offscreen platform, with a settings tree written by the test and
// TIFF files whose pages show their numbers, so that a test can ask which page a pane holds.

#include "common/PagePicture.h"
#include "common/RecordingPresenter.h"
#include "common/TiffWriter.h"
#include "viewer/PagePane.h"
#include "viewer/TabStrip.h"
#include "viewer/frmMain.h"

#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

class MainWindowTest : public ::testing::Test {
protected:
    // The "\ウインドウ\" group as the options dialog writes it.
    static void AddWindowGroup(const SDC& vSettings, bool vOpenOnlyOne = true, bool vSpread = false)
    {
        const SDC group = vSettings->CreateThread(frmMain::WindowGroup);
        auto put = [&](const QString& vControl, const QString& vForm, const QString& vValue) {
            group->CreateThread(vControl)->AddData(vValue, vForm);
        };
        put(QStringLiteral("cboStartDocSize"), QStringLiteral("Text"), QStringLiteral("ページ全体"));
        const SDC layout = group->CreateThread(QStringLiteral("chkWindowsDisp"));
        layout->CreateThread(QStringLiteral("0"))->AddData(vSpread ? QStringLiteral("False") : QStringLiteral("True"), QStringLiteral("Value"));
        layout->CreateThread(QStringLiteral("1"))->AddData(vSpread ? QStringLiteral("True") : QStringLiteral("False"), QStringLiteral("Value"));
        put(QStringLiteral("chkWindowPositionSave"), QStringLiteral("Value"), QStringLiteral("1"));
        put(QStringLiteral("txtResolution"), QStringLiteral("Text"), QStringLiteral("150"));
        put(QStringLiteral("txtGamma"), QStringLiteral("Text"), QStringLiteral("0"));
        put(QStringLiteral("chkWindowSort"), QStringLiteral("Value"), QStringLiteral("0"));
        put(QStringLiteral("chkOpenOnlyOne"), QStringLiteral("Value"), vOpenOnlyOne ? QStringLiteral("1") : QStringLiteral("0"));
        put(QStringLiteral("chkActiveForm"), QStringLiteral("Value"), QStringLiteral("0"));
        put(QStringLiteral("txtActiveFormTime"), QStringLiteral("Text"), QStringLiteral("1000"));
        put(QStringLiteral("txtRulerWidth"), QStringLiteral("Text"), QStringLiteral("100"));
        put(QStringLiteral("picRulerColor"), QStringLiteral("BackColor"), QStringLiteral("65280"));
    }

    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        context.SettingsPath = dir.filePath(QStringLiteral("Marnoquill.ini"));
    }

    // Makes and loads the window; tests change the settings tree before this.
    frmMain& Window()
    {
        if (!form) {
            context.CreateCommands();
            form = std::make_unique<frmMain>(context);
            form->Load();
            context.Action->RefForm(form.get());
            form->resize(900, 700);
            form->show();
        }
        return *form;
    }

    QString Tiff(const QString& vName, int vPages)
    {
        const QString path = dir.filePath(vName);
        EXPECT_TRUE(tiffwriter::WriteNumbered(path, vPages, tiffwriter::Kind::BilevelG4, QSize(340, 440)));
        return path;
    }

    // The page number a pane shows, 0 when it is empty.
    int PageIn(int vLead) const
    {
        PagePane* pane = form->LEAD(vLead);
        return pane->HasBitmap() ? pagepicture::Read(pane->Bitmap()) : 0;
    }

    QString Panel(int vNo) const { return form->StatusPanel(vNo)->text(); }
    int Tabs() const { return form->tabMain()->Count(); }

    QTemporaryDir dir;
    AppContext context;
    std::unique_ptr<frmMain> form;
    ScopedRecordingPresenter shown;
};
