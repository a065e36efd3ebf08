// Files and folders: thin hand-overs to DirClass, which owns the system calls and their errors.
#include "support/CommonLibClass.h"

#include "support/DirClass.h"

#include <QDir>

QString CommonLibClass::FolderFormat(const QString& vPathName)
{
    return DirClass::FolderFormat(vPathName);
}

bool CommonLibClass::ExistsDir(const QString& vPathName)
{
    return DirClass::ExistsDir(vPathName);
}

QString CommonLibClass::AddYen(const QString& vPathName)
{
    return DirClass::AddYen(vPathName);
}

QString CommonLibClass::GetFileNameFromFullPath(const QString& FullPath)
{
    return DirClass::GetFileNameFromFullPath(FullPath);
}

QString CommonLibClass::GetPathFromFullPath(const QString& FullPath)
{
    return DirClass::GetPathFromFullPath(FullPath);
}

void CommonLibClass::DeleteFile(const QString& vFilePath)
{
    DirClass::DeleteFile(vFilePath);
}

void CommonLibClass::MoveFile(const QString& vFromFilePath, const QString& vToFilePath)
{
    DirClass::MoveFile(vFromFilePath, vToFilePath);
}

void CommonLibClass::CopyFile(const QString& vFromFilePath, const QString& vToFilePath, bool vFailIfExists)
{
    DirClass::CopyFile(vFromFilePath, vToFilePath, vFailIfExists);
}

void CommonLibClass::CreateDirectory(const QString& vPath)
{
    DirClass::CreateDirectory(vPath);
}

void CommonLibClass::RemoveDirectory(const QString& vPath)
{
    DirClass::RemoveDirectory(vPath);
}

QString CommonLibClass::LastDllErrorText(qint32 vlngDllError)
{
    return DirClass::LastDllErrorText(vlngDllError);
}

void CommonLibClass::CreateTempFolder(const QString& vPathName, bool vDelete)
{
    if (!ExistsDir(vPathName)) {
        DirClass::CreateFolder(vPathName);
        return;
    }
    if (!vDelete)
        return;
    // "*.*" meant every file on the system this came from, names without a dot included.
    const QDir folder(vPathName);
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& name : names)
        DeleteFile(folder.filePath(name));
}
