#pragma once
// The drawing state both metafile kinds drive: selected objects, colours, modes, the mapping of
// logical units and the clip, as a Windows device context keeps them, painted through a QPainter.
// The record readers (EMF and WMF) only decode bytes and call in here, so a record means the same
// thing whichever kind carried it. With no painter the state is still kept, for reading text.

#include "engine/emf/EmfPlayer.h"

#include <QColor>
#include <QImage>
#include <QList>
#include <QPainterPath>
#include <QPolygonF>
#include <QTransform>

#include <optional>
#include <variant>

namespace emf {

struct Pen {
    int style = 0;        // PS_* in the low nibble; 5 draws nothing
    double width = 0;     // logical units; 0 is one device pixel
    quint32 flags = 0;    // end cap and join bits of a geometric pen
    QColor colour = Qt::black;
};

struct Brush {
    int style = 0;        // 0 solid, 1 none, 2 hatched, 3 and 5 pattern
    int hatch = 0;
    QColor colour = Qt::white;
    QImage pattern;
};

struct Font {
    qint32 height = 0;
    qint32 escapement = 0;  // tenths of a degree, counter-clockwise
    qint32 weight = 400;
    bool italic = false, underline = false, strikeOut = false;
    quint8 charset = 1;
    QString face;
};

// A slot holding something the player does not draw with (a palette, a region) still occupies
// its index.
using Object = std::variant<std::monostate, Pen, Brush, Font>;

// What SaveDC keeps.
struct DcState {
    Pen pen;
    Brush brush;
    Font font;
    QColor textColour = Qt::black;
    QColor bkColour = Qt::white;
    int bkMode = 2;          // 1 transparent, 2 opaque
    int polyFillMode = 1;    // 1 alternate, 2 winding
    int rop2 = 13;           // copy pen
    quint32 textAlign = 0;
    int mapMode = 1;
    int arcDirection = 1;    // 1 counter-clockwise, 2 clockwise
    QPointF windowOrg, viewportOrg;
    QSizeF windowExt{1, 1}, viewportExt{1, 1};
    bool windowExtSet = false;
    QTransform world;
    QPointF position;                  // current position, logical
    std::optional<QPainterPath> clip;  // target coordinates; none is the whole surface
};

// Where the drawing lands: the device-pixel box that fills the target on a page, the window
// to use when an annotation sets none, and the device resolution for the metric map modes.
struct Frame {
    QRectF deviceBox;
    QRectF fallbackWindow;
    double pixelsPerMm = 600 / 25.4;
    Mapping mapping = Mapping::Page;
};

class Gdi {
public:
    Gdi(QPainter* vPainter, const QRectF& vTarget, const Frame& vFrame, const PlayOptions& vOptions);
    ~Gdi();
    Gdi(const Gdi&) = delete;
    Gdi& operator=(const Gdi&) = delete;

    DcState& Dc() { return dc_; }
    const PlayOptions& Options() const { return options_; }
    bool Painting() const { return painter_ != nullptr; }

    // Objects. The table size bounds every index; false means an index outside it.
    void SetTableSize(int vSize) { objects_.assign(size_t(vSize), std::nullopt); }
    bool Store(quint32 vIndex, Object vObject);
    int StoreFirstFree(Object vObject);   // the 16-bit kind takes the lowest free slot
    bool Select(quint32 vIndex);
    bool Delete(quint32 vIndex);
    bool Save();
    bool Restore(qint32 vWhich);
    void SetFrame(const Frame& vFrame) { frame_ = vFrame; }

    // Mapping.
    QTransform PageToTarget() const;
    QTransform LogicalToTarget() const { return dc_.world * PageToTarget(); }
    QTransform DeviceToTarget() const;
    QSizeF DrawingSize() const;

    // Lines and shapes, in logical units.
    void MoveTo(QPointF vPoint);
    void LineTo(QPointF vPoint);
    void Polyline(const QPolygonF& vPoints, bool vFromPosition);
    void PolyBezier(const QPolygonF& vPoints, bool vFromPosition);
    void Polygons(const QList<QPolygonF>& vPolygons);
    void Polylines(const QList<QPolygonF>& vLines);
    void Shape(const QPainterPath& vShape, bool vFilled);  // ellipses, rectangles, pies
    void Arc(int vKind, const QRectF& vBox, QPointF vStart, QPointF vEnd);  // 0 arc, 1 chord, 2 pie, 3 arc-to
    void SetPixel(QPointF vPoint, const QColor& vColour);

    // Paths.
    void BeginPath();
    void EndPath() { recording_ = false; }
    void AbortPath() { recording_ = false, path_ = {}; }
    void CloseFigure();
    void FillPath(bool vStroke, bool vFill, bool vKeep = false);
    void SelectClipPath(int vMode);

    // Clip.
    void IntersectClip(const QRectF& vLogical);
    void ExcludeClip(const QRectF& vLogical);
    void CombineClip(const std::optional<QPainterPath>& vTarget, int vMode);
    void OffsetClip(QPointF vLogical);

    // Text: advances are logical widths per character (empty: the font's own).
    void Text(QPointF vReference, const QString& vText, const QList<double>& vAdvances,
              quint32 vOptions, const QRectF& vRect);
    // Bitmaps: dest in logical units (negative sizes mirror), src in the image's pixels.
    void Bitmap(const QRectF& vDest, const QImage& vImage, const QRectF& vSource, quint32 vRop);
    void PatternBlt(const QRectF& vDest, quint32 vRop);

    QStringList texts;
    int unsupported = 0;
    int currentPicture = -1;   // the page picture the private picture records draw

private:
    void Draw(const QPainterPath& vLogical, bool vStroke, bool vFill);
    void AddToPath(const QPainterPath& vLogical, bool vContinue);
    void Prepare(const QTransform& vTransform);
    void ApplyClip();
    QPen MakePen(double vScale) const;
    QBrush MakeBrush() const;
    void SetComposition();

    QPainter* painter_;
    QRectF target_;
    Frame frame_;
    PlayOptions options_;
    QTransform base_;
    bool baseClipping_ = false;
    QPainterPath baseClip_;
    DcState dc_;
    QList<DcState> saved_;
    std::vector<std::optional<Object>> objects_;
    bool recording_ = false;
    QPainterPath path_;   // target coordinates
    bool clipDirty_ = false;
};

} // namespace emf
