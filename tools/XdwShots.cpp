// Screenshots of DocuWorks samples in the real main window, drawn by our own engine: each
// sample fit to the window, and the ten-page one as a spread.
//
//     marnoquill_xdw_shots <folder> <samples folder>
#include "document/XdwApi.h"
#include "engine/XdwEngine.h"
#include "viewer/AppContext.h"
#include "viewer/frmMain.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>

namespace {

void Save(QWidget* vWidget, const QDir& vFolder, const QString& vName)
{
    QApplication::processEvents();
    const QString path = vFolder.filePath(vName);
    if (vWidget->grab().save(path))
        std::printf("%s\n", path.toLocal8Bit().constData());
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "usage: marnoquill_xdw_shots <folder> <samples folder>\n");
        return 1;
    }
    SetXdwApiObject(std::make_shared<XdwEngine>());
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    QDir().mkpath(folder.path());
    const QDir samples(QString::fromLocal8Bit(argv[2]));
    QTemporaryDir work;
    AppContext context;
    context.SettingsPath = work.filePath(QStringLiteral("Marnoquill.ini"));
    for (const QString& name : samples.entryList({QStringLiteral("*.xdw")})) {
        frmMain window(context);
        window.Load();
        window.resize(1000, 760);
        window.show();
        window.InitialOpenFile(samples.filePath(name), true);
        window.SetPaintSizeMode(QStringLiteral("1"));
        Save(&window, folder, QStringLiteral("xdw-") + QFileInfo(name).completeBaseName() + QStringLiteral(".png"));
        if (name.startsWith(QStringLiteral("annotated-10"))) {
            window.SetDoubleDisp(QStringLiteral("2"));
            window.SetPaintSizeMode(QStringLiteral("1"));
            Save(&window, folder, QStringLiteral("xdw-spread.png"));
        }
    }
    return 0;
}
