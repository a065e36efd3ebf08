// frmMain: the pointer over the pages. The left button drags a page by hand; everything else
// (the right button's strokes and clicks, the side buttons, the wheel, double clicks) comes
// through the mouse tracker and runs the action the settings bind to it.
#include "viewer/frmMain.h"

#include "commands/AppCommandListClass.h"
#include "commands/clsMouseEvents.h"
#include "viewer/PagePane.h"
#include "viewer/TabStrip.h"

#include <QCursor>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QStatusBar>

void frmMain::CreateMouseEvents()
{
    mcMouse_ = std::make_unique<clsMouseEvents>();
    connect(mcMouse_.get(), &clsMouseEvents::MouseDown, this, &frmMain::mcMouse_MouseDown);
    connect(mcMouse_.get(), &clsMouseEvents::MouseUp, this, &frmMain::mcMouse_MouseUp);
    connect(mcMouse_.get(), &clsMouseEvents::MouseDblClick, this, &frmMain::mcMouse_MouseDblClick);
    connect(mcMouse_.get(), &clsMouseEvents::MouseWheelRotate, this, &frmMain::mcMouse_MouseWheelRotate);
    connect(mcMouse_.get(), &clsMouseEvents::OnActionMove, this, &frmMain::mcMouse_OnActionMove);
    connect(mcMouse_.get(), &clsMouseEvents::OnActionEnd, this, &frmMain::mcMouse_OnActionEnd);
    mcMouse_->SetTarget(winId());
}

void frmMain::ReleaseMouseEvents()
{
    if (!mcMouse_)
        return;
    mcMouse_->CallResetHook();
    mcMouse_.reset();
}

void frmMain::SetAcceleratorKey() { keys_->SetAcceleratorKey(*context_.DetailSet); }

void frmMain::RemoveAcceleratorKey() { keys_->RemoveAcceleratorKey(); }

void frmMain::RunTrigger(const QString& vTrigger)
{
    const QString action = context_.ActionOf(vTrigger);
    if (context_.Action && !action.isEmpty())
        context_.Action->ExecAction(action);
}

// ---- the panes' own events: dragging by hand, and the context menu --------------------------

bool frmMain::PaneMouseEvent(PagePane* vPane, QMouseEvent* vEvent)
{
    if (dialogOpen_)
        return false;
    // The panes report the left, right and middle buttons only, as the page control always did;
    // the side buttons reach the program through the tracker alone.
    int button = 0;
    switch (vEvent->button()) {
    case Qt::LeftButton: button = 1; break;
    case Qt::RightButton: button = 2; break;
    case Qt::MiddleButton: button = 4; break;
    case Qt::NoButton: break;  // a move
    default: return true;
    }
    switch (vEvent->type()) {
    case QEvent::MouseButtonPress:
        PaneMouseDown(vPane, button, vEvent->position());
        return true;
    case QEvent::MouseMove:
        if (vEvent->buttons() & Qt::LeftButton)
            PaneMouseMove(vPane, vEvent->position());
        return true;
    case QEvent::MouseButtonRelease:
        PaneMouseUp(vPane, button);
        return true;
    default:
        return false;
    }
}

void frmMain::PaneMouseDown(PagePane* vPane, int vButton, QPointF vAt)
{
    if (vButton != 1)
        return;
    dragActive_ = true;
    lastDrag_ = vAt;
    vPane->SetHandCursor(true);
}

// The page follows the hand pixel for pixel at every size; the pane keeps the position in range,
// and the next move is measured from where the pointer is now.
void frmMain::PaneMouseMove(PagePane* vPane, QPointF vAt)
{
    if (!dragActive_)
        return;
    const QPointF moved = lastDrag_ - vAt;
    vPane->SetScrollOffset(vPane->ScrollOffset() + moved.toPoint());
    lastDrag_ = vAt;
}

void frmMain::PaneMouseUp(PagePane* vPane, int vButton)
{
    if (vButton == 1) {
        dragActive_ = false;
        vPane->SetHandCursor(false);
        return;
    }
    // A right click that drew no gesture opens the popup menu.
    if (!gestureDone_ && mcMouse_)
        ShowPopupMenu(mcMouse_->x(), mcMouse_->y());
}

void frmMain::mouseReleaseEvent(QMouseEvent* vEvent)
{
    QMainWindow::mouseReleaseEvent(vEvent);
    // Beside the pages a right click always opens the popup menu, stroke or not. A release that
    // a child control (the tab strip, a bar) let pass up is not one on the window itself: the tab
    // strip shows its own menu.
    if (!dialogOpen_ && vEvent->button() == Qt::RightButton && !childAt(vEvent->position().toPoint()))
        ShowPopupMenu(vEvent->globalPosition().toPoint().x(), vEvent->globalPosition().toPoint().y());
}

void frmMain::keyReleaseEvent(QKeyEvent* vEvent)
{
    QMainWindow::keyReleaseEvent(vEvent);
    if (vEvent->key() == Qt::Key_Menu && !vEvent->isAutoRepeat()) {
        const QPoint at = QCursor::pos();
        ShowPopupMenu(at.x(), at.y());
    }
}

// ---- what the tracker reports ----------------------------------------------------------------

void frmMain::mcMouse_MouseDown(qint16 vButton, qint32)
{
    if (vButton == 0)
        gestureDone_ = false;
}

void frmMain::mcMouse_MouseDblClick(qint16 vButton, qint32)
{
    if (vButton == 1 && !dialogOpen_)
        RunTrigger(AppCommandListClass::MouseLeftDClick);
}

void frmMain::mcMouse_MouseUp(qint16 vButton, qint32)
{
    if (dialogOpen_)
        return;
    if (vButton == 2)
        RunTrigger(AppCommandListClass::MouseWheelClick);
    else if (vButton == 3)
        RunTrigger(AppCommandListClass::Mouse4thClick);
    else if (vButton == 4)
        RunTrigger(AppCommandListClass::Mouse5thClick);
}

// The wheel moves pages or tabs only while the right button is held; a plain wheel scrolls.
void frmMain::mcMouse_MouseWheelRotate(qint16 vButton, qint32)
{
    if (dialogOpen_ || tabMain_->Count() < 1 || !mcMouse_ || !mcMouse_->RightButton())
        return;
    const QString use = context_.ActionOf(AppCommandListClass::MouseRightWheel);
    if (use != AppActionClass::WheelMoveTab && use != AppActionClass::WheelMovePage)
        return;
    // Turning the wheel with the right button held is a stroke of its own: the release that ends
    // it is not a right click, and must not open the popup menu.
    gestureDone_ = true;
    if (use == AppActionClass::WheelMoveTab)
        WheelMoveTab(vButton);
    else
        WheelMovePage(vButton);
}

// Any four notches make one step, in the direction of the fourth: only the count matters, so a
// wheel that rattles back a notch doesn't undo a step.
void frmMain::WheelMovePage(qint16 vButton)
{
    --pageWheel_;
    if ((vButton != 5 && vButton != 6) || std::abs(pageWheel_) < 4)
        return;
    if (vButton == 5)
        PreviousPage();
    else
        NextPage();
    pageWheel_ = 0;
}

void frmMain::WheelMoveTab(qint16 vButton)
{
    const int position = tabMain_->SelectedIndex() + 1;
    const int count = tabMain_->Count();
    int target = 0;
    if (vButton == 6) {
        if (position >= count)
            return;
        if (std::abs(--tabWheel_) < 4)
            return;
        target = position + 1;
    } else if (vButton == 5) {
        if (position <= 1)
            return;
        if (std::abs(++tabWheel_) < 4)
            return;
        target = position - 1;
    } else {
        return;
    }
    tabMain_->SetSelectedKey(tabMain_->KeyAt(target - 1));
    SelectTab(tabMain_->SelectedKey());
    tabWheel_ = 0;
}

bool frmMain::IsMouseGestureEnabled() const
{
    const SDC& settings = context_.DetailSet;
    if (dialogOpen_ || !settings->Exists(AppCommandListClass::GestureGroup))
        return false;
    const SDC group = settings->Thread(AppCommandListClass::GestureGroup);
    const SDC check = group && group->Exists(QStringLiteral("chkMouseGesture"))
                          ? group->Thread(QStringLiteral("chkMouseGesture")) : nullptr;
    return check && check->DataValue(QStringLiteral("Value")) == QLatin1String("1");
}

void frmMain::mcMouse_OnActionMove(qint32, qint32)
{
    if (!mcMouse_ || !IsMouseGestureEnabled())
        return;
    gestureDone_ = true;
    const QString gesture = mcMouse_->GestureText();
    CommonLibClass::PanelTextOut(statusBar(), 1,
                                 QStringLiteral("マウスジェスチャ : ") + gesture + QLatin1Char(' ')
                                     + context_.ActionOf(gesture));
}

void frmMain::mcMouse_OnActionEnd(qint32)
{
    if (!mcMouse_ || !IsMouseGestureEnabled())
        return;
    const QString gesture = mcMouse_->GestureText();
    CommonLibClass::PanelTextOut(statusBar(), 1, QString());
    RunTrigger(gesture);
}
