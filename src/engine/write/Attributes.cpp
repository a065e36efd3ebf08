#include "engine/write/Attributes.h"

#include "engine/Records.h"
#include "engine/Tlv.h"
#include "engine/write/Emit.h"
#include "engine/write/Navigate.h"

namespace xdw {

using edit::BadArgument;

namespace {

constexpr QStringView WideSuffix = u"(w";
constexpr qint64 FirstNamed = 2001;

QString Wide(QStringView vName)
{
    return vName.toString().append(WideSuffix);
}

void RequireName(QStringView vName)
{
    if (vName.isEmpty())
        BadArgument(QStringLiteral("attribute without a name"));
}

[[noreturn]] void Absent(QStringView vName)
{
    BadArgument(QStringLiteral("no attribute named %1").arg(vName));
}

} // namespace

void SetUserAttribute(EditableFile& vFile, const QString& vName, const QByteArray& vValue)
{
    RequireName(vName);
    vFile.root.SetNamed(vName, NamedBytes, vValue);
}

QByteArray GetUserAttribute(const EditableFile& vFile, QStringView vName)
{
    const NodeAttribute* a = vFile.root.Named(vName);
    if (!a || a->tagClass != 2)
        Absent(vName);
    return a->value;
}

void DeleteUserAttribute(EditableFile& vFile, QStringView vName)
{
    if (!vFile.root.RemoveNamed(vName))
        Absent(vName);
}

void SetDocumentAttribute(EditableFile& vFile, const QString& vName, const QString& vValue, int vType)
{
    RequireName(vName);
    if (vType == AttributeString) {
        // One name has one value: the other spelling of a string goes.
        const bool wide = vFile.generation >= 10;
        vFile.root.RemoveNamed(wide ? QStringView(vName) : QStringView(Wide(vName)));
        if (wide)
            vFile.root.SetNamed(Wide(vName), NamedBytes, emit::WideText(vValue));
        else
            vFile.root.SetNamed(vName, NamedBytes, emit::NarrowText(vValue));
        return;
    }
    if (vType != AttributeInteger && vType != AttributeDate && vType != AttributeBool)
        BadArgument(QStringLiteral("attribute type %1").arg(vType));
    bool ok = false;
    const qint64 number = vValue.trimmed().toLongLong(&ok);
    if (!ok || (vType == AttributeBool && number != 0 && number != 1))
        BadArgument(QStringLiteral("%1 is no value of type %2").arg(vValue).arg(vType));
    vFile.root.RemoveNamed(Wide(vName));
    vFile.root.SetNamed(vName, NamedNumbers, emit::Numbers({number, vType}));
}

DocumentAttribute GetDocumentAttribute(const EditableFile& vFile, QStringView vName)
{
    if (const NodeAttribute* wide = vFile.root.Named(Wide(vName)); wide && wide->tagClass == 2)
        return {AttributeString, WideText(wide->value)};
    const Declaration* declared = vFile.root.Declared(vName);
    const NodeAttribute* a = declared ? vFile.root.Find(declared->number) : nullptr;
    if (!a || a->tagClass != 2)
        Absent(vName);
    if (declared->type == NamedBytes)
        return {AttributeString, NarrowText(a->value)};
    // Ours hold [value, type]; a plain number another program set reads as an integer.
    const std::vector<qint64> numbers = declared->type == NamedNumbers ? NumberList(a->value) : std::vector<qint64>();
    if (numbers.size() == 1)
        return {AttributeInteger, QString::number(numbers[0])};
    if (numbers.size() != 2 || numbers[1] < AttributeInteger || numbers[1] > AttributeBool)
        Absent(vName);
    return {static_cast<int>(numbers[1]), QString::number(numbers[0])};
}

void DeleteDocumentAttribute(EditableFile& vFile, QStringView vName)
{
    const bool wide = vFile.root.RemoveNamed(Wide(vName));
    if (!vFile.root.RemoveNamed(vName) && !wide)
        Absent(vName);
}

QStringList AttributeNames(const EditableFile& vFile)
{
    QStringList names;
    for (const Declaration& d : vFile.root.declarations) {
        if (d.number < FirstNamed || !vFile.root.Find(d.number))
            continue;
        const QString name = d.name.endsWith(WideSuffix) ? d.name.chopped(WideSuffix.size()) : d.name;
        if (!names.contains(name))
            names.append(name);
    }
    return names;
}

} // namespace xdw
