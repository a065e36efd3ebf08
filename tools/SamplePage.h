#pragma once
// A page that looks like an office document, for the sample files and the screenshots: a
// heading, lines of Japanese text and the page number large at the top and small at the foot.

#include <QImage>
#include <QSize>

QImage DrawSamplePage(int vPage, int vTotal, QSize vSize = QSize(850, 1100));
