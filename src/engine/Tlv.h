#pragma once
// The tag-length-value elements every layer of the file is made of: container, trailer, entries,
// records and drawing bodies. Every read is bounded by the bytes it was given, so a length that
// claims more than its parent holds is refused instead of followed; nothing here recurses.

#include <QByteArrayView>
#include <QtGlobal>

#include <optional>
#include <vector>

namespace xdw {

struct Element {
    quint8 tagClass = 0;      // 0 universal, 1 application, 2 context, 3 private
    bool constructed = false;
    quint32 number = 0;
    QByteArrayView value;
    qsizetype start = 0;      // offset of the tag byte within the walked bytes
    qsizetype end = 0;        // one past the value
};

// Walks the elements of one level, one after another.
class TlvReader {
public:
    explicit TlvReader(QByteArrayView vBytes) : bytes_(vBytes) {}
    bool AtEnd() const { return pos_ >= bytes_.size(); }
    qsizetype Position() const { return pos_; }
    // The next element; refuses the file when it does not fit.
    Element Next();

private:
    QByteArrayView bytes_;
    qsizetype pos_ = 0;
};

// Parses one element that must fill vBytes exactly.
Element ParseWhole(QByteArrayView vBytes);

// A field's integer: big-endian two's complement, 1 to 8 bytes.
qint64 Integer(QByteArrayView vValue);
// Same, refusing negatives: sizes, counts and offsets.
qint64 Count(QByteArrayView vValue);
// A number list: items of (length byte, big-endian two's complement bytes).
std::vector<qint64> NumberList(QByteArrayView vValue);
// The items of a list as raw byte runs (names in declarations are such items).
std::vector<QByteArrayView> Items(QByteArrayView vValue);

// The fields of a field list by context number, each first occurrence; unknown ones are kept
// too, so callers look up only what they need.
class Fields {
public:
    explicit Fields(QByteArrayView vBytes);
    std::optional<QByteArrayView> Get(quint32 vNumber) const;
    qint64 IntegerOr(quint32 vNumber, qint64 vDefault) const;
    const std::vector<Element>& All() const { return elements_; }

private:
    std::vector<Element> elements_;
};

// XOR of every complete little-endian 32-bit group; the trailer and entries keep this.
quint32 CheckValue(QByteArrayView vBytes);

} // namespace xdw
