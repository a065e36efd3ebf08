#include "store/StructuredDataClass.h"
#include "support/AppError.h"

#include <gtest/gtest.h>

#include <random>

namespace {

SDC NewNode() { return std::make_shared<StructuredDataClass>(); }

QStringList Keys(const SDC& n) { return n->RefDataKey(); }

QStringList Values(const SDC& n)
{
    QStringList v;
    for (qint16 i = 1; i <= n->Count(); ++i)
        v << n->DataValueOfNumber(i);
    return v;
}

template <class F>
AppError Raised(F f)
{
    try {
        f();
    } catch (const AppError& e) {
        return e;
    }
    return AppError(0, QStringLiteral("nothing raised"));
}

} // namespace

TEST(StructuredDataKeys, CaseIsIgnoredForLookupButNotForPositions)
{
    auto n = NewNode();
    n->AddData(QStringLiteral("1"), QStringLiteral("key"));
    n->AddData(QStringLiteral("2"), QStringLiteral("other"));
    n->AddData(QStringLiteral("x"), QStringLiteral("Key"));
    // One entry, moved to the end with the new spelling.
    EXPECT_EQ(Keys(n), (QStringList{QStringLiteral("other"), QStringLiteral("Key")}));
    EXPECT_EQ(n->DataValue(QStringLiteral("KEY")), QStringLiteral("x"));
    EXPECT_TRUE(n->Exists(QStringLiteral("key")));
    EXPECT_EQ(n->DataNo(QStringLiteral("key")), 0);
    EXPECT_EQ(n->GetNumberOfKey(QStringLiteral("key")), -1);
    EXPECT_EQ(n->GetNumberOfKey(QStringLiteral("Key")), 2);
    EXPECT_EQ(n->DataKey(QStringLiteral("KEY")), QStringLiteral("Key"));

    // Full-width Latin letters fold too; kana and other letters don't.
    n->AddData(QStringLiteral("fw"), QStringLiteral("ＡＢＣ"));
    EXPECT_EQ(n->DataValue(QStringLiteral("ａｂｃ")), QStringLiteral("fw"));
    EXPECT_FALSE(n->Exists(QStringLiteral("ABC")));
    EXPECT_FALSE(n->Exists(QString()));
}

TEST(StructuredDataKeys, DuplicateKeyIsReplacedWhereItStands)
{
    auto n = NewNode();
    for (const char* k : {"a", "b", "c"})
        n->AddData(QString::fromLatin1(k).toUpper(), QString::fromLatin1(k));
    n->AddData(QStringLiteral("B2"), QStringLiteral("b"), QStringLiteral("a"));  // before/after ignored
    n->AddData(QStringLiteral("C2"), QStringLiteral("c"));
    EXPECT_EQ(Values(n), (QStringList{QStringLiteral("A"), QStringLiteral("B2"), QStringLiteral("C2")}));
    // The cursor stands on the last entry after an add without position, even after replacing.
    n->AddData(QStringLiteral("A2"), QStringLiteral("a"));
    EXPECT_EQ(n->CurrentNo(), 3);

    // A replaced child is dropped and the entry becomes data.
    auto child = n->CreateThread(QStringLiteral("t"));
    n->AddData(QStringLiteral("plain"), QStringLiteral("t"));
    EXPECT_EQ(n->DataType(QStringLiteral("t")), StructuredDataClass::TypeData);
    EXPECT_EQ(n->DataValue(QStringLiteral("t")), QStringLiteral("plain"));
}

TEST(StructuredDataKeys, AutomaticKeysCountFromOneAndMayOverwrite)
{
    auto n = NewNode();
    EXPECT_EQ(n->AddData(QStringLiteral("v")), QStringLiteral("1"));
    EXPECT_EQ(n->AddData(QStringLiteral("w")), QStringLiteral("2"));
    n->DeleteData(QStringLiteral("1"));
    // Count + 1 is "2" again, which overwrites the entry under that key.
    EXPECT_EQ(n->AddData(QStringLiteral("z")), QStringLiteral("2"));
    EXPECT_EQ(n->Count(), 1);
    EXPECT_EQ(n->DataValue(QStringLiteral("2")), QStringLiteral("z"));
}

TEST(StructuredDataKeys, BeforeAndAfterPlaceEntriesOrAddNothing)
{
    auto n = NewNode();
    n->AddData(QStringLiteral("A"), QStringLiteral("a"));
    n->AddData(QStringLiteral("C"), QStringLiteral("c"));
    n->AddData(QStringLiteral("B"), QStringLiteral("b"), QStringLiteral("c"));
    n->AddData(QStringLiteral("D"), QStringLiteral("d"), QString(), QStringLiteral("C"));
    n->AddData(QStringLiteral("0"), QStringLiteral("z"), QStringLiteral("a"), QStringLiteral("d"));  // before wins
    EXPECT_EQ(Keys(n), (QStringList{QStringLiteral("z"), QStringLiteral("a"), QStringLiteral("b"),
                                    QStringLiteral("c"), QStringLiteral("d")}));
    EXPECT_EQ(n->CurrentNo(), 1);

    n->AddData(QStringLiteral("lost"), QStringLiteral("x"), QStringLiteral("missing"));
    EXPECT_EQ(n->Count(), 5);
    EXPECT_EQ(n->CurrentNo(), 0);
    EXPECT_TRUE(n->StartOfData());
    EXPECT_FALSE(n->Exists(QStringLiteral("x")));
}

TEST(StructuredDataCursor, EmptyNodeAndWalkingOffTheEnd)
{
    auto n = NewNode();
    EXPECT_TRUE(n->StartOfData());
    EXPECT_TRUE(n->EndOfData());
    EXPECT_EQ(n->CurrentDataValue(), QString());
    EXPECT_EQ(n->NextData(), QString());
    EXPECT_EQ(n->CurrentNo(), 2);
    n->BottomData();
    EXPECT_EQ(n->CurrentNo(), 0);

    n->Clear();
    for (const char* v : {"x", "y", "z"})
        n->AddData(QString::fromLatin1(v));
    n->TopData();
    QStringList seen;
    while (!n->EndOfData())
        seen << n->NextData();
    EXPECT_EQ(seen, (QStringList{QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("z")}));
    EXPECT_EQ(n->CurrentNo(), 4);
    EXPECT_EQ(n->NextData(), QString());
    EXPECT_EQ(n->CurrentNo(), 4);
    // Flags hide the entry under the cursor.
    n->SetCurrentNo(2);
    EXPECT_EQ(n->CurrentDataValue(), QString());
    n->SetEndOfData(false);
    EXPECT_EQ(n->CurrentDataValue(), QStringLiteral("y"));
    n->SetCurrentNo(9);  // out of range: ignored
    EXPECT_EQ(n->CurrentNo(), 2);
}

TEST(StructuredDataCursor, DeletingWhileWalkingVisitsEveryEntryOnce)
{
    auto n = NewNode();
    for (int i = 1; i <= 6; ++i)
        n->AddData(QString::number(i));
    // Forward: delete the even values as they are met.
    n->TopData();
    QStringList seen;
    while (!n->EndOfData()) {
        const QString v = n->CurrentDataValue();
        seen << v;
        if (v.toInt() % 2 == 0)
            n->DeleteData(n->CurrentDataKey());
        n->NextData();
    }
    EXPECT_EQ(seen.size(), 6);
    EXPECT_EQ(Values(n), (QStringList{QStringLiteral("1"), QStringLiteral("3"), QStringLiteral("5")}));

    // Backward: the cursor only moves when an entry behind it goes.
    n->BottomData();
    n->PreviousData();  // now on position 2 ("3"), moved backward
    n->DeleteDataOfNumber(2);
    EXPECT_EQ(n->CurrentNo(), 2);
    EXPECT_EQ(n->CurrentDataValue(), QStringLiteral("5"));
    n->DeleteDataOfNumber(99);  // ignored
    n->DeleteData(QStringLiteral("nothing"));
    EXPECT_EQ(n->Count(), 2);
}

TEST(StructuredDataTypes, GettersAndSettersRespectTheEntryType)
{
    auto n = NewNode();
    n->AddData(QStringLiteral("v"), QStringLiteral("d"));
    auto obj = std::make_shared<QString>(QStringLiteral("object"));
    n->AddReference(obj, QStringLiteral("r"));
    auto child = n->CreateThread(QStringLiteral("t"));

    EXPECT_EQ(n->DataValue(QStringLiteral("t")), QString());
    EXPECT_EQ(n->Thread(QStringLiteral("d")), nullptr);
    EXPECT_EQ(n->DataReference(QStringLiteral("r")).As<QString>(), obj);
    EXPECT_EQ(n->DataReference(QStringLiteral("r")).As<int>(), nullptr);  // typed: wrong type gives null
    EXPECT_EQ(n->DataCount(), 1);

    AppError missing = Raised([&] { n->Thread(QStringLiteral("nope")); });
    EXPECT_EQ(missing.Number(), 6000);
    EXPECT_EQ(missing.Description(),
              QStringLiteral("スレッドに存在しないキーを参照しようとしました。(StructuredDataClass Thread)\r\nKey = nope"));
    EXPECT_EQ(Raised([&] { n->ThreadOfNumber(7); }).Description(),
              QStringLiteral("スレッドに存在しないキーを参照しようとしました。(StructuredDataClass ThreadOfNumber)\r\nKey = 7"));
    EXPECT_EQ(Raised([&] { n->SetDataValue(QStringLiteral("t"), QStringLiteral("x")); }).Description(),
              QStringLiteral("データタイプ以外は設定できません。(StructuredDataClass DataValue)"));
    EXPECT_EQ(Raised([&] { n->SetDataReference(QStringLiteral("d"), obj); }).Number(), 6000);
    EXPECT_EQ(Raised([&] { n->SetThread(QStringLiteral("r"), NewNode()); }).Description(),
              QStringLiteral("スレッドタイプ以外は設定できません。(StructuredDataClass Thread)"));
    EXPECT_EQ(Raised([&] { n->SetDataValue(QStringLiteral("absent"), QString()); }).Number(), 5);

    n->SetDataValue(QStringLiteral("D"), QStringLiteral("new"));  // case-only difference: moves last
    EXPECT_EQ(n->DataKeyOfNumber(3), QStringLiteral("D"));
    EXPECT_EQ(n->DataValue(QStringLiteral("d")), QStringLiteral("new"));
}

TEST(StructuredDataTypes, NumberSettersTakeTheNumberAsAKey)
{
    auto n = NewNode();
    n->AddData(QStringLiteral("first"), QStringLiteral("2"));
    n->AddData(QStringLiteral("second"), QStringLiteral("1"));
    n->SetDataValueOfNumber(1, QStringLiteral("changed"));
    EXPECT_EQ(n->DataValueOfNumber(1), QStringLiteral("first"));
    EXPECT_EQ(n->DataValueOfNumber(2), QStringLiteral("changed"));
    EXPECT_EQ(Raised([&] { n->SetDataValueOfNumber(3, QString()); }).Number(), 5);
}

TEST(StructuredDataTypes, AttachedNodesTakeLevelsThatDontRoundTrip)
{
    auto root = NewNode();
    auto a = root->CreateThread(QStringLiteral("a"));
    EXPECT_EQ(a->LevelNo(), 2);
    EXPECT_EQ(a->Parent(), root);
    auto b = a->CreateThread(QStringLiteral("b"));

    auto replacement = NewNode();
    a->SetThread(QStringLiteral("b"), replacement);
    EXPECT_EQ(replacement->LevelNo(), 2);  // the parent's own level, not one more
    EXPECT_EQ(replacement->Parent(), a);
    EXPECT_EQ(replacement->Name(), QStringLiteral("b"));

    a->CreateThread(QStringLiteral("1"));
    auto other = NewNode();
    a->SetThreadOfNumber(1, other);
    EXPECT_EQ(other->Parent(), root);  // the node's parent, not the node
    EXPECT_EQ(other->LevelNo(), 2);
}

TEST(StructuredDataPaths, WalkingStopsQuietlyWhereThePathEnds)
{
    auto root = NewNode();
    auto a = root->CreateThreadOfPath(QStringLiteral("\\A\\B\\"));
    EXPECT_EQ(a->Name(), QStringLiteral("B"));
    auto nodeA = root->Thread(QStringLiteral("A"));
    nodeA->AddData(QStringLiteral("v"), QStringLiteral("data"));

    EXPECT_EQ(root->ThreadOfPath(QStringLiteral("\\A\\missing\\")), nodeA);
    EXPECT_FALSE(root->ExistsOfPath(QStringLiteral("\\A\\missing\\")));
    EXPECT_TRUE(root->ExistsOfPath(QStringLiteral("\\A\\B\\")));
    EXPECT_EQ(root->ThreadOfPath(QStringLiteral("x\\A\\B\\y")), a);
    EXPECT_EQ(root->ThreadOfPath(QStringLiteral("\\A\\B")), nodeA);  // the last piece is never read
    EXPECT_EQ(root->ThreadOfPath(QString()), root);
    EXPECT_EQ(root->ThreadOfPath(QStringLiteral("\\\\")), root);
    EXPECT_EQ(root->ThreadOfPath(QStringLiteral("\\A\\data\\")), nullptr);
    EXPECT_EQ(root->ThreadOfPath(QStringLiteral("\\A\\data\\more\\")), nullptr);
    EXPECT_FALSE(root->ExistsOfPath(QStringLiteral("\\A\\data\\")));

    EXPECT_EQ(a->GetPath(), QStringLiteral("\\A\\B\\"));
    EXPECT_EQ(root->GetPath(), QStringLiteral("\\"));

    // By number: positions where a piece reads as one.
    EXPECT_EQ(root->ThreadOfPathForNumber(QStringLiteral("\\1\\B\\")), a);
    EXPECT_TRUE(root->ExistsOfPathForNumber(QStringLiteral("\\1\\1\\")));
    EXPECT_FALSE(root->ExistsOfPathForNumber(QStringLiteral("\\1\\5\\")));
    EXPECT_TRUE(root->ExistsOfPathForNumber(QStringLiteral("\\A\\nothing-checked-behind\\")));
}

TEST(StructuredDataPaths, FullPathKeysMakeEveryKeyUnique)
{
    auto root = NewNode();
    root->CreateThreadOfPath(QStringLiteral("\\A\\X\\"), QStringLiteral("FullPath"));
    auto bx = root->CreateThreadOfPath(QStringLiteral("\\B\\X\\"), QStringLiteral("FullPath"));
    EXPECT_EQ(bx->ObjectKey(), QStringLiteral("\\B\\X\\"));
    EXPECT_EQ(bx->GetPathOfKey(), QStringLiteral("\\\\B\\\\\\B\\X\\\\"));

    const SDC all = root->GetThreads();
    EXPECT_EQ(Keys(all), (QStringList{QStringLiteral("\\A\\"), QStringLiteral("\\A\\X\\"),
                                      QStringLiteral("\\B\\"), QStringLiteral("\\B\\X\\")}));
    EXPECT_EQ(all->DataReference(QStringLiteral("\\B\\X\\")).As<StructuredDataClass>(), bx);

    // Plain keys fold two "X" nodes into the later one, in the earlier one's place.
    auto plain = NewNode();
    plain->CreateThreadOfPath(QStringLiteral("\\A\\X\\"));
    auto px = plain->CreateThreadOfPath(QStringLiteral("\\B\\X\\"));
    const SDC folded = plain->GetThreads();
    EXPECT_EQ(Keys(folded), (QStringList{QStringLiteral("A"), QStringLiteral("X"), QStringLiteral("B")}));
    EXPECT_EQ(folded->DataReference(QStringLiteral("X")).As<StructuredDataClass>(), px);

    // A data entry in the way: the step after it has no node to stand on.
    auto blocked = NewNode();
    blocked->AddData(QStringLiteral("v"), QStringLiteral("A"));
    EXPECT_EQ(blocked->CreateThreadOfPath(QStringLiteral("\\A\\")), nullptr);
    EXPECT_EQ(Raised([&] { blocked->CreateThreadOfPath(QStringLiteral("\\A\\B\\")); }).Number(), 91);
}

TEST(StructuredDataSort, DefaultsAreWrittenBackAndComparisonsFollowTheType)
{
    auto n = NewNode();
    for (const char* v : {"b", "a", "c"})
        n->AddData(QString::fromLatin1(v));
    QString target;
    QString compare;
    n->Sort(QString(), target, compare);
    EXPECT_EQ(Values(n), (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    EXPECT_EQ(target, QStringLiteral("Value"));
    EXPECT_EQ(compare, QStringLiteral("String"));

    auto nums = NewNode();
    nums->AddData(QStringLiteral("10"));
    nums->AddData(QStringLiteral("9"));
    nums->Sort(QString(), QStringLiteral("Value"), QStringLiteral("String"));
    EXPECT_EQ(nums->DataValueOfNumber(1), QStringLiteral("10"));
    nums->Sort(QString(), QStringLiteral("Value"), QStringLiteral("Integer"));
    EXPECT_EQ(nums->DataValueOfNumber(1), QStringLiteral("9"));
    nums->Sort(QStringLiteral("DEC"), QStringLiteral("Value"), QStringLiteral("Integer"));
    EXPECT_EQ(nums->DataValueOfNumber(1), QStringLiteral("10"));

    nums->AddData(QStringLiteral("x"));
    EXPECT_EQ(Raised([&] { nums->Sort(QString(), QStringLiteral("Value"), QStringLiteral("Integer")); }).Number(), 13);

    // By key: code units, so capitals come first.
    auto byKey = NewNode();
    byKey->AddData(QStringLiteral("1"), QStringLiteral("b"));
    byKey->AddData(QStringLiteral("2"), QStringLiteral("C"));
    byKey->AddData(QStringLiteral("3"), QStringLiteral("a"));
    byKey->Sort(QString(), QStringLiteral("Key"), QString());
    EXPECT_EQ(Keys(byKey), (QStringList{QStringLiteral("C"), QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(byKey->DataValue(QStringLiteral("b")), QStringLiteral("1"));  // keys still find their entries
}

TEST(StructuredDataSort, RandomListsComeOutOrdered)
{
    std::mt19937 rng(12345);
    for (int round = 0; round < 200; ++round) {
        auto n = NewNode();
        const int size = static_cast<int>(rng() % 40) + 2;
        std::vector<int> values;
        for (int i = 0; i < size; ++i) {
            values.push_back(static_cast<int>(rng() % 25) - 5);
            n->AddData(QString::number(values.back()));
        }
        const bool descending = round % 2 == 1;
        n->Sort(descending ? QStringLiteral("DEC") : QString(), QStringLiteral("Value"), QStringLiteral("Integer"));
        std::sort(values.begin(), values.end());
        if (descending)
            std::reverse(values.begin(), values.end());
        ASSERT_EQ(n->Count(), size);
        for (int i = 0; i < size; ++i)
            ASSERT_EQ(n->DataValueOfNumber(static_cast<qint16>(i + 1)).toInt(), values[i]) << "round " << round;
        for (int i = 1; i <= size; ++i)  // the key index follows every move
            ASSERT_EQ(n->DataNo(n->DataKeyOfNumber(static_cast<qint16>(i))), i);
    }
}

TEST(StructuredDataSort, SortExOrdersChildrenByAValueInside)
{
    auto n = NewNode();
    for (const char* v : {"30", "4", "100"}) {
        auto child = n->CreateThread();
        child->AddData(QString::fromLatin1(v), QStringLiteral("Size"));
    }
    n->SortEx(QString(), QStringLiteral("size"), QStringLiteral("Integer"));
    QStringList order;
    for (qint16 i = 1; i <= n->Count(); ++i)
        order << n->ThreadOfNumber(i)->DataValue(QStringLiteral("Size"));
    EXPECT_EQ(order, (QStringList{QStringLiteral("4"), QStringLiteral("30"), QStringLiteral("100")}));
}

TEST(StructuredDataSort, SwapTradesPlacesAndSelfSwapTakesTheNext)
{
    auto n = NewNode();
    for (const char* k : {"a", "b", "c"})
        n->AddData(QString::fromLatin1(k).toUpper(), QString::fromLatin1(k));
    n->SetCurrentNo(2);
    n->SwapData(QStringLiteral("a"), QStringLiteral("c"));
    EXPECT_EQ(Keys(n), (QStringList{QStringLiteral("c"), QStringLiteral("b"), QStringLiteral("a")}));
    EXPECT_EQ(n->CurrentNo(), 2);
    n->SwapData(QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("number"));
    EXPECT_EQ(Keys(n), (QStringList{QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("a")}));
    n->SwapData(QStringLiteral("1"), QStringLiteral("9"), QStringLiteral("NUMBER"));  // out of range: nothing
    n->SwapData(QStringLiteral("B"), QStringLiteral("a"));                            // exact keys only
    EXPECT_EQ(Keys(n), (QStringList{QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("a")}));
    EXPECT_EQ(Raised([&] { n->SwapData(QStringLiteral("a"), QStringLiteral("a")); }).Number(), 5);
    EXPECT_EQ(n->Count(), 3);  // and nothing was lost on the way
}

TEST(StructuredDataTree, CloneCopiesDeeplyAndSharesReferences)
{
    auto src = NewNode();
    src->AddData(QStringLiteral("1"), QStringLiteral("a"));
    auto obj = std::make_shared<int>(7);
    src->AddReference(obj, QStringLiteral("r"));
    src->CreateThreadOfPath(QStringLiteral("\\T\\U\\"))->AddData(QStringLiteral("deep"), QStringLiteral("k"));

    SDC made;
    SDC returned = src->Clone(nullptr, made);
    ASSERT_TRUE(made);
    EXPECT_EQ(returned, made);
    EXPECT_EQ(made->ThreadOfPath(QStringLiteral("\\T\\U\\"))->DataValue(QStringLiteral("k")), QStringLiteral("deep"));
    EXPECT_EQ(made->DataReference(QStringLiteral("r")).As<int>(), obj);
    made->ThreadOfPath(QStringLiteral("\\T\\U\\"))->SetDataValue(QStringLiteral("k"), QStringLiteral("changed"));
    EXPECT_EQ(src->ThreadOfPath(QStringLiteral("\\T\\U\\"))->DataValue(QStringLiteral("k")), QStringLiteral("deep"));

    SDC given = NewNode();
    given->AddData(QStringLiteral("kept"), QStringLiteral("z"));
    EXPECT_EQ(src->Clone(src.get(), given), nullptr);
    EXPECT_EQ(Keys(given), (QStringList{QStringLiteral("z"), QStringLiteral("a"), QStringLiteral("r"), QStringLiteral("T")}));

    // Clear cuts children loose and empties them, but keeps the node's own name.
    const SDC child = src->Thread(QStringLiteral("T"));
    src->SetName(QStringLiteral("kept"));
    src->Clear();
    EXPECT_EQ(src->Count(), 0);
    EXPECT_EQ(src->Name(), QStringLiteral("kept"));
    EXPECT_EQ(child->Parent(), nullptr);
    EXPECT_EQ(child->Count(), 0);
}

TEST(StructuredDataTree, JoiningNeedsSomethingToJoin)
{
    auto n = NewNode();
    EXPECT_EQ(Raised([&] { n->GetAllDataKey(); }).Number(), 5);
    n->AddData(QStringLiteral("x"), QStringLiteral("k1"));
    n->CreateThread(QStringLiteral("k2"));
    n->AddData(QStringLiteral("y"), QStringLiteral("k3"));
    EXPECT_EQ(n->GetAllDataValue(QString()), QStringLiteral("x,y"));
    EXPECT_EQ(n->GetAllDataKey(QStringLiteral("|")), QStringLiteral("k1|k2|k3"));
}

TEST(StructuredDataTree, DebugListDumpsNodesAndChildren)
{
    auto n = NewNode();
    n->SetName(QStringLiteral("N"));
    n->AddData(QStringLiteral("v"), QStringLiteral("k"));
    n->CreateThread(QStringLiteral("c"))->AddReference(std::make_shared<int>(1), QStringLiteral("r"));
    const QStringList lines = Values(n->DebugList());
    ASSERT_EQ(lines.size(), 9 + 4 + 9 + 3);  // node, its data entry, the child, its reference
    EXPECT_EQ(lines[1], QStringLiteral("Name          = [N]"));
    EXPECT_EQ(lines[10], QStringLiteral("DataValue( 1) = [v]"));
    EXPECT_EQ(lines[23], QStringLiteral("DataType ( 1) = [REF]"));
}

TEST(StructuredDataLimits, CountsAreSixteenBitAndDeepTreesFreeSafely)
{
    auto n = NewNode();
    for (int i = 0; i < 32767; ++i)
        n->AddData(QString());
    EXPECT_EQ(n->Count(), 32767);
    EXPECT_EQ(Raised([&] { n->AddData(QStringLiteral("one too many"), QStringLiteral("x")); }).Number(), 6);
    EXPECT_EQ(n->Count(), 32767);

    // Thousands of levels: freeing the tree must not run out of stack.
    auto root = NewNode();
    SDC at = root;
    for (int i = 0; i < 30000; ++i)
        at = at->CreateThread(QStringLiteral("d"));
    EXPECT_EQ(at->LevelNo(), 30001);
    at.reset();
    root.reset();
}
