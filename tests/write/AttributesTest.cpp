// Document and user attributes on the root record: the stored bytes are pinned, since other
// software reads them, and each kind survives a save and a fresh load.
#include "document/XdwApi.h"
#include "engine/XdwBuilder.h"
#include "engine/write/Attributes.h"
#include "write/WriteSupport.h"

#include <gtest/gtest.h>

using namespace xdw;
using writetest::CodeOf;

namespace {

EditableFile Document(int vGeneration)
{
    return LoadEditable(xdwtest::Document({xdwtest::PageSpec{}}, xdwtest::Options(vGeneration, true)));
}

// Saved and loaded again.
EditableFile Again(const EditableFile& vFile)
{
    return LoadEditable(SavedBytes(vFile));
}

QByteArray Stored(const EditableFile& vFile, QStringView vName, qint64* vType)
{
    const Declaration* d = vFile.root.Declared(vName);
    if (!d)
        return "absent";
    *vType = d->type;
    return vFile.root.Find(d->number)->value;
}

} // namespace

TEST(Attributes, DocumentAttributesAreStoredAsOtherSoftwareReadsThem)
{
    EditableFile file = Document(7);
    SetDocumentAttribute(file, QStringLiteral("Title"), QStringLiteral("題名"), AttributeString);
    SetDocumentAttribute(file, QStringLiteral("Count"), QStringLiteral("123456789"), AttributeInteger);
    SetDocumentAttribute(file, QStringLiteral("When"), QStringLiteral("1700000000"), AttributeDate);
    SetDocumentAttribute(file, QStringLiteral("Done"), QStringLiteral("1"), AttributeBool);
    qint64 type = 0;
    EXPECT_EQ(Stored(file, u"Title", &type).toHex(' '), QByteArray("91 e8 96 bc 00"));
    EXPECT_EQ(type, NamedBytes);
    EXPECT_EQ(Stored(file, u"Count", &type).toHex(' '), QByteArray("04 07 5b cd 15 01 00"));
    EXPECT_EQ(type, NamedNumbers);
    EXPECT_EQ(Stored(file, u"When", &type).toHex(' '), QByteArray("04 65 53 f1 00 01 02"));
    EXPECT_EQ(Stored(file, u"Done", &type).toHex(' '), QByteArray("01 01 01 03"));

    const EditableFile again = Again(file);
    EXPECT_EQ(AttributeNames(again), (QStringList{"Title", "Count", "When", "Done"}));
    auto get = [&](const char* vName) {
        const DocumentAttribute a = GetDocumentAttribute(again, QString::fromLatin1(vName));
        return std::make_pair(a.type, a.value);
    };
    EXPECT_EQ(get("Title"), std::make_pair(AttributeString, QStringLiteral("題名")));
    EXPECT_EQ(get("Count"), std::make_pair(AttributeInteger, QStringLiteral("123456789")));
    EXPECT_EQ(get("When"), std::make_pair(AttributeDate, QStringLiteral("1700000000")));
    EXPECT_EQ(get("Done"), std::make_pair(AttributeBool, QStringLiteral("1")));
}

TEST(Attributes, Generation10KeepsStringsWideUnderTheirMarkedName)
{
    EditableFile file = Document(10);
    SetDocumentAttribute(file, QStringLiteral("Title"), QStringLiteral("猫"), AttributeString);
    qint64 type = 0;
    EXPECT_EQ(Stored(file, u"Title(w", &type).toHex(' '), QByteArray("2b 73 00 00"));
    EXPECT_EQ(Stored(file, u"Title", &type), QByteArray("absent"));
    EXPECT_EQ(GetDocumentAttribute(Again(file), u"Title").value, QStringLiteral("猫"));

    // One name has one value: a number in its place takes the wide text away, and back.
    SetDocumentAttribute(file, QStringLiteral("Title"), QStringLiteral("5"), AttributeInteger);
    EXPECT_EQ(AttributeNames(file), QStringList{"Title"});
    EXPECT_EQ(GetDocumentAttribute(file, u"Title").type, AttributeInteger);
    SetDocumentAttribute(file, QStringLiteral("Title"), QStringLiteral("x"), AttributeString);
    EXPECT_EQ(GetDocumentAttribute(file, u"Title").type, AttributeString);
    DeleteDocumentAttribute(file, u"Title");
    EXPECT_TRUE(AttributeNames(file).isEmpty());
}

TEST(Attributes, ValuesThatDoNotFitTheirTypeAndAbsentNamesAreBadArguments)
{
    EditableFile file = Document(7);
    for (const auto& [value, type] : std::vector<std::pair<const char*, int>>{
             {"12a", AttributeInteger}, {"", AttributeDate}, {"2", AttributeBool}, {"1", 4}, {"1", -1}})
        EXPECT_EQ(CodeOf([&] { SetDocumentAttribute(file, QStringLiteral("n"), QString::fromLatin1(value), type); }),
                  XdwResult::InvalidArg) << value << " " << type;
    EXPECT_EQ(CodeOf([&] { SetDocumentAttribute(file, {}, QStringLiteral("1"), AttributeInteger); }), XdwResult::InvalidArg);
    EXPECT_TRUE(AttributeNames(file).isEmpty());
    EXPECT_EQ(CodeOf([&] { (void)GetDocumentAttribute(file, u"n"); }), XdwResult::InvalidArg);
    EXPECT_EQ(CodeOf([&] { DeleteDocumentAttribute(file, u"n"); }), XdwResult::InvalidArg);
    EXPECT_EQ(CodeOf([&] { (void)GetUserAttribute(file, u"n"); }), XdwResult::InvalidArg);
    EXPECT_EQ(CodeOf([&] { DeleteUserAttribute(file, u"n"); }), XdwResult::InvalidArg);
}

TEST(Attributes, UserAttributesKeepTheirBytes)
{
    SAMPLE_OR_SKIP(bytes, "binder-gen7.xbd");
    EditableFile file = LoadEditable(bytes);
    const QByteArray value("\x00\x01\xFFzero\x00", 8);
    SetUserAttribute(file, QStringLiteral("data"), value);
    const EditableFile again = Again(file);
    EXPECT_EQ(GetUserAttribute(again, u"data"), value);
    qint64 type = 0;
    EXPECT_EQ(Stored(again, u"data", &type), value);
    EXPECT_EQ(type, NamedBytes);
    // The binder's own named attributes come first, untouched; a plain number reads as an
    // integer, a size pair as no document attribute.
    EXPECT_EQ(AttributeNames(again), (QStringList{"%bindersize", "%bindercolor", "data"}));
    EXPECT_EQ(GetDocumentAttribute(again, u"%bindercolor").value, QStringLiteral("5"));
    EXPECT_EQ(CodeOf([&] { (void)GetDocumentAttribute(again, u"%bindersize"); }), XdwResult::InvalidArg);
    DeleteUserAttribute(file, u"data");
    EXPECT_EQ(AttributeNames(Again(file)), (QStringList{"%bindersize", "%bindercolor"}));
}
