#pragma once
// Bytes like those a save compresses, shared by the tests and the benchmark: scanned 1-bit pages
// with text-like strokes, and properties blocks of page and annotation records.

#include "engine/write/Emit.h"

#include <QByteArray>
#include <QString>

#include <algorithm>
#include <random>

namespace lh5test {

// An A4 page scanned at 200 dpi, one bit a pixel, rows padded to whole bytes.
inline constexpr int PageWidth = 1654;
inline constexpr int PageHeight = 2339;
inline constexpr int RowBytes = (PageWidth + 7) / 8;

inline void SetBlack(QByteArray& vRows, int vX, int vY)
{
    vRows[vY * RowBytes + vX / 8] = static_cast<char>(vRows[vY * RowBytes + vX / 8] | (0x80 >> (vX % 8)));
}

// Lines of 24-pixel "characters" made of a few strokes each, inside 1-inch margins, with a little
// scanner speckle everywhere.
inline QByteArray TextPage(unsigned vSeed, int vLines = 45)
{
    QByteArray rows(RowBytes * PageHeight, '\0');
    std::mt19937 random(vSeed);
    for (int line = 0; line < vLines; ++line) {
        const int top = 200 + line * 43;
        if (top + 30 > PageHeight - 200)
            break;
        const int chars = 30 + static_cast<int>(random() % 20);
        for (int c = 0; c < chars; ++c) {
            const int left = 200 + c * 26;
            for (int stroke = 0, n = 2 + static_cast<int>(random() % 4); stroke < n; ++stroke) {
                const bool across = random() % 2 == 0;
                const int from = static_cast<int>(random() % 20);
                const int at = static_cast<int>(random() % 24);
                const int length = 4 + static_cast<int>(random() % (24 - std::min(from, 20)));
                for (int i = 0; i < length && from + i < 24; ++i)
                    for (int w = 0; w < 3; ++w)
                        across ? SetBlack(rows, left + from + i, top + at + w)
                               : SetBlack(rows, left + at + w, top + from + i);
            }
        }
    }
    for (int speck = 0; speck < 300; ++speck)
        SetBlack(rows, static_cast<int>(random() % PageWidth), static_cast<int>(random() % PageHeight));
    return rows;
}

// Page and annotation records with their attribute names declared, as a document of many
// stamped pages holds them, repeated until vSize bytes.
inline QByteArray RecordsLike(qsizetype vSize, unsigned vSeed = 1)
{
    using namespace xdw::emit;
    std::mt19937 random(vSeed);
    const QByteArray declare = Tagged(51, Numbers({2001, 2, -1, 8}) + Item(QByteArray("lastmid\0", 8))
                                              + Numbers({2002, 4, -1, 22})
                                              + Item(QByteArray("%annotation_customdata\0", 23)));
    QByteArray out;
    for (int page = 1; out.size() < vSize; ++page) {
        out += Tlv(0x62, Tlv(0x80, Int(2)) + Tlv(0x62, Int(0x1301)) + declare
                             + Tagged(2001, Numbers({page + 1}))
                             + Tagged(5, Numbers({21000, 29700})) + Tagged(3, Numbers({page})));
        for (int a = 0, n = 1 + static_cast<int>(random() % 4); a < n; ++a) {
            const QString text = random() % 2 ? QStringLiteral("受付 %1-%2").arg(page).arg(a)
                                              : QStringLiteral("Approved %1").arg(random() % 1000);
            out += Tlv(0x62, Tlv(0x80, Int(3)) + Tlv(0x62, Int(0x8011))
                                 + Tagged(8, Numbers({static_cast<qint64>(random() % 21000),
                                                      static_cast<qint64>(random() % 29700), 5000, 800}))
                                 + Tagged(2002, WideText(text)) + Tagged(13, NarrowText(text)));
        }
    }
    return out.left(vSize);
}

} // namespace lh5test
