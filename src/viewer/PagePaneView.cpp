// Where the page lies in the pane: its scale for the size mode, the scroll bars, and the
// conversions between bitmap and client coordinates.
#include "viewer/PagePane.h"

#include <QResizeEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

void PagePane::UpdateLayout()
{
    // Showing or hiding a scroll bar resizes the viewport, which comes back here; the outer call
    // has already decided everything.
    if (layingOut_)
        return;
    layingOut_ = true;
    QScrollBar* hbar = horizontalScrollBar();
    QScrollBar* vbar = verticalScrollBar();
    const QPointF topLeft(hbar->value() / scale_, vbar->value() / scale_);

    const QSize full = maximumViewportSize();
    double scale = 1.0;
    QSize painted;
    QSize avail = full;
    if (HasBitmap()) {
        // The area without scroll bars decides, never the current viewport: so the outcome doesn't
        // depend on which bars happen to be showing, and showing them can't undo the decision.
        // A bar once needed stays: fitting the width beside a vertical bar may make the page
        // short enough to need none, and taking it away again would go round for ever.
        const int barWidth = vbar->sizeHint().width();
        const int barHeight = hbar->sizeHint().height();
        const double w = picture_.width();
        const double h = picture_.height();
        bool needV = false;
        bool needH = false;
        for (int round = 0; round < 3; ++round) {
            avail = QSize(std::max(1, full.width() - (needV ? barWidth : 0)),
                          std::max(1, full.height() - (needH ? barHeight : 0)));
            switch (sizeMode_) {
            case SizeFitWidth: scale = avail.width() / w; break;
            case SizeFitPage: scale = std::min(avail.width() / w, avail.height() / h); break;
            case SizeZoom: scale = zoomFactor_ / 100.0; break;
            default: scale = 1.0; break;
            }
            painted = QSize(std::max(1, int(std::lround(w * scale))), std::max(1, int(std::lround(h * scale))));
            const bool v = sizeMode_ != SizeFitPage && painted.height() > avail.height();
            const bool hz = sizeMode_ != SizeFitPage && sizeMode_ != SizeFitWidth && painted.width() > avail.width();
            if ((!v || needV) && (!hz || needH))
                break;
            needV = needV || v;
            needH = needH || hz;
        }
    }
    scale_ = scale;
    paintedSize_ = painted;
    const int hRange = std::max(0, painted.width() - avail.width());
    const int vRange = std::max(0, painted.height() - avail.height());
    hbar->setRange(0, hRange);
    vbar->setRange(0, vRange);
    hbar->setPageStep(avail.width());
    vbar->setPageStep(avail.height());
    // Qt shows a bar when its range isn't empty, but only once the event loop lays the pane out;
    // the client size is known now, so that placing a ruler right after a change is right.
    clientSize_ = QSize(full.width() - (vRange > 0 ? vbar->sizeHint().width() : 0),
                        full.height() - (hRange > 0 ? hbar->sizeHint().height() : 0));
    // The bitmap point at the top left stays there through a change of scale.
    hbar->setValue(int(std::lround(topLeft.x() * scale_)));
    vbar->setValue(int(std::lround(topLeft.y() * scale_)));
    layingOut_ = false;
}

QPoint PagePane::Origin() const
{
    // A page smaller than the client stands in its middle; a bigger one moves with the bars.
    const QSize client = clientSize_;
    const int x = paintedSize_.width() < client.width() ? (client.width() - paintedSize_.width()) / 2
                                                        : -horizontalScrollBar()->value();
    const int y = paintedSize_.height() < client.height() ? (client.height() - paintedSize_.height()) / 2
                                                          : -verticalScrollBar()->value();
    return {x, y};
}

QPoint PagePane::ScrollPosition() const
{
    return {int(std::lround(horizontalScrollBar()->value() / scale_)),
            int(std::lround(verticalScrollBar()->value() / scale_))};
}

void PagePane::SetScrollPosition(QPoint vPosition)
{
    SetScrollOffset(QPoint(int(std::lround(vPosition.x() * scale_)), int(std::lround(vPosition.y() * scale_))));
}

QPoint PagePane::ScrollOffset() const
{
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

void PagePane::SetScrollOffset(QPoint vOffset)
{
    // The bars keep the position in range.
    horizontalScrollBar()->setValue(vOffset.x());
    verticalScrollBar()->setValue(vOffset.y());
}

QPointF PagePane::BitmapToClient(QPointF vPoint) const { return QPointF(Origin()) + vPoint * scale_; }

QPointF PagePane::ClientToBitmap(QPointF vPoint) const { return (vPoint - QPointF(Origin())) / scale_; }

void PagePane::resizeEvent(QResizeEvent* vEvent)
{
    QAbstractScrollArea::resizeEvent(vEvent);
    UpdateLayout();
}

void PagePane::scrollContentsBy(int, int) { viewport()->update(); }

void PagePane::wheelEvent(QWheelEvent* vEvent)
{
    // The wheel with the right button held turns pages (the main window counts it); the page
    // must not scroll under it meanwhile.
    if (vEvent->buttons() & Qt::RightButton) {
        vEvent->ignore();
        return;
    }
    QAbstractScrollArea::wheelEvent(vEvent);
}
