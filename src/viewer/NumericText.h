#pragma once
// Numbers typed by a user into the small text boxes of the window (the move amount, the page of
// the page jump). Such a box takes any text, so each reader first asks whether it is a number at
// all: a plain decimal, half or full width, with an optional sign and point
// (CommonLibClass::IsCurrency). The value is rounded to a whole number the way a conversion to an
// integer rounds, a half going to the even neighbour, so "2.5" is 2 and "3.5" is 4.
//
// The result stays a double: the callers compare it with their bounds before narrowing it, so
// that a huge number is simply out of range instead of an overflow.

#include <QString>

#include <optional>

std::optional<double> WholeNumberOfText(const QString& vText);

// The same number as a 16-bit integer, as the window's settings and move amount are read:
// AppError 13 for text that is no number, 6 for a number beyond 16 bits.
qint16 Int16OfText(const QString& vText);
// The same for a 32-bit integer.
qint32 Int32OfText(const QString& vText);

// The text of a small number box after one press of its up (vDelta 1) or down (-1) arrow: a
// step within vLowest to vHighest; text that is no number becomes "1"; a number beyond 16 bits
// is left alone.
QString StepNumberText(const QString& vText, int vDelta, double vLowest, double vHighest);
