#include "options/OptionValidation.h"

#include <cmath>

QString CheckNumberField(const NumberField& vField, const QString& vText)
{
    const QString label = QString::fromUtf8(vField.Label);
    bool numeric = false;
    const double value = vText.trimmed().toDouble(&numeric);
    if (!numeric || !std::isfinite(value))
        return label + QStringLiteral("は数字で入力してください。");
    if (vText.contains(QLatin1Char('.')))
        return label + QStringLiteral("は整数で入力してください。");
    const double whole = std::nearbyint(value);  // half to even, as the 16-bit conversion rounds
    if (whole < -32768 || whole > 32767 || whole < vField.Lowest || whole > vField.Highest)
        return label + QStringLiteral("は") + QString::number(vField.Lowest) + QStringLiteral("～") +
               QString::number(vField.Highest) + QStringLiteral("の範囲で入力してください。");
    return {};
}
