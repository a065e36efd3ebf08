#include "windowing/clsSizing.h"

#include <QWidget>

#include <cmath>

namespace {

double TwipsPerPixel(const QWidget* vWidget)
{
    const int dpi = vWidget ? vWidget->logicalDpiX() : 96;
    return 1440.0 / (dpi > 0 ? dpi : 96);
}

} // namespace

int clsSizing::PixelsOfTwips(const QWidget* vWidget, double vTwips)
{
    return static_cast<int>(std::lround(vTwips / TwipsPerPixel(vWidget)));
}

double clsSizing::TwipsOfPixels(const QWidget* vWidget, int vPixels)
{
    return vPixels * TwipsPerPixel(vWidget);
}

void clsSizing::SetMinimumTwips(QWidget* vForm, double vWidthTwips, double vHeightTwips)
{
    vForm->setMinimumSize(PixelsOfTwips(vForm, vWidthTwips), PixelsOfTwips(vForm, vHeightTwips));
}
