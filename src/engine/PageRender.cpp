#include "engine/PageRender.h"

#include "document/XdwApi.h"
#include "engine/Drawing.h"
#include "engine/FormatError.h"
#include "engine/emf/EmfPlayer.h"

#include <QPainter>
#include <QPicture>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <functional>

namespace xdw {

namespace {

constexpr double HundredthsPerInch = 2540.0;
constexpr int MaxSide = 32767;
constexpr qint64 MaxPixels = 150LL * 1000 * 1000;

void DrawPicture(QPainter& vPainter, const QImage& vPicture, const QRectF& vTarget)
{
    if (vPicture.isNull())
        Refuse(QStringLiteral("picture cannot be decoded"));
    vPainter.drawImage(vTarget, vPicture);
}

void DrawPlacement(QPainter& vPainter, const Model& vModel, const Placement& vPlacement, double vScale,
                   const std::function<void(const QString&, const QRectF&)>& vTextDrawn = {})
{
    const QByteArrayView fields = vModel.DrawingOf(vPlacement);
    if (fields.isEmpty())
        return;  // a page form or a note without a drawing: its look is not known
    const Drawing drawing = ReadDrawing(fields);
    QRectF box(vPlacement.x * vScale, vPlacement.y * vScale, vPlacement.width * vScale,
               vPlacement.height * vScale);
    // Restored on every way out, refusals included, so the next placement starts clean.
    struct Saved {
        QPainter& painter;
        explicit Saved(QPainter& v) : painter(v) { painter.save(); }
        ~Saved() { painter.restore(); }
    } saved(vPainter);
    if (vPlacement.rotation != 0) {
        // The stored box is the turned one; draw upright into the unturned box, then turn.
        const QPointF centre = box.center();
        vPainter.translate(centre);
        vPainter.rotate(vPlacement.rotation);
        vPainter.translate(-centre);
        if (vPlacement.rotation % 180 != 0) {
            const QSizeF upright = box.size().transposed();
            box = QRectF(centre - QPointF(upright.width() / 2, upright.height() / 2), upright);
        }
    }
    switch (drawing.kind) {
    case DrawingKind::Emf:
    case DrawingKind::Wmf: {
        emf::PlayOptions options;
        options.mapping = vPlacement.kind == KindPageContent ? emf::Mapping::Page : emf::Mapping::Annotation;
        if (vTextDrawn) {
            // Boxes come in the painter's turned coordinates; hand them on as the page has them.
            const QTransform turned = vPainter.transform();
            options.textDrawn = [&](const QString& vText, const QRectF& vBox) { vTextDrawn(vText, turned.mapRect(vBox)); };
        }
        const emf::PlayResult played = emf::Play(vPainter, drawing.data, box, options);
        if (!played.ok)
            Refuse(QStringLiteral("drawing cannot be played: ") + played.error);
        break;
    }
    case DrawingKind::Dib: {
        QString error;
        const QImage picture = dib::Decode(drawing.dibInfo, drawing.data, &error);
        if (picture.isNull())
            Refuse(QStringLiteral("picture: ") + error);
        DrawPicture(vPainter, picture, box);
        break;
    }
    case DrawingKind::Jpeg:
        DrawPicture(vPainter, QImage::fromData(drawing.data, "JPEG"), box);
        break;
    }
}

const Page& PageAt(const Model& vModel, int vIndex)
{
    if (vIndex < 0 || vIndex >= static_cast<int>(vModel.Pages().size()))
        throw FormatError{XdwResult::InvalidArg, QStringLiteral("no page %1").arg(vIndex + 1)};
    return vModel.Pages()[static_cast<size_t>(vIndex)];
}

} // namespace

QSize PixelSize(const Page& vPage, int vDpi)
{
    return QSize(static_cast<int>(std::lround(vPage.width / HundredthsPerInch * vDpi)),
                 static_cast<int>(std::lround(vPage.height / HundredthsPerInch * vDpi)));
}

void PaintPage(QPainter& vPainter, const Model& vModel, int vIndex, double vScale)
{
    const Page& page = PageAt(vModel, vIndex);
    vPainter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing
                            | QPainter::SmoothPixmapTransform);
    for (const Placement& placement : page.placements)
        DrawPlacement(vPainter, vModel, placement, vScale);
}

QImage RenderPage(const Model& vModel, int vIndex, int vDpi, bool vColour)
{
    const Page& page = PageAt(vModel, vIndex);
    if (vDpi < MinDpi || vDpi > MaxDpi)
        throw FormatError{XdwResult::InvalidArg, QStringLiteral("resolution %1 dpi").arg(vDpi)};
    const QSize size = PixelSize(page, vDpi).expandedTo(QSize(1, 1));
    if (size.width() > MaxSide || size.height() > MaxSide
        || qint64(size.width()) * size.height() > MaxPixels)
        throw FormatError{XdwResult::OutOfMemory,
                          QStringLiteral("page of %1 x %2 pixels").arg(size.width()).arg(size.height())};
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull())
        throw FormatError{XdwResult::OutOfMemory, QStringLiteral("no memory for the page")};
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        PaintPage(painter, vModel, vIndex, vDpi / HundredthsPerInch);
    }
    if (!vColour)
        return image.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
    return image;
}

QImage PageThumbnail(const Model& vModel, int vIndex)
{
    // The size the stored ones have: about 104 pixels across an A4 page.
    constexpr int ThumbnailDpi = 12;
    const Page& page = PageAt(vModel, vIndex);
    const QByteArrayView stored = page.HasContent() ? vModel.ThumbnailOf(page.placements.front()) : QByteArrayView();
    if (stored.isEmpty())
        return RenderPage(vModel, vIndex, ThumbnailDpi, true);
    const Drawing drawing = ReadDrawing(stored);
    if (drawing.kind != DrawingKind::Dib)
        Refuse(QStringLiteral("thumbnail is not a picture"));
    QString error;
    const QImage picture = dib::Decode(drawing.dibInfo, drawing.data, &error);
    if (picture.isNull())
        Refuse(QStringLiteral("thumbnail: ") + error);
    return picture;
}

namespace {

// The page's own content first, as it is drawn, then the annotations as a reader meets them: top
// to bottom, left to right within a line, whatever order they were added in.
std::vector<const Placement*> ReadingOrder(const Page& page)
{
    std::vector<const Placement*> order;
    for (const Placement& placement : page.placements)
        order.push_back(&placement);
    const auto first = order.begin() + (page.HasContent() ? 1 : 0);
    std::stable_sort(first, order.end(), [](const Placement* a, const Placement* b) {
        return a->y != b->y ? a->y < b->y : a->x < b->x;
    });
    return order;
}

} // namespace

std::vector<PlacedText> PageWords(const Model& vModel, int vIndex)
{
    const Page& page = PageAt(vModel, vIndex);
    std::vector<PlacedText> words;
    // Played onto a picture recorder: the player works out where text goes, nothing is rasterised.
    QPicture recorder;
    QPainter painter(&recorder);
    for (const Placement* placement : ReadingOrder(page)) {
        const size_t before = words.size();
        try {
            DrawPlacement(painter, vModel, *placement, 1.0, [&](const QString& vText, const QRectF& vBox) {
                words.push_back({vText, vBox});
            });
        } catch (const FormatError&) {
            // A drawing that cannot be read has no words to place; the rest of the page still does.
        }
        const bool drewNone = words.size() == before;
        for (qsizetype i = 0; drewNone && i < placement->recognisedWords.size(); ++i) {
            const qint64* box = placement->recognisedBoxes.data() + 4 * i;
            words.push_back({placement->recognisedWords[i], QRectF(box[0], box[1], box[2], box[3])});
        }
        if (words.size() == before && !placement->text.isEmpty())
            words.push_back({placement->text, QRectF(placement->x, placement->y, placement->width, placement->height)});
    }
    return words;
}

QString PageText(const Model& vModel, int vIndex)
{
    const Page& page = PageAt(vModel, vIndex);
    const std::vector<const Placement*> order = ReadingOrder(page);
    QStringList parts;
    for (const Placement* placement : order) {
        QStringList drawn;
        const QByteArrayView fields = vModel.DrawingOf(*placement);
        const int kind = KindOf(fields);
        if (kind == static_cast<int>(DrawingKind::Emf) || kind == static_cast<int>(DrawingKind::Wmf))
            drawn = emf::Text(ReadDrawing(fields).data);
        if (drawn.isEmpty() && !placement->recognisedText.isEmpty())
            drawn.append(placement->recognisedText);
        if (drawn.isEmpty() && !placement->text.isEmpty())
            drawn.append(placement->text);
        parts.append(drawn);
    }
    return parts.join(u'\n');
}

} // namespace xdw
