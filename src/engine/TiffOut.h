#pragma once
// Pages written as TIFF through libtiff, as every raster file of this program is. Left to
// itself it writes black and white as one-bit CCITT G4 and colour as 8-bit RGB with deflate;
// a caller may name the compression and add the page to an existing file as a further page.

#include <QImage>
#include <QString>

namespace xdw {

enum class TiffCompress { Auto, None, PackBits, Lzw, Deflate, Jpeg, JpegTtn2, G4 };

struct TiffOptions {
    TiffCompress compress = TiffCompress::Auto;
    int jpegQuality = 75;
    // Add a directory at the end of the file instead of replacing the file.
    bool append = false;
};

// False, with the reason in *vError, when the file cannot be written. G4 makes a colour page
// black and white; JPEG makes a black-and-white page 8-bit grey, the depth JPEG has.
bool WriteTiff(const QImage& vPage, const QString& vPath, int vDpi, QString* vError,
               const TiffOptions& vOptions = {});

} // namespace xdw
