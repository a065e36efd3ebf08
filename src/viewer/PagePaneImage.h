#pragma once
// Pixel work behind the page pane: the conversion to 16 bits per pixel and the paint gamma.

#include <QImage>

namespace pagepane {

// The picture as Format_RGB555. Bilevel, 8-bit and 24/32-bit pictures have their own loops (a
// 400 dpi A4 fax page is 15 million pixels, and every page turn converts one); anything else goes
// through Qt. A picture already in 5-5-5 comes back as it is.
QImage To16Bit(const QImage& vPicture);

// vImage (Format_RGB32) through the gamma curve: a channel value v
// becomes 255 * (v / 255) ^ (100 / vGamma). 100 changes nothing; below 100 darkens the middle
// greys and leaves black and white alone, which is what thickens thin strokes of a reduced page.
void ApplyGamma(QImage& vImage, int vGamma);

// The colour vColour becomes when it goes through 5-5-5 and back, as Qt expands it.
QRgb Through555(QRgb vColour);

// vPicture reduced to vSize (no bigger than the picture) with area averaging, as Format_RGB32
// or, for a picture with alpha, ARGB32_Premultiplied. Blocks of whole pixels are averaged first,
// straight from the picture's own format (1-bit rows by counting bits), and Qt's scaler takes
// the small result the rest of the way: Qt alone would first make a 32-bit copy of the whole
// picture, 62 MB for a 400 dpi A4 page, and its 1-bit and 5-5-5 conversions are slow.
QImage SmoothReduced(const QImage& vPicture, QSize vSize);

} // namespace pagepane
