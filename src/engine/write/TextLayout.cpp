#include "engine/write/TextLayout.h"

#include "engine/write/AnnotationDrawing.h"
#include "engine/write/AnnotationProperties.h"

#include <algorithm>
#include <cmath>

namespace xdw::annot {

namespace {

constexpr double UnitsPerInch = 300.0;
constexpr double HundredthsPerInch = 2540.0;
constexpr double PointsPerInch = 72.0;
constexpr qint64 DefaultSize = 120;   // 1/10 pt
const QString DefaultFace = QStringLiteral("ＭＳ ゴシック");

// The vendor's Japanese faces give half-width characters half the height as advance and the
// rest the full height; the box of a text is laid out by that rule, whatever font shows it.
double Ems(QChar vChar)
{
    const char16_t u = vChar.unicode();
    return (u < 0x80 || (u >= 0xFF61 && u <= 0xFF9F)) ? 0.5 : 1.0;
}

} // namespace

double LineEms(const QString& vLine)
{
    double ems = 0;
    for (QChar c : vLine)
        ems += Ems(c);
    return ems;
}

QStringList Lines(const QString& vText)
{
    QString text = vText;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return text.split(u'\n');
}

double EmHundredths(const Node& vRecord)
{
    return NumberOr(vRecord, u"FontSize", DefaultSize) / 10.0 * HundredthsPerInch / PointsPerInch;
}

namespace {

FontSpec FontOf(const Node& vRecord, int vEm, bool vUnderline)
{
    FontSpec f;
    f.height = -vEm;
    f.weight = NumberOr(vRecord, u"FontBold", 0) ? 700 : 400;
    f.italic = NumberOr(vRecord, u"FontItalic", 0) != 0;
    f.underline = vUnderline || NumberOr(vRecord, u"FontUnderLine", 0) != 0;
    f.strikeOut = NumberOr(vRecord, u"FontStrikeOut", 0) != 0;
    f.charSet = static_cast<quint8>(NumberOr(vRecord, u"FontCharSet", 128));
    f.pitchAndFamily = static_cast<quint8>(NumberOr(vRecord, u"FontPitchAndFamily", 0x11));
    f.face = TextOr(vRecord, u"FontName", DefaultFace);
    return f;
}

} // namespace

void WriteText(EmfWriter& vOut, const Node& vRecord, const QString& vText, QPoint vAt, quint32 vColor,
               bool vUnderline)
{
    const int em = std::max(1, Logical(EmHundredths(vRecord)));
    const quint32 font = vOut.CreateFont(FontOf(vRecord, em, vUnderline));
    vOut.Select(font);
    vOut.SetTextColor(vColor);
    vOut.SetTextAlign(0);
    vOut.SetBkMode(true);
    const double step = em * NumberOr(vRecord, u"LineSpace", 100) / 100.0;
    const QStringList lines = Lines(vText);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        std::vector<qint32> advances;
        for (QChar c : lines[i])
            advances.push_back(static_cast<qint32>(std::lround(em * Ems(c))));
        if (!lines[i].isEmpty())
            vOut.TextOut(vAt + QPoint(0, static_cast<int>(std::lround(step * i))), lines[i], advances);
    }
    vOut.Select(StockSystemFont);
    vOut.Delete(font);
    vOut.SetBkMode(false);
}

QPoint Margins(const Node& vRecord)
{
    return QPoint(Logical(NumberOr(vRecord, u"TextLeftMargin", DefaultMargin)),
                  Logical(NumberOr(vRecord, u"TextTopMargin", DefaultMargin)));
}

int Logical(double vHundredths)
{
    return static_cast<int>(std::lround(vHundredths * UnitsPerInch / HundredthsPerInch));
}

QSize TextBox(const Node& vRecord, const QString& vText)
{
    const QStringList lines = Lines(vText);
    double ems = 0;
    for (const QString& line : lines)
        ems = std::max(ems, LineEms(line));
    const double em = EmHundredths(vRecord);
    const double step = em * NumberOr(vRecord, u"LineSpace", 100) / 100.0;
    const double width = NumberOr(vRecord, u"TextLeftMargin", DefaultMargin)
        + NumberOr(vRecord, u"TextRightMargin", DefaultMargin) + std::max(ems, 0.5) * em;
    const double height = NumberOr(vRecord, u"TextTopMargin", DefaultMargin)
        + NumberOr(vRecord, u"TextBottomMargin", DefaultMargin) + step * (lines.size() - 1) + em;
    return QSize(static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height)));
}

} // namespace xdw::annot
