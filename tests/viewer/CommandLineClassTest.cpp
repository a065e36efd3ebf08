#include "viewer/CommandLineClass.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList Values(const SDC& vList)
{
    QStringList out;
    for (qint16 i = 1; i <= vList->Count(); ++i)
        out << vList->DataValueOfNumber(i);
    return out;
}

} // namespace

TEST(CommandLineClassTest, TokensAreSortedIntoFilesAndSwitches)
{
    CommandLineClass line;
    line.AnalyzeComanndLine(u"Marnoquill.exe  a.xdw -p3 /xabc \"b c.tif\" - /home/user/文書/d.xdw /q"_s);
    EXPECT_EQ(line.ExeName(), u"Marnoquill.exe"_s);
    EXPECT_EQ(line.Argument(), u"a.xdw -p3 /xabc \"b c.tif\" - /home/user/文書/d.xdw /q"_s);
    // A second "/" makes an absolute path, not a switch.
    EXPECT_EQ(Values(line.Files()), (QStringList{u"a.xdw"_s, u"b c.tif"_s, u"/home/user/文書/d.xdw"_s}));

    EXPECT_EQ(Values(line.Switch()), (QStringList{u"-p3"_s, u"/xabc"_s, u"/q"_s}));  // "-" alone stores nothing
    const SDC args = line.SwitchArgument();
    EXPECT_EQ(args->Count(), 2);  // "/q" has no argument
    EXPECT_EQ(args->DataValue(u"P"_s), u"3"_s);
    EXPECT_EQ(args->DataValue(u"X"_s), u"abc"_s);

    // Only switches give no files, and a later switch replaces its letter, in either case.
    line.AnalyzeComanndLine(u"Marnoquill.exe -a1 -A2"_s);
    EXPECT_EQ(line.Files()->Count(), 0);
    EXPECT_EQ(Values(line.Switch()), QStringList{u"-A2"_s});
    EXPECT_EQ(line.SwitchArgument()->DataValue(u"A"_s), u"2"_s);

    // Without a text the stored command is analysed, and describes that line only.
    line.SetCommand(u"mq x.xdw"_s);
    line.AnalyzeComanndLine();
    EXPECT_EQ(Values(line.Files()), QStringList{u"x.xdw"_s});
    EXPECT_EQ(line.Switch()->Count(), 0);
}

TEST(CommandLineClassTest, QuotesAreDroppedAndUnpairedOnesGiveNoTokens)
{
    CommandLineClass line;
    line.AnalyzeComanndLine(u"  \"/opt/My Apps/mq\"   a.xdw say\"hi\".xdw -z "_s);
    EXPECT_EQ(line.ExeName(), u"/opt/My Apps/mq"_s);
    EXPECT_EQ(line.Argument(), u"a.xdw say\"hi\".xdw -z"_s);
    EXPECT_EQ(Values(line.Files()), (QStringList{u"a.xdw"_s, u"sayhi.xdw"_s}));
    line.AnalyzeComanndLine(u"mq \"a b.xdw"_s);
    EXPECT_EQ(line.ExeName(), QString());
    EXPECT_EQ(line.Argument(), u"mq \"a b.xdw"_s);
    EXPECT_EQ(line.Files()->Count(), 0);
}

TEST(CommandLineClassTest, NamesWithJapaneseTextAndBlanksSurviveTheRoundTrip)
{
    const QStringList names{u"/home/山田 太郎/議事録 第1回.xdw"_s, u"全角\u3000空白.tif"_s, u"plain.xdw"_s};
    CommandLineClass first;
    first.SetExeName(u"/opt/マルノ クイル/mq"_s);
    for (const QString& n : names)
        first.Files()->AddData(n);
    first.Switch()->AddData(u"-t見出し 付き"_s, u"T"_s);
    const QString text = first.CreateCommandLine();
    EXPECT_EQ(text, u"\"/opt/マルノ クイル/mq\" \"/home/山田 太郎/議事録 第1回.xdw\" 全角\u3000空白.tif plain.xdw "
                    "\"-t見出し 付き\""_s);

    CommandLineClass second;
    second.AnalyzeComanndLine(text);
    EXPECT_EQ(second.ExeName(), first.ExeName());
    EXPECT_EQ(Values(second.Files()), names);
    EXPECT_EQ(second.Switch()->DataValue(u"T"_s), u"-t見出し 付き"_s);

    // With nothing to add, the old argument goes and the program name stands alone.
    CommandLineClass bare;
    bare.SetExeName(u"mq"_s);
    bare.SetArgument(u"stale"_s);
    EXPECT_EQ(bare.CreateCommandLine(), u"mq "_s);
    EXPECT_EQ(bare.Argument(), QString());
}
