#pragma once
// Writes multi-page TIFF files for tests, benchmarks and the sample documents. Most callers give
// pictures and one of three usual kinds; tests of the reader describe each page's layout.

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>

#include <tiffio.h>

#include <vector>

namespace tiffwriter {

enum class Kind { BilevelG4, GreyLzw, RgbDeflate };

// A page as stored. The picture's format decides the samples: Mono or MonoLSB 1 bit (darker than
// mid-grey is black), Grayscale8, Grayscale16, Indexed8 with its palette; anything else 8-bit RGB.
struct Page {
    QImage picture;
    uint16_t compression = COMPRESSION_NONE;
    uint16_t photometric = 0xFFFF;               // 0xFFFF: the usual one for the picture
    uint16_t fillOrder = FILLORDER_MSB2LSB;
    uint16_t orientation = ORIENTATION_TOPLEFT;  // only the tag: the picture is stored as given
    uint32_t rowsPerStrip = 0;                   // 0: one strip
    uint32_t tileSide = 0;                       // a multiple of 16; 0: strips
};

// False when the file can't be written. vDpi goes into the resolution tags.
bool Write(const QString& vPath, const std::vector<Page>& vPages, int vDpi = 200);
bool Write(const QString& vPath, const QList<QImage>& vPages, Kind vKind, int vDpi = 200);

// A file of vCount pages whose pictures show their page numbers (common/PagePicture.h).
bool WriteNumbered(const QString& vPath, int vCount, Kind vKind, QSize vSize = QSize(850, 1100));

// The bytes of a file whose header claims a vWidth x vHeight 8-bit grey page in one strip, and
// that holds 16 bytes of it: libtiff won't write such a lie.
QByteArray HeaderOnly(uint32_t vWidth, uint32_t vHeight);

} // namespace tiffwriter
