#include "engine/write/Edit.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/write/Emit.h"
#include "engine/write/Navigate.h"

namespace xdw {

using namespace edit;

namespace {

// Far beyond any page (10 m is the largest a reader takes), and far from overflowing the sums a
// turn makes of them.
constexpr qint64 MaxCoordinate = 1LL << 40;

// Copies of every page of vSource, taken before anything of the target changes, since the
// source may be the target.
std::vector<Node> PagesOf(const EditableFile& vSource)
{
    std::vector<Node> pages;
    for (const PageSlot& slot : edit::Pages(const_cast<Node&>(vSource.root)))
        pages.push_back(slot.Page());
    return pages;
}

// Places vPages into vList from vAt on, carried over from vFrom, each with the list's next id.
void Place(EditableFile& vTarget, Node& vList, size_t vAt, const std::vector<Node>& vPages,
           const EditableFile& vFrom)
{
    std::map<qint64, qint64> moved;
    std::vector<Node> carried;
    for (const Node& page : vPages) {
        carried.push_back(Carry(page, vFrom, vTarget, moved));
        carried.back().Set(AttrId, emit::Numbers({NextId(vList)}));
    }
    vList.children.insert(vList.children.begin() + static_cast<std::ptrdiff_t>(vAt),
                          std::make_move_iterator(carried.begin()), std::make_move_iterator(carried.end()));
}

// A box of vWidth x vHeight at (vX, vY) on a page vPageWidth x vPageHeight, after the page
// turned clockwise by vDegree: its new top-left corner.
std::pair<qint64, qint64> Turned(qint64 vX, qint64 vY, qint64 vWidth, qint64 vHeight,
                                 qint64 vPageWidth, qint64 vPageHeight, int vDegree)
{
    switch (vDegree) {
    case 90:
        return {vPageHeight - vY - vHeight, vX};
    case 180:
        return {vPageWidth - vX - vWidth, vPageHeight - vY - vHeight};
    default:   // 270
        return {vY, vPageWidth - vX - vWidth};
    }
}

bool Shows(const Node& vNode)
{
    return (vNode.kind & 0x8000) != 0;
}

void TurnPlacement(Node& vBox, qint64 vPageWidth, qint64 vPageHeight, int vDegree)
{
    const bool quarter = vDegree != 180;
    std::vector<qint64> size = NumbersOf(vBox.Named(u"childdim"));
    for (const Node& shown : vBox.children)
        if (size.size() != 2 && Shows(shown))
            size = NumbersOf(shown.Find(AttrSize));
    if (size.size() != 2)
        size = {0, 0};
    std::vector<qint64> at = NumbersOf(vBox.Find(AttrPosition));
    if (at.size() != 2)
        at = {0, 0};
    for (qint64 v : {at[0], at[1], size[0], size[1]})
        if (v < -MaxCoordinate || v > MaxCoordinate)
            Refuse(QStringLiteral("placement at %1 out of any page").arg(v));
    const auto [x, y] = Turned(at[0], at[1], size[0], size[1], vPageWidth, vPageHeight, vDegree);
    vBox.Set(AttrPosition, emit::Numbers({x, y}));
    if (const Declaration* childSize = vBox.Declared(u"childdim"); quarter && childSize)
        vBox.Set(childSize->number, emit::Numbers({size[1], size[0]}));
    for (Node& shown : vBox.children) {
        if (!Shows(shown))
            continue;
        const std::vector<qint64> own = NumbersOf(shown.Find(AttrSize));
        if (quarter && own.size() == 2)
            shown.Set(AttrSize, emit::Numbers({own[1], own[0]}));
        const std::vector<qint64> before = NumbersOf(shown.Find(AttrRotation));
        const qint64 turn = ((before.empty() ? 0 : before.front()) + vDegree) % 360;
        if (turn == 0)
            shown.Remove(AttrRotation);
        else
            shown.Set(AttrRotation, emit::Numbers({turn}));
    }
}

} // namespace

EditableFile NewDocument(int vGeneration)
{
    // The page list, then the lists of page forms and of attached files, and one more that
    // every document we have seen carries empty.
    return Unsaved(vGeneration, KindDocument, {KindPageList, KindPageForms, KindAttachments, 0x1305u});
}

int PageCount(const EditableFile& vFile)
{
    return static_cast<int>(edit::Pages(const_cast<Node&>(vFile.root)).size());
}

void InsertPages(EditableFile& vTarget, int vPosition, const EditableFile& vSource)
{
    const std::vector<PageSlot> slots = edit::Pages(vTarget.root);
    if (vPosition < 1 || vPosition > static_cast<int>(slots.size()) + 1)
        BadArgument(QStringLiteral("position %1 of %2 pages").arg(vPosition).arg(slots.size()));
    const std::vector<Node> pages = PagesOf(vSource);
    if (static_cast<size_t>(vPosition) <= slots.size()) {
        const PageSlot& before = slots[static_cast<size_t>(vPosition - 1)];
        Place(vTarget, *before.list, before.index, pages, vSource);
    } else if (!slots.empty()) {
        Place(vTarget, *slots.back().list, slots.back().index + 1, pages, vSource);
    } else {
        const std::vector<Node*> documents = Documents(vTarget.root);
        if (documents.empty())
            BadArgument(QStringLiteral("a binder without documents has no place for pages"));
        Node& list = PageList(*documents.back());
        Place(vTarget, list, list.children.size(), pages, vSource);
    }
}

void DeletePage(EditableFile& vFile, int vPage)
{
    const PageSlot slot = PageAt(vFile.root, vPage);
    int inDocument = 0;
    for (const PageSlot& other : edit::Pages(vFile.root))
        inDocument += other.document == slot.document ? 1 : 0;
    if (inDocument == 1)
        throw FormatError{XdwResult::InvalidOperation, QStringLiteral("page %1 is its document's only page").arg(vPage)};
    slot.list->children.erase(slot.list->children.begin() + static_cast<std::ptrdiff_t>(slot.index));
}

EditableFile ExtractPage(const EditableFile& vFile, int vPage)
{
    const PageSlot slot = PageAt(const_cast<Node&>(vFile.root), vPage);
    EditableFile out = NewDocument(vFile.generation);
    Node& list = PageList(out.root);
    Place(out, list, list.children.size(), {slot.Page()}, vFile);
    return out;
}

void RotatePage(EditableFile& vFile, int vPage, int vDegree)
{
    Node& page = PageAt(vFile.root, vPage).Page();
    if (vDegree != 90 && vDegree != 180 && vDegree != 270)
        BadArgument(QStringLiteral("rotation by %1 degrees").arg(vDegree));
    const std::vector<qint64> size = NumbersOf(page.Find(AttrSize));
    if (size.size() != 2 || size[0] < 1 || size[1] < 1 || size[0] > MaxCoordinate || size[1] > MaxCoordinate)
        Refuse(QStringLiteral("page %1 has no usable size").arg(vPage));
    // Turned as a copy, so that a box refused half way leaves the page as it was.
    Node turned = page;
    for (Node& box : turned.children)
        if (box.kind == KindPlacement)
            TurnPlacement(box, size[0], size[1], vDegree);
    if (vDegree != 180)
        turned.Set(AttrSize, emit::Numbers({size[1], size[0]}));
    page = std::move(turned);
}

EditableFile MergeFiles(const std::vector<const EditableFile*>& vFiles)
{
    if (vFiles.empty())
        BadArgument(QStringLiteral("nothing to merge"));
    EditableFile out = NewDocument(vFiles.front()->generation);
    Node& list = PageList(out.root);
    for (const EditableFile* file : vFiles)
        Place(out, list, list.children.size(), PagesOf(*file), *file);
    return out;
}

} // namespace xdw
