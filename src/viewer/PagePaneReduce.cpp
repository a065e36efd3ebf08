#include "viewer/PagePaneImage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <vector>

// Area averaging: every painted pixel is the mean of the picture's area under it, partly covered
// pixels at its edges weighted by the part they cover (in 256ths of a pixel).
namespace pagepane {
namespace {

// What one painted pixel covers along one axis: pixels first (weight lead), first + 1 to last - 1
// (whole), last (weight tail, possibly 0). total is the sum of the weights.
struct Span {
    int first = 0;
    int last = 0;
    uint lead = 0;
    uint tail = 0;
    uint total = 0;
};

// vCount spans over vLength pixels, or spans of vBlock whole pixels when vBlock is given.
std::vector<Span> Spans(int vLength, int vCount, int vBlock = 0)
{
    std::vector<Span> spans(static_cast<size_t>(vCount));
    const qint64 end = qint64(vLength) * 256;
    for (int i = 0; i < vCount; ++i) {
        const qint64 from = vBlock ? qint64(i) * vBlock * 256 : qint64(i) * end / vCount;
        const qint64 to = vBlock ? std::min(end, qint64(i + 1) * vBlock * 256) : qint64(i + 1) * end / vCount;
        Span& s = spans[size_t(i)];
        s.first = int(from >> 8);
        s.last = int(to >> 8);
        s.total = uint(to - from);
        if (s.first == s.last) {
            s.lead = s.total;
        } else {
            s.lead = uint(256 - (from & 255));
            s.tail = uint(to & 255);
        }
    }
    return spans;
}

// The weight of pixel vIndex of a span, vIndex from first to last.
inline uint Weight(const Span& vSpan, int vIndex)
{
    return vIndex == vSpan.first ? vSpan.lead : vIndex == vSpan.last ? vSpan.tail : 256u;
}

constexpr int Shades = 1024;

// 1-bit, most significant bit first. The whole pixels of a span are counted 64 bits at a load,
// so a span may be up to 56 pixels long. Built twice, with and without the processor's
// popcount instruction, and the loader picks.
__attribute__((target_clones("popcnt", "default"))) QImage AreaBits(const QImage& vPicture, const std::vector<Span>& vX,
                                                                    const std::vector<Span>& vY)
{
    QImage out(int(vX.size()), int(vY.size()), QImage::Format_RGB32);
    if (out.isNull())
        return out;
    const QList<QRgb> table = vPicture.colorTable();
    const QRgb zero = table.value(0, qRgb(0, 0, 0));
    const QRgb one = table.value(1, qRgb(255, 255, 255));
    // A row with 8 spare bytes, so that a 64-bit load at the last span, and the tail pixel of
    // weight 0 just past the end, stay inside it. (Everything stays in this one function, so
    // that all of it is built with popcount where there is one.)
    const qsizetype line = vPicture.bytesPerLine();
    std::vector<uchar> row(static_cast<size_t>(line) + 8, 0);
    const int width = vPicture.width();
    const size_t bytes = size_t((width + 7) / 8);
    const uchar lastMask = uchar(0xFF00 >> (((width - 1) & 7) + 1));
    // The weighted count of each span in the last row counted: a row on the edge between two
    // painted rows counts for both and is counted once.
    std::vector<uint> counts(vX.size());
    int counted = -1;
    // The colours between the two in 1024 steps, and what turns a weighted count into a step.
    std::vector<QRgb> shades(Shades + 1);
    for (int i = 0; i <= Shades; ++i) {
        auto channel = [i](int vZero, int vOne) { return (vZero * (Shades - i) + vOne * i + Shades / 2) / Shades; };
        shades[size_t(i)] = qRgb(channel(qRed(zero), qRed(one)), channel(qGreen(zero), qGreen(one)),
                                 channel(qBlue(zero), qBlue(one)));
    }
    std::vector<float> columnScale(vX.size());
    for (size_t ox = 0; ox < vX.size(); ++ox)
        columnScale[ox] = 1.0f / float(vX[ox].total);
    std::vector<quint64> ones(vX.size());
    for (size_t oy = 0; oy < vY.size(); ++oy) {
        const Span& sy = vY[oy];
        std::fill(ones.begin(), ones.end(), quint64(0));
        for (int y = sy.first; y <= sy.last && y < vPicture.height(); ++y) {
            const uint wy = Weight(sy, y);
            if (!wy)
                continue;
            if (y != counted) {
                counted = y;
                std::memcpy(row.data(), vPicture.constScanLine(y), size_t(line));
                row[bytes - 1] &= lastMask;
                // Most rows of a page are paper between the lines: nothing to count.
                if (std::all_of(row.begin(), row.begin() + long(bytes), [](uchar v) { return v == 0; })) {
                    std::fill(counts.begin(), counts.end(), 0u);
                    continue;
                }
                const uchar* r = row.data();
                for (size_t ox = 0; ox < vX.size(); ++ox) {
                    // No branches: which spans end on a whole pixel follows no pattern a
                    // processor could predict. The whole pixels are shifted out in two steps, so
                    // that none of them (a span inside one pixel) is a shift by 63 and 1, not 64.
                    const Span& sx = vX[ox];
                    const int from = sx.first + 1;
                    const int whole = std::max(0, sx.last - from);
                    quint64 word;
                    std::memcpy(&word, r + (from >> 3), sizeof word);
                    if constexpr (std::endian::native == std::endian::little)
                        word = __builtin_bswap64(word);
                    const uint lead = r[sx.first >> 3] >> (7 - (sx.first & 7)) & 1;
                    const uint tail = r[sx.last >> 3] >> (7 - (sx.last & 7)) & 1;
                    counts[ox] = sx.lead * lead + sx.tail * tail
                                 + 256u * uint(__builtin_popcountll((word << (from & 7)) >> (63 - whole) >> 1));
                }
            }
            for (size_t ox = 0; ox < vX.size(); ++ox)
                ones[ox] += quint64(wy) * counts[ox];
        }
        QRgb* dst = reinterpret_cast<QRgb*>(out.scanLine(int(oy)));
        const float rowScale = float(Shades) / float(sy.total);
        for (size_t ox = 0; ox < vX.size(); ++ox)
            dst[ox] = shades[size_t(float(ones[ox]) * columnScale[ox] * rowScale + 0.5f)];
    }
    return out;
}

// An 8, 16, 24 or 32-bit opaque picture. A pixel's channels are spread into one 64-bit word,
// red at bit 40, green at 20, blue at 0, so that the rows of a span are summed with one
// multiplication and addition a pixel: 15 rows of weight 256 and value 255 stay below 2^20.
// vPack(row, x) spreads pixel x of a row; vMax is the largest channel value of the format.
template <class Pack>
QImage AreaPacked(const QImage& vPicture, const std::vector<Span>& vX, const std::vector<Span>& vY, uint vMax,
                  Pack vPack)
{
    const int w = vPicture.width();
    QImage out(int(vX.size()), int(vY.size()), QImage::Format_RGB32);
    if (out.isNull())
        return out;
    std::vector<quint64> column(static_cast<size_t>(w));
    for (size_t oy = 0; oy < vY.size(); ++oy) {
        const Span& sy = vY[oy];
        std::fill(column.begin(), column.end(), quint64(0));
        for (int y = sy.first; y <= sy.last && y < vPicture.height(); ++y) {
            const quint64 wy = Weight(sy, y);
            if (!wy)
                continue;
            const uchar* row = vPicture.constScanLine(y);
            quint64* c = column.data();
            for (int x = 0; x < w; ++x)
                c[x] += wy * vPack(row, x);
        }
        QRgb* dst = reinterpret_cast<QRgb*>(out.scanLine(int(oy)));
        for (size_t ox = 0; ox < vX.size(); ++ox) {
            const Span& sx = vX[ox];
            quint64 r = 0, g = 0, b = 0;
            for (int x = sx.first; x <= sx.last && x < w; ++x) {
                const quint64 wx = Weight(sx, x);
                const quint64 c = column[size_t(x)];
                r += wx * (c >> 40 & 0xFFFFF);
                g += wx * (c >> 20 & 0xFFFFF);
                b += wx * (c & 0xFFFFF);
            }
            const double factor = 255.0 / (double(sx.total) * double(sy.total) * vMax);
            dst[ox] = qRgb(int(double(r) * factor + 0.5), int(double(g) * factor + 0.5), int(double(b) * factor + 0.5));
        }
    }
    return out;
}

inline quint64 Spread(uint vRed, uint vGreen, uint vBlue)
{
    return quint64(vRed) << 40 | quint64(vGreen) << 20 | vBlue;
}

bool Averageable(QImage::Format vFormat)
{
    switch (vFormat) {
    case QImage::Format_Mono:
    case QImage::Format_RGB555:
    case QImage::Format_RGB32:
    case QImage::Format_RGB888:
    case QImage::Format_Grayscale8:
    case QImage::Format_Indexed8: return true;
    default: return false;
    }
}

QImage Area(const QImage& vPicture, const std::vector<Span>& vX, const std::vector<Span>& vY)
{
    switch (vPicture.format()) {
    case QImage::Format_Mono: return AreaBits(vPicture, vX, vY);
    case QImage::Format_RGB555:
        return AreaPacked(vPicture, vX, vY, 31, [](const uchar* vRow, int vX2) {
            quint16 v;
            std::memcpy(&v, vRow + 2 * vX2, sizeof v);
            return quint64(v & 0x7C00) << 30 | quint64(v & 0x3E0) << 15 | (v & 0x1F);
        });
    case QImage::Format_RGB32:
        return AreaPacked(vPicture, vX, vY, 255, [](const uchar* vRow, int vX2) {
            QRgb p;
            std::memcpy(&p, vRow + 4 * vX2, sizeof p);
            return quint64(p & 0xFF0000) << 24 | quint64(p & 0xFF00) << 12 | (p & 0xFF);
        });
    case QImage::Format_RGB888:
        return AreaPacked(vPicture, vX, vY, 255, [](const uchar* vRow, int vX2) {
            const uchar* p = vRow + 3 * vX2;
            return Spread(p[0], p[1], p[2]);
        });
    case QImage::Format_Grayscale8:
        return AreaPacked(vPicture, vX, vY, 255,
                          [](const uchar* vRow, int vX2) { return Spread(vRow[vX2], vRow[vX2], vRow[vX2]); });
    default: {
        std::array<quint64, 256> spread{};
        const QList<QRgb> table = vPicture.colorTable();
        for (int i = 0; i < table.size() && i < 256; ++i)
            spread[size_t(i)] = Spread(uint(qRed(table[i])), uint(qGreen(table[i])), uint(qBlue(table[i])));
        return AreaPacked(vPicture, vX, vY, 255, [&spread](const uchar* vRow, int vX2) { return spread[vRow[vX2]]; });
    }
    }
}

} // namespace

QRgb Through555(QRgb vColour)
{
    const int r = qRed(vColour) >> 3;
    const int g = qGreen(vColour) >> 3;
    const int b = qBlue(vColour) >> 3;
    return qRgb(r << 3 | r >> 2, g << 3 | g >> 2, b << 3 | b >> 2);
}

QImage SmoothReduced(const QImage& vPicture, QSize vSize)
{
    if (vSize.isEmpty())
        return vPicture.scaled(vSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    // Other depths are brought to one the averaging reads: a 1-bit page with its bits the other
    // way round stays 1-bit, anything else becomes 32-bit.
    if (!Averageable(vPicture.format()))
        return SmoothReduced(vPicture.convertToFormat(vPicture.format() == QImage::Format_MonoLSB
                                                          ? QImage::Format_Mono
                                                          : QImage::Format_RGB32),
                             vSize);
    // Up to 14 picture pixels to a painted one in one pass. Beyond (a big picture in a small
    // pane), whole blocks are averaged first; that the last block of a row or column is short
    // shifts the far edge by well under a painted pixel.
    const int ratio = std::max((vPicture.width() - 1) / vSize.width(), (vPicture.height() - 1) / vSize.height()) + 1;
    if (ratio <= 14)
        return Area(vPicture, Spans(vPicture.width(), vSize.width()), Spans(vPicture.height(), vSize.height()));
    const int block = (ratio + 7) / 8;
    const int w = (vPicture.width() + block - 1) / block;
    const int h = (vPicture.height() + block - 1) / block;
    return SmoothReduced(Area(vPicture, Spans(vPicture.width(), w, block), Spans(vPicture.height(), h, block)), vSize);
}

} // namespace pagepane
