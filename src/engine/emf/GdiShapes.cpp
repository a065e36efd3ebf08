#include "engine/emf/Gdi.h"

#include <QPainter>

#include <cmath>

namespace emf {

namespace {

constexpr int kMaxClipElements = 4096;

double Scale(const QTransform& vTransform)
{
    return std::sqrt(std::abs(vTransform.determinant()));
}

// The parametric angle, in Qt's degrees, of a point seen from the middle of an ellipse.
double AngleOf(const QRectF& vBox, QPointF vPoint)
{
    const QPointF c = vBox.center();
    const double rx = vBox.width() / 2, ry = vBox.height() / 2;
    if (rx == 0 || ry == 0)
        return 0;
    return std::atan2(-(vPoint.y() - c.y()) / ry, (vPoint.x() - c.x()) / rx) * 180 / M_PI;
}

} // namespace

void Gdi::Draw(const QPainterPath& vLogical, bool vStroke, bool vFill)
{
    if (recording_) {
        AddToPath(vLogical, false);
        return;
    }
    if (!painter_ || dc_.rop2 == 11)
        return;
    const QTransform t = LogicalToTarget();
    Prepare(t);
    QPainterPath path = vLogical;
    path.setFillRule(dc_.polyFillMode == 2 ? Qt::WindingFill : Qt::OddEvenFill);
    if (vFill && dc_.brush.style != 1) {
        if (dc_.brush.style == 2 && dc_.bkMode == 2)
            painter_->fillPath(path, dc_.bkColour);
        painter_->fillPath(path, MakeBrush());
    }
    if (vStroke) {
        const QPen pen = MakePen(Scale(t));
        if (pen.style() != Qt::NoPen)
            painter_->strokePath(path, pen);
    }
}

void Gdi::AddToPath(const QPainterPath& vLogical, bool vContinue)
{
    const QPainterPath mapped = LogicalToTarget().map(vLogical);
    if (!vContinue || path_.elementCount() == 0) {
        path_.addPath(mapped);
        return;
    }
    // The figure goes on from the current position, which the path already ends at. Qt's own
    // connectPath would drop a figure's opening move and join it to the previous figure.
    for (int i = 1; i < mapped.elementCount(); ++i) {
        const QPainterPath::Element e = mapped.elementAt(i);
        if (e.isMoveTo()) {
            path_.moveTo(e);
        } else if (e.isLineTo()) {
            path_.lineTo(e);
        } else if (i + 2 < mapped.elementCount()) {
            path_.cubicTo(e, mapped.elementAt(i + 1), mapped.elementAt(i + 2));
            i += 2;
        }
    }
}

void Gdi::MoveTo(QPointF vPoint)
{
    dc_.position = vPoint;
    if (recording_)
        path_.moveTo(LogicalToTarget().map(vPoint));
}

void Gdi::LineTo(QPointF vPoint)
{
    Polyline(QPolygonF{vPoint}, true);
}

void Gdi::Polyline(const QPolygonF& vPoints, bool vFromPosition)
{
    if (vPoints.isEmpty())
        return;
    QPainterPath line;
    line.moveTo(vFromPosition ? dc_.position : vPoints.first());
    for (qsizetype i = vFromPosition ? 0 : 1; i < vPoints.size(); ++i)
        line.lineTo(vPoints[i]);
    if (vFromPosition)
        dc_.position = vPoints.last();
    if (recording_)
        AddToPath(line, vFromPosition);
    else
        Draw(line, true, false);
}

void Gdi::PolyBezier(const QPolygonF& vPoints, bool vFromPosition)
{
    qsizetype i = vFromPosition ? 0 : 1;
    if (vPoints.size() < i + 3)
        return;
    QPainterPath curve;
    curve.moveTo(vFromPosition ? dc_.position : vPoints.first());
    for (; i + 2 < vPoints.size(); i += 3)
        curve.cubicTo(vPoints[i], vPoints[i + 1], vPoints[i + 2]);
    if (vFromPosition)
        dc_.position = curve.currentPosition();
    if (recording_)
        AddToPath(curve, vFromPosition);
    else
        Draw(curve, true, false);
}

void Gdi::Polygons(const QList<QPolygonF>& vPolygons)
{
    QPainterPath shape;
    for (const QPolygonF& polygon : vPolygons) {
        if (polygon.isEmpty())
            continue;
        shape.addPolygon(polygon);
        shape.closeSubpath();
    }
    Draw(shape, true, true);
}

void Gdi::Polylines(const QList<QPolygonF>& vLines)
{
    QPainterPath lines;
    for (const QPolygonF& line : vLines)
        if (!line.isEmpty())
            lines.addPolygon(line);
    Draw(lines, true, false);
}

void Gdi::Shape(const QPainterPath& vShape, bool vFilled)
{
    Draw(vShape, true, vFilled);
}

void Gdi::Arc(int vKind, const QRectF& vBox, QPointF vStart, QPointF vEnd)
{
    const QRectF box = vBox.normalized();
    const double from = AngleOf(box, vStart);
    double sweep = AngleOf(box, vEnd) - from;
    if (dc_.arcDirection == 2) {
        while (sweep >= 0) sweep -= 360;
    } else {
        while (sweep <= 0) sweep += 360;
    }
    QPainterPath arc;
    if (vKind == 2) {
        arc.moveTo(box.center());
        arc.arcTo(box, from, sweep);
        arc.closeSubpath();
    } else if (vKind == 3) {
        arc.moveTo(dc_.position);
        arc.arcTo(box, from, sweep);
        dc_.position = arc.currentPosition();
    } else {
        arc.arcMoveTo(box, from);
        arc.arcTo(box, from, sweep);
        if (vKind == 1)
            arc.closeSubpath();
    }
    if (recording_)
        AddToPath(arc, vKind == 3);
    else
        Draw(arc, true, vKind == 1 || vKind == 2);
}

void Gdi::SetPixel(QPointF vPoint, const QColor& vColour)
{
    if (!painter_ || recording_)
        return;
    Prepare(LogicalToTarget());
    painter_->fillRect(QRectF(vPoint, QSizeF(1, 1)), vColour);
}

// ---- paths and clip ----

void Gdi::BeginPath()
{
    path_ = {};
    recording_ = true;
}

void Gdi::CloseFigure()
{
    if (recording_)
        path_.closeSubpath();
}

void Gdi::FillPath(bool vStroke, bool vFill, bool vKeep)
{
    recording_ = false;
    QPainterPath path = vKeep ? path_ : std::exchange(path_, {});
    if (!painter_ || dc_.rop2 == 11)
        return;
    const double scale = Scale(LogicalToTarget());
    Prepare(QTransform());
    path.setFillRule(dc_.polyFillMode == 2 ? Qt::WindingFill : Qt::OddEvenFill);
    if (vFill && dc_.brush.style != 1)
        painter_->fillPath(path, MakeBrush());
    if (vStroke) {
        QPen pen = MakePen(scale);
        if (pen.style() != Qt::NoPen) {
            if (!pen.isCosmetic())
                pen.setWidthF(pen.widthF() * scale);
            painter_->strokePath(path, pen);
        }
    }
}

void Gdi::SelectClipPath(int vMode)
{
    recording_ = false;
    QPainterPath path = std::exchange(path_, {});
    path.setFillRule(dc_.polyFillMode == 2 ? Qt::WindingFill : Qt::OddEvenFill);
    CombineClip(path, vMode);
}

void Gdi::IntersectClip(const QRectF& vLogical)
{
    QPainterPath rect;
    rect.addRect(vLogical.normalized());
    CombineClip(LogicalToTarget().map(rect), 1);
}

void Gdi::ExcludeClip(const QRectF& vLogical)
{
    QPainterPath rect;
    rect.addRect(vLogical.normalized());
    CombineClip(LogicalToTarget().map(rect), 4);
}

void Gdi::CombineClip(const std::optional<QPainterPath>& vTarget, int vMode)
{
    clipDirty_ = true;
    if (vMode == 5 || !vTarget) {   // copy; no region at all means the whole surface
        dc_.clip = vMode == 5 ? vTarget : dc_.clip;
        return;
    }
    QPainterPath all;
    all.addRect(target_.adjusted(-1e6, -1e6, 1e6, 1e6));
    const QPainterPath current = dc_.clip ? *dc_.clip : all;
    switch (vMode) {
    case 1: dc_.clip = current.intersected(*vTarget); break;
    case 2: if (dc_.clip) dc_.clip = current.united(*vTarget); break;
    case 3: dc_.clip = current.subtracted(*vTarget).united(vTarget->subtracted(current)); break;
    case 4: dc_.clip = current.subtracted(*vTarget); break;
    default: break;
    }
    // Each combination costs more than the last; a drawing that piles up thousands of them gets
    // the box around its clip rather than an ever slower one.
    if (dc_.clip && dc_.clip->elementCount() > kMaxClipElements) {
        QPainterPath box;
        box.addRect(dc_.clip->boundingRect());
        dc_.clip = box;
    }
}

void Gdi::OffsetClip(QPointF vLogical)
{
    if (!dc_.clip)
        return;
    const QTransform t = LogicalToTarget();
    const QPointF d = t.map(vLogical) - t.map(QPointF());
    dc_.clip->translate(d);
    clipDirty_ = true;
}

} // namespace emf
