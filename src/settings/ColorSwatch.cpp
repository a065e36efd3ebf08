#include "settings/ColorSwatch.h"

#include <QMouseEvent>

ColorSwatch::ColorSwatch(QWidget* vParent) : QFrame(vParent)
{
    setFrameShape(QFrame::Box);
    setAutoFillBackground(true);
    setCursor(Qt::PointingHandCursor);
    SetBackColor(0);
}

void ColorSwatch::SetBackColor(qint32 vColor)
{
    backColor_ = vColor;
    QPalette p = palette();
    p.setColor(QPalette::Window, ToColor(vColor));
    setPalette(p);
    update();
}

QColor ColorSwatch::ToColor(qint32 vColor)
{
    return QColor(vColor & 0xFF, (vColor >> 8) & 0xFF, (vColor >> 16) & 0xFF);
}

qint32 ColorSwatch::FromColor(const QColor& vColor)
{
    return vColor.red() | (vColor.green() << 8) | (vColor.blue() << 16);
}

void ColorSwatch::mouseReleaseEvent(QMouseEvent* vEvent)
{
    if (vEvent->button() == Qt::LeftButton && rect().contains(vEvent->position().toPoint()))
        Q_EMIT clicked();
    QFrame::mouseReleaseEvent(vEvent);
}
