// DirClass: the search of folders by patterns, depth-first into sub-folders.
#include "support/DirClass.h"

#include "support/AppError.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <set>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace {

// Windows rules: "*" any run of characters, "?" one character, and letters without regard to
// case, since the documents come from Windows machines ("*.tif" must find "SCAN0001.TIF").
// Both sides arrive case-folded.
bool WildcardMatch(QStringView vPattern, QStringView vName)
{
    qsizetype p = 0;
    qsizetype n = 0;
    qsizetype starP = -1;
    qsizetype starN = 0;
    while (n < vName.size()) {
        if (p < vPattern.size() && (vPattern[p] == QLatin1Char('?') || vPattern[p] == vName[n])) {
            ++p;
            ++n;
        } else if (p < vPattern.size() && vPattern[p] == QLatin1Char('*')) {
            starP = p++;
            starN = n;
        } else if (starP >= 0) {
            p = starP + 1;
            n = ++starN;
        } else {
            return false;
        }
    }
    while (p < vPattern.size() && vPattern[p] == QLatin1Char('*'))
        ++p;
    return p == vPattern.size();
}

QString TimeText(const struct timespec& vTime)
{
    return QDateTime::fromSecsSinceEpoch(vTime.tv_sec).toString(QStringLiteral("yyyy/MM/dd HH:mm:ss"));
}

class DirHandle {
public:
    explicit DirHandle(DIR* v) : dir_(v) {}
    ~DirHandle()
    {
        if (dir_)
            ::closedir(dir_);
    }
    DirHandle(const DirHandle&) = delete;
    DirHandle& operator=(const DirHandle&) = delete;
    DIR* Get() const { return dir_; }

private:
    DIR* dir_;
};

} // namespace

class DirClass::Walker {
public:
    Walker(DirClass& vOwner, QStringList vPatterns, bool vEvents, const FindFileCallback& vCallObject)
        : owner_(vOwner), patterns_(std::move(vPatterns)), events_(vEvents), callObject_(vCallObject)
    {
        for (const QString& pattern : patterns_)
            // "*.*" finds names without a dot as well, as it always has on Windows.
            folded_ << (pattern == QLatin1String("*.*") ? QStringLiteral("*") : pattern.toCaseFolded());
    }

    void Walk(const QString& vFolder)
    {
        std::vector<Entry> entries;
        if (!Read(vFolder, entries))
            return;
        owner_.allDirList_->AddData(vFolder);

        std::vector<bool> taken(entries.size(), false);
        for (const QString& pattern : folded_) {
            for (size_t i = 0; i < entries.size(); ++i) {
                if (taken[i] || !WildcardMatch(pattern, entries[i].folded))
                    continue;
                // A name that two patterns find is still one find: the file list store refuses
                // the same path and name twice.
                taken[i] = true;
                Found(vFolder, entries[i]);
            }
        }
        if (!owner_.subDirSearchFlag_)
            return;
        for (const Entry& e : entries) {
            if (e.isDir)
                Walk(vFolder + e.name + QLatin1Char('/'));
        }
    }

private:
    struct Entry {
        QString name;
        QString folded;
        bool isDir = false;
        struct timespec written {};
    };

    // The entries of one folder in name order, so that a walk gives the same order every time.
    // False for a folder that isn't there, or one reached before by a link.
    bool Read(const QString& vFolder, std::vector<Entry>& vEntries)
    {
        const QByteArray folderName = QFile::encodeName(vFolder);
        DirHandle dir(::opendir(folderName.constData()));
        if (!dir.Get()) {
            if (errno == ENOENT)
                return false;
            Raise(errno, vFolder);
        }
        struct stat self {};
        if (::fstat(::dirfd(dir.Get()), &self) == 0 && !visited_.insert({self.st_dev, self.st_ino}).second)
            return false;
        for (;;) {
            errno = 0;
            const dirent* d = ::readdir(dir.Get());
            if (!d) {
                if (errno != 0)
                    Raise(errno, vFolder);
                break;
            }
            const QByteArray raw(d->d_name);
            if (raw == "." || raw == "..")
                continue;
            struct stat st {};
            // A link counts as what it points to; a broken one as a file of its own.
            if (::fstatat(::dirfd(dir.Get()), d->d_name, &st, 0) != 0
                && ::fstatat(::dirfd(dir.Get()), d->d_name, &st, AT_SYMLINK_NOFOLLOW) != 0)
                continue;
            Entry e;
            e.name = QFile::decodeName(raw);
            e.folded = e.name.toCaseFolded();
            e.isDir = S_ISDIR(st.st_mode);
            e.written = st.st_mtim;
            vEntries.push_back(std::move(e));
        }
        std::sort(vEntries.begin(), vEntries.end(), [](const Entry& a, const Entry& b) {
            return a.folded != b.folded ? a.folded < b.folded : a.name < b.name;
        });
        return true;
    }

    void Found(const QString& vFolder, const Entry& vEntry)
    {
        if (vEntry.isDir) {
            owner_.dirList_->AddData(vEntry.name);
            owner_.dirPathList_->AddData(vFolder);
        } else if (callObject_) {
            callObject_(vEntry.name, vFolder);
        } else {
            owner_.fileList_->AddData(vEntry.name);
            owner_.pathList_->AddData(vFolder);
            owner_.fileDateList_->AddData(TimeText(vEntry.written));
        }
        if (events_)
            QCoreApplication::processEvents();
    }

    [[noreturn]] void Raise(int vCode, const QString& vFolder) const
    {
        throw AppError(AppError::FileSystem,
                       QStringLiteral("SerchFileName(") + QString::number(vCode) + QLatin1Char(')')
                           + DirClass::LastDllErrorText(vCode) + QStringLiteral(" Folder = \"")
                           + vFolder + QStringLiteral(" File = \"") + patterns_.value(0)
                           + QLatin1Char('"'));
    }

    DirClass& owner_;
    QStringList patterns_;
    QStringList folded_;
    bool events_;
    const FindFileCallback& callObject_;
    std::set<std::pair<dev_t, ino_t>> visited_;
};

void DirClass::SerchFileName(const QString& vFileName, const QString& vPathName, bool vEvents,
                             const FindFileCallback& vCallObject)
{
    if (!vFileName.trimmed().isEmpty())
        SetFileName(vFileName);
    if (!vPathName.trimmed().isEmpty())
        SetPathName(vPathName);
    Clear();

    QStringList patterns;
    for (const QString& piece : fileName_.split(QLatin1Char(';'))) {
        const QString pattern = piece.trimmed();
        if (!pattern.isEmpty())
            patterns << pattern;
    }
    if (patterns.isEmpty())
        return;
    // No folder is the current one, rather than the root that "" + "/" would make.
    const QString folder = pathName_.isEmpty() ? QDir::currentPath() : pathName_;
    Walker walker(*this, patterns, vEvents, vCallObject);
    walker.Walk(AddYen(folder));
}

QString DirClass::FindFile(const QString& vFileName)
{
    SerchFileName(vFileName);
    if (fileList_->Count() == 0)
        return {};
    return pathList_->DataValueOfNumber(1) + fileList_->DataValueOfNumber(1);
}
