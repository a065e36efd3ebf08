#pragma once
// Where an image goes on the page made for it. Three ways to place, by name:
//
//   FITDEF   the page is the image's own size at its resolution, the image fills it; the other
//            placing values are not used.
//   FIT      the page is Width x Height (A4 portrait, 210 x 297 mm, when either is 0); the image
//            is scaled up or down to the largest size that fits, its aspect kept, and put at
//            HorPos / VerPos along the side with room to spare.
//   USERDEF  the page is Width x Height as for FIT; the image is its own size times Zoom percent
//            (100 when 0), put at HorPos / VerPos. What would fall off the page is cut off: the
//            picture keeps only the pixels that show, so the file never holds a box outside its
//            page.
//
// HorPos 0 centres, 1 puts the image at the left edge, 2 at the right; VerPos 0 centres, 1 top,
// 2 bottom; other numbers centre. Names are matched exactly ("FIT", not "fit"); another name,
// a size below 0 or above 10 m, or a zoom below 0 or above 10,000 percent is refused
// (0x80070057).

#include <QRect>
#include <QSize>
#include <QString>
#include <QtGlobal>

namespace xdw {

// What the user chose for a conversion; sizes in hundredths of a millimetre.
struct Placing {
    QString fitImage = QStringLiteral("FITDEF"), compress = QStringLiteral("NORMAL");
    qint32 zoom = 0, width = 0, height = 0;
    int horPos = 0, verPos = 0;
};

struct PageLayout {
    qint64 pageWidth = 0, pageHeight = 0;
    qint64 x = 0, y = 0, width = 0, height = 0;   // the image's box, from the page's top-left
    QRect pixels;                                 // the part of the image in the box
};

inline constexpr qint64 A4Width = 21000;
inline constexpr qint64 A4Height = 29700;
inline constexpr qint64 MaxPageSide = 1000000;

// Refuses (FormatError 0x80070057) a fit name or number out of range without any image.
void CheckPlacing(const Placing& vPlacing);

// The page and box of an image of vPixels pixels at the given resolution.
PageLayout LayOut(const Placing& vPlacing, QSize vPixels, double vHorDpi, double vVerDpi);

} // namespace xdw
