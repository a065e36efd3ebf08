// Hostile files: the samples and documents built here, mutated thousands of times with a fixed
// seed at three depths (the file's bytes, the expanded records behind a valid container, the
// compressed stream behind a valid check value). Every variant must end in a page drawn or in
// a refusal that carries a code of the runtime's table: never a crash, a hang or another kind
// of exception. Memory stays bounded by the engine's own limits; the sanitized build of this
// program catches what a plain one would not notice.
#include "common/TestFiles.h"
#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/Lh5.h"
#include "engine/Model.h"
#include "engine/write/Edit.h"
#include "engine/write/Saver.h"
#include "engine/PageRender.h"
#include "engine/XdwBuilder.h"
#include "engine/emf/MetafileWriter.h"

#include <QDir>
#include <gtest/gtest.h>

#include <random>
#include <sys/resource.h>

using namespace xdwtest;

namespace {

// Variants per source and depth; small enough for the sanitized build to finish in a minute.
constexpr int Variants = 4000;
const QString Unexpected = GetXdwErrorText(0x12345678);

struct Source {
    QString name;
    QByteArray bytes;
};

std::vector<Source> Sources()
{
    std::vector<Source> sources;
    const QString dir = testfiles::SharedTestData(QStringLiteral("xdw"));
    if (!dir.isEmpty()) {
        for (const QString& name : QDir(dir).entryList({QStringLiteral("*.xdw"), QStringLiteral("*.xbd")}))
            sources.push_back({name, testfiles::ReadBytes(dir + u'/' + name)});
    }
    PageSpec jpeg;
    jpeg.content = JpegContent(QImage(40, 56, QImage::Format_RGB32), jpeg.width, jpeg.height);
    jpeg.annotations.push_back({0x8011, 100, 100, 2000, 500, QStringLiteral("注記"), {}, 90});
    sources.push_back({QStringLiteral("built-jpeg"), Document({jpeg, PageSpec{}})});
    // A printed page: compressed metafile content with text, a brush, a bar and a picture strip.
    testemf::Emf emf(21000, 29700, 4961, 7016, 210, 297);
    emf.Font(1, -100, 128, QStringLiteral("ＭＳ 明朝"))
        .TextW(600, 600, QStringLiteral("請求書"), {100, 100, 100})
        .Brush(2, 0x00336699)
        .Rect(600, 1200, 4300, 1260)
        .StretchDib(600, 1400, 400, 200, testemf::DibInfo(4, 2, 8), QByteArray(8, '\x40'), 4, 2);
    PageSpec printed;
    printed.content = DrawingFields(4, emf.Finish(), 21000, 29700, true);
    sources.push_back({QStringLiteral("built-printed"), Document({printed})});
    FileOptions binder = Options(10, true, 0xC014);
    binder.entries.push_back(QByteArray(300, 'e'));
    sources.push_back({QStringLiteral("built-binder"), File(BinderRecords({{PageSpec{}}, {jpeg}}), binder)});
    return sources;
}

QByteArray Mutate(QByteArray vBytes, std::mt19937& vRandom)
{
    if (vBytes.isEmpty())
        return vBytes;
    auto pick = [&](qsizetype n) { return static_cast<qsizetype>(vRandom() % static_cast<quint32>(n)); };
    switch (vRandom() % 6) {
    case 0:   // truncated anywhere
        vBytes.truncate(pick(vBytes.size()));
        break;
    case 1:   // a few bytes flipped
        for (int i = 0, n = 1 + static_cast<int>(vRandom() % 4); i < n; ++i)
            vBytes[pick(vBytes.size())] = static_cast<char>(vRandom());
        break;
    case 2:   // a length or count made huge
        vBytes[pick(vBytes.size())] = static_cast<char>(0x84 | (vRandom() % 2) * 0x7B);
        break;
    case 3: { // a run copied over itself elsewhere: deep or circular nesting, repeated records
        const qsizetype from = pick(vBytes.size());
        const qsizetype n = qMin<qsizetype>(1 + pick(64), vBytes.size() - from);
        vBytes.insert(pick(vBytes.size()), vBytes.mid(from, n));
        break;
    }
    case 4:   // bytes removed
        vBytes.remove(pick(vBytes.size()), 1 + pick(8));
        break;
    default:  // a bit flipped
        vBytes[pick(vBytes.size())] = static_cast<char>(vBytes[pick(vBytes.size())] ^ (1 << (vRandom() % 8)));
        break;
    }
    return vBytes;
}

// A file that reads is loaded for change, turned and saved; what is saved must read again.
std::string Rewrite(const QByteArray& vFile, int vPages)
{
    QByteArray saved;
    try {
        xdw::EditableFile file = xdw::LoadEditable(vFile);
        if (vPages > 0)
            xdw::RotatePage(file, 1, 90);
        saved = xdw::SavedBytes(file);
    } catch (const xdw::FormatError& e) {
        return GetXdwErrorText(e.code) == Unexpected ? "edit refused with an unknown code" : "";
    }
    try {
        const xdw::Model again(saved);
        if (static_cast<int>(again.Pages().size()) != vPages)
            return "a saved file lost pages";
    } catch (const xdw::FormatError& e) {
        return "a saved file does not read back: " + e.reason.toStdString();
    }
    return {};
}

// Opens, then draws and reads every page at a small size, and saves a change. Returns "" when
// all went as it should, else what went wrong.
std::string Exercise(const QByteArray& vFile)
{
    try {
        const xdw::Model model(vFile);
        if (std::string rewritten = Rewrite(vFile, static_cast<int>(model.Pages().size())); !rewritten.empty())
            return rewritten;
        for (int i = 0; i < static_cast<int>(model.Pages().size()) && i < 20; ++i) {
            try {
                (void)xdw::RenderPage(model, i, 10, i % 2 == 0);
                (void)xdw::PageText(model, i);
            } catch (const xdw::FormatError& e) {
                if (GetXdwErrorText(e.code) == Unexpected)
                    return "page refused with an unknown code";
            }
        }
    } catch (const xdw::FormatError& e) {
        if (GetXdwErrorText(e.code) == Unexpected)
            return "refused with an unknown code";
    } catch (const std::exception& e) {
        return std::string("unexpected exception: ") + e.what();
    }
    return {};
}

long PeakKilobytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace

TEST(Mutation, MutatedFilesOpenOrAreRefusedWithATableCode)
{
    const long before = PeakKilobytes();
    for (const Source& source : Sources()) {
        ASSERT_EQ(Exercise(source.bytes), "") << source.name.toStdString();
        const xdw::Model original(source.bytes);
        const QByteArray records = original.File().Properties();
        const QByteArray stored = original.File().StoredProperties().toByteArray();
        FileOptions plain = Options(original.File().Generation(), false, original.File().RootKind());
        std::mt19937 random(20261124);
        for (int v = 0; v < Variants; ++v) {
            const QByteArray file = Mutate(source.bytes, random);
            ASSERT_EQ(Exercise(file), "") << source.name.toStdString() << " file variant " << v;
            // Records behind a container that holds together, so the tree and drawings are reached.
            const QByteArray deep = File(Mutate(records, random), plain);
            ASSERT_EQ(Exercise(deep), "") << source.name.toStdString() << " record variant " << v;
            // The compressed stream itself, at its own size and at a much larger claim.
            try {
                const qint64 claim = v % 3 == 0 ? records.size() * 100 : records.size();
                (void)lh5::Expand(Mutate(stored, random), claim);
            } catch (const xdw::FormatError&) {
            }
        }
    }
    // The limits hold each variant far below this; a decoder that trusted a claimed size
    // would not.
#if defined(__SANITIZE_ADDRESS__)
    // AddressSanitizer keeps up to 256 MiB of freed memory aside to catch late uses.
    constexpr long Quarantine = 256L * 1024;
#else
    constexpr long Quarantine = 0;
#endif
    EXPECT_LT(PeakKilobytes() - before, 512L * 1024 + Quarantine);
}
