#pragma once
// One line into a log file: either a bounded ("cyclic") file that keeps its last MaxLine lines,
// rewritten for each line, or a file per day, month or year that lines are added to. Logging
// never costs the caller a message: every failure to write ends in false, nothing raised.

#include <QString>

#include <memory>

class LogOutClass {
public:
    QString LogFileName() const { return logFileName_; }
    void SetLogFileName(const QString& v) { logFileName_ = v; }
    // "DAY", "MONTH" or "YEAR" for the dated files; kept in upper case.
    QString Cycle() const { return cycle_; }
    void SetCycle(const QString& v) { cycle_ = v.toUpper(); }
    qint32 MaxLine() const { return maxLine_; }
    void SetMaxLine(qint32 v) { maxLine_ = v; }
    bool NotOut() const { return notOut_; }
    void SetNotOut(bool v) { notOut_ = v; }
    // "DATE" for the dated files; anything else, "" included, for the cyclic one.
    QString Mode() const { return mode_; }
    void SetMode(const QString& v) { mode_ = v; }

    bool LogOut(const QString& vMessage);
    bool CyclicLogOut(const QString& vMessage);
    bool AppendLogOut(const QString& vMessage);
    // The dated file a line goes to today: the name with the stamp before its last ".".
    QString DatedFileName() const;
    std::unique_ptr<LogOutClass> Clone() const { return std::make_unique<LogOutClass>(*this); }

private:
    QString logFileName_ = QStringLiteral("c:\\log.txt");
    bool notOut_ = false;
    qint32 maxLine_ = 500;
    QString cycle_ = QStringLiteral("DAY");
    QString mode_;
};
