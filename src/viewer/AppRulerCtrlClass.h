#pragma once
// The rulers: movable coloured bars laid over a page as reading aids. Each is a small widget on
// the viewport of a page pane, so it is painted by Qt over the page and takes its own mouse
// events; it costs one rectangle fill and never touches the page picture.
//
// A ruler remembers where it is in BITMAP pixels, never on the screen: after a zoom or a scroll
// the pane paints, the paint re-lays every ruler of that pane from its bitmap position, and the
// ruler stays on the same line of text. A spread has its own rulers in each pane, so one command
// there gives two rulers that move independently.
//
// Data: one thread per pane ("Main", "Left", "Right"), in it one thread per ruler keyed with the
// number the tree gave it, holding "Ruler" (the bar), "Type" ("Horizon" or "Vertical"), "Top" or
// "Left" (the bitmap position as the text of a 32-bit float), and "MouseX", "MouseY" (the
// pointer's screen position during a drag).
//
// Measures: RulerWidth is the bar's thickness in screen pixels, the same at every zoom, as a
// reading aid should be; its long side follows the page. RulerColor is a Windows colour number,
// red in the low byte, as the settings file keeps it.

#include "store/StructuredDataClass.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

class AppRulerCtrlClass;
class PagePane;

// One ruler. The pane's viewport owns it as a Qt child; "Ruler" in Data holds it through a
// RulerHandle, which unloads it when the entry goes.
class RulerBar : public QWidget {
    Q_OBJECT
public:
    RulerBar(AppRulerCtrlClass& vOwner, PagePane* vPane, const QString& vPaneName, qint16 vIndex, bool vVertical);

    PagePane* Pane() const { return pane_; }
    QString PaneName() const { return paneName_; }
    qint16 Index() const { return index_; }
    bool IsVertical() const { return vertical_; }
    QColor BackColor() const { return backColor_; }
    void SetBackColor(const QColor& vColor);

protected:
    void paintEvent(QPaintEvent* vEvent) override;
    void mousePressEvent(QMouseEvent* vEvent) override;
    void mouseMoveEvent(QMouseEvent* vEvent) override;
    void mouseReleaseEvent(QMouseEvent* vEvent) override;

private:
    AppRulerCtrlClass& owner_;
    PagePane* pane_;
    QString paneName_;
    qint16 index_;
    bool vertical_;
    QColor backColor_;
};

struct RulerHandle {
    QPointer<RulerBar> Bar;  // null once the pane has gone and taken its rulers along
    explicit RulerHandle(RulerBar* vBar) : Bar(vBar) {}
    ~RulerHandle() { delete Bar.data(); }
    RulerHandle(const RulerHandle&) = delete;
    RulerHandle& operator=(const RulerHandle&) = delete;
};

class AppRulerCtrlClass : public QObject {
    Q_OBJECT
public:
    static inline const QString Horizon = QStringLiteral("Horizon");
    static inline const QString Vertical = QStringLiteral("Vertical");

    // vForm is the main window; the rulers live as long as it does.
    explicit AppRulerCtrlClass(QWidget* vForm);
    ~AppRulerCtrlClass() override;

    SDC Data() const { return data_; }
    QWidget* Form() const { return form_; }
    void SetForm(QWidget* vForm) { form_ = vForm; }
    // The object name given to the next AddRuler's bar: "leadRuler", "leadRulerL", "leadRulerR".
    QString RulerControl() const { return rulerControl_; }
    void SetRulerControl(const QString& vName) { rulerControl_ = vName; }
    qint32 RulerWidth() const { return rulerWidth_; }
    void SetRulerWidth(qint32 vWidth) { rulerWidth_ = vWidth; }
    qint32 RulerColor() const { return rulerColor_; }
    void SetRulerColor(qint32 vColor) { rulerColor_ = vColor; }

    // txtRulerWidth "Text" and picRulerColor "BackColor" of "\ウインドウ\": at start-up and after
    // the options dialog. A missing group keeps what is held; a missing control raises 91 and a
    // value that is no number 13, as the window's other settings readers do.
    void ReadSettings(const SDC& vDetailSet);

    // Each pane re-lays its rulers whenever it has painted, except while a ruler is dragged:
    // then the bar follows the pointer and the paints it causes must not pull it back.
    void SetPane(const QString& vName, PagePane* vPane);

    // vType 0 horizontal, 1 vertical, another number adds nothing. The new ruler lies across
    // the middle of the page; returns its index, 0 when none was added.
    qint16 AddRuler(PagePane* vPane, const QString& vName, int vType);
    void UpdateRuler(PagePane* vPane, const QString& vName);
    // Drags ruler vIndex of vName to the pointer's screen position vX, vY, across its length only.
    void MoveRuler(PagePane* vPane, const QString& vName, qint16 vIndex, int vX, int vY);
    void AllDeleteRuler();

    RulerBar* Ruler(const QString& vName, qint16 vIndex) const;
    bool Dragging() const { return dragging_; }

    // What a bar reports of the pointer, in screen pixels.
    void RulerMouseDown(RulerBar& vBar, QPoint vScreen);
    void RulerMouseMove(RulerBar& vBar, QPoint vScreen);
    void RulerMouseUp();

    // A Windows colour number as a colour: red in the low byte, then green and blue. The high
    // byte (system colour flags) is not ours to interpret and is ignored.
    static QColor ColorOfNumber(qint32 vColor);

private:
    SDC PaneThread(const QString& vName) const;  // null when absent
    SDC RulerThread(const QString& vName, qint16 vIndex) const;
    void Lay(RulerBar& vBar, const StructuredDataClass& vRuler) const;

    SDC data_;
    QPointer<QWidget> form_;
    QString rulerControl_ = QStringLiteral("leadRuler");
    qint32 rulerWidth_ = 100;
    qint32 rulerColor_ = 65280;
    bool dragging_ = false;
};
