#include "engine/Container.h"

#include "engine/FormatError.h"
#include "engine/Lh5.h"
#include "engine/Tlv.h"

#include <algorithm>
#include <cstring>

namespace xdw {

namespace {

constexpr qsizetype HeaderSize = 16;
constexpr qint64 MaxTrailer = 16LL * 1024 * 1024;
constexpr qint64 MaxProperties = 64LL * 1024 * 1024;
constexpr qint64 MaxEntries = 1000000;
constexpr quint8 TagTrailerOld = 0x65;
constexpr quint8 TagTrailerNew = 0x68;
constexpr quint8 TagPropertiesPacked = 0x63;
constexpr quint8 TagPropertiesPlain = 0x62;
constexpr quint8 TagEntry = 0x64;

quint8 At(const QByteArray& vBytes, qsizetype vOffset)
{
    return static_cast<quint8>(vBytes[vOffset]);
}

quint32 LittleEndian32(const QByteArray& vBytes, qsizetype vOffset)
{
    return quint32(At(vBytes, vOffset)) | quint32(At(vBytes, vOffset + 1)) << 8
        | quint32(At(vBytes, vOffset + 2)) << 16 | quint32(At(vBytes, vOffset + 3)) << 24;
}

// The start of the element whose one-byte tag is one of vTags and whose value is exactly
// [vValueStart, +vLength). Found from the value backwards, since only the value's end is known;
// every length form is tried, as one writer spells some short lengths in the long form.
qsizetype ElementBefore(const QByteArray& vFile, qsizetype vValueStart, qint64 vLength,
                        std::initializer_list<quint8> vTags, const char* vWhat)
{
    for (qsizetype header = 2; header <= 5; ++header) {
        const qsizetype start = vValueStart - header;
        if (start < HeaderSize)
            break;
        if (std::find(vTags.begin(), vTags.end(), At(vFile, start)) == vTags.end())
            continue;
        const QByteArrayView run = QByteArrayView(vFile).sliced(start, vValueStart + vLength - start);
        try {
            const Element e = TlvReader(run).Next();
            if (e.end == run.size() && e.value.size() == vLength)
                return start;
        } catch (const FormatError&) {
        }
    }
    Refuse(QStringLiteral("no %1 element before its value").arg(QLatin1StringView(vWhat)));
}

} // namespace

Container::Container(QByteArray vFile) : file_(std::move(vFile))
{
    ReadHeader();
    ReadTrailer();
}

void Container::ReadHeader()
{
    static const char legacy[] = "%XDW-1.0";
    if (file_.size() >= 8 && std::memcmp(file_.constData(), legacy, 8) == 0)
        RefuseNewer(QStringLiteral("unsupported old format"));
    if (file_.size() < HeaderSize + 8)
        Refuse(QStringLiteral("file too short for a document"));
    // The header is a fixed run of bytes apart from the generation and the root kind.
    static const quint8 expected[HeaderSize] = {0x60, 0x0E, 0x82, 0x01, 0x00, 0x80, 0x03, 0x00,
                                                0xC0, 0x00, 0x83, 0x04, 0x01, 0x0D, 0x0A, 0x01};
    for (qsizetype i = 0; i < HeaderSize; ++i)
        if (i != 4 && i != 9 && At(file_, i) != expected[i])
            Refuse(QStringLiteral("not a DocuWorks header"));
    generation_ = At(file_, 4);
    rootKind_ = 0xC000 | At(file_, 9);
    if (rootKind_ != KindDocument && rootKind_ != KindBinder)
        Refuse(QStringLiteral("unknown root kind %1").arg(rootKind_, 4, 16, QLatin1Char('0')));
}

void Container::ReadTrailer()
{
    const qsizetype size = file_.size();
    if (At(file_, size - 6) != 0x86 || At(file_, size - 5) != 0x04)
        Refuse(QStringLiteral("no trailer at the end"));
    const qint64 length = LittleEndian32(file_, size - 4);
    if (length < 8 || length > MaxTrailer || length > size - HeaderSize)
        Refuse(QStringLiteral("trailer length %1 out of range").arg(length));
    const qsizetype valueStart = size - static_cast<qsizetype>(length);
    const qsizetype trailerStart =
        ElementBefore(file_, valueStart, length, {TagTrailerOld, TagTrailerNew}, "trailer");

    const Fields fields(QByteArrayView(file_).sliced(valueStart));
    if (fields.All().empty() || fields.All().back().number != 6)
        Refuse(QStringLiteral("trailer does not end in its length"));
    const qint64 expanded = fields.IntegerOr(3, -1);
    const std::optional<QByteArrayView> storedField = fields.Get(4);
    const std::optional<QByteArrayView> checkField = fields.Get(5);
    if (!storedField || !checkField || expanded < 0 || expanded > MaxProperties)
        Refuse(QStringLiteral("trailer lacks the properties block"));
    const qint64 stored = Count(*storedField);

    // The properties block ends where the trailer starts.
    propertiesStart_ = trailerStart - static_cast<qsizetype>(stored);
    if (stored > trailerStart || propertiesStart_ <= HeaderSize)
        Refuse(QStringLiteral("properties block out of the file"));
    const quint8 tag = At(file_, ElementBefore(file_, propertiesStart_, stored,
                                               {TagPropertiesPacked, TagPropertiesPlain},
                                               "properties block"));
    const QByteArrayView block = QByteArrayView(file_).sliced(propertiesStart_, stored);
    stored_ = block;
    if (tag == TagPropertiesPlain) {
        // Stored as is, and its check value is not kept.
        if (stored != expanded)
            Refuse(QStringLiteral("plain properties block of the wrong size"));
        properties_ = block.toByteArray();
    } else {
        if (checkField->size() > 8 || CheckValue(block) != static_cast<quint32>(Integer(*checkField)))
            Refuse(QStringLiteral("check value of the properties block is wrong"));
        try {
            properties_ = lh5::Expand(block, expanded);
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
        const QByteArray bytes = table->toByteArray();
        for (qint64 i = 0; i < count; ++i) {
            const qint64 offset = LittleEndian32(bytes, static_cast<qsizetype>(i * 4));
            if (offset < HeaderSize || offset >= propertiesStart_)
                Refuse(QStringLiteral("entry %1 outside the file").arg(i));
            entryOffsets_.push_back(static_cast<qsizetype>(offset));
            (void)EntryBody(i);   // an offset must point at an entry that fits, checked once here
        }
    }
}

QByteArrayView Container::EntryBody(qint64 vIndex) const
{
    if (vIndex < 0 || vIndex >= EntryCount())
        Refuse(QStringLiteral("reference to entry %1 of %2").arg(vIndex).arg(EntryCount()));
    const qsizetype offset = entryOffsets_[static_cast<size_t>(vIndex)];
    const QByteArrayView rest = QByteArrayView(file_).sliced(offset, propertiesStart_ - offset);
    const Element entry = TlvReader(rest).Next();
    if (static_cast<quint8>(rest[0]) != TagEntry)
        Refuse(QStringLiteral("entry %1 is not an entry").arg(vIndex));
    const Fields fields(entry.value);
    const std::optional<QByteArrayView> body = fields.Get(2);
    if (!body)
        Refuse(QStringLiteral("entry %1 has no body").arg(vIndex));
    return *body;
}

} // namespace xdw
