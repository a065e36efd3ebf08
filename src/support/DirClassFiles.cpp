// DirClass: whether a file is free to use, locks, the control-character filter and file times.
// "Exclusive" is an advisory lock (flock): it keeps out every program that asks for the lock as
// well, our own second process included; a writer that never asks isn't stopped by it.
#include "support/DirClass.h"

#include "support/AppError.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

void GiveTurn(unsigned long vMilliseconds)
{
    QCoreApplication::processEvents();
    QThread::msleep(vMilliseconds);
}

// A descriptor holding the exclusive lock of a file, or -1.
int OpenLocked(const QString& vFilePath)
{
    const int fd = ::open(QFile::encodeName(vFilePath).constData(), O_RDWR | O_CLOEXEC | O_NOCTTY);
    if (fd < 0)
        return -1;
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return -1;
    }
    return fd;
}

qint64 FileLength(const QString& vFilePath)
{
    struct stat st {};
    if (::stat(QFile::encodeName(vFilePath).constData(), &st) != 0)
        return -1;
    return static_cast<qint64>(st.st_size);
}

QString TimeText(const QDateTime& vTime)
{
    return vTime.isValid() ? vTime.toLocalTime().toString(QStringLiteral("yyyy/MM/dd HH:mm:ss")) : QString();
}

} // namespace

// A file that isn't there can't be used, so it is no success; it isn't made on the way either.
bool DirClass::OpenCheck(const QString& vFilePath)
{
    const int fd = OpenLocked(vFilePath);
    if (fd < 0)
        return false;
    ::close(fd);
    return true;
}

bool DirClass::RetryOpenCheck(const QString& vFilePath, double vRetrySec)
{
    QElapsedTimer timer;
    timer.start();
    for (;;) {
        if (OpenCheck(vFilePath))
            return true;
        if (timer.elapsed() >= vRetrySec * 1000.0)
            return false;
        GiveTurn(100);
    }
}

// A missing file counts as length -1 in each sample, so it "stays the same" as well.
bool DirClass::FileSizeCheck(const QString& vFilePath, qint32 vCount)
{
    qint64 first = 0;
    bool same = true;
    for (qint32 i = 0; i < vCount; ++i) {
        const qint64 length = FileLength(vFilePath);
        if (i == 0)
            first = length;
        else if (length != first)
            same = false;
        GiveTurn(500);
    }
    return same;
}

bool DirClass::LockFile(const QString& vFilePath)
{
    UnLockFile();
    if (!ExistsFile(vFilePath))
        return false;
    lockFileNo_ = OpenLocked(vFilePath);
    return lockFileNo_ >= 0;
}

void DirClass::UnLockFile(const QString& /*vFilePath*/)
{
    if (lockFileNo_ < 0)
        return;
    ::close(lockFileNo_);  // closing lets go of the lock
    lockFileNo_ = -1;
}

void DirClass::RemoveCtrlChar(const QString& aInputPath, const QString& aOutPath)
{
    QFile input(aInputPath);
    // The file may still be in the hands of whoever wrote it.
    for (int attempt = 0; attempt < 30 && !input.open(QIODevice::ReadOnly); ++attempt)
        GiveTurn(100);
    if (!input.isOpen())
        throw AppError(AppError::FileSystem, QStringLiteral("DirClass.RemoveCtrlChar:入力ファイルがオープンできません。(")
                                                 + aInputPath + QLatin1Char(')'));
    QFile output(aOutPath);
    if (!output.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw AppError(AppError::FileSystem, QStringLiteral("DirClass.RemoveCtrlChar:出力ファイルがオープンできません。(")
                                                 + aOutPath + QLatin1Char(')'));

    // The second byte of a double-byte character is taken as it is, even across blocks.
    bool trailNext = false;
    for (;;) {
        const QByteArray block = input.read(4095);
        if (block.isEmpty())
            break;
        QByteArray kept;
        kept.reserve(block.size());
        for (const char c : block) {
            const auto b = static_cast<unsigned char>(c);
            if (trailNext) {
                trailNext = false;
                kept.append(c);
            } else if ((b >= 129 && b <= 159) || (b >= 224 && b <= 239)) {
                trailNext = true;
                kept.append(c);
            } else if ((b >= 32 && b != 127) || b == '\r' || b == '\n' || b == '\t') {
                kept.append(c);
            }
        }
        if (output.write(kept) != kept.size())
            throw AppError(AppError::FileSystem, QStringLiteral("DirClass.RemoveCtrlChar:") + output.errorString()
                                                     + QStringLiteral("(") + aOutPath + QLatin1Char(')'));
        QCoreApplication::processEvents();
    }
}

// Linux keeps a birth time only on some file systems; without one, the time of the last change
// of the entry is the closest thing, as it is what "created" meant before birth times.
QString DirClass::GetFileTimeCreation(const QString& vPath)
{
    const QFileInfo info(vPath);
    if (!info.exists())
        return {};
    const QDateTime born = info.birthTime();
    return TimeText(born.isValid() ? born : info.metadataChangeTime());
}

QString DirClass::GetFileTimeLastAccess(const QString& vPath)
{
    const QFileInfo info(vPath);
    return info.exists() ? TimeText(info.lastRead()) : QString();
}

QString DirClass::GetFileTimeLastWrite(const QString& vPath)
{
    const QFileInfo info(vPath);
    return info.exists() ? TimeText(info.lastModified()) : QString();
}
