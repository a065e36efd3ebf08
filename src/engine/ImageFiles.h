#pragma once
// Pages as image files of the kinds the document library names: TIFF, JPEG, PDF and "DIB" (a
// Windows bitmap file), and PNG for the command line. The choice of compression and the
// multi-page flag are state of the engine, set by one call and used by the conversions after
// it, so they live in one writer object the engine keeps.
//
// Multi-page sets: a TIFF or PDF page written with the end-of-multi-pages flag 0 leaves its file
// open to more pages; the next page of the same kind written to the same path is added to it as
// a further page. A page written with any other flag ends the set: it is added when a set to that
// path was open, or makes the file alone, and the next page to that path starts a new file. The
// default flag is 1, so a caller who never sets one gets one file a page. A TIFF is whole after
// every page; a PDF is finished when its set ends, when a page goes to another path or kind, at
// EndSet and when the writer goes.

#include <QImage>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace xdw {

enum class ImageKind { Tiff, Jpeg, Pdf, Dib, Png };

// The kind a type word ("TIFF", "JPEG", "PDF", "DIB", "PNG") or a file ending ("tif", "jpg",
// "bmp", ...) names, in any case; nothing for other words.
std::optional<ImageKind> ImageKindOf(const QString& vName);

// The compression names each kind takes, in any case; an empty name is the kind's default.
// TIFF: left to itself G4 for black and white and deflate for colour; JPEG_TTN2 is JPEG in the
// YCbCr layout of the TIFF technical note, JPEG the same codec on RGB; G4 makes any page one
// bit. JPEG: three qualities. PDF: the JPEG names put the page in as JPEG, LOSSLESS keeps it
// lossless, and a black-and-white page is kept lossless whatever the name.
const QStringList& TiffCompressNames();
const QStringList& JpegCompressNames();
const QStringList& PdfCompressNames();
const QStringList& PdfConvertMethods();
// The JPEG quality (1..100) a JPEG compression name stands for; 0 for another name.
int JpegQuality(const QString& vCompress);

// A page picture and what a file needs to know of it besides its pixels.
struct PagePicture {
    QImage image;       // Format_Mono for black and white, any other format for colour
    int dpi = 0;
    QSizeF sizeMm;      // the paper it stands for; empty: the pixels at dpi
};

// The Windows bitmap file of vImage: 1 bit a pixel with a black and a white palette entry for a
// Format_Mono image, 24 bits otherwise; rows bottom-up, vDpi as pixels per metre.
QByteArray DibBytes(const QImage& vImage, int vDpi);

class ImageWriter {
public:
    struct Settings {
        std::optional<ImageKind> kind;   // the kind last chosen; none before any
        QString compress;
        qint32 endOfMultiPages = 1;
        QString convertMethod;
    };

    ImageWriter();
    ~ImageWriter();
    ImageWriter(const ImageWriter&) = delete;
    ImageWriter& operator=(const ImageWriter&) = delete;

    // Each stores its settings; false when a name is not one the kind takes (the settings are
    // stored all the same, and a page written with them is refused).
    bool SetTiff(const QString& vCompress, qint32 vEndOfMultiPages);
    bool SetJpeg(const QString& vCompress);
    bool SetPdf(const QString& vCompress, qint32 vEndOfMultiPages, const QString& vConvertMethod);
    const Settings& Current() const { return settings_; }

    // Writes vPicture to vPath as the kind vType names (a type word or a file ending). Throws
    // FormatError: InvalidArg for an unknown type or compression, WriteFault when the file
    // cannot be written.
    void Write(const PagePicture& vPicture, const QString& vPath, const QString& vType);
    // The type a page written to vPath takes when no type is named: the path's ending when it
    // names a kind, else the kind chosen last.
    QString TypeForPath(const QString& vPath) const;
    // Finishes an open PDF set; false when the file could not be finished.
    bool EndSet();

private:
    struct PdfSet;
    // EndSet, throwing WriteFault when it fails.
    void Finish();
    void WritePdf(const PagePicture& vPicture, const QString& vPath, const QString& vCompress, bool vLast);
    void WriteTiffPage(const PagePicture& vPicture, const QString& vPath, const QString& vCompress, bool vLast);

    Settings settings_;
    std::unique_ptr<PdfSet> pdf_;
    QString openTiff_;   // the path of an open TIFF set
};

} // namespace xdw
