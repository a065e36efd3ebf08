#pragma once
// Decoding the current page of an open TIFF file into a QImage, and turning a decoded raster
// into the way the file says it is to be seen.

#include <QImage>

class TiffFile;

namespace tiffdecode {

// Bilevel, 8-bit grey, 8-bit palette and 8-bit RGB pages are read strip by strip (or tile by
// tile) straight into a picture of their own depth; everything else goes through libtiff's RGBA
// reader into 32 bits. Raises through vFile when the page is too big or can't be decoded.
QImage DecodeCurrentPage(TiffFile& vFile);

// vRaster holds the rows in the order the file stores them; the result is upright for the
// TIFF orientation value vOrientation (1 to 8; anything else counts as 1).
QImage Oriented(const QImage& vRaster, int vOrientation);

// Rows become columns: pixel (x, y) moves to (y, x). Any depth QImage has; keeps the palette.
QImage Transposed(const QImage& vImage);

} // namespace tiffdecode
