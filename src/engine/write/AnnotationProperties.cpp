#include "engine/write/AnnotationProperties.h"

#include "engine/write/Emit.h"
#include "engine/write/NodeAccess.h"

namespace xdw::annot {

namespace {

constexpr qint64 CodePageJapanese = 932;
const QString WideMark = QStringLiteral("%CCP_#name");

PropertyName Number(const char* vProperty, const char* vAttribute)
{
    return {QString::fromLatin1(vProperty), QString::fromLatin1(vAttribute), ValueForm::Number, 0};
}

PropertyName Text(const char* vProperty, const char* vAttribute)
{
    return {QString::fromLatin1(vProperty), QString::fromLatin1(vAttribute), ValueForm::Text, 0};
}

PropertyName Style(const char* vProperty, int vBit)
{
    return {QString::fromLatin1(vProperty), QStringLiteral("%Style"), ValueForm::StyleBit, vBit};
}

std::vector<PropertyName> MakeNames()
{
    std::vector<PropertyName> names{
        // Text
        Text("Text", "%Text"), Text("FontName", "%Face"), Style("FontBold", 1), Style("FontItalic", 2),
        Style("FontUnderLine", 4), Style("FontStrikeOut", 8), Number("FontSize", "%Size"),
        Number("ForeColor", "%Color"), Number("FontPitchAndFamily", "%PitchAndFamily"),
        Number("FontCharSet", "%CharSet"), Number("BackColor", "%ATTR_BKGND_COLOR"),
        Number("WordWrap", "%Turnover"), Number("AutoResize", "%AutoResize"),
        Number("TextDirection", "%TextVerticalWriting"), Number("TextOrientation", "%TextRotationAngle"),
        Number("LineSpace", "%TextBetweenLine"), Number("TextSpacing", "%Spacing"),
        Number("TextTopMargin", "%TopMargin"), Number("TextLeftMargin", "%LeftMargin"),
        Number("TextBottomMargin", "%BottomMargin"), Number("TextRightMargin", "%RightMargin"),
        Number("TextAutoResizeHeight", "%AutoResizeHeight"),
        // Link
        Text("Caption", "%Caption"), Text("Url", "%Url"), Text("XdwPath", "%XdwPath"),
        Number("ShowIcon", "%ShowIcon"), Number("LinkType", "%LinkType"), Number("XdwPage", "%XdwPage"),
        Text("XdwNameInXbd", "%XdwNameInXbd"),
        // Shape
        Number("BorderStyle", "%BorderStyle"), Number("BorderWidth", "%BorderWidth"),
        Number("BorderColor", "%BorderColor"), Number("BorderTransparent", "%BorderPermeable"),
        Number("ArrowheadType", "%ArrowheadType"), Number("ArrowheadStyle", "%ArrowheadStyle"),
        Number("FillStyle", "%FillStyle"), Number("FillColor", "%FillColor"),
        Number("FillTransparent", "%FillPermeable"), Number("Invisible", "%Invisible"),
        // Stamp and page form
        Number("PageFrom", "%PageFrom"), Text("TopField", "%TopField"), Text("BottomField", "%BottomField"),
        Number("DateStyle", "%DateStyle"), Number("YearField", "%YearField"),
        Number("MonthField", "%MonthField"), Number("DayField", "%DayField"),
        Number("BasisYearStyle", "%BasisYearStyle"), Number("BasisYear", "%BasisYear"),
        Text("DateField_FirstChar", "%DateField_FirstChar"), Number("Alignment", "%Align"),
        Number("LeftRightMargin", "%LeftRightMargin"), Number("TopBottomMargin", "%TopBottomMargin"),
        Number("VerPosition", "%VerPosition"), Number("StartingNumber", "%StartingNumber"),
        Number("Digit", "%Digit"), Number("PageRange", "%PageRange"),
        Number("BeginningPage", "%BeginningPage"), Number("EndingPage", "%EndingPage"),
        Number("Zoom", "%Zoom"), Text("ImageFile", "%ImageFile"),
    };
    for (PropertyName& p : names) {
        if (p.property == u"Caption")
            break;
        p.textFamily = true;
    }
    return names;
}

QString WideName(const QString& vAttribute)
{
    return vAttribute + QStringLiteral("(w");
}

} // namespace

const std::vector<PropertyName>& PropertyNames()
{
    static const std::vector<PropertyName> names = MakeNames();
    return names;
}

const PropertyName* FindProperty(QStringView vProperty)
{
    for (const PropertyName& p : PropertyNames())
        if (p.property.compare(vProperty, Qt::CaseInsensitive) == 0)
            return &p;
    return nullptr;
}

bool IsWide(const Node& vRecord)
{
    return nodes::Named(vRecord, WideMark) != nullptr;
}

void SetWide(Node& vRecord)
{
    nodes::SetNamed(vRecord, WideMark, NamedNumbers, emit::Numbers({CodePageJapanese}));
}

std::optional<QVariant> GetValue(const Node& vRecord, QStringView vProperty)
{
    const PropertyName* p = FindProperty(vProperty);
    if (!p)
        return std::nullopt;
    switch (p->form) {
    case ValueForm::Text: {
        std::optional<QString> text = nodes::NamedText(vRecord, WideName(p->attribute));
        if (!text)
            text = nodes::NamedText(vRecord, p->attribute);
        return text ? std::optional<QVariant>(*text) : std::nullopt;
    }
    case ValueForm::StyleBit: {
        const std::optional<qint64> style = nodes::NamedNumber(vRecord, p->attribute);
        return style ? std::optional<QVariant>((*style & p->bit) != 0) : std::nullopt;
    }
    case ValueForm::Number:
        break;
    }
    const std::optional<qint64> number = nodes::NamedNumber(vRecord, p->attribute);
    return number ? std::optional<QVariant>(*number) : std::nullopt;
}

bool SetValue(Node& vRecord, QStringView vProperty, const QVariant& vValue)
{
    const PropertyName* p = FindProperty(vProperty);
    if (!p)
        return false;
    switch (p->form) {
    case ValueForm::Text: {
        if (!vValue.canConvert<QString>())
            return false;
        const QString text = vValue.toString();
        if (IsWide(vRecord)) {
            nodes::SetNamed(vRecord, WideName(p->attribute), NamedBytes, emit::WideText(text));
            // The face keeps its narrow form beside the wide one, with its own code page.
            if (p->attribute == u"%Face") {
                nodes::SetNamed(vRecord, p->attribute, NamedBytes, emit::NarrowText(text));
                nodes::SetNamed(vRecord, QStringLiteral("%CCP_%Face"), NamedNumbers,
                                emit::Numbers({CodePageJapanese}));
            }
        } else {
            nodes::SetNamed(vRecord, p->attribute, NamedBytes, emit::NarrowText(text));
        }
        return true;
    }
    case ValueForm::StyleBit: {
        const qint64 style = nodes::NamedNumber(vRecord, p->attribute).value_or(0);
        const qint64 changed = vValue.toBool() ? (style | p->bit) : (style & ~qint64(p->bit));
        nodes::SetNamed(vRecord, p->attribute, NamedNumbers, emit::Numbers({changed}));
        return true;
    }
    case ValueForm::Number:
        break;
    }
    bool ok = false;
    const qint64 number = vValue.toLongLong(&ok);
    if (!ok)
        return false;
    nodes::SetNamed(vRecord, p->attribute, NamedNumbers, emit::Numbers({number}));
    return true;
}

qint64 NumberOr(const Node& vRecord, QStringView vProperty, qint64 vDefault)
{
    const std::optional<QVariant> v = GetValue(vRecord, vProperty);
    return v ? v->toLongLong() : vDefault;
}

QString TextOr(const Node& vRecord, QStringView vProperty, const QString& vDefault)
{
    const std::optional<QVariant> v = GetValue(vRecord, vProperty);
    return v ? v->toString() : vDefault;
}

} // namespace xdw::annot
