#pragma once
// The file as saved: a header, then one segment per save, each ending in a trailer. Only the last
// trailer counts, and it is found from the end of the file rather than by walking segments,
// because a segment's own length is not to be trusted. The properties block it points at is
// checked and expanded here. Entries (page drawings among them) are read when asked for, so that
// opening a long scanned document reads its header, trailer and records, not its pictures.

#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>

#include <map>
#include <memory>
#include <vector>

namespace xdw {

inline constexpr quint32 KindDocument = 0xC013;
inline constexpr quint32 KindBinder = 0xC014;

// Where the bytes come from: the whole file in memory, or an open file read piece by piece.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual qint64 Size() const = 0;
    // Exactly vLength bytes at vOffset; refuses the file when they cannot be had.
    virtual QByteArray Read(qint64 vOffset, qint64 vLength) const = 0;
};

// Takes over an open descriptor and closes it at the end.
std::unique_ptr<ByteSource> FileSource(int vFd, qint64 vSize);
std::unique_ptr<ByteSource> MemorySource(QByteArray vBytes);

class Container {
public:
    // Refuses the file (FormatError) when anything does not fit.
    explicit Container(std::unique_ptr<ByteSource> vSource);
    explicit Container(QByteArray vFile) : Container(MemorySource(std::move(vFile))) {}
    // Views handed out point into this object, so it is never copied.
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    int Generation() const { return generation_; }
    quint32 RootKind() const { return rootKind_; }
    // The expanded properties block: the record list.
    const QByteArray& Properties() const { return properties_; }
    // The properties block as stored (compressed or not), for diagnostics and tests.
    QByteArrayView StoredProperties() const { return stored_; }
    qsizetype EntryCount() const { return static_cast<qsizetype>(entryOffsets_.size()); }
    // The body of entry vIndex (counted from 0), read once and kept while the container lives.
    // A wrong entry check is not a reason to refuse: the body is what the file holds.
    QByteArrayView EntryBody(qint64 vIndex) const;

    // What a save appending to this file needs: where each entry in effect sits, where the
    // current state (properties element, then the trailer to the end) begins, and how many
    // bytes earlier saves already left behind (trailer field 82).
    const std::vector<qint64>& EntryOffsets() const { return entryOffsets_; }
    qint64 StateStart() const { return stateStart_; }
    qint64 Superseded() const { return superseded_; }

private:
    void ReadHeader();
    void ReadTrailer();
    qsizetype ElementBefore(qint64 vValueStart, qint64 vLength, std::initializer_list<quint8> vTags,
                            const char* vWhat) const;
    // Offset and length of the value of the entry element at vOffset.
    std::pair<qint64, qint64> EntryValue(qint64 vOffset) const;

    std::unique_ptr<ByteSource> source_;
    int generation_ = 0;
    quint32 rootKind_ = 0;
    QByteArray properties_;
    QByteArray stored_;
    std::vector<qint64> entryOffsets_;
    qint64 propertiesStart_ = 0;
    qint64 stateStart_ = 0;
    qint64 superseded_ = 0;
    mutable std::map<qint64, QByteArray> entryBodies_;
};

} // namespace xdw
