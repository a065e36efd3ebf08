#pragma once
// Temporary copies to be deleted at the end. A document is read from a private copy, so that
// the original stays free for whoever else wants it; this class remembers the copies and removes
// them when asked, and at the latest when it goes.

#include "support/DirClass.h"

class TempFileClass {
public:
    TempFileClass();
    ~TempFileClass();  // deletes what is still there; a failure is ignored then
    TempFileClass(const TempFileClass&) = delete;
    TempFileClass& operator=(const TempFileClass&) = delete;

    SDC FileList() const { return fileList_; }

    // A free name in vTempFolderPath after the target's file name; it is remembered and returned.
    // The caller makes the file.
    QString RegisterTempFile(const QString& vTargetFileName, const QString& vTempFolderPath);
    // Deletes each remembered file that exists; raises 6800 when one can't be deleted.
    void DeleteTempFile();

private:
    SDC fileList_;
};
