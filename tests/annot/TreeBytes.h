#pragma once
// Turns annotation placements into the records of a one-page document, as a saver would write
// them, so that tests read what they made back through the reader.

#include "engine/Model.h"
#include "engine/PageRender.h"
#include "engine/write/Emit.h"
#include "engine/write/Tree.h"
#include "engine/XdwBuilder.h"

#include <memory>
#include <vector>

namespace annottest {

inline QByteArray NodeRecords(const xdw::Node& vNode, int vDepth)
{
    using namespace xdw::emit;
    QByteArray attributes;
    for (const xdw::NodeAttribute& a : vNode.attributes) {
        const quint8 bits = static_cast<quint8>((a.tagClass == 3 ? 0xC0 : 0x80) | (a.constructed ? 0x20 : 0));
        attributes += Tagged(a.number, a.value, bits);
    }
    if (!vNode.declarations.empty()) {
        QByteArray list;
        for (const xdw::Declaration& d : vNode.declarations) {
            const QByteArray name = NarrowText(d.name);
            list += Numbers({d.number, d.type, d.index, name.size()}) + Item(name);
        }
        attributes += Tagged(51, list);
    }
    QByteArray out = xdwtest::Record(vDepth, vNode.kind, attributes);
    for (const xdw::Node& child : vNode.children)
        out += NodeRecords(child, vDepth + 1);
    return out;
}

inline xdw::Node BlankPage()
{
    xdw::Node page;
    page.kind = 0x1301;
    page.attributes.push_back({2, false, 5, xdw::emit::Numbers({21000, 29700})});
    page.attributes.push_back({2, false, 3, xdw::emit::Numbers({1})});
    return page;
}

// A document of the one page, in the generation's trailer form.
inline QByteArray PageFile(const xdw::Node& vPage, int vGeneration = 7)
{
    const QByteArray records = xdwtest::Record(0, 0xC013, {}) + xdwtest::Record(1, 0x1303, {})
        + NodeRecords(vPage, 2) + xdwtest::Record(1, 0x1304, {}) + xdwtest::Record(1, 0x1306, {})
        + xdwtest::Record(1, 0x1305, {});
    return xdwtest::File(records, xdwtest::Options(vGeneration, false));
}

inline QByteArray FileWith(std::vector<xdw::Node> vPlacements, int vGeneration = 7)
{
    xdw::Node page = BlankPage();
    page.children = std::move(vPlacements);
    return PageFile(page, vGeneration);
}

// Pixels that are not white inside a box given in 1/100 mm, on a page drawn at vDpi.
inline int Inked(const QImage& vPage, qint64 vX, qint64 vY, qint64 vWidth, qint64 vHeight, int vDpi)
{
    const double scale = vDpi / 2540.0;
    const QRect box = QRect(int(vX * scale), int(vY * scale), int(vWidth * scale) + 1, int(vHeight * scale) + 1)
                          .intersected(vPage.rect());
    int count = 0;
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x)
            count += vPage.pixel(x, y) != qRgb(255, 255, 255);
    return count;
}

inline int InkedOutside(const QImage& vPage, qint64 vX, qint64 vY, qint64 vWidth, qint64 vHeight, int vDpi)
{
    const double scale = vDpi / 2540.0;
    const QRect box = QRect(int(vX * scale) - 2, int(vY * scale) - 2, int(vWidth * scale) + 5, int(vHeight * scale) + 5);
    int count = 0;
    for (int y = 0; y < vPage.height(); ++y)
        for (int x = 0; x < vPage.width(); ++x)
            count += !box.contains(x, y) && vPage.pixel(x, y) != qRgb(255, 255, 255);
    return count;
}

} // namespace annottest
