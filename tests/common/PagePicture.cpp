#include "common/PagePicture.h"

#include <QPainter>
#include <QString>

#include <algorithm>
#include <array>

namespace pagepicture {
namespace {

// The strip: a dark guard block, 16 bits from the highest, a dark guard block.
constexpr int Blocks = 18;
constexpr double StripLeft = 0.10, StripWidth = 0.80, StripTop = 0.86, StripHeight = 0.06;
constexpr double PaperProbeY = 0.96;  // below the strip, inside the frame

// Segments a to g as bits 0 to 6, for the digits 0 to 9.
constexpr std::array<quint8, 10> SegmentsOf = {0x3F, 0x06, 0x5B, 0x4F, 0x66,
                                               0x6D, 0x7D, 0x07, 0x7F, 0x6F};

void DrawDigit(QPainter& vPainter, int vDigit, QRectF vCell)
{
    const double w = vCell.width(), h = vCell.height(), t = w * 0.2;
    const double x = vCell.left(), y = vCell.top(), mid = y + (h - t) / 2;
    const std::array<QRectF, 7> segments = {
        QRectF(x, y, w, t),                     // a: top
        QRectF(x + w - t, y, t, h / 2),         // b: upper right
        QRectF(x + w - t, y + h / 2, t, h / 2), // c: lower right
        QRectF(x, y + h - t, w, t),             // d: bottom
        QRectF(x, y + h / 2, t, h / 2),         // e: lower left
        QRectF(x, y, t, h / 2),                 // f: upper left
        QRectF(x, mid, w, t),                   // g: middle
    };
    for (int s = 0; s < 7; ++s) {
        if (SegmentsOf[vDigit] & (1 << s))
            vPainter.fillRect(segments[s], Qt::black);
    }
}

QPointF BlockCentre(QSizeF vSize, int vBlock)
{
    const double width = vSize.width() * StripWidth / Blocks;
    return {vSize.width() * StripLeft + (vBlock + 0.5) * width,
            vSize.height() * (StripTop + StripHeight / 2)};
}

bool IsDark(const QImage& vImage, QPointF vAt)
{
    const QPoint p(std::clamp(int(vAt.x()), 0, vImage.width() - 1),
                   std::clamp(int(vAt.y()), 0, vImage.height() - 1));
    return qGray(vImage.pixel(p)) < 128;
}

} // namespace

QImage Draw(int vPage, QSize vSize)
{
    QImage image(vSize.expandedTo(QSize(1, 1)), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    const QSizeF size = image.size();

    const double frame = std::max(1.0, size.width() * 0.01);
    painter.setPen(QPen(Qt::darkGray, frame));
    painter.drawRect(QRectF(frame / 2, frame / 2, size.width() - frame, size.height() - frame));

    // The digits: centred, a third of the page high unless the width runs out first; the gap
    // between two is 0.3 of a digit's width.
    const QString digits = QString::number(vPage);
    const double count = static_cast<double>(digits.size());
    double height = size.height() * 0.35;
    double width = height * 0.55;
    const double maxRow = size.width() * 0.8;
    if (const double row = width * (1.3 * count - 0.3); row > maxRow) {
        height *= maxRow / row;
        width *= maxRow / row;
    }
    double x = (size.width() - width * (1.3 * count - 0.3)) / 2;
    const double y = size.height() * 0.42 - height / 2;
    for (const QChar digit : digits) {
        if (const int value = digit.digitValue(); value >= 0)
            DrawDigit(painter, value, QRectF(x, y, width, height));
        x += width * 1.3;
    }

    const double blockWidth = size.width() * StripWidth / Blocks;
    for (int block = 0; block < Blocks; ++block) {
        const bool guard = block == 0 || block == Blocks - 1;
        const bool bit = !guard && (vPage >> (Blocks - 2 - block)) & 1;
        if (guard || bit)
            painter.fillRect(QRectF(size.width() * StripLeft + block * blockWidth,
                                    size.height() * StripTop, blockWidth, size.height() * StripHeight),
                             Qt::black);
    }
    return image;
}

int Read(const QImage& vImage)
{
    if (vImage.isNull())
        return -1;
    const QSizeF size = vImage.size();
    if (!IsDark(vImage, BlockCentre(size, 0)) || !IsDark(vImage, BlockCentre(size, Blocks - 1))
        || IsDark(vImage, QPointF(size.width() / 2, size.height() * PaperProbeY)))
        return -1;
    int page = 0;
    for (int block = 1; block < Blocks - 1; ++block)
        page = (page << 1) | (IsDark(vImage, BlockCentre(size, block)) ? 1 : 0);
    return page;
}

} // namespace pagepicture
