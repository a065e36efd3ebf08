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

} // namespace pagepane
