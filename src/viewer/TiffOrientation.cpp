#include "viewer/TiffDecode.h"

#include <cstring>

namespace tiffdecode {

QImage Oriented(const QImage& vRaster, int vOrientation)
{
    // Orientations 5 to 8 put the stored rows into columns; they are the flips of 1 to 4 and a
    // transposition after them.
    switch (vOrientation) {
    case 2: return vRaster.mirrored(true, false);   // top right
    case 3: return vRaster.mirrored(true, true);    // bottom right
    case 4: return vRaster.mirrored(false, true);   // bottom left
    case 5: return Transposed(vRaster);             // left top
    case 6: return Transposed(vRaster.mirrored(false, true));  // right top: a quarter turn clockwise
    case 7: return Transposed(vRaster.mirrored(true, true));   // right bottom
    case 8: return Transposed(vRaster.mirrored(true, false));  // left bottom: a quarter turn back
    default: return vRaster;
    }
}

QImage Transposed(const QImage& vImage)
{
    const int w = vImage.width();
    const int h = vImage.height();
    QImage out(h, w, vImage.format());
    if (out.isNull())
        return out;
    out.setColorTable(vImage.colorTable());
    uchar* dst = out.bits();
    const qsizetype dstLine = out.bytesPerLine();
    if (vImage.depth() == 1) {
        // Rare (a fax page stored sideways), so bit by bit is fast enough.
        const bool msbFirst = vImage.format() != QImage::Format_MonoLSB;
        out.fill(0);
        for (int y = 0; y < h; ++y) {
            const uchar* src = vImage.constScanLine(y);
            const int byte = y >> 3;
            const uchar bit = msbFirst ? uchar(0x80 >> (y & 7)) : uchar(1 << (y & 7));
            for (int x = 0; x < w; ++x) {
                const bool set = msbFirst ? (src[x >> 3] >> (7 - (x & 7))) & 1 : (src[x >> 3] >> (x & 7)) & 1;
                if (set)
                    dst[x * dstLine + byte] |= bit;
            }
        }
        return out;
    }
    const int bytes = vImage.depth() / 8;
    for (int y = 0; y < h; ++y) {
        const uchar* src = vImage.constScanLine(y);
        for (int x = 0; x < w; ++x)
            std::memcpy(dst + x * dstLine + y * bytes, src + x * bytes, bytes);
    }
    return out;
}

} // namespace tiffdecode
