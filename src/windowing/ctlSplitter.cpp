#include "windowing/ctlSplitter.h"

#include <QResizeEvent>

ctlSplitter::ctlSplitter(QWidget* vParent) : QSplitter(Qt::Horizontal, vParent)
{
    setChildrenCollapsible(false);
    connect(this, &QSplitter::splitterMoved, this, [this] { Q_EMIT BarMoved(); });
}

void ctlSplitter::SetBackColor(const QColor& v)
{
    backColor_ = v;
    setStyleSheet(QStringLiteral("QSplitter::handle { background: %1; }").arg(v.name()));
}

void ctlSplitter::SetMinWidth(qint32 v) { minWidth_ = v; ApplyLimits(); }
void ctlSplitter::SetMinHeight(qint32 v) { minHeight_ = v; ApplyLimits(); }
void ctlSplitter::SetMaxWidth(qint16 v) { maxWidth_ = v; ApplyLimits(); }
void ctlSplitter::SetMaxHeight(qint16 v) { maxHeight_ = v; ApplyLimits(); }

void ctlSplitter::NewChild(QWidget* vChild)
{
    addWidget(vChild);
    setStretchFactor(count() - 1, count() == 1 ? 0 : 1);  // the part behind the bar takes growth
    ApplyLimits();
}

int ctlSplitter::FirstSize() const
{
    const QList<int> parts = sizes();
    return parts.isEmpty() ? 0 : parts.first();
}

void ctlSplitter::ApplyLimits()
{
    if (count() < 1)
        return;
    QWidget* first = widget(0);
    const bool across = orientation() == Qt::Horizontal;
    const int minimum = across ? minWidth_ : minHeight_;
    const int maximum = across ? maxWidth_ : maxHeight_;
    if (across) {
        first->setMinimumWidth(minimum);
        first->setMaximumWidth(maximum > 0 ? maximum : QWIDGETSIZE_MAX);
    } else {
        first->setMinimumHeight(minimum);
        first->setMaximumHeight(maximum > 0 ? maximum : QWIDGETSIZE_MAX);
    }
}

void ctlSplitter::resizeEvent(QResizeEvent* vEvent)
{
    QSplitter::resizeEvent(vEvent);
    oldWidth_ = static_cast<float>(vEvent->size().width());
    oldHeight_ = static_cast<float>(vEvent->size().height());
}
