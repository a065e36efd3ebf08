#include "DrawnPage.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QTransform>

#include <algorithm>

namespace ocrtest {

DrawnPage Draw(QSize vPixels, const std::vector<Line>& vLines, double vTurnDegrees)
{
    DrawnPage page;
    page.image = QImage(vPixels, QImage::Format_RGB32);
    page.image.fill(Qt::white);
    QPainter painter(&page.image);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setPen(Qt::black);
    // A turn about the page's centre, as a page laid askew on the scanner.
    QTransform turn;
    turn.translate(vPixels.width() / 2.0, vPixels.height() / 2.0);
    turn.rotate(vTurnDegrees);
    turn.translate(-vPixels.width() / 2.0, -vPixels.height() / 2.0);
    painter.setTransform(turn);
    for (const Line& line : vLines) {
        QFont font(QStringLiteral("Noto Sans CJK JP"));
        font.setPixelSize(qRound(line.points * kDpi / 72.0));
        painter.setFont(font);
        const QFontMetricsF metrics(font);
        const QRectF ink = metrics.tightBoundingRect(line.text);
        const QPointF origin = QPointF(line.at) - ink.topLeft();
        painter.drawText(origin, line.text);
        page.inked.push_back(turn.mapRect(ink.translated(origin)).toAlignedRect());
    }
    painter.end();
    page.image = page.image.convertToFormat(QImage::Format_Grayscale8);
    return page;
}

QSize A4(double vPartOfHeight)
{
    return QSize(2480, qRound(3508 * vPartOfHeight));
}

double Similarity(const QString& vA, const QString& vB)
{
    const auto a = vA.toUcs4();
    const auto b = vB.toUcs4();
    if (a.isEmpty() && b.isEmpty())
        return 1.0;
    std::vector<int> row(static_cast<size_t>(b.size()) + 1);
    for (size_t j = 0; j < row.size(); ++j)
        row[j] = static_cast<int>(j);
    for (qsizetype i = 1; i <= a.size(); ++i) {
        int diagonal = row[0];
        row[0] = static_cast<int>(i);
        for (qsizetype j = 1; j <= b.size(); ++j) {
            const int up = row[static_cast<size_t>(j)];
            row[static_cast<size_t>(j)] = std::min({up + 1, row[static_cast<size_t>(j) - 1] + 1,
                                                    diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = up;
        }
    }
    return 1.0 - double(row.back()) / double(std::max(a.size(), b.size()));
}

QString Squeezed(const QString& vText)
{
    QString out;
    for (QChar c : vText) {
        if (!c.isSpace())
            out += c;
    }
    return out;
}

} // namespace ocrtest
