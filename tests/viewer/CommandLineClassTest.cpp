#include "viewer/CommandLineClass.h"

#include <gtest/gtest.h>

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
    line.AnalyzeComanndLine(QStringLiteral("Marnoquill.exe  a.xdw -p3 /xabc \"b c.tif\" - /q"));
    EXPECT_EQ(line.ExeName(), QStringLiteral("Marnoquill.exe"));
    EXPECT_EQ(line.Argument(), QStringLiteral("a.xdw -p3 /xabc \"b c.tif\" - /q"));
    EXPECT_EQ(Values(line.Files()), (QStringList{"a.xdw", "b c.tif"}));
    EXPECT_EQ(line.Files()->DataKeyOfNumber(2), QStringLiteral("2"));

    const SDC sw = line.Switch();
    EXPECT_EQ(sw->Count(), 3);  // "-" alone stores nothing
    EXPECT_EQ(sw->DataValue(QStringLiteral("P")), QStringLiteral("-p3"));
    EXPECT_EQ(sw->DataValue(QStringLiteral("X")), QStringLiteral("/xabc"));
    EXPECT_EQ(sw->DataValue(QStringLiteral("Q")), QStringLiteral("/q"));
    EXPECT_EQ(sw->DataKeyOfNumber(2), QStringLiteral("X"));

    const SDC args = line.SwitchArgument();
    EXPECT_EQ(args->Count(), 2);  // "/q" has no argument
    EXPECT_EQ(args->DataValue(QStringLiteral("P")), QStringLiteral("3"));
    EXPECT_EQ(args->DataValue(QStringLiteral("X")), QStringLiteral("abc"));
}

TEST(CommandLineClassTest, OnlySwitchesGiveNoFilesAndALaterSwitchReplacesItsLetter)
{
    CommandLineClass line;
    line.AnalyzeComanndLine(QStringLiteral("Marnoquill.exe -a1 -A2"));
    EXPECT_EQ(line.Files()->Count(), 0);
    EXPECT_EQ(line.Switch()->Count(), 1);
    EXPECT_EQ(line.Switch()->DataValue(QStringLiteral("A")), QStringLiteral("-A2"));
    EXPECT_EQ(line.SwitchArgument()->DataValue(QStringLiteral("A")), QStringLiteral("2"));
}

TEST(CommandLineClassTest, AbsoluteLinuxPathsAreFiles)
{
    CommandLineClass line;
    line.AnalyzeComanndLine(QStringLiteral("mq /home/user/文書/a.xdw /tmp/b.tif /v"));
    EXPECT_EQ(Values(line.Files()), (QStringList{"/home/user/文書/a.xdw", "/tmp/b.tif"}));
    EXPECT_EQ(line.Switch()->DataValue(QStringLiteral("V")), QStringLiteral("/v"));
}

TEST(CommandLineClassTest, AnEmptyCommandChangesNothingAndASetCommandIsAnalysed)
{
    CommandLineClass line;
    line.AnalyzeComanndLine(QString());
    EXPECT_EQ(line.ExeName(), QString());
    EXPECT_EQ(line.Files()->Count(), 0);

    line.SetCommand(QStringLiteral("mq x.xdw"));
    line.AnalyzeComanndLine();
    EXPECT_EQ(Values(line.Files()), (QStringList{"x.xdw"}));
    // A second analysis describes the new line only.
    line.AnalyzeComanndLine(QStringLiteral("mq y.xdw"));
    EXPECT_EQ(Values(line.Files()), (QStringList{"y.xdw"}));
    EXPECT_EQ(line.Command(), QStringLiteral("mq y.xdw"));
}

TEST(CommandLineClassTest, AQuotedProgramNameLeavesTheWholeArgument)
{
    CommandLineClass line;
    line.AnalyzeComanndLine(QStringLiteral("  \"/opt/My Apps/mq\"   a.xdw -z "));
    EXPECT_EQ(line.ExeName(), QStringLiteral("/opt/My Apps/mq"));
    EXPECT_EQ(line.Argument(), QStringLiteral("a.xdw -z"));
    EXPECT_EQ(Values(line.Files()), (QStringList{"a.xdw"}));
}

TEST(CommandLineClassTest, QuotesAreDroppedAndUnpairedOnesGiveNoTokens)
{
    CommandLineClass line;
    line.AnalyzeComanndLine(QStringLiteral("mq say\"hi\".xdw"));
    EXPECT_EQ(Values(line.Files()), (QStringList{"sayhi.xdw"}));
    line.AnalyzeComanndLine(QStringLiteral("mq \"a b.xdw"));
    EXPECT_EQ(line.ExeName(), QString());
    EXPECT_EQ(line.Argument(), QStringLiteral("mq \"a b.xdw"));
    EXPECT_EQ(line.Files()->Count(), 0);
}

TEST(CommandLineClassTest, NamesWithJapaneseTextAndBlanksSurviveTheRoundTrip)
{
    const QStringList names{QStringLiteral("/home/山田 太郎/議事録 第1回.xdw"),
                            QStringLiteral("全角\u3000空白.tif"), QStringLiteral("plain.xdw")};
    CommandLineClass first;
    first.SetExeName(QStringLiteral("/opt/マルノ クイル/mq"));
    for (const QString& n : names)
        first.Files()->AddData(n);
    first.Switch()->AddData(QStringLiteral("-t見出し 付き"), QStringLiteral("T"));
    const QString text = first.CreateCommandLine();
    EXPECT_EQ(first.Command(), text);
    EXPECT_EQ(text, QStringLiteral("\"/opt/マルノ クイル/mq\" \"/home/山田 太郎/議事録 第1回.xdw\" "
                                   "全角\u3000空白.tif plain.xdw \"-t見出し 付き\""));

    CommandLineClass second;
    second.AnalyzeComanndLine(text);
    EXPECT_EQ(second.ExeName(), first.ExeName());
    EXPECT_EQ(Values(second.Files()), names);
    EXPECT_EQ(second.Switch()->DataValue(QStringLiteral("T")), QStringLiteral("-t見出し 付き"));
    EXPECT_EQ(second.Argument(), first.Argument());
}

TEST(CommandLineClassTest, CreateCommandLineWithNothingToAdd)
{
    CommandLineClass line;
    line.SetExeName(QStringLiteral("mq"));
    line.SetArgument(QStringLiteral("stale"));
    EXPECT_EQ(line.CreateCommandLine(), QStringLiteral("mq "));
    EXPECT_EQ(line.Argument(), QString());
}
