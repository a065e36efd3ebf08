#pragma once
// Image files as pictures to put on pages: TIFF (every page), JPEG, PNG and BMP, each page
// decoded to one of three tones so that the page writer can choose how to store it, with the
// resolution the file states. Sizes are checked against the limits before any pixel buffer is
// made, and a file that is not an image, or a damaged one, is refused with a reason.

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QtGlobal>

#include <memory>

namespace xdw {

// What an image file says about its first page, before anything is decoded.
struct ImageInformation {
    qint32 pixelWidth = 0, pixelHeight = 0;
    float horDpi = 0, verDpi = 0;
};

namespace image {

inline constexpr int MaxSide = 32767;
inline constexpr qint64 MaxPixels = 150LL * 1000 * 1000;
// The resolution of a file that states none, or states one no scanner or screen has (below 10
// or above 10,000 dpi): what desktop programs show such an image at.
inline constexpr float DefaultDpi = 96.0f;
inline constexpr int MaxPages = 100000;

enum class Tone { Bilevel, Grey, Colour };

struct Picture {
    // Format_Mono with index 0 black and 1 white, Format_Grayscale8 or Format_RGB888; anything
    // transparent has been laid on white paper.
    QImage image;
    Tone tone = Tone::Colour;
    float horDpi = DefaultDpi, verDpi = DefaultDpi;
    QByteArray jpeg;   // the file's own bytes when it is a JPEG, to be kept as they are
};

class ImageFile {
public:
    virtual ~ImageFile() = default;
    virtual int Pages() const = 0;
    virtual ImageInformation Information(int vPage) = 0;
    // Decodes page vPage (from 0); refuses (FormatError) a page too large or damaged.
    virtual Picture Read(int vPage) = 0;
};

// Opens an image file by what its first bytes say it is. Refuses (FormatError) a missing file
// (0x80070002), one that cannot be read (0x80070005), and anything but the four formats,
// PDF among them (0x8007000B).
std::unique_ptr<ImageFile> OpenImage(const QString& vPath);

// Shared by the readers of each format.
std::unique_ptr<ImageFile> OpenTiff(const QString& vPath);
// A stated resolution as the page writer takes it: DefaultDpi when missing or absurd, and one
// axis standing in for the other when only one is usable.
void SaneDpi(double vHor, double vVer, float* vOutHor, float* vOutVer);
// Refuses (0x8007000E) a picture beyond the limits, and (0x8007000B) an empty one.
void CheckPixels(qint64 vWidth, qint64 vHeight, const QString& vWhat);
// The picture of a decoded image in one of the three tones.
Picture ToPicture(QImage vImage, float vHorDpi, float vVerDpi);
// A 1-bit image with index 0 black, whatever table it came with.
QImage BlackFirst(QImage vMono);
[[noreturn]] void RefuseImage(const QString& vReason);

} // namespace image
} // namespace xdw
