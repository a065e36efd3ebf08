// Painting: the one scaled copy of the page and the grey around it.
#include "viewer/PagePane.h"

#include "viewer/PagePaneImage.h"

#include <QPaintEvent>
#include <QPainter>

namespace {

const QColor Background(128, 128, 128);

// What QPainter blits fastest, on white where the picture is transparent: a page has no
// background of its own, and the grey around it must not show through.
QImage Opaque(const QImage& vImage)
{
    if (!vImage.hasAlphaChannel())
        return vImage.convertToFormat(QImage::Format_RGB32);
    QImage out(vImage.size(), QImage::Format_RGB32);
    out.fill(Qt::white);
    QPainter painter(&out);
    painter.drawImage(0, 0, vImage);
    return out;
}

} // namespace

void PagePane::paintEvent(QPaintEvent* vEvent)
{
    QPainter painter(viewport());
    const QRect area = vEvent->rect();
    if (!HasBitmap()) {
        painter.fillRect(area, Background);
    } else {
        const ScaledCopy& copy = CurrentCopy();
        const QRect page(copy.at, copy.image.deviceIndependentSize().toSize());
        for (const QRect& r : QRegion(area).subtracted(QRegion(page)))
            painter.fillRect(r, Background);
        painter.drawImage(copy.at, copy.image);
    }
    painter.end();
    Q_EMIT Painted();
}

// The copy is made at device pixels: on a screen that scales by 2 a page at 100% gets two
// device pixels per page pixel, and a page fitted at 50% gets every pixel of the page, where a
// copy at the widget's own size would be blown up and blurred. Sizes and positions stay in the
// widget's pixels; only the copy's resolution follows the screen.
const PagePane::ScaledCopy& PagePane::CurrentCopy()
{
    const double ratio = viewport()->devicePixelRatioF();
    const bool reduced = scale_ * ratio < 1.0;
    const bool same = copy_.valid && copy_.scale == scale_ && copy_.paintedSize == paintedSize_
                      && copy_.scaling == scaling_ && copy_.gamma == gamma_ && copy_.reduced == reduced
                      && copy_.ratio == ratio;
    if (reduced) {
        if (!same)
            BuildReducedCopy(ratio);
        copy_.at = Origin();
    } else if (!same || copy_.origin != Origin() || copy_.clientSize != clientSize_) {
        BuildMagnifiedCopy(ratio);
    }
    return copy_;
}

void PagePane::BuildReducedCopy(double vRatio)
{
    const QSize device(std::max(1, int(std::lround(paintedSize_.width() * vRatio))),
                       std::max(1, int(std::lround(paintedSize_.height() * vRatio))));
    copy_.image = Opaque(scaling_ == ScalingFast
                             ? picture_.scaled(device, Qt::IgnoreAspectRatio, Qt::FastTransformation)
                             : pagepane::SmoothReduced(picture_, device));
    pagepane::ApplyGamma(copy_.image, gamma_);
    copy_.image.setDevicePixelRatio(vRatio);
    Remember(true, vRatio);
}

void PagePane::BuildMagnifiedCopy(double vRatio)
{
    const QPoint origin = Origin();
    const QRect visible = QRect(origin, paintedSize_).intersected(QRect(QPoint(0, 0), clientSize_));
    QImage image(visible.size() * vRatio, QImage::Format_RGB32);
    if (!image.isNull()) {
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, scaling_ != ScalingFast);
        painter.scale(vRatio, vRatio);
        painter.translate(origin - visible.topLeft());
        painter.scale(scale_, scale_);
        painter.drawImage(0, 0, picture_);
        painter.end();
        pagepane::ApplyGamma(image, gamma_);
        image.setDevicePixelRatio(vRatio);
    }
    copy_.image = image;
    copy_.at = visible.topLeft();
    copy_.origin = origin;
    copy_.clientSize = clientSize_;
    Remember(false, vRatio);
}

void PagePane::Remember(bool vReduced, double vRatio)
{
    copy_.ratio = vRatio;
    copy_.scale = scale_;
    copy_.paintedSize = paintedSize_;
    copy_.scaling = scaling_;
    copy_.gamma = gamma_;
    copy_.reduced = vReduced;
    copy_.valid = true;
    ++scaledBuilds_;
}
