#include "settings/DataSaveLoadClass.h"
#include "support/AppError.h"
#include "support/Cp932.h"

#include "common/TestFiles.h"

#include <QDir>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

using testfiles::ReadBytes;
using testfiles::WriteBytes;

namespace {

SDC NewNode() { return std::make_shared<StructuredDataClass>(); }

// Every entry of a tree as text, with thread names, so that two trees compare as a whole.
QString Dump(const SDC& vNode, int vDepth = 0)
{
    QString out;
    for (qint16 i = 1; i <= vNode->Count(); ++i) {
        out += QString(vDepth, QLatin1Char(' ')) + vNode->DataTypeOfNumber(i) + QLatin1Char('|')
               + vNode->DataKeyOfNumber(i) + QLatin1Char('|');
        if (const SDC child = vNode->DataTypeOfNumber(i) == StructuredDataClass::TypeThread
                                  ? vNode->ThreadOfNumber(i) : nullptr) {
            out += child->Name() + QLatin1Char('\n') + Dump(child, vDepth + 1);
        } else {
            out += vNode->DataValueOfNumber(i) + QLatin1Char('\n');
        }
    }
    return out;
}

// The settings tree of the byte fixture below: Japanese keys and values, TABs, CR LF, CR and LF
// inside values, threads three levels deep.
SDC FixtureTree()
{
    auto root = NewNode();
    root->AddData(QStringLiteral("値\tタブ"), QStringLiteral("名前"));
    auto window = root->CreateThread(QStringLiteral("\\ウインドウ\\"));
    window->AddData(QStringLiteral("1"), QStringLiteral("chkActive"));
    auto level2 = window->CreateThread(QStringLiteral("Level2"));
    level2->SetName(QStringLiteral("第二"));
    level2->AddData(QStringLiteral("a\r\nb\rc\nd"), QStringLiteral("行"));
    auto level3 = level2->CreateThread(QStringLiteral("Level3"));
    level3->AddData(QString(), QStringLiteral("深い"));
    level3->AddData(QStringLiteral("Ａ～"), QStringLiteral("表示ソ"));
    root->AddReference(std::make_shared<int>(1), QStringLiteral("not saved"));
    root->AddData(QStringLiteral("end"), QStringLiteral("最後"));
    return root;
}

// The bytes, in code page 932, of a file with sections before and after ours.
const QByteArray kBefore = QByteArray::fromHex(
    "5b214c4142454c5f4265666f72655d09320d0a"       // [!LABEL_Before]→2
    "5b21235d8352838183938367206265666f72650d0a"   // [!#]コメント before
    "7809310d0a");                                 // x→1
const QByteArray kAfter = QByteArray::fromHex(
    "5b214c4142454c5f41667465725d09320d0a"         // [!LABEL_After]→2
    "095b21235d8e9a89ba82b020636f6d6d656e740d0a"   // →[!#]字下げ comment
    "7a09955c0d0a");                               // z→表
const QByteArray kOldSection = QByteArray::fromHex(
    "5b214c4142454c5f44657461696c5365745d09320d0a"  // [!LABEL_DetailSet]→2
    "6f6c640976616c75650d0a"                        // old→value
    "5b21235d206f6c640d0a");                        // [!#] old
const QByteArray kNewSection = QByteArray::fromHex(
    "5b214c4142454c5f44657461696c5365745d09390d0a"  // [!LABEL_DetailSet]→9
    "96bc914f09926c5b215461625d835e83750d0a"        // 名前→値[!Tab]タブ
    "5b215468726561645d095c834583438393836883455c095c834583438393836883455c0d0a"
    "0963686b41637469766509310d0a"                  // →chkActive→1
    "095b215468726561645d094c6576656c320991e693f10d0a"
    "09098d7309615b2143724c665d625b2143725d635b214c665d640d0a"
    "09095b215468726561645d094c6576656c33094c6576656c330d0a"
    "090909905b82a2090d0a"                          // →→→深い→
    "090909955c8ea6835c09826081600d0a"              // →→→表示ソ→Ａ～
    "8dc58ce309656e640d0a");                        // 最後→end

class SettingsFile : public ::testing::Test {
protected:
    QString Path(const QString& vName = QStringLiteral("Marnoquill.ini")) const { return dir.filePath(vName); }

    void Save(const SDC& vTree, const QString& vLabel, const QString& vPath)
    {
        DataSaveLoadClass io;
        io.SetData(vTree);
        io.Save(vPath, vLabel);
    }

    SDC Load(const QString& vLabel, const QString& vPath, SDC vInto = nullptr)
    {
        if (!vInto)
            vInto = NewNode();
        DataSaveLoadClass io;
        io.SetData(vInto);
        io.Load(vPath, vLabel);
        return vInto;
    }

    int LoadError(const QByteArray& vBytes, SDC vInto)
    {
        WriteBytes(Path(), vBytes);
        try {
            Load(QStringLiteral("S"), Path(), vInto);
        } catch (const AppError& e) {
            return e.Number();
        }
        return 0;
    }

    QTemporaryDir dir;
};

} // namespace

TEST_F(SettingsFile, SectionIsReplacedByteForByteAndReadsBackEqual)
{
    WriteBytes(Path(), kBefore + kOldSection + kAfter);
    const SDC tree = FixtureTree();
    Save(tree, QStringLiteral("DetailSet"), Path());
    EXPECT_EQ(ReadBytes(Path()).toHex(), (kBefore + kNewSection + kAfter).toHex());

    const SDC back = Load(QStringLiteral("DetailSet"), Path());
    tree->DeleteData(QStringLiteral("not saved"));
    EXPECT_EQ(Dump(back), Dump(tree));
    EXPECT_EQ(back->Thread(QStringLiteral("\\ウインドウ\\"))->Thread(QStringLiteral("Level2"))->ObjectKey(),
              QStringLiteral("Level2"));

    // No temporary file is left beside it.
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(SettingsFile, NewLabelGoesLastAndTheStringFormHasNoCount)
{
    WriteBytes(Path(), kBefore + kAfter);
    Save(FixtureTree(), QStringLiteral("DetailSet"), Path());
    EXPECT_EQ(ReadBytes(Path()).toHex(), (kBefore + kAfter + kNewSection).toHex());

    DataSaveLoadClass io;
    io.SetData(FixtureTree());
    const QString text = io.GetSaveString(QStringLiteral("DetailSet"));
    QByteArray expected = kNewSection;
    expected.replace(QByteArray("]\t9\r\n"), QByteArray("]\r\n"));
    EXPECT_EQ(Cp932::Encode(text).toHex(), expected.toHex());

    auto back = NewNode();
    DataSaveLoadClass reader;
    reader.SetData(back);
    reader.LoadString(QStringLiteral("[!LABEL_Other]\r\nq\t1\r\n") + text, QStringLiteral("DetailSet"));
    EXPECT_FALSE(back->Exists(QStringLiteral("q")));
    EXPECT_EQ(back->Thread(QStringLiteral("\\ウインドウ\\"))
                  ->ThreadOfPath(QStringLiteral("\\Level2\\Level3\\"))
                  ->DataValue(QStringLiteral("表示ソ")),
              QStringLiteral("Ａ～"));
}

TEST_F(SettingsFile, MiddleSectionGrowsAndItsNeighboursStayInPlace)
{
    auto small = NewNode();
    small->AddData(QStringLiteral("1"), QStringLiteral("a"));
    WriteBytes(Path(), kBefore);
    Save(small, QStringLiteral("Mid"), Path());
    const QByteArray tail = QByteArrayLiteral("[!LABEL_Tail]junk\t7\r\n\t\t[!#]kept\r\nk\tv\r\n");
    WriteBytes(Path(), ReadBytes(Path()) + tail);

    auto big = NewNode();
    for (int i = 0; i < 50; ++i)
        big->AddData(QString::number(i), QStringLiteral("key%1").arg(i));
    Save(big, QStringLiteral("Mid"), Path());
    const QByteArray bytes = ReadBytes(Path());
    EXPECT_TRUE(bytes.startsWith(kBefore + "[!LABEL_Mid]\t50\r\nkey0\t0\r\n"));
    EXPECT_TRUE(bytes.endsWith("key49\t49\r\n" + tail));
    EXPECT_EQ(Load(QStringLiteral("Mid"), Path())->Count(), 50);
    EXPECT_EQ(Load(QStringLiteral("Before"), Path())->DataValue(QStringLiteral("x")), QStringLiteral("1"));
}

TEST_F(SettingsFile, EscapesAreTheFormatAndNothingMore)
{
    auto tree = NewNode();
    tree->AddData(QStringLiteral("a\tb\r\nc"), QStringLiteral("mixed"));
    tree->AddData(QString(), QStringLiteral("empty"));
    tree->AddData(QStringLiteral("literal [!Tab] text"), QStringLiteral("literal"));
    Save(tree, QStringLiteral("S"), Path());
    const QByteArray bytes = ReadBytes(Path());
    EXPECT_TRUE(bytes.contains("mixed\ta[!Tab]b[!CrLf]c\r\n"));
    EXPECT_TRUE(bytes.contains("empty\t\r\n"));

    const SDC back = Load(QStringLiteral("S"), Path());
    EXPECT_EQ(back->DataValue(QStringLiteral("mixed")), QStringLiteral("a\tb\r\nc"));
    EXPECT_EQ(back->DataValue(QStringLiteral("empty")), QString());
    EXPECT_TRUE(back->Exists(QStringLiteral("empty")));
    EXPECT_EQ(back->DataValue(QStringLiteral("literal")), QStringLiteral("literal \t text"));

    // A character with no place in the code page is written as "?".
    auto emoji = NewNode();
    emoji->AddData(QStringLiteral("a😀b€"), QStringLiteral("k"));
    Save(emoji, QStringLiteral("E"), Path());
    EXPECT_EQ(Load(QStringLiteral("E"), Path())->DataValue(QStringLiteral("k")), QStringLiteral("a?b?"));
}

TEST_F(SettingsFile, LoadingMergesAndTwiceChangesNothing)
{
    Save(FixtureTree(), QStringLiteral("DetailSet"), Path());
    auto tree = NewNode();
    tree->AddData(QStringLiteral("kept"), QStringLiteral("own"));
    tree->AddData(QStringLiteral("old"), QStringLiteral("最後"));
    Load(QStringLiteral("DetailSet"), Path(), tree);
    const QString once = Dump(tree);
    EXPECT_EQ(tree->DataKeyOfNumber(1), QStringLiteral("own"));
    EXPECT_EQ(tree->DataValue(QStringLiteral("最後")), QStringLiteral("end"));
    EXPECT_EQ(tree->DataNo(QStringLiteral("最後")), 2);  // overwritten where it stood
    Load(QStringLiteral("DetailSet"), Path(), tree);
    EXPECT_EQ(Dump(tree), once);

    // Missing file, missing label: nothing read, no error.
    Load(QStringLiteral("DetailSet"), Path(QStringLiteral("absent.ini")), tree);
    Load(QStringLiteral("NoSuchLabel"), Path(), tree);
    EXPECT_EQ(Dump(tree), once);
}

TEST_F(SettingsFile, ShapesTheFormatCannotProtect)
{
    // A node attached by SetThread carries its parent's level: its lines read back one level up.
    auto tree = NewNode();
    tree->CreateThread(QStringLiteral("t"));
    auto attached = NewNode();
    attached->AddData(QStringLiteral("v"), QStringLiteral("inner"));
    tree->SetThread(QStringLiteral("t"), attached);
    Save(tree, QStringLiteral("S"), Path());
    auto back = Load(QStringLiteral("S"), Path());
    EXPECT_TRUE(back->Exists(QStringLiteral("inner")));
    EXPECT_EQ(back->Thread(QStringLiteral("t"))->Count(), 0);

    // A data key that looks like a head ends the section when read.
    auto heady = NewNode();
    heady->AddData(QStringLiteral("1"), QStringLiteral("a"));
    heady->AddData(QStringLiteral("2"), QStringLiteral("[!LABEL_x]y"));
    heady->AddData(QStringLiteral("3"), QStringLiteral("c"));
    Save(heady, QStringLiteral("S"), Path());
    EXPECT_EQ(Load(QStringLiteral("S"), Path())->Count(), 1);

    // A root deeper than 1 writes leading TABs and can't be read back.
    auto deep = NewNode();
    deep->SetLevelNo(2);
    deep->AddData(QStringLiteral("v"), QStringLiteral("k"));
    Save(deep, QStringLiteral("S"), Path());
    EXPECT_THROW(Load(QStringLiteral("S"), Path()), AppError);
}

TEST_F(SettingsFile, MalformedLinesRaiseTheirNumberAfterLoadingWhatPrecedes)
{
    const QByteArray head = "[!LABEL_S]\t9\r\nfirst\t1\r\n";
    struct Case {
        const char* line;
        int number;
    } cases[] = {
        {"\t\t\t", 9},                // TABs alone
        {"novalue", 9},               // a data line without its value
        {"[!Thread]\tkey", 9},        // a thread line without its name
        {"\t\tjump\t1", 5},           // a level above 0 with nothing to stand on
        {"\t[!Thread]\tk\tn", 5},
    };
    for (const Case& c : cases) {
        auto tree = NewNode();
        EXPECT_EQ(LoadError(head + c.line + "\r\nlater\t2\r\n", tree), c.number) << c.line;
        EXPECT_EQ(tree->DataValue(QStringLiteral("first")), QStringLiteral("1")) << c.line;
        EXPECT_FALSE(tree->Exists(QStringLiteral("later"))) << c.line;
    }

    // Bytes that are no character of the code page load as replacement characters.
    auto tree = NewNode();
    EXPECT_EQ(LoadError(head + "bad\t\x81\x20\xff\r\n", tree), 0);
    EXPECT_EQ(tree->DataValue(QStringLiteral("bad")), QStringLiteral("\uFFFD \uFFFD"));

    // A comment line and an empty line are skipped at any depth; levels may jump downwards.
    tree = NewNode();
    EXPECT_EQ(LoadError(head + "[!Thread]\tt\tT\r\n\r\n\t\t\t[!#]x\r\n\t\t\tdeep\t1\r\nback\t2\r\n", tree), 0);
    EXPECT_EQ(tree->Thread(QStringLiteral("t"))->DataValue(QStringLiteral("deep")), QStringLiteral("1"));
    EXPECT_EQ(tree->DataValue(QStringLiteral("back")), QStringLiteral("2"));
}

TEST_F(SettingsFile, FailedSaveLeavesTheOldFileWhole)
{
    const QByteArray old = kBefore + kOldSection + kAfter;
    WriteBytes(Path(), old);
    auto big = NewNode();
    for (int i = 0; i < 2000; ++i)
        big->AddData(QString(100, QLatin1Char('x')), QString::number(i));

    // A full disk: the file size limit makes the write fail part way.
    {
        struct sigaction ignore {};
        struct sigaction previous {};
        ignore.sa_handler = SIG_IGN;
        sigaction(SIGXFSZ, &ignore, &previous);
        struct rlimit saved {};
        getrlimit(RLIMIT_FSIZE, &saved);
        struct rlimit small = saved;
        small.rlim_cur = 4096;
        setrlimit(RLIMIT_FSIZE, &small);
        int number = 0;
        try {
            Save(big, QStringLiteral("DetailSet"), Path());
        } catch (const AppError& e) {
            number = e.Number();
        }
        setrlimit(RLIMIT_FSIZE, &saved);
        sigaction(SIGXFSZ, &previous, nullptr);
        EXPECT_EQ(number, 61);
    }
    EXPECT_EQ(ReadBytes(Path()), old);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);

    // A folder that is a file.
    WriteBytes(Path(QStringLiteral("plain")), "x");
    EXPECT_THROW(Save(big, QStringLiteral("S"), Path(QStringLiteral("plain/Marnoquill.ini"))), AppError);

    // A read-only folder (root writes anyway, so only checked for a user).
    if (!testfiles::RunningAsRoot()) {
        QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner);
        EXPECT_THROW(Save(big, QStringLiteral("DetailSet"), Path()), AppError);
        QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        EXPECT_EQ(ReadBytes(Path()), old);
    }
}
