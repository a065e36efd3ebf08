#pragma once
// Gathers lines in memory and writes them in one go, in the system's code page (932) with CR LF,
// so that the files read the same on the Windows build. A write that fails raises.

#include <QString>
#include <QStringList>

class FileWriteClass {
public:
    QString FileName() const { return fileName_; }
    void SetFileName(const QString& vFileName) { fileName_ = vFileName; }
    qint32 Count() const { return static_cast<qint32>(lines_.size()); }
    qint32 CurrentLine() const { return static_cast<qint32>(lines_.size()); }  // number of the last line set

    // A name that is given replaces FileName; with no name at all nothing is written. vMode
    // "APPEND" (any case) appends; anything else replaces the file.
    void FileWrite(const QString& vFileName = {}, const QString& vMode = QStringLiteral("OUTPUT"));
    // Each line ended by LF alone, for readers of the Unix world; no EUC conversion happens.
    void FileWriteEUC(const QString& vFileName = {});
    void FileWriteFromString(const QString& vString, const QString& vFileName = {},
                             const QString& vMode = QStringLiteral("OUTPUT"));

    void SetLine(const QString& vString) { lines_ << vString; }
    void ClearAllLine() { lines_.clear(); }
    void DeleteCurrentLine();
    void WriteClipboard() const;
    QString GetAllString() const;  // all lines joined by CR LF

private:
    // The name to write to after vFileName, or "" when there is none.
    QString TargetName(const QString& vFileName);

    QString fileName_;
    QStringList lines_;
};
