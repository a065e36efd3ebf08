#include "engine/emf/DibLayout.h"
#include "engine/emf/Fonts.h"
#include "engine/emf/Records.h"

// The 16-bit metafile: words instead of double words, parameters mostly in reverse order (y
// before x, bottom before top), objects in the lowest free slot rather than at a given index.
// It drives the same drawing state as the enhanced kind. Its units have no frame to fill, so the
// window (or the placeable header's box) always fills the target.

namespace emf {

namespace {

constexpr quint32 kPlaceableKey = 0x9AC6CDD7;
constexpr qint64 kMaxRecords = 1'000'000;

QPointF YX(const Bytes& p, qint64 vAt) { return QPointF(p.I16(vAt + 2), p.I16(vAt)); }

// Bottom, right, top, left.
QRectF BoxReversed(const Bytes& p, qint64 vAt)
{
    return QRectF(QPointF(p.I16(vAt + 6), p.I16(vAt + 4)), QPointF(p.I16(vAt + 2), p.I16(vAt)));
}

bool Points(const Bytes& p, qint64 vAt, qint64 vCount, QPolygonF* vOut)
{
    if (!p.Has(vAt, vCount * 4))
        return false;
    for (qint64 i = 0; i < vCount; ++i)
        *vOut << QPointF(p.I16(vAt + 4 * i), p.I16(vAt + 4 * i + 2));
    return true;
}

// A packed bitmap (info and bits in one run) from at to the end of the record.
QImage PackedBitmap(const Bytes& p, qint64 vAt, RecordContext& vContext, bool* vBottomUp, qint64 vRows = 0)
{
    const QByteArrayView packed = p.Slice(vAt, p.size() - vAt);
    const qint64 infoSize = dib::InfoSize(packed);
    if (infoSize < 0 || infoSize > packed.size()) {
        vContext.why = QStringLiteral("bitmap header not readable");
        return {};
    }
    const Bytes whole(packed);
    return RecordBitmap(whole, 0, infoSize, infoSize, packed.size() - infoSize, vContext, vBottomUp, vRows);
}

// The blits with a bitmap: source height, width, y, x, then destination height, width, y, x
// (one pair shared when the blit does not stretch), then the packed bitmap.
Outcome Blit(Gdi& vGdi, quint16 vFunction, const Bytes& p, qint64 vWords, RecordContext& vContext)
{
    const quint32 rop = p.U32(0);
    if (vWords == (vFunction >> 8) + 3) {   // no bitmap: a pattern fill of the destination
        const qint64 end = p.size() - 8;
        vGdi.PatternBlt(QRectF(p.I16(end + 6), p.I16(end + 4), p.I16(end + 2), p.I16(end)), rop);
        return Outcome::Done;
    }
    qint64 at = vFunction == 0x0F43 ? 6 : 4;   // the stretch with usage has one more word
    QRectF source, dest;
    if (vFunction == 0x0940) {
        dest = QRectF(p.I16(at + 10), p.I16(at + 8), p.I16(at + 6), p.I16(at + 4));
        source = QRectF(p.I16(at + 2), p.I16(at), dest.width(), dest.height());
        at += 12;
    } else {
        source = QRectF(p.I16(at + 6), p.I16(at + 4), p.I16(at + 2), p.I16(at));
        dest = QRectF(p.I16(at + 14), p.I16(at + 12), p.I16(at + 10), p.I16(at + 8));
        at += 16;
    }
    bool bottomUp = false;
    const QImage image = PackedBitmap(p, at, vContext, &bottomUp);
    if (image.isNull())
        return vContext.why.isEmpty() ? Outcome::Done : Outcome::Bad;
    if (vFunction != 0x0940 && bottomUp)
        source.moveTop(image.height() - source.bottom());
    vGdi.Bitmap(dest, image, source, rop);
    return Outcome::Done;
}

Outcome SetDibToDevice(Gdi& vGdi, const Bytes& p, RecordContext& vContext)
{
    bool bottomUp = false;
    const QImage image = PackedBitmap(p, 18, vContext, &bottomUp, p.U16(2));
    if (image.isNull())
        return vContext.why.isEmpty() ? Outcome::Done : Outcome::Bad;
    const qint32 first = p.U16(4), ySrc = p.I16(6), xSrc = p.I16(8), h = p.I16(10), w = p.I16(12);
    const double top = bottomUp ? image.height() - (ySrc - first) - h : ySrc - first;
    vGdi.Bitmap(QRectF(p.I16(16), p.I16(14), w, h), image, QRectF(xSrc, top, w, h), 0xCC0020);
    return Outcome::Done;
}

Outcome CreateObject(Gdi& vGdi, quint16 vFunction, const Bytes& p, RecordContext& vContext)
{
    Object object;
    switch (vFunction) {
    case 0x02FA: object = Pen{p.U16(0), double(p.I16(2)), 0, ColourRef(p.U32(6))}; break;
    case 0x02FC: object = Brush{p.U16(0), p.U16(6), ColourRef(p.U32(2)), {}}; break;
    case 0x02FB: {
        Font font;
        font.height = p.I16(0);
        font.escapement = p.I16(4);
        font.weight = p.I16(8);
        font.italic = p.U8(10), font.underline = p.U8(11), font.strikeOut = p.U8(12);
        font.charset = p.U8(13);
        QByteArray face = p.Slice(18, qMin<qint64>(32, qMax<qint64>(0, p.size() - 18))).toByteArray();
        face.truncate(face.indexOf('\0') < 0 ? face.size() : face.indexOf('\0'));
        font.face = DecodeNarrow(face, font.charset);
        object = font;
        break;
    }
    case 0x0142: {
        if (p.U16(0) == 3) {   // an old device-dependent bitmap, which no record here decodes
            object = Brush{0, 0, Qt::gray, {}};
            break;
        }
        QImage pattern = PackedBitmap(p, 4, vContext, nullptr);
        if (!vContext.why.isEmpty())
            return Outcome::Bad;
        object = Brush{5, 0, Qt::black, pattern};
        break;
    }
    default: break;   // palettes, regions and old bitmaps hold a slot
    }
    if (p.short_())
        return Bad(vContext, "object record shorter than its fields");
    if (vGdi.StoreFirstFree(std::move(object)) < 0)
        return Bad(vContext, "more objects than the header's table holds");
    return Outcome::Done;
}

Outcome TextOut(Gdi& vGdi, quint16 vFunction, const Bytes& p, RecordContext& vContext)
{
    const int charset = vGdi.Dc().font.charset;
    if (vFunction == 0x0521) {
        const qint64 count = p.U16(0), padded = (count + 1) & ~qint64(1);
        const QByteArrayView s = p.Slice(2, count);
        const QPointF at = YX(p, 2 + padded);
        if (p.short_())
            return Bad(vContext, "text beyond its record");
        vGdi.Text(at, DecodeNarrow(s, charset), {}, 0, {});
        return Outcome::Done;
    }
    const QPointF at = YX(p, 0);
    const qint64 count = p.U16(4);
    const quint16 options = p.U16(6);
    qint64 stringAt = 8;
    QRectF rect;
    if (options & 0x06) {
        rect = QRectF(QPointF(p.I16(8), p.I16(10)), QPointF(p.I16(12), p.I16(14)));
        stringAt = 16;
    }
    const QByteArrayView s = p.Slice(stringAt, count);
    if (p.short_())
        return Bad(vContext, "text beyond its record");
    const qint64 dxAt = stringAt + ((count + 1) & ~qint64(1));
    QList<double> perByte, advances;
    if (p.Has(dxAt, count * 2))
        for (qint64 i = 0; i < count; ++i)
            perByte << p.I16(dxAt + 2 * i);
    vGdi.Text(at, DecodeNarrow(s, charset, perByte, &advances), advances, options, rect);
    return Outcome::Done;
}

Outcome Record(Gdi& vGdi, quint16 f, const Bytes& p, qint64 vWords, RecordContext& vContext)
{
    DcState& dc = vGdi.Dc();
    switch (f) {
    case 0x0106: case 0x0108: case 0x0109: case 0x020A: case 0x0231: case 0x0234: case 0x0035:
    case 0x0037: case 0x0139: case 0x0436:
        return Outcome::Done;
    case 0x0103: dc.bkMode = p.U16(0); break;
    case 0x0104: dc.mapMode = p.U16(0); break;
    case 0x0105: dc.rop2 = p.U16(0); break;
    case 0x0107: dc.polyFillMode = p.U16(0); break;
    case 0x012E: dc.textAlign = p.U16(0); break;
    case 0x0201: dc.bkColour = ColourRef(p.U32(0)); break;
    case 0x0209: dc.textColour = ColourRef(p.U32(0)); break;
    case 0x020B: dc.windowOrg = YX(p, 0); break;
    case 0x020C: dc.windowExt = QSizeF(p.I16(2), p.I16(0)), dc.windowExtSet = true; break;
    case 0x020D: dc.viewportOrg = YX(p, 0); break;
    case 0x020E: dc.viewportExt = QSizeF(p.I16(2), p.I16(0)); break;
    case 0x020F: dc.windowOrg += YX(p, 0); break;
    case 0x0211: dc.viewportOrg += YX(p, 0); break;
    case 0x0410:
    case 0x0412: {
        const qint16 yDen = p.I16(0), yNum = p.I16(2), xDen = p.I16(4), xNum = p.I16(6);
        QSizeF& ext = f == 0x0410 ? dc.windowExt : dc.viewportExt;
        if (xDen != 0 && yDen != 0)
            ext = QSizeF(ext.width() * xNum / xDen, ext.height() * yNum / yDen);
        break;
    }
    case 0x0213: vGdi.LineTo(YX(p, 0)); break;
    case 0x0214: vGdi.MoveTo(YX(p, 0)); break;
    case 0x0324:
    case 0x0325: {
        QPolygonF points;
        if (!Points(p, 2, p.U16(0), &points))
            return Bad(vContext, "points beyond their record");
        if (f == 0x0324)
            vGdi.Polygons({points});
        else
            vGdi.Polyline(points, false);
        break;
    }
    case 0x0538: {
        const qint64 polys = p.U16(0);
        QList<QPolygonF> shapes;
        qint64 at = 2 + 2 * polys;
        for (qint64 i = 0; i < polys; ++i) {
            QPolygonF points;
            const qint64 n = p.U16(2 + 2 * i);
            if (p.short_() || !Points(p, at, n, &points))
                return Bad(vContext, "points beyond their record");
            shapes << points;
            at += 4 * n;
        }
        vGdi.Polygons(shapes);
        break;
    }
    case 0x041B:
    case 0x0418:
    case 0x061C: {
        const qint64 at = f == 0x061C ? 4 : 0;
        QPainterPath shape;
        const QRectF box = BoxReversed(p, at).normalized();
        if (f == 0x041B)
            shape.addRect(box);
        else if (f == 0x0418)
            shape.addEllipse(box);
        else
            shape.addRoundedRect(box, p.I16(2) / 2.0, p.I16(0) / 2.0);
        vGdi.Shape(shape, true);
        break;
    }
    case 0x0817: case 0x0830: case 0x081A:
        vGdi.Arc(f == 0x0817 ? 0 : f == 0x0830 ? 1 : 2, BoxReversed(p, 8), YX(p, 4), YX(p, 0));
        break;
    case 0x041F: vGdi.SetPixel(YX(p, 4), ColourRef(p.U32(0))); break;
    case 0x0415: vGdi.ExcludeClip(BoxReversed(p, 0)); break;
    case 0x0416: vGdi.IntersectClip(BoxReversed(p, 0)); break;
    case 0x0220: vGdi.OffsetClip(YX(p, 0)); break;
    case 0x012C: vGdi.CombineClip(std::nullopt, 5); break;   // regions are not kept: back to no clip
    case 0x001E:
        if (!vGdi.Save())
            return Bad(vContext, "saved states nested too deep");
        break;
    case 0x0127: vGdi.Restore(p.I16(0)); break;
    case 0x012D:
        if (!vGdi.Select(p.U16(0)))
            return Bad(vContext, "object index outside the table");
        break;
    case 0x01F0:
        if (!vGdi.Delete(p.U16(0)))
            return Bad(vContext, "object index outside the table");
        break;
    case 0x02FA: case 0x02FC: case 0x02FB: case 0x0142: case 0x01F9: case 0x00F7: case 0x06FF:
        return CreateObject(vGdi, f, p, vContext);
    case 0x0521: case 0x0A32:
        return TextOut(vGdi, f, p, vContext);
    case 0x061D:
        vGdi.PatternBlt(QRectF(p.I16(10), p.I16(8), p.I16(6), p.I16(4)), p.U32(0));
        break;
    case 0x0940: case 0x0B41: case 0x0F43:
        return Blit(vGdi, f, p, vWords, vContext);
    case 0x0D33:
        return SetDibToDevice(vGdi, p, vContext);
    case 0x0626: {
        const qint64 size = p.U16(2);
        if (p.U16(0) != 15 || size < 2)
            return Outcome::Done;   // printer escapes draw nothing
        const Bytes data(p.Slice(4, size));
        if (p.short_())
            return Bad(vContext, "comment larger than its record");
        if (data.U8(0) == 'D' && data.U8(1) == 'W')
            return PrivateComment(vGdi, data, p, vContext);
        return Outcome::Done;
    }
    default:
        return Outcome::Unknown;
    }
    return p.short_() ? Bad(vContext, "record shorter than its fields") : Outcome::Done;
}

} // namespace

PlayResult PlayWmf(QPainter* vPainter, const QByteArray& vBytes, const QRectF& vTarget,
                   const PlayOptions& vOptions, QStringList* vTexts)
{
    const Bytes b(vBytes);
    Frame frame;
    frame.mapping = Mapping::Annotation;
    frame.fallbackWindow = QRectF(QPointF(), vTarget.size());
    qint64 at = 0;
    if (b.U32(0) == kPlaceableKey) {
        frame.fallbackWindow = QRectF(QPointF(b.I16(6), b.I16(8)), QPointF(b.I16(10), b.I16(12)));
        at = 22;
    }
    Gdi gdi(vPainter, vTarget, frame, vOptions);
    gdi.SetTableSize(b.U16(at + 10));
    at += 18;
    PlayResult result;
    RecordContext context;
    for (qint64 count = 0; at < b.size(); ++count) {
        const qint64 words = b.U32(at);
        const quint16 function = b.U16(at + 4);
        QString why;
        if (!b.Has(at, 6))
            why = QStringLiteral("cut short");
        else if (words < 3 || !b.Has(at, words * 2))
            why = QStringLiteral("of %1 words").arg(words);
        else if (count >= kMaxRecords)
            why = QStringLiteral("beyond the record limit");
        if (why.isEmpty() && function == 0)
            break;
        if (why.isEmpty()) {
            const Outcome outcome = Record(gdi, function, Bytes(b.Slice(at + 6, words * 2 - 6)), words, context);
            if (outcome == Outcome::Unknown)
                ++result.unsupportedRecords;
            else if (outcome == Outcome::Bad)
                why = QStringLiteral("(function 0x%1): %2").arg(function, 4, 16, QChar(u'0')).arg(context.why);
        }
        if (!why.isEmpty()) {
            result.ok = false;
            result.error = QStringLiteral("16-bit metafile record at byte %1 %2").arg(at).arg(why);
            break;
        }
        at += words * 2;
    }
    if (vTexts)
        *vTexts = gdi.texts;
    return result;
}

} // namespace emf
