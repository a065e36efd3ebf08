#pragma once
// The properties an annotation is read and written by (Text, FontName, BorderColor, Caption,
// DateStyle ...) and the named attributes the file keeps them in. Where the vendor's records
// show a name (%Text, %Face, %Size, %Color, %Style ...), that name is used; the others follow
// the same form, "%" and the property's own name. Font weight, slant, underline and strike-out
// share %Style as bits. Files of generation 10 keep texts in UTF-16 under the name with "(w"
// appended, and mark the record with %CCP_#name 932.

#include "engine/write/Tree.h"

#include <QString>
#include <QStringView>
#include <QVariant>

#include <optional>
#include <vector>

namespace xdw::annot {

enum class ValueForm {
    Number,   // a number list of one number
    Text,     // cp932, or UTF-16 under the "(w" name
    StyleBit, // one bit of %Style
};

struct PropertyName {
    QString property;
    QString attribute;
    ValueForm form = ValueForm::Number;
    int bit = 0;   // for StyleBit
    bool textFamily = false;   // a property of the text itself (font, colour, margins ...)
};

// Every property with its attribute, family by family (text, link, shape, stamp).
const std::vector<PropertyName>& PropertyNames();
// The entry of a property, its name compared without regard to case; null for none.
const PropertyName* FindProperty(QStringView vProperty);

// True when the record keeps its texts in UTF-16 (generation 10).
bool IsWide(const Node& vRecord);
void SetWide(Node& vRecord);

// A property of one record (an 80xx): a number as qint64, a text as QString, a style bit as
// bool. Nothing when the record does not hold it.
std::optional<QVariant> GetValue(const Node& vRecord, QStringView vProperty);
// Writes the attribute only; false for an unknown property or a value of the wrong form.
bool SetValue(Node& vRecord, QStringView vProperty, const QVariant& vValue);

// The same, by attribute name, for the code that draws: vDefault when absent.
qint64 NumberOr(const Node& vRecord, QStringView vProperty, qint64 vDefault);
QString TextOr(const Node& vRecord, QStringView vProperty, const QString& vDefault);

} // namespace xdw::annot
