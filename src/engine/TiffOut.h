#pragma once
// Pages written as TIFF through libtiff, as every raster file of this program is: black and
// white as one-bit CCITT G4, colour as 8-bit RGB with deflate.

#include <QImage>
#include <QString>

namespace xdw {

// False, with the reason in *vError, when the file cannot be written.
bool WriteTiff(const QImage& vPage, const QString& vPath, int vDpi, QString* vError);

} // namespace xdw
