#pragma once
// How a value is written into SQL text. The builder binds nothing, so these are all that stands
// between a file name holding "'" and a broken statement. Both builder classes offer them.

#include <QString>

struct SqlEscape {
    // Data types of a value.
    enum : int { String = 0, Numeric = 1, DateTime = 2 };

    static QString SQLite_EscapeNumeric(const QString& vValue);   // the value, or null
    static QString SQLite_EscapeString(const QString& vValue);    // quoted, "'" doubled
    static QString SQLite_EscapeDateTime(const QString& vValue);  // quoted, "/" as "-"; "" is null
    // A LIKE pattern with "\" as escape; vFormat places the value at each "{0}" ("%{0}%").
    static QString SQLite_EscapeLike(const QString& vValue, const QString& vFormat = {});

    // By data type; false for a type that isn't one of the three.
    static bool EscapeByType(const QString& vValue, int vDataType, QString& vOut);
};
