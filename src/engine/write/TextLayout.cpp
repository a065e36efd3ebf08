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
constexpr qint64 LargestBox = 240000;

// Settings are bounded before they size anything: a crafted font size, spacing or margin read
// from a file must not become a box or a drawing of any size.
qint64 Bounded(const Node& vRecord, QStringView vProperty, qint64 vDefault, qint64 vLow, qint64 vHigh)
{
    return std::clamp(NumberOr(vRecord, vProperty, vDefault), vLow, vHigh);
}

qint64 Margin(const Node& vRecord, QStringView vProperty)
{
    return Bounded(vRecord, vProperty, DefaultMargin, 0, 10000);
}

double Spacing(const Node& vRecord)
{
    return Bounded(vRecord, u"LineSpace", 100, 10, 1000) / 100.0;
}

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
    return Bounded(vRecord, u"FontSize", DefaultSize, 1, 10000) / 10.0 * HundredthsPerInch / PointsPerInch;
}

namespace {

LogFont FontOf(const Node& vRecord, int vEm, bool vUnderline)
{
    LogFont f;
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
    const double step = em * Spacing(vRecord);
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

QString Wrap(const Node& vRecord, const QString& vText, int vWidth)
{
    const double fit = std::max(1.0, double(vWidth) / std::max(1, Logical(EmHundredths(vRecord))));
    QStringList wrapped;
    for (const QString& line : Lines(vText)) {
        QString rest = line;
        while (LineEms(rest) > fit) {
            // The longest start of the rest that fits, at least one character so that every
            // turn of the loop takes something.
            qsizetype take = 1;
            double ems = Ems(rest[0]);
            while (take < rest.size() && ems + Ems(rest[take]) <= fit)
                ems += Ems(rest[take++]);
            const qsizetype blank = rest.lastIndexOf(u' ', take);
            if (blank > 0 && take < rest.size())
                take = blank + 1;
            wrapped.append(rest.first(take).trimmed());
            rest = rest.sliced(take);
        }
        wrapped.append(rest);
    }
    return wrapped.join(u'\n');
}

QPoint Margins(const Node& vRecord)
{
    return QPoint(Logical(Margin(vRecord, u"TextLeftMargin")), Logical(Margin(vRecord, u"TextTopMargin")));
}

int Logical(double vHundredths)
{
    constexpr double Largest = 1e8;   // far beyond any box, well inside an int's range
    return static_cast<int>(std::lround(std::clamp(vHundredths, -Largest, Largest) * UnitsPerInch / HundredthsPerInch));
}

QSize TextBox(const Node& vRecord, const QString& vText)
{
    const QStringList lines = Lines(vText);
    double ems = 0;
    for (const QString& line : lines)
        ems = std::max(ems, LineEms(line));
    const double em = EmHundredths(vRecord);
    const double step = em * Spacing(vRecord);
    const double width = Margin(vRecord, u"TextLeftMargin") + Margin(vRecord, u"TextRightMargin")
        + std::max(ems, 0.5) * em;
    const double height = Margin(vRecord, u"TextTopMargin") + Margin(vRecord, u"TextBottomMargin")
        + step * static_cast<double>(lines.size() - 1) + em;
    auto side = [](double v) { return static_cast<int>(std::clamp<double>(std::ceil(v), 1, LargestBox)); };
    return QSize(side(width), side(height));
}

} // namespace xdw::annot
