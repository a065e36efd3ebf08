#pragma once
// The file system toolbox: searching folders by patterns, making names that are still free,
// path strings, open checks that wait for a writer to let go, and file locks. Paths use "/";
// the names AddYen and DelYen stay, as every caller knows them by those names.
//
// Operations on the system raise error 6800 (AppError::FileSystem) with the system's code
// (errno) and its text in the description, so that a log shows which call failed on which path.

#include "store/StructuredDataClass.h"

#include <QString>
#include <functional>

class DirClass {
public:
    // Receives each file a search finds: its name and its folder with a trailing "/".
    using FindFileCallback = std::function<void(const QString& vFileName, const QString& vPath)>;

    DirClass();
    ~DirClass();  // lets go of a lock still held
    DirClass(const DirClass&) = delete;
    DirClass& operator=(const DirClass&) = delete;

    // Search patterns, separated by ";" ("*.xdw; *.xbd").
    QString FileName() const { return fileName_; }
    void SetFileName(const QString& vFileName) { fileName_ = vFileName; }
    QString PathName() const { return pathName_; }
    void SetPathName(const QString& vPathName) { pathName_ = FolderFormat(vPathName); }

    // Results of the last search; parallel by position. The store is handed out as it is, so
    // callers read it but are expected to leave it alone.
    SDC FileList() const { return fileList_; }          // file names
    SDC FileDateList() const { return fileDateList_; }  // "yyyy/mm/dd hh:nn:ss", local time
    SDC PathList() const { return pathList_; }          // folder of each file, with "/"
    SDC DirPathList() const { return dirPathList_; }    // folder of each found folder, with "/"
    SDC DirList() const { return dirList_; }            // found folder names
    SDC AllDirList() const { return allDirList_; }      // every folder walked, with "/"
    int LockFileNo() const { return lockFileNo_; }      // descriptor of the lock, -1 for none

    bool SubDirSearchFlag() const { return subDirSearchFlag_; }
    void SetSubDirSearchFlag(bool v) { subDirSearchFlag_ = v; }

    // Runs the search into the lists. A pattern or folder that is given and not blank replaces
    // FileName or PathName first. vEvents gives the event loop a turn after each find. With a
    // callback the files go to it instead of the three file lists, so that a walk over a huge
    // tree costs no memory here; the folder lists are filled either way.
    void SerchFileName(const QString& vFileName = {}, const QString& vPathName = {},
                       bool vEvents = false, const FindFileCallback& vCallObject = {});
    // The full path of the first file that vFileName (patterns) finds in PathName, or "".
    QString FindFile(const QString& vFileName);
    void Clear();

    // A name that doesn't exist yet: vPathName itself, or with "_0000" numbering before the type.
    static QString CreateFileName(const QString& vPathName, qint32 vAddSeqNumber = 1);
    static QString CreateFolderName(const QString& vPathName, qint32 vAddSeqNumber = 1);
    static QString GetFileTypeString(const QString& vFileName);        // behind the last "."
    static QString GetBeforeFileTypeString(const QString& vFileName);  // before the last "."

    static QString AddYen(const QString& vPath);
    static QString DelYen(const QString& vPath);
    static QString FolderFormat(const QString& vPath);
    static QString GetFileNameFromFullPath(const QString& vFullPath);
    static QString GetPathFromFullPath(const QString& vFullPath);
    static QString GetSystemFolder();
    static QString GetSpecialFolder(qint16 vFolder);  // 0 to 30; "" for others
    static bool ExistsFile(const QString& vPath);
    static bool ExistsDir(const QString& vPath);

    // Creates every missing level. vRetrySec is how long a level may take to appear (a share or
    // a second process can be slow); raises 6800 when a level can't be made. True when the
    // folder exists at the end.
    static bool CreateFolder(const QString& vFolderName, double vRetrySec = 0);
    static void ChangeFolder(const QString& vFolderName);
    static QString DeleteCanNotUseFileName(const QString& aString);

    // True when the file's length stayed the same over vCount samples half a second apart.
    static bool FileSizeCheck(const QString& vFilePath, qint32 vCount);
    // OpenCheck until it succeeds or vRetrySec has passed; 0 tries once.
    static bool RetryOpenCheck(const QString& vFilePath, double vRetrySec);
    // True when the file could be opened for reading and writing under an exclusive lock.
    static bool OpenCheck(const QString& vFilePath);

    // Raise 6800 on failure. vRetrySec keeps trying that long, for a file another program holds.
    static void DeleteFile(const QString& vFilePath, double vRetrySec = 0);
    // Refuses to replace an existing target, and moves a file to another file system too.
    static void MoveFile(const QString& vFromFilePath, const QString& vToFilePath, double vRetrySec = 0);
    // A plain copy; with vFailIfExists an existing target is an error, else it is replaced.
    static void CopyFile(const QString& vFromFilePath, const QString& vToFilePath,
                         bool vFailIfExists = false);
    static void CreateDirectory(const QString& vPath);
    static void RemoveDirectory(const QString& vPath);
    static QString LastDllErrorText(qint32 vlngDllError);  // the system's text of an errno

    // Copies aInputPath to aOutPath without control characters other than CR, LF and TAB.
    static void RemoveCtrlChar(const QString& aInputPath, const QString& aOutPath);

    // Holds an exclusive lock on an existing file until UnLockFile or the end of this object.
    bool LockFile(const QString& vFilePath);
    void UnLockFile(const QString& vFilePath = {});

    static QString StripNull(const QString& vString);
    // The time as "yyyy/mm/dd hh:nn:ss" in local time; "" for a path that isn't there.
    static QString GetFileTimeCreation(const QString& vPath);
    static QString GetFileTimeLastAccess(const QString& vPath);
    static QString GetFileTimeLastWrite(const QString& vPath);

private:
    class Walker;

    QString fileName_;
    QString pathName_;
    SDC fileList_;
    SDC fileDateList_;
    SDC pathList_;
    SDC dirPathList_;
    SDC dirList_;
    SDC allDirList_;
    int lockFileNo_ = -1;
    bool subDirSearchFlag_ = false;
};
