// Takes the screenshots of the main window that the README and reviews look at: one page fit to
// the window, a spread left to right and right to left, 200%, the page jump dialog and the
// about box. Offscreen grabs of the real window, with sample pages that show their numbers.
//
//     marnoquill_shots <folder>
#include "SamplePage.h"
#include "ShotSave.h"
#include "common/TiffWriter.h"
#include "viewer/AppContext.h"
#include "viewer/frmMain.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {

// Grabs the modal dialog that vOpen brings up, then closes it.
template <class Open>
void SaveDialog(Open vOpen, const QDir& vFolder, const char* vName)
{
    QTimer::singleShot(200, [&] {
        if (QWidget* dialog = QApplication::activeModalWidget()) {
            SaveShot(dialog, vFolder, vName);
            dialog->close();
        }
    });
    vOpen();
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationVersion(QStringLiteral("0.1.0"));
    const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("shots"));
    QDir().mkpath(folder.path());
    QTemporaryDir work;
    const QString document = work.filePath(QStringLiteral("見本 白黒8ページ.tif"));
    const QString other = work.filePath(QStringLiteral("報告書 5ページ.tif"));
    auto pages = [](int vCount) {
        QList<QImage> list;
        for (int page = 1; page <= vCount; ++page)
            list.append(DrawSamplePage(page, vCount));
        return list;
    };
    if (!tiffwriter::Write(document, pages(8), tiffwriter::Kind::BilevelG4)
        || !tiffwriter::Write(other, pages(5), tiffwriter::Kind::GreyLzw)) {
        std::fprintf(stderr, "cannot write the sample pages\n");
        return 1;
    }

    AppContext context;
    context.SettingsPath = work.filePath(QStringLiteral("Marnoquill.ini"));
    frmMain window(context);
    window.Load();
    window.resize(1000, 760);
    window.show();
    window.InitialOpenFile(other, false);
    window.InitialOpenFile(document, true);
    window.SetPaintSizeMode(QStringLiteral("1"));
    SaveShot(&window, folder, "single-fit-page.png");

    window.SetDoubleDisp(QStringLiteral("2"));
    window.NextPage();
    SaveShot(&window, folder, "spread-left-to-right.png");
    window.SetDispDirection(QStringLiteral("RL"));
    SaveShot(&window, folder, "spread-right-to-left.png");
    window.AddRuler(0);
    window.AddRuler(1);
    SaveShot(&window, folder, "rulers-spread.png");
    window.DeleteAllRuler();

    window.SetDispDirection(QStringLiteral("LR"));
    window.SetDoubleDisp(QStringLiteral("1"));
    window.SetPaintSizeMode(QStringLiteral("3"));
    SaveShot(&window, folder, "zoom-200.png");

    window.SetPaintSizeMode(QStringLiteral("1"));
    SaveDialog([&] { window.PageJump(); }, folder, "page-jump.png");
    SaveDialog([&] { window.DispVersion(); }, folder, "about.png");
    return 0;
}
