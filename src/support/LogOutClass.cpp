#include "support/LogOutClass.h"

#include "support/FileReadClass.h"
#include "support/FileWriteClass.h"

#include <QDate>

bool LogOutClass::LogOut(const QString& vMessage)
{
    return mode_.toUpper() == QLatin1String("DATE") ? AppendLogOut(vMessage) : CyclicLogOut(vMessage);
}

// The file is read whole and written again with the oldest lines dropped, so that it never
// holds more than MaxLine lines.
bool LogOutClass::CyclicLogOut(const QString& vMessage)
{
    if (notOut_)
        return false;
    try {
        FileReadClass reader;
        qint32 count = 0;
        if (reader.FileRead(logFileName_).isEmpty())
            count = reader.Count();
        const qint32 first = count + 1 > maxLine_ ? count - maxLine_ + 2 : 1;
        FileWriteClass writer;
        for (qint32 i = std::max(first, 1); i <= count; ++i)
            writer.SetLine(reader.Line(i));
        writer.SetLine(vMessage);
        writer.FileWrite(logFileName_, QStringLiteral("OUTPUT"));
        return true;
    } catch (...) {
        return false;  // a log that can't be written costs nobody their message
    }
}

QString LogOutClass::DatedFileName() const
{
    const QDate today = QDate::currentDate();
    QString stamp;
    if (cycle_ == QLatin1String("MONTH"))
        stamp = today.toString(QStringLiteral("yyyyMM"));
    else if (cycle_ == QLatin1String("YEAR"))
        stamp = today.toString(QStringLiteral("yyyy"));
    else
        stamp = today.toString(QStringLiteral("yyyyMMdd"));
    // A name without "." keeps all of itself before the stamp and gets an empty ending.
    const qsizetype dot = logFileName_.lastIndexOf(QLatin1Char('.'));
    const QString stem = dot < 0 ? logFileName_ : logFileName_.left(dot);
    const QString ending = dot < 0 ? QString() : logFileName_.mid(dot + 1);
    return stem + stamp + QLatin1Char('.') + ending;
}

bool LogOutClass::AppendLogOut(const QString& vMessage)
{
    if (notOut_)
        return false;
    try {
        FileWriteClass writer;
        writer.SetLine(vMessage);
        writer.FileWrite(DatedFileName(), QStringLiteral("APPEND"));
        return true;
    } catch (...) {
        return false;
    }
}
