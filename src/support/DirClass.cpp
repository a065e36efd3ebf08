// DirClass: names and path strings, and the well-known folders. The search lives in
// DirClassSearch.cpp, the calls that change the file system in DirClassSystem.cpp.
#include "support/DirClass.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QChar kSeparator = QLatin1Char('/');

// Anything at all under that name counts as taken: a folder or a dangling link blocks a new
// file just as well as a file does.
bool NameTaken(const QString& vPath)
{
    struct stat st {};
    return ::lstat(QFile::encodeName(vPath).constData(), &st) == 0;
}

QString SeqText(qint32 vNumber)
{
    const QString digits = QStringLiteral("%1").arg(qAbs(static_cast<qint64>(vNumber)), 4, 10, QLatin1Char('0'));
    return vNumber < 0 ? QLatin1Char('-') + digits : digits;
}

QString EnvFolder(const char* vVariable, const QString& vDefaultUnderHome)
{
    const QString value = qEnvironmentVariable(vVariable);
    if (!value.isEmpty())
        return value;
    return QDir::homePath() + kSeparator + vDefaultUnderHome;
}

QString ConfigHome() { return EnvFolder("XDG_CONFIG_HOME", QStringLiteral(".config")); }
QString DataHome() { return EnvFolder("XDG_DATA_HOME", QStringLiteral(".local/share")); }
QString CacheHome() { return EnvFolder("XDG_CACHE_HOME", QStringLiteral(".cache")); }

} // namespace

DirClass::DirClass()
    : fileList_(std::make_shared<StructuredDataClass>()),
      fileDateList_(std::make_shared<StructuredDataClass>()),
      pathList_(std::make_shared<StructuredDataClass>()),
      dirPathList_(std::make_shared<StructuredDataClass>()),
      dirList_(std::make_shared<StructuredDataClass>()),
      allDirList_(std::make_shared<StructuredDataClass>())
{
}

DirClass::~DirClass() { UnLockFile(); }

void DirClass::Clear()
{
    fileList_->Clear();
    fileDateList_->Clear();
    pathList_->Clear();
    dirPathList_->Clear();
    dirList_->Clear();
    allDirList_->Clear();
}

QString DirClass::CreateFileName(const QString& vPathName, qint32 vAddSeqNumber)
{
    if (!NameTaken(vPathName))
        return vPathName;
    // Only the name's own "." counts: a dot in a folder name is no type.
    const qsizetype slash = vPathName.lastIndexOf(kSeparator);
    const QString folder = vPathName.left(slash + 1);
    const QString name = vPathName.mid(slash + 1);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    const QString before = dot < 0 ? name : name.left(dot);
    const QString type = dot < 0 ? QString() : name.mid(dot);
    for (qint32 n = vAddSeqNumber;; ++n) {
        const QString candidate = folder + before + QLatin1Char('_') + SeqText(n) + type;
        if (!NameTaken(candidate))
            return candidate;
    }
}

QString DirClass::CreateFolderName(const QString& vPathName, qint32 vAddSeqNumber)
{
    if (!NameTaken(vPathName))
        return vPathName;
    const QString base = FolderFormat(vPathName);
    for (qint32 n = vAddSeqNumber;; ++n) {
        const QString candidate = base + QLatin1Char('_') + SeqText(n);
        if (!NameTaken(candidate))
            return candidate;
    }
}

QString DirClass::GetFileTypeString(const QString& vFileName)
{
    const qsizetype dot = vFileName.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? vFileName : vFileName.mid(dot + 1);
}

QString DirClass::GetBeforeFileTypeString(const QString& vFileName)
{
    const qsizetype dot = vFileName.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? vFileName : vFileName.left(dot);
}

QString DirClass::AddYen(const QString& vPath)
{
    return vPath.endsWith(kSeparator) ? vPath : vPath + kSeparator;
}

QString DirClass::DelYen(const QString& vPath)
{
    return vPath.endsWith(kSeparator) ? vPath.chopped(1) : vPath;
}

// As DelYen, except that the root stays "/": without its separator it would name no folder.
QString DirClass::FolderFormat(const QString& vPath)
{
    return vPath == kSeparator ? vPath : DelYen(vPath);
}

QString DirClass::GetFileNameFromFullPath(const QString& vFullPath)
{
    return vFullPath.mid(vFullPath.lastIndexOf(kSeparator) + 1);
}

// Before the last "/", without it; a file right under the root gives "/" and not "", which
// would mean the current folder.
QString DirClass::GetPathFromFullPath(const QString& vFullPath)
{
    const qsizetype slash = vFullPath.lastIndexOf(kSeparator);
    if (slash < 0)
        return {};
    return slash == 0 ? QString(kSeparator) : vFullPath.left(slash);
}

// Where the system's own programs live.
QString DirClass::GetSystemFolder() { return QStringLiteral("/usr/bin"); }

// The numbers stand for the Windows special folders they always meant; each gets the folder a
// Linux desktop uses for the same purpose. Folders that only exist in the Windows shell (the
// printers, the network, the favourites) have no place here and give "", as a failed look-up
// did there.
QString DirClass::GetSpecialFolder(qint16 vFolder)
{
    const QString home = QDir::homePath();
    switch (vFolder) {
    case 0:   // startup, not localised
    case 28:  // startup
        return ConfigHome() + QStringLiteral("/autostart");
    case 1:   // application data
        return ConfigHome();
    case 2:   // recycle bin
        return DataHome() + QStringLiteral("/Trash");
    case 3:   // all users' startup, not localised
    case 8:   // all users' startup
        return QStringLiteral("/etc/xdg/autostart");
    case 6:   // all users' programs
    case 7:   // all users' start menu
        return QStringLiteral("/usr/share/applications");
    case 11:  // desktop
    case 12:  // desktop folder
        return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    case 15:  // fonts
        return QStringLiteral("/usr/share/fonts");
    case 18:  // internet cache
        return CacheHome();
    case 21:  // documents
        return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    case 24:  // programs
    case 27:  // start menu
        return DataHome() + QStringLiteral("/applications");
    case 29:  // templates
        return home + QStringLiteral("/Templates");
    case 30:  // application data of all users
        return QStringLiteral("/etc/xdg");
    default:
        return {};
    }
}

bool DirClass::ExistsFile(const QString& vPath)
{
    struct stat st {};
    return !vPath.isEmpty() && ::stat(QFile::encodeName(vPath).constData(), &st) == 0 && S_ISREG(st.st_mode);
}

bool DirClass::ExistsDir(const QString& vPath)
{
    struct stat st {};
    return !vPath.isEmpty() && ::stat(QFile::encodeName(vPath).constData(), &st) == 0 && S_ISDIR(st.st_mode);
}

QString DirClass::DeleteCanNotUseFileName(const QString& aString)
{
    // Blanks at the ends go first; TABs and line ends anywhere go with the characters below.
    qsizetype from = 0;
    qsizetype to = aString.size();
    while (from < to && aString.at(from) == QLatin1Char(' '))
        ++from;
    while (to > from && aString.at(to - 1) == QLatin1Char(' '))
        --to;
    QString text = aString.mid(from, to - from);
    // The Windows set, not only "/": the names must survive a copy to a Windows share.
    static const char* const kBanned[] = {"\\", "/", ":", "*", "?", "\"", "<", ">", "|", "\r\n", "\t", "\r", "\n"};
    for (const char* banned : kBanned)
        text.remove(QLatin1String(banned));
    return text;
}

QString DirClass::StripNull(const QString& vString)
{
    const qsizetype nul = vString.indexOf(QChar(0));
    return nul < 0 ? vString : vString.left(nul);
}
