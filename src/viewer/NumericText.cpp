#include "viewer/NumericText.h"

#include "support/AppError.h"
#include "support/CommonLibClass.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

std::optional<double> WholeNumberOfText(const QString& vText)
{
    if (!CommonLibClass::IsCurrency(vText))
        return std::nullopt;

    // Fold the full-width forms to ASCII; what IsCurrency let through is then digits, at most one
    // point and one leading sign.
    bool negative = false;
    std::string ascii;
    for (const QChar c : vText.trimmed()) {
        if (c == u'-' || c == u'－')
            negative = true;
        else if (c == u'+' || c == u'＋')
            continue;
        else if (c >= u'０' && c <= u'９')
            ascii += static_cast<char>('0' + (c.unicode() - u'０'));
        else if (c == u'．')
            ascii += '.';
        else
            ascii += static_cast<char>(c.unicode());
    }
    double value = 0;
    const auto [end, error] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
    if (error == std::errc::result_out_of_range) {
        // Too many digits for a double: huge when they stand before the point, else next to 0.
        const std::string whole = ascii.substr(0, ascii.find('.'));
        value = whole.find_first_not_of('0') == std::string::npos ? 0.0 : HUGE_VAL;
    } else if (error != std::errc() || end != ascii.data() + ascii.size()) {
        return std::nullopt;
    }
    return std::nearbyint(negative ? -value : value);
}

namespace {

template <class Int>
Int IntOfText(const QString& vText)
{
    const std::optional<double> value = WholeNumberOfText(vText);
    if (!value)
        throw AppError(AppError::TypeMismatch);
    if (*value < std::numeric_limits<Int>::min() || *value > std::numeric_limits<Int>::max())
        throw AppError(AppError::Overflow);
    return static_cast<Int>(*value);
}

} // namespace

qint16 Int16OfText(const QString& vText) { return IntOfText<qint16>(vText); }

qint32 Int32OfText(const QString& vText) { return IntOfText<qint32>(vText); }

QString StepNumberText(const QString& vText, int vDelta, double vLowest, double vHighest)
{
    const std::optional<double> number = WholeNumberOfText(vText);
    if (!number)
        return QStringLiteral("1");
    if (*number < -32768 || *number > 32767)
        return vText;
    const bool room = vDelta > 0 ? *number < vHighest : *number > vLowest;
    return room ? QString::number(static_cast<qint64>(*number) + vDelta) : vText;
}
