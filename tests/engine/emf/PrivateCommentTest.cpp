#include "MetafileWriter.h"
#include "Render.h"

#include <gtest/gtest.h>

using namespace testemf;

namespace {

QByteArray Comment(const QByteArray& vData)
{
    return Words({qint32(vData.size())}) + vData;
}

// "DW", the operation, the encoding, the count and the first point; steps are appended raw.
QByteArray PointList(quint8 vOp, quint8 vEncoding, qint32 vCount, qint16 x, qint16 y, const QByteArray& vSteps)
{
    QByteArray d("DW");
    d.append(char(vOp)).append(char(vEncoding));
    return d + Words({vCount}) + Shorts({x, y}) + vSteps;
}

} // namespace

TEST(PrivateComments, PointListsInEveryEncodingDrawTheirPolygonsAndLines)
{
    // The same square (10,10)-(60,60) three ways: absolute i16 pairs, i8 steps, nibble steps with
    // byte escapes (a nibble of 8 says the step is in the next byte).
    const QByteArray absolute = PointList(0x20, 0x20, 4, 10, 10, Shorts({60, 10, 60, 60, 10, 60}));
    const QByteArray bytes = PointList(0x20, 0x40, 4, 10, 10, QByteArray::fromHex("3200 0032 ce00"));
    const QByteArray nibbles = PointList(0x20, 0x80, 4, 10, 10, QByteArray::fromHex("8032 0832 80ce"));
    for (const QByteArray& list : {absolute, bytes, nibbles}) {
        emf::PlayResult result;
        const QImage image = Render(Emf().NoPen().Brush(1, kRedRef).Add(70, Comment(list)).Finish(),
                                    emf::Mapping::Page, {100, 100}, &result);
        ASSERT_TRUE(result.ok) << result.error.toStdString();
        EXPECT_EQ(result.unsupportedRecords, 0);
        EXPECT_EQ(At(image, 35, 35), kRed) << list.toHex().toStdString();
        EXPECT_EQ(At(image, 65, 35), kWhite) << list.toHex().toStdString();
        EXPECT_EQ(At(image, 35, 65), kWhite) << list.toHex().toStdString();
    }
    // A self-standing polyline whose step needs two bytes: 8, then 0x80, then an i16 of 80.
    const QByteArray line = PointList(0x40, 0x80, 2, 10, 90, QByteArray::fromHex("80 80 5000"));
    const QImage image = Render(Emf().Pen(1, kBlueRef, 3).Add(70, Comment(line)).Finish());
    EXPECT_EQ(At(image, 50, 90), kBlue);
    EXPECT_EQ(At(image, 5, 90), kWhite);
    EXPECT_EQ(At(image, 95, 90), kWhite);
}

TEST(PrivateComments, PathStepsFillThenStrokeOneShapeAndClipToARectangle)
{
    const QByteArray square = PointList(0x03, 0x20, 4, 20, 20, Shorts({80, 20, 80, 80, 20, 80}));
    QByteArray clip("DW\x06", 3);
    clip += Words({0, 0, 50, 100});
    const QByteArray emf = Emf()
                               .Brush(1, kRedRef)
                               .Pen(2, kBlueRef, 4)
                               .Add(70, Comment(QByteArray("DW\x02", 3)))
                               .Add(70, Comment(square))
                               .Add(70, Comment(QByteArray("DW\x04", 3)))
                               .Add(70, Comment(QByteArray("DW\x05", 3)))
                               .Add(70, Comment(clip))
                               .Brush(3, kBlueRef)
                               .NoPen()
                               .Rect(0, 90, 100, 100)
                               .Finish();
    emf::PlayResult result;
    const QImage image = Render(emf, emf::Mapping::Page, {100, 100}, &result);
    ASSERT_TRUE(result.ok) << result.error.toStdString();
    EXPECT_EQ(At(image, 50, 50), kRed);
    EXPECT_EQ(At(image, 20, 50), kBlue);   // the stroke after the fill outlines the same path
    EXPECT_EQ(At(image, 25, 95), kBlue);
    EXPECT_EQ(At(image, 75, 95), kWhite);   // clipped away
}

TEST(PrivateComments, PicturesComeFromThePagesListInOrder)
{
    QByteArray draw("DWc", 3);
    draw.append('\0');
    draw += Words({0, 0, 0, 0, 20, 20, 0, 0, 0, 0, 0, 0xCC0020, 40, 40});
    const QByteArray emf = Emf()
                               .Add(70, Comment(draw))                        // no picture made current yet
                               .Add(70, Comment(QByteArray("DWb\0", 4)))
                               .Add(70, Comment(QByteArray("DWb\0", 4)))     // the second picture
                               .Add(70, Comment(draw))
                               .Finish();
    QList<int> asked;
    emf::PlayOptions options;
    options.picture = [&asked](int vIndex) {
        asked << vIndex;
        QImage image(4, 4, QImage::Format_RGB32);
        image.fill(vIndex == 1 ? Qt::red : Qt::blue);
        return image;
    };
    const QImage image = Render(emf, emf::Mapping::Page, {100, 100}, nullptr, options);
    EXPECT_EQ(asked, QList<int>{1});
    EXPECT_EQ(At(image, 40, 40), kRed);
    EXPECT_EQ(At(image, 10, 10), kWhite);
    EXPECT_EQ(At(image, 65, 65), kWhite);
    // Without a picture source the same drawing draws nothing and is still well formed.
    emf::PlayResult result;
    const QImage bare = Render(emf, emf::Mapping::Page, {100, 100}, &result);
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(InkIn(bare, bare.rect()), 0);
}
