#include "engine/Records.h"

#include "engine/Container.h"
#include "engine/FormatError.h"
#include "support/Cp932.h"

namespace xdw {

namespace {

constexpr qsizetype MaxRecords = 1000000;
constexpr int MaxDepth = 32;
constexpr qsizetype MaxAttributes = 100000;
constexpr quint32 Declarations = 51;
constexpr quint32 FirstNamed = 2001;
constexpr size_t DeclarationItems = 5;

void ReadDeclarations(QByteArrayView vList, Record& vRecord)
{
    for (Declaration& d : DeclarationList(vList))
        vRecord.names.emplace_back(d.number, std::move(d.name));
}

Record ReadRecord(QByteArrayView vValue, const Container& vContainer)
{
    Record record;
    TlvReader reader(vValue);
    const Element depth = reader.Next();
    if (depth.tagClass != 2 || depth.number != 0)
        Refuse(QStringLiteral("record without its depth"));
    const qint64 d = Count(depth.value);
    if (d > MaxDepth)
        Refuse(QStringLiteral("records nested %1 deep").arg(d));
    record.depth = static_cast<int>(d);
    const Element kind = reader.Next();
    if (kind.tagClass != 1 || kind.number != 2)
        Refuse(QStringLiteral("record without its kind"));
    record.kind = static_cast<quint32>(Count(kind.value) & 0xFFFFFFFF);
    while (!reader.AtEnd()) {
        const Element e = reader.Next();
        if (e.tagClass != 2 && e.tagClass != 3)
            Refuse(QStringLiteral("attribute of an unknown class"));
        if (static_cast<qsizetype>(record.attributes.size()) >= MaxAttributes)
            Refuse(QStringLiteral("too many attributes in a record"));
        record.attributes.push_back({e.tagClass, e.constructed, e.number, e.value});
    }
    // Declarations may follow the attributes they name, so they are read last.
    if (const Attribute* declared = record.Find(Declarations))
        ReadDeclarations(ValueOf(*declared, vContainer), record);
    return record;
}

} // namespace

const Attribute* Record::Find(quint32 vNumber) const
{
    for (const Attribute& a : attributes)
        if (a.number == vNumber)
            return &a;
    return nullptr;
}

const Attribute* Record::Named(QStringView vName) const
{
    for (const auto& [number, name] : names)
        if (number >= FirstNamed && name == vName)
            return Find(number);
    return nullptr;
}

std::vector<Declaration> DeclarationList(QByteArrayView vList)
{
    const std::vector<QByteArrayView> items = Items(vList);
    if (items.size() % DeclarationItems != 0)
        Refuse(QStringLiteral("attribute declarations not in fives"));
    auto integerOr = [](QByteArrayView vItem, qint64 vDefault) {
        return vItem.isEmpty() || vItem.size() > 8 ? vDefault : Integer(vItem);
    };
    std::vector<Declaration> out;
    for (size_t i = 0; i < items.size(); i += DeclarationItems) {
        QByteArrayView name = items[i + 4];
        if (name.endsWith('\0'))
            name.chop(1);
        out.push_back({static_cast<quint32>(Count(items[i])), integerOr(items[i + 1], NamedNumbers),
                       integerOr(items[i + 2], -1), Cp932::Decode(name)});
    }
    return out;
}

QByteArrayView ValueOf(const Attribute& vAttribute, const Container& vContainer)
{
    if (vAttribute.tagClass != 3)
        return vAttribute.value;
    const Fields reference(vAttribute.value);
    const std::optional<QByteArrayView> entry = reference.Get(1);
    if (!entry)
        Refuse(QStringLiteral("reference without its entry"));
    return vContainer.EntryBody(Count(*entry));
}

std::vector<Record> ReadRecords(QByteArrayView vProperties, const Container& vContainer)
{
    std::vector<Record> records;
    // The nearest open record at each depth: a new record's parent is the one a level up.
    std::vector<qsizetype> open;
    TlvReader reader(vProperties);
    while (!reader.AtEnd()) {
        const Element e = reader.Next();
        if (e.tagClass != 1 || e.number != 2)
            Refuse(QStringLiteral("properties hold something other than records"));
        if (static_cast<qsizetype>(records.size()) >= MaxRecords)
            Refuse(QStringLiteral("too many records"));
        Record record = ReadRecord(e.value, vContainer);
        if (records.empty() ? record.depth != 0 : record.depth == 0)
            Refuse(QStringLiteral("more than one root record"));
        if (record.depth > static_cast<int>(open.size()))
            Refuse(QStringLiteral("record skips a level"));
        open.resize(static_cast<size_t>(record.depth));
        record.parent = open.empty() ? -1 : open.back();
        open.push_back(static_cast<qsizetype>(records.size()));
        records.push_back(std::move(record));
    }
    if (records.empty())
        Refuse(QStringLiteral("no records"));
    return records;
}

QString NarrowText(QByteArrayView vValue)
{
    const qsizetype zero = vValue.indexOf('\0');
    return Cp932::Decode(zero < 0 ? vValue : vValue.first(zero));
}

QString WideText(QByteArrayView vValue)
{
    QString text;
    for (qsizetype i = 0; i + 1 < vValue.size(); i += 2) {
        const char16_t unit = static_cast<char16_t>(static_cast<quint8>(vValue[i])
                                                    | static_cast<quint8>(vValue[i + 1]) << 8);
        if (unit == 0)
            break;
        text.append(QChar(unit));
    }
    return text;
}

} // namespace xdw
