#pragma once
// One TIFF file open for reading. libtiff speaks through process-wide handlers; while a file is
// open on this thread its complaints are kept here instead of reaching the terminal, so that a
// failure can tell the user in words what went wrong with which file.

#include <QString>
#include <QStringList>

#include <tiffio.h>

class TiffFile {
public:
    // Raises 75 ("ファイルを読み込めません。") when the file can't be opened as a TIFF.
    explicit TiffFile(const QString& vPath);
    ~TiffFile();
    TiffFile(const TiffFile&) = delete;
    TiffFile& operator=(const TiffFile&) = delete;

    TIFF* Handle() const { return tif_; }
    const QString& Path() const { return path_; }

    // The number of pages (image file directories). libtiff follows the chain of directories
    // without reading their tags, gives up on a loop and stops at its own limit.
    int PageCount() const;
    // Makes page vIndex (from 0) the current one; raises 9 when there is no such page.
    void SelectPage(int vIndex, int vPageCount);

    // 75 with the text, the path and the detail: by default the first thing libtiff complained
    // about.
    [[noreturn]] void Fail(const QString& vText) const { Fail(vText, FirstError()); }
    [[noreturn]] void Fail(const QString& vText, const QString& vDetail) const;
    QString FirstError() const { return errors_.isEmpty() ? QString() : errors_.first(); }

    // Called by the handlers; public because they are plain functions.
    void Collect(const QString& vMessage);

private:
    QString path_;
    TIFF* tif_ = nullptr;
    QStringList errors_;
    TiffFile* outer_ = nullptr;  // the file that was collecting before this one, if any
};
