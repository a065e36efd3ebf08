#include "support/AppError.h"
#include "support/LevelAnalyzeClass.h"
#include "support/SplitClass.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace Qt::Literals::StringLiterals;

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
            out += u'(' + Shape(*vNode.ThreadOfNumber(i)) + u')';
        else
            out += u'[' + vNode.DataValueOfNumber(i) + u']';
    }
    return out;
}

} // namespace

TEST(SplitClassTest, SplitDAndItemsStringKeepEmptyPiecesAndRememberTheDelimiter)
{
    SplitClass split;
    split.SplitD(u"a,b;c"_s);  // a comma until told otherwise
    EXPECT_EQ(Items(split), (QStringList{u"a"_s, u"b;c"_s}));
    split.SplitD(u"a,,b,"_s, u","_s);
    EXPECT_EQ(Items(split), (QStringList{u"a"_s, u""_s, u"b"_s, u""_s}));
    EXPECT_EQ(split.Item(0) + split.Item(5), QString());
    split.SplitD(QString());  // an empty string keeps the list
    EXPECT_EQ(split.ItemCount(), 4);
    split.SplitD(u"x::y:z"_s, u"::"_s);
    split.SplitD(u"d::e:f"_s);
    EXPECT_EQ(Items(split), (QStringList{u"d"_s, u"e:f"_s}));

    // ItemsString joins a range and drops the empty items it starts with; its delimiter sticks.
    split.SplitD(u"||a||b"_s, u"|"_s);
    EXPECT_EQ(split.ItemsString(1, 5), u"a||b"_s);
    EXPECT_EQ(split.ItemsString(3, 5, u"-"_s, true), u"-a--b"_s);
    EXPECT_EQ(split.ItemsString(3, 4), u"a-"_s);
    for (auto [from, to] : {std::pair<qint16, qint16>{0, 2}, {3, 2}, {1, 6}})
        EXPECT_EQ(split.ItemsString(from, to), QString()) << from << ".." << to;
}

TEST(SplitClassTest, SplitWSAndSplitCSV)
{
    SplitClass split;
    split.SplitWS(u"\t x \t\u3000 yz"_s);  // a run of white space is one separator
    EXPECT_EQ(Items(split), (QStringList{u"x"_s, u"yz"_s}));
    EXPECT_EQ(split.ItemsString(1, 2, SplitClass::NoDelimiter, true), u",x,yz"_s);
    split.SplitWS(u"a\u3000b"_s, true);  // the wide space can be kept
    EXPECT_EQ(Items(split), QStringList{u"a\u3000b"_s});
    split.SplitWS(u" \t "_s);
    EXPECT_EQ(split.ItemCount(), 0);

    // CSV lines are understood only when every field is quoted; a quote inside stays as it is.
    split.SplitCSV(u"  \"a\",\"b,c\",\"\",\"say \"\"hi\"\"\"  "_s);
    EXPECT_EQ(Items(split), (QStringList{u"a"_s, u"b,c"_s, u""_s, u"say \"\"hi\"\""_s}));
    split.SplitCSV(QString());  // keeps the list
    EXPECT_EQ(split.ItemCount(), 4);
    for (const QString& unquoted : {u"a,b"_s, u"\"a\",b"_s, u"\""_s}) {
        split.SplitCSV(unquoted);
        EXPECT_EQ(split.ItemCount(), 0) << unquoted.toStdString();
    }
}

TEST(SplitClassTest, SplitFCountsCodePageBytes)
{
    SplitClass split;
    const std::tuple<QString, QList<int>, QStringList> cases[] = {
        // Half-width katakana is one byte, the kanji two.
        {u"ｱｲ漢A12"_s, {1, 3, 0, 1}, {u"ｱ"_s, u"ｲ漢"_s, u""_s, u"A"_s, u"12"_s}},
        // Widths past the end give empty fields; the remainder is always there.
        {u"ab"_s, {1, 5, 2}, {u"a"_s, u"b"_s, u""_s, u""_s}},
        // ソ is 83 5C: the lead byte alone is no character, the trail byte alone is a backslash.
        {u"ソx"_s, {1}, {u"\uFFFD"_s, u"\\x"_s}},
    };
    for (const auto& [text, widths, items] : cases) {
        split.SplitF(text, widths);
        EXPECT_EQ(Items(split), items) << text.toStdString();
    }
    EXPECT_THROW(split.SplitF(u"abc"_s, {1, -1}), AppError);
}

TEST(SplitClassTest, SplitDQKeepsQuotedStretchesWhole)
{
    SplitClass split;
    const std::tuple<QString, QString, QString, QStringList> cases[] = {
        {u"a,\"b,c\"d,e"_s, u"\""_s, u","_s, {u"a"_s, u"b,cd"_s, u"e"_s}},
        {u"ab\"c d\",,'e'"_s, u"\""_s, u","_s, {u"abc d"_s, u""_s, u"'e'"_s}},
        {u"p,q,"_s, u"\""_s, QString(), {u"p"_s, u"q"_s, u""_s}},
        {u"'1;2';3"_s, u"'"_s, u";"_s, {u"1;2"_s, u"3"_s}},
        {u"a,\"b,c"_s, u"\""_s, u","_s, {}},  // unpaired quotes: nothing to cut
    };
    for (const auto& [text, quote, delimiter, items] : cases) {
        split.SplitDQ(text, quote, delimiter);
        EXPECT_EQ(Items(split), items) << text.toStdString();
    }
}

TEST(LevelAnalyzeClassTest, MarkersNestIntoChildNodesAndUnpairedOnesChangeNothing)
{
    LevelAnalyzeClass analyzer;
    analyzer.AnalyzeString(u"a(b(c)d)e"_s, u"("_s, u")"_s);
    const SDC root = analyzer.StructurdData();
    EXPECT_EQ(Shape(*root), u"[a]([b]([c])[d])[e]"_s);
    EXPECT_EQ(root->ThreadOfNumber(2)->ThreadOfNumber(2)->LevelNo(), 3);
    analyzer.AnalyzeString(u"(x)"_s);  // the same markers, into the same tree
    EXPECT_EQ(Shape(*root), u"[]([x])[]"_s);
    // Equal markers alternate between outside and inside.
    analyzer.AnalyzeString(u"ab'cd'ef''"_s, u"'"_s, u"'"_s);
    const QString before = u"[ab]([cd])[ef]()[]"_s;
    EXPECT_EQ(Shape(*analyzer.StructurdData()), before);
    // Markers that don't pair leave the tree as it was.
    analyzer.AnalyzeString(u"x'y'z'"_s);  // an odd count
    EXPECT_EQ(Shape(*analyzer.StructurdData()), before);
    analyzer.AnalyzeString(u"(()"_s, u"("_s, u")"_s);
    EXPECT_EQ(Shape(*analyzer.StructurdData()), before);
    // Counts agree, but the end comes first: the analysis stops quietly.
    analyzer.AnalyzeString(u")a("_s);
    EXPECT_LE(analyzer.StructurdData()->Count(), 1);
    // A two-character marker passes the count check but never matches a single character.
    analyzer.AnalyzeString(u"x<<y<<z"_s, u"<<"_s, u"<<"_s);
    EXPECT_EQ(Shape(*analyzer.StructurdData()), u"[x<<y<<z]"_s);

    // An empty marker stops the analysis; once set, the stored target is analysed.
    LevelAnalyzeClass other;
    other.AnalyzeString(u"a(b)"_s, u"("_s);
    EXPECT_EQ(other.StructurdData()->Count(), 0);
    other.SetEndString(u")"_s);
    other.AnalyzeString();
    EXPECT_EQ(Shape(*other.StructurdData()), u"[a]([b])[]"_s);
}
