#pragma once
// Plays a drawing onto a white image and answers questions about its pixels.

#include "engine/emf/EmfPlayer.h"

#include <QImage>
#include <QPainter>

namespace testemf {

inline QImage Render(const QByteArray& vBytes, emf::Mapping vMapping = emf::Mapping::Page,
                     QSize vSize = {100, 100}, emf::PlayResult* vResult = nullptr,
                     const emf::PlayOptions& vBase = {})
{
    QImage image(vSize, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    emf::PlayOptions options = vBase;
    options.mapping = vMapping;
    const emf::PlayResult result = emf::Play(painter, vBytes, QRectF(QPointF(), vSize), options);
    if (vResult)
        *vResult = result;
    return image;
}

inline QRgb At(const QImage& vImage, int x, int y) { return vImage.pixel(x, y) & 0xFFFFFF; }

// Pixels in the box darker than mid grey.
inline int DarkIn(const QImage& vImage, const QRect& vBox)
{
    int n = 0;
    const QRect box = vBox.intersected(vImage.rect());
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x)
            n += qGray(vImage.pixel(x, y)) < 128;
    return n;
}

// Pixels in the box that are not white.
inline int InkIn(const QImage& vImage, const QRect& vBox)
{
    int n = 0;
    const QRect box = vBox.intersected(vImage.rect());
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x)
            n += (vImage.pixel(x, y) & 0xFFFFFF) != 0xFFFFFF;
    return n;
}

constexpr QRgb kRed = 0xFF0000, kWhite = 0xFFFFFF, kBlack = 0x000000, kBlue = 0x0000FF;
constexpr quint32 kRedRef = 0x0000FF, kBlueRef = 0xFF0000;   // Windows keeps red in the low byte

} // namespace testemf
