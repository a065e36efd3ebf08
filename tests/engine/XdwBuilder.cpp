#include "engine/XdwBuilder.h"

#include "engine/Tlv.h"
#include "engine/write/Emit.h"
#include "engine/write/Lh5Literal.h"
#include "support/Cp932.h"

#include <QBuffer>


namespace xdwtest {

using xdw::emit::Be32;
using xdw::emit::Item;
using xdw::emit::Le32;

namespace {

// Declares named attributes of one record: (number, type, index, name length, name).
QByteArray Declare(std::initializer_list<std::pair<quint32, const char*>> vNames)
{
    QByteArray list;
    for (const auto& [number, name] : vNames) {
        const QByteArray n = QByteArray(name) + '\0';
        list += Item(Int(number)) + Item(Int(2)) + Item(Int(-1)) + Item(Int(n.size())) + Item(n);
    }
    return LongTlv(51, list);
}

} // namespace

QByteArray Tlv(quint8 vTag, const QByteArray& vValue)
{
    return xdw::emit::Tlv(vTag, vValue);
}

QByteArray LongTlv(quint32 vNumber, const QByteArray& vValue, quint8 vClassBits)
{
    return xdw::emit::Tagged(vNumber, vValue, vClassBits);
}

QByteArray Record(int vDepth, quint32 vKind, const QByteArray& vAttributes)
{
    return Tlv(0x62, Tlv(0x80, Int(vDepth)) + Tlv(0x62, Int(vKind)) + vAttributes);
}

QByteArray Int(qint64 vValue)
{
    return xdw::emit::Int(vValue);
}

QByteArray Numbers(std::initializer_list<qint64> vValues)
{
    return xdw::emit::Numbers(vValues);
}

QByteArray Lh5Literal(const QByteArray& vData)
{
    return lh5::CompressLiteral(vData);
}

quint32 Check(const QByteArray& vBytes)
{
    return xdw::CheckValue(vBytes);
}

QByteArray DrawingFields(int vKind, const QByteArray& vData, qint64 vWidth, qint64 vHeight,
                         bool vCompress)
{
    QByteArray fields = Tlv(0x80, Int(vKind)) + Tlv(0x81, Int(vData.size())) + Tlv(0x84, Int(vWidth))
        + Tlv(0x85, Int(vHeight)) + Tlv(0x8D, Int(3));
    if (vCompress) {
        const QByteArray packed = Lh5Literal(vData);
        return fields + Tlv(0x8A, Int(1)) + Tlv(0x89, Int(packed.size())) + Tlv(0x86, packed);
    }
    return fields + Tlv(0x86, vData);
}

QByteArray Jpeg(const QImage& vImage)
{
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    vImage.save(&buffer, "JPEG", 95);
    return jpeg;
}

QByteArray JpegContent(const QImage& vImage, qint64 vWidth, qint64 vHeight)
{
    return DrawingFields(5, Jpeg(vImage), vWidth, vHeight, false);
}

QByteArray DocumentRecords(const std::vector<PageSpec>& vPages, int vBaseDepth,
                           std::vector<QByteArray>* vEntries)
{
    const int d = vBaseDepth;
    QByteArray out = Record(d, 0xC013, d > 0 ? Tlv(0x84, QByteArray("doc\0", 4)) : QByteArray());
    out += Record(d + 1, 0x1303, {});
    int id = 1;
    for (const PageSpec& page : vPages) {
        out += Record(d + 2, 0x1301, Tlv(0x85, Numbers({page.width, page.height})) + Tlv(0x83, Numbers({id++})));
        if (!page.content.isEmpty()) {
            out += Record(d + 3, 0x1302, LongTlv(52, Numbers({0, 0})));
            QByteArray drawing = Tlv(0x87, page.content);
            if (vEntries) {
                drawing = Tlv(0xC7, Tlv(0x81, Int(static_cast<qint64>(vEntries->size())))
                                        + Tlv(0x82, Int(page.content.size())));
                vEntries->push_back(page.content);
            }
            out += Record(d + 4, 0x8010, Tlv(0x85, Numbers({page.width, page.height}))
                                             + LongTlv(2001, Numbers({600})) + drawing
                                             + Declare({{2001, "dpi"}}));
        }
        for (const Annotation& a : page.annotations) {
            out += Record(d + 3, 0x1302, LongTlv(52, Numbers({a.x, a.y})) + LongTlv(2001, Numbers({a.width, a.height}))
                                             + Declare({{2001, "childdim"}}));
            QByteArray attrs = Tlv(0x85, Numbers({a.width, a.height}));
            if (!a.drawing.isEmpty())
                attrs += Tlv(0x87, a.drawing);
            if (a.rotation != 0)
                attrs += LongTlv(61, Numbers({a.rotation}));
            if (!a.text.isEmpty())
                attrs += LongTlv(2002, Cp932::Encode(a.text) + '\0') + Declare({{2002, "%Text"}});
            out += Record(d + 4, a.kind, attrs);
        }
    }
    out += Record(d + 1, 0x1304, {}) + Record(d + 1, 0x1306, {}) + Record(d + 1, 0x1305, {});
    return out;
}

QByteArray BinderRecords(const std::vector<std::vector<PageSpec>>& vDocuments)
{
    QByteArray out = Record(0, 0xC014, {}) + Record(1, 0x1401, {});
    for (const std::vector<PageSpec>& pages : vDocuments)
        out += Record(2, 0x1402, {}) + DocumentRecords(pages, 3);
    return out;
}

QByteArray File(const QByteArray& vRecords, const FileOptions& vOptions)
{
    QByteArray file = QByteArray::fromHex("600E820107800300C013830401 0D0A01");
    file[4] = static_cast<char>(vOptions.generation);
    file[9] = static_cast<char>(vOptions.rootKind & 0xFF);
    QByteArray segment;
    QByteArray offsets;
    const qsizetype segmentHeader = 6;   // 61 84 and four length bytes
    for (const QByteArray& body : vOptions.entries) {
        offsets += Le32(static_cast<quint32>(16 + segmentHeader + segment.size()));
        segment += Tlv(0x64, Tlv(0x81, Int(Check(body))) + Tlv(0x82, body));
    }
    const QByteArray stored = vOptions.compress ? Lh5Literal(vRecords) : vRecords;
    segment += Tlv(vOptions.compress ? 0x63 : 0x62, stored);
    quint32 check = vOptions.compress ? Check(stored) : 0;
    if (vOptions.breakCheck)
        check ^= 1;
    QByteArray trailer = Tlv(0x80, Int(static_cast<qint64>(vOptions.entries.size())));
    if (!vOptions.entries.empty())
        trailer += Tlv(0x81, offsets);
    trailer += Tlv(0x82, Int(0)) + Tlv(0x83, Int(vRecords.size())) + Tlv(0x84, Int(stored.size()))
        + Tlv(0x85, Be32(check));
    const qint64 trailerLength = trailer.size() + 6;
    trailer += Tlv(0x86, Le32(static_cast<quint32>(trailerLength)));
    segment += Tlv(vOptions.generation >= 10 ? 0x68 : 0x65, trailer);
    // The segment header in its four-byte length form, so that entry offsets are known ahead.
    QByteArray header(1, 0x61);
    header += char(0x84) + Be32(static_cast<quint32>(segment.size()));
    return file + header + segment;
}

FileOptions Options(int vGeneration, bool vCompress, quint32 vRootKind, bool vBreakCheck)
{
    FileOptions options;
    options.generation = vGeneration;
    options.compress = vCompress;
    options.rootKind = vRootKind;
    options.breakCheck = vBreakCheck;
    return options;
}

QByteArray Document(const std::vector<PageSpec>& vPages, const FileOptions& vOptions)
{
    if (!vOptions.contentInEntries)
        return File(DocumentRecords(vPages), vOptions);
    FileOptions options = vOptions;
    const QByteArray records = DocumentRecords(vPages, 0, &options.entries);
    return File(records, options);
}

} // namespace xdwtest
