#include "engine/Tlv.h"

#include "engine/FormatError.h"

namespace xdw {

namespace {

// Long-form tag numbers never need more than this many continuation bytes in a real file.
constexpr int MaxTagContinuation = 3;

quint8 Byte(QByteArrayView vBytes, qsizetype vAt)
{
    return static_cast<quint8>(vBytes[vAt]);
}

} // namespace

Element TlvReader::Next()
{
    const qsizetype size = bytes_.size();
    qsizetype p = pos_;
    if (p >= size)
        Refuse(QStringLiteral("element expected past the end"));
    Element e;
    e.start = p;
    const quint8 tag = Byte(bytes_, p++);
    e.tagClass = tag >> 6;
    e.constructed = (tag & 0x20) != 0;
    e.number = tag & 0x1F;
    if (e.number == 0x1F) {
        e.number = 0;
        for (int i = 0;; ++i) {
            if (p >= size || i > MaxTagContinuation)
                Refuse(QStringLiteral("tag number runs past its bytes"));
            const quint8 b = Byte(bytes_, p++);
            e.number = (e.number << 7) | (b & 0x7F);
            if ((b & 0x80) == 0)
                break;
        }
    }
    if (p >= size)
        Refuse(QStringLiteral("element has no length"));
    const quint8 first = Byte(bytes_, p++);
    qint64 length = first;
    if (first & 0x80) {
        // 80 (indefinite) and 85 and above are not written by any version.
        const int n = first & 0x7F;
        if (n < 1 || n > 4)
            Refuse(QStringLiteral("unsupported length form"));
        if (size - p < n)
            Refuse(QStringLiteral("length runs past its bytes"));
        length = 0;
        for (int i = 0; i < n; ++i)
            length = (length << 8) | Byte(bytes_, p++);
    }
    if (length > size - p)
        Refuse(QStringLiteral("element longer than its parent"));
    e.value = bytes_.sliced(p, static_cast<qsizetype>(length));
    e.end = p + static_cast<qsizetype>(length);
    pos_ = e.end;
    return e;
}

Element ParseWhole(QByteArrayView vBytes)
{
    TlvReader reader(vBytes);
    Element e = reader.Next();
    if (!reader.AtEnd())
        Refuse(QStringLiteral("bytes after an element"));
    return e;
}

qint64 Integer(QByteArrayView vValue)
{
    if (vValue.isEmpty() || vValue.size() > 8)
        Refuse(QStringLiteral("integer of %1 bytes").arg(vValue.size()));
    // Sign from the first byte, then shift the rest in unsigned to stay clear of overflow.
    quint64 v = (Byte(vValue, 0) & 0x80) ? ~quint64(0) : 0;
    for (qsizetype i = 0; i < vValue.size(); ++i)
        v = (v << 8) | Byte(vValue, i);
    return static_cast<qint64>(v);
}

qint64 Count(QByteArrayView vValue)
{
    const qint64 v = Integer(vValue);
    if (v < 0)
        Refuse(QStringLiteral("negative size or count"));
    return v;
}

std::vector<QByteArrayView> Items(QByteArrayView vValue)
{
    std::vector<QByteArrayView> items;
    qsizetype p = 0;
    while (p < vValue.size()) {
        const qsizetype n = Byte(vValue, p++);
        if (n > vValue.size() - p)
            Refuse(QStringLiteral("list item longer than its list"));
        items.push_back(vValue.sliced(p, n));
        p += n;
    }
    return items;
}

std::vector<qint64> NumberList(QByteArrayView vValue)
{
    std::vector<qint64> numbers;
    for (QByteArrayView item : Items(vValue))
        numbers.push_back(Integer(item));
    return numbers;
}

Fields::Fields(QByteArrayView vBytes)
{
    TlvReader reader(vBytes);
    while (!reader.AtEnd())
        elements_.push_back(reader.Next());
}

std::optional<QByteArrayView> Fields::Get(quint32 vNumber) const
{
    for (const Element& e : elements_)
        if (e.tagClass == 2 && e.number == vNumber)
            return e.value;
    return std::nullopt;
}

qint64 Fields::IntegerOr(quint32 vNumber, qint64 vDefault) const
{
    const std::optional<QByteArrayView> v = Get(vNumber);
    return v ? Integer(*v) : vDefault;
}

quint32 CheckValue(QByteArrayView vBytes)
{
    quint32 check = 0;
    const qsizetype whole = vBytes.size() / 4 * 4;
    for (qsizetype i = 0; i < whole; i += 4)
        check ^= quint32(Byte(vBytes, i)) | quint32(Byte(vBytes, i + 1)) << 8
            | quint32(Byte(vBytes, i + 2)) << 16 | quint32(Byte(vBytes, i + 3)) << 24;
    return check;
}

} // namespace xdw
