// Saving: a new file is a header and one segment, a saved file gains one segment and keeps its
// bytes, and a save that cannot finish leaves the target as it was.
#include "document/XdwApi.h"
#include "engine/Container.h"
#include "engine/Lh5.h"
#include "engine/Tlv.h"
#include "engine/XdwBuilder.h"
#include "engine/XdwEngine.h"
#include "engine/write/Edit.h"
#include "engine/write/Lh5Literal.h"
#include "engine/write/Saver.h"
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

namespace {

quint32 Le32At(const QByteArray& vBytes, qsizetype vAt)
{
    quint32 v = 0;
    for (int i = 3; i >= 0; --i)
        v = (v << 8) | static_cast<quint8>(vBytes[vAt + i]);
    return v;
}

// The fields of the file's last trailer.
Fields TrailerOf(const QByteArray& vFile)
{
    const qint64 length = Le32At(vFile, vFile.size() - 4);
    return Fields(QByteArrayView(vFile).last(static_cast<qsizetype>(length)));
}

xdwtest::PageSpec AnnotatedPage(const QString& vText)
{
    xdwtest::PageSpec page;
    page.annotations.push_back({0x8011, 1000, 2000, 3000, 500, vText, {}, 0});
    return page;
}

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

class SaverTest : public ::testing::Test {
protected:
    QString Path(const QString& vName) const { return dir_.filePath(vName); }
    QTemporaryDir dir_;
};

} // namespace

TEST_F(SaverTest, NewFileIsTheHeaderAndOneSegmentOfItsGeneration)
{
    for (int generation : {7, 10}) {
        EditableFile file = NewDocument(generation);
        InsertPages(file, 1, LoadEditable(xdwtest::Document({AnnotatedPage(QStringLiteral("一"))})));
        const QString path = Path(QStringLiteral("new%1.xdw").arg(generation));
        Save(file, path);
        const QByteArray bytes = testfiles::ReadBytes(path);
        QByteArray header = QByteArray::fromHex("600E820107800300C013830401 0D0A01");
        header[4] = static_cast<char>(generation);
        EXPECT_EQ(bytes.left(16), header);
        EXPECT_EQ(static_cast<quint8>(bytes[16]), 0x61);
        // The trailer's own tag sits just before its value: 65 in generation 7, 68 from 10.
        const qint64 length = Le32At(bytes, bytes.size() - 4);
        EXPECT_EQ(static_cast<quint8>(bytes[bytes.size() - length - 2]), generation >= 10 ? 0x68 : 0x65);
        EXPECT_EQ(TrailerOf(bytes).IntegerOr(2, -1), 0);

        const Model model(bytes);
        EXPECT_EQ(model.File().Generation(), generation);
        ASSERT_EQ(model.Pages().size(), 1u);
        EXPECT_EQ(model.Pages()[0].placements.at(0).text, QStringLiteral("一"));
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
        const QString path = Path(name);
        testfiles::WriteBytes(path, before);
        Save(file, path);
        const QByteArray after = testfiles::ReadBytes(path);
        EXPECT_TRUE(after.startsWith(before));
        EXPECT_EQ(static_cast<quint8>(after[before.size()]), 0x61);

        const Model old(before), saved(after);
        EXPECT_EQ(saved.File().Generation(), old.File().Generation());
        EXPECT_EQ(saved.File().EntryCount(), old.File().EntryCount());
        for (qint64 i = 0; i < old.File().EntryCount(); ++i)
            EXPECT_EQ(saved.File().EntryOffsets()[size_t(i)], old.File().EntryOffsets()[size_t(i)]);
        ASSERT_EQ(saved.Pages().size(), old.Pages().size());
        for (size_t i = 0; i < old.Pages().size(); ++i) {
            ASSERT_EQ(saved.Pages()[i].placements.size(), old.Pages()[i].placements.size());
            for (size_t k = 0; k < old.Pages()[i].placements.size(); ++k) {
                EXPECT_EQ(saved.Pages()[i].placements[k].text, old.Pages()[i].placements[k].text);
                EXPECT_EQ(saved.DrawingOf(saved.Pages()[i].placements[k]), old.DrawingOf(old.Pages()[i].placements[k]));
            }
        }
        // What the earlier state took is counted as left behind.
        EXPECT_EQ(TrailerOf(after).IntegerOr(2, -1),
                  old.File().Superseded() + before.size() - old.File().StateStart());
    }
}

TEST_F(SaverTest, LeftBehindBytesAddUpAsInTheVendorsOwnSaves)
{
    SAMPLE_OR_SKIP(bytes, "binder-gen7.xbd");
    // The binder was saved three times; its file cut after the second save is that save's file,
    // and our count for a third save must be the one the vendor's third trailer holds.
    std::vector<qsizetype> ends;
    TlvReader segments(QByteArrayView(bytes).sliced(16));
    while (!segments.AtEnd())
        ends.push_back(16 + segments.Next().end);
    ASSERT_EQ(ends.size(), 3u);
    const Container second(bytes.left(ends[1]));
    EXPECT_EQ(second.Superseded() + ends[1] - second.StateStart(), Container(bytes).Superseded());
    EXPECT_EQ(Container(bytes).Superseded(), 2889);
}

TEST_F(SaverTest, EntriesAddedToASavedFileAreListedAfterTheOldOnesAndSurviveTwoSaves)
{
    xdwtest::FileOptions inEntries;
    inEntries.contentInEntries = true;
    xdwtest::PageSpec page;
    page.content = xdwtest::DrawingFields(4, QByteArray(300, 'p'), 21000, 29700, true);
    const QString path = Path(QStringLiteral("a.xdw"));
    testfiles::WriteBytes(path, xdwtest::Document({page}, inEntries));

    EditableFile file = LoadEditable(path);
    InsertPages(file, 2, LoadEditable(xdwtest::Document({page, page}, inEntries)));
    Save(file, path);
    EXPECT_TRUE(file.added.empty());
    InsertPages(file, 1, LoadEditable(xdwtest::Document({page}, inEntries)));
    Save(file, path);

    const Model model(testfiles::ReadBytes(path));
    // The first file's entry, then one for each page carried in.
    EXPECT_EQ(model.File().EntryCount(), 4);
    EXPECT_EQ(model.File().EntryOffsets()[0], LoadEditable(xdwtest::Document({page}, inEntries)).baseContainer->EntryOffsets()[0]);
    ASSERT_EQ(model.Pages().size(), 4u);
    for (const Page& p : model.Pages())
        EXPECT_EQ(model.DrawingOf(p.placements.at(0)), page.content);
}

TEST_F(SaverTest, SavedFileOpensInTheEngine)
{
    const EditableFile one = LoadEditable(xdwtest::Document({AnnotatedPage(QStringLiteral("1"))}));
    const EditableFile two = LoadEditable(xdwtest::Document({AnnotatedPage(QStringLiteral("2")), xdwtest::PageSpec{}}));
    EditableFile merged = MergeFiles({&one, &two});
    const QString path = Path(QStringLiteral("merged.xdw"));
    Save(merged, path);
    XdwEngine engine;
    engine.OpenDocument(path, 1);
    ASSERT_EQ(engine.LastResult(), 0) << engine.LastReason().toStdString();
    engine.SelectDocumentHandle(engine.ReadDocumentHandle());
    engine.GetDocumentInformation();
    EXPECT_EQ(engine.Pages(), 3);
    EXPECT_EQ(engine.GetPageTextToMemory(2), QStringLiteral("2"));
}

TEST_F(SaverTest, ANewFileDoesNotGoOverAnExistingOne)
{
    const QString path = Path(QStringLiteral("there.xdw"));
    testfiles::WriteBytes(path, "mine");
    EditableFile file = ExtractPage(LoadEditable(xdwtest::Document({AnnotatedPage(QStringLiteral("x"))})), 1);
    EXPECT_EQ(CodeOf([&] { Save(file, path); }), XdwResult::FileExists);
    EXPECT_EQ(testfiles::ReadBytes(path), QByteArray("mine"));
    EXPECT_EQ(QDir(dir_.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    EXPECT_EQ(CodeOf([&] { Save(file, Path(QStringLiteral("no/such/folder.xdw"))); }), XdwResult::BadPathName);
}

TEST_F(SaverTest, DiskFullLeavesTheFileAsItWasAndNoTemporaryBehind)
{
    const QString path = Path(QStringLiteral("full.xdw"));
    const QByteArray before = xdwtest::Document({AnnotatedPage(QStringLiteral("1"))});
    testfiles::WriteBytes(path, before);
    EditableFile file = LoadEditable(path);
    InsertPages(file, 1, LoadEditable(xdwtest::Document(std::vector<xdwtest::PageSpec>(20, AnnotatedPage(QStringLiteral("2"))))));

    // The limit on file size stands for a full disk: writes past it fail with EFBIG.
    EXPECT_TRUE(InChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlim_t size = static_cast<rlim_t>(before.size() + 100);
        const rlimit limit{size, size};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return CodeOf([&] { Save(file, path); }) == XdwResult::DiskFull;
    }));
    EXPECT_EQ(testfiles::ReadBytes(path), before);
    EXPECT_EQ(QDir(dir_.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("full.xdw")});
}

TEST_F(SaverTest, FolderWeMayNotWriteRefusesWithAccessDenied)
{
    const QString path = Path(QStringLiteral("ro.xdw"));
    const QByteArray before = xdwtest::Document({AnnotatedPage(QStringLiteral("1"))});
    testfiles::WriteBytes(path, before);
    EditableFile file = LoadEditable(path);
    // Root ignores permission bits, so the save runs as nobody in a folder only its owner
    // writes to; someone else than root just takes the write bit away.
    QFile::setPermissions(dir_.path(), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
    EXPECT_TRUE(InChild([&] {
        if (testfiles::RunningAsRoot() && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            return false;
        return CodeOf([&] { Save(file, path); }) == XdwResult::NoPermission;
    }));
    QFile::setPermissions(dir_.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(testfiles::ReadBytes(path), before);
}

TEST_F(SaverTest, FileLockedByAnotherIsInUseForLoadAndSave)
{
    const QString path = Path(QStringLiteral("locked.xdw"));
    testfiles::WriteBytes(path, xdwtest::Document({AnnotatedPage(QStringLiteral("1"))}));
    EditableFile file = LoadEditable(path);
    const int other = ::open(QFile::encodeName(path).constData(), O_RDONLY);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    EXPECT_EQ(CodeOf([&] { Save(file, path); }), XdwResult::FileInUse);
    EXPECT_EQ(CodeOf([&] { (void)LoadEditable(path); }), XdwResult::FileInUse);
    ::close(other);
    EXPECT_EQ(CodeOf([&] { (void)LoadEditable(Path(QStringLiteral("absent.xdw"))); }), XdwResult::FileNotFound);
}

TEST(Lh5Literal, ExpandsToWhatWentInAcrossBlockBoundaries)
{
    for (qsizetype size : {1, 2, 0xFFFF, 0x10000, 200000}) {
        QByteArray data(size, Qt::Uninitialized);
        for (qsizetype i = 0; i < size; ++i)
            data[i] = static_cast<char>((i * 7919) >> 3);
        EXPECT_EQ(lh5::Expand(lh5::CompressLiteral(data), size), data) << size;
    }
}
