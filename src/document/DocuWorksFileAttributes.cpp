// A document's named attributes (the user's and the document's own, typed), a binder's
// documents and a document's original data.
#include "document/DocuWorksFileClass.h"

#include "document/DocumentEngine.h"
#include "document/DocumentRules.h"
#include "document/XdwApi.h"
#include "support/CommonLibClass.h"
#include "support/DirClass.h"

#include <QDateTime>

using namespace Qt::Literals::StringLiterals;
using documentrules::Raise;
using documentrules::TooLong;

namespace {

const QString NameText = u"属性名は255文字以内で設定してください。"_s;
constexpr qsizetype MostIntegerCharacters = 9;
// The types of document attributes as the runtime numbers them.
enum AttributeType : qint16 { Integer = 0, Text = 1, Date = 2, Bool = 3 };

// Dates count seconds from this moment, read as a plain clock time without a zone.
QDateTime Epoch()
{
    return QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC);
}

// The forms of a date that people type: "/" or "-" between the parts, with or without a time.
QDateTime ReadDate(const QString& vValue)
{
    const QString text = vValue.trimmed();
    for (const QString& date : {u"yyyy/M/d"_s, u"yyyy-M-d"_s}) {
        for (const QString& time : {QString(), u" H:m"_s, u" H:m:s"_s}) {
            QDateTime read = QDateTime::fromString(text, date + time);
            if (read.isValid())
                return QDateTime(read.date(), read.time(), Qt::UTC);
        }
    }
    return {};
}

// A date as it reads in a Japanese setting: the time only when it isn't midnight.
QString DateText(const QDateTime& vDate)
{
    if (vDate.time() == QTime(0, 0))
        return vDate.toString(u"yyyy/MM/dd"_s);
    return vDate.toString(u"yyyy/MM/dd H:mm:ss"_s);
}

} // namespace

// ---- user attributes

void DocuWorksFileClass::SetUserAttribute(const QString& vName, const QString& vValue)
{
    if (TooLong(vName))
        Raise(u"SetUserAttribute : "_s + NameText);
    Select().SetUserAttribute(vName, vValue);
    Check(u"SetUserAttribute"_s);
}

QString DocuWorksFileClass::GetUserAttribute(const QString& vName)
{
    if (TooLong(vName))
        Raise(u"GetUserAttribute : "_s + NameText);
    const QString value = Select().GetUserAttribute(vName);
    const qint32 result = engine_->LastResult();
    if (result >= 0)
        return value;
    if (result == XdwResult::InvalidArg)
        return {};  // not there
    Raise(u"GetUserAttribute : "_s + engine_->LastErrorText());
}

void DocuWorksFileClass::DeleteUserAttribute(const QString& vName)
{
    // The setter's name in the text: users have always been told so.
    if (TooLong(vName))
        Raise(u"SetUserAttribute : "_s + NameText);
    Select().DeleteUserAttribute(vName);
    Check(u"DeleteUserAttribute"_s);
}

// ---- document attributes

void DocuWorksFileClass::SetDocumentAttribute(const QString& vName, const QString& vValue, const QString& vType)
{
    const QString prefix = u"SetDocumentAttribute : "_s;
    if (TooLong(vName))
        Raise(prefix + NameText);
    const QString type = vType.toUpper();
    QString stored = vValue;
    AttributeType number = Text;
    if (type == u"INTEGER"_s) {
        if (vValue.size() > MostIntegerCharacters)
            Raise(prefix + u"TypeがIntegerの場合Valueは9桁以内で設定してください。"_s);
        if (!CommonLibClass::IsCurrency(vValue))
            Raise(prefix + u"TypeがIntegerの場合Valueは数値で設定してください。"_s);
        number = Integer;
    } else if (type == u"STRING"_s) {
        number = Text;
    } else if (type == u"DATE"_s) {
        const QDateTime date = ReadDate(vValue);
        if (!date.isValid())
            Raise(prefix + u"TypeがDateの場合Valueは日付形式で設定してください。"_s);
        stored = QString::number(Epoch().secsTo(date));
        number = Date;
    } else if (type == u"BOOL"_s) {
        const QString word = vValue.toUpper();
        if (word != u"TRUE"_s && word != u"FALSE"_s)
            Raise(prefix + u"TypeがBoolの場合ValueはTrue又はFalseで設定してください。"_s);
        stored = word == u"TRUE"_s ? u"1"_s : u"0"_s;
        number = Bool;
    } else {
        Raise(prefix + u"TypeはInteger,String,Date,Boolの何れかを設定してください。"_s);
    }
    Select().SetDocumentAttribute(vName, stored, number);
    Check(u"SetDocumentAttribute"_s);
}

QString DocuWorksFileClass::GetDocumentAttribute(const QString& vName)
{
    if (TooLong(vName))
        Raise(u"GetDocumentAttribute : "_s + NameText);
    const QString value = Select().GetDocumentAttribute(vName);
    const qint32 result = engine_->LastResult();
    if (result == XdwResult::InvalidArg)
        return {};  // not there
    if (result < 0)
        Raise(u"GetDocumentAttribute : "_s + engine_->LastErrorText());
    switch (engine_->DocumentAttributeType()) {
    case Integer:
    case Text:
        return value;
    case Date: {
        bool number = false;
        const qint64 seconds = value.toLongLong(&number);
        return number ? DateText(Epoch().addSecs(seconds)) : QString();
    }
    case Bool:
        return value == u"1"_s ? u"True"_s : value == u"0"_s ? u"False"_s : QString();
    default:
        return {};
    }
}

void DocuWorksFileClass::DeleteDocumentAttribute(const QString& vName)
{
    if (TooLong(vName))
        Raise(u"DeleteDocumentAttribute : "_s + NameText);
    Select().DeleteDocumentAttribute(vName);
    Check(u"DeleteDocumentAttribute"_s);
}

void DocuWorksFileClass::SucceedAttribute(const QString& vSourcePath, qint32 vDocument, qint32 vOption)
{
    Select().SucceedAttribute(vSourcePath, vDocument, vOption);
    Check(u"SucceedAttribute"_s);
}

// ---- binder

QString DocuWorksFileClass::GetDocumentNameInBinder(qint32 vPosition)
{
    const QString name = Select().GetDocumentNameInBinder(vPosition);
    Check(u"GetDocumentNameInBinder"_s);
    return name;
}

void DocuWorksFileClass::GetDocumentFromBinder(qint32 vPosition, const QString& vPath)
{
    const QString prefix = u"GetDocumentFromBinder : "_s;
    if (TooLong(vPath))
        Raise(prefix + u"XDWファイル名は255バイト以下で指定してください。"_s);
    if (DirClass::ExistsFile(vPath))
        Raise(prefix + vPath + u"が既に存在します。"_s);
    Select().GetDocumentFromBinder(vPosition, vPath);
    Check(u"GetDocumentFromBinder"_s);
}

void DocuWorksFileClass::DeleteDocumentInBinder(qint32 vPosition)
{
    Select().DeleteDocumentInBinder(vPosition);
    Check(u"DeleteDocumentInBinder"_s);
}

// ---- original data

void DocuWorksFileClass::InsertOriginalData(qint32 vPosition, const QString& vPath)
{
    Select().InsertOriginalData(vPosition, vPath);
    Check(u"InsertOriginalData"_s);
}

void DocuWorksFileClass::DeleteOriginalData(qint32 vPosition)
{
    Select().DeleteOriginalData(vPosition);
    Check(u"DeleteOriginalData"_s);
}

QString DocuWorksFileClass::GetFileNameOfOriginalData(qint32 vPosition)
{
    const QString name = Select().GetFileNameOfOriginalData(vPosition);
    Check(u"GetFileNameOfOriginalData"_s);
    return name;
}

void DocuWorksFileClass::GetFileFromOriginalData(qint32 vPosition, const QString& vPath)
{
    const QString prefix = u"GetFileFromOriginalData : "_s;
    if (TooLong(vPath))
        Raise(prefix + u"オリジナルデータファイル名は255バイト以下で指定してください。"_s);
    if (DirClass::ExistsFile(vPath))
        Raise(prefix + vPath + u"が既に存在します。"_s);
    Select().GetFileFromOriginalData(vPosition, vPath);
    Check(u"GetFileFromOriginalData"_s);
}
