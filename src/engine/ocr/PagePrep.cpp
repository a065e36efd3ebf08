#include "engine/ocr/PagePrep.h"

#include <leptonica/allheaders.h>

#include <QPointF>
#include <QPolygonF>
#include <QTransform>

#include <cmath>
#include <cstring>
#include <numbers>

namespace ocr {

namespace {

// Below this the turn would move no pixel of a page's width by more than a few; above the
// confidence a measured skew is trusted. Both as Leptonica's own deskewing has them.
constexpr float kMinSkewDegrees = 0.1f;
constexpr float kMinSkewConfidence = 3.0f;
// Grey levels up to this count as ink when measuring skew and finding specks.
constexpr int kInkThreshold = 128;

PixPtr Binary(Pix* vGray)
{
    return PixPtr(pixConvertTo1(vGray, kInkThreshold));
}

void RemoveSpecks(Pix* vGray, int vSpeck)
{
    PixPtr ink = Binary(vGray);
    if (!ink)
        return;
    // Pieces of ink no larger than a speck either way, joined through their corners too, so
    // that the diagonal strokes of a small character stay one piece and stay.
    PixPtr specks(pixSelectBySize(ink.get(), vSpeck + 1, vSpeck + 1, 8, L_SELECT_IF_BOTH,
                                  L_SELECT_IF_LT, nullptr));
    if (specks)
        pixPaintThroughMask(vGray, specks.get(), 0, 0, 0xff);
}

} // namespace

void FreePix::operator()(Pix* vPix) const
{
    pixDestroy(&vPix);
}

PixPtr ToPix(const QImage& vGray, const QRect& vArea)
{
    PixPtr pix(pixCreate(vArea.width(), vArea.height(), 8));
    if (!pix)
        return pix;
    // Leptonica keeps pixels in 32-bit words, most significant byte first: copy the rows as
    // bytes, then put each word's bytes in order in one pass.
    const int wpl = pixGetWpl(pix.get());
    l_uint32* data = pixGetData(pix.get());
    for (int y = 0; y < vArea.height(); ++y) {
        const uchar* row = vGray.constScanLine(vArea.top() + y) + vArea.left();
        std::memcpy(data + static_cast<qsizetype>(y) * wpl, row, static_cast<size_t>(vArea.width()));
    }
    pixEndianByteSwap(pix.get());
    return pix;
}

Prepared Prepare(const QImage& vGray, const QRect& vArea, int vSpeck, bool vDeskew)
{
    Prepared p;
    p.area = vArea;
    p.pix = ToPix(vGray, vArea);
    p.turnedSize = vArea.size();
    if (!p.pix)
        return p;
    if (vSpeck > 0)
        RemoveSpecks(p.pix.get(), vSpeck);
    if (!vDeskew)
        return p;
    PixPtr ink = Binary(p.pix.get());
    float degrees = 0;
    float confidence = 0;
    if (!ink || pixFindSkew(ink.get(), &degrees, &confidence) != 0)
        return p;
    if (confidence < kMinSkewConfidence || std::fabs(degrees) < kMinSkewDegrees)
        return p;
    const double radians = degrees * std::numbers::pi / 180.0;
    // Given the area's size, the turned picture grows so that no corner is cut off.
    PixPtr turned(pixRotate(p.pix.get(), static_cast<float>(radians), L_ROTATE_AREA_MAP,
                            L_BRING_IN_WHITE, vArea.width(), vArea.height()));
    if (!turned)
        return p;
    p.turnedSize = QSize(pixGetWidth(turned.get()), pixGetHeight(turned.get()));
    p.pix = std::move(turned);
    p.angle = radians;
    return p;
}

QRect Prepared::ToPage(const QRect& vBox) const
{
    if (angle == 0)
        return vBox.translated(area.topLeft());
    // Both pictures turn about their centres: undo the turn about the turned picture's centre,
    // then place that centre on the area's.
    QTransform back;
    back.translate(area.left() + area.width() / 2.0, area.top() + area.height() / 2.0);
    back.rotateRadians(-angle);
    back.translate(-turnedSize.width() / 2.0, -turnedSize.height() / 2.0);
    // Box edges lie between pixels, so the turned edges are rounded to the nearest such line,
    // not outwards: a quarter turn must not grow a box by a pixel of rounding error.
    const QRectF mapped = back.map(QPolygonF(QRectF(vBox))).boundingRect();
    const QRect box(QPoint(qRound(mapped.left()), qRound(mapped.top())),
                    QPoint(qRound(mapped.right()) - 1, qRound(mapped.bottom()) - 1));
    return box.intersected(area);
}

} // namespace ocr
