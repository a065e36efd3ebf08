#pragma once
// Writes the enhanced metafiles that annotations carry as their drawing. Whatever an annotation
// shows is what its drawing holds (readers never redraw from the settings), so each kind writes
// its look here, record by record, in the forms the vendor's drawings use: a header with a "DW"
// description, a window at 300 units per inch, GDI objects made, selected and deleted in turn.
// Every record is padded to four bytes; the header's size, record and handle counts are filled
// in by Finish.

#include <QByteArray>
#include <QByteArrayView>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QtGlobal>

#include <vector>

namespace xdw {

// Stock objects, selected by these numbers instead of a handle.
inline constexpr quint32 StockWhiteBrush = 0x80000000;
inline constexpr quint32 StockNullBrush = 0x80000005;
inline constexpr quint32 StockBlackPen = 0x80000007;
inline constexpr quint32 StockNullPen = 0x80000008;
inline constexpr quint32 StockSystemFont = 0x8000000D;

// Pen styles (the low bits of a pen's style).
enum class PenStyle : quint32 { Solid = 0, Dash = 1, Dot = 2, DashDot = 3, DashDotDot = 4, None = 5 };

struct LogFont {
    qint32 height = -50;      // logical units; negative: the character height without leading
    qint32 weight = 400;
    bool italic = false, underline = false, strikeOut = false;
    quint8 charSet = 128;
    quint8 pitchAndFamily = 0x11;
    QString face;             // at most 31 characters are kept
};

class EmfWriter {
public:
    // vFrame is the picture's frame in 1/100 mm; vDevice its size in device pixels.
    EmfWriter(QSize vFrame, QSize vDevice);

    void SetWindowOrg(QPoint vOrigin);
    void SetWindowExt(QSize vExtent);
    void SetBkMode(bool vTransparent);
    void SetTextAlign(quint32 vAlign);
    void SetTextColor(quint32 vColorRef);
    void SetPolyFillMode(bool vWinding);
    void SetRop2(quint32 vMode);
    void SaveDc();
    void RestoreDc();
    void IntersectClipRect(const QRect& vRect);

    // Objects take the lowest free handle; Delete frees it for the next one.
    quint32 CreatePen(PenStyle vStyle, qint32 vWidth, quint32 vColorRef);
    quint32 CreateBrush(quint32 vColorRef);
    quint32 CreateFont(const LogFont& vFont);
    void Select(quint32 vHandleOrStock);
    void Delete(quint32 vHandle);

    void MoveTo(QPoint vPoint);
    void LineTo(QPoint vPoint);
    void Rectangle(const QRect& vRect);
    void Ellipse(const QRect& vRect);
    void Polygon(const std::vector<QPoint>& vPoints);
    void Polyline(const std::vector<QPoint>& vPoints);
    void BeginPath();
    void EndPath();
    void CloseFigure();
    void FillPath(const QRect& vBounds);
    void StrokePath(const QRect& vBounds);
    // One line of text at vAt with the advance of each character (logical units).
    void TextOut(QPoint vAt, const QString& vText, const std::vector<qint32>& vAdvances);
    // A device-independent bitmap (BITMAPINFO, then its rows) stretched onto vTarget.
    void StretchDib(const QRect& vTarget, QByteArrayView vInfo, QByteArrayView vBits, QSize vSource);

    // The whole metafile: the header with its counts, the records and the end record.
    QByteArray Finish() const;

private:
    void Add(quint32 vType, QByteArray vPayload);
    // A record of one rectangle that draws in it: bounds of a path, or a shape's own box.
    void Boxed(quint32 vType, const QRect& vRect);
    // A POLYGON16 or POLYLINE16: bounds, count, then the points as 16-bit pairs.
    void Points(quint32 vType, const std::vector<QPoint>& vPoints);
    quint32 TakeHandle();
    void Grow(const QRect& vRect);

    QSize frame_, device_;
    QByteArray records_;
    quint32 count_ = 0;
    std::vector<bool> used_;   // handle slots; slot 0 is the metafile's own
    QRect bounds_;             // what the records draw on, in logical units
};

} // namespace xdw
