#pragma once
// Writes small enhanced and 16-bit metafiles record by record, so that each test states the
// exact bytes a drawing holds. Numbers are little-endian; records are padded as Windows pads them.

#include <QByteArray>
#include <QList>
#include <QString>
#include <QtEndian>

#include <initializer_list>

namespace testemf {

inline void Put32(QByteArray& vOut, quint32 vValue)
{
    char b[4];
    qToLittleEndian(vValue, b);
    vOut.append(b, 4);
}

inline void Put16(QByteArray& vOut, quint16 vValue)
{
    char b[2];
    qToLittleEndian(vValue, b);
    vOut.append(b, 2);
}

inline QByteArray Words(std::initializer_list<qint32> vValues)
{
    QByteArray out;
    for (qint32 v : vValues)
        Put32(out, quint32(v));
    return out;
}

inline QByteArray Shorts(std::initializer_list<qint32> vValues)
{
    QByteArray out;
    for (qint32 v : vValues)
        Put16(out, quint16(v));
    return out;
}

// A device-independent bitmap: the 40-byte header, a grey or given palette, and rows as given
// (already padded to four bytes by the caller).
inline QByteArray DibInfo(qint32 vWidth, qint32 vHeight, int vBpp, int vCompression = 0,
                          const QList<quint32>& vPalette = {})
{
    QByteArray info = Words({40, vWidth, vHeight});
    Put16(info, 1);
    Put16(info, quint16(vBpp));
    info += Words({vCompression, 0, 0, 0, qint32(vPalette.size()), 0});
    for (quint32 c : vPalette)
        Put32(info, c);   // 0x00RRGGBB is RGBQUAD's blue, green, red, 0 in memory
    return info;
}

class Emf {
public:
    // A frame in 1/100 mm, the device in pixels and in millimetres.
    explicit Emf(qint32 vFrameW = 1000, qint32 vFrameH = 1000, qint32 vDevW = 100, qint32 vDevH = 100,
                 qint32 vMmW = 10, qint32 vMmH = 10, quint16 vHandles = 16)
    {
        header_ = Words({1, 88, 0, 0, vDevW - 1, vDevH - 1, 0, 0, vFrameW, vFrameH, 0x464D4520, 0x10000, 0, 0});
        Put16(header_, vHandles);
        Put16(header_, 0);
        header_ += Words({0, 0, 0, vDevW, vDevH, vMmW, vMmH});
    }

    Emf& Add(quint32 vType, const QByteArray& vPayload)
    {
        QByteArray p = vPayload;
        while (p.size() % 4)
            p.append('\0');
        Put32(body_, vType);
        Put32(body_, quint32(p.size() + 8));
        body_ += p;
        ++records_;
        return *this;
    }
    Emf& Add(quint32 vType, std::initializer_list<qint32> vWords) { return Add(vType, Words(vWords)); }

    Emf& Brush(quint32 vIndex, quint32 vColourRef, qint32 vStyle = 0, qint32 vHatch = 0)
    {
        Add(39, {qint32(vIndex), vStyle, qint32(vColourRef), vHatch});
        return Add(37, {qint32(vIndex)});
    }
    Emf& Pen(quint32 vIndex, quint32 vColourRef, qint32 vWidth = 0, qint32 vStyle = 0)
    {
        Add(38, {qint32(vIndex), vStyle, vWidth, 0, qint32(vColourRef)});
        return Add(37, {qint32(vIndex)});
    }
    Emf& NoPen() { return Add(37, {qint32(0x80000008)}); }
    Emf& Rect(qint32 l, qint32 t, qint32 r, qint32 b) { return Add(43, {l, t, r, b}); }

    Emf& Font(quint32 vIndex, qint32 vHeight, quint8 vCharset, const QString& vFace)
    {
        QByteArray p = Words({qint32(vIndex), vHeight, 0, 0, 0, 400});
        p.append(char(0)).append(char(0)).append(char(0)).append(char(vCharset));
        p.append(4, '\0');
        for (int i = 0; i < 32; ++i)
            Put16(p, i < vFace.size() ? vFace[i].unicode() : 0);
        Add(82, p);
        return Add(37, {qint32(vIndex)});
    }

    // ExtTextOutW (wide) or ExtTextOutA with the string's bytes, and optional advances.
    Emf& Text(qint32 x, qint32 y, const QByteArray& vString, qint32 vCount, bool vWide,
              const QList<qint32>& vAdvances = {}, quint32 vOptions = 0)
    {
        QByteArray s = vString;
        while (s.size() % 4)
            s.append('\0');
        const qint32 stringAt = 76, dxAt = vAdvances.isEmpty() ? 0 : stringAt + qint32(s.size());
        QByteArray p = Words({0, 0, -1, -1, 1, 0, 0, x, y, vCount, stringAt, qint32(vOptions), 0, 0, 0, 0, dxAt});
        p += s;
        for (qint32 a : vAdvances)
            Put32(p, quint32(a));
        return Add(vWide ? 84 : 83, p);
    }
    Emf& TextW(qint32 x, qint32 y, const QString& vText, const QList<qint32>& vAdvances = {})
    {
        QByteArray s;
        for (QChar c : vText)
            Put16(s, c.unicode());
        return Text(x, y, s, qint32(vText.size()), true, vAdvances);
    }

    // StretchDIBits of a whole bitmap onto (x, y, w, h).
    Emf& StretchDib(qint32 x, qint32 y, qint32 w, qint32 h, const QByteArray& vInfo, const QByteArray& vBits,
                    qint32 vSrcW, qint32 vSrcH, quint32 vRop = 0xCC0020)
    {
        const qint32 infoAt = 80, bitsAt = infoAt + qint32(vInfo.size());
        QByteArray p = Words({0, 0, 0, 0, x, y, 0, 0, vSrcW, vSrcH, infoAt, qint32(vInfo.size()), bitsAt,
                              qint32(vBits.size()), 0, qint32(vRop), w, h});
        return Add(81, p + vInfo + vBits);
    }

    QByteArray Finish() const
    {
        QByteArray out = header_ + body_ + Words({14, 20, 0, 16, 20});
        qToLittleEndian(quint32(out.size()), out.data() + 48);
        qToLittleEndian(quint32(records_ + 2), out.data() + 52);
        return out;
    }

private:
    QByteArray header_, body_;
    int records_ = 0;
};

// A 16-bit metafile: the 18-byte header and records of 16-bit words.
class Wmf {
public:
    Wmf& Add(quint16 vFunction, const QByteArray& vParams)
    {
        QByteArray p = vParams;
        if (p.size() % 2)
            p.append('\0');
        Put32(body_, quint32(3 + p.size() / 2));
        Put16(body_, vFunction);
        body_ += p;
        return *this;
    }
    Wmf& Add(quint16 vFunction, std::initializer_list<qint32> vShorts) { return Add(vFunction, Shorts(vShorts)); }

    QByteArray Finish(quint16 vObjects = 8) const
    {
        QByteArray out = Shorts({1, 9, 0x300});
        const QByteArray body = body_ + Shorts({3, 0, 0});
        Put32(out, quint32((18 + body.size()) / 2));
        Put16(out, vObjects);
        Put32(out, 0);
        Put16(out, 0);
        return out + body;
    }

private:
    QByteArray body_;
};

} // namespace testemf
