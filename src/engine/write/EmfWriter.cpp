#include "engine/write/EmfWriter.h"

#include <QtEndian>

#include <algorithm>

namespace xdw {

namespace {

constexpr quint32 EmrHeader = 1;
constexpr quint32 EmrEof = 14;
constexpr qsizetype HeaderFields = 108;   // up to and including the micrometre size
constexpr qsizetype FontRecordPayload = 360;   // handle and the extended logical font, as written

void Put32(QByteArray& vOut, quint32 vValue)
{
    char b[4];
    qToLittleEndian(vValue, b);
    vOut.append(b, 4);
}

void Put16(QByteArray& vOut, quint16 vValue)
{
    char b[2];
    qToLittleEndian(vValue, b);
    vOut.append(b, 2);
}

QByteArray Words(std::initializer_list<qint64> vValues)
{
    QByteArray out;
    for (qint64 v : vValues)
        Put32(out, static_cast<quint32>(v));
    return out;
}

QByteArray RectWords(const QRect& vRect)
{
    return Words({vRect.left(), vRect.top(), vRect.right() + 1, vRect.bottom() + 1});
}

QByteArray Points16(const std::vector<QPoint>& vPoints, QRect* vBounds)
{
    QRect bounds;
    QByteArray out;
    for (const QPoint& p : vPoints) {
        Put16(out, static_cast<quint16>(qBound(-32768, p.x(), 32767)));
        Put16(out, static_cast<quint16>(qBound(-32768, p.y(), 32767)));
        bounds |= QRect(p, QSize(1, 1));
    }
    *vBounds = bounds;
    return out;
}

} // namespace

EmfWriter::EmfWriter(QSize vFrame, QSize vDevice)
    : frame_(vFrame), device_(vDevice), used_{true}
{
}

void EmfWriter::Add(quint32 vType, QByteArray vPayload)
{
    while (vPayload.size() % 4)
        vPayload.append('\0');
    Put32(records_, vType);
    Put32(records_, static_cast<quint32>(vPayload.size() + 8));
    records_ += vPayload;
    ++count_;
}

void EmfWriter::Grow(const QRect& vRect)
{
    bounds_ |= vRect.normalized();
}

void EmfWriter::SetWindowOrg(QPoint vOrigin) { Add(10, Words({vOrigin.x(), vOrigin.y()})); }
void EmfWriter::SetWindowExt(QSize vExtent) { Add(9, Words({vExtent.width(), vExtent.height()})); }
void EmfWriter::SetBkMode(bool vTransparent) { Add(18, Words({vTransparent ? 1 : 2})); }
void EmfWriter::SetTextAlign(quint32 vAlign) { Add(22, Words({vAlign})); }
void EmfWriter::SetTextColor(quint32 vColorRef) { Add(24, Words({vColorRef})); }
void EmfWriter::SetPolyFillMode(bool vWinding) { Add(19, Words({vWinding ? 2 : 1})); }
void EmfWriter::SetRop2(quint32 vMode) { Add(20, Words({vMode})); }
void EmfWriter::SaveDc() { Add(33, {}); }
void EmfWriter::RestoreDc() { Add(34, Words({-1})); }
void EmfWriter::IntersectClipRect(const QRect& vRect) { Add(30, RectWords(vRect)); }

quint32 EmfWriter::TakeHandle()
{
    const auto free = std::find(used_.begin() + 1, used_.end(), false);
    if (free != used_.end()) {
        *free = true;
        return static_cast<quint32>(free - used_.begin());
    }
    used_.push_back(true);
    return static_cast<quint32>(used_.size() - 1);
}

quint32 EmfWriter::CreatePen(PenStyle vStyle, qint32 vWidth, quint32 vColorRef)
{
    const quint32 handle = TakeHandle();
    Add(38, Words({handle, static_cast<quint32>(vStyle), vWidth, 0, vColorRef}));
    return handle;
}

quint32 EmfWriter::CreateBrush(quint32 vColorRef)
{
    const quint32 handle = TakeHandle();
    Add(39, Words({handle, 0, vColorRef, 0}));
    return handle;
}

quint32 EmfWriter::CreateFont(const LogFont& vFont)
{
    const quint32 handle = TakeHandle();
    QByteArray p = Words({handle, vFont.height, 0, 0, 0, vFont.weight});
    p.append(static_cast<char>(vFont.italic ? 1 : 0));
    p.append(static_cast<char>(vFont.underline ? 1 : 0));
    p.append(static_cast<char>(vFont.strikeOut ? 1 : 0));
    p.append(static_cast<char>(vFont.charSet));
    p.append(3, '\0');   // output and clip precision, quality
    p.append(static_cast<char>(vFont.pitchAndFamily));
    for (int i = 0; i < 32; ++i)
        Put16(p, i < 31 && i < vFont.face.size() ? vFont.face[i].unicode() : 0);
    p.append(FontRecordPayload - p.size(), '\0');
    Add(82, p);
    return handle;
}

void EmfWriter::Select(quint32 vHandleOrStock) { Add(37, Words({vHandleOrStock})); }

void EmfWriter::Delete(quint32 vHandle)
{
    Add(40, Words({vHandle}));
    if (vHandle > 0 && vHandle < used_.size())
        used_[vHandle] = false;
}

void EmfWriter::MoveTo(QPoint vPoint) { Add(27, Words({vPoint.x(), vPoint.y()})); }

void EmfWriter::LineTo(QPoint vPoint)
{
    Grow(QRect(vPoint, QSize(1, 1)));
    Add(54, Words({vPoint.x(), vPoint.y()}));
}

void EmfWriter::Rectangle(const QRect& vRect) { Boxed(43, vRect); }

void EmfWriter::Ellipse(const QRect& vRect) { Boxed(42, vRect); }

void EmfWriter::Boxed(quint32 vType, const QRect& vRect)
{
    Grow(vRect);
    Add(vType, RectWords(vRect));
}

void EmfWriter::Points(quint32 vType, const std::vector<QPoint>& vPoints)
{
    QRect bounds;
    const QByteArray points = Points16(vPoints, &bounds);
    Grow(bounds);
    Add(vType, RectWords(bounds) + Words({static_cast<qint64>(vPoints.size())}) + points);
}

void EmfWriter::Polygon(const std::vector<QPoint>& vPoints) { Points(86, vPoints); }
void EmfWriter::Polyline(const std::vector<QPoint>& vPoints) { Points(87, vPoints); }

void EmfWriter::BeginPath() { Add(59, {}); }
void EmfWriter::EndPath() { Add(60, {}); }
void EmfWriter::CloseFigure() { Add(61, {}); }

void EmfWriter::FillPath(const QRect& vBounds) { Boxed(62, vBounds); }

void EmfWriter::StrokePath(const QRect& vBounds) { Boxed(64, vBounds); }

void EmfWriter::TextOut(QPoint vAt, const QString& vText, const std::vector<qint32>& vAdvances)
{
    constexpr qint64 StringAt = 76;   // right after the fixed fields of the record
    QByteArray text;
    for (QChar c : vText)
        Put16(text, c.unicode());
    while (text.size() % 4)
        text.append('\0');
    qint64 width = 0;
    QByteArray advances;
    for (qsizetype i = 0; i < vText.size(); ++i) {
        const qint32 advance = i < static_cast<qsizetype>(vAdvances.size()) ? vAdvances[static_cast<size_t>(i)] : 0;
        Put32(advances, static_cast<quint32>(advance));
        width += advance;
    }
    const QRect drawn(vAt, QSize(static_cast<int>(width), 1));
    Grow(drawn);
    // Graphics mode 2 and no scale, as the vendor writes; no clipping or opaque rectangle.
    QByteArray p = RectWords(drawn) + Words({2, 0, 0, vAt.x(), vAt.y(), vText.size(), StringAt, 0,
                                            0, 0, -1, -1, StringAt + text.size()});
    Add(84, p + text + advances);
}

void EmfWriter::StretchDib(const QRect& vTarget, QByteArrayView vInfo, QByteArrayView vBits, QSize vSource)
{
    constexpr qint64 InfoAt = 80;   // the record's fixed fields, type and size included
    Grow(vTarget);
    QByteArray p = RectWords(vTarget)
        + Words({vTarget.x(), vTarget.y(), 0, 0, vSource.width(), vSource.height(), InfoAt, vInfo.size(),
                 InfoAt + vInfo.size(), vBits.size(), 0, 0xCC0020, vTarget.width(), vTarget.height()});
    p += vInfo.toByteArray();
    p += vBits.toByteArray();
    Add(81, p);
}

QByteArray EmfWriter::Finish() const
{
    QByteArray description;
    for (char16_t c : u"DW\0\0")
        Put16(description, c);
    description.chop(2);   // the literal's own terminator
    const QRect bounds = bounds_.isEmpty() ? QRect(0, 0, 1, 1) : bounds_;
    QByteArray header;
    Put32(header, EmrHeader);
    Put32(header, static_cast<quint32>(HeaderFields + description.size()));
    header += Words({bounds.left(), bounds.top(), bounds.right(), bounds.bottom(), 0, 0,
                     frame_.width(), frame_.height(), 0x464D4520, 0x10000, 0, count_ + 2});
    Put16(header, static_cast<quint16>(used_.size()));
    Put16(header, 0);
    header += Words({description.size() / 2, HeaderFields, 0, device_.width(), device_.height(),
                     frame_.width() / 100, frame_.height() / 100, 0, 0, 0,
                     frame_.width() * 10, frame_.height() * 10});
    header += description;
    QByteArray out = header + records_ + Words({EmrEof, 20, 0, 16, 20});
    qToLittleEndian(static_cast<quint32>(out.size()), out.data() + 48);
    return out;
}

} // namespace xdw
