// Text files in code page 932 with CR LF, written and read back byte for byte.
#include "common/TestFiles.h"
#include "support/AppError.h"
#include "support/FileReadClass.h"
#include "support/FileWriteClass.h"

#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace {

using testfiles::ReadBytes;
using testfiles::WriteBytes;

QStringList Lines(const FileReadClass& vIn)
{
    QStringList out;
    for (qint32 i = 1; i <= vIn.Count(); ++i)
        out << vIn.Line(i);
    return out;
}

class TextFileTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(temp_.isValid()); }
    QString At(const QString& vName) const { return temp_.path() + u'/' + vName; }
    QTemporaryDir temp_;
};

TEST_F(TextFileTest, WriterPutsLinesInCp932WithCrLfAndTheReaderBringsThemBack)
{
    FileWriteClass out;
    for (const QString& line : {u"日本語"_s, QString(), u"a b"_s})
        out.SetLine(line);
    const QString path = At(u"名前 \"付き\".txt"_s);
    out.FileWrite(path);
    EXPECT_EQ(ReadBytes(path), QByteArray("\x93\xfa\x96\x7b\x8c\xea\r\n\r\na b\r\n"));
    FileReadClass in;
    EXPECT_EQ(in.FileRead(path), QString());
    EXPECT_EQ(Lines(in), (QStringList{u"日本語"_s, QString(), u"a b"_s}));
    EXPECT_EQ(in.Line(0) + in.Line(4), QString());

    // "append" in any case appends; any other mode starts the file anew.
    out.FileWrite(QString(), u"append"_s);
    EXPECT_EQ(ReadBytes(path).count("a b\r\n"), 2);
    // The LF writer ends lines with LF alone, and leaves no tail of the longer file before.
    out.FileWriteEUC();
    EXPECT_EQ(ReadBytes(path), QByteArray("\x93\xfa\x96\x7b\x8c\xea\n\na b\n"));
    out.FileWriteFromString(u"only"_s, QString(), u"whatever"_s);
    out.FileWriteFromString(u"more"_s, QString(), u"Append"_s);
    EXPECT_EQ(ReadBytes(path), QByteArray("only\r\nmore\r\n"));
    EXPECT_THROW(out.FileWrite(At(u"no/such/folder.txt"_s)), AppError);
    out.SetFileName(QString());
    out.FileWrite();  // no name: nothing happens

    out.SetLine(u"消す"_s);
    out.DeleteCurrentLine();
    EXPECT_EQ(out.GetAllString(), u"日本語\r\n\r\na b"_s);
    out.ClearAllLine();
    out.DeleteCurrentLine();  // nothing left to delete
}

TEST_F(TextFileTest, ReaderEndsLinesAtCrOrCrLfOnlyAndReportsFailures)
{
    const QString path = At(u"ends.txt"_s);
    WriteBytes(path, "a\rb\r\nc\nd\r\n\r\n");
    FileReadClass in;
    in.SetFileName(path);
    ASSERT_EQ(in.FileRead(), QString());
    EXPECT_EQ(Lines(in), (QStringList{u"a"_s, u"b"_s, u"c\nd"_s, QString()}));
    WriteBytes(path, "");
    ASSERT_EQ(in.FileRead(u"  "_s), QString());  // a blank name keeps FileName
    EXPECT_EQ(in.Count(), 0);
    WriteBytes(path, "x\x82\xa0\r\ny");
    EXPECT_EQ(in.FileReadToString(path), u"1"_s);
    EXPECT_EQ(Lines(in), QStringList{u"xあ\r\ny"_s});

    // A file that can't be read is reported by the result and leaves the lines alone.
    for (const QString& result : {in.FileRead(At(u"missing.txt"_s)), in.FileReadToString(At(u"missing.txt"_s))})
        EXPECT_TRUE(result.startsWith(u"エラー番号 "_s)) << result.toStdString();
    EXPECT_EQ(Lines(in), QStringList{u"xあ\r\ny"_s});
}

} // namespace
