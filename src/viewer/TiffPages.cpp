#include "viewer/TiffPages.h"

#include "viewer/TiffDecode.h"
#include "viewer/TiffFile.h"

#include <atomic>

namespace {
std::atomic<qint64> decodeCount{0};
}

int TiffPages::CountPages(const QString& vPath)
{
    TiffFile file(vPath);
    return file.PageCount();
}

QImage TiffPages::ReadPage(const QString& vPath, int vPage, int* vTotalPages)
{
    TiffFile file(vPath);
    const int total = file.PageCount();
    file.SelectPage(vPage == 0 ? 0 : vPage - 1, total);
    ++decodeCount;
    QImage page = tiffdecode::DecodeCurrentPage(file);
    if (vTotalPages)
        *vTotalPages = total;
    return page;
}

qint64 TiffPages::DecodeCount() { return decodeCount.load(); }
