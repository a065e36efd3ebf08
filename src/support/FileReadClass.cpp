#include "support/FileReadClass.h"

#include "support/AppError.h"
#include "support/Cp932.h"
#include "support/FileBytes.h"

QString FileReadClass::Line(qint32 vIndex) const
{
    if (vIndex < 1 || vIndex > Count())
        return {};
    return lines_.at(vIndex - 1);
}

QByteArray FileReadClass::ReadBytes(const QString& vFileName, QString& vError)
{
    if (!vFileName.trimmed().isEmpty())
        fileName_ = vFileName;
    try {
        return FileBytes::ReadAll(fileName_);
    } catch (const AppError& e) {
        vError = QStringLiteral("エラー番号 ") + QString::number(e.Number()) + QStringLiteral(" : ") + e.Description();
        return {};
    }
}

QString FileReadClass::FileRead(const QString& vFileName)
{
    QString error;
    const QByteArray bytes = ReadBytes(vFileName, error);
    if (!error.isEmpty())
        return error;
    lines_.clear();
    // CR ends a line, and an LF right behind it belongs to that end. A lone LF is text: the files
    // read here are written with CR LF, and a Windows reader would keep it too. Splitting the
    // bytes is safe, as no second byte of a double-byte character is below 0x40.
    qsizetype start = 0;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes.at(i) != '\r')
            continue;
        lines_ << Cp932::Decode(QByteArrayView(bytes).sliced(start, i - start));
        if (i + 1 < bytes.size() && bytes.at(i + 1) == '\n')
            ++i;
        start = i + 1;
    }
    if (start < bytes.size())
        lines_ << Cp932::Decode(QByteArrayView(bytes).sliced(start));
    return {};
}

QString FileReadClass::FileReadToString(const QString& vFileName)
{
    QString error;
    const QByteArray bytes = ReadBytes(vFileName, error);
    if (!error.isEmpty())
        return error;
    lines_ = QStringList{Cp932::Decode(bytes)};
    return QStringLiteral("1");
}
