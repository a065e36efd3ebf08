#pragma once
// An area of the page made ready for Tesseract: cut out into Leptonica's picture, cleared of
// specks, straightened when its lines run askew. Tesseract then reports boxes in the prepared
// picture, and ToPage takes them back to the page the caller gave.

#include <QImage>
#include <QRect>

#include <memory>

struct Pix;

namespace ocr {

struct FreePix {
    void operator()(Pix* vPix) const;
};
using PixPtr = std::unique_ptr<Pix, FreePix>;

struct Prepared {
    PixPtr pix;
    QRect area;           // in the page
    QSize turnedSize;     // of pix, larger than the area when it was turned
    double angle = 0;     // radians the area was turned by, clockwise

    QRect ToPage(const QRect& vBox) const;
};

// vGray is the page in Grayscale8, vArea lies within it. vSpeck is the largest speck in pixels
// to take away (0 none); vDeskew turns the area when its skew can be measured with confidence.
Prepared Prepare(const QImage& vGray, const QRect& vArea, int vSpeck, bool vDeskew);

// The page's whole picture as it is, for orientation detection.
PixPtr ToPix(const QImage& vGray, const QRect& vArea);

} // namespace ocr
