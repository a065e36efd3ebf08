#include "imagein/ImageFixtures.h"

#include "engine/Model.h"
#include "engine/PageRender.h"
#include "engine/XdwBuilder.h"
#include "engine/write/Emit.h"
#include "engine/write/ImageFile.h"

#include <QPainter>

#include <cmath>

namespace imagefixtures {

namespace {

constexpr QSize PictureSize(160, 100);

QByteArray NodeRecords(const xdw::Node& vNode, int vDepth)
{
    using namespace xdw::emit;
    QByteArray attributes;
    for (const xdw::NodeAttribute& a : vNode.attributes)
        attributes += Tagged(a.number, a.value, static_cast<quint8>((a.tagClass == 3 ? 0xC0 : 0x80) | (a.constructed ? 0x20 : 0)));
    QByteArray declared;
    for (const xdw::Declaration& d : vNode.declarations) {
        const QByteArray name = d.name.toLatin1() + '\0';
        declared += Item(Int(d.number)) + Item(Int(d.type)) + Item(Int(d.index)) + Item(Int(name.size())) + Item(name);
    }
    if (!declared.isEmpty())
        attributes += Tagged(51, declared);
    QByteArray out = xdwtest::Record(vDepth, vNode.kind, attributes);
    for (const xdw::Node& child : vNode.children)
        out += NodeRecords(child, vDepth + 1);
    return out;
}

} // namespace

QImage Bilevel(int vSeed)
{
    QImage picture(PictureSize, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.fillRect(3 + vSeed, 5, 40, 7, Qt::black);
    painter.fillRect(60, 20 + vSeed, 1, 70, Qt::black);
    for (int i = 0; i < 30; ++i)
        painter.fillRect(90 + (i * 7) % 60, 30 + (i * 13) % 60, 1 + i % 3, 2, Qt::black);
    painter.end();
    return xdw::image::BlackFirst(picture.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither));
}

QImage Grey()
{
    QImage picture(PictureSize, QImage::Format_Grayscale8);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            picture.scanLine(y)[x] = static_cast<uchar>((x * 255 / 159 + (y % 2) * 3) & 0xFF);
    return picture;
}

QImage Colour()
{
    QImage picture(PictureSize, QImage::Format_RGB888);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb(x * 255 / 159, y * 255 / 99, 128 + ((x + y) % 64)));
    return picture;
}

QString Save(const QString& vPath, const QImage& vImage, const char* vFormat, int vDpi, int vQuality)
{
    QImage picture = vImage;
    picture.setDotsPerMeterX(static_cast<int>(std::lround(vDpi / 0.0254)));
    picture.setDotsPerMeterY(static_cast<int>(std::lround(vDpi / 0.0254)));
    return picture.save(vPath, vFormat, vQuality) ? vPath : QString();
}

QByteArray Pack(QByteArrayView vData)
{
    return xdwtest::Lh5Literal(vData.toByteArray());
}

const xdw::NodeAttribute* AttributeOf(const xdw::Node& vNode, quint32 vNumber)
{
    for (const xdw::NodeAttribute& attribute : vNode.attributes) {
        if (attribute.number == vNumber)
            return &attribute;
    }
    return nullptr;
}

QByteArray Document(const std::vector<xdw::Node>& vPages)
{
    QByteArray records = xdwtest::Record(0, 0xC013, {}) + xdwtest::Record(1, 0x1303, {});
    qint64 id = 1;
    for (xdw::Node page : vPages) {
        xdw::NodeAttribute attribute;
        attribute.number = 3;
        attribute.value = xdw::emit::Numbers({id++});
        page.attributes.push_back(attribute);
        records += NodeRecords(page, 2);
    }
    records += xdwtest::Record(1, 0x1304, {}) + xdwtest::Record(1, 0x1306, {}) + xdwtest::Record(1, 0x1305, {});
    return xdwtest::File(records);
}

QImage Render(const QByteArray& vDocument, int vIndex, int vDpi)
{
    const xdw::Model model(vDocument);
    return xdw::RenderPage(model, vIndex, vDpi, true);
}

bool SamePixels(const QImage& vA, const QImage& vB)
{
    return vA.convertToFormat(QImage::Format_RGB32) == vB.convertToFormat(QImage::Format_RGB32);
}

double Psnr(const QImage& vA, const QImage& vB)
{
    // Over the bytes of RGB888 rows: the three channels alike.
    const QImage a = vA.convertToFormat(QImage::Format_RGB888), b = vB.convertToFormat(QImage::Format_RGB888);
    double sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int i = 0; i < 3 * a.width(); ++i)
            sum += std::pow(a.constScanLine(y)[i] - b.constScanLine(y)[i], 2);
    const double mse = sum / (3.0 * a.width() * a.height());
    return mse == 0 ? 99.0 : 10 * std::log10(255.0 * 255.0 / mse);
}

} // namespace imagefixtures
