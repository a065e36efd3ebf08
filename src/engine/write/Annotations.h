#pragma once
// Annotations on the editable record tree: made new with their drawings, listed from a page (or
// from an annotation that holds others, as a sticky note holds its text), read and changed by
// property, hidden, shown and removed. An annotation is a 1302 placement (position 52, size
// childdim) holding one 80xx record (size 5, id 3, drawing 7 and its named attributes); the
// functions here take and give such placements.

#include "engine/write/AnnotationDrawing.h"
#include "engine/write/Tree.h"

#include <QDate>
#include <QString>
#include <QStringView>
#include <QVariant>

#include <optional>
#include <vector>

namespace xdw::annot {

// The numbers AddAnnotation takes.
enum class AddType { Text = 1, Rectangle = 2, Link = 3, Bitmap = 4, Line = 5, DateStamp = 6, Fusen = 7 };

// The record kind each type makes, 0 for a number outside the table.
quint32 KindOf(int vAddType);
// The runtime's word for a record kind ("TEXT", "FUSEN" ...) and its Japanese name; "" when
// the kind or word is not in the table.
QString TypeName(quint32 vKind);
QString JapaneseName(QStringView vTypeName);

// Colours by their Japanese names. GetColorName gives "なし" and GetBackColorName "背景色なし"
// for 65793 (no colour); both "" for a number not in the table; ColorByName -1 for an unknown name.
QString ColorName(qint64 vColor);
QString BackColorName(qint64 vColor);
qint64 ColorByName(QStringView vName);

struct AnnotationRequest {
    AddType type = AddType::Text;
    qint64 x = 0, y = 0;              // 1/100 mm from the page's (or the parent's) top-left
    qint64 width = 0, height = 0;     // rectangles and sticky notes; 0 for the kind's default
    qint64 horVec = 0, verVec = 0;    // lines: from (x, y) by these, either sign
    QString text;                     // text, sticky note; a link's caption
    QString url;                      // link
    QByteArray bitmap;                // bitmap: the bytes of a BMP file
    QDate date;                       // date stamp; today when null
    int generation = 7;               // 10 keeps texts in UTF-16
    qint64 id = 1;                    // the object id the page gives it
};

// A new annotation placement with its drawing. Refuses (FormatError) a bitmap that is not a
// readable BMP file and sizes outside what the kind allows.
Node MakeAnnotation(const AnnotationRequest& vRequest, const Compressor& vCompress = {});

// Adds a new annotation to a page (1301) or a parent annotation placement, giving it the next
// object id of the page's lastmid; the index it now has among vParent's annotations.
int AddAnnotation(Node& vParent, AnnotationRequest vRequest, const Compressor& vCompress = {});

struct AnnotationInfo {
    int index = 0;
    quint32 kind = 0;                 // the type code (32785 TEXT ...)
    qint64 x = 0, y = 0, width = 0, height = 0;
    qint64 horVec = 0, verVec = 0;    // lines only
    int children = 0;                 // annotations held by this one
    bool hidden = false;
};

// The annotations of a page (1301), or those held by an annotation placement, in record order;
// the page's own content (8010) is not among them.
std::vector<AnnotationInfo> ListAnnotations(const Node& vParent);
Node* AnnotationAt(Node& vParent, int vIndex);
const Node* AnnotationAt(const Node& vParent, int vIndex);
bool RemoveAnnotation(Node& vParent, int vIndex);

// A property of an annotation placement by its name (Text, FontSize, BorderColor ...). A sticky
// note answers the text properties from its text.
std::optional<QVariant> GetProperty(const Node& vPlacement, QStringView vName);
// Sets a property and makes the drawing again, resizing a text that sizes itself; false for an
// unknown name or a value of the wrong form.
bool SetProperty(Node& vPlacement, QStringView vName, const QVariant& vValue, const Compressor& vCompress = {});

bool IsHidden(const Node& vPlacement);
void SetHidden(Node& vPlacement, bool vHidden);

// Makes the drawing again from the record's properties and the placement's size.
void Redraw(Node& vPlacement, const Compressor& vCompress = {});

} // namespace xdw::annot
