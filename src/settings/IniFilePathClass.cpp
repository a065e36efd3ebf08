#include "settings/IniFilePathClass.h"

#include "support/AppError.h"
#include "support/DirClass.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

// How long a slow home folder (on a network) may take to show the new folder.
constexpr double kCreateRetrySec = 5;

} // namespace

QString IniFilePathClass::ProgramFolder()
{
    if (QCoreApplication::instance() != nullptr)
        return QCoreApplication::applicationDirPath();
    // Before the application object exists (or in a tool without one) the kernel still knows.
    return QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath().section(QLatin1Char('/'), 0, -2);
}

QString IniFilePathClass::UserFolder() const
{
    const QString base = DirClass::GetSpecialFolder(1);
    if (base.isEmpty())
        return {};
    const QString folder = DirClass::AddYen(base) + companyName_ + QLatin1Char('/') + applicationName_;
    if (!DirClass::ExistsDir(folder)) {
        try {
            DirClass::CreateFolder(folder, kCreateRetrySec);
        } catch (const AppError&) {
            // Reading goes on from beside the program; the first save reports the folder.
        }
    }
    return folder;
}

QString IniFilePathClass::GetIniFilePathForOpen()
{
    const QString userFolder = UserFolder();
    QString result;
    if (!userFolder.isEmpty()) {
        myAppDataPath_ = userFolder;
        const QString userFile = myAppDataPath_ + QLatin1Char('/') + iniFileName_;
        result = DirClass::ExistsFile(userFile) ? userFile
                                                : ProgramFolder() + QLatin1Char('/') + iniFileName_;
    } else {
        myAppDataPath_ = ProgramFolder();
        result = myAppDataPath_ + QLatin1Char('/') + iniFileName_;
    }
    iniFilePathForSave_ = myAppDataPath_ + QLatin1Char('/') + iniFileName_;
    return result;
}

QString IniFilePathClass::GetMyAppDataPath() const
{
    const QString userFolder = UserFolder();
    return userFolder.isEmpty() ? ProgramFolder() : userFolder;
}
