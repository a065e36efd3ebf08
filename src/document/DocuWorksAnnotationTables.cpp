// The fixed tables of annotations: their types with display names, the named colours, and the
// properties with the data type each is written with. Users' macros and settings hold these
// names and numbers, so they stay exactly as they are.
#include "document/DocuWorksAnnotationClass.h"

#include "support/AppError.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

struct TypeRow {
    qint32 code;
    const char16_t* type;
    const char16_t* japanese;
};

const std::array<TypeRow, 15> Types = {{
    {32794, u"FUSEN", u"付箋"},
    {32785, u"TEXT", u"テキスト"},
    {32819, u"STAMP", u"日付印"},
    {32828, u"STRAIGHTLINE", u"直線"},
    {32829, u"RECTANGLE", u"矩形"},
    {32830, u"ARC", u"楕円"},
    {32795, u"MARKER", u"フリーハンド/マーカー"},
    {49199, u"LINK", u"リンク"},
    {32814, u"PAGEFORM", u"見出し/ページ番号"},
    {32783, u"OLE", u"OLE"},
    {32831, u"BITMAP", u"ビットマップ"},
    {32834, u"POLYGON", u"多角形"},
    {32838, u"TITLE", u"タイトル"},
    {32837, u"CUSTOM", u"カスタム"},
    {32839, u"GROUP", u"グループ"},
}};

struct ColourRow {
    const char16_t* name;
    qint32 value;
};

// "No colour" first, then the sixteen basic colours from black to white, then the sticky notes'.
constexpr qint32 NoColour = 65793;
const std::array<ColourRow, 21> Colours = {{
    {u"背景色なし", NoColour},
    {u"黒", 0}, {u"茶色", 128}, {u"緑", 32768}, {u"オリーブ", 32896}, {u"紺", 8388608},
    {u"紫", 8388736}, {u"青緑", 8421376}, {u"灰色", 8421504}, {u"銀", 12632256}, {u"赤", 255},
    {u"黄緑", 65280}, {u"黄", 65535}, {u"青", 16711680}, {u"赤紫", 16711935}, {u"水色", 16776960},
    {u"白", 16777215},
    {u"付箋赤", 16761599}, {u"付箋青", 16760733}, {u"付箋黄", 6619135}, {u"付箋緑", 12779421},
}};
constexpr std::size_t FirstBasic = 1;
constexpr std::size_t LastBasic = 16;

// Properties written as text; every other one is written as a number.
constexpr qint32 TextDataType = 2;
constexpr qint32 NumberDataType = 0;
const QStringList TextProperties = {
    u"Text"_s, u"FontName"_s, u"Caption"_s, u"Url"_s, u"XdwPath"_s, u"XdwNameInXbd"_s,
    u"TopField"_s, u"BottomField"_s, u"DateField_FirstChar"_s, u"ImageFile"_s,
};

} // namespace

const QStringList& DocuWorksAnnotationClass::PropertyNames()
{
    static const QStringList names = {
        // text
        u"Text"_s, u"FontName"_s, u"FontItalic"_s, u"FontBold"_s, u"FontUnderLine"_s, u"FontStrikeOut"_s,
        u"FontSize"_s, u"ForeColor"_s, u"FontPitchAndFamily"_s, u"FontCharSet"_s, u"BackColor"_s,
        u"WordWrap"_s, u"AutoResize"_s, u"TextDirection"_s, u"TextOrientation"_s, u"LineSpace"_s,
        u"TextSpacing"_s, u"TextTopMargin"_s, u"TextLeftMargin"_s, u"TextBottomMargin"_s,
        u"TextRightMargin"_s, u"TextAutoResizeHeight"_s,
        // link
        u"Caption"_s, u"Url"_s, u"XdwPath"_s, u"ShowIcon"_s, u"LinkType"_s, u"XdwPage"_s, u"XdwNameInXbd"_s,
        // shape
        u"BorderStyle"_s, u"BorderWidth"_s, u"BorderColor"_s, u"BorderTransparent"_s, u"ArrowheadType"_s,
        u"ArrowheadStyle"_s, u"FillStyle"_s, u"FillColor"_s, u"FillTransparent"_s, u"Invisible"_s,
        // stamp and page form
        u"PageFrom"_s, u"TopField"_s, u"BottomField"_s, u"DateStyle"_s, u"YearField"_s, u"MonthField"_s,
        u"DayField"_s, u"BasisYearStyle"_s, u"BasisYear"_s, u"DateField_FirstChar"_s, u"Alignment"_s,
        u"LeftRightMargin"_s, u"TopBottomMargin"_s, u"VerPosition"_s, u"StartingNumber"_s, u"Digit"_s,
        u"PageRange"_s, u"BeginningPage"_s, u"EndingPage"_s, u"Zoom"_s, u"ImageFile"_s,
    };
    return names;
}

qint32 DocuWorksAnnotationClass::PropertyDataType(const QString& vName)
{
    return TextProperties.contains(vName) ? TextDataType : NumberDataType;
}

QString DocuWorksAnnotationClass::TypeOfCode(qint32 vTypeCode)
{
    for (const TypeRow& row : Types) {
        if (row.code == vTypeCode)
            return QString::fromUtf16(row.type);
    }
    return {};
}

QString DocuWorksAnnotationClass::Japanese(const QString& vType)
{
    for (const TypeRow& row : Types) {
        if (QString::fromUtf16(row.type) == vType)
            return QString::fromUtf16(row.japanese);
    }
    return {};
}

SDC DocuWorksAnnotationClass::MakeColorTree()
{
    auto tree = std::make_shared<StructuredDataClass>();
    const SDC byName = tree->CreateThread(u"色"_s);
    const SDC basic = tree->CreateThread(u"基本色"_s);
    const SDC none = tree->CreateThread(u"背景色なし"_s);
    const SDC names = tree->CreateThread(u"色文字列"_s);
    const SDC backNames = tree->CreateThread(u"背景色文字列"_s);
    for (std::size_t i = 0; i < Colours.size(); ++i) {
        const QString name = QString::fromUtf16(Colours[i].name);
        const QString value = QString::number(Colours[i].value);
        byName->AddData(value, name);
        if (i >= FirstBasic && i <= LastBasic)
            basic->AddData(value, name);
        // The one number with two names: "なし" as a colour, "背景色なし" as a background.
        names->AddData(i == 0 ? u"なし"_s : name, value);
        backNames->AddData(name, value);
    }
    byName->AddData(QString::number(NoColour), u"なし"_s);
    none->AddData(QString::number(NoColour), QString::fromUtf16(Colours[0].name));
    return tree;
}

QString DocuWorksAnnotationClass::GetColorName(qint32 vColor) const
{
    return colorName_->Thread(u"色文字列"_s)->DataValue(QString::number(vColor));
}

QString DocuWorksAnnotationClass::GetBackColorName(qint32 vColor) const
{
    return colorName_->Thread(u"背景色文字列"_s)->DataValue(QString::number(vColor));
}

qint32 DocuWorksAnnotationClass::GetColorByName(const QString& vName) const
{
    const SDC byName = colorName_->Thread(u"色"_s);
    if (!byName->Exists(vName))
        throw AppError(AppError::TypeMismatch);
    return byName->DataValue(vName).toInt();
}
