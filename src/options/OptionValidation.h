#pragma once
// The checks of the whole-number fields of the page "ウインドウ". Each field is tested in three
// steps, and the first that fails gives the user's message: not a number, not whole, out of range.

#include <QString>

struct NumberField {
    const char* Control;  // the text box
    const char* Label;    // how the messages name it
    int Lowest;           // both bounds included
    int Highest;
};

inline constexpr NumberField kNumberFields[] = {
    {"txtResolution", "表示解像度", 75, 600},
    {"txtGamma", "ガンマ値", -100, 100},
    {"txtActiveFormTime", "アクティブ秒数", 100, 5000},
    {"txtRulerWidth", "ルーラーの太さ", 1, 500},
};

// The message for vText in vField, or "" when it passes. A number is what the Windows build's
// numeric test takes, exponents included ("1e2" is 100); it is then made a 16-bit integer, and
// one beyond 16 bits fails as out of range.
QString CheckNumberField(const NumberField& vField, const QString& vText);
