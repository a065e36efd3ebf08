#pragma once
// Where the settings file is read from and written to. Each user has a copy in the per-user
// configuration folder, under company and application name; while there is none, the shipped
// default beside the program serves for reading, and the first save makes the user's copy.
// Nothing is copied: that is the whole migration.

#include <QString>

class IniFilePathClass {
public:
    QString CompanyName() const { return companyName_; }
    void SetCompanyName(const QString& v) { companyName_ = v; }
    QString ApplicationName() const { return applicationName_; }
    void SetApplicationName(const QString& v) { applicationName_ = v; }
    QString IniFileName() const { return iniFileName_; }
    void SetIniFileName(const QString& v) { iniFileName_ = v; }
    QString IniFilePathForSave() const { return iniFilePathForSave_; }
    QString MyAppDataPath() const { return myAppDataPath_; }

    // The file to read: the user's copy when there is one, else the one beside the program.
    // Fills MyAppDataPath and IniFilePathForSave, creating the user's folder on the way.
    QString GetIniFilePathForOpen();
    // The user's folder (created when missing) without touching the fields.
    QString GetMyAppDataPath() const;

    // The folder of the running program.
    static QString ProgramFolder();

private:
    // The user's folder under company and application name, made if missing; "" when the
    // system gives no per-user folder.
    QString UserFolder() const;

    QString iniFileName_;
    QString iniFilePathForSave_;
    QString companyName_;
    QString applicationName_;
    QString myAppDataPath_;
};
