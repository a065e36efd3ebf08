// Text files in code page 932 with CR LF, written and read back byte for byte.
#include "common/TestFiles.h"
#include "support/AppError.h"
#include "support/FileReadClass.h"
#include "support/FileWriteClass.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTemporaryDir>

namespace {

using testfiles::ReadBytes;
using testfiles::WriteBytes;

class TextFileTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(temp_.isValid()); }
    QString At(const QString& vName) const { return temp_.path() + QLatin1Char('/') + vName; }
    QTemporaryDir temp_;
};

TEST_F(TextFileTest, LinesGoOutInCp932WithCrLfAndComeBack)
{
    FileWriteClass out;
    out.SetLine(QStringLiteral("日本語"));
    out.SetLine(QString());
    out.SetLine(QStringLiteral("a b"));
    const QString path = At(QStringLiteral("名前 \"付き\".txt"));
    out.FileWrite(path, QStringLiteral("OUTPUT"));
    EXPECT_EQ(out.FileName(), path);
    EXPECT_EQ(ReadBytes(path), QByteArray("\x93\xfa\x96\x7b\x8c\xea\r\n\r\na b\r\n"));

    FileReadClass in;
    EXPECT_EQ(in.FileRead(path), QString());
    EXPECT_EQ(in.Count(), 3);
    EXPECT_EQ(in.Line(1), QStringLiteral("日本語"));
    EXPECT_EQ(in.Line(2), QString());
    EXPECT_EQ(in.Line(3), QStringLiteral("a b"));
    EXPECT_EQ(in.Line(0), QString());
    EXPECT_EQ(in.Line(4), QString());

    // "append" in any case appends; any other mode starts the file anew.
    out.FileWrite(QString(), QStringLiteral("append"));
    EXPECT_EQ(ReadBytes(path).count("a b\r\n"), 2);
    out.FileWriteFromString(QStringLiteral("only"), QString(), QStringLiteral("whatever"));
    EXPECT_EQ(ReadBytes(path), QByteArray("only\r\n"));
    out.FileWriteFromString(QStringLiteral("more"), QString(), QStringLiteral("Append"));
    EXPECT_EQ(ReadBytes(path), QByteArray("only\r\nmore\r\n"));
}

TEST_F(TextFileTest, ReaderEndsLinesAtCrOrCrLfOnly)
{
    const QString path = At(QStringLiteral("ends.txt"));
    WriteBytes(path, "a\rb\r\nc\nd\r\n\r\n");
    FileReadClass in;
    in.SetFileName(path);
    ASSERT_EQ(in.FileRead(), QString());
    EXPECT_EQ(in.Count(), 4);
    EXPECT_EQ(in.Line(3), QStringLiteral("c\nd"));
    EXPECT_EQ(in.Line(4), QString());

    WriteBytes(path, "");
    ASSERT_EQ(in.FileRead(QStringLiteral("  ")), QString());  // a blank name keeps FileName
    EXPECT_EQ(in.Count(), 0);
    EXPECT_EQ(in.Line(1), QString());

    WriteBytes(path, "x\x82\xa0\r\ny");
    EXPECT_EQ(in.FileReadToString(path), QStringLiteral("1"));
    EXPECT_EQ(in.Count(), 1);
    EXPECT_EQ(in.Line(1), QStringLiteral("xあ\r\ny"));
}

TEST_F(TextFileTest, UnopenableFilesAreReportedByTheResult)
{
    FileReadClass in;
    WriteBytes(At(QStringLiteral("kept.txt")), "kept\r\n");
    ASSERT_EQ(in.FileRead(At(QStringLiteral("kept.txt"))), QString());
    EXPECT_TRUE(in.FileRead(At(QStringLiteral("missing.txt"))).startsWith(QStringLiteral("エラー番号 ")));
    EXPECT_TRUE(in.FileReadToString(At(QStringLiteral("missing.txt"))).startsWith(QStringLiteral("エラー番号 ")));
    EXPECT_EQ(in.Line(1), QStringLiteral("kept"));  // a failed read leaves the lines alone

    FileWriteClass out;
    out.SetLine(QStringLiteral("x"));
    EXPECT_THROW(out.FileWrite(At(QStringLiteral("no/such/folder.txt"))), AppError);
    out.SetFileName(QString());
    out.FileWrite();  // no name: nothing happens
}

TEST_F(TextFileTest, EucWriterEndsLinesWithLfAndReplacesTheFile)
{
    const QString path = At(QStringLiteral("lf.txt"));
    WriteBytes(path, "a much longer old content");
    FileWriteClass out;
    out.SetLine(QStringLiteral("a"));
    out.SetLine(QStringLiteral("b"));
    out.FileWriteEUC(path);
    EXPECT_EQ(ReadBytes(path), QByteArray("a\nb\n"));
}

TEST_F(TextFileTest, LineListAndClipboard)
{
    FileWriteClass out;
    EXPECT_EQ(out.GetAllString(), QString());
    out.SetLine(QStringLiteral("one"));
    out.SetLine(QStringLiteral("二"));
    out.SetLine(QStringLiteral("three"));
    EXPECT_EQ(out.CurrentLine(), 3);
    out.DeleteCurrentLine();
    EXPECT_EQ(out.CurrentLine(), 2);
    EXPECT_EQ(out.Count(), 2);
    EXPECT_EQ(out.GetAllString(), QStringLiteral("one\r\n二"));
    out.WriteClipboard();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("one\r\n二"));
    out.ClearAllLine();
    out.DeleteCurrentLine();
    EXPECT_EQ(out.Count(), 0);
}

} // namespace
