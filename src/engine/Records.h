#pragma once
// The expanded properties block as records: one per object, in tree order, each with its depth,
// its kind and its attributes. The tree is rebuilt from the depths with a stack of the open
// ancestors, never by recursion, so a crafted nesting costs nothing but the limit check.

#include "engine/Tlv.h"

#include <QByteArrayView>
#include <QString>
#include <QtGlobal>

#include <vector>

namespace xdw {

class Container;

struct Attribute {
    quint8 tagClass = 0;   // 2 a value, 3 a reference to an entry
    bool constructed = false;
    quint32 number = 0;
    QByteArrayView value;
};

// Declared types of named attributes (numbers 2001 and up).
inline constexpr qint64 NamedNumbers = 2;    // a number list
inline constexpr qint64 NamedBytes = 4;      // bytes, texts among them
inline constexpr qint64 NamedSizePair = 107; // [w, h]

// One name a record declares for one of its attributes from 2001 up.
struct Declaration {
    quint32 number = 0;
    qint64 type = NamedNumbers;
    qint64 index = -1;
    QString name;
};

struct Record {
    int depth = 0;
    quint32 kind = 0;
    qsizetype parent = -1;   // index of the parent record, -1 for the root
    std::vector<Attribute> attributes;
    // Names of attributes 2001 and up, as this record declares them.
    std::vector<std::pair<quint32, QString>> names;

    const Attribute* Find(quint32 vNumber) const;
    const Attribute* Named(QStringView vName) const;
};

// The records of vProperties; references to entries (long declaration lists) go through
// vContainer. Refuses the file when a record or the tree does not fit.
std::vector<Record> ReadRecords(QByteArrayView vProperties, const Container& vContainer);

// A declaration list (attribute 51) as (number, type, index, name length, name) fives; refuses
// a list that is not in fives. A type or index that is no integer reads as the default.
std::vector<Declaration> DeclarationList(QByteArrayView vList);

// The value of an attribute, following a reference to an entry.
QByteArrayView ValueOf(const Attribute& vAttribute, const Container& vContainer);

// Text stored as cp932 ending in a zero byte, or as UTF-16LE ending in a zero unit.
QString NarrowText(QByteArrayView vValue);
QString WideText(QByteArrayView vValue);

} // namespace xdw
