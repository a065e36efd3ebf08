#pragma once
// The file as saved: a header, then one segment per save, each ending in a trailer. Only the last
// trailer counts, and it is found from the end of the file rather than by walking segments,
// because a segment's own length is not to be trusted. The properties block it points at is
// checked and expanded here; entries are resolved on demand, since a page drawing may live in one.

#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>

#include <vector>

namespace xdw {

inline constexpr quint32 KindDocument = 0xC013;
inline constexpr quint32 KindBinder = 0xC014;

class Container {
public:
    // Takes the whole file; refuses it (FormatError) when anything does not fit.
    explicit Container(QByteArray vFile);
    // The views below point into the file's bytes, so a container is never copied.
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    int Generation() const { return generation_; }
    quint32 RootKind() const { return rootKind_; }
    // The expanded properties block: the record list.
    const QByteArray& Properties() const { return properties_; }
    // The properties block as stored (compressed or not), for diagnostics and tests.
    QByteArrayView StoredProperties() const { return stored_; }
    qsizetype EntryCount() const { return static_cast<qsizetype>(entryOffsets_.size()); }
    // The body of entry vIndex (counted from 0), refused when it does not fit. A wrong entry
    // check is not a reason to refuse: the body is still what the file holds.
    QByteArrayView EntryBody(qint64 vIndex) const;

private:
    void ReadHeader();
    void ReadTrailer();

    QByteArray file_;
    int generation_ = 0;
    quint32 rootKind_ = 0;
    QByteArray properties_;
    std::vector<qsizetype> entryOffsets_;
    qsizetype propertiesStart_ = 0;
    QByteArrayView stored_;
};

} // namespace xdw
