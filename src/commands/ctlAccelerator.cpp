#include "commands/ctlAccelerator.h"

#include "commands/KeyEventCodes.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QApplication>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QWindow>

ctlAccelerator::ctlAccelerator(QWidget* vOwner, QObject* vParent)
    : QObject(vParent), owner_(vOwner)
{
}

ctlAccelerator::~ctlAccelerator()
{
    Watch(false);
}

QString ctlAccelerator::PropertyName(qint32 vShift, qint16 vKeycode)
{
    return QStringLiteral("vuaccel") + QString::number(vShift) + QString::number(vKeycode);
}

int ctlAccelerator::IndexOfKey(const QString& vKey) const
{
    for (size_t i = 0; i < records_.size(); ++i) {
        if (records_[i].Key == vKey)
            return static_cast<int>(i);
    }
    return -1;
}

void ctlAccelerator::Add(const QString& vKey, qint32 vShift, qint16 vKeycode, qint32 vAccelType,
                         QObject* vTarget, qint32 vTargetId)
{
    const QString property = PropertyName(vShift, vKeycode);
    if (IndexOfKey(vKey) >= 0 || vKeycode == 0 || properties_.contains(property))
        return;
    records_.push_back({vAccelType, vShift, vKeycode, vTarget, vTargetId, 0, vKey});
    properties_.insert(property, Count());
    // A menu item shows its key behind a tab, as menus show their shortcuts.
    auto* item = qobject_cast<QAction*>(vTarget);
    if (item && (vAccelType == AccelMenu || vAccelType == AccelMenuItem))
        item->setText(item->text().section(u'\t', 0, 0) + u'\t' + vKey);
    Watch(true);
}

void ctlAccelerator::Remove(const QString& vKey)
{
    const int index = IndexOfKey(vKey);
    if (index < 0)
        return;
    records_.erase(records_.begin() + index);
    properties_.clear();
    for (int no = 1; no <= Count(); ++no)
        properties_.insert(PropertyName(records_[no - 1].Shift, records_[no - 1].Keycode), no);
    if (records_.empty())
        Watch(false);
}

qint16 ctlAccelerator::Keycode(const QString& vKey) const
{
    const int index = IndexOfKey(vKey);
    return index < 0 ? 0 : records_[index].Keycode;
}

qint32 ctlAccelerator::Shift(const QString& vKey) const
{
    const int index = IndexOfKey(vKey);
    return index < 0 ? 0 : records_[index].Shift;
}

int ctlAccelerator::RecordNumber(qint32 vShift, qint16 vKeycode) const
{
    const int no = properties_.value(PropertyName(vShift, vKeycode), 0);
    return no >= 1 && no <= Count() ? no : 0;
}

void ctlAccelerator::Watch(bool vOn)
{
    if (vOn == watching_ || !qApp)
        return;
    if (vOn)
        qApp->installEventFilter(this);
    else
        qApp->removeEventFilter(this);
    watching_ = vOn;
}

bool ctlAccelerator::OwnerIsActive(QObject* vReceiver) const
{
    if (!owner_)
        return false;
    QWidget* window = owner_->window();
    return window->windowHandle() == vReceiver && QApplication::activeWindow() == window;
}

bool ctlAccelerator::eventFilter(QObject* vWatched, QEvent* vEvent)
{
    if (vEvent->type() == QEvent::ShortcutOverride) {
        // Qt offers a key to the window's own shortcuts (the menu bar's Alt letters) before the
        // window sees it. A registered combination claims it, so that it arrives as a key press.
        auto* widget = qobject_cast<QWidget*>(vWatched);
        auto& key = static_cast<QKeyEvent&>(*vEvent);
        if (!widget || !OwnerIsActive(widget->window()->windowHandle()) ||
            !RecordNumber(keyeventcodes::PressedMask(key), keyeventcodes::VirtualKeyCode(key)))
            return false;
        key.accept();
        return true;
    }
    // A key event travels on from the window to the focused control; it is counted once, where
    // it enters the window.
    if (vEvent->type() != QEvent::KeyPress || !vWatched->isWindowType() ||
        !OwnerIsActive(vWatched))
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*vEvent);
    return KeyDown(keyeventcodes::PressedMask(key), keyeventcodes::VirtualKeyCode(key));
}

bool ctlAccelerator::KeyDown(qint32 vShift, qint16 vKeycode)
{
    // An action may pump messages; a key pressed meanwhile must not start a second one inside it.
    if (busy_)
        return false;
    busy_ = true;
    const auto idle = qScopeGuard([this] { busy_ = false; });
    const int no = RecordNumber(vShift, vKeycode);
    // A copy: the action may rebuild the registrations while it runs.
    return no > 0 && Perform(Record(records_[no - 1]));
}

// Where the user types, a bound key still fires but the text box gets the key as well, so the
// arrows and BackSpace keep editing the move amount. Anywhere else the key was meant for the
// binding alone: handed on, Right would also switch the tab of a focused tab strip.
bool ctlAccelerator::FocusTakesText()
{
    QWidget* focus = QApplication::focusWidget();
    if (!focus)
        return false;
    if (auto* combo = qobject_cast<QComboBox*>(focus))
        return combo->isEditable();
    return qobject_cast<QLineEdit*>(focus) || qobject_cast<QAbstractSpinBox*>(focus) ||
           qobject_cast<QTextEdit*>(focus) || qobject_cast<QPlainTextEdit*>(focus);
}

bool ctlAccelerator::Perform(const Record& vRecord)
{
    switch (vRecord.AccelType) {
    case AccelEvent: {
        bool cancel = false;
        if (handler_)
            handler_(vRecord.Key, vRecord.Shift, vRecord.Keycode, cancel);
        return cancel || !FocusTakesText();
    }
    case AccelButton:
        if (auto* button = qobject_cast<QAbstractButton*>(vRecord.Target.data());
            button && button->isEnabled()) {
            button->click();
            return true;
        }
        return false;
    case AccelMenu:
    case AccelMenuItem:
        if (auto* item = qobject_cast<QAction*>(vRecord.Target.data()); item && item->isEnabled()) {
            item->trigger();
            return true;
        }
        return false;
    case AccelSystem:
        if (auto* window = qobject_cast<QWidget*>(vRecord.Target.data())) {
            switch (vRecord.TargetId) {
            case 0xF020: window->showMinimized(); return true;
            case 0xF030: window->showMaximized(); return true;
            case 0xF060: window->close(); return true;
            case 0xF120: window->showNormal(); return true;
            default: break;
            }
        }
        return false;
    default:
        return false;
    }
}
