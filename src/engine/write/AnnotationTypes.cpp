// The fixed tables of annotations: the record kind each AddAnnotation number makes, the
// runtime's words and Japanese names for the kinds, and the colours by name. Scripts and
// settings name colours and types by these texts, so they stay exactly as they are.

#include "engine/write/Annotations.h"

#include <array>
#include <utility>

namespace xdw::annot {

namespace {

struct TypeRow {
    quint32 kind;
    const char16_t* name;
    const char16_t* japanese;
};

constexpr std::array<TypeRow, 15> Types{{
    {0x801A, u"FUSEN", u"付箋"},
    {0x8011, u"TEXT", u"テキスト"},
    {0x8033, u"STAMP", u"日付印"},
    {0x803C, u"STRAIGHTLINE", u"直線"},
    {0x803D, u"RECTANGLE", u"矩形"},
    {0x803E, u"ARC", u"楕円"},
    {0x801B, u"MARKER", u"フリーハンド/マーカー"},
    {0xC02F, u"LINK", u"リンク"},
    {0x802E, u"PAGEFORM", u"見出し/ページ番号"},
    {0x800F, u"OLE", u"OLE"},
    {0x803F, u"BITMAP", u"ビットマップ"},
    {0x8042, u"POLYGON", u"多角形"},
    {0x8046, u"TITLE", u"タイトル"},
    {0x8045, u"CUSTOM", u"カスタム"},
    {0x8047, u"GROUP", u"グループ"},
}};

struct ColorRow {
    const char16_t* name;
    qint64 value;
};

// "背景色なし" and "なし" both name "no colour"; the basic colours run from 黒 to 白.
constexpr std::array<ColorRow, 22> Colors{{
    {u"背景色なし", 65793}, {u"なし", 65793}, {u"黒", 0}, {u"茶色", 128}, {u"緑", 32768},
    {u"オリーブ", 32896}, {u"紺", 8388608}, {u"紫", 8388736}, {u"青緑", 8421376},
    {u"灰色", 8421504}, {u"銀", 12632256}, {u"赤", 255}, {u"黄緑", 65280}, {u"黄", 65535},
    {u"青", 16711680}, {u"赤紫", 16711935}, {u"水色", 16776960}, {u"白", 16777215},
    {u"付箋赤", 16761599}, {u"付箋青", 16760733}, {u"付箋黄", 6619135}, {u"付箋緑", 12779421},
}};

QString ColorNameFrom(qint64 vColor, size_t vFirst)
{
    for (size_t i = vFirst; i < Colors.size(); ++i)
        if (Colors[i].value == vColor)
            return QString::fromUtf16(Colors[i].name);
    return {};
}

} // namespace

quint32 KindOf(int vAddType)
{
    switch (static_cast<AddType>(vAddType)) {
    case AddType::Text: return KindText;
    case AddType::Rectangle: return KindRectangle;
    case AddType::Link: return KindLink;
    case AddType::Bitmap: return KindBitmap;
    case AddType::Line: return KindLine;
    case AddType::DateStamp: return KindStamp;
    case AddType::Fusen: return KindFusen;
    }
    return 0;
}

QString TypeName(quint32 vKind)
{
    for (const TypeRow& row : Types)
        if (row.kind == vKind)
            return QString::fromUtf16(row.name);
    return {};
}

QString JapaneseName(QStringView vTypeName)
{
    for (const TypeRow& row : Types)
        if (vTypeName == QStringView(row.name))
            return QString::fromUtf16(row.japanese);
    return {};
}

QString ColorName(qint64 vColor)
{
    return ColorNameFrom(vColor, 1);
}

QString BackColorName(qint64 vColor)
{
    return ColorNameFrom(vColor, 0);
}

qint64 ColorByName(QStringView vName)
{
    for (const ColorRow& row : Colors)
        if (vName == QStringView(row.name))
            return row.value;
    return -1;
}

} // namespace xdw::annot
