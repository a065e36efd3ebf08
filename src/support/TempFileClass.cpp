#include "support/TempFileClass.h"

#include "support/AppError.h"

TempFileClass::TempFileClass() : fileList_(std::make_shared<StructuredDataClass>()) {}

TempFileClass::~TempFileClass()
{
    try {
        DeleteTempFile();
    } catch (const AppError&) {
        // Nobody is left to tell; a stray file in the work folder does no harm.
    }
}

QString TempFileClass::RegisterTempFile(const QString& vTargetFileName, const QString& vTempFolderPath)
{
    const QString path = DirClass::CreateFileName(DirClass::AddYen(vTempFolderPath)
                                                  + DirClass::GetFileNameFromFullPath(vTargetFileName));
    fileList_->AddData(path);
    return path;
}

void TempFileClass::DeleteTempFile()
{
    for (qint16 i = 1; i <= fileList_->Count(); ++i) {
        const QString path = fileList_->DataValueOfNumber(i);
        if (DirClass::ExistsFile(path))
            DirClass::DeleteFile(path);
    }
}
