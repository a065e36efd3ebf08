#pragma once
// A drawing as a page or an annotation stores it: a field list naming its kind and sizes, with
// the data inline (often LH5-compressed). Expanded here, at drawing time, with every claimed
// size checked before it is believed.

#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>

namespace xdw {

class Container;

enum class DrawingKind { Wmf = 1, Emf = 4, Jpeg = 5, Dib = 7 };

struct Drawing {
    DrawingKind kind = DrawingKind::Emf;
    QByteArray data;       // EMF/WMF/JPEG bytes; for a DIB the pixel rows
    QByteArray dibInfo;    // a DIB's BITMAPINFO (header and colour table)
};

// The kind named by a drawing's field list without expanding anything; 0 when there is none.
int KindOf(QByteArrayView vFields);

// Expands and checks one drawing; refuses (FormatError) a kind this engine does not read or
// data that does not match its kind.
Drawing ReadDrawing(QByteArrayView vFields);

} // namespace xdw
