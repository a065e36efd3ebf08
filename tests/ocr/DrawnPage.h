#pragma once
// Pages drawn with known text in known places, for reading back: black Noto Sans CJK JP on white.

#include <QImage>
#include <QRect>
#include <QString>

#include <vector>

namespace ocrtest {

constexpr int kDpi = 300;

struct Line {
    QString text;
    QPoint at;        // top left of the line's ink, in pixels
    double points = 14;
};

struct DrawnPage {
    QImage image;                 // Grayscale8
    std::vector<QRect> inked;     // where each line's text lies
};

DrawnPage Draw(QSize vPixels, const std::vector<Line>& vLines, double vTurnDegrees = 0);

// An A4 page's pixels at kDpi, or a part of its height.
QSize A4(double vPartOfHeight = 1.0);

// Similarity of two texts by characters, 0 to 1: one less the edit distance over the longer.
double Similarity(const QString& vA, const QString& vB);

// The text without any blank, for comparing what OCR read with what was drawn.
QString Squeezed(const QString& vText);

} // namespace ocrtest
