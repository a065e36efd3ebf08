#include "engine/write/ImagePlacing.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"

#include <algorithm>
#include <cmath>

namespace xdw {

namespace {

constexpr double HundredthsPerInch = 2540.0;
constexpr qint32 MaxZoom = 10000;

enum class Fit { Default, Fit, User };

[[noreturn]] void RefuseArgument(const QString& vReason)
{
    throw FormatError{XdwResult::InvalidArg, vReason};
}

Fit FitOf(const QString& vName)
{
    if (vName == u"FITDEF")
        return Fit::Default;
    if (vName == u"FIT")
        return Fit::Fit;
    if (vName == u"USERDEF")
        return Fit::User;
    RefuseArgument(QStringLiteral("FitImage \"%1\" is none of FITDEF, FIT and USERDEF").arg(vName));
}

qint64 Round(double vValue)
{
    // Halves go to the even side, as the image sizes the engine reports are rounded.
    return static_cast<qint64>(std::nearbyint(vValue));
}

// Start of a box of vBox along a page side of vPage: 1 at the start, 2 at the end, else centred.
qint64 Offset(int vPos, qint64 vPage, qint64 vBox)
{
    return vPos == 1 ? 0 : vPos == 2 ? vPage - vBox : (vPage - vBox) / 2;
}

struct Span {
    qint64 at = 0, length = 0;
    int first = 0, last = 0;   // pixels shown, last excluded
};

// One side of a box that may overhang the page: the pixels that show, and the box they take.
Span Clip(qint64 vAt, qint64 vLength, qint64 vPage, int vPixels)
{
    if (vAt >= 0 && vAt + vLength <= vPage)
        return {vAt, vLength, 0, vPixels};
    const double perPixel = double(vLength) / vPixels;
    const qint64 from = std::max<qint64>(vAt, 0), to = std::min(vAt + vLength, vPage);
    Span span;
    span.first = std::clamp(static_cast<int>(std::floor((from - vAt) / perPixel)), 0, vPixels - 1);
    span.last = std::clamp(static_cast<int>(std::ceil((to - vAt) / perPixel)), span.first + 1, vPixels);
    span.at = std::max<qint64>(0, vAt + Round(span.first * perPixel));
    span.length = std::max<qint64>(1, std::min(vPage, vAt + Round(span.last * perPixel)) - span.at);
    return span;
}

} // namespace

void CheckPlacing(const Placing& vPlacing)
{
    const Fit fit = FitOf(vPlacing.fitImage);
    if (fit == Fit::Default)
        return;
    if (vPlacing.width < 0 || vPlacing.height < 0 || vPlacing.width > MaxPageSide || vPlacing.height > MaxPageSide)
        RefuseArgument(QStringLiteral("page size %1 x %2 outside 0 to 10 m").arg(vPlacing.width).arg(vPlacing.height));
    if (fit == Fit::User && (vPlacing.zoom < 0 || vPlacing.zoom > MaxZoom))
        RefuseArgument(QStringLiteral("zoom of %1 percent outside 0 to %2").arg(vPlacing.zoom).arg(MaxZoom));
}

PageLayout LayOut(const Placing& vPlacing, QSize vPixels, double vHorDpi, double vVerDpi)
{
    CheckPlacing(vPlacing);
    const Fit fit = FitOf(vPlacing.fitImage);
    const double ownWidth = vPixels.width() / vHorDpi * HundredthsPerInch;
    const double ownHeight = vPixels.height() / vVerDpi * HundredthsPerInch;
    PageLayout layout;
    layout.pixels = QRect(QPoint(0, 0), vPixels);
    if (fit == Fit::Default) {
        layout.pageWidth = layout.width = std::max<qint64>(1, Round(ownWidth));
        layout.pageHeight = layout.height = std::max<qint64>(1, Round(ownHeight));
        if (layout.pageWidth > MaxPageSide || layout.pageHeight > MaxPageSide)
            RefuseArgument(QStringLiteral("the image at its resolution makes a page over 10 m long"));
        return layout;
    }
    const bool given = vPlacing.width > 0 && vPlacing.height > 0;
    layout.pageWidth = given ? vPlacing.width : A4Width;
    layout.pageHeight = given ? vPlacing.height : A4Height;
    double scale = (vPlacing.zoom == 0 ? 100 : vPlacing.zoom) / 100.0;
    if (fit == Fit::Fit)
        scale = std::min(layout.pageWidth / ownWidth, layout.pageHeight / ownHeight);
    qint64 width = std::max<qint64>(1, Round(ownWidth * scale));
    qint64 height = std::max<qint64>(1, Round(ownHeight * scale));
    if (fit == Fit::Fit) {
        width = std::min(width, layout.pageWidth);
        height = std::min(height, layout.pageHeight);
    }
    const Span across = Clip(Offset(vPlacing.horPos, layout.pageWidth, width), width, layout.pageWidth, vPixels.width());
    const Span down = Clip(Offset(vPlacing.verPos, layout.pageHeight, height), height, layout.pageHeight, vPixels.height());
    layout.x = across.at;
    layout.width = across.length;
    layout.y = down.at;
    layout.height = down.length;
    layout.pixels = QRect(across.first, down.first, across.last - across.first, down.last - down.first);
    return layout;
}

} // namespace xdw
