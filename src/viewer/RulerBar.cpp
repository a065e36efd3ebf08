// One ruler bar: a filled rectangle that hands the left button's drags to AppRulerCtrlClass.
#include "viewer/AppRulerCtrlClass.h"

#include "viewer/PagePane.h"

#include <QMouseEvent>
#include <QPainter>

RulerBar::RulerBar(AppRulerCtrlClass& vOwner, PagePane* vPane, const QString& vPaneName, qint16 vIndex, bool vVertical)
    : QWidget(vPane->viewport()), owner_(vOwner), pane_(vPane), paneName_(vPaneName), index_(vIndex),
      vertical_(vVertical)
{
    // Every pixel is filled, so nothing underneath has to be painted first.
    setAttribute(Qt::WA_OpaquePaintEvent);
    // The cursor tells which way the bar goes; it only ever moves across its length.
    setCursor(vertical_ ? Qt::SizeHorCursor : Qt::SizeVerCursor);
}

void RulerBar::SetBackColor(const QColor& vColor)
{
    if (vColor == backColor_)
        return;
    backColor_ = vColor;
    update();
}

void RulerBar::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), backColor_);
}

// Other buttons pass to the pane underneath, so that gestures started on a ruler still work.
void RulerBar::mousePressEvent(QMouseEvent* vEvent)
{
    if (vEvent->button() != Qt::LeftButton) {
        vEvent->ignore();
        return;
    }
    owner_.RulerMouseDown(*this, vEvent->globalPosition().toPoint());
}

void RulerBar::mouseMoveEvent(QMouseEvent* vEvent)
{
    if (!(vEvent->buttons() & Qt::LeftButton)) {
        // A release that never reached us (a popup took the pointer) ends the drag here.
        if (owner_.Dragging())
            owner_.RulerMouseUp();
        vEvent->ignore();
        return;
    }
    owner_.RulerMouseMove(*this, vEvent->globalPosition().toPoint());
}

void RulerBar::mouseReleaseEvent(QMouseEvent* vEvent)
{
    if (vEvent->button() != Qt::LeftButton) {
        vEvent->ignore();
        return;
    }
    owner_.RulerMouseUp();
}
