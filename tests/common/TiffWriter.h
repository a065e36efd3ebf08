#pragma once
// Writes multi-page TIFF files for tests, benchmarks and the sample documents: each page a
// picture, stored as a bilevel CCITT G4 page, an 8-bit grey LZW page or an RGB page.

#include <QImage>
#include <QList>
#include <QString>

namespace tiffwriter {

enum class Kind { BilevelG4, GreyLzw, RgbDeflate };

// False when the file can't be written. vDpi goes into the resolution tags.
bool Write(const QString& vPath, const QList<QImage>& vPages, Kind vKind, int vDpi = 200);

// A file of vCount pages whose pictures show their page numbers (common/PagePicture.h).
bool WriteNumbered(const QString& vPath, int vCount, Kind vKind, QSize vSize = QSize(850, 1100));

} // namespace tiffwriter
