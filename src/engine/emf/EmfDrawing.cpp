#include "engine/emf/Fonts.h"
#include "engine/emf/Records.h"

#include <QtEndian>

namespace emf {

namespace {

QPointF Point(const Bytes& vRecord, qint64 vAt)
{
    return QPointF(vRecord.I32(vAt), vRecord.I32(vAt + 4));
}

QRectF Box(const Bytes& vRecord, qint64 vAt)
{
    return QRectF(Point(vRecord, vAt), Point(vRecord, vAt + 8));
}

// count points from at, each two i32 or two i16; false when they do not fit the record.
bool Points(const Bytes& r, qint64 vAt, qint64 vCount, bool vShort, QPolygonF* vOut)
{
    const int size = vShort ? 4 : 8;
    if (vCount < 0 || !r.Has(vAt, vCount * size))
        return false;
    vOut->reserve(vCount);
    for (qint64 i = 0; i < vCount; ++i) {
        const qint64 at = vAt + i * size;
        *vOut << (vShort ? QPointF(r.I16(at), r.I16(at + 2)) : Point(r, at));
    }
    return true;
}

Outcome Poly(Gdi& vGdi, quint32 vType, const Bytes& r, RecordContext& vContext)
{
    const bool small = vType >= 85;
    QPolygonF points;
    if (!Points(r, 28, r.U32(24), small, &points))
        return Bad(vContext, "points beyond their record");
    switch (small ? vType - 83 : vType) {
    case 2: vGdi.PolyBezier(points, false); break;
    case 3: vGdi.Polygons({points}); break;
    case 4: vGdi.Polyline(points, false); break;
    case 5: vGdi.PolyBezier(points, true); break;
    case 6: vGdi.Polyline(points, true); break;
    }
    return Outcome::Done;
}

Outcome PolyPoly(Gdi& vGdi, quint32 vType, const Bytes& r, RecordContext& vContext)
{
    const bool small = vType >= 90;
    const qint64 polys = r.U32(24), total = r.U32(28);
    if (!r.Has(32, polys * 4))
        return Bad(vContext, "polygon counts beyond their record");
    QPolygonF all;
    if (!Points(r, 32 + polys * 4, total, small, &all))
        return Bad(vContext, "points beyond their record");
    QList<QPolygonF> shapes;
    qint64 used = 0;
    for (qint64 i = 0; i < polys; ++i) {
        const qint64 n = r.U32(32 + 4 * i);
        if (n > total - used)
            return Bad(vContext, "polygon counts exceed the points");
        shapes << all.mid(used, n);
        used += n;
    }
    if (vType == 8 || vType == 91)
        vGdi.Polygons(shapes);
    else
        vGdi.Polylines(shapes);
    return Outcome::Done;
}

// One string of a text record: its reference point, count, string and spacing offsets (from the
// record's start), options and rectangle, at the given place in the record.
Outcome TextOut(Gdi& vGdi, bool vWide, const Bytes& r, qint64 vAt, RecordContext& vContext)
{
    const QPointF reference = Point(r, vAt);
    const qint64 count = r.U32(vAt + 8), stringAt = r.U32(vAt + 12), dxAt = r.U32(vAt + 36);
    const quint32 options = r.U32(vAt + 16);
    const QRectF rect = Box(r, vAt + 20);
    const QByteArrayView raw = r.Slice(stringAt, count * (vWide ? 2 : 1));
    const qint64 dxCount = count * ((options & 0x2000) ? 2 : 1);   // with y advances in between
    if (r.short_() || (dxAt != 0 && count > 0 && !r.Has(dxAt, dxCount * 4)))
        return Bad(vContext, "text beyond its record");
    QList<double> byteAdvances;
    if (dxAt != 0)
        for (qint64 i = 0; i < count; ++i)
            byteAdvances << r.I32(dxAt + 4 * i * ((options & 0x2000) ? 2 : 1));
    if (options & 0x10) {   // glyph numbers, not characters: nothing to read or draw
        vGdi.texts << QString();
        return Outcome::Done;
    }
    QString text;
    QList<double> advances;
    if (vWide) {
        text.resize(count);
        for (qint64 i = 0; i < count; ++i)
            text[i] = QChar(qFromLittleEndian<quint16>(raw.data() + 2 * i));
        advances = byteAdvances;
    } else {
        text = DecodeNarrow(raw, vGdi.Dc().font.charset, byteAdvances, &advances);
    }
    vGdi.Text(reference, text, advances, options, rect);
    return Outcome::Done;
}

// StretchDIBits and SetDIBitsToDevice, and the two blits, which name their bitmap alike.
Outcome Blit(Gdi& vGdi, quint32 vType, const Bytes& r, RecordContext& vContext)
{
    const qint32 x = r.I32(24), y = r.I32(28);
    bool bottomUp = false;
    if (vType == 81 || vType == 80) {
        const qint32 xSrc = r.I32(32), ySrc = r.I32(36), cxSrc = r.I32(40), cySrc = r.I32(44);
        const QImage image = RecordBitmap(r, r.U32(48), r.U32(52), r.U32(56), r.U32(60), vContext, &bottomUp,
                                          vType == 80 ? r.U32(72) : 0);
        if (!vContext.why.isEmpty())
            return Outcome::Bad;
        const quint32 rop = vType == 81 ? r.U32(68) : 0xCC0020;
        const QRectF dest(x, y, vType == 81 ? r.I32(72) : cxSrc, vType == 81 ? r.I32(76) : cySrc);
        if (image.isNull()) {
            vGdi.PatternBlt(dest, rop);
            return Outcome::Done;
        }
        // A bottom-up bitmap counts its source rows from the bottom; a band given to
        // SetDIBitsToDevice holds only the scans from its first one.
        const qint64 first = vType == 80 ? r.U32(68) : 0;
        const double top = bottomUp ? image.height() - (ySrc - first) - cySrc : ySrc - first;
        vGdi.Bitmap(dest, image, QRectF(xSrc, top, cxSrc, cySrc), rop);
        return Outcome::Done;
    }
    const qint32 cx = r.I32(32), cy = r.I32(36);
    const quint32 rop = r.U32(40);
    const QImage image = RecordBitmap(r, r.U32(84), r.U32(88), r.U32(92), r.U32(96), vContext);
    if (!vContext.why.isEmpty())
        return Outcome::Bad;
    if (image.isNull()) {
        vGdi.PatternBlt(QRectF(x, y, cx, cy), rop);
        return Outcome::Done;
    }
    const QRectF source(r.I32(44), r.I32(48), vType == 77 ? r.I32(100) : cx, vType == 77 ? r.I32(104) : cy);
    vGdi.Bitmap(QRectF(x, y, cx, cy), image, source, rop);
    return Outcome::Done;
}

} // namespace

QImage RecordBitmap(const Bytes& r, qint64 vInfoAt, qint64 vInfoSize, qint64 vBitsAt, qint64 vBitsSize,
                    RecordContext& vContext, bool* vBottomUp, qint64 vRows)
{
    if (vInfoSize == 0)
        return {};
    if (!r.Has(vInfoAt, vInfoSize) || !r.Has(vBitsAt, vBitsSize)) {
        vContext.why = QStringLiteral("bitmap beyond its record");
        return {};
    }
    QByteArray info = r.Slice(vInfoAt, vInfoSize).toByteArray();
    const Bytes header(info);
    const bool bottomUp = header.U32(0) == 12 || header.I32(8) > 0;
    if (vBottomUp)
        *vBottomUp = bottomUp;
    if (vRows > 0 && vRows <= 65535 && header.U32(0) >= 40 && vRows < qAbs(qint64(header.I32(8))))
        qToLittleEndian(qint32(bottomUp ? vRows : -vRows), info.data() + 8);
    QString error;
    QImage image = dib::Decode(info, r.Slice(vBitsAt, vBitsSize).toByteArray(), &error);
    if (image.isNull())
        vContext.why = error.isEmpty() ? QStringLiteral("bitmap not readable") : error;
    return image;
}

Outcome EmfDrawRecord(Gdi& vGdi, quint32 vType, const Bytes& r, RecordContext& vContext)
{
    switch (vType) {
    case 2: case 3: case 4: case 5: case 6: case 85: case 86: case 87: case 88: case 89:
        return Poly(vGdi, vType, r, vContext);
    case 7: case 8: case 90: case 91:
        return PolyPoly(vGdi, vType, r, vContext);
    case 83: case 84:
        return TextOut(vGdi, vType == 84, r, 36, vContext);
    case 96: case 97: {   // several strings, each laid out as the single one is
        const qint64 strings = r.U32(36);
        if (!r.Has(40, strings * 40))
            return Bad(vContext, "strings beyond their record");
        for (qint64 i = 0; i < strings; ++i)
            if (TextOut(vGdi, vType == 97, r, 40 + 40 * i, vContext) == Outcome::Bad)
                return Outcome::Bad;
        return Outcome::Done;
    }
    case 76: case 77: case 80: case 81:
        return Blit(vGdi, vType, r, vContext);
    case 27: vGdi.MoveTo(Point(r, 8)); break;
    case 54: vGdi.LineTo(Point(r, 8)); break;
    case 15: vGdi.SetPixel(Point(r, 8), ColourRef(r.U32(16))); break;
    case 42: {
        QPainterPath shape;
        shape.addEllipse(Box(r, 8).normalized());
        vGdi.Shape(shape, true);
        break;
    }
    case 43: {
        QPainterPath shape;
        shape.addRect(Box(r, 8).normalized());
        vGdi.Shape(shape, true);
        break;
    }
    case 44: {
        QPainterPath shape;
        shape.addRoundedRect(Box(r, 8).normalized(), r.I32(24) / 2.0, r.I32(28) / 2.0);
        vGdi.Shape(shape, true);
        break;
    }
    case 45: case 46: case 47: case 55:
        vGdi.Arc(vType == 55 ? 3 : int(vType) - 45, Box(r, 8), Point(r, 24), Point(r, 32));
        break;
    case 41: {
        const QPointF c = Point(r, 8);
        const double radius = r.U32(16), start = r.F32(20), sweep = r.F32(24);
        if (!std::isfinite(start) || !std::isfinite(sweep) || radius > 1e9)
            break;
        QPainterPath arc;
        const QRectF box(c.x() - radius, c.y() - radius, 2 * radius, 2 * radius);
        arc.moveTo(vGdi.Dc().position);
        arc.arcTo(box, start, std::fmod(sweep, 720.0));
        vGdi.Dc().position = arc.currentPosition();
        vGdi.Shape(arc, false);
        break;
    }
    default:
        return Outcome::Unknown;
    }
    return r.short_() ? Bad(vContext, "record shorter than its fields") : Outcome::Done;
}

} // namespace emf
