#pragma once
// One opened file: a path and a few numbers. The document itself is opened again for every
// drawing, so a tab owns nothing that needs releasing.

#include <QString>

class AppFileClass {
public:
    QString FileName() const { return fileName_; }
    // Also decides FileType from the ending; an ending it doesn't know leaves the type alone.
    void SetFileName(const QString& vFileName)
    {
        fileName_ = vFileName;
        const QString upper = vFileName.toUpper();
        if (vFileName.size() >= 4 && (upper.endsWith(QLatin1String("TIF")) || upper.endsWith(QLatin1String("TIFF"))))
            fileType_ = QStringLiteral("TIF");
        else if (upper.endsWith(QLatin1String("XDW")))
            fileType_ = QStringLiteral("XDW");
    }
    qint32 TotalPage() const { return totalPage_; }
    void SetTotalPage(qint32 v) { totalPage_ = v; }
    qint32 NowPage() const { return nowPage_; }
    void SetNowPage(qint32 v) { nowPage_ = v; }
    qint32 PageAmount() const { return pageAmount_; }
    void SetPageAmount(qint32 v) { pageAmount_ = v; }
    QString FileType() const { return fileType_; }
    QString DispDirection() const { return dispDirection_; }
    void SetDispDirection(const QString& v) { dispDirection_ = v; }

private:
    QString fileName_;
    QString fileType_;  // "XDW", "TIF" or ""
    qint32 totalPage_ = 0;
    qint32 nowPage_ = 1;
    qint32 pageAmount_ = 1;
    QString dispDirection_ = QStringLiteral("LR");
};
