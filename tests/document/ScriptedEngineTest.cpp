// The bitmap handle table, and the page pictures the viewer tests read pages by.
#include "common/PagePicture.h"
#include "document/BitmapHandleTable.h"

#include <gtest/gtest.h>

#include <set>

TEST(BitmapHandleTable, HandlesAreFreshUntilFreedAndFreedOnlyOnce)
{
    BitmapHandleTable table;
    std::set<qint32> handles;
    for (int i = 0; i < 5; ++i)
        handles.insert(table.Take(QImage(2, 2, QImage::Format_RGB32)));
    EXPECT_EQ(handles.size(), 5u);
    EXPECT_FALSE(handles.contains(0));  // 0 is what a failed conversion returns
    const qint32 first = *handles.begin();
    EXPECT_TRUE(table.Free(first));
    EXPECT_FALSE(table.Free(first));
    // A freed number isn't handed out again at once.
    EXPECT_FALSE(handles.contains(table.Take(QImage())));
    EXPECT_EQ(table.LiveCount(), 5);
}

TEST(PagePicture, TheNumberReadsBackFromScaledGreyAndBilevelCopies)
{
    for (int page : {0, 1, 10, 12345, 65535}) {
        const QImage picture = pagepicture::Draw(page, QSize(827, 1169));
        EXPECT_EQ(pagepicture::Read(picture.scaled(207, 292, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)), page);
        EXPECT_EQ(pagepicture::Read(picture.convertToFormat(QImage::Format_Grayscale8)), page);
        const QImage landscape = pagepicture::Draw(page, QSize(1169, 827));
        EXPECT_EQ(pagepicture::Read(landscape.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither)), page);
    }
    QImage blank(400, 600, QImage::Format_RGB32);
    blank.fill(Qt::white);
    EXPECT_EQ(pagepicture::Read(blank), -1);
}
