// DirClass: the calls that change the file system. Each failure raises 6800 with the name of
// the call, the system's code and text, and the paths involved.
#include "support/DirClass.h"

#include "support/AppError.h"
#include "support/FileBytes.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using FileBytes::Fd;

QByteArray Native(const QString& vPath) { return QFile::encodeName(vPath); }

QString Quoted(const QString& vLabel, const QString& vValue)
{
    return vLabel + QStringLiteral(" = \"") + vValue + QLatin1Char('"');
}

// The system texts of Windows ended in a line break that parted them from the paths; a blank
// does that here, and keeps a logged message on one line.
[[noreturn]] void Raise(const char* vCall, int vCode, const QString& vDetails)
{
    throw AppError(AppError::FileSystem, QLatin1String(vCall) + QLatin1Char('(') + QString::number(vCode)
                                             + QLatin1Char(')') + DirClass::LastDllErrorText(vCode)
                                             + QLatin1Char(' ') + vDetails);
}

// One more try is worth it while time is left; the window stays alive meanwhile.
bool WaitForRetry(const QElapsedTimer& vTimer, double vRetrySec)
{
    if (vTimer.elapsed() >= vRetrySec * 1000.0)
        return false;
    QCoreApplication::processEvents();
    QThread::msleep(100);
    return true;
}

// Copies the bytes, the permissions and the time of last write, as a copy made by Windows
// keeps them. Gives 0 or the errno of the failure; a half-written target is removed.
int CopyBytes(const QByteArray& vFrom, const QByteArray& vTo, bool vFailIfExists)
{
    Fd in(::open(vFrom.constData(), O_RDONLY | O_CLOEXEC));
    if (in.Get() < 0)
        return errno;
    struct stat st {};
    if (::fstat(in.Get(), &st) != 0)
        return errno;
    if (S_ISDIR(st.st_mode))
        return EISDIR;
    const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (vFailIfExists ? O_EXCL : O_TRUNC);
    Fd out(::open(vTo.constData(), flags, st.st_mode & 07777));
    if (out.Get() < 0)
        return errno;
    int failure = 0;
    char buffer[65536];
    for (;;) {
        const ssize_t n = ::read(in.Get(), buffer, sizeof buffer);
        if (n == 0)
            break;
        if (n < 0) {
            if (errno == EINTR)
                continue;
            failure = errno;
            break;
        }
        if (!FileBytes::WriteFully(out.Get(), buffer, n)) {
            failure = errno;
            break;
        }
    }
    if (failure == 0) {
        const struct timespec times[2] = {st.st_atim, st.st_mtim};
        ::futimens(out.Get(), times);
    }
    if (out.Close() != 0 && failure == 0)
        failure = errno;
    if (failure != 0)
        ::unlink(vTo.constData());
    return failure;
}

// A move never replaces what is there: Windows refused that too, and a silent overwrite of a
// document is not a thing to risk. Across file systems a file is copied, then removed.
int MoveOnce(const QByteArray& vFrom, const QByteArray& vTo)
{
    if (::renameat2(AT_FDCWD, vFrom.constData(), AT_FDCWD, vTo.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    int failure = errno;
    if (failure == EINVAL || failure == ENOSYS || failure == ENOTSUP) {
        // A file system without the no-replace form: ask first, then rename.
        struct stat st {};
        if (::lstat(vTo.constData(), &st) == 0)
            return EEXIST;
        if (::rename(vFrom.constData(), vTo.constData()) == 0)
            return 0;
        failure = errno;
    }
    if (failure != EXDEV)
        return failure;
    struct stat source {};
    if (::lstat(vFrom.constData(), &source) != 0)
        return errno;
    if (!S_ISREG(source.st_mode))
        return EXDEV;
    if (const int copied = CopyBytes(vFrom, vTo, true); copied != 0)
        return copied;
    if (::unlink(vFrom.constData()) != 0) {
        failure = errno;
        ::unlink(vTo.constData());
        return failure;
    }
    return 0;
}

} // namespace

QString DirClass::LastDllErrorText(qint32 vlngDllError)
{
    char buffer[256] = {};
    return QString::fromLocal8Bit(::strerror_r(vlngDllError, buffer, sizeof buffer));
}

void DirClass::DeleteFile(const QString& vFilePath, double vRetrySec)
{
    const QByteArray path = Native(vFilePath);
    QElapsedTimer timer;
    timer.start();
    while (::unlink(path.constData()) != 0) {
        const int code = errno;
        // Waiting doesn't bring back a file that isn't there.
        if (code == ENOENT || code == ENOTDIR || !WaitForRetry(timer, vRetrySec))
            Raise("DeleteFile", code, Quoted(QStringLiteral("FileName"), vFilePath));
    }
}

void DirClass::MoveFile(const QString& vFromFilePath, const QString& vToFilePath, double vRetrySec)
{
    const QByteArray from = Native(vFromFilePath);
    const QByteArray to = Native(vToFilePath);
    QElapsedTimer timer;
    timer.start();
    for (;;) {
        const int code = MoveOnce(from, to);
        if (code == 0)
            return;
        if (code == ENOENT || code == EEXIST || !WaitForRetry(timer, vRetrySec))
            Raise("MoveFile", code, Quoted(QStringLiteral("FromFileName"), vFromFilePath) + QLatin1Char(' ')
                                        + Quoted(QStringLiteral("ToFileName"), vToFilePath));
    }
}

void DirClass::CopyFile(const QString& vFromFilePath, const QString& vToFilePath, bool vFailIfExists)
{
    if (const int code = CopyBytes(Native(vFromFilePath), Native(vToFilePath), vFailIfExists); code != 0)
        Raise("CopyFile", code, Quoted(QStringLiteral("FromFileName"), vFromFilePath) + QLatin1Char(' ')
                                    + Quoted(QStringLiteral("ToFileName"), vToFilePath));
}

void DirClass::CreateDirectory(const QString& vPath)
{
    if (::mkdir(Native(vPath).constData(), 0777) != 0)
        Raise("CreateDirectory", errno, Quoted(QStringLiteral("Path"), vPath));
}

void DirClass::RemoveDirectory(const QString& vPath)
{
    if (::rmdir(Native(vPath).constData()) != 0)
        Raise("RemoveDirectory", errno, Quoted(QStringLiteral("Path"), vPath));
}

void DirClass::ChangeFolder(const QString& vFolderName)
{
    if (::chdir(Native(vFolderName).constData()) != 0)
        Raise("SetCurrentDirectory", errno, Quoted(QStringLiteral("FolderName"), vFolderName));
}

bool DirClass::CreateFolder(const QString& vFolderName, double vRetrySec)
{
    if (vFolderName.isEmpty())
        return false;
    const bool absolute = vFolderName.startsWith(QLatin1Char('/'));
    const QStringList pieces = vFolderName.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const QString root = absolute ? QStringLiteral("/") : QString();

    // The deepest level that is there already; below it every level is made.
    auto levelPath = [&](qsizetype vCount) {
        return vCount == 0 ? root : root + pieces.mid(0, vCount).join(QLatin1Char('/'));
    };
    qsizetype present = pieces.size();
    while (present > 0 && !ExistsDir(levelPath(present)))
        --present;

    QString path = levelPath(present);
    for (qsizetype i = present; i < pieces.size(); ++i) {
        // Names the user typed into a setting may hold characters no folder name can.
        const QString name = DeleteCanNotUseFileName(pieces.at(i));
        if (name.isEmpty())
            continue;
        path = (path.isEmpty() ? QString() : AddYen(path)) + name;
        QElapsedTimer timer;
        timer.start();
        const QByteArray native = Native(path);
        while (::mkdir(native.constData(), 0777) != 0) {
            const int code = errno;
            // Someone else may have made it meanwhile; that is as good. A file in the way or a
            // missing parent doesn't mend itself by waiting.
            if (ExistsDir(path))
                break;
            if (code == EEXIST || code == ENOTDIR || code == ENOENT || !WaitForRetry(timer, vRetrySec))
                Raise("CreateDirectory", code, Quoted(QStringLiteral("Path"), path));
        }
        // A folder on a share can take a moment to show.
        while (!ExistsDir(path) && WaitForRetry(timer, vRetrySec)) {
        }
    }
    return ExistsDir(path.isEmpty() ? root : path);
}
