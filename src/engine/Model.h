#pragma once
// What a reader of pages needs from the record tree: the documents (one, or those of a binder),
// their pages with size and placements, and for each placement its box, its kind, its drawing
// and its text. Drawings stay compressed here; they are expanded when a page is drawn, so that
// opening a long document costs its record list and no more.

#include "engine/Container.h"
#include "engine/Records.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <memory>
#include <optional>
#include <vector>

namespace xdw {

inline constexpr quint32 KindPageContent = 0x8010;
inline constexpr quint32 KindTextAnnotation = 0x8011;

struct Placement {
    quint32 kind = 0;
    qint64 x = 0, y = 0, width = 0, height = 0;   // 1/100 mm from the page's top-left
    int rotation = 0;                              // clockwise degrees inside the box
    // The drawing's attribute, resolved only when drawn: it may point at an entry holding a
    // whole scanned page.
    std::optional<Attribute> drawing;
    std::optional<Attribute> thumbnail;            // page content only: a small DIB
    QString text;                                  // %Text or %Text(w; empty when none
    // Text recognised on the content's picture (OCR), as read and word by word with each word's
    // box (x, y, width, height in 1/100 mm from the page's top-left, four numbers a word).
    QString recognisedText;
    QStringList recognisedWords;
    std::vector<qint64> recognisedBoxes;
    qint64 dpi = 0;                                // resolution the content was made at
};

struct Page {
    qint64 width = 0, height = 0;   // 1/100 mm
    int document = 0;               // index of the document it belongs to
    // Page content first (when present), then the annotations in record order.
    std::vector<Placement> placements;
    bool HasContent() const { return !placements.empty() && placements.front().kind == KindPageContent; }
    int Annotations() const { return static_cast<int>(placements.size()) - (HasContent() ? 1 : 0); }
};

struct DocumentEntry {
    QString name;
    int firstPage = 0;
    int pages = 0;
};

// A decoded file. The container owns the bytes every view here points into.
class Model {
public:
    // Reads the file; refuses it with a FormatError.
    explicit Model(std::unique_ptr<ByteSource> vSource);
    explicit Model(QByteArray vFile) : Model(MemorySource(std::move(vFile))) {}

    const Container& File() const { return *container_; }
    bool IsBinder() const { return container_->RootKind() == KindBinder; }
    const std::vector<Page>& Pages() const { return pages_; }
    const std::vector<DocumentEntry>& Documents() const { return documents_; }
    // The field list of a placement's drawing, read from its entry if need be; empty for none.
    QByteArrayView DrawingOf(const Placement& vPlacement) const;
    QByteArrayView ThumbnailOf(const Placement& vPlacement) const;

private:
    void Build(const std::vector<Record>& vRecords);

    std::unique_ptr<Container> container_;
    std::vector<Page> pages_;
    std::vector<DocumentEntry> documents_;
};

} // namespace xdw
