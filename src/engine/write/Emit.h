#pragma once
// The writing side of the element layer: tags, lengths, integers, number lists and texts in the
// exact forms the vendor's writer uses, so that what we save reads like what it saves.

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QtGlobal>

#include <initializer_list>
#include <vector>

namespace xdw::emit {

// A length in the writer's form: one byte below 0x80, else 81 nn / 82 hh ll / ...
QByteArray Length(qint64 vLength);
// One element with a one-byte tag (numbers 0-30, or a whole tag byte such as 0x61).
QByteArray Tlv(quint8 vTag, QByteArrayView vValue);
// An element with any number: the one-byte form below 31, the 1F form above. vClassBits holds
// the class and constructed bits (0x80 context, 0xA0 context constructed, 0xC0 private).
QByteArray Tagged(quint32 vNumber, QByteArrayView vValue, quint8 vClassBits = 0x80);
// Shortest big-endian two's complement.
QByteArray Int(qint64 vValue);
// A number list: items of (length byte, Int).
QByteArray Numbers(const std::vector<qint64>& vValues);
QByteArray Numbers(std::initializer_list<qint64> vValues);
// A list item of raw bytes: (length byte, bytes); names in declarations are such items.
QByteArray Item(QByteArrayView vBytes);
// Texts as attributes hold them: cp932 ending in a zero byte, or UTF-16LE ending in a zero unit.
QByteArray NarrowText(const QString& vText);
QByteArray WideText(const QString& vText);
// Fixed-width little- and big-endian words, as trailers and entries hold them.
QByteArray Le32(quint32 vValue);
QByteArray Be32(quint32 vValue);

} // namespace xdw::emit
