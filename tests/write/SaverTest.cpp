// Saving: a new file is a header and one segment, a saved file gains one segment and keeps its
// bytes, and a save that cannot finish leaves the target as it was.
#include "document/XdwApi.h"
#include "engine/Lh5.h"
#include "engine/Tlv.h"
#include "engine/XdwEngine.h"
#include "engine/write/Edit.h"
#include "engine/write/Lh5Literal.h"
#include "write/WriteSupport.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace xdw;
using writetest::CodeOf;
using writetest::Labelled;

namespace {

// Runs vStep in a child process, for limits and identities that must not touch the test's own:
// true when it returned true there.
template <typename F>
bool InChild(F&& vStep)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(vStep() ? 0 : 1);
    int status = 0;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Each page's placements as kind, text and drawing, to compare two reads of a file.
QStringList Contents(const Model& vModel)
{
    QStringList out;
    for (const Page& page : vModel.Pages())
        for (const Placement& p : page.placements)
            out.append(QStringLiteral("%1 %2 %3").arg(p.kind, 0, 16).arg(p.text)
                           .arg(QString::fromLatin1(vModel.DrawingOf(p).toByteArray().toBase64())));
    return out;
}

class SaverTest : public ::testing::Test {
protected:
    QString Path(const QString& vName) const { return dir_.filePath(vName); }
    // A one-page file written at vName, loaded, with twenty more pages to save.
    EditableFile Grown(const QString& vName, QByteArray* vBefore)
    {
        *vBefore = xdwtest::Document({Labelled(QStringLiteral("1"))});
        testfiles::WriteBytes(Path(vName), *vBefore);
        EditableFile file = LoadEditable(Path(vName));
        InsertPages(file, 1, LoadEditable(xdwtest::Document(std::vector(20, Labelled(QStringLiteral("2"))))));
        return file;
    }
    QTemporaryDir dir_;
};

} // namespace

TEST_F(SaverTest, NewFileIsTheHeaderAndOneSegmentOfItsGeneration)
{
    for (int generation : {7, 10}) {
        EditableFile file = NewDocument(generation);
        InsertPages(file, 1, LoadEditable(xdwtest::Document({Labelled(QStringLiteral("一"))})));
        const QString path = Path(QStringLiteral("new%1.xdw").arg(generation));
        Save(file, path);
        const QByteArray bytes = testfiles::ReadBytes(path);
        QByteArray header = QByteArray::fromHex("600E820107800300C013830401 0D0A01");
        header[4] = static_cast<char>(generation);
        EXPECT_EQ(bytes.left(16), header);
        EXPECT_EQ(static_cast<quint8>(bytes[16]), 0x61);
        // The trailer's tag sits just before its value (short here: one length byte), 65 in
        // generation 7 and 68 from 10.
        const qsizetype trailer = bytes.size() - static_cast<quint8>(bytes[bytes.size() - 4]);
        EXPECT_EQ(static_cast<quint8>(bytes[trailer - 2]), generation >= 10 ? 0x68 : 0x65);
        EXPECT_EQ(Container(bytes).Superseded(), 0);

        XdwEngine engine;
        engine.OpenDocument(path, 1);
        ASSERT_EQ(engine.LastResult(), 0) << engine.LastReason().toStdString();
        engine.SelectDocumentHandle(engine.ReadDocumentHandle());
        engine.GetDocumentInformation();
        EXPECT_EQ(engine.Pages(), 1);
        EXPECT_EQ(engine.GetPageTextToMemory(1), QStringLiteral("一"));
    }
}

TEST_F(SaverTest, EverySampleSavedAgainKeepsItsBytesPagesAndAnnotations)
{
    const QStringList names = writetest::SampleNames();
    if (names.isEmpty())
        GTEST_SKIP() << "no shared test data beside the checkout";
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        const QByteArray before = writetest::Sample(name);
        EditableFile file = LoadEditable(before);
        testfiles::WriteBytes(Path(name), before);
        Save(file, Path(name));
        const QByteArray after = testfiles::ReadBytes(Path(name));
        EXPECT_TRUE(after.startsWith(before));
        EXPECT_EQ(static_cast<quint8>(after[before.size()]), 0x61);
        const Model old(before), saved(after);
        EXPECT_EQ(saved.File().Generation(), old.File().Generation());
        EXPECT_EQ(saved.File().EntryOffsets(), old.File().EntryOffsets());
        EXPECT_EQ(Contents(saved), Contents(old));
        // What the earlier state took is counted as left behind.
        EXPECT_EQ(saved.File().Superseded(), old.File().Superseded() + before.size() - old.File().StateStart());
    }
}

TEST_F(SaverTest, LeftBehindBytesAddUpAsInTheVendorsOwnSaves)
{
    SAMPLE_OR_SKIP(bytes, "binder-gen7.xbd");
    // The binder was saved three times; cut after its second save it is that save's file, and
    // our count for a third save must be the one the vendor's third trailer holds.
    std::vector<qsizetype> ends;
    TlvReader segments(QByteArrayView(bytes).sliced(16));
    while (!segments.AtEnd())
        ends.push_back(16 + segments.Next().end);
    ASSERT_EQ(ends.size(), 3u);
    const Container second(bytes.left(ends[1]));
    EXPECT_EQ(second.Superseded() + ends[1] - second.StateStart(), 2889);
    EXPECT_EQ(Container(bytes).Superseded(), 2889);
}

TEST_F(SaverTest, EntriesAddedToASavedFileFollowTheOldOnesThroughTwoSaves)
{
    xdwtest::FileOptions inEntries;
    inEntries.contentInEntries = true;
    xdwtest::PageSpec page;
    page.content = xdwtest::DrawingFields(4, QByteArray(300, 'p'), 21000, 29700, true);
    const QByteArray first = xdwtest::Document({page}, inEntries);
    const QString path = Path(QStringLiteral("a.xdw"));
    testfiles::WriteBytes(path, first);
    EditableFile file = LoadEditable(path);
    InsertPages(file, 2, LoadEditable(xdwtest::Document({page, page}, inEntries)));
    Save(file, path);
    InsertPages(file, 1, LoadEditable(first));
    Save(file, path);

    const Model model(testfiles::ReadBytes(path));
    EXPECT_EQ(model.File().EntryCount(), 4);
    EXPECT_EQ(model.File().EntryOffsets()[0], Container(first).EntryOffsets()[0]);
    ASSERT_EQ(model.Pages().size(), 4u);
    for (const Page& p : model.Pages())
        EXPECT_EQ(model.DrawingOf(p.placements.at(0)), page.content);
}

TEST_F(SaverTest, FailedSavesLeaveTheTargetAsItWasAndNoTemporaryBehind)
{
    QByteArray before;
    EditableFile file = Grown(QStringLiteral("full.xdw"), &before);
    // A limit on file size stands for a full disk: writes past it fail with EFBIG.
    EXPECT_TRUE(InChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlim_t size = static_cast<rlim_t>(before.size() + 100);
        const rlimit limit{size, size};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return CodeOf([&] { Save(file, Path(QStringLiteral("full.xdw"))); }) == XdwResult::DiskFull;
    }));
    // Another program's exclusive lock means the file is in use, for loading and saving.
    const int other = ::open(QFile::encodeName(Path(QStringLiteral("full.xdw"))).constData(), O_RDONLY);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    EXPECT_EQ(CodeOf([&] { Save(file, Path(QStringLiteral("full.xdw"))); }), XdwResult::FileInUse);
    EXPECT_EQ(CodeOf([&] { (void)LoadEditable(Path(QStringLiteral("full.xdw"))); }), XdwResult::FileInUse);
    ::close(other);
    // A new file never goes over one that is there.
    EditableFile page = ExtractPage(file, 1);
    EXPECT_EQ(CodeOf([&] { Save(page, Path(QStringLiteral("full.xdw"))); }), XdwResult::FileExists);
    EXPECT_EQ(CodeOf([&] { Save(page, Path(QStringLiteral("no/such/folder.xdw"))); }), XdwResult::BadPathName);
    EXPECT_EQ(CodeOf([&] { (void)LoadEditable(Path(QStringLiteral("absent.xdw"))); }), XdwResult::FileNotFound);

    EXPECT_EQ(testfiles::ReadBytes(Path(QStringLiteral("full.xdw"))), before);
    EXPECT_EQ(QDir(dir_.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("full.xdw")});
}

TEST_F(SaverTest, FolderWeMayNotWriteRefusesWithAccessDenied)
{
    QByteArray before;
    EditableFile file = Grown(QStringLiteral("ro.xdw"), &before);
    // Root ignores permission bits, so as root the save runs as nobody in a folder only its
    // owner writes to.
    QFile::setPermissions(dir_.path(), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
    QFile::setPermissions(Path(QStringLiteral("ro.xdw")), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
    EXPECT_TRUE(InChild([&] {
        if (testfiles::RunningAsRoot() && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            return false;
        return CodeOf([&] { Save(file, Path(QStringLiteral("ro.xdw"))); }) == XdwResult::NoPermission;
    }));
    QFile::setPermissions(dir_.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(testfiles::ReadBytes(Path(QStringLiteral("ro.xdw"))), before);
}

TEST(Lh5Literal, ExpandsToWhatWentInAcrossBlockBoundaries)
{
    for (qsizetype size : {1, 0xFFFF, 0x10000, 200000}) {
        QByteArray data(size, Qt::Uninitialized);
        for (qsizetype i = 0; i < size; ++i)
            data[i] = static_cast<char>((i * 7919) >> 3);
        EXPECT_EQ(lh5::Expand(lh5::CompressLiteral(data), size), data) << size;
    }
}
