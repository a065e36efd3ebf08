#pragma once
// A page as a picture and as text. The page's own content is drawn first, then each annotation
// from its stored drawing into its box, later ones on top; a drawing turned inside its box is
// turned last, around the box's centre. Text comes from the same drawings in the same order,
// with the stored text of an annotation whose drawing holds none.

#include "engine/Model.h"

#include <QImage>
#include <QRectF>
#include <QSize>
#include <QString>

#include <vector>

class QPainter;

namespace xdw {

inline constexpr int MinDpi = 10;
inline constexpr int MaxDpi = 600;

// Pixels of a page at vDpi: each side rounded from hundredths of a millimetre.
QSize PixelSize(const Page& vPage, int vDpi);

// Draws page vIndex (from 0) onto vPainter, vScale device units to a hundredth of a millimetre,
// white background not included: the picture below and PDF pages share this.
void PaintPage(QPainter& vPainter, const Model& vModel, int vIndex, double vScale);

// Draws page vIndex (from 0) in colour (RGB32) or black and white (Mono). Refuses (FormatError)
// a size beyond the limits or a drawing that cannot be read.
QImage RenderPage(const Model& vModel, int vIndex, int vDpi, bool vColour);

// The thumbnail the page keeps, or the page drawn small when it keeps none.
QImage PageThumbnail(const Model& vModel, int vIndex);

// A piece of text as it stands on the page: its box in hundredths of a millimetre from the
// page's top-left corner.
struct PlacedText {
    QString text;
    QRectF box;
};

// The page's words with their places, in the order PageText gives them; one piece per text
// record of a drawing, or an annotation's stored text filling its box.
std::vector<PlacedText> PageWords(const Model& vModel, int vIndex);

// The page's text; empty when it has none.
QString PageText(const Model& vModel, int vIndex);

} // namespace xdw
