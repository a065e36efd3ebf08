#include "engine/write/Annotations.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/write/AnnotationProperties.h"
#include "engine/write/Bitmap.h"
#include "engine/write/Emit.h"
#include "engine/write/NodeAccess.h"
#include "engine/write/Placements.h"
#include "engine/write/TextLayout.h"

#include <algorithm>
#include <cstdlib>

namespace xdw::annot {

namespace {

const QString Face = QStringLiteral("ＭＳ ゴシック");
constexpr qint64 NoteYellow = 6619135;   // 付箋黄, the colour a new sticky note has
constexpr qint64 StampRed = 0x0000FF;

[[noreturn]] void Refuse(const QString& vReason)
{
    throw FormatError{XdwResult::InvalidArg, vReason};
}

void Check(bool vOk, const char* vWhat)
{
    if (!vOk)
        Refuse(QString::fromLatin1(vWhat));
}

void Put(Node& vRecord, const char16_t* vProperty, const QVariant& vValue)
{
    SetValue(vRecord, QStringView(vProperty), vValue);
}

void PutNumber(Node& vRecord, const QString& vAttribute, qint64 vValue)
{
    nodes::SetNamed(vRecord, vAttribute, NamedNumbers, emit::Numbers({vValue}));
}

// What every text-bearing kind starts with: the vendor's default face and size, black on no
// background, margins of 1.7 mm, single spacing.
void TextDefaults(Node& vRecord)
{
    PutNumber(vRecord, QStringLiteral("%hidden"), 0);
    for (const char16_t* zero : {u"WordWrap", u"TextAutoResizeHeight", u"TextDirection", u"TextSpacing",
                                 u"TextOrientation", u"ForeColor"})
        Put(vRecord, zero, 0);
    Put(vRecord, u"FontPitchAndFamily", 0x11);
    Put(vRecord, u"LineSpace", 100);
    for (const char16_t* margin : {u"TextLeftMargin", u"TextTopMargin", u"TextRightMargin", u"TextBottomMargin"})
        Put(vRecord, margin, DefaultMargin);
    Put(vRecord, u"BackColor", NoColor);
    Put(vRecord, u"FontName", Face);
    PutNumber(vRecord, QStringLiteral("%Style"), 0);
    Put(vRecord, u"FontSize", 120);
    Put(vRecord, u"FontCharSet", 128);
    Put(vRecord, u"AutoResize", 1);
}

QSize KindSize(const AnnotationRequest& vRequest, const Node& vRecord)
{
    switch (vRequest.type) {
    case AddType::Text:
        return TextBox(vRecord, vRequest.text);
    case AddType::Link:
        return TextBox(vRecord, TextOr(vRecord, u"Caption", {}));
    case AddType::Rectangle:
        Check(vRequest.width >= 100 && vRequest.height >= 100, "rectangle smaller than 1 mm");
        Check(vRequest.width <= Reach && vRequest.height <= Reach, "rectangle larger than 2.4 m");
        return QSize(static_cast<int>(vRequest.width), static_cast<int>(vRequest.height));
    case AddType::Fusen: {
        const qint64 w = vRequest.width ? vRequest.width : 5000, h = vRequest.height ? vRequest.height : 2500;
        Check(w >= 500 && h >= 500 && w <= 50000 && h <= 50000, "sticky note outside 5 mm to 50 cm");
        return QSize(static_cast<int>(w), static_cast<int>(h));
    }
    case AddType::DateStamp: {
        const qint64 w = vRequest.width ? vRequest.width : 1500, h = vRequest.height ? vRequest.height : 1500;
        Check(w >= 100 && h >= 100 && w <= Reach && h <= Reach, "date stamp outside 1 mm to 2.4 m");
        return QSize(static_cast<int>(w), static_cast<int>(h));
    }
    case AddType::Line: {
        // Room for the pen on every side, so a level line still has a height to be drawn in.
        const qint64 pen = 100;
        return QSize(static_cast<int>(std::abs(vRequest.horVec) + pen), static_cast<int>(std::abs(vRequest.verVec) + pen));
    }
    case AddType::Bitmap:
        break;
    }
    return {};
}

} // namespace

Node MakeAnnotation(const AnnotationRequest& vRequest, const Compressor& vCompress)
{
    Check(vRequest.x >= -Reach && vRequest.y >= -Reach && vRequest.x <= Reach && vRequest.y <= Reach,
          "position outside 2.4 m of the page");
    Node record;
    record.kind = KindOf(static_cast<int>(vRequest.type));
    Check(record.kind != 0, "unknown annotation type");
    nodes::Set(record, AttrSize, {});
    nodes::Set(record, AttrId, emit::Numbers({vRequest.id}));
    if (vRequest.generation >= 10)
        SetWide(record);
    qint64 x = vRequest.x, y = vRequest.y;
    QSize size;
    QByteArray emf;
    switch (vRequest.type) {
    case AddType::Text:
        TextDefaults(record);
        Put(record, u"Text", vRequest.text);
        break;
    case AddType::Link:
        TextDefaults(record);
        Put(record, u"Caption", vRequest.text.isEmpty() ? vRequest.url : vRequest.text);
        Put(record, u"Url", vRequest.url);
        Put(record, u"LinkType", 0);
        Put(record, u"ShowIcon", 0);
        break;
    case AddType::Rectangle:
        PutNumber(record, QStringLiteral("%hidden"), 0);
        Put(record, u"BorderStyle", 0);
        Put(record, u"BorderWidth", 1);
        Put(record, u"BorderColor", 0);
        Put(record, u"FillStyle", 0);
        Put(record, u"FillColor", 0xFFFFFF);
        break;
    case AddType::Line:
        Check(std::abs(vRequest.horVec) <= Reach && std::abs(vRequest.verVec) <= Reach, "line longer than 2.4 m");
        PutNumber(record, QStringLiteral("%hidden"), 0);
        Put(record, u"BorderStyle", 0);
        Put(record, u"BorderWidth", 1);
        Put(record, u"BorderColor", 0);
        Put(record, u"ArrowheadType", 0);
        PutNumber(record, QStringLiteral("%HorVec"), vRequest.horVec);
        PutNumber(record, QStringLiteral("%VerVec"), vRequest.verVec);
        x = std::min(vRequest.x, vRequest.x + vRequest.horVec) - 50;
        y = std::min(vRequest.y, vRequest.y + vRequest.verVec) - 50;
        break;
    case AddType::DateStamp: {
        PutNumber(record, QStringLiteral("%hidden"), 0);
        const QDate date = vRequest.date.isValid() ? vRequest.date : QDate::currentDate();
        PutNumber(record, QStringLiteral("%StampDate"), date.year() * 10000 + date.month() * 100 + date.day());
        Put(record, u"DateStyle", 0);
        Put(record, u"TopField", QString());
        Put(record, u"BottomField", QString());
        Put(record, u"BorderColor", StampRed);
        Put(record, u"FontName", Face);
        break;
    }
    case AddType::Fusen: {
        PutNumber(record, QStringLiteral("%hidden"), 0);
        Put(record, u"FillColor", NoteYellow);
        AnnotationRequest text = vRequest;
        text.type = AddType::Text;
        text.x = text.y = 0;
        text.id = vRequest.id + 1;
        record.children.push_back(MakeAnnotation(text, vCompress));
        break;
    }
    case AddType::Bitmap: {
        PutNumber(record, QStringLiteral("%hidden"), 0);
        const Bitmap bitmap = ReadBmp(vRequest.bitmap);
        size = bitmap.size;
        emf = DrawPicture(bitmap.info, bitmap.bits, bitmap.pixels, size);
        break;
    }
    }
    if (size.isEmpty())
        size = KindSize(vRequest, record);
    Node placement = MakePlacement(x, y, std::move(record), size);
    if (emf.isEmpty())
        Redraw(placement, vCompress);
    else
        nodes::Set(Shown(placement), AttrDrawing, DrawingFields(emf, size, vCompress));
    return placement;
}

void Redraw(Node& vPlacement, const Compressor& vCompress)
{
    Node& record = Shown(vPlacement);
    if (record.kind == KindBitmap)
        return;   // its picture does not change with any property
    if ((record.kind == KindText || record.kind == KindLink) && NumberOr(record, u"AutoResize", 1)) {
        const QString text = TextOr(record, record.kind == KindText ? u"Text" : u"Caption", {});
        Resize(vPlacement, TextBox(record, text));
    }
    if (record.kind == KindFusen)
        for (Node& child : record.children)
            if (IsAnnotation(child))
                Redraw(child, vCompress);
    const QSize size = SizeOf(vPlacement);
    const QByteArray emf = DrawRecord(record, size);
    if (!emf.isEmpty())
        nodes::Set(record, AttrDrawing, DrawingFields(emf, size, vCompress));
}

int AddAnnotation(Node& vParent, AnnotationRequest vRequest, const Compressor& vCompress)
{
    std::vector<Node>* holder = Holder(vParent);
    Check(holder != nullptr, "annotations go on a page or an annotation");
    // A page keeps the last id it gave; inside an annotation the next id follows the largest
    // there. A note's text takes the id after the note's.
    qint64 last = nodes::NamedNumber(vParent, u"lastmid").value_or(0);
    if (vParent.kind != KindPage)
        for (const Node& placement : *holder)
            if (const Node* shown = ShownOf(placement))
                if (const auto id = nodes::Numbers(*shown, AttrId); id && !id->empty())
                    last = std::max(last, id->front());
    vRequest.id = last + 1;
    const qint64 used = vRequest.type == AddType::Fusen ? 2 : 1;
    if (vParent.kind == KindPage)
        nodes::SetNamed(vParent, QStringLiteral("lastmid"), NamedNumbers, emit::Numbers({last + used}));
    holder->push_back(MakeAnnotation(vRequest, vCompress));
    return static_cast<int>(ListAnnotations(vParent).size()) - 1;
}

} // namespace xdw::annot
