#pragma once
// What the files of the store share and nobody else needs: its error texts and the 16-bit
// arithmetic of positions and levels.

#include "support/AppError.h"

#include <QString>

namespace storedetail {

inline const QString kCrLfKey = QStringLiteral("\r\nKey = ");

inline qint16 Checked16(int vValue)
{
    if (vValue > 32767 || vValue < -32768)
        throw AppError(AppError::Overflow);
    return static_cast<qint16>(vValue);
}

inline AppError StoreError(const QString& vText) { return AppError(AppError::DataStore, vText); }

inline AppError MissingThread(const QString& vOperation, const QString& vKey)
{
    return StoreError(QStringLiteral("スレッドに存在しないキーを参照しようとしました。(StructuredDataClass ")
                      + vOperation + QStringLiteral(")") + kCrLfKey + vKey);
}

// A path piece or a swap argument "reads as a number" when it is a whole number.
inline bool ReadNumber(const QString& vText, int& vNumber)
{
    bool ok = false;
    vNumber = vText.trimmed().toInt(&ok);
    return ok;
}

} // namespace storedetail
