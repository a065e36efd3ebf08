#pragma once
// The picture of a scripted page: the page number in big seven-segment digits that a person
// reads on a screenshot, and the same number as a strip of 16 black and white blocks near the
// foot that a test reads back, even from a scaled or darkened copy. Drawn with rectangles
// only, so that no font has to be installed.

#include <QImage>
#include <QSize>

namespace pagepicture {

// A picture of vSize pixels showing vPage (0 to 65535) on white.
QImage Draw(int vPage, QSize vSize);

// The page number shown in vImage, or -1 when it isn't such a picture.
int Read(const QImage& vImage);

} // namespace pagepicture
