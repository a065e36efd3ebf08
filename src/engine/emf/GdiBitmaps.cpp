#include "engine/emf/Gdi.h"

#include <QPainter>

namespace emf {

// Bitmaps and blits: the raster operations printed pages use, on top of the painter's own mixes.

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
