#include "engine/emf/Records.h"

// DocuWorks writes part of a printed page as comments that start with "DW" and draw with whatever
// pen, brush and clip the device context holds: path steps, compact point lists and pictures.
// Their layout comes from observation of printed pages, not from a published format, so anything
// that does not match the shapes below is skipped as unknown rather than guessed at.

namespace emf {

namespace {

enum : quint8 { kNewFigure = 0x01, kClose = 0x02, kBezier = 0x10, kPolygon = 0x20, kPolyline = 0x40 };

// A signed step of the nibble form: 8 says the step follows as a byte, and a byte of 0x80 there
// says it follows as two.
bool Step(const Bytes& d, int vNibble, qint64& vAt, qint32& vOut)
{
    if (vNibble != 8) {
        vOut = vNibble >= 8 ? vNibble - 16 : vNibble;
        return true;
    }
    const quint8 b = d.U8(vAt++);
    if (b != 0x80) {
        vOut = qint8(b);
    } else {
        vOut = d.I16(vAt);
        vAt += 2;
    }
    return !d.short_();
}

bool ReadPoints(const Bytes& d, QPolygonF& vPoints)
{
    const quint8 encoding = d.U8(3);
    const qint64 count = d.U32(4);
    if (count < 1 || count > d.size())   // every point after the first takes a byte at least
        return false;
    QPointF p(d.I16(8), d.I16(10));
    vPoints.reserve(count);
    vPoints << p;
    qint64 at = 12;
    for (qint64 i = 1; i < count; ++i) {
        if (encoding == 0x20) {
            p = QPointF(d.I16(at), d.I16(at + 2));
            at += 4;
        } else if (encoding == 0x40) {
            p += QPointF(qint8(d.U8(at)), qint8(d.U8(at + 1)));
            at += 2;
        } else {
            const quint8 b = d.U8(at++);
            qint32 dx = 0, dy = 0;
            if (!Step(d, b >> 4, at, dx) || !Step(d, b & 0x0F, at, dy))
                return false;
            p += QPointF(dx, dy);
        }
        if (d.short_())
            return false;
        vPoints << p;
    }
    return true;
}

Outcome PointList(Gdi& vGdi, const Bytes& d, RecordContext& vContext)
{
    const quint8 op = d.U8(2);
    QPolygonF points;
    if (!ReadPoints(d, points))
        return Bad(vContext, "private point list beyond its record");
    if (op & (kPolygon | kPolyline)) {
        QPainterPath shape(points.first());
        if (op & kBezier)
            for (qsizetype i = 1; i + 2 < points.size(); i += 3)
                shape.cubicTo(points[i], points[i + 1], points[i + 2]);
        else
            for (qsizetype i = 1; i < points.size(); ++i)
                shape.lineTo(points[i]);
        if (op & kPolygon)
            shape.closeSubpath();
        vGdi.Shape(shape, op & kPolygon);
        return Outcome::Done;
    }
    if (op & kNewFigure)
        vGdi.MoveTo(points.first());
    else
        vGdi.LineTo(points.first());
    const QPolygonF rest = points.mid(1);
    if (op & kBezier)
        vGdi.PolyBezier(rest, true);
    else if (!rest.isEmpty())
        vGdi.Polyline(rest, true);
    if (op & kClose)
        vGdi.CloseFigure();
    return Outcome::Done;
}

// A picture of the page's list, or a bitmap in the record, placed as a stretched blit would be.
Outcome Picture(Gdi& vGdi, const Bytes& d, const Bytes& vRecord, RecordContext& vContext)
{
    const quint8 kind = d.U8(2);
    if (kind == 'b') {
        ++vGdi.currentPicture;
        return Outcome::Done;
    }
    const qint64 fields = kind == 'c' ? 60 : 76;
    if (d.size() < fields)
        return Bad(vContext, "private picture record too short");
    const QRectF dest(d.I32(20), d.I32(24), d.I32(kind == 'c' ? 52 : 68), d.I32(kind == 'c' ? 56 : 72));
    QRectF source(d.I32(28), d.I32(32), d.I32(36), d.I32(40));
    const quint32 rop = d.U32(kind == 'c' ? 48 : 64);
    QImage image;
    if (kind == 'c') {
        if (!vGdi.Options().picture || vGdi.currentPicture < 0)
            return Outcome::Done;
        image = vGdi.Options().picture(vGdi.currentPicture);
    } else {
        bool bottomUp = false;
        image = RecordBitmap(vRecord, d.U32(44), d.U32(48), d.U32(52), d.U32(56), vContext, &bottomUp);
        if (!vContext.why.isEmpty())
            return Outcome::Bad;
        if (bottomUp)
            source.moveTop(image.height() - source.bottom());
    }
    if (source.isEmpty())
        source = image.rect();
    vGdi.Bitmap(dest, image, source, rop);
    return Outcome::Done;
}

} // namespace

Outcome PrivateComment(Gdi& vGdi, const Bytes& d, const Bytes& vRecord, RecordContext& vContext)
{
    const quint8 op = d.U8(2), next = d.U8(3);
    if ((op == 'a' || op == 'b' || op == 'c') && next == 0 && d.size() >= 4)
        return Picture(vGdi, d, vRecord, vContext);
    if (d.size() >= 12 && (next == 0x20 || next == 0x40 || next == 0x80))
        return PointList(vGdi, d, vContext);
    switch (op) {
    case 1: return Outcome::Done;
    case 2: vGdi.BeginPath(); return Outcome::Done;
    case 3: vGdi.SelectClipPath(5); return Outcome::Done;
    // The path stays after filling, so that a stroke step after a fill step outlines the same shape.
    case 4: vGdi.FillPath(false, true, true); return Outcome::Done;
    case 5: vGdi.FillPath(true, false, true); return Outcome::Done;
    case 6:
        if (d.size() < 19)
            return Bad(vContext, "private clip record too short");
        vGdi.IntersectClip(QRectF(QPointF(d.I32(3), d.I32(7)), QPointF(d.I32(11), d.I32(15))));
        return Outcome::Done;
    default: return Outcome::Unknown;
    }
}

} // namespace emf
