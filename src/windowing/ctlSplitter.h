#pragma once
// A bar dividing its area between two children: the first before the bar, the second behind it.
// Qt's splitter does the dragging and the layout; this keeps the properties the Windows control
// has, so that a form sets them as it always did, and tells its form when the bar has moved.

#include <QColor>
#include <QSplitter>

class ctlSplitter : public QSplitter {
    Q_OBJECT
public:
    explicit ctlSplitter(QWidget* vParent = nullptr);

    QColor BackColor() const { return backColor_; }
    void SetBackColor(const QColor& v);
    // The first child keeps at least MinWidth (side by side) or MinHeight (stacked) pixels, and
    // at most MaxWidth or MaxHeight when those are above 0.
    qint32 MinWidth() const { return minWidth_; }
    void SetMinWidth(qint32 v);
    qint32 MinHeight() const { return minHeight_; }
    void SetMinHeight(qint32 v);
    qint16 MaxWidth() const { return maxWidth_; }
    void SetMaxWidth(qint16 v);
    qint16 MaxHeight() const { return maxHeight_; }
    void SetMaxHeight(qint16 v);
    bool Enabled() const { return isEnabled(); }
    void SetEnabled(bool v) { setEnabled(v); }
    // 0: children side by side with an upright bar; 1: one above the other.
    qint32 Orientation() const { return orientation() == Qt::Horizontal ? 0 : 1; }
    void SetOrientation(qint32 v) { setOrientation(v == 0 ? Qt::Horizontal : Qt::Vertical); }
    float BarSize() const { return static_cast<float>(handleWidth()); }
    void SetBarSize(float v) { setHandleWidth(static_cast<int>(v)); }
    float OldWidth() const { return oldWidth_; }
    float OldHeight() const { return oldHeight_; }

    // A child has been placed in the control: it takes the next place, first before the bar.
    void NewChild(QWidget* vChild);
    // The size of the part before the bar, along the bar's axis, in pixels.
    int FirstSize() const;

Q_SIGNALS:
    void BarMoved();

protected:
    void resizeEvent(QResizeEvent* vEvent) override;

private:
    void ApplyLimits();

    QColor backColor_;
    qint32 minWidth_ = 0;
    qint32 minHeight_ = 0;
    qint16 maxWidth_ = 0;
    qint16 maxHeight_ = 0;
    float oldWidth_ = 0;
    float oldHeight_ = 0;
};
