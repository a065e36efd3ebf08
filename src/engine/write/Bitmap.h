#pragma once
// The pixels of a BMP file for a picture annotation: its BITMAPINFO (header and palette) and its
// rows as they are, checked against each other before anything is taken from them, and the size
// the picture has on a page at the resolution the file states (96 dpi when it states none).

#include <QByteArray>
#include <QByteArrayView>
#include <QSize>

namespace xdw::annot {

struct Bitmap {
    QByteArray info;   // a 40-byte header and the palette
    QByteArray bits;   // the rows, bottom-up or top-down as the header says
    QSize pixels;
    QSize size;        // 1/100 mm
};

// Refuses (FormatError) what is not an uncompressed BMP of 1 to 65,535 pixels a side.
Bitmap ReadBmp(QByteArrayView vFile);

} // namespace xdw::annot
