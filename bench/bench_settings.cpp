// Loading and saving a settings file of about 1 MB (20,000 entries), beside its floor: reading
// the same file, converting it from code page 932 and splitting it into lines, which any reader
// of the format has to do.

#include "settings/DataSaveLoadClass.h"
#include "support/Cp932.h"
#include "support/FileBytes.h"

#include <QStringList>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

struct Fixture {
    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("Marnoquill.ini"));
    SDC tree = std::make_shared<StructuredDataClass>();

    Fixture()
    {
        for (int g = 0; g < 200; ++g) {
            SDC group = tree->CreateThread(QStringLiteral("\\グループ%1\\").arg(g));
            // Most values are plain; one in ten holds a TAB or a line break to escape.
            for (int i = 0; i < 100; ++i)
                group->AddData(QStringLiteral("表示設定の値 %1 です%2右から左へ")
                                   .arg(i)
                                   .arg(i % 10 == 0 ? QStringLiteral("\r\n") : QStringLiteral("、")),
                               QStringLiteral("chkオプション%1").arg(i));
        }
        // A small section of another owner stands before ours and must pass through.
        SDC neighbour = std::make_shared<StructuredDataClass>();
        for (int i = 0; i < 20; ++i)
            neighbour->AddData(QStringLiteral("値%1").arg(i), QStringLiteral("key%1").arg(i));
        DataSaveLoadClass other;
        other.SetData(neighbour);
        other.Save(path, QStringLiteral("TreeView"));
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

void Floor(benchmark::State& state)
{
    Fixture& f = Shared();
    for (auto _ : state) {
        const QString text = Cp932::Decode(FileBytes::ReadAll(f.path));
        QStringList lines;
        FileBytes::ForEachLine<QStringView>(text, [&](QStringView line) { lines.append(line.toString()); });
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(state.iterations() * FileBytes::ReadAll(f.path).size());
}

void Load(benchmark::State& state)
{
    Fixture& f = Shared();
    for (auto _ : state) {
        SDC tree = std::make_shared<StructuredDataClass>();
        DataSaveLoadClass io;
        io.SetData(tree);
        io.Load(f.path, QStringLiteral("DetailSet"));
        benchmark::DoNotOptimize(tree);
    }
}

void Save(benchmark::State& state)
{
    Fixture& f = Shared();
    for (auto _ : state) {
        DataSaveLoadClass io;
        io.SetData(f.tree);
        io.Save(f.path, QStringLiteral("DetailSet"));
    }
}

void LoadAndSave(benchmark::State& state)
{
    Fixture& f = Shared();
    for (auto _ : state) {
        SDC tree = std::make_shared<StructuredDataClass>();
        DataSaveLoadClass io;
        io.SetData(tree);
        io.Load(f.path, QStringLiteral("DetailSet"));
        io.Save(f.path, QStringLiteral("DetailSet"));
    }
}

} // namespace

BENCHMARK(Floor)->Unit(benchmark::kMillisecond);
BENCHMARK(Load)->Unit(benchmark::kMillisecond);
BENCHMARK(Save)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadAndSave)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
