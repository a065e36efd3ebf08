#include "engine/emf/Gdi.h"

#include <QPainter>

#include <cmath>

namespace emf {

namespace {

constexpr int kMaxSavedStates = 1024;

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

} // namespace emf
