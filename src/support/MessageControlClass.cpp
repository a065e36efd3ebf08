#include "support/MessageControlClass.h"

#include "support/MessagePresenter.h"
#include "support/UserFolder.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QStatusBar>
#include <QTextEdit>
#include <QTreeWidget>

namespace {

const QString kReference = QStringLiteral("Reference");
const QString kType = QStringLiteral("Type");
const QString kLogOut = QStringLiteral("LogOut");
const QString kSequence = QStringLiteral("Sequence");
const QString kLogFileName = QStringLiteral("LogFileName");
const QString kAll = QStringLiteral("ALL");

// A widget output is held weakly: a window that goes away takes its outputs with it.
struct WidgetRef {
    QPointer<QObject> object;
};

SDC ChildOrCreate(const SDC& vParent, const QString& vKey)
{
    return vParent->Exists(vKey) && vParent->Thread(vKey) ? vParent->Thread(vKey) : vParent->CreateThread(vKey);
}

SDC ChildOrNull(const SDC& vParent, const QString& vKey)
{
    return vParent && vParent->Exists(vKey) ? vParent->Thread(vKey) : nullptr;
}

QString Now(const QString& vFormat) { return QDateTime::currentDateTime().toString(vFormat); }

bool NewestFirst(const StructuredDataClass& vControl)
{
    return vControl.Exists(kSequence) && vControl.DataValue(kSequence) == QLatin1String("False");
}

} // namespace

MessageControlClass::MessageControlClass(QObject* vParent)
    : QObject(vParent), log_(std::make_unique<LogOutClass>()), outputContorol_(std::make_shared<StructuredDataClass>())
{
    const QString folder = DefaultLogFolder();
    logFileName_ = folder + QStringLiteral("/Log.txt");
    errLogFileName_ = folder + QStringLiteral("/ErrLog.txt");
}

MessageControlClass::~MessageControlClass()
{
    if (outputContorol_)
        outputContorol_->Clear();
}

QString MessageControlClass::DefaultLogFolder()
{
    const QString program = QCoreApplication::applicationDirPath();
    if (!program.isEmpty() && QFileInfo(program).isWritable())
        return program;
    return UserDataFolder();
}

QString MessageControlClass::Register(const QString& vCategory, const QString& vName, const AnyRef& vReference, int vType)
{
    const SDC control = ChildOrCreate(ChildOrCreate(outputContorol_, vCategory), vName)->CreateThread();
    control->AddReference(vReference, kReference);
    control->AddData(QString::number(vType), kType);
    return control->ObjectKey();
}

QString MessageControlClass::RegisterControl(const QString& vCategory, const QString& vName, QObject* vControl, int vType)
{
    return Register(vCategory, vName, std::make_shared<WidgetRef>(WidgetRef{vControl}), vType);
}

QString MessageControlClass::RegisterControl(const QString& vCategory, const QString& vName, const SDC& vList, int vType)
{
    return Register(vCategory, vName, AnyRef(vList), vType);
}

SDC MessageControlClass::ControlThread(const QString& vCategory, const QString& vName, const QString& vKey) const
{
    return ChildOrNull(ChildOrNull(ChildOrNull(outputContorol_, vCategory), vName), vKey);
}

void MessageControlClass::SetControlPropertyOfLog(const QString& vCategory, const QString& vName, const QString& vKey,
                                                  bool vLogOut)
{
    if (const SDC control = ControlThread(vCategory, vName, vKey))
        control->AddData(vLogOut ? QStringLiteral("True") : QStringLiteral("False"), kLogOut);
}

void MessageControlClass::SetControlPropertyOfListSequence(const QString& vCategory, const QString& vName,
                                                           const QString& vKey, const QString& vSequence)
{
    if (const SDC control = ControlThread(vCategory, vName, vKey))
        control->AddData(vSequence, kSequence);
}

void MessageControlClass::SetControlPropertyOfLogFileName(const QString& vCategory, const QString& vName,
                                                          const QString& vKey, const QString& vFileName)
{
    if (const SDC control = ControlThread(vCategory, vName, vKey))
        control->AddData(vFileName, kLogFileName);
}

void MessageControlClass::MessageOut(const QString& vMessage, const QString& vCategory, const QString& vStatus)
{
    const QString category = vCategory.isEmpty() ? controlReference_ : vCategory;
    const SDC outputs = ChildOrNull(outputContorol_, category);
    if (!outputs)
        return;
    if (const SDC byStatus = ChildOrNull(outputs, vStatus))
        MessageOutSub(byStatus, vMessage, category, vStatus);
    else if (const SDC all = ChildOrNull(outputs, kAll))
        MessageOutSub(all, vMessage, category, vStatus);
}

void MessageControlClass::MessageOutSub(const SDC& vControls, const QString& vMessage, const QString& vCategory,
                                        const QString& vStatus)
{
    for (qint16 i = 1; i <= vControls->Count(); ++i)
        if (const SDC control = vControls->ThreadOfNumber(i))
            OutputOne(*control, vMessage, vStatus);
    Q_EMIT eMessageOut(vStatus, vMessage, vCategory);
}

void MessageControlClass::OutputOne(const StructuredDataClass& vControl, const QString& vMessage, const QString& vStatus)
{
    const int type = vControl.DataValue(kType).toInt();
    const auto widget = vControl.DataReference(kReference).As<WidgetRef>();
    QObject* object = widget ? widget->object.data() : nullptr;
    switch (type) {
    case TypeLabel:
        if (auto* label = qobject_cast<QLabel*>(object)) {
            label->setText(vMessage);
            label->repaint();
        }
        break;
    case TypeMessageBox: {
        const bool error = vStatus == QLatin1String("ERR");
        MessagePresenter::Current().Present({error ? MessagePresenter::Kind::Error : MessagePresenter::Kind::Plain,
                                             error ? QStringLiteral("エラーメッセージ") : QStringLiteral("メッセージ"),
                                             vMessage, MessagePresenter::Buttons::Ok});
        break;
    }
    case TypeStatusBar:
        if (auto* bar = qobject_cast<QStatusBar*>(object))
            bar->showMessage(vMessage);
        break;
    case TypeTextBox:
        if (auto* line = qobject_cast<QLineEdit*>(object))
            line->setText(vMessage);
        else if (auto* plain = qobject_cast<QPlainTextEdit*>(object))
            plain->setPlainText(vMessage);
        else if (auto* rich = qobject_cast<QTextEdit*>(object))
            rich->setPlainText(vMessage);
        break;
    case TypeListBox:
        if (auto* list = qobject_cast<QListWidget*>(object)) {
            if (NewestFirst(vControl))
                list->insertItem(0, vMessage);
            else
                list->addItem(vMessage);
        }
        break;
    case TypeListView:
        if (auto* view = qobject_cast<QTreeWidget*>(object)) {
            const bool error = vStatus == QLatin1String("ERR");
            const bool warning = vStatus == QLatin1String("WAR");
            const QString word = error ? QStringLiteral("エラー") : warning ? QStringLiteral("警告") : QStringLiteral("情報");
            auto* item = new QTreeWidgetItem(
                {word, Now(QStringLiteral("yyyy/MM/dd")), Now(QStringLiteral("HH:mm:ss")), vMessage});
            // The icon numbers name pictures of the caller's own list; the item keeps the number.
            const qint16 icon = error ? errorIconNo_ : warning ? warningIconNo_ : normalIconNo_;
            if (icon != 0)
                item->setData(0, Qt::UserRole, icon);
            const bool newestFirst = NewestFirst(vControl);
            if (newestFirst)
                view->insertTopLevelItem(0, item);
            else
                view->addTopLevelItem(item);
            if (view->topLevelItemCount() > outputMaxLine_)
                delete view->takeTopLevelItem(newestFirst ? view->topLevelItemCount() - 1 : 0);
        }
        break;
    case TypeDataList:
        if (const SDC list = vControl.DataReference(kReference).As<StructuredDataClass>()) {
            const SDC row = NewestFirst(vControl) && list->Count() > 0 && list->Exists(QStringLiteral("1"))
                                ? list->CreateThread({}, QStringLiteral("1"))
                                : list->CreateThread();
            row->AddData(vMessage, QStringLiteral("Message"));
            row->AddData(vStatus, QStringLiteral("Status"));
            row->AddData(Now(QStringLiteral("yyyy/MM/dd HH:mm:ss")), QStringLiteral("DateTime"));
        }
        break;
    case TypeLog:
        if (vControl.Exists(kLogOut) && vControl.DataValue(kLogOut) == QLatin1String("True")) {
            QString file = vControl.Exists(kLogFileName) ? vControl.DataValue(kLogFileName) : QString();
            if (file.isEmpty())
                file = vStatus == QLatin1String("ERR") || vStatus == QLatin1String("WAR") ? errLogFileName_ : logFileName_;
            log_->SetLogFileName(file);
            log_->LogOut(Now(QStringLiteral("yyyy/MM/dd HH:mm:ss")) + QStringLiteral(" : ") + vMessage);
        }
        break;
    default:
        break;
    }
}

QList<QProgressBar*> MessageControlClass::ProgressBars(const QString& vCategory) const
{
    QList<QProgressBar*> bars;
    const SDC all = ChildOrNull(ChildOrNull(outputContorol_, vCategory), kAll);
    for (qint16 i = 1; all && i <= all->Count(); ++i) {
        const SDC control = all->ThreadOfNumber(i);
        const auto widget = control ? control->DataReference(kReference).As<WidgetRef>() : nullptr;
        if (widget && control->DataValue(kType).toInt() == TypeProgressBar)
            if (auto* bar = qobject_cast<QProgressBar*>(widget->object.data()))
                bars.append(bar);
    }
    return bars;
}

void MessageControlClass::ProgressStart(const QString& vCategory, qint32 vMaxCount)
{
    for (QProgressBar* bar : ProgressBars(vCategory)) {
        bar->setMaximum(vMaxCount == 0 ? 1 : vMaxCount);
        bar->setValue(0);
    }
    Q_EMIT eProgressStart(vMaxCount, vCategory);
}

void MessageControlClass::ProgressNext(const QString& vCategory)
{
    for (QProgressBar* bar : ProgressBars(vCategory))
        if (bar->value() + 1 <= bar->maximum())
            bar->setValue(bar->value() + 1);
    Q_EMIT eProgressNext(vCategory);
}
