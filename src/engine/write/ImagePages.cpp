#include "engine/write/ImagePages.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/Model.h"
#include "engine/write/Emit.h"

#include <cmath>

namespace xdw {

namespace {

constexpr quint32 KindPage = 0x1301;
constexpr quint32 KindPlacement = 0x1302;
constexpr quint32 AttrId = 3;
constexpr quint32 AttrSize = 5;
constexpr quint32 AttrDrawing = 7;
constexpr quint32 AttrPosition = 52;
constexpr quint32 FirstNamed = 2001;
constexpr double HundredthsPerInch = 2540.0;

struct CompressName {
    const char* name;
    int quality;   // 0: a lossless bitmap
};

constexpr CompressName CompressNames[] = {
    {"NORMAL", 75}, {"LOSSLESS", 0}, {"HIGHQUALITY", 90}, {"HIGHCOMPRESS", 50},
    {"NOCOMPRESS", 0}, {"JPEG", 75}, {"PACKBITS", 0}, {"G4", 0},
};

NodeAttribute Attribute(quint32 vNumber, const QByteArray& vValue)
{
    NodeAttribute attribute;
    attribute.number = vNumber;
    attribute.value = vValue;
    return attribute;
}

void AddNamed(Node& vNode, const QString& vName, qint64 vType, const QByteArray& vValue)
{
    const quint32 number = FirstNamed + static_cast<quint32>(vNode.declarations.size());
    vNode.declarations.push_back({number, vType, -1, vName});
    vNode.attributes.push_back(Attribute(number, vValue));
}

QByteArray Drawing(const image::Picture& vPicture, const PageLayout& vLayout, int vQuality,
                   bool vReencode, const PictureCompressor& vCompress)
{
    const bool whole = vLayout.pixels == vPicture.image.rect();
    const QImage shown = whole ? vPicture.image : vPicture.image.copy(vLayout.pixels);
    if (vQuality == 0 || vPicture.tone == image::Tone::Bilevel)
        return picture::DibDrawing(shown, vLayout.width, vLayout.height, vCompress);
    const bool keep = whole && !vReencode && !vPicture.jpeg.isEmpty();
    const QByteArray jpeg = keep ? vPicture.jpeg : picture::EncodeJpeg(shown, vQuality);
    return picture::JpegDrawing(jpeg, shown.size(), vLayout.width, vLayout.height);
}

Node PageNode(const PageLayout& vLayout, const QByteArray& vDrawing)
{
    using emit::Numbers;
    // The resolution the pixels land at on the page, which is the image's own under FITDEF.
    const qint64 dpi = std::max<qint64>(
        1, std::lround(vLayout.pixels.width() * HundredthsPerInch / double(vLayout.width)));
    Node content;
    content.kind = KindPageContent;
    content.attributes.push_back(Attribute(AttrId, Numbers({1})));
    content.attributes.push_back(Attribute(AttrDrawing, vDrawing));
    content.attributes.push_back(Attribute(AttrSize, Numbers({vLayout.width, vLayout.height})));
    AddNamed(content, QStringLiteral("dpi"), NamedNumbers, Numbers({dpi}));

    Node placement;
    placement.kind = KindPlacement;
    placement.attributes.push_back(Attribute(AttrPosition, Numbers({vLayout.x, vLayout.y})));
    AddNamed(placement, QStringLiteral("childdim"), NamedSizePair, Numbers({vLayout.width, vLayout.height}));
    placement.children.push_back(std::move(content));

    Node page;
    page.kind = KindPage;
    page.attributes.push_back(Attribute(AttrSize, Numbers({vLayout.pageWidth, vLayout.pageHeight})));
    AddNamed(page, QStringLiteral("lastmid"), NamedNumbers, Numbers({1}));
    page.children.push_back(std::move(placement));
    return page;
}

} // namespace

int JpegQualityOf(const QString& vCompress)
{
    for (const CompressName& known : CompressNames) {
        if (vCompress == QLatin1String(known.name))
            return known.quality;
    }
    if (vCompress.startsWith(u"MRC"))
        throw FormatError{XdwResult::InvalidArg,
                          QStringLiteral("Compress \"%1\": mixed raster pages are not written").arg(vCompress)};
    throw FormatError{XdwResult::InvalidArg, QStringLiteral("Compress \"%1\" is not a compression name").arg(vCompress)};
}

ImageInformation ReadImageInformation(const QString& vPath)
{
    return image::OpenImage(vPath)->Information(0);
}

std::vector<Node> PagesFromImage(const QString& vPath, const Placing& vPlacing, const PictureCompressor& vCompress)
{
    // The caller's mistakes first, before the file is touched.
    const int quality = JpegQualityOf(vPlacing.compress);
    CheckPlacing(vPlacing);
    if (!vCompress)
        throw FormatError{XdwResult::InvalidArg, QStringLiteral("no compressor for bitmap pictures")};
    const bool reencode = vPlacing.compress == u"HIGHCOMPRESS";

    const std::unique_ptr<image::ImageFile> file = image::OpenImage(vPath);
    std::vector<Node> pages;
    for (int i = 0; i < file->Pages(); ++i) {
        const image::Picture picture = file->Read(i);
        const PageLayout layout = LayOut(vPlacing, picture.image.size(), picture.horDpi, picture.verDpi);
        pages.push_back(PageNode(layout, Drawing(picture, layout, quality, reencode, vCompress)));
    }
    return pages;
}

} // namespace xdw
