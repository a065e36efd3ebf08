// Stop watch, waits, and date and time texts.
#include "support/CommonLibClass.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QStringList>
#include <QThread>
#include <limits>

namespace {

constexpr qint64 SecondsPerDay = 86400;

// "12" to 12; anything but plain ASCII digits to -1.
int DigitsValue(QStringView vText)
{
    if (vText.isEmpty() || vText.size() > 9)
        return -1;
    int value = 0;
    for (QChar c : vText) {
        if (c < u'0' || c > u'9')
            return -1;
        value = value * 10 + (c.unicode() - u'0');
    }
    return value;
}

} // namespace

void CommonLibClass::StartTimer()
{
    timer_.restart();
}

double CommonLibClass::GetTime() const
{
    return static_cast<double>(timer_.nsecsElapsed()) / 1e9;
}

QString CommonLibClass::ClibGetLocalTime()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddHHmmsszzz"));
}

QString CommonLibClass::ClibGetLocalTime2()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy/MM/dd HH:mm:ss.zzz"));
}

void CommonLibClass::SleepWait(qint32 vMiliSec)
{
    if (vMiliSec > 0)
        QThread::msleep(static_cast<unsigned long>(vMiliSec));
}

void CommonLibClass::Wait(double vSec)
{
    // Short naps between the turns, so the window stays alive without a busy loop.
    QElapsedTimer elapsed;
    elapsed.start();
    const qint64 until = static_cast<qint64>(vSec * 1000.0);
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        const qint64 left = until - elapsed.elapsed();
        if (left > 0)
            QThread::msleep(static_cast<unsigned long>(qMin<qint64>(left, 10)));
    } while (elapsed.elapsed() < until);
}

int CommonLibClass::CheckDateNow(const QDate& vDate)
{
    // The comparison is of the "yyyymmdd" texts, so the time of day never plays a part.
    const QString format = QStringLiteral("yyyyMMdd");
    const int order = QString::compare(vDate.toString(format), QDate::currentDate().toString(format));
    if (order == 0)
        return 0;
    return order < 0 ? 1 : 2;
}

QString CommonLibClass::CDateString(const QString& vDate)
{
    if (vDate.size() != 8 || DigitsValue(vDate) < 0)
        return vDate;
    return vDate.left(4) + u'/' + vDate.mid(4, 2) + u'/' + vDate.mid(6, 2);
}

QString CommonLibClass::CDateString(const QDate& vDate)
{
    return vDate.toString(QStringLiteral("yyyy/MM/dd"));
}

QString CommonLibClass::TimeSerialEx(qint64 vTime, int vFormatType)
{
    if (vTime > SecondsPerDay)
        return QStringLiteral("無効");
    if (vTime == SecondsPerDay)
        return QStringLiteral("24:00:00");
    // Below zero the time runs back from midnight, as a negative time of day does.
    const qint64 seconds = ((vTime % SecondsPerDay) + SecondsPerDay) % SecondsPerDay;
    const qint64 h = seconds / 3600;
    const qint64 n = seconds / 60 % 60;
    const qint64 s = seconds % 60;
    if (vFormatType == 1)
        return QStringLiteral("%1時間%2分%3秒").arg(h).arg(n).arg(s);
    return QStringLiteral("%1:%2:%3")
        .arg(h, 2, 10, QLatin1Char('0'))
        .arg(n, 2, 10, QLatin1Char('0'))
        .arg(s, 2, 10, QLatin1Char('0'));
}

qint32 CommonLibClass::ChangeSecond(const QString& vTime)
{
    // Hours may pass 23 here: the text can be a length of time as well as a time of day.
    const QStringList parts = vTime.trimmed().split(u':');
    if (parts.size() != 3)
        return 0;
    const int h = DigitsValue(parts[0]);
    const int n = DigitsValue(parts[1]);
    const int s = DigitsValue(parts[2]);
    if (h < 0 || n < 0 || s < 0)
        return 0;
    const qint64 total = qint64(h) * 3600 + qint64(n) * 60 + s;
    return total > std::numeric_limits<qint32>::max() ? 0 : static_cast<qint32>(total);
}

bool CommonLibClass::CheckTime(const QString& vTime)
{
    if (vTime.size() != 8 || vTime[2] != u':' || vTime[5] != u':')
        return false;
    const int h = DigitsValue(QStringView(vTime).sliced(0, 2));
    const int n = DigitsValue(QStringView(vTime).sliced(3, 2));
    const int s = DigitsValue(QStringView(vTime).sliced(6, 2));
    return h >= 0 && h <= 23 && n >= 0 && n <= 59 && s >= 0 && s <= 59;
}
