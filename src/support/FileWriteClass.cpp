#include "support/FileWriteClass.h"

#include "support/Cp932.h"
#include "support/FileBytes.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>


namespace {

const QByteArray kCrLf("\r\n");

bool IsAppend(const QString& vMode) { return vMode.toUpper() == QLatin1String("APPEND"); }

} // namespace

QString FileWriteClass::TargetName(const QString& vFileName)
{
    if (!vFileName.isEmpty())
        fileName_ = vFileName;
    return fileName_.trimmed().isEmpty() ? QString() : fileName_;
}

void FileWriteClass::FileWrite(const QString& vFileName, const QString& vMode)
{
    const QString path = TargetName(vFileName);
    if (path.isEmpty())
        return;
    QByteArray bytes;
    for (const QString& line : lines_)
        bytes += Cp932::Encode(line) + kCrLf;
    FileBytes::WriteInPlace(path, bytes, IsAppend(vMode));
}

void FileWriteClass::FileWriteEUC(const QString& vFileName)
{
    const QString path = TargetName(vFileName);
    if (path.isEmpty())
        return;
    QByteArray bytes;
    for (const QString& line : lines_)
        bytes += Cp932::Encode(line) + '\n';
    // The whole file is replaced: a longer old file must not leave its tail behind.
    FileBytes::WriteInPlace(path, bytes, false);
}

void FileWriteClass::FileWriteFromString(const QString& vString, const QString& vFileName, const QString& vMode)
{
    const QString path = TargetName(vFileName);
    if (path.isEmpty())
        return;
    FileBytes::WriteInPlace(path, Cp932::Encode(vString) + kCrLf, IsAppend(vMode));
}

void FileWriteClass::DeleteCurrentLine()
{
    if (!lines_.isEmpty())
        lines_.removeLast();
}

void FileWriteClass::WriteClipboard() const
{
    // Without a GUI application there is no clipboard to write to.
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
        return;
    QGuiApplication::clipboard()->setText(GetAllString());
}

QString FileWriteClass::GetAllString() const { return lines_.join(QStringLiteral("\r\n")); }
