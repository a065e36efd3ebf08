// Process, forms, controls and message boxes.
#include "support/CommonLibClass.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStatusBar>
#include <QTextEdit>
#include <QUrl>
#include <QWidget>

namespace {

const QString QuestionTitle = QStringLiteral("確認");
const QString ErrorTitle = QStringLiteral("エラーメッセージ");
const QString WarningTitle = QStringLiteral("警告メッセージ");
const QString InformationTitle = QStringLiteral("情報メッセージ");

MessagePresenter::Answer Show(MessagePresenter::Kind vKind, const QString& vTitle,
                              const QString& vText, MessagePresenter::Buttons vButtons)
{
    return MessagePresenter::Current().Present({vKind, vTitle, vText, vButtons});
}

QRect AvailableScreenOf(const QWidget* vWidget)
{
    const QScreen* screen = vWidget->screen();
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

// A local path, or a text that already names a scheme ("https://...", "mailto:...").
QUrl UrlOf(const QString& vPath)
{
    if (QFileInfo::exists(vPath))
        return QUrl::fromLocalFile(QFileInfo(vPath).absoluteFilePath());
    const QUrl url(vPath);
    if (url.scheme().size() > 1)  // one letter would be a drive, not a scheme
        return url;
    return QUrl::fromLocalFile(QFileInfo(vPath).absoluteFilePath());
}

} // namespace

CommonLibClass::CommonLibClass()
{
    timer_.start();
}

qint64 CommonLibClass::GetProcessId()
{
    return QCoreApplication::applicationPid();
}

void CommonLibClass::CenteringForm(QWidget* vForm)
{
    if (!vForm)
        return;
    const QRect screen = AvailableScreenOf(vForm);
    QRect frame = vForm->frameGeometry();
    frame.moveCenter(screen.center());
    vForm->move(frame.topLeft());
}

void CommonLibClass::CenteringFormOfOwner(QWidget* vForm, QWidget* vOwnerForm)
{
    if (!vForm)
        return;
    if (!vOwnerForm) {
        CenteringForm(vForm);
        return;
    }
    const QRect screen = AvailableScreenOf(vOwnerForm);
    QRect frame = vForm->frameGeometry();
    frame.moveCenter(vOwnerForm->frameGeometry().center());
    // The right and bottom edges first, so that a form larger than the screen keeps its title
    // bar (top left) in view.
    if (frame.right() > screen.right())
        frame.moveRight(screen.right());
    if (frame.bottom() > screen.bottom())
        frame.moveBottom(screen.bottom());
    if (frame.left() < screen.left())
        frame.moveLeft(screen.left());
    if (frame.top() < screen.top())
        frame.moveTop(screen.top());
    vForm->move(frame.topLeft());
}

void CommonLibClass::SelectText(QWidget* vControl)
{
    if (auto* line = qobject_cast<QLineEdit*>(vControl))
        line->selectAll();
    else if (auto* text = qobject_cast<QTextEdit*>(vControl))
        text->selectAll();
    else if (auto* plain = qobject_cast<QPlainTextEdit*>(vControl))
        plain->selectAll();
    else if (auto* spin = qobject_cast<QAbstractSpinBox*>(vControl))
        spin->selectAll();
    else if (auto* combo = qobject_cast<QComboBox*>(vControl); combo && combo->lineEdit())
        combo->lineEdit()->selectAll();
}

void CommonLibClass::PanelTextOut(QStatusBar* vStatusBar, int vPanelNo, const QString& vText)
{
    if (!vStatusBar || vPanelNo < 1)
        return;
    const QList<QLabel*> panels = vStatusBar->findChildren<QLabel*>(Qt::FindDirectChildrenOnly);
    if (vPanelNo <= panels.size())
        panels.at(vPanelNo - 1)->setText(vText);
}

bool CommonLibClass::QuickOpen(const QString& vPath)
{
    return QDesktopServices::openUrl(UrlOf(vPath));
}

bool CommonLibClass::ExploreOpen(const QString& vPath)
{
    const QUrl url = UrlOf(vPath);
    if (!url.isLocalFile())
        return QDesktopServices::openUrl(url);
    const QFileInfo info(url.toLocalFile());
    const QString folder = info.isDir() ? info.absoluteFilePath() : info.absolutePath();
    return QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

MessagePresenter::Answer CommonLibClass::QuestionBox(const QString& vMsg,
                                                     MessagePresenter::Buttons vYesNo)
{
    // A question always has Yes and No; Cancel only when asked for.
    if (vYesNo != MessagePresenter::Buttons::YesNoCancel)
        vYesNo = MessagePresenter::Buttons::YesNo;
    return Show(MessagePresenter::Kind::Question, QuestionTitle, vMsg, vYesNo);
}

void CommonLibClass::ErrMsgBox(const QString& vMsg)
{
    Show(MessagePresenter::Kind::Error, ErrorTitle, vMsg, MessagePresenter::Buttons::Ok);
}

void CommonLibClass::WorningMsgBox(const QString& vMsg)
{
    Show(MessagePresenter::Kind::Warning, WarningTitle, vMsg, MessagePresenter::Buttons::Ok);
}

void CommonLibClass::InformationMsgBox(const QString& vMsg)
{
    Show(MessagePresenter::Kind::Information, InformationTitle, vMsg, MessagePresenter::Buttons::Ok);
}
