#include "engine/Drawing.h"

#include "engine/FormatError.h"
#include "engine/Lh5.h"
#include "engine/Tlv.h"

namespace xdw {

namespace {

constexpr quint32 FieldKind = 0;
constexpr quint32 FieldExpanded = 1;
constexpr quint32 FieldData = 6;
constexpr quint32 FieldCompressed = 10;
constexpr qsizetype DibSubHeader = 16;   // method, stored size, expanded size, rows
constexpr quint32 DibHeaderSize = 40;

quint32 Le32(QByteArrayView vBytes, qsizetype vAt)
{
    quint32 v = 0;
    for (int i = 3; i >= 0; --i)
        v = (v << 8) | static_cast<quint8>(vBytes[vAt + i]);
    return v;
}

bool StartsWith(QByteArrayView vBytes, qsizetype vAt, QByteArrayView vMagic)
{
    return vBytes.size() >= vAt + vMagic.size() && vBytes.sliced(vAt, vMagic.size()) == vMagic;
}

void RequireMagic(const Drawing& vDrawing)
{
    const QByteArray& d = vDrawing.data;
    bool ok = false;
    switch (vDrawing.kind) {
    case DrawingKind::Emf:
        ok = d.size() >= 44 && Le32(d, 0) == 1 && StartsWith(d, 40, " EMF");
        break;
    case DrawingKind::Wmf:
        ok = StartsWith(d, 0, QByteArrayView("\x01\x00\x09\x00\x00\x03", 6))
            || StartsWith(d, 0, "\xD7\xCD\xC6\x9A");
        break;
    case DrawingKind::Jpeg:
        ok = StartsWith(d, 0, "\xFF\xD8\xFF");
        break;
    case DrawingKind::Dib:
        ok = vDrawing.dibInfo.size() >= DibHeaderSize && Le32(vDrawing.dibInfo, 0) == DibHeaderSize;
        break;
    }
    if (!ok)
        Refuse(QStringLiteral("drawing data does not match its kind"));
}

} // namespace

int KindOf(QByteArrayView vFields)
{
    if (vFields.isEmpty())
        return 0;
    return static_cast<int>(Fields(vFields).IntegerOr(FieldKind, 0));
}

Drawing ReadDrawing(QByteArrayView vFields)
{
    const Fields fields(vFields);
    const qint64 kind = fields.IntegerOr(FieldKind, -1);
    if (kind != 1 && kind != 4 && kind != 5 && kind != 7)
        RefuseNewer(QStringLiteral("unsupported page image (drawing kind %1)").arg(kind));
    const std::optional<QByteArrayView> data = fields.Get(FieldData);
    if (!data)
        Refuse(QStringLiteral("drawing without data"));
    const qint64 expanded = fields.IntegerOr(FieldExpanded, data->size());
    if (expanded < 0)
        Refuse(QStringLiteral("negative drawing size"));

    Drawing drawing;
    drawing.kind = static_cast<DrawingKind>(kind);
    if (drawing.kind == DrawingKind::Dib) {
        // The BITMAPINFO comes as is, then a sub-header and the compressed pixel rows.
        if (expanded + DibSubHeader > data->size())
            Refuse(QStringLiteral("picture shorter than its header"));
        const qsizetype infoSize = static_cast<qsizetype>(expanded);
        drawing.dibInfo = data->first(infoSize).toByteArray();
        const QByteArrayView rest = data->sliced(infoSize);
        const quint32 method = Le32(rest, 0);
        const qint64 stored = Le32(rest, 4);
        const qint64 bitsSize = Le32(rest, 8);
        if (stored > rest.size() - DibSubHeader)
            Refuse(QStringLiteral("picture bits run past their drawing"));
        const QByteArrayView bits = rest.sliced(DibSubHeader, static_cast<qsizetype>(stored));
        if (method == 1)
            drawing.data = lh5::Expand(bits, bitsSize);
        else if (method == 0)
            drawing.data = bits.toByteArray();
        else
            RefuseNewer(QStringLiteral("picture packed by method %1").arg(method));
    } else {
        const bool compressed = fields.IntegerOr(FieldCompressed, 0) == 1 || expanded > data->size();
        drawing.data = compressed ? lh5::Expand(*data, expanded) : data->toByteArray();
    }
    RequireMagic(drawing);
    return drawing;
}

} // namespace xdw
