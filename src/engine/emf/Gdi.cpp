#include "engine/emf/Gdi.h"

#include <QPainter>

#include <cmath>

namespace emf {

namespace {

constexpr int kMaxSavedStates = 1024;
constexpr int kMaxClipElements = 4096;

// GDI's stock objects, by the low bits of an index with the top bit set.
std::optional<Object> StockObject(quint32 vIndex)
{
    auto brush = [](QColor vColour, int vStyle = 0) { return Object(Brush{vStyle, 0, vColour, {}}); };
    auto pen = [](QColor vColour, int vStyle = 0) { return Object(Pen{vStyle, 0, 0, vColour}); };
    switch (vIndex & 0x7FFFFFFF) {
    case 0: case 18: return brush(Qt::white);
    case 1: return brush(QColor(0xC0, 0xC0, 0xC0));
    case 2: return brush(QColor(0x80, 0x80, 0x80));
    case 3: return brush(QColor(0x40, 0x40, 0x40));
    case 4: return brush(Qt::black);
    case 5: return brush(Qt::black, 1);
    case 6: return pen(Qt::white);
    case 7: case 19: return pen(Qt::black);
    case 8: return pen(Qt::black, 5);
    case 10: case 11: case 12: case 13: case 14: case 16: case 17: return Object(Font{});
    default: return std::nullopt;
    }
}

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

Gdi::Gdi(QPainter* vPainter, const QRectF& vTarget, const Frame& vFrame, const PlayOptions& vOptions)
    : painter_(vPainter), target_(vTarget), frame_(vFrame), options_(vOptions)
{
    if (!painter_)
        return;
    painter_->save();
    base_ = painter_->transform();
    baseClipping_ = painter_->hasClipping();
    if (baseClipping_)
        baseClip_ = painter_->clipPath();
}

Gdi::~Gdi()
{
    if (painter_)
        painter_->restore();
}

bool Gdi::Store(quint32 vIndex, Object vObject)
{
    if (vIndex >= objects_.size())
        return false;
    objects_[vIndex] = std::move(vObject);
    return true;
}

int Gdi::StoreFirstFree(Object vObject)
{
    for (size_t i = 0; i < objects_.size(); ++i)
        if (!objects_[i]) {
            objects_[i] = std::move(vObject);
            return int(i);
        }
    return -1;
}

bool Gdi::Select(quint32 vIndex)
{
    std::optional<Object> object;
    if (vIndex & 0x80000000)
        object = StockObject(vIndex);
    else if (vIndex < objects_.size())
        object = objects_[vIndex];
    else
        return false;
    if (!object)
        return true;   // an empty slot: Windows refuses the selection and keeps the old object
    if (auto* pen = std::get_if<Pen>(&*object))
        dc_.pen = *pen;
    else if (auto* brush = std::get_if<Brush>(&*object))
        dc_.brush = *brush;
    else if (auto* font = std::get_if<Font>(&*object))
        dc_.font = *font;
    return true;
}

bool Gdi::Delete(quint32 vIndex)
{
    if (vIndex & 0x80000000)
        return true;
    if (vIndex >= objects_.size())
        return false;
    objects_[vIndex].reset();
    return true;
}

bool Gdi::Save()
{
    if (saved_.size() >= kMaxSavedStates)
        return false;
    saved_.append(dc_);
    return true;
}

bool Gdi::Restore(qint32 vWhich)
{
    const qint64 index = vWhich < 0 ? saved_.size() + qint64(vWhich) : qint64(vWhich) - 1;
    if (index < 0 || index >= saved_.size())
        return false;
    dc_ = saved_[index];
    saved_.resize(index);
    clipDirty_ = true;
    return true;
}

QTransform Gdi::DeviceToTarget() const
{
    if (frame_.mapping == Mapping::Annotation)
        return PageToTarget();
    const QRectF& box = frame_.deviceBox;
    if (box.width() == 0 || box.height() == 0)
        return QTransform::fromTranslate(target_.x(), target_.y());
    return QTransform::fromTranslate(-box.x(), -box.y()) *
           QTransform::fromScale(target_.width() / box.width(), target_.height() / box.height()) *
           QTransform::fromTranslate(target_.x(), target_.y());
}

QTransform Gdi::PageToTarget() const
{
    if (frame_.mapping == Mapping::Annotation) {
        QRectF window = dc_.windowExtSet ? QRectF(dc_.windowOrg, dc_.windowExt) : frame_.fallbackWindow;
        if (window.width() == 0 || window.height() == 0)
            return QTransform::fromTranslate(target_.x(), target_.y());
        return QTransform::fromTranslate(-window.x(), -window.y()) *
               QTransform::fromScale(target_.width() / window.width(), target_.height() / window.height()) *
               QTransform::fromTranslate(target_.x(), target_.y());
    }
    double sx = 1, sy = 1;
    const double px = frame_.pixelsPerMm;
    switch (dc_.mapMode) {
    case 2: sx = px * 0.1, sy = -sx; break;           // tenths of a millimetre, y up
    case 3: sx = px * 0.01, sy = -sx; break;          // hundredths of a millimetre
    case 4: sx = px * 0.254, sy = -sx; break;         // hundredths of an inch
    case 5: sx = px * 0.0254, sy = -sx; break;        // thousandths of an inch
    case 6: sx = px * 25.4 / 1440, sy = -sx; break;   // twips
    case 7:
    case 8:
        if (dc_.windowExt.width() != 0 && dc_.windowExt.height() != 0) {
            sx = dc_.viewportExt.width() / dc_.windowExt.width();
            sy = dc_.viewportExt.height() / dc_.windowExt.height();
            if (dc_.mapMode == 7) {
                const double s = std::min(std::abs(sx), std::abs(sy));
                sx = std::copysign(s, sx), sy = std::copysign(s, sy);
            }
        }
        break;
    default: break;
    }
    return QTransform::fromTranslate(-dc_.windowOrg.x(), -dc_.windowOrg.y()) * QTransform::fromScale(sx, sy) *
           QTransform::fromTranslate(dc_.viewportOrg.x(), dc_.viewportOrg.y()) * DeviceToTarget();
}

// ---- painting ----

void Gdi::ApplyClip()
{
    painter_->setTransform(base_);
    if (baseClipping_)
        painter_->setClipPath(baseClip_);
    if (dc_.clip)
        painter_->setClipPath(*dc_.clip, baseClipping_ ? Qt::IntersectClip : Qt::ReplaceClip);
    else if (!baseClipping_)
        painter_->setClipping(false);
    clipDirty_ = false;
}

void Gdi::SetComposition()
{
    QPainter::CompositionMode mode = QPainter::CompositionMode_SourceOver;
    switch (dc_.rop2) {
    case 9: mode = QPainter::CompositionMode_Multiply; break;   // mask pen: a highlighter darkens
    case 7: mode = QPainter::RasterOp_SourceXorDestination; break;
    case 6: mode = QPainter::RasterOp_NotDestination; break;
    case 15: mode = QPainter::RasterOp_SourceOrDestination; break;
    default: break;
    }
    painter_->setCompositionMode(mode);
}

void Gdi::Prepare(const QTransform& vTransform)
{
    if (clipDirty_)
        ApplyClip();
    painter_->setTransform(vTransform * base_);
    SetComposition();
}

QPen Gdi::MakePen(double vScale) const
{
    const Pen& p = dc_.pen;
    if ((p.style & 0x0F) == 5)
        return Qt::NoPen;
    QPen pen(p.colour);
    // A zero width, or one thinner than a target pixel, is the one-pixel line Windows draws.
    if (p.width <= 0 || p.width * vScale < 1) {
        pen.setWidth(0);
        pen.setCosmetic(true);
    } else {
        pen.setWidthF(p.width);
    }
    switch (p.style & 0x0F) {
    case 1: pen.setStyle(Qt::DashLine); break;
    case 2: pen.setStyle(Qt::DotLine); break;
    case 3: pen.setStyle(Qt::DashDotLine); break;
    case 4: pen.setStyle(Qt::DashDotDotLine); break;
    default: break;
    }
    const quint32 cap = p.flags & 0x0F00, join = p.flags & 0xF000;
    pen.setCapStyle(cap == 0x100 ? Qt::SquareCap : cap == 0x200 ? Qt::FlatCap : Qt::RoundCap);
    pen.setJoinStyle(join == 0x1000 ? Qt::BevelJoin : join == 0x2000 ? Qt::MiterJoin : Qt::RoundJoin);
    return pen;
}

QBrush Gdi::MakeBrush() const
{
    const Brush& b = dc_.brush;
    switch (b.style) {
    case 1: return Qt::NoBrush;
    case 2: {
        static constexpr Qt::BrushStyle kHatches[] = {Qt::HorPattern, Qt::VerPattern, Qt::FDiagPattern,
                                                      Qt::BDiagPattern, Qt::CrossPattern, Qt::DiagCrossPattern};
        return b.hatch >= 0 && b.hatch < 6 ? QBrush(b.colour, kHatches[b.hatch]) : QBrush(b.colour);
    }
    case 3: case 5: case 6:
        return b.pattern.isNull() ? QBrush(b.colour) : QBrush(b.pattern);
    default: return QBrush(b.colour);
    }
}

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
    if (vContinue && path_.elementCount() > 0)
        path_.connectPath(mapped);
    else
        path_.addPath(mapped);
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

// ---- bitmaps ----

void Gdi::Bitmap(const QRectF& vDest, const QImage& vImage, const QRectF& vSource, quint32 vRop)
{
    if (!painter_ || vImage.isNull() || recording_)
        return;
    const QRect source = vSource.normalized().toAlignedRect().intersected(vImage.rect());
    if (source.isEmpty() || vDest.width() == 0 || vDest.height() == 0)
        return;
    QImage part = vImage.copy(source).mirrored(vDest.width() < 0, vDest.height() < 0);
    QPainter::CompositionMode mode = QPainter::CompositionMode_SourceOver;
    QColor under;   // what skipped run-length pixels stand for under a raster operation
    switch (vRop) {
    case 0x8800C6: mode = QPainter::RasterOp_SourceAndDestination, under = Qt::white; break;
    case 0xEE0086: mode = QPainter::RasterOp_SourceOrDestination, under = Qt::black; break;
    case 0x660046: mode = QPainter::RasterOp_SourceXorDestination, under = Qt::black; break;
    case 0x330008: part = part.convertToFormat(QImage::Format_RGB32), part.invertPixels(); break;
    case 0xB8074A: {
        // A stencil: the black pixels take the brush colour, the rest leaves the page alone.
        QImage stencil(part.size(), QImage::Format_ARGB32);
        const QRgb ink = dc_.brush.colour.rgb();
        const QImage rgb = part.convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < rgb.height(); ++y) {
            const auto* in = reinterpret_cast<const QRgb*>(rgb.constScanLine(y));
            auto* out = reinterpret_cast<QRgb*>(stencil.scanLine(y));
            for (int x = 0; x < rgb.width(); ++x)
                out[x] = qAlpha(in[x]) > 127 && qGray(in[x]) < 128 ? ink : 0;
        }
        part = stencil;
        break;
    }
    default: break;
    }
    if (under.isValid() && part.hasAlphaChannel()) {
        QImage flat(part.size(), QImage::Format_RGB32);
        flat.fill(under);
        QPainter(&flat).drawImage(0, 0, part);
        part = flat;
    }
    Prepare(LogicalToTarget());
    painter_->setCompositionMode(mode);
    painter_->drawImage(vDest.normalized(), part);
}

void Gdi::PatternBlt(const QRectF& vDest, quint32 vRop)
{
    if (!painter_ || recording_)
        return;
    Prepare(LogicalToTarget());
    painter_->setCompositionMode(QPainter::CompositionMode_SourceOver);   // the pen's mix is no blit's
    const QRectF dest = vDest.normalized();
    switch (vRop) {
    case 0x000042: painter_->fillRect(dest, Qt::black); break;
    case 0xFF0062: painter_->fillRect(dest, Qt::white); break;
    case 0xAA0029: break;
    case 0x550009:
        painter_->setCompositionMode(QPainter::RasterOp_NotDestination);
        painter_->fillRect(dest, Qt::black);
        break;
    case 0x5A0049:
        painter_->setCompositionMode(QPainter::RasterOp_SourceXorDestination);
        painter_->fillRect(dest, MakeBrush());
        break;
    default:
        if (dc_.brush.style != 1)
            painter_->fillRect(dest, MakeBrush());
        break;
    }
}

} // namespace emf
