#include "engine/write/Emit.h"

#include "support/Cp932.h"

#include <algorithm>

namespace xdw::emit {

QByteArray Length(qint64 vLength)
{
    if (vLength < 0x80)
        return QByteArray(1, static_cast<char>(vLength));
    QByteArray digits;
    for (qint64 v = vLength; v > 0; v >>= 8)
        digits.prepend(static_cast<char>(v & 0xFF));
    // The vendor's writer never uses one length byte for 0xFF itself.
    if (vLength == 0xFF)
        digits.prepend('\0');
    return QByteArray(1, static_cast<char>(0x80 | digits.size())) + digits;
}

QByteArray Tlv(quint8 vTag, QByteArrayView vValue)
{
    return QByteArray(1, static_cast<char>(vTag)) + Length(vValue.size()) + vValue.toByteArray();
}

QByteArray Tagged(quint32 vNumber, QByteArrayView vValue, quint8 vClassBits)
{
    if (vNumber < 31)
        return Tlv(static_cast<quint8>(vClassBits | vNumber), vValue);
    QByteArray tag(1, static_cast<char>(vClassBits | 0x1F));
    QByteArray digits(1, static_cast<char>(vNumber & 0x7F));
    for (quint32 v = vNumber >> 7; v > 0; v >>= 7)
        digits.prepend(static_cast<char>(0x80 | (v & 0x7F)));
    return tag + digits + Length(vValue.size()) + vValue.toByteArray();
}

QByteArray Int(qint64 vValue)
{
    QByteArray out;
    qint64 v = vValue;
    do {
        out.prepend(static_cast<char>(v & 0xFF));
        v >>= 8;
    } while (!((v == 0 && !(out[0] & 0x80)) || (v == -1 && (out[0] & 0x80))));
    return out;
}

QByteArray Item(QByteArrayView vBytes)
{
    return QByteArray(1, static_cast<char>(vBytes.size())) + vBytes.toByteArray();
}

QByteArray Numbers(const std::vector<qint64>& vValues)
{
    QByteArray out;
    for (qint64 v : vValues)
        out += Item(Int(v));
    return out;
}

QByteArray Numbers(std::initializer_list<qint64> vValues)
{
    return Numbers(std::vector<qint64>(vValues));
}

QByteArray NarrowText(const QString& vText)
{
    return Cp932::Encode(vText) + '\0';
}

QByteArray WideText(const QString& vText)
{
    QByteArray out;
    for (QChar c : vText) {
        out.append(static_cast<char>(c.unicode() & 0xFF));
        out.append(static_cast<char>(c.unicode() >> 8));
    }
    return out + QByteArray(2, '\0');
}

QByteArray Le32(quint32 vValue)
{
    QByteArray out;
    for (int i = 0; i < 4; ++i)
        out.append(static_cast<char>((vValue >> (8 * i)) & 0xFF));
    return out;
}

QByteArray Be32(quint32 vValue)
{
    QByteArray out = Le32(vValue);
    std::reverse(out.begin(), out.end());
    return out;
}

} // namespace xdw::emit
