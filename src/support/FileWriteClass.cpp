#include "support/FileWriteClass.h"

#include "support/Cp932.h"
#include "support/FileBytes.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

const QByteArray kCrLf("\r\n");

void WriteBytes(const QString& vPath, const QByteArray& vBytes, bool vAppend)
{
    const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (vAppend ? O_APPEND : O_TRUNC);
    const int fd = ::open(QFile::encodeName(vPath).constData(), flags, 0666);
    if (fd < 0)
        throw FileBytes::ErrorFor(errno, vPath);
    const char* data = vBytes.constData();
    qsizetype left = vBytes.size();
    int failure = 0;
    while (left > 0) {
        const ssize_t n = ::write(fd, data, static_cast<size_t>(left));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            failure = errno;
            break;
        }
        data += n;
        left -= n;
    }
    if (::close(fd) != 0 && failure == 0)
        failure = errno;
    if (failure != 0)
        throw FileBytes::ErrorFor(failure, vPath);
}

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
    WriteBytes(path, bytes, IsAppend(vMode));
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
    WriteBytes(path, bytes, false);
}

void FileWriteClass::FileWriteFromString(const QString& vString, const QString& vFileName, const QString& vMode)
{
    const QString path = TargetName(vFileName);
    if (path.isEmpty())
        return;
    WriteBytes(path, Cp932::Encode(vString) + kCrLf, IsAppend(vMode));
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
