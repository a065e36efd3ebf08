// Opening a whole folder of small TIFF files through a read setting, sorted by name, until the
// last tab is there; beside its floor, measured in the same run: the same directory walk, one
// look into each TIFF (what a tab that isn't shown needs of its file), and the same rows
// inserted and read back sorted through the bare SQLite C API in one transaction.
//
// Sizes 1,000, 10,000 and 30,000 show whether the floor's cost per file stays flat; the read's
// own sizes are smaller (see below). The resident memory after each read is reported.

#include "common/SettingsTree.h"
#include "support/DirClass.h"
#include "viewer/AppContext.h"
#include "viewer/TabStrip.h"
#include "viewer/frmMain.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <tiffio.h>

#include <cstdio>
#include <map>
#include <memory>
#include <vector>

namespace {

constexpr int kSubFolders = 10;

// A message box would wait for a person; here it is printed and the run goes on.
class PrintingPresenter : public MessagePresenter {
public:
    Answer Present(const Message& vMessage) override
    {
        fprintf(stderr, "message: %s\n", vMessage.text.toUtf8().constData());
        return Answer::Ok;
    }
};

// A folder of vCount one-page 16 x 16 bilevel TIFFs in ten subfolders, made once per size.
QString Folder(int vCount)
{
    static std::map<int, std::unique_ptr<QTemporaryDir>> made;
    auto& dir = made[vCount];
    if (dir)
        return dir->path();
    dir = std::make_unique<QTemporaryDir>();
    const uint8_t rows[16 * 2] = {0xF0, 0x0F};
    for (int i = 0; i < vCount; ++i) {
        const QString folder = dir->filePath(QStringLiteral("part%1").arg(i % kSubFolders));
        QDir().mkpath(folder);
        // Names not in walk order, so that the sort has work to do.
        const QString path = folder + QStringLiteral("/scan%1.tif").arg((i * 7919) % vCount, 6, 10, QLatin1Char('0'));
        TIFF* tif = TIFFOpen(QFile::encodeName(path).constData(), "w");
        TIFFSetField(tif, TIFFTAG_IMAGEWIDTH, 16);
        TIFFSetField(tif, TIFFTAG_IMAGELENGTH, 16);
        TIFFSetField(tif, TIFFTAG_BITSPERSAMPLE, 1);
        TIFFSetField(tif, TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(tif, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
        TIFFSetField(tif, TIFFTAG_ROWSPERSTRIP, 16);
        TIFFWriteEncodedStrip(tif, 0, const_cast<uint8_t*>(rows), sizeof rows);
        TIFFClose(tif);
    }
    return dir->path();
}

double ResidentMiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024.0;
    return 0;
}

// The settings of a window that sorts by name, ascending, and one read setting for the folder.
void Settings(AppContext& vContext, const QString& vFolder, const QString& vAppData)
{
    vContext.AppDataPath = vAppData;
    const SDC window = vContext.DetailSet->CreateThread(frmMain::WindowGroup);
    auto put = [&](const char* vControl, const char* vForm, const char* vValue) {
        window->CreateThread(QLatin1String(vControl))->AddData(QLatin1String(vValue), QLatin1String(vForm));
    };
    put("cboStartDocSize", "Text", "ページ全体");
    put("chkWindowSort", "Value", "1");
    put("chkOpenOnlyOne", "Value", "0");
    put("txtResolution", "Text", "150");
    put("txtGamma", "Text", "0");
    put("chkWindowPositionSave", "Value", "0");
    put("chkActiveForm", "Value", "0");
    put("txtActiveFormTime", "Text", "1000");
    put("txtRulerWidth", "Text", "100");
    put("picRulerColor", "BackColor", "65280");
    window->CreateThread(QStringLiteral("chkWindowsDisp"))->CreateThread(QStringLiteral("0"))->AddData(QStringLiteral("True"), QStringLiteral("Value"));
    settingstree::AddRow(settingstree::Group(vContext.DetailSet, QStringLiteral("\\読み込み\\")),
                         QStringLiteral("livReadFolder"), QStringLiteral("Read:bench"),
                         {vFolder, QStringLiteral("する"), QStringLiteral("*.xdw;*.tif")});
}

void BM_ReadFolder(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const QString folder = Folder(count);
    QTemporaryDir appData;
    PrintingPresenter printer;
    const ScopedPresenter presenter(printer);
    double rss = 0;
    for (auto _ : state) {
        state.PauseTiming();
        AppContext context;
        Settings(context, folder, appData.path());
        context.CreateCommands();
        auto form = std::make_unique<frmMain>(context);
        form->Load();
        form->resize(1000, 700);
        form->show();
        QCoreApplication::processEvents();
        state.ResumeTiming();

        form->ReadFolder(QStringLiteral("Read:bench"));

        state.PauseTiming();
        if (form->tabMain()->Count() != count)
            state.SkipWithError("not every file became a tab");
        rss = ResidentMiB();
        form.reset();
        state.ResumeTiming();
    }
    state.counters["resident_MiB_after"] = rss;
    state.SetItemsProcessed(state.iterations() * count);
}

int Step(sqlite3_stmt* vStatement) { return sqlite3_step(vStatement); }

void BM_Floor(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const QString folder = Folder(count);
    QTemporaryDir dbDir;
    const QByteArray dbPath = QFile::encodeName(dbDir.filePath(QStringLiteral("floor.db")));
    for (auto _ : state) {
        sqlite3* db = nullptr;
        sqlite3_open(dbPath.constData(), &db);
        sqlite3_exec(db, "create table if not exists f (Path, FileName, No integer, primary key (Path, FileName));"
                         "create index if not exists n on f(FileName); delete from f; begin immediate transaction",
                     nullptr, nullptr, nullptr);
        sqlite3_stmt* insert = nullptr;
        sqlite3_prepare_v2(db, "insert into f values (?, ?, ?)", -1, &insert, nullptr);
        int no = 0;
        DirClass dir;
        dir.SetSubDirSearchFlag(true);
        dir.SerchFileName(QStringLiteral("*.xdw;*.tif"), folder, false, [&](const QString& vName, const QString& vPath) {
            const QByteArray path = vPath.toUtf8();
            const QByteArray name = vName.toUtf8();
            sqlite3_bind_text(insert, 1, path.constData(), int(path.size()), SQLITE_TRANSIENT);
            sqlite3_bind_text(insert, 2, name.constData(), int(name.size()), SQLITE_TRANSIENT);
            sqlite3_bind_int(insert, 3, ++no);
            Step(insert);
            sqlite3_reset(insert);
        });
        sqlite3_finalize(insert);
        sqlite3_stmt* select = nullptr;
        sqlite3_prepare_v2(db, "select Path, FileName from f order by FileName", -1, &select, nullptr);
        int pages = 0;
        while (Step(select) == SQLITE_ROW) {
            const QString path = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(select, 0)))
                                 + QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(select, 1)));
            TIFF* tif = TIFFOpen(QFile::encodeName(path).constData(), "r");
            if (tif) {
                pages += TIFFNumberOfDirectories(tif);
                TIFFClose(tif);
            }
        }
        sqlite3_finalize(select);
        sqlite3_exec(db, "commit transaction", nullptr, nullptr, nullptr);
        sqlite3_close(db);
        if (pages != count)
            state.SkipWithError("the floor missed files");
    }
    state.SetItemsProcessed(state.iterations() * count);
}

} // namespace

BENCHMARK(BM_Floor)->Arg(1000)->Arg(10000)->Arg(30000)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(3)->ReportAggregatesOnly(true);
BENCHMARK(BM_ReadFolder)->Arg(1000)->Arg(3000)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
