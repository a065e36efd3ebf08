#include "support/MessagePresenter.h"

#include <QApplication>
#include <QMessageBox>
#include <atomic>

namespace {

QMessageBoxPresenter& RealPresenter()
{
    static QMessageBoxPresenter presenter;
    return presenter;
}

std::atomic<MessagePresenter*>& CurrentSlot()
{
    static std::atomic<MessagePresenter*> current{&RealPresenter()};
    return current;
}

QMessageBox::Icon IconOf(MessagePresenter::Kind vKind)
{
    switch (vKind) {
    case MessagePresenter::Kind::Question: return QMessageBox::Question;
    case MessagePresenter::Kind::Error: return QMessageBox::Critical;
    case MessagePresenter::Kind::Warning: return QMessageBox::Warning;
    case MessagePresenter::Kind::Information: return QMessageBox::Information;
    case MessagePresenter::Kind::Plain: break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(MessagePresenter::Buttons vButtons)
{
    switch (vButtons) {
    case MessagePresenter::Buttons::YesNo: return QMessageBox::Yes | QMessageBox::No;
    case MessagePresenter::Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MessagePresenter::Buttons::Ok: break;
    }
    return QMessageBox::Ok;
}

} // namespace

MessagePresenter& MessagePresenter::Current()
{
    return *CurrentSlot().load();
}

MessagePresenter* MessagePresenter::Install(MessagePresenter* vPresenter)
{
    return CurrentSlot().exchange(vPresenter ? vPresenter : &RealPresenter());
}

MessagePresenter::Answer QMessageBoxPresenter::Present(const Message& vMessage)
{
    QMessageBox box(IconOf(vMessage.kind), vMessage.title, vMessage.text, ButtonsOf(vMessage.buttons),
                    QApplication::activeWindow());
    // The first button is the default one, as a user of the old boxes expects on Enter.
    if (vMessage.buttons != Buttons::Ok)
        box.setDefaultButton(QMessageBox::Yes);
    switch (box.exec()) {
    case QMessageBox::Yes: return Answer::Yes;
    case QMessageBox::No: return Answer::No;
    case QMessageBox::Cancel: return Answer::Cancel;
    default: break;
    }
    // A question closed without a choice counts as its way out: Cancel where there is one, else No.
    if (vMessage.buttons == Buttons::YesNoCancel)
        return Answer::Cancel;
    return vMessage.buttons == Buttons::YesNo ? Answer::No : Answer::Ok;
}
