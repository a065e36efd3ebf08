// A sibling product for the tests: a real plugin, loaded as the viewer loads the sibling's, that
// writes down what it is given into the file named by MQ_SIBLING_RECORD and runs a process on the
// file list. Its processes: P1 "月次整理", P2 "印刷"; P2 fails with an exception when run.
#include "commands/AppArrangementClass.h"

#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <QProcess>

#include <stdexcept>

namespace {

void Record(const QString& vLine)
{
    QFile file(qEnvironmentVariable("MQ_SIBLING_RECORD"));
    if (file.open(QIODevice::Append))
        file.write((vLine + QLatin1Char('\n')).toUtf8());
}

class Messages : public BrackenfoldMessages {
public:
    void RegisterControl(const QString& vCategory, QObject* vControl, int vType, const QString& vStatus) override
    {
        Record(QStringLiteral("msg=%1,%2,%3,%4").arg(vCategory).arg(vType).arg(vStatus).arg(vControl ? 1 : 0));
        if (vControl && vType == 4)
            panel_ = vControl;
    }
    void SetControlPropertyOfLog(const QString& vCategory, const QVariant& vLogOut, const QString& vStatus) override
    {
        Record(QStringLiteral("log=%1,%2,%3").arg(vCategory, vLogOut.toString(), vStatus));
    }
    void Say(const QString& vText)
    {
        if (panel_)
            panel_->setProperty("text", vText);
    }

private:
    QPointer<QObject> panel_;
};

class Sibling : public BrackenfoldObject {
public:
    void DefaultLoadSetting() override { Record(QStringLiteral("loaded")); }
    SDC GetProcList() override
    {
        auto list = std::make_shared<StructuredDataClass>();
        list->AddData(QStringLiteral("月次整理"), QStringLiteral("P1"));
        list->AddData(QStringLiteral("印刷"), QStringLiteral("P2"));
        return list;
    }
    QString SearchProcName(const QString& vName) override
    {
        return vName == QStringLiteral("月次整理") ? QStringLiteral("P1") : QStringLiteral("P2");
    }
    void SetLogSet(const QString& vKey) override { Record(QStringLiteral("logset=") + vKey); }
    BrackenfoldMessages& Msg() override { return messages_; }
    QVariant GetLogOut(const QString&) override { return QStringLiteral("True"); }
    SDC FileList() override { return files_; }
    void ClearExecData() override { Record(QStringLiteral("clear")); }
    void EntryExecProc(const QString& vKey) override { key_ = vKey; }
    void ExecProc() override
    {
        Record(QStringLiteral("run=") + key_);
        for (const QString& path : files_->RefDataKey())
            Record(QStringLiteral("file=") + files_->Thread(path)->DataValue(QStringLiteral("フルパスファイル名")));
        messages_.Say(QStringLiteral("処理中: ") + key_);
        // The process itself: a program run on the list, which leaves its mark beside the record.
        QProcess::execute(QStringLiteral("/bin/sh"),
                          {QStringLiteral("-c"), QStringLiteral("echo %1 >> \"$MQ_SIBLING_RECORD.ran\"").arg(files_->Count())});
        // Gives the window a turn, as a long run does; a second hand-over asked meanwhile must wait.
        QCoreApplication::processEvents();
        if (key_ == QStringLiteral("P2"))
            throw std::runtime_error("the printer is gone");
    }

private:
    Messages messages_;
    SDC files_ = std::make_shared<StructuredDataClass>();
    QString key_;
};

} // namespace

class RecordingSiblingPlugin : public QObject, public BrackenfoldPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID BrackenfoldPlugin_iid)
    Q_INTERFACES(BrackenfoldPlugin)
public:
    std::shared_ptr<BrackenfoldObject> Create(const QString& vProgId) override
    {
        return vProgId == AppArrangementClass::ProgId ? std::make_shared<Sibling>() : nullptr;
    }
};

#include "RecordingSibling.moc"
