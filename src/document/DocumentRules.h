#pragma once
// What the document classes share in how they refuse: every failure is error 6300 with a text
// that starts with the operation's name; the runtime takes names of at most 255 bytes of code
// page 932 (a full-width character counts two) and renders pages at 10 to 600 dpi.

#include "support/AppError.h"
#include "support/CommonLibClass.h"

#include <QString>

namespace documentrules {

inline constexpr qsizetype MostNameBytes = 255;
inline constexpr qint32 MinDpi = 10;
inline constexpr qint32 MaxDpi = 600;
inline const QString DpiText = QStringLiteral("解像度は10～600dpiを指定してください。");

[[noreturn]] inline void Raise(const QString& vText)
{
    throw AppError(AppError::Document, vText);
}

inline bool TooLong(const QString& vName)
{
    return CommonLibClass::CLibLenB(vName) > MostNameBytes;
}

} // namespace documentrules
