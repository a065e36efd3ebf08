#pragma once
// Reads a text file of the system's code page (932) into lines, or into one string. Files that
// can't be opened are reported by the result, not raised: a missing log or list is a normal case
// for the callers.

#include <QString>
#include <QStringList>

class FileReadClass {
public:
    QString FileName() const { return fileName_; }
    void SetFileName(const QString& vFileName) { fileName_ = vFileName; }

    qint32 Count() const { return static_cast<qint32>(lines_.size()); }
    // Counts from 1; "" outside 1 to Count.
    QString Line(qint32 vIndex) const;

    // Reads all lines; "" on success, else a text beginning "エラー番号 ". A name that is given and
    // not blank replaces FileName. A line ends at CR or CR LF.
    QString FileRead(const QString& vFileName = {});
    // Reads the whole file as one text, which then is the one line (Line(1)); "1" on success,
    // else the text of FileRead.
    QString FileReadToString(const QString& vFileName = {});

private:
    // The bytes of FileName, or the error text in vError.
    QByteArray ReadBytes(const QString& vFileName, QString& vError);

    QString fileName_;
    QStringList lines_;
};
