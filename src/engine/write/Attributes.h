#pragma once
// Attributes a user or a program gives a whole document, kept as named attributes of the file's
// root record so that they travel with the file and other DocuWorks software sees them.
//
// User attributes are bytes under a name. Document attributes have a type: a string is kept as
// text (cp932 ending in a zero byte in generation 7; UTF-16 under the name with "(w" appended in
// generation 10, as annotation texts are), the other types as the number list [value, type].
// A single number another program set reads as an integer. A name the file does not have, or
// one holding no document attribute (a size pair), fails with InvalidArg (xdw::FormatError),
// which callers read as "absent".

#include "engine/write/Saver.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace xdw {

inline constexpr int AttributeInteger = 0;
inline constexpr int AttributeString = 1;
inline constexpr int AttributeDate = 2;   // seconds since 1970-01-01 00:00:00
inline constexpr int AttributeBool = 3;   // 1 or 0

void SetUserAttribute(EditableFile& vFile, const QString& vName, const QByteArray& vValue);
QByteArray GetUserAttribute(const EditableFile& vFile, QStringView vName);
void DeleteUserAttribute(EditableFile& vFile, QStringView vName);

struct DocumentAttribute {
    int type = AttributeString;
    // The text, or the number in decimal.
    QString value;
};

// vValue is the text, or for the other types a decimal integer (a boolean 0 or 1); a value that
// does not fit its type, or an unknown type, is InvalidArg.
void SetDocumentAttribute(EditableFile& vFile, const QString& vName, const QString& vValue, int vType);
DocumentAttribute GetDocumentAttribute(const EditableFile& vFile, QStringView vName);
void DeleteDocumentAttribute(EditableFile& vFile, QStringView vName);

// The names of every attribute set by name on the file (document attributes, user attributes
// and the software's own), in the order they were declared, without the "(w" of wide texts.
QStringList AttributeNames(const EditableFile& vFile);

} // namespace xdw
