#pragma once
// Image files made into DocuWorks pages: each page of the image (each page of a TIFF) becomes a
// page record holding one placement with the picture as the page's content, ready to be put
// into a document. How the image sits on the page is ImagePlacing.h's; how it is stored is
// chosen by the compression name:
//
//   LOSSLESS, NOCOMPRESS, PACKBITS, G4   a bitmap (1 bit for black and white images, 8-bit grey
//                                        for greys, 24-bit colour otherwise), pixels kept exactly.
//                                        The bitmap is the one stored form the format notes
//                                        describe; their bare G4 pages have no known layout, so
//                                        a G4 fax is kept as a 1-bit bitmap, which is exact too.
//   NORMAL, JPEG                         black and white images as a 1-bit bitmap; others as a
//                                        JPEG at quality 75.
//   HIGHQUALITY                          the same, JPEG at quality 90.
//   HIGHCOMPRESS                         the same, JPEG at quality 50.
//
// A JPEG file is kept byte for byte when its whole picture is shown, except under HIGHCOMPRESS,
// which asks for a smaller file. A black and white image never becomes a JPEG: it would be
// larger and blurred. The MRC names (mixed raster) are refused, as is any other name
// (0x80070057).
//
// Failures are xdw::FormatError: 0x80070002 no such file, 0x80070005 unreadable, 0x8007000B not an
// image of the four formats or a damaged one (PDF too: "PDF input needs a PDF renderer"),
// 0x8007000E larger than 32,767 pixels a side or 150 megapixels, 0x80070057 bad placing values.

#include "engine/write/DibPicture.h"
#include "engine/write/ImageFile.h"
#include "engine/write/ImagePlacing.h"
#include "engine/write/Tree.h"

#include <QString>

#include <vector>

namespace xdw {

// The size and stated resolution of the image's first page; nothing is decoded.
ImageInformation ReadImageInformation(const QString& vPath);

// One 1301 page node for each page of the image: size (5), a 1302 placement (52 and childdim) holding
// the 8010 content with its drawing (7), box size (5), id 1 (3) and dpi. The page's own id is
// left to whoever inserts it; its lastmid is 1, the content's id. vCompress packs bitmap rows.
std::vector<Node> PagesFromImage(const QString& vPath, const Placing& vPlacing,
                                 const PictureCompressor& vCompress);

// The stored form a compression name gives: 0 a lossless bitmap, else the JPEG quality.
// Refuses (0x80070057) names this program does not write.
int JpegQualityOf(const QString& vCompress);

} // namespace xdw
