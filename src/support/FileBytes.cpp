#include "support/FileBytes.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace FileBytes {

int Fd::Close()
{
    const int rc = fd_ >= 0 ? ::close(fd_) : 0;
    fd_ = -1;
    return rc;
}

bool WriteFully(int vFd, const char* vData, qsizetype vSize)
{
    while (vSize > 0) {
        const ssize_t n = ::write(vFd, vData, static_cast<size_t>(vSize));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        vData += n;
        vSize -= n;
    }
    return true;
}

AppError ErrorFor(int vErrno, const QString& vPath)
{
    int number = AppError::PathFileAccess;
    switch (vErrno) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG: number = AppError::DiskFull; break;
    case EACCES:
    case EPERM:
    case EROFS: number = AppError::PermissionDenied; break;
    case ENOENT:
    case ENOTDIR: number = AppError::PathNotFound; break;
    default: break;
    }
    return AppError(number, AppError::StandardText(number) + QStringLiteral(" (") + vPath
                                + QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(vErrno))
                                + QLatin1Char(')'));
}

bool Exists(const QString& vPath)
{
    struct stat st {};
    return ::stat(QFile::encodeName(vPath).constData(), &st) == 0 && S_ISREG(st.st_mode);
}

QByteArray ReadAll(const QString& vPath)
{
    Fd fd(::open(QFile::encodeName(vPath).constData(), O_RDONLY | O_CLOEXEC));
    if (fd.Get() < 0)
        throw ErrorFor(errno, vPath);
    QByteArray bytes;
    struct stat st {};
    if (::fstat(fd.Get(), &st) == 0 && st.st_size > 0)
        bytes.reserve(static_cast<qsizetype>(st.st_size));
    char buffer[65536];
    for (;;) {
        const ssize_t n = ::read(fd.Get(), buffer, sizeof buffer);
        if (n == 0)
            break;
        if (n < 0) {
            if (errno == EINTR)
                continue;
            throw ErrorFor(errno, vPath);
        }
        bytes.append(buffer, n);
    }
    return bytes;
}

void WriteInPlace(const QString& vPath, const QByteArray& vBytes, bool vAppend)
{
    const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (vAppend ? O_APPEND : O_TRUNC);
    Fd fd(::open(QFile::encodeName(vPath).constData(), flags, 0666));
    if (fd.Get() < 0)
        throw ErrorFor(errno, vPath);
    int failure = WriteFully(fd.Get(), vBytes.constData(), vBytes.size()) ? 0 : errno;
    if (fd.Close() != 0 && failure == 0)
        failure = errno;
    if (failure != 0)
        throw ErrorFor(failure, vPath);
}

void WriteReplacing(const QString& vPath, const QByteArray& vBytes)
{
    // Write through a link to the file it names, so that a linked settings file stays linked.
    QString target = vPath;
    const QFileInfo info(vPath);
    if (info.isSymLink() && info.exists())
        target = info.canonicalFilePath();

    const QByteArray targetName = QFile::encodeName(target);
    QByteArray tempName = QFile::encodeName(QFileInfo(target).absolutePath() + QStringLiteral("/.")
                                            + QFileInfo(target).fileName() + QStringLiteral(".XXXXXX"));
    Fd fd(::mkostemp(tempName.data(), O_CLOEXEC));
    if (fd.Get() < 0)
        throw ErrorFor(errno, vPath);

    struct stat old {};
    mode_t mode = 0;
    if (::stat(targetName.constData(), &old) == 0) {
        mode = old.st_mode & 07777;
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
    }

    int failure = 0;
    if (!WriteFully(fd.Get(), vBytes.constData(), vBytes.size()) || ::fchmod(fd.Get(), mode) != 0)
        failure = errno;
    if (fd.Close() != 0 && failure == 0)
        failure = errno;
    if (failure == 0 && ::rename(tempName.constData(), targetName.constData()) != 0)
        failure = errno;
    if (failure != 0) {
        ::unlink(tempName.constData());
        throw ErrorFor(failure, vPath);
    }
}

} // namespace FileBytes
