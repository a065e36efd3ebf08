#pragma once
// Plays the drawings a DocuWorks file keeps for its pages and annotations: Windows enhanced
// metafiles (and the older 16-bit ones) onto a QPainter, and reads their text. The engine hands
// over the expanded bytes of one drawing and a target rectangle; the player owns every record
// it understands and skips the rest by their sizes, so a drawing with an unknown record still
// shows what can be drawn. Every read is bounded by its record: hostile bytes end in a result
// with ok == false, never in a crash, a hang or an allocation taken from a claimed size.

#include <QByteArray>
#include <QImage>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <functional>

class QPainter;

namespace emf {

// How the drawing's logical coordinates reach the target rectangle.
enum class Mapping {
    // Page content: the header's frame is the page, logical units are device pixels shifted by
    // the window origin, and the device size over the frame gives their scale.
    Page,
    // An annotation: the window extent (300 units per inch) fills the target, its origin from the
    // window origin; the header's frame only where the drawing sets no window.
    Annotation,
};

struct PlayOptions {
    Mapping mapping = Mapping::Page;
    // The page's pictures for the private "DW" picture records, by their index in the page's
    // list; a null image where a picture cannot be had. Unset: those records draw nothing.
    std::function<QImage(int)> picture;
    // Told of every piece of text drawn, with the box it fills in the painter's coordinates as
    // Play was called: where a word stands on the page, for those who select or search it.
    std::function<void(const QString& text, const QRectF& box)> textDrawn;
};

struct PlayResult {
    bool ok = true;               // false: not a well-formed drawing; what came before may show
    QString error;                // one line saying why, for the engine's refusal
    int unsupportedRecords = 0;   // records skipped because the player does not know them
};

// True when the bytes start as an enhanced metafile whose header fits the data.
bool LooksLikeEmf(const QByteArray& bytes);
// True when the bytes start as a 16-bit metafile (plain or placeable).
bool LooksLikeWmf(const QByteArray& bytes);

// Draws bytes (EMF or WMF, told apart by their magic) so that the mapped drawing fills target,
// in the painter's coordinates. The painter's state is restored afterwards.
PlayResult Play(QPainter& painter, const QByteArray& bytes, const QRectF& target,
                const PlayOptions& options = {});

// The string of every text record, in drawing order, one entry per record. Narrow strings are
// read in the code page of the font selected at that point (cp932 for charset 128).
QStringList Text(const QByteArray& bytes);

} // namespace emf

namespace dib {

// A device-independent bitmap as metafiles and DocuWorks pictures carry it: a BITMAPINFO
// (header and colour table) and the pixel bits apart. 1, 4, 8, 16, 24 and 32 bits per pixel,
// BI_RGB, BI_RLE4, BI_RLE8 and BI_BITFIELDS, bottom-up or top-down. A null image, and a reason
// in *error, when the sizes do not fit the data or exceed the limits.
QImage Decode(const QByteArray& info, const QByteArray& bits, QString* error = nullptr);

} // namespace dib
