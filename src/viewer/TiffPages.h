#pragma once
// Pages of TIFF files through libtiff: how many pages a file has, and one page as a picture in
// the depth of the file (1-bit pages stay 1-bit, so a fax page costs an eighth of a byte a pixel
// until someone asks for more).

#include <QImage>
#include <QString>

class TiffPages {
public:
    // The largest page we decode. 65535 is what a 16-bit side can say, and what the Windows
    // image control and its scroll arithmetic never went beyond. 200 million pixels is an A1
    // drawing at 400 dpi with room to spare; at the 16 bits per pixel a page is shown in, that is
    // 400 MB for one pane, and nothing bigger than this can be a document page a person reads.
    // Both are checked on the header, before anything of the page's size is allocated.
    static constexpr int MaxSide = 65535;
    static constexpr qint64 MaxPixels = 200'000'000;

    // Raises 75 when the file can't be opened as a TIFF.
    static int CountPages(const QString& vPath);

    // Page vPage (from 1; 0 is the file's first page). vTotalPages, when given, receives the
    // file's page count. Raises 75 when the file or the page can't be read or the page is too
    // big, and 9 when there is no such page.
    static QImage ReadPage(const QString& vPath, int vPage, int* vTotalPages = nullptr);

    // Pages decoded since the program started: a test proves with it that a resize or a change
    // of size mode scales what a pane holds and never goes back to the file.
    static qint64 DecodeCount();
};
