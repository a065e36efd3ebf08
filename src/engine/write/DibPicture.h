#pragma once
// Pictures as a page's content drawing: a device-independent bitmap (kind 7) for what must stay
// exact, or a JPEG (kind 5) for photographs and scans in colour. Both are field lists ready for
// the content's attribute 7; the box they are drawn into is given in hundredths of a millimetre.

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QtGlobal>

#include <functional>

namespace xdw {

// Packs a DIB's pixel rows as an LH5 stream.
using PictureCompressor = std::function<QByteArray(QByteArrayView)>;

namespace picture {

// A kind 7 drawing of vImage: Format_Mono (index 0 black) as 1 bit a pixel with a black and white
// table, Format_Grayscale8 as 8 bits with a grey table, anything else as 24-bit colour. The data
// is the BITMAPINFO, then u32 1 | u32 stored | u32 expanded | u32 rows and the packed rows,
// bottom row first. Refuses (0x8007000E) a picture larger than a reader may expand.
QByteArray DibDrawing(const QImage& vImage, qint64 vWidth, qint64 vHeight, const PictureCompressor& vCompress);

// A kind 5 drawing holding the JPEG vJpeg of vPixels pixels.
QByteArray JpegDrawing(const QByteArray& vJpeg, QSize vPixels, qint64 vWidth, qint64 vHeight);

// vImage as a JPEG at vQuality (0 to 100); greys stay one channel.
QByteArray EncodeJpeg(const QImage& vImage, int vQuality);

} // namespace picture
} // namespace xdw
