#pragma once
// The record readers, one per metafile kind, and the pieces they share. Each reader decodes one
// record's bytes into calls on the drawing state; a record whose fields do not fit its own bytes
// is Bad and ends the drawing, one the player does not know is Unknown and is skipped.

#include "engine/emf/Bytes.h"
#include "engine/emf/Gdi.h"

#include <QByteArrayView>

namespace emf {

enum class Outcome { Done, Unknown, Bad };

struct RecordContext {
    QString why;           // set with Bad
    quint32 handles = 0;   // the object table's size, from the header
};

// Windows colours keep red in the low byte.
inline QColor ColourRef(quint32 vValue)
{
    return QColor(int(vValue & 0xFF), int((vValue >> 8) & 0xFF), int((vValue >> 16) & 0xFF));
}

inline Outcome Bad(RecordContext& vContext, const char* vWhy)
{
    vContext.why = QString::fromLatin1(vWhy);
    return Outcome::Bad;
}

// The enhanced kind: its header's frame, and the records after the header.
std::optional<Frame> EmfFrame(const Bytes& vBytes, Mapping vMapping);
PlayResult PlayEmf(Gdi& vGdi, const Bytes& vBytes);
Outcome EmfStateRecord(Gdi& vGdi, quint32 vType, const Bytes& vRecord, RecordContext& vContext);
Outcome EmfDrawRecord(Gdi& vGdi, quint32 vType, const Bytes& vRecord, RecordContext& vContext);

// The 16-bit kind, placeable or plain.
PlayResult PlayWmf(QPainter* vPainter, const QByteArray& vBytes, const QRectF& vTarget,
                   const PlayOptions& vOptions, QStringList* vTexts);

// DocuWorks' private comments: data is the comment's payload, starting with "DW"; record is the
// whole record, whose start the picture offsets count from.
Outcome PrivateComment(Gdi& vGdi, const Bytes& vData, const Bytes& vRecord, RecordContext& vContext);

// A bitmap carried in a record as BITMAPINFO and bits at offsets from the record's start. A null
// image with nothing in why means the record carries no bitmap. A band of rows (from
// SetDIBitsToDevice) gives their count, as its header may count the rows of the whole picture.
QImage RecordBitmap(const Bytes& vRecord, qint64 vInfoAt, qint64 vInfoSize, qint64 vBitsAt,
                    qint64 vBitsSize, RecordContext& vContext, bool* vBottomUp = nullptr,
                    qint64 vRows = 0);

} // namespace emf
