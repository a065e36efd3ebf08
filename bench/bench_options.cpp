// Opening the options dialog and pressing "保存" over a settings file of 2,000 list rows (keys,
// gestures, popup rows, composites), beside its floor: cloning the same tree and saving it with
// the store and the settings writer alone, which any save of a clone has to do.

#include "commands/AppActionClass.h"
#include "commands/AppCommandListClass.h"
#include "options/frmOption.h"
#include "settings/DataSaveLoadClass.h"

#include <QTemporaryDir>
#include <QTreeWidget>
#include <benchmark/benchmark.h>

namespace {

void AddRow(const SDC& vGroup, const QString& vList, const QString& vText, const QStringList& vSubItems)
{
    const SDC list = vGroup->Exists(vList) ? vGroup->Thread(vList) : vGroup->CreateThread(vList);
    const SDC rows = list->Exists(QStringLiteral("ListItem")) ? list->Thread(QStringLiteral("ListItem"))
                                                              : list->CreateThread(QStringLiteral("ListItem"));
    const SDC row = rows->CreateThread();
    row->AddData(vText, QStringLiteral("Text"));
    row->AddData(QStringLiteral("False"), QStringLiteral("Checked"));
    const SDC sub = row->CreateThread(QStringLiteral("SubItem"));
    for (const QString& item : vSubItems)
        sub->AddData(item);
}

struct Fixture {
    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("Marnoquill.ini"));
    SDC tree = std::make_shared<StructuredDataClass>();

    Fixture()
    {
        const QString arrows = QStringLiteral("↑→↓←");
        const SDC gestures = tree->CreateThread(QStringLiteral("\\マウスジェスチャ\\"));
        for (int i = 0; i < 600; ++i) {
            QString gesture;
            for (int n = i + 1; n > 0; n /= 4)
                gesture += arrows.at(n % 4);
            AddRow(gestures, QStringLiteral("livMouseGesture"), QStringLiteral("次ページ"), {gesture});
        }
        const SDC keys = tree->CreateThread(QStringLiteral("\\キーボード\\"));
        for (int i = 0; i < 600; ++i)
            AddRow(keys, QStringLiteral("livShortCutKey"), QStringLiteral("前ページ"), {QStringLiteral("Ctrl + Key%1").arg(i)});
        const SDC multi = tree->CreateThread(QStringLiteral("\\複合動作\\"));
        const SDC steps = multi->CreateThread(QStringLiteral("livMultiActionMultiAction"));
        const SDC list = multi->CreateThread(QStringLiteral("動作リスト"));
        for (int i = 0; i < 300; ++i) {
            const QString name = QStringLiteral("Multi:複合%1").arg(i);
            AddRow(multi, QStringLiteral("livMultiActionMultiAction"), name, {});
            const SDC composite = list->CreateThread(name);
            for (int s = 0; s < 3; ++s)
                composite->AddData(QStringLiteral("次ページ"));
        }
        Q_UNUSED(steps);
        const SDC popup = tree->CreateThread(QStringLiteral("\\ポップアップメニュー\\"));
        for (int i = 0; i < 500; ++i)
            AddRow(popup, QStringLiteral("livPMenuList"), QStringLiteral("次ページ"), {QStringLiteral("次へ%1").arg(i), QString()});
        DataSaveLoadClass io;
        io.SetData(tree);
        io.Save(path, QStringLiteral("DetailSet"));
    }
};

Fixture& Shared()
{
    static Fixture fixture;
    return fixture;
}

// The dialog clones the live tree when it opens and again when it saves.
void Floor(benchmark::State& state)
{
    Fixture& f = Shared();
    for (auto _ : state) {
        const SDC work = f.tree->Clone();
        const SDC live = work->Clone();
        DataSaveLoadClass io;
        io.SetData(live);
        io.Save(f.path, QStringLiteral("DetailSet"));
        benchmark::DoNotOptimize(live);
    }
}

void Open(benchmark::State& state)
{
    Fixture& f = Shared();
    SDC live = f.tree->Clone();
    AppActionClass action(live);
    AppCommandListClass commands;
    for (auto _ : state) {
        frmOption dialog(live, f.path, action, commands, nullptr);
        benchmark::DoNotOptimize(&dialog);
    }
}

void OpenAndSave(benchmark::State& state)
{
    Fixture& f = Shared();
    SDC live = f.tree->Clone();
    AppActionClass action(live);
    AppCommandListClass commands;
    for (auto _ : state) {
        frmOption dialog(live, f.path, action, commands, nullptr);
        dialog.cmdSave_Click();
    }
}

// Every page shown once before saving: the lists are filled into their views and stored back.
void OpenVisitAllAndSave(benchmark::State& state)
{
    Fixture& f = Shared();
    SDC live = f.tree->Clone();
    AppActionClass action(live);
    AppCommandListClass commands;
    for (auto _ : state) {
        frmOption dialog(live, f.path, action, commands, nullptr);
        auto* tree = dialog.Ctl<QTreeWidget>(QStringLiteral("TreeView1"));
        for (int i = 1; i < tree->topLevelItemCount(); ++i)
            tree->setCurrentItem(tree->topLevelItem(i));
        dialog.cmdSave_Click();
    }
}

} // namespace

BENCHMARK(Floor)->Unit(benchmark::kMillisecond);
BENCHMARK(Open)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenAndSave)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenVisitAllAndSave)->Unit(benchmark::kMillisecond);
