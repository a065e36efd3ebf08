// Screenshots of files coming in: the folder dialog of "フォルダ内のファイルを全て開く", and the
// window after a read setting has opened a folder of 200 scans, sorted by name.
//
//     marnoquill_intake_shots <folder>
#include "SamplePage.h"
#include "ShotSave.h"
#include "common/SettingsTree.h"
#include "common/TiffWriter.h"
#include "viewer/AppContext.h"
#include "viewer/frmMain.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {

void Settings(AppContext& vContext, const QString& vScans)
{
    const SDC window = vContext.DetailSet->CreateThread(frmMain::WindowGroup);
    auto put = [&](const QString& vControl, const QString& vForm, const QString& vValue) {
        window->CreateThread(vControl)->AddData(vValue, vForm);
    };
    put(QStringLiteral("cboStartDocSize"), QStringLiteral("Text"), QStringLiteral("ページ全体"));
    put(QStringLiteral("chkWindowSort"), QStringLiteral("Value"), QStringLiteral("1"));
    put(QStringLiteral("chkOpenOnlyOne"), QStringLiteral("Value"), QStringLiteral("0"));
    put(QStringLiteral("txtResolution"), QStringLiteral("Text"), QStringLiteral("150"));
    put(QStringLiteral("txtGamma"), QStringLiteral("Text"), QStringLiteral("0"));
    put(QStringLiteral("chkWindowPositionSave"), QStringLiteral("Value"), QStringLiteral("0"));
    put(QStringLiteral("chkActiveForm"), QStringLiteral("Value"), QStringLiteral("0"));
    put(QStringLiteral("txtActiveFormTime"), QStringLiteral("Text"), QStringLiteral("1000"));
    put(QStringLiteral("txtRulerWidth"), QStringLiteral("Text"), QStringLiteral("100"));
    put(QStringLiteral("picRulerColor"), QStringLiteral("BackColor"), QStringLiteral("65280"));
    window->CreateThread(QStringLiteral("chkWindowsDisp"))->CreateThread(QStringLiteral("0"))->AddData(QStringLiteral("True"), QStringLiteral("Value"));
    settingstree::AddRow(settingstree::Group(vContext.DetailSet, QStringLiteral("\\読み込み\\")),
                         QStringLiteral("livReadFolder"), QStringLiteral("Read:スキャン"),
                         {vScans, QStringLiteral("する"), QStringLiteral("*.xdw;*.tif")});
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("shots"));
    QDir().mkpath(folder.path());
    QTemporaryDir work;
    const QString scans = work.filePath(QStringLiteral("スキャン"));
    // 200 one-page scans in two folders, written in an order the sort has to mend.
    for (int i = 0; i < 200; ++i) {
        const int number = (i * 37) % 200 + 1;
        const QString sub = scans + (number <= 100 ? QStringLiteral("/午前") : QStringLiteral("/午後"));
        QDir().mkpath(sub);
        const QString path = sub + QStringLiteral("/受付 %1.tif").arg(number, 3, 10, QLatin1Char('0'));
        if (!tiffwriter::Write(path, {DrawSamplePage(number, 200)}, tiffwriter::Kind::BilevelG4)) {
            std::fprintf(stderr, "cannot write the scans\n");
            return 1;
        }
    }

    AppContext context;
    context.SettingsPath = work.filePath(QStringLiteral("Marnoquill.ini"));
    context.AppDataPath = work.filePath(QStringLiteral("appdata"));
    Settings(context, scans);
    context.DetailSet->AddData(scans, QStringLiteral("OpenFolder"));
    frmMain window(context);
    window.Load();
    window.resize(1000, 760);
    window.show();

    QTimer::singleShot(300, [&] {
        if (QWidget* dialog = QApplication::activeModalWidget()) {
            SaveShot(dialog, folder, "folder-dialog.png");
            dialog->close();
        }
    });
    window.FolderOpenDialog();

    window.ReadFolder(QStringLiteral("Read:スキャン"));
    SaveShot(&window, folder, "folder-read-200-tabs.png");
    return 0;
}
