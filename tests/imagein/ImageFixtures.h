#pragma once
// Pictures and image files to make pages from, the pages written into a document of the real
// format, and what the engine draws of them again.

#include "engine/write/Tree.h"

#include <QImage>
#include <QString>

#include <vector>

namespace imagefixtures {

// Pictures of 160 x 100 pixels with edges and levels that a scaling or a lossy store would
// change: a black and white one (Format_Mono, 0 black), a grey ramp and a colour one.
QImage Bilevel(int vSeed = 0);
QImage Grey();
QImage Colour();

// vImage saved by Qt in vFormat ("png", "bmp", "jpeg") at vDpi; for JPEG at vQuality.
QString Save(const QString& vPath, const QImage& vImage, const char* vFormat, int vDpi, int vQuality = 95);

// The literal-only LH5 stream of vData, as the bitmap rows' packer.
QByteArray Pack(QByteArrayView vData);

// The attribute numbered vNumber of vNode, or null.
const xdw::NodeAttribute* AttributeOf(const xdw::Node& vNode, quint32 vNumber);

// A document holding vPages in order, each given its id.
QByteArray Document(const std::vector<xdw::Node>& vPages);

// Page vIndex of vDocument drawn at vDpi, in colour.
QImage Render(const QByteArray& vDocument, int vIndex, int vDpi);

// Same size and same pixels, compared as RGB32.
bool SamePixels(const QImage& vA, const QImage& vB);
// Peak signal to noise ratio in dB over the three channels.
double Psnr(const QImage& vA, const QImage& vB);

} // namespace imagefixtures
