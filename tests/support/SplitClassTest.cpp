#include "support/AppError.h"
#include "support/LevelAnalyzeClass.h"
#include "support/SplitClass.h"

#include <gtest/gtest.h>

namespace {

QStringList Items(const SplitClass& vSplit)
{
    QStringList out;
    for (qint16 i = 1; i <= vSplit.ItemCount(); ++i)
        out << vSplit.Item(i);
    return out;
}

// The tree as text: DATA values in brackets, children in parentheses.
QString Shape(const StructuredDataClass& vNode)
{
    QString out;
    for (qint16 i = 1; i <= vNode.Count(); ++i) {
        if (vNode.DataTypeOfNumber(i) == StructuredDataClass::TypeThread)
            out += QLatin1Char('(') + Shape(*vNode.ThreadOfNumber(i)) + QLatin1Char(')');
        else
            out += QLatin1Char('[') + vNode.DataValueOfNumber(i) + QLatin1Char(']');
    }
    return out;
}

} // namespace

TEST(SplitClassTest, ItemOutsideTheListIsEmpty)
{
    SplitClass split;
    EXPECT_EQ(split.ItemCount(), 0);
    EXPECT_EQ(split.Item(1), QString());
    split.SplitD(QStringLiteral("a,b"));
    EXPECT_EQ(split.Item(0), QString());
    EXPECT_EQ(split.Item(-1), QString());
    EXPECT_EQ(split.Item(2), QStringLiteral("b"));
    EXPECT_EQ(split.Item(3), QString());
}

TEST(SplitClassTest, SplitDKeepsEmptyPiecesAndAnEmptyStringKeepsTheList)
{
    SplitClass split;
    split.SplitD(QStringLiteral("a,,b,"), QStringLiteral(","));
    EXPECT_EQ(Items(split), (QStringList{"a", "", "b", ""}));
    split.SplitD(QString(), QStringLiteral(","));
    EXPECT_EQ(split.ItemCount(), 4);
    split.SplitD(QStringLiteral(","), QStringLiteral(","));
    EXPECT_EQ(Items(split), (QStringList{"", ""}));
    split.SplitD(QStringLiteral("x::y:z"), QStringLiteral("::"));
    EXPECT_EQ(Items(split), (QStringList{"x", "y:z"}));
}

TEST(SplitClassTest, SplitDRemembersItsDelimiter)
{
    SplitClass split;
    split.SplitD(QStringLiteral("a,b;c"));
    EXPECT_EQ(Items(split), (QStringList{"a", "b;c"}));
    split.SplitD(QStringLiteral("a,b;c"), QStringLiteral(";"));
    split.SplitD(QStringLiteral("d;e,f"));
    EXPECT_EQ(Items(split), (QStringList{"d", "e,f"}));
    EXPECT_EQ(split.Delimiter(), QStringLiteral(";"));
}

TEST(SplitClassTest, ItemsStringJoinsARangeAndDropsLeadingEmptyItems)
{
    SplitClass split;
    split.SplitD(QStringLiteral(",,a,,b"), QStringLiteral("|"));
    split.SplitD(QStringLiteral("||a||b"));
    EXPECT_EQ(split.ItemsString(1, 5), QStringLiteral("a||b"));
    EXPECT_EQ(split.ItemsString(3, 5, QStringLiteral("-"), true), QStringLiteral("-a--b"));
    // An explicit delimiter sticks for later calls.
    EXPECT_EQ(split.ItemsString(3, 4), QStringLiteral("a-"));
    EXPECT_EQ(split.ItemsString(3, 5), QStringLiteral("a--b"));
    EXPECT_EQ(split.Delimiter(), QStringLiteral("-"));

    EXPECT_EQ(split.ItemsString(0, 2), QString());
    EXPECT_EQ(split.ItemsString(3, 2), QString());
    EXPECT_EQ(split.ItemsString(1, 6), QString());
}

TEST(SplitClassTest, SplitWSTreatsRunsOfWhiteSpaceAsOneSeparator)
{
    SplitClass split;
    split.SplitWS(QStringLiteral("  a\u3000b\t"));
    EXPECT_EQ(Items(split), (QStringList{"a", "b"}));
    split.SplitWS(QStringLiteral("a\u3000b"), true);
    EXPECT_EQ(Items(split), (QStringList{QStringLiteral("a\u3000b")}));
    split.SplitWS(QStringLiteral("\t x \t\u3000 yz"));
    EXPECT_EQ(Items(split), (QStringList{"x", "yz"}));
    EXPECT_EQ(split.ItemsString(1, 2, SplitClass::NoDelimiter, true), QStringLiteral(",x,yz"));
    split.SplitWS(QString());
    EXPECT_EQ(split.ItemCount(), 0);
    split.SplitWS(QStringLiteral(" \t "));
    EXPECT_EQ(split.ItemCount(), 0);
}

TEST(SplitClassTest, SplitCSVUnderstandsOnlyFullyQuotedLines)
{
    SplitClass split;
    split.SplitCSV(QStringLiteral("  \"a\",\"b,c\",\"\"  "));
    EXPECT_EQ(Items(split), (QStringList{"a", "b,c", ""}));
    // A quote inside a field stays as it is.
    split.SplitCSV(QStringLiteral("\"say \"\"hi\"\"\",\"x\""));
    EXPECT_EQ(Items(split), (QStringList{"say \"\"hi\"\"", "x"}));

    split.SplitCSV(QString());
    EXPECT_EQ(split.ItemCount(), 2);
    split.SplitCSV(QStringLiteral("a,b"));
    EXPECT_EQ(split.ItemCount(), 0);
    split.SplitCSV(QStringLiteral("\"a\",b"));
    EXPECT_EQ(split.ItemCount(), 0);
    split.SplitCSV(QStringLiteral("\""));
    EXPECT_EQ(split.ItemCount(), 0);
}

TEST(SplitClassTest, SplitFCountsCodePageBytes)
{
    SplitClass split;
    split.SplitF(QStringLiteral("日本語"), {2});
    EXPECT_EQ(Items(split), (QStringList{"日", "本語"}));
    // Half-width katakana is one byte, the kanji two.
    split.SplitF(QStringLiteral("ｱｲ漢A12"), {1, 3, 0, 1});
    EXPECT_EQ(Items(split), (QStringList{"ｱ", "ｲ漢", "", "A", "12"}));
    // Widths past the end give empty fields; the remainder is always there.
    split.SplitF(QStringLiteral("ab"), {1, 5, 2});
    EXPECT_EQ(Items(split), (QStringList{"a", "b", "", ""}));
    split.SplitF(QStringLiteral("abc"), {});
    EXPECT_EQ(Items(split), (QStringList{"abc"}));
    EXPECT_THROW(split.SplitF(QStringLiteral("abc"), {1, -1}), AppError);
    // ソ is 83 5C: the lead byte alone is no character, the trail byte alone is a backslash.
    split.SplitF(QStringLiteral("ソx"), {1});
    EXPECT_EQ(Items(split), (QStringList{QStringLiteral("\uFFFD"), "\\x"}));
    split.SplitF(QStringLiteral("日本"), {3});
    ASSERT_EQ(split.ItemCount(), 2);
    EXPECT_TRUE(split.Item(1).startsWith(QStringLiteral("日")));
    EXPECT_EQ(split.Item(1).size(), 2);
}

TEST(SplitClassTest, SplitDQKeepsQuotedStretchesWhole)
{
    SplitClass split;
    split.SplitDQ(QStringLiteral("a,\"b,c\"d,e"), QStringLiteral("\""), QStringLiteral(","));
    EXPECT_EQ(Items(split), (QStringList{"a", "b,cd", "e"}));
    split.SplitDQ(QStringLiteral("\"x y\" z"), QStringLiteral("\""), QStringLiteral(" "));
    EXPECT_EQ(Items(split), (QStringList{"x y", "z"}));
    split.SplitDQ(QStringLiteral("ab\"c d\",,'e'"), QStringLiteral("\""), QStringLiteral(","));
    EXPECT_EQ(Items(split), (QStringList{"abc d", "", "'e'"}));
    split.SplitDQ(QStringLiteral("p,q,"), QStringLiteral("\""));
    EXPECT_EQ(Items(split), (QStringList{"p", "q", ""}));
    split.SplitDQ(QStringLiteral("'1;2';3"), QStringLiteral("'"), QStringLiteral(";"));
    EXPECT_EQ(Items(split), (QStringList{"1;2", "3"}));
    // Unpaired quotes: the analysis gives up and so there is nothing to cut.
    split.SplitDQ(QStringLiteral("a,\"b,c"), QStringLiteral("\""), QStringLiteral(","));
    EXPECT_EQ(split.ItemCount(), 0);
}

TEST(LevelAnalyzeClassTest, NestedMarkersBuildNestedNodes)
{
    LevelAnalyzeClass analyzer;
    analyzer.AnalyzeString(QStringLiteral("a(b(c)d)e"), QStringLiteral("("), QStringLiteral(")"));
    const SDC root = analyzer.StructurdData();
    EXPECT_EQ(Shape(*root), QStringLiteral("[a]([b]([c])[d])[e]"));
    EXPECT_EQ(root->LevelNo(), 1);
    EXPECT_EQ(root->ThreadOfNumber(2)->ThreadOfNumber(2)->LevelNo(), 3);
    EXPECT_EQ(root->ThreadOfNumber(2)->Parent(), root);

    analyzer.AnalyzeString(QStringLiteral("(x)"));
    EXPECT_EQ(Shape(*root), QStringLiteral("[]([x])[]"));
}

TEST(LevelAnalyzeClassTest, EqualMarkersAlternateBetweenOutsideAndInside)
{
    LevelAnalyzeClass analyzer;
    analyzer.AnalyzeString(QStringLiteral("ab'cd'ef''"), QStringLiteral("'"), QStringLiteral("'"));
    EXPECT_EQ(Shape(*analyzer.StructurdData()), QStringLiteral("[ab]([cd])[ef]()[]"));
}

TEST(LevelAnalyzeClassTest, MarkersThatDontPairLeaveTheTreeAsItWas)
{
    LevelAnalyzeClass analyzer;
    analyzer.AnalyzeString(QStringLiteral("a'b'"), QStringLiteral("'"), QStringLiteral("'"));
    const QString before = Shape(*analyzer.StructurdData());
    analyzer.AnalyzeString(QStringLiteral("x'y'z'"));
    EXPECT_EQ(Shape(*analyzer.StructurdData()), before);
    analyzer.AnalyzeString(QStringLiteral("(()"), QStringLiteral("("), QStringLiteral(")"));
    EXPECT_EQ(Shape(*analyzer.StructurdData()), before);
    EXPECT_EQ(analyzer.TargetString(), QStringLiteral("(()"));

    // An empty marker stops the analysis; set, the stored target is analysed.
    LevelAnalyzeClass other;
    other.AnalyzeString(QStringLiteral("a(b)"), QStringLiteral("("));
    EXPECT_EQ(other.StructurdData()->Count(), 0);
    other.SetEndString(QStringLiteral(")"));
    other.AnalyzeString();
    EXPECT_EQ(Shape(*other.StructurdData()), QStringLiteral("[a]([b])[]"));
}

TEST(LevelAnalyzeClassTest, MisorderedOrMultiCharacterMarkersNeverCrash)
{
    LevelAnalyzeClass analyzer;
    // Counts agree, but the end comes first: the analysis stops quietly.
    analyzer.AnalyzeString(QStringLiteral(")a("), QStringLiteral("("), QStringLiteral(")"));
    EXPECT_LE(analyzer.StructurdData()->Count(), 1);
    // A two-character marker passes the count check but never matches a single character.
    analyzer.AnalyzeString(QStringLiteral("x<<y<<z"), QStringLiteral("<<"), QStringLiteral("<<"));
    EXPECT_EQ(Shape(*analyzer.StructurdData()), QStringLiteral("[x<<y<<z]"));
}
