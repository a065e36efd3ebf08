// The metafile writer on its own: a header that agrees with what follows it, records in the
// sizes readers walk by, handles given and given back, and text the player reads back.

#include "engine/emf/EmfPlayer.h"
#include "engine/write/EmfWriter.h"

#include <QImage>
#include <QPainter>
#include <QtEndian>

#include <gtest/gtest.h>

#include <vector>

using xdw::EmfWriter;

namespace {

quint32 U32(const QByteArray& vBytes, qsizetype vAt) { return qFromLittleEndian<quint32>(vBytes.constData() + vAt); }

struct Walked {
    std::vector<quint32> types;
    bool aligned = true;
    qsizetype end = 0;
};

Walked Walk(const QByteArray& vEmf)
{
    Walked w;
    qsizetype at = 0;
    while (at + 8 <= vEmf.size()) {
        const quint32 type = U32(vEmf, at), size = U32(vEmf, at + 4);
        w.types.push_back(type);
        w.aligned = w.aligned && size >= 8 && size % 4 == 0;
        if (size < 8)
            break;
        at += size;
    }
    w.end = at;
    return w;
}

} // namespace

TEST(EmfWriter, HeaderCountsTheRecordsBytesAndHandlesThatFollow)
{
    EmfWriter w(QSize(6500, 900), QSize(768, 106));
    w.SetWindowExt(QSize(765, 90));
    const quint32 pen = w.CreatePen(xdw::PenStyle::Dash, 3, 0x0000FF);
    const quint32 brush = w.CreateBrush(0x00FF00);
    w.Select(pen);
    w.Select(brush);
    w.Rectangle(QRect(1, 1, 50, 30));
    w.Polygon({{0, 0}, {10, 0}, {5, 7}});   // three points: an odd payload that must be padded
    w.Select(xdw::StockBlackPen);
    w.Delete(pen);
    w.Delete(brush);
    EXPECT_EQ(w.CreateBrush(0), 1u);   // freed slots are given again, lowest first
    const QByteArray emf = w.Finish();

    const Walked walked = Walk(emf);
    EXPECT_TRUE(walked.aligned);
    EXPECT_EQ(walked.end, emf.size());
    EXPECT_EQ(U32(emf, 48), quint32(emf.size()));                  // nBytes
    EXPECT_EQ(U32(emf, 52), quint32(walked.types.size()));         // nRecords, header and end included
    EXPECT_EQ(qFromLittleEndian<quint16>(emf.constData() + 56), 3); // the metafile's own slot and two
    EXPECT_EQ(walked.types.front(), 1u);
    EXPECT_EQ(walked.types.back(), 14u);
    EXPECT_EQ(U32(emf, 40), 0x464D4520u);
    // The frame in 1/100 mm and the device size, as given.
    EXPECT_EQ(U32(emf, 32), 6500u);
    EXPECT_EQ(U32(emf, 36), 900u);
    EXPECT_EQ(U32(emf, 72), 768u);
    EXPECT_EQ(U32(emf, 76), 106u);
    // The description names the writer "DW", in UTF-16, where the header says.
    const quint32 chars = U32(emf, 60), at = U32(emf, 64);
    ASSERT_GE(chars, 2u);
    EXPECT_EQ(emf.mid(at, 4), QByteArray("D\0W\0", 4));
    EXPECT_TRUE(emf::LooksLikeEmf(emf));
}

TEST(EmfWriter, TextAndShapesPlayBackWhereTheyWereWritten)
{
    EmfWriter w(QSize(2540, 2540), QSize(300, 300));
    w.SetWindowExt(QSize(300, 300));
    xdw::LogFont font;
    font.face = QStringLiteral("Yu Gothic UI");
    const quint32 f = w.CreateFont(font);
    w.Select(f);
    w.SetTextColor(0);
    w.SetBkMode(true);
    w.TextOut(QPoint(20, 20), QStringLiteral("Ab吾"), {25, 25, 50});
    w.TextOut(QPoint(20, 80), QStringLiteral("second"), {});
    const quint32 brush = w.CreateBrush(0x0000FF);   // red, as COLORREF keeps blue high
    w.Select(brush);
    w.Select(xdw::StockNullPen);
    w.BeginPath();
    w.MoveTo(QPoint(150, 150));
    w.LineTo(QPoint(290, 150));
    w.LineTo(QPoint(290, 290));
    w.LineTo(QPoint(150, 290));
    w.CloseFigure();
    w.EndPath();
    w.FillPath(QRect(150, 150, 140, 140));
    const QByteArray emf = w.Finish();

    EXPECT_EQ(emf::Text(emf), QStringList({QStringLiteral("Ab吾"), QStringLiteral("second")}));
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        emf::PlayOptions options;
        options.mapping = emf::Mapping::Annotation;
        const emf::PlayResult played = emf::Play(painter, emf, QRectF(0, 0, 100, 100), options);
        EXPECT_TRUE(played.ok) << played.error.toStdString();
        EXPECT_EQ(played.unsupportedRecords, 0);
    }
    EXPECT_EQ(image.pixel(80, 80), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(30, 80), qRgb(255, 255, 255));
}

TEST(EmfWriter, StretchedBitmapCoversItsTarget)
{
    // A 2 x 2 picture of 24 bits, rows padded to four bytes, bottom row first: blue, green / red, white.
    QByteArray info(40, '\0');
    qToLittleEndian<quint32>(40, info.data());
    qToLittleEndian<qint32>(2, info.data() + 4);
    qToLittleEndian<qint32>(2, info.data() + 8);
    qToLittleEndian<quint16>(1, info.data() + 12);
    qToLittleEndian<quint16>(24, info.data() + 14);
    const QByteArray bits = QByteArray::fromHex("FF0000" "00FF00" "0000" "0000FF" "FFFFFF" "0000");
    EmfWriter w(QSize(100, 100), QSize(12, 12));
    w.SetWindowExt(QSize(12, 12));
    w.StretchDib(QRect(0, 0, 12, 12), info, bits, QSize(2, 2));
    const QByteArray emf = w.Finish();
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(Qt::black);
    {
        QPainter painter(&image);
        emf::PlayOptions options;
        options.mapping = emf::Mapping::Annotation;
        ASSERT_TRUE(emf::Play(painter, emf, QRectF(0, 0, 40, 40), options).ok);
    }
    EXPECT_EQ(image.pixel(5, 35), qRgb(0, 0, 255));
    EXPECT_EQ(image.pixel(35, 35), qRgb(0, 255, 0));
    EXPECT_EQ(image.pixel(5, 5), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(35, 5), qRgb(255, 255, 255));
}
