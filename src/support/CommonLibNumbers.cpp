// Rounding, digit limits and other number helpers.
#include "support/CommonLibClass.h"

#include <QRandomGenerator>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

namespace {

// "0." + vZeros zeros + vDigit, read as a number. The old program wrote its rounding offsets this
// way; reading the same text gives the same double, and so the same results at the edges.
double DecimalText(int vZeros, char vDigit)
{
    return (QStringLiteral("0.") + QString(vZeros, u'0') + QLatin1Char(vDigit)).toDouble();
}

// A conversion to a 32-bit integer as the old runtime did it: to the nearest, a half to the even
// neighbour, and held at the ends of the range rather than failing.
qint64 ToInt32(double vValue)
{
    if (std::isnan(vValue))
        return 0;
    const double nearest = std::nearbyint(vValue);
    if (nearest >= static_cast<double>(std::numeric_limits<qint32>::max()))
        return std::numeric_limits<qint32>::max();
    if (nearest <= static_cast<double>(std::numeric_limits<qint32>::min()))
        return std::numeric_limits<qint32>::min();
    return static_cast<qint64>(nearest);
}

bool IsDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'０' && c <= u'９');
}

} // namespace

double CommonLibClass::Round(double& vDouble, int& vNum)
{
    // vDouble is the working value throughout, so the caller sees what the steps left in it.
    const bool negative = vDouble < 0;
    if (negative)
        vDouble = -vDouble;

    double result = 0;
    if (vNum == 0) {
        result = std::floor(vDouble + 0.5);
    } else if (vNum < 0) {
        vNum = -vNum;
        const int k = vNum;
        vDouble += k == 1 ? 0.5 : DecimalText(k - 1, '5');
        vDouble = std::trunc(vDouble * std::pow(10.0, k - 1));
        result = k == 1 ? vDouble : vDouble * DecimalText(k - 2, '1');
    } else {
        vDouble += vNum == 1 ? 5.0 : 5.0 * std::pow(10.0, vNum - 1);
        // A 32-bit whole number is below 10^10, so from there on nothing is left of it.
        if (vNum < 10) {
            const qint64 unit = static_cast<qint64>(std::pow(10.0, vNum));
            result = static_cast<double>(ToInt32(vDouble) / unit * unit);
        }
    }

    if (negative)
        vDouble = -vDouble;
    return result;
}

double CommonLibClass::RoundDown(double vNum)
{
    return std::trunc(vNum);
}

double CommonLibClass::RoundUp(double vNum)
{
    return vNum < 0 ? std::floor(vNum) : std::ceil(vNum);
}

double CommonLibClass::RoundOff(double vNum)
{
    return std::round(vNum);
}

bool CommonLibClass::DoubleLenCheck(double vDouble, int vSeisuuLen, int vShosuuLen)
{
    // Infinity and NaN come from no text a user typed; they fit no limit.
    if (!std::isfinite(vDouble))
        return false;
    if (vDouble == 0)
        vDouble = 0;  // "-0" would count a sign that nobody sees
    const QString text = QString::number(vDouble, 'f', QLocale::FloatingPointShortest);
    const qsizetype dot = text.indexOf(u'.');
    const qsizetype whole = dot < 0 ? text.size() : dot;
    const qsizetype fraction = dot < 0 ? 0 : text.size() - dot - 1;
    return whole <= vSeisuuLen && fraction <= vShosuuLen;
}

qint32 CommonLibClass::ModPlus(qint32 vNum1, qint32 vNum2)
{
    if (vNum2 == 0)
        return 0;
    const qint64 divisor = std::abs(static_cast<qint64>(vNum2));
    return static_cast<qint32>(((vNum1 % divisor) + divisor) % divisor);
}

qint32 CommonLibClass::GetRandomNumber(qint32 lowerbound, qint32 upperbound)
{
    if (lowerbound > upperbound)
        std::swap(lowerbound, upperbound);
    return static_cast<qint32>(
        QRandomGenerator::global()->bounded(qint64(lowerbound), qint64(upperbound) + 1));
}

bool CommonLibClass::IsCurrency(const QString& vString)
{
    // Exponents ("1E3"), thousand signs ("1,000") and trailing signs ("5-") would read as numbers
    // to a lenient parser, but are not what a user means by an amount; they are refused.
    const QString text = vString.trimmed();
    qsizetype i = 0;
    if (!text.isEmpty() && QStringView(u"+-＋－").contains(text[0]))
        ++i;
    int digits = 0;
    int points = 0;
    for (; i < text.size(); ++i) {
        const QChar c = text[i];
        if (IsDigit(c))
            ++digits;
        else if ((c == u'.' || c == u'．') && ++points == 1)
            continue;
        else
            return false;
    }
    return digits > 0;
}
