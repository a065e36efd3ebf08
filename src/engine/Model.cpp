#include "engine/Model.h"

#include "engine/FormatError.h"
#include "engine/Tlv.h"

namespace xdw {

namespace {

constexpr quint32 KindDocumentRecord = KindDocument;
constexpr quint32 KindPage = 0x1301;
constexpr quint32 KindPlacement = 0x1302;
constexpr quint32 AttrName = 4;
constexpr quint32 AttrSize = 5;
constexpr quint32 AttrDrawing = 7;
constexpr quint32 AttrPosition = 52;
constexpr quint32 AttrThumbnail = 58;
constexpr quint32 AttrRotation = 61;
constexpr qint64 MaxPageSide = 1000000;   // 10 m
constexpr size_t MaxPages = 100000;

std::vector<qint64> Pair(const Record& vRecord, const Attribute* vAttribute, const Container& vFile)
{
    if (!vAttribute)
        return {};
    std::vector<qint64> v = NumberList(ValueOf(*vAttribute, vFile));
    if (v.size() != 2)
        Refuse(QStringLiteral("pair of %1 numbers in record %2").arg(v.size()).arg(vRecord.kind, 0, 16));
    return v;
}

qint64 FirstNumber(const Attribute* vAttribute, const Container& vFile, qint64 vDefault)
{
    if (!vAttribute)
        return vDefault;
    const std::vector<qint64> v = NumberList(ValueOf(*vAttribute, vFile));
    return v.empty() ? vDefault : v.front();
}

bool IsAnnotationKind(quint32 vKind)
{
    constexpr quint32 KindLink = 0xC02F;   // the one annotation kind outside 80xx
    return ((vKind & 0x7F00) == 0x0000 && (vKind & 0x8000) != 0) || vKind == KindLink;
}

// An annotation its user hid stays in the file but neither shows nor gives its text.
bool IsHidden(const Record& vRecord, const Container& vFile)
{
    return FirstNumber(vRecord.Named(u"%hidden"), vFile, 0) != 0;
}

QString TextOf(const Record& vRecord, const Container& vFile)
{
    if (const Attribute* wide = vRecord.Named(u"%Text(w"))
        return WideText(ValueOf(*wide, vFile));
    if (const Attribute* narrow = vRecord.Named(u"%Text"))
        return NarrowText(ValueOf(*narrow, vFile));
    return {};
}

Placement PlacementOf(const Record& vBox, const Record& vShown, const Container& vFile)
{
    Placement p;
    p.kind = vShown.kind;
    const std::vector<qint64> at = Pair(vBox, vBox.Find(AttrPosition), vFile);
    if (!at.empty()) {
        p.x = at[0];
        p.y = at[1];
    }
    std::vector<qint64> size = Pair(vShown, vShown.Find(AttrSize), vFile);
    if (size.empty())
        size = Pair(vBox, vBox.Named(u"childdim"), vFile);
    if (!size.empty()) {
        p.width = size[0];
        p.height = size[1];
    }
    const qint64 rotation = FirstNumber(vShown.Find(AttrRotation), vFile, 0);
    if (rotation % 90 != 0 || rotation < 0 || rotation >= 360)
        Refuse(QStringLiteral("rotation of %1 degrees").arg(rotation));
    p.rotation = static_cast<int>(rotation);
    if (const Attribute* drawing = vShown.Find(AttrDrawing))
        p.drawing = *drawing;
    if (const Attribute* thumbnail = vShown.Find(AttrThumbnail))
        p.thumbnail = *thumbnail;
    p.text = TextOf(vShown, vFile);
    p.dpi = FirstNumber(vShown.Named(u"dpi"), vFile, 0);
    if (const Attribute* recognised = vShown.Named(u"%OcrText(w"))
        p.recognisedText = WideText(ValueOf(*recognised, vFile));
    const Attribute* words = vShown.Named(u"%OcrWords(w");
    const Attribute* boxes = vShown.Named(u"%OcrBoxes");
    if (words && boxes) {
        QStringList list = WideText(ValueOf(*words, vFile)).split(u'\n');
        std::vector<qint64> numbers = NumberList(ValueOf(*boxes, vFile));
        // Words and boxes go together or not at all: a file where they disagree has neither.
        if (numbers.size() == static_cast<size_t>(list.size()) * 4) {
            p.recognisedWords = std::move(list);
            p.recognisedBoxes = std::move(numbers);
        }
    }
    return p;
}

} // namespace

Model::Model(std::unique_ptr<ByteSource> vSource)
    : container_(std::make_unique<Container>(std::move(vSource)))
{
    Build(ReadRecords(container_->Properties(), *container_));
}

QByteArrayView Model::DrawingOf(const Placement& vPlacement) const
{
    return vPlacement.drawing ? ValueOf(*vPlacement.drawing, *container_) : QByteArrayView();
}

QByteArrayView Model::ThumbnailOf(const Placement& vPlacement) const
{
    return vPlacement.thumbnail ? ValueOf(*vPlacement.thumbnail, *container_) : QByteArrayView();
}

void Model::Build(const std::vector<Record>& vRecords)
{
    const Container& file = *container_;
    if (vRecords.front().kind != file.RootKind())
        Refuse(QStringLiteral("root record does not match the header"));
    // Records come in tree order, so one pass sees every document before its pages and every
    // page before its placements; the index of the open one is all that needs keeping.
    qsizetype page = -1;
    for (size_t i = 0; i < vRecords.size(); ++i) {
        const Record& r = vRecords[i];
        if (r.kind == KindDocumentRecord) {
            DocumentEntry document;
            if (const Attribute* name = r.Find(AttrName))
                document.name = NarrowText(ValueOf(*name, file)).trimmed();
            document.firstPage = static_cast<int>(pages_.size());
            documents_.push_back(document);
        } else if (r.kind == KindPage) {
            if (documents_.empty())
                Refuse(QStringLiteral("page outside a document"));
            if (pages_.size() >= MaxPages)
                Refuse(QStringLiteral("too many pages"));
            const std::vector<qint64> size = Pair(r, r.Find(AttrSize), file);
            if (size.empty() || size[0] < 1 || size[1] < 1 || size[0] > MaxPageSide || size[1] > MaxPageSide)
                Refuse(QStringLiteral("page without a usable size"));
            Page p;
            p.width = size[0];
            p.height = size[1];
            p.document = static_cast<int>(documents_.size()) - 1;
            pages_.push_back(std::move(p));
            ++documents_.back().pages;
            page = static_cast<qsizetype>(i);
        } else if (IsAnnotationKind(r.kind) && r.parent >= 0) {
            // Only what sits in a placement directly on the open page shows on it; page forms
            // and notes nested in notes are left alone.
            const Record& box = vRecords[static_cast<size_t>(r.parent)];
            if (box.kind != KindPlacement || box.parent != page || page < 0 || IsHidden(r, file))
                continue;
            Placement placement = PlacementOf(box, r, file);
            std::vector<Placement>& list = pages_.back().placements;
            if (r.kind == KindPageContent)
                list.insert(list.begin(), std::move(placement));
            else
                list.push_back(std::move(placement));
        }
    }
    // A binder may hold no document yet: it was saved so when it was made.
}

} // namespace xdw
