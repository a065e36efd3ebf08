#pragma once
// Noise reduction on black-and-white pages: black specks standing alone on the paper and white
// pinholes inside black are removed up to a size the level sets. Only a one-bit picture has
// specks to speak of; a page of any other kind is refused before it gets here.
//
// Levels, by the runtime's numbers and names: 0 "NONE", 1 "NORMAL", 2 "WEAK", 3 "STRONG". By
// strength they go WEAK, NORMAL, STRONG: a speck goes when it fits in a square of 0.1, 0.2 or
// 0.3 mm (never less than one pixel) at the picture's own resolution. A speck is judged by the
// box around all of it, so a 1-pixel line longer than that stays, however thin.

#include <QImage>
#include <QStringList>

namespace xdw {

class Model;

inline constexpr int NoiseNone = 0, NoiseNormal = 1, NoiseWeak = 2, NoiseStrong = 3;

// The names of the levels, by number.
const QStringList& NoiseLevelNames();

// Whether vImage is a one-bit picture, the only kind noise reduction takes.
bool IsBilevel(const QImage& vImage);
// Whether page vIndex (from 0) is a scanned black-and-white page: its content a one-bit picture.
// Throws FormatError when the page's picture cannot be read.
bool IsBilevelPage(const Model& vModel, int vIndex);

// The side in pixels of the largest speck level vLevel removes at vDpi; 0 for NONE.
int SpeckSide(int vLevel, int vDpi);

// vBilevel with its specks and pinholes removed, at the resolution its dotsPerMeterX says.
// Components are labelled row by row in time linear in the pixels, with memory of a row's
// worth; nothing recurses. A level outside 0..3 or a picture that is not one-bit gives a null
// image.
QImage ReduceNoise(const QImage& vBilevel, int vLevel);

} // namespace xdw
