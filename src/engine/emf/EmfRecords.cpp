#include "engine/emf/Records.h"

#include <cmath>

namespace emf {

namespace {

constexpr quint32 kSignature = 0x464D4520;   // " EMF"
constexpr qint64 kMaxRecords = 1'000'000;

QPointF Point(const Bytes& vRecord, qint64 vAt)
{
    return QPointF(vRecord.I32(vAt), vRecord.I32(vAt + 4));
}

QSizeF Size(const Bytes& vRecord, qint64 vAt)
{
    return QSizeF(vRecord.I32(vAt), vRecord.I32(vAt + 4));
}

QRectF Box(const Bytes& vRecord, qint64 vAt)
{
    return QRectF(Point(vRecord, vAt), Point(vRecord, vAt + 8));
}

std::optional<QTransform> Xform(const Bytes& vRecord, qint64 vAt)
{
    double m[6];
    for (int i = 0; i < 6; ++i) {
        m[i] = vRecord.F32(vAt + 4 * i);
        if (!std::isfinite(m[i]) || std::abs(m[i]) > 1e9)
            return std::nullopt;
    }
    return QTransform(m[0], m[1], m[2], m[3], m[4], m[5]);
}

// The clip region of a selection record: rectangles in device units.
std::optional<QPainterPath> Region(Gdi& vGdi, const Bytes& vRecord, qint64 vAt, qint64 vSize, bool* vBad)
{
    if (vSize == 0)
        return std::nullopt;
    const qint64 count = vRecord.U32(vAt + 8);
    if (vSize < 32 || !vRecord.Has(vAt, vSize) || count > (vSize - 32) / 16) {
        *vBad = true;
        return std::nullopt;
    }
    QPainterPath region;
    for (qint64 i = 0; i < count; ++i)
        region.addRect(Box(vRecord, vAt + 32 + 16 * i).normalized());
    return vGdi.DeviceToTarget().map(region);
}

Outcome CreateObject(Gdi& vGdi, quint32 vType, const Bytes& r, RecordContext& vContext)
{
    const quint32 index = r.U32(8);
    if (index == 0 || index >= vContext.handles)
        return Bad(vContext, "object index outside the handle table");
    Object object;
    switch (vType) {
    case 38:
        object = Pen{int(r.U32(12)), double(r.I32(16)), 0, ColourRef(r.U32(24))};
        break;
    case 39:
        object = Brush{int(r.U32(12)), int(r.U32(20)), ColourRef(r.U32(16)), {}};
        break;
    case 95: {
        const quint32 style = r.U32(28);
        const bool geometric = (style & 0xF0000) == 0x10000;
        Pen pen{int(style & 0x0F), geometric ? double(r.U32(32)) : 0.0, style & 0xFF00, ColourRef(r.U32(40))};
        if (r.U32(36) == 1)   // a pen painted with the hollow brush draws nothing
            pen.style = 5;
        object = pen;
        break;
    }
    case 82: {
        Font font;
        font.height = r.I32(12);
        font.escapement = r.I32(20);
        font.weight = r.I32(28);
        font.italic = r.U8(32), font.underline = r.U8(33), font.strikeOut = r.U8(34);
        font.charset = r.U8(35);
        for (int i = 0; i < 32 && r.Has(40 + 2 * i, 2); ++i) {
            const char16_t c = r.U16(40 + 2 * i);
            if (c == 0)
                break;
            font.face += QChar(c);
        }
        object = font;
        break;
    }
    case 93:
    case 94: {
        QImage pattern = RecordBitmap(r, r.U32(16), r.U32(20), r.U32(24), r.U32(28), vContext);
        if (!vContext.why.isEmpty())
            return Outcome::Bad;
        object = Brush{5, 0, Qt::black, pattern};
        break;
    }
    default:
        break;   // a palette: it only holds its slot
    }
    if (r.short_())
        return Bad(vContext, "object record shorter than its fields");
    vGdi.Store(index, std::move(object));
    return Outcome::Done;
}

} // namespace

std::optional<Frame> EmfFrame(const Bytes& vBytes, Mapping vMapping)
{
    const QRectF bounds(Point(vBytes, 8), Point(vBytes, 16) + QPointF(1, 1));
    const QRectF frame = Box(vBytes, 24);
    const QSizeF device = Size(vBytes, 72), mm = Size(vBytes, 80);
    if (vBytes.short_())
        return std::nullopt;
    const bool measured = device.width() > 0 && device.height() > 0 && mm.width() > 0 && mm.height() > 0;
    const double px = measured ? device.width() / mm.width() : 600 / 25.4;
    const double py = measured ? device.height() / mm.height() : px;
    Frame f;
    f.mapping = vMapping;
    f.pixelsPerMm = px;
    f.deviceBox = QRectF(QPointF(frame.left() * px / 100, frame.top() * py / 100),
                         QPointF(frame.right() * px / 100, frame.bottom() * py / 100));
    if (f.deviceBox.width() == 0 || f.deviceBox.height() == 0)
        f.deviceBox = bounds;
    f.fallbackWindow = f.deviceBox;
    return f;
}

PlayResult PlayEmf(Gdi& vGdi, const Bytes& vBytes)
{
    PlayResult result;
    RecordContext context;
    context.handles = vBytes.U16(56);
    vGdi.SetTableSize(int(context.handles));
    const qint64 end = qMin<qint64>(vBytes.U32(48), vBytes.size());
    qint64 at = 0;
    for (qint64 count = 0; at < end; ++count) {
        const quint32 type = vBytes.U32(at), size = vBytes.U32(at + 4);
        QString why;
        if (!vBytes.Has(at, 8) || at + 8 > end)
            why = QStringLiteral("cut short");
        else if (size < 8 || size % 4 != 0 || size > end - at)
            why = QStringLiteral("of size %1").arg(size);
        else if (count >= kMaxRecords)
            why = QStringLiteral("beyond the record limit");
        if (why.isEmpty()) {
            const Bytes record(vBytes.Slice(at, size));
            Outcome outcome = EmfStateRecord(vGdi, type, record, context);
            if (outcome == Outcome::Unknown)
                outcome = EmfDrawRecord(vGdi, type, record, context);
            if (outcome == Outcome::Unknown)
                ++result.unsupportedRecords;
            if (outcome == Outcome::Bad)
                why = QStringLiteral("(type %1): %2").arg(type).arg(context.why);
        }
        if (!why.isEmpty()) {
            result.ok = false;
            result.error = QStringLiteral("metafile record at byte %1 %2").arg(at).arg(why);
            break;
        }
        if (type == 14)
            break;
        at += size;
    }
    vGdi.unsupported = result.unsupportedRecords;
    return result;
}

Outcome EmfStateRecord(Gdi& vGdi, quint32 vType, const Bytes& r, RecordContext& vContext)
{
    DcState& dc = vGdi.Dc();
    switch (vType) {
    case 1: case 13: case 14: case 16: case 21: case 23: case 28: case 48: case 50: case 51:
    case 52: case 58: case 65: case 66: case 98: case 115: case 120:
        return Outcome::Done;   // nothing a picture of the page shows
    case 9: dc.windowExt = Size(r, 8), dc.windowExtSet = true; break;
    case 10: dc.windowOrg = Point(r, 8); break;
    case 11: dc.viewportExt = Size(r, 8); break;
    case 12: dc.viewportOrg = Point(r, 8); break;
    case 31:
    case 32: {
        const qint32 xNum = r.I32(8), xDen = r.I32(12), yNum = r.I32(16), yDen = r.I32(20);
        if (xDen == 0 || yDen == 0)
            break;
        QSizeF& ext = vType == 31 ? dc.viewportExt : dc.windowExt;
        ext = QSizeF(ext.width() * xNum / xDen, ext.height() * yNum / yDen);
        break;
    }
    case 17: dc.mapMode = int(r.U32(8)); break;
    case 18: dc.bkMode = int(r.U32(8)); break;
    case 19: dc.polyFillMode = int(r.U32(8)); break;
    case 20: dc.rop2 = int(r.U32(8)); break;
    case 22: dc.textAlign = r.U32(8); break;
    case 24: dc.textColour = ColourRef(r.U32(8)); break;
    case 25: dc.bkColour = ColourRef(r.U32(8)); break;
    case 57: dc.arcDirection = int(r.U32(8)); break;
    case 33:
        if (!vGdi.Save())
            return Bad(vContext, "saved states nested too deep");
        break;
    case 34: vGdi.Restore(r.I32(8)); break;
    case 35:
    case 36: {
        const std::optional<QTransform> x = Xform(r, 8);
        const quint32 mode = vType == 35 ? 4 : r.U32(32);
        if (mode == 1)
            dc.world = QTransform();
        else if (x && mode == 2)
            dc.world = *x * dc.world;
        else if (x && mode == 3)
            dc.world = dc.world * *x;
        else if (x && mode == 4)
            dc.world = *x;
        break;
    }
    case 37:
        if (!vGdi.Select(r.U32(8)))
            return Bad(vContext, "object index outside the handle table");
        break;
    case 40:
        if (!vGdi.Delete(r.U32(8)))
            return Bad(vContext, "object index outside the handle table");
        break;
    case 38: case 39: case 49: case 82: case 93: case 94: case 95:
        return CreateObject(vGdi, vType, r, vContext);
    case 26: vGdi.OffsetClip(Point(r, 8)); break;
    case 29: vGdi.ExcludeClip(Box(r, 8)); break;
    case 30: vGdi.IntersectClip(Box(r, 8)); break;
    case 75: {
        bool bad = false;
        const std::optional<QPainterPath> region = Region(vGdi, r, 16, r.U32(8), &bad);
        if (bad)
            return Bad(vContext, "clip region larger than its record");
        vGdi.CombineClip(region, int(r.U32(12)));
        break;
    }
    case 59: vGdi.BeginPath(); break;
    case 60: vGdi.EndPath(); break;
    case 61: vGdi.CloseFigure(); break;
    case 62: vGdi.FillPath(false, true); break;
    case 63: vGdi.FillPath(true, true); break;
    case 64: vGdi.FillPath(true, false); break;
    case 67: vGdi.SelectClipPath(int(r.U32(8))); break;
    case 68: vGdi.AbortPath(); break;
    case 70: {
        const qint64 size = r.U32(8);
        if (!r.Has(12, size))
            return Bad(vContext, "comment larger than its record");
        const Bytes data(r.Slice(12, size));
        if (size >= 2 && data.U8(0) == 'D' && data.U8(1) == 'W')
            return PrivateComment(vGdi, data, r, vContext);
        return Outcome::Done;
    }
    default:
        return Outcome::Unknown;
    }
    return r.short_() ? Bad(vContext, "record shorter than its fields") : Outcome::Done;
}

} // namespace emf
