#pragma once
// Routes a message to every output registered for its category and status: a label, a message
// box, a status bar, a text box, a list box, a progress bar, a list view, a store list, or a log
// file. The routing table is a store tree (OutputContorol): category, then the status ("OK",
// "WAR", "ERR") or "ALL", then one thread per registered output with its "Reference", "Type" and
// options. On Qt the outputs are QLabel, QStatusBar, QLineEdit (or a text edit), QListWidget,
// QProgressBar and QTreeWidget; a message box goes through the MessagePresenter.

#include "store/StructuredDataClass.h"
#include "support/LogOutClass.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

class QProgressBar;

class MessageControlClass : public QObject {
    Q_OBJECT
public:
    enum OutputType : int {
        TypeLabel = 1,
        TypeMessageBox = 2,
        TypeStatusBar = 3,
        TypeTextBox = 4,
        TypeListBox = 5,
        TypeProgressBar = 6,
        TypeListView = 7,
        TypeDataList = 8,
        TypeLog = 9,
    };

    explicit MessageControlClass(QObject* vParent = nullptr);
    ~MessageControlClass() override;

    qint16 OutputMaxLine() const { return outputMaxLine_; }
    void SetOutputMaxLine(qint16 v) { outputMaxLine_ = v; }
    LogOutClass& RefLogOutClass() { return *log_; }
    QString LogFileName() const { return logFileName_; }
    void SetLogFileName(const QString& v) { logFileName_ = v; }
    QString ErrLogFileName() const { return errLogFileName_; }
    void SetErrLogFileName(const QString& v) { errLogFileName_ = v; }
    void SetControlReference(const QString& v) { controlReference_ = v; }
    SDC OutputContorol() const { return outputContorol_; }
    void SetOutputContorol(const SDC& v) { outputContorol_ = v; }
    qint16 NormalIconNo() const { return normalIconNo_; }
    void SetNormalIconNo(qint16 v) { normalIconNo_ = v; }
    qint16 ErrorIconNo() const { return errorIconNo_; }
    void SetErrorIconNo(qint16 v) { errorIconNo_ = v; }
    qint16 WarningIconNo() const { return warningIconNo_; }
    void SetWarningIconNo(qint16 v) { warningIconNo_ = v; }

    // Registers an output under a category and a status (or "ALL"); gives the output's key.
    // vControl is the widget (none for a message box or a log); type 8 takes a store list.
    QString RegisterControl(const QString& vCategory, const QString& vName, QObject* vControl, int vType);
    QString RegisterControl(const QString& vCategory, const QString& vName, const SDC& vList, int vType = TypeDataList);
    void SetControlPropertyOfLog(const QString& vCategory, const QString& vName, const QString& vKey, bool vLogOut);
    void SetControlPropertyOfListSequence(const QString& vCategory, const QString& vName, const QString& vKey,
                                          const QString& vSequence);
    void SetControlPropertyOfLogFileName(const QString& vCategory, const QString& vName, const QString& vKey,
                                         const QString& vFileName);

    void MessageOut(const QString& vMessage, const QString& vCategory = {}, const QString& vStatus = QStringLiteral("OK"));
    void ProgressStart(const QString& vCategory, qint32 vMaxCount);
    void ProgressNext(const QString& vCategory);

    // Where the logs go by default: beside the program, or, where the program's folder can't be
    // written (an installed program), in the user's settings folder.
    static QString DefaultLogFolder();

Q_SIGNALS:
    void eProgressStart(qint32 vCount, const QString& vCategory);
    void eProgressNext(const QString& vCategory);
    void eMessageOut(const QString& vStatus, const QString& vText, const QString& vCategory);

private:
    QString Register(const QString& vCategory, const QString& vName, const AnyRef& vReference, int vType);
    SDC ControlThread(const QString& vCategory, const QString& vName, const QString& vKey) const;
    void MessageOutSub(const SDC& vControls, const QString& vMessage, const QString& vCategory, const QString& vStatus);
    void OutputOne(const StructuredDataClass& vControl, const QString& vMessage, const QString& vStatus);
    QList<QProgressBar*> ProgressBars(const QString& vCategory) const;

    std::unique_ptr<LogOutClass> log_;
    QString logFileName_;
    QString errLogFileName_;
    QString controlReference_;
    qint16 normalIconNo_ = 0;
    qint16 errorIconNo_ = 0;
    qint16 warningIconNo_ = 0;
    qint16 outputMaxLine_ = 0;
    SDC outputContorol_;
};
