#include "engine/emf/Fonts.h"
#include "engine/emf/Gdi.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace emf {

namespace {

enum : quint32 {
    kUpdateCp = 1, kRight = 2, kCenter = 6, kBottom = 8, kBaseline = 24,
    kOpaque = 2, kClipped = 4,
};

constexpr double kAscentEm = 0.88, kDescentEm = 0.21;

QFont MakeFont(const Font& vFont, double vPixels)
{
    QFont font;
    font.setFamilies(FontFamilies(vFont.face, vFont.charset));
    font.setPixelSize(qMax(1, int(std::lround(vPixels))));
    font.setWeight(QFont::Weight(qBound(1, vFont.weight > 0 ? vFont.weight : 400, 1000)));
    font.setItalic(vFont.italic);
    font.setUnderline(vFont.underline);
    font.setStrikeOut(vFont.strikeOut);
    font.setKerning(false);
    return font;
}

} // namespace

void Gdi::Text(QPointF vReference, const QString& vText, const QList<double>& vAdvances,
               quint32 vOptions, const QRectF& vRect)
{
    texts << vText;
    if (!painter_ || recording_)
        return;
    const QTransform t = LogicalToTarget();
    const QPointF origin = t.map(QPointF());
    const QPointF xAxis = t.map(QPointF(1, 0)) - origin, yAxis = t.map(QPointF(0, 1)) - origin;
    const double sx = std::hypot(xAxis.x(), xAxis.y()), sy = std::hypot(yAxis.x(), yAxis.y());
    if (sx == 0 || sy == 0)
        return;

    // A negative height is the character's em, a positive one its whole cell. The size is capped
    // at twice the target, so that a crafted height never reaches the font engine.
    const double logical = dc_.font.height == 0 ? 12.0 : std::abs(double(dc_.font.height));
    double pixels = std::min(logical * sy, std::max(2.0 * target_.height(), 16.0));
    QFont font = MakeFont(dc_.font, pixels);
    if (dc_.font.height > 0) {
        const QFontMetricsF cell(font, painter_->device());
        if (cell.height() > 0)
            font = MakeFont(dc_.font, pixels * pixels / cell.height());
    }
    const QFontMetricsF metrics(font, painter_->device());

    QList<double> widths;
    widths.reserve(vText.size());
    double total = 0;
    for (qsizetype i = 0; i < vText.size(); ++i) {
        const double w = i < vAdvances.size() ? vAdvances[i] * sx : metrics.horizontalAdvance(vText[i]);
        widths << w;
        total += w;
    }

    const bool updateCp = dc_.textAlign & kUpdateCp;
    const QPointF at = t.map(updateCp ? dc_.position : vReference);
    if (updateCp)
        dc_.position.rx() += total / sx;
    const quint32 horizontal = dc_.textAlign & kCenter, vertical = dc_.textAlign & kBaseline;
    const double left = horizontal == kCenter ? -total / 2 : horizontal == kRight ? -total : 0;
    // The stand-in fonts reach further above and below than the Windows faces documents name
    // (Noto CJK's ascent is 1.16 em, MS Gothic's 0.86), so text placed by its top or bottom would
    // sink out of its box; the cell is held to the Windows faces' own proportions.
    const double em = font.pixelSize();
    const double ascent = std::min(metrics.ascent(), kAscentEm * em);
    const double descent = std::min(metrics.descent(), kDescentEm * em);
    const double baseline = vertical == kBaseline ? 0 : vertical == kBottom ? -descent : ascent;

    if (vOptions & kOpaque) {
        Prepare(t);
        painter_->fillRect(vRect.normalized(), dc_.bkColour);
    }
    Prepare(t);
    if (vOptions & kClipped) {
        QPainterPath clip;
        clip.addRect(vRect.normalized());
        painter_->setClipPath(clip, painter_->hasClipping() ? Qt::IntersectClip : Qt::ReplaceClip);
        clipDirty_ = true;
    }
    // Text stands upright in target pixels, turned only by the mapping's and the font's angle,
    // so that glyphs are drawn at the size they show rather than scaled from logical units.
    const double angle = std::atan2(xAxis.y(), xAxis.x()) * 180 / M_PI - dc_.font.escapement / 10.0;
    const QTransform upright = QTransform().rotate(angle) * QTransform::fromTranslate(at.x(), at.y());
    if (options_.textDrawn && !vText.trimmed().isEmpty())
        options_.textDrawn(vText, upright.mapRect(QRectF(left, baseline - ascent, total, ascent + descent)));
    painter_->setTransform(upright * base_);
    painter_->setCompositionMode(QPainter::CompositionMode_SourceOver);
    if (dc_.bkMode == 2)
        painter_->fillRect(QRectF(left, baseline - ascent, total, ascent + descent), dc_.bkColour);
    painter_->setFont(font);
    painter_->setPen(dc_.textColour);
    if (vAdvances.isEmpty()) {
        painter_->drawText(QPointF(left, baseline), vText);
        return;
    }
    double x = left;
    for (qsizetype i = 0; i < vText.size(); ++i) {
        const bool pair = vText[i].isHighSurrogate() && i + 1 < vText.size();
        const QString glyph = vText.mid(i, pair ? 2 : 1);
        if (!glyph.at(0).isSpace())
            painter_->drawText(QPointF(x, baseline), glyph);
        x += widths[i] + (pair ? widths[i + 1] : 0);
        i += pair ? 1 : 0;
    }
}

} // namespace emf
