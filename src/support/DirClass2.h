#pragma once
// The smaller sibling of DirClass: search and names only, without dates, path lists, locks or
// retries. Each operation acts as its namesake there.

#include "support/DirClass.h"

class DirClass2 {
public:
    QString FileName() const { return dir_.FileName(); }
    void SetFileName(const QString& vFileName) { dir_.SetFileName(vFileName); }
    QString PathName() const { return dir_.PathName(); }
    void SetPathName(const QString& vPathName) { dir_.SetPathName(vPathName); }
    SDC FileList() const { return dir_.FileList(); }
    SDC DirList() const { return dir_.DirList(); }
    bool SubDirSearchFlag() const { return dir_.SubDirSearchFlag(); }
    void SetSubDirSearchFlag(bool v) { dir_.SetSubDirSearchFlag(v); }

    void SerchFileName(const QString& vFileName = {}, const QString& vPathName = {}, bool vEvents = false,
                       const DirClass::FindFileCallback& vCallObject = {})
    {
        dir_.SerchFileName(vFileName, vPathName, vEvents, vCallObject);
    }
    static QString CreateFileName(const QString& vPathName, qint32 vAddSeqNumber = 1)
    {
        return DirClass::CreateFileName(vPathName, vAddSeqNumber);
    }
    static QString CreateFolderName(const QString& vPathName, qint32 vAddSeqNumber = 1)
    {
        return DirClass::CreateFolderName(vPathName, vAddSeqNumber);
    }
    static QString GetFileTypeString(const QString& v) { return DirClass::GetFileTypeString(v); }
    static QString GetBeforeFileTypeString(const QString& v) { return DirClass::GetBeforeFileTypeString(v); }
    static QString GetFileNameFromFullPath(const QString& v) { return DirClass::GetFileNameFromFullPath(v); }
    static QString GetPathFromFullPath(const QString& v) { return DirClass::GetPathFromFullPath(v); }
    static QString AddYen(const QString& v) { return DirClass::AddYen(v); }
    static QString DelYen(const QString& v) { return DirClass::DelYen(v); }
    static bool ExistsDir(const QString& v) { return DirClass::ExistsDir(v); }
    static bool CreateFolder(const QString& vFolderName) { return DirClass::CreateFolder(vFolderName, 0); }
    static QString DeleteCanNotUseFileName(const QString& v) { return DirClass::DeleteCanNotUseFileName(v); }
    // Kilobytes as a file manager shows them: every started kilobyte counts.
    static qint64 ChangeKbSize(qint64 vSize);
    static QString GetSpecialFolder(qint16 vFolder) { return DirClass::GetSpecialFolder(vFolder); }

private:
    DirClass dir_;
};
