#include "engine/Container.h"

#include "engine/FormatError.h"
#include "engine/Lh5.h"
#include "engine/Tlv.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace xdw {

namespace {

constexpr qint64 HeaderSize = 16;
constexpr qint64 MaxTrailer = 16LL * 1024 * 1024;
constexpr qint64 MaxProperties = 64LL * 1024 * 1024;
// A stored block may come out a little larger than its expansion, never by much.
constexpr qint64 MaxStoredProperties = MaxProperties + 1024 * 1024;
constexpr qint64 MaxEntries = 1000000;
constexpr qint64 MaxElementHeader = 6;   // tag, then 84 and four length bytes
constexpr quint8 TagTrailerOld = 0x65;
constexpr quint8 TagTrailerNew = 0x68;
constexpr quint8 TagPropertiesPacked = 0x63;
constexpr quint8 TagPropertiesPlain = 0x62;
constexpr quint8 TagEntry = 0x64;

quint8 At(QByteArrayView vBytes, qsizetype vOffset)
{
    return static_cast<quint8>(vBytes[vOffset]);
}

quint32 LittleEndian32(QByteArrayView vBytes, qsizetype vOffset)
{
    return quint32(At(vBytes, vOffset)) | quint32(At(vBytes, vOffset + 1)) << 8
        | quint32(At(vBytes, vOffset + 2)) << 16 | quint32(At(vBytes, vOffset + 3)) << 24;
}

// The value length an element header spells (tag byte first), or -1 when it is not one.
qint64 HeaderLength(QByteArrayView vHeader, qsizetype* vHeaderSize)
{
    if (vHeader.size() < 2)
        return -1;
    const quint8 first = At(vHeader, 1);
    if (first < 0x80) {
        *vHeaderSize = 2;
        return first;
    }
    const int n = first & 0x7F;
    if (n < 1 || n > 4 || vHeader.size() < 2 + n)
        return -1;
    qint64 length = 0;
    for (int i = 0; i < n; ++i)
        length = (length << 8) | At(vHeader, 2 + i);
    *vHeaderSize = 2 + n;
    return length;
}

class MemoryReader final : public ByteSource {
public:
    explicit MemoryReader(QByteArray v) : bytes_(std::move(v)) {}
    qint64 Size() const override { return bytes_.size(); }
    QByteArray Read(qint64 vOffset, qint64 vLength) const override
    {
        if (vOffset < 0 || vLength < 0 || vOffset > bytes_.size() || vLength > bytes_.size() - vOffset)
            Refuse(QStringLiteral("read beyond the end of the file"));
        return bytes_.sliced(static_cast<qsizetype>(vOffset), static_cast<qsizetype>(vLength));
    }

private:
    QByteArray bytes_;
};

class FileReader final : public ByteSource {
public:
    FileReader(int vFd, qint64 vSize) : fd_(vFd), size_(vSize) {}
    ~FileReader() override { ::close(fd_); }
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;
    qint64 Size() const override { return size_; }
    QByteArray Read(qint64 vOffset, qint64 vLength) const override
    {
        if (vOffset < 0 || vLength < 0 || vOffset > size_ || vLength > size_ - vOffset)
            Refuse(QStringLiteral("read beyond the end of the file"));
        QByteArray out(static_cast<qsizetype>(vLength), Qt::Uninitialized);
        qint64 done = 0;
        while (done < vLength) {
            const ssize_t n = ::pread(fd_, out.data() + done, static_cast<size_t>(vLength - done),
                                      static_cast<off_t>(vOffset + done));
            if (n < 0 && errno == EINTR)
                continue;
            // A file cut short under us since it was opened reads as a damaged one.
            if (n <= 0)
                Refuse(QStringLiteral("file ends while it is read"));
            done += n;
        }
        return out;
    }

private:
    int fd_;
    qint64 size_;
};

} // namespace

std::unique_ptr<ByteSource> FileSource(int vFd, qint64 vSize)
{
    return std::make_unique<FileReader>(vFd, vSize);
}

std::unique_ptr<ByteSource> MemorySource(QByteArray vBytes)
{
    return std::make_unique<MemoryReader>(std::move(vBytes));
}

Container::Container(std::unique_ptr<ByteSource> vSource) : source_(std::move(vSource))
{
    ReadHeader();
    ReadTrailer();
}

void Container::ReadHeader()
{
    const qint64 size = source_->Size();
    if (size >= 8 && source_->Read(0, 8) == "%XDW-1.0")
        RefuseNewer(QStringLiteral("unsupported old format"));
    if (size < HeaderSize + 8)
        Refuse(QStringLiteral("file too short for a document"));
    // The header is a fixed run of bytes apart from the generation and the root kind.
    static const quint8 expected[HeaderSize] = {0x60, 0x0E, 0x82, 0x01, 0x00, 0x80, 0x03, 0x00,
                                                0xC0, 0x00, 0x83, 0x04, 0x01, 0x0D, 0x0A, 0x01};
    const QByteArray header = source_->Read(0, HeaderSize);
    for (qsizetype i = 0; i < HeaderSize; ++i)
        if (i != 4 && i != 9 && At(header, i) != expected[i])
            Refuse(QStringLiteral("not a DocuWorks header"));
    generation_ = At(header, 4);
    rootKind_ = 0xC000 | At(header, 9);
    if (rootKind_ != KindDocument && rootKind_ != KindBinder)
        Refuse(QStringLiteral("unknown root kind %1").arg(rootKind_, 4, 16, QLatin1Char('0')));
}

// The start of the element whose one-byte tag is one of vTags and whose value is exactly
// [vValueStart, +vLength). Found from the value backwards, since only the value's end is known;
// every length form is tried, as one writer spells some short lengths in the long form.
qsizetype Container::ElementBefore(qint64 vValueStart, qint64 vLength,
                                   std::initializer_list<quint8> vTags, const char* vWhat) const
{
    for (qint64 header = 2; header <= MaxElementHeader - 1; ++header) {
        const qint64 start = vValueStart - header;
        if (start < HeaderSize)
            break;
        const QByteArray bytes = source_->Read(start, header);
        if (std::find(vTags.begin(), vTags.end(), At(bytes, 0)) == vTags.end())
            continue;
        qsizetype headerSize = 0;
        if (HeaderLength(bytes, &headerSize) == vLength && headerSize == header)
            return static_cast<qsizetype>(start);
    }
    Refuse(QStringLiteral("no %1 element before its value").arg(QLatin1StringView(vWhat)));
}

void Container::ReadTrailer()
{
    const qint64 size = source_->Size();
    const QByteArray tail = source_->Read(size - 6, 6);
    if (At(tail, 0) != 0x86 || At(tail, 1) != 0x04)
        Refuse(QStringLiteral("no trailer at the end"));
    const qint64 length = LittleEndian32(tail, 2);
    if (length < 8 || length > MaxTrailer || length > size - HeaderSize)
        Refuse(QStringLiteral("trailer length %1 out of range").arg(length));
    const qint64 valueStart = size - length;
    const qint64 trailerStart = ElementBefore(valueStart, length, {TagTrailerOld, TagTrailerNew}, "trailer");

    const QByteArray trailer = source_->Read(valueStart, length);
    const Fields fields(trailer);
    if (fields.All().empty() || fields.All().back().number != 6)
        Refuse(QStringLiteral("trailer does not end in its length"));
    const qint64 expanded = fields.IntegerOr(3, -1);
    const std::optional<QByteArrayView> storedField = fields.Get(4);
    const std::optional<QByteArrayView> checkField = fields.Get(5);
    if (!storedField || !checkField || expanded < 0 || expanded > MaxProperties)
        Refuse(QStringLiteral("trailer lacks the properties block"));
    const qint64 stored = Count(*storedField);

    // The properties block ends where the trailer starts.
    propertiesStart_ = trailerStart - stored;
    if (stored > MaxStoredProperties || propertiesStart_ <= HeaderSize)
        Refuse(QStringLiteral("properties block out of the file"));
    stateStart_ = ElementBefore(propertiesStart_, stored, {TagPropertiesPacked, TagPropertiesPlain},
                                "properties block");
    superseded_ = qMax<qint64>(0, fields.IntegerOr(2, 0));
    const quint8 tag = At(source_->Read(stateStart_, 1), 0);
    stored_ = source_->Read(propertiesStart_, stored);
    if (tag == TagPropertiesPlain) {
        // Stored as is, and its check value is not kept.
        if (stored != expanded)
            Refuse(QStringLiteral("plain properties block of the wrong size"));
        properties_ = stored_;
    } else {
        if (checkField->size() > 8 || CheckValue(stored_) != static_cast<quint32>(Integer(*checkField)))
            Refuse(QStringLiteral("check value of the properties block is wrong"));
        try {
            properties_ = lh5::Expand(stored_, expanded);
        } catch (const FormatError& e) {
            // The check matched, so the bytes are what was written: a block we cannot expand is
            // the sign of a protected document, not of damage.
            RefuseNewer(QStringLiteral("protected or unsupported: ") + e.reason);
        }
    }

    const qint64 count = fields.IntegerOr(0, 0);
    if (count < 0 || count > MaxEntries)
        Refuse(QStringLiteral("entry count %1 out of range").arg(count));
    if (count > 0) {
        const std::optional<QByteArrayView> table = fields.Get(1);
        if (!table || table->size() != count * 4)
            Refuse(QStringLiteral("entry table does not match its count"));
        for (qint64 i = 0; i < count; ++i) {
            const qint64 offset = LittleEndian32(*table, static_cast<qsizetype>(i * 4));
            if (offset < HeaderSize || offset >= propertiesStart_)
                Refuse(QStringLiteral("entry %1 outside the file").arg(i));
            (void)EntryValue(offset);   // an entry that fits, checked by its header alone
            entryOffsets_.push_back(offset);
        }
    }
}

std::pair<qint64, qint64> Container::EntryValue(qint64 vOffset) const
{
    const QByteArray header = source_->Read(vOffset, qMin(MaxElementHeader, propertiesStart_ - vOffset));
    qsizetype headerSize = 0;
    const qint64 length = HeaderLength(header, &headerSize);
    if (At(header, 0) != TagEntry || length < 0 || length > propertiesStart_ - vOffset - headerSize)
        Refuse(QStringLiteral("no entry at offset %1").arg(vOffset));
    return {vOffset + headerSize, length};
}

QByteArrayView Container::EntryBody(qint64 vIndex) const
{
    if (vIndex < 0 || vIndex >= EntryCount())
        Refuse(QStringLiteral("reference to entry %1 of %2").arg(vIndex).arg(EntryCount()));
    const auto cached = entryBodies_.find(vIndex);
    if (cached != entryBodies_.end())
        return cached->second;
    const auto [start, length] = EntryValue(entryOffsets_[static_cast<size_t>(vIndex)]);
    const QByteArray entry = source_->Read(start, length);
    const std::optional<QByteArrayView> body = Fields(entry).Get(2);
    if (!body)
        Refuse(QStringLiteral("entry %1 has no body").arg(vIndex));
    return entryBodies_.emplace(vIndex, body->toByteArray()).first->second;
}

} // namespace xdw
