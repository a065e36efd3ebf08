#pragma once
// The drawing each kind of annotation carries, made from its record's current properties: what
// a reader shows is this drawing and nothing else, so every change of a property that shows
// makes it again. Drawings map a window of the box's size at 300 units per inch onto the box,
// as the vendor's do, and are stored as a drawing field list, compressed when a compressor is
// given and the compressed form is smaller.

#include "engine/write/Tree.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QSize>
#include <QString>

#include <functional>

namespace xdw::annot {

using Compressor = std::function<QByteArray(QByteArrayView)>;

inline constexpr quint32 KindText = 0x8011;
inline constexpr quint32 KindFusen = 0x801A;
inline constexpr quint32 KindMarker = 0x801B;
inline constexpr quint32 KindStamp = 0x8033;
inline constexpr quint32 KindLine = 0x803C;
inline constexpr quint32 KindRectangle = 0x803D;
inline constexpr quint32 KindEllipse = 0x803E;
inline constexpr quint32 KindBitmap = 0x803F;
inline constexpr quint32 KindLink = 0xC02F;
inline constexpr quint32 KindPlacement = 0x1302;

inline constexpr qint64 NoColor = 65793;   // "no background"
inline constexpr qint64 DefaultMargin = 170;

// A length in 1/100 mm as logical units of the drawings.
int Logical(double vHundredths);
// What a text takes with the record's font, spacing and margins, in 1/100 mm.
QSize TextBox(const Node& vRecord, const QString& vText);
// The text a date stamp shows for its stored date and %DateStyle.
QString StampDate(const Node& vRecord);

// The metafile of a record of vSize (1/100 mm). A sticky note takes its text from the text
// record in its child placement. Empty for kinds drawn from a picture (bitmaps).
QByteArray DrawRecord(const Node& vRecord, QSize vSize);
// A picture's metafile: the bitmap stretched over the whole box.
QByteArray DrawPicture(QByteArrayView vInfo, QByteArrayView vBits, QSize vPixels, QSize vSize);

// The field list of an annotation drawing holding vEmf.
QByteArray DrawingFields(const QByteArray& vEmf, QSize vSize, const Compressor& vCompress);

} // namespace xdw::annot
