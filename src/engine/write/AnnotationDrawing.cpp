#include "engine/write/AnnotationDrawing.h"

#include "engine/write/AnnotationProperties.h"
#include "engine/write/EmfWriter.h"
#include "engine/write/Emit.h"
#include "engine/write/NodeAccess.h"
#include "engine/write/TextLayout.h"

#include <QDate>

#include <algorithm>
#include <cmath>

namespace xdw::annot {

namespace {

constexpr double UnitsPerInch = 300.0;
constexpr double HundredthsPerInch = 2540.0;
constexpr double PointsPerInch = 72.0;
constexpr quint32 Blue = 0xFF0000, Red = 0x0000FF, Grey = 0x808080, NoteYellow = 6619135;

QSize Window(QSize vSize)
{
    return QSize(std::max(1, Logical(vSize.width())), std::max(1, Logical(vSize.height())));
}

// The frame and device size of the header: the box rounded up to whole millimetres.
EmfWriter Begin(QSize vSize)
{
    const QSize frame((vSize.width() + 99) / 100 * 100, (vSize.height() + 99) / 100 * 100);
    EmfWriter w(frame, Window(frame));
    w.SetWindowExt(Window(vSize));
    return w;
}

void FillBox(EmfWriter& vOut, QSize vWindow, quint32 vColor)
{
    const quint32 brush = vOut.CreateBrush(vColor);
    vOut.Select(brush);
    vOut.Select(StockNullPen);
    vOut.Rectangle(QRect(QPoint(0, 0), vWindow));
    vOut.Select(StockWhiteBrush);
    vOut.Delete(brush);
}

// The pen a shape's border is drawn with; its width is kept in points.
quint32 BorderPen(EmfWriter& vOut, const Node& vRecord, quint32 vDefaultColor)
{
    const PenStyle style = NumberOr(vRecord, u"BorderTransparent", 0)
        ? PenStyle::None
        : static_cast<PenStyle>(std::clamp<qint64>(NumberOr(vRecord, u"BorderStyle", 0), 0, 5));
    const qint64 points = std::clamp<qint64>(NumberOr(vRecord, u"BorderWidth", 1), 1, 72);
    const int width = static_cast<int>(std::lround(points * UnitsPerInch / PointsPerInch));
    return vOut.CreatePen(style, width, static_cast<quint32>(NumberOr(vRecord, u"BorderColor", vDefaultColor)));
}

QByteArray DrawTextRecord(const Node& vRecord, QSize vSize, const QString& vText, quint32 vColor,
                          bool vUnderline)
{
    EmfWriter w = Begin(vSize);
    const QSize window = Window(vSize);
    const qint64 back = NumberOr(vRecord, u"BackColor", NoColor);
    if (back != NoColor)
        FillBox(w, window, static_cast<quint32>(back));
    w.IntersectClipRect(QRect(QPoint(0, 0), window));
    WriteText(w, vRecord, vText, Margins(vRecord), vColor, vUnderline);
    return w.Finish();
}

QByteArray DrawRectangle(const Node& vRecord, QSize vSize)
{
    EmfWriter w = Begin(vSize);
    const QSize window = Window(vSize);
    const quint32 pen = BorderPen(w, vRecord, 0);
    w.Select(pen);
    quint32 brush = 0;
    if (NumberOr(vRecord, u"FillStyle", 0) != 0 && !NumberOr(vRecord, u"FillTransparent", 0)) {
        brush = w.CreateBrush(static_cast<quint32>(NumberOr(vRecord, u"FillColor", 0xFFFFFF)));
        w.Select(brush);
    } else {
        w.Select(StockNullBrush);
    }
    // Inset by half the pen so that the whole border stays inside the box.
    const int inset = static_cast<int>(std::lround(NumberOr(vRecord, u"BorderWidth", 1) * UnitsPerInch / PointsPerInch / 2));
    w.Rectangle(QRect(QPoint(0, 0), window).adjusted(inset, inset, -inset, -inset));
    w.Select(StockBlackPen);
    w.Select(StockWhiteBrush);
    w.Delete(pen);
    if (brush)
        w.Delete(brush);
    return w.Finish();
}

// A filled head of a line pointing at vTip from vFrom.
std::vector<QPoint> ArrowHead(QPoint vFrom, QPoint vTip, int vLength)
{
    const double dx = vTip.x() - vFrom.x(), dy = vTip.y() - vFrom.y();
    const double length = std::hypot(dx, dy);
    if (length < 1)
        return {};
    const double ux = dx / length, uy = dy / length;
    const QPointF base(vTip.x() - ux * vLength, vTip.y() - uy * vLength);
    const QPointF side(-uy * vLength / 2.0, ux * vLength / 2.0);
    return {vTip, (base + side).toPoint(), (base - side).toPoint()};
}

QByteArray DrawLine(const Node& vRecord, QSize vSize)
{
    EmfWriter w = Begin(vSize);
    // The box bounds the vectors; a file that says otherwise is drawn inside its box anyway.
    const qint64 hor = std::clamp<qint64>(nodes::NamedNumber(vRecord, u"%HorVec").value_or(vSize.width()),
                                          -vSize.width(), vSize.width());
    const qint64 ver = std::clamp<qint64>(nodes::NamedNumber(vRecord, u"%VerVec").value_or(vSize.height()),
                                          -vSize.height(), vSize.height());
    const int pad = Logical((vSize.width() - std::abs(hor)) / 2.0);
    const int padY = Logical((vSize.height() - std::abs(ver)) / 2.0);
    // The box holds the line with room for its pen; the line runs from the start corner to the
    // opposite one, whichever way the vector points.
    const QPoint start(pad + (hor < 0 ? Logical(-hor) : 0), padY + (ver < 0 ? Logical(-ver) : 0));
    const QPoint end(start.x() + Logical(hor), start.y() + Logical(ver));
    const quint32 color = static_cast<quint32>(NumberOr(vRecord, u"BorderColor", 0));
    const quint32 pen = BorderPen(w, vRecord, 0);
    w.Select(pen);
    w.MoveTo(start);
    w.LineTo(end);
    const qint64 heads = NumberOr(vRecord, u"ArrowheadType", 0);
    if (heads != 0) {
        const quint32 brush = w.CreateBrush(color);
        w.Select(brush);
        // As wide as the room the box leaves around the line, so the head stays inside it.
        const int length = 2 * std::max(1, std::min(pad, padY));
        for (const auto& [from, tip] : {std::pair{start, end}, std::pair{end, start}}) {
            if ((tip == end && (heads & 1)) || (tip == start && (heads & 2)))
                w.Polygon(ArrowHead(from, tip, length));
        }
        w.Select(StockWhiteBrush);
        w.Delete(brush);
    }
    w.Select(StockBlackPen);
    w.Delete(pen);
    return w.Finish();
}

QByteArray DrawStamp(const Node& vRecord, QSize vSize)
{
    EmfWriter w = Begin(vSize);
    const QSize window = Window(vSize);
    const quint32 color = static_cast<quint32>(NumberOr(vRecord, u"BorderColor", Red));
    const quint32 pen = w.CreatePen(PenStyle::Solid, std::max(2, window.width() / 60), color);
    w.Select(pen);
    w.Select(StockNullBrush);
    const int inset = std::max(2, window.width() / 60);
    const QRect ring = QRect(QPoint(0, 0), window).adjusted(inset, inset, -inset, -inset);
    w.Ellipse(ring);
    // Three bands: the upper field, the date, the lower field.
    const int third = window.height() / 3;
    const int chord = static_cast<int>(window.width() * 0.06);
    w.MoveTo(QPoint(ring.left() + chord, third));
    w.LineTo(QPoint(ring.right() - chord, third));
    w.MoveTo(QPoint(ring.left() + chord, 2 * third));
    w.LineTo(QPoint(ring.right() - chord, 2 * third));
    w.Select(StockBlackPen);
    w.Delete(pen);
    const QString fields[] = {TextOr(vRecord, u"TopField", {}), StampDate(vRecord),
                              TextOr(vRecord, u"BottomField", {})};
    for (int band = 0; band < 3; ++band) {
        const QString& text = fields[band];
        if (text.isEmpty())
            continue;
        // Each band's text fits its band in height and the ring's width.
        const double ems = std::max(1.0, LineEms(text));
        const int em = std::max(1, std::min(third * 6 / 10, static_cast<int>(window.width() * 0.7 / ems)));
        Node sized = vRecord;
        nodes::SetNamed(sized, QStringLiteral("%Size"), NamedNumbers,
                        emit::Numbers({std::max<qint64>(1, std::lround(em * PointsPerInch * 10 / UnitsPerInch))}));
        const int width = static_cast<int>(std::lround(ems * em));
        WriteText(w, sized, text, QPoint((window.width() - width) / 2, band * third + (third - em) / 2), color);
    }
    return w.Finish();
}

const Node* FusenText(const Node& vRecord)
{
    for (const Node& child : vRecord.children)
        if (child.kind == KindPlacement)
            for (const Node& shown : child.children)
                if (shown.kind == KindText)
                    return &shown;
    return nullptr;
}

QByteArray DrawFusen(const Node& vRecord, QSize vSize)
{
    EmfWriter w = Begin(vSize);
    const QSize window = Window(vSize);
    const QRect box(QPoint(0, 0), window);
    const quint32 brush = w.CreateBrush(static_cast<quint32>(NumberOr(vRecord, u"FillColor", NoteYellow)));
    w.Select(brush);
    w.BeginPath();
    w.MoveTo(box.topLeft());
    w.LineTo(QPoint(box.right(), box.top()));
    w.LineTo(QPoint(box.right(), box.bottom()));
    w.LineTo(QPoint(box.left(), box.bottom()));
    w.CloseFigure();
    w.EndPath();
    w.FillPath(box);
    w.Select(StockWhiteBrush);
    w.Delete(brush);
    const quint32 pen = w.CreatePen(PenStyle::Solid, 2, Grey);
    w.Select(pen);
    w.BeginPath();
    w.Polyline({box.topLeft(), QPoint(box.right(), box.top()), box.bottomRight(),
                QPoint(box.left(), box.bottom()), box.topLeft()});
    w.EndPath();
    w.StrokePath(box);
    w.Select(StockBlackPen);
    w.Delete(pen);
    if (const Node* text = FusenText(vRecord)) {
        w.IntersectClipRect(box);
        // A note keeps its size, so its text runs on to the next line at the note's edge.
        const QPoint margins = Margins(*text);
        WriteText(w, *text, Wrap(*text, TextOr(*text, u"Text", {}), window.width() - 2 * margins.x()), margins,
                  static_cast<quint32>(NumberOr(*text, u"ForeColor", 0)));
    }
    return w.Finish();
}

} // namespace

QString StampDate(const Node& vRecord)
{
    const QDate date = QDate::fromString(QString::number(nodes::NamedNumber(vRecord, u"%StampDate").value_or(0)),
                                         QStringLiteral("yyyyMMdd"));
    if (!date.isValid())
        return {};
    switch (NumberOr(vRecord, u"DateStyle", 0)) {
    case 1: return date.toString(QStringLiteral("yyyy.MM.dd"));
    case 2: return date.toString(QStringLiteral("yyyy/MM/dd"));
    case 3: return date.toString(QStringLiteral("M/d"));
    default: return date.toString(QStringLiteral("yy.MM.dd"));
    }
}

QByteArray DrawRecord(const Node& vRecord, QSize vSize)
{
    switch (vRecord.kind) {
    case KindText:
        return DrawTextRecord(vRecord, vSize, TextOr(vRecord, u"Text", {}),
                              static_cast<quint32>(NumberOr(vRecord, u"ForeColor", 0)), false);
    case KindLink:
        return DrawTextRecord(vRecord, vSize, TextOr(vRecord, u"Caption", {}), Blue, true);
    case KindRectangle:
        return DrawRectangle(vRecord, vSize);
    case KindLine:
        return DrawLine(vRecord, vSize);
    case KindStamp:
        return DrawStamp(vRecord, vSize);
    case KindFusen:
        return DrawFusen(vRecord, vSize);
    default:
        return {};
    }
}

QByteArray DrawPicture(QByteArrayView vInfo, QByteArrayView vBits, QSize vPixels, QSize vSize)
{
    EmfWriter w = Begin(vSize);
    w.StretchDib(QRect(QPoint(0, 0), Window(vSize)), vInfo, vBits, vPixels);
    return w.Finish();
}

QByteArray DrawingFields(const QByteArray& vEmf, QSize vSize, const Compressor& vCompress)
{
    using emit::Int;
    using emit::Tagged;
    QByteArray stored = vCompress ? vCompress(vEmf) : QByteArray();
    // Stored as is when nothing is saved: a reader takes equal sizes for an uncompressed body.
    if (stored.isEmpty() || stored.size() >= vEmf.size())
        stored = vEmf;
    const QSize frame((vSize.width() + 99) / 100 * 100, (vSize.height() + 99) / 100 * 100);
    return Tagged(0, Int(4)) + Tagged(1, Int(vEmf.size())) + Tagged(4, Int(frame.width()))
        + Tagged(5, Int(frame.height())) + Tagged(13, Int(1)) + Tagged(16, Int(Logical(frame.width())))
        + Tagged(17, Int(Logical(frame.height()))) + Tagged(9, Int(stored.size())) + Tagged(6, stored);
}

} // namespace xdw::annot
