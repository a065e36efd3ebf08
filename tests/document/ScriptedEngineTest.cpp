// The test kit's fake engine and its pictures are what viewer tests read pages by, so they
// are held to their word here.
#include "common/PagePicture.h"
#include "common/ScriptedEngine.h"
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
    EXPECT_FALSE(handles.contains(0));
    EXPECT_EQ(table.LiveCount(), 5);

    const qint32 first = *handles.begin();
    EXPECT_EQ(table.Get(first)->size(), QSize(2, 2));
    EXPECT_TRUE(table.Free(first));
    EXPECT_FALSE(table.Free(first));
    EXPECT_EQ(table.Get(first), nullptr);
    EXPECT_FALSE(table.Free(0));
    // A freed number isn't handed out again at once.
    EXPECT_FALSE(handles.contains(table.Take(QImage())));
    EXPECT_EQ(table.LiveCount(), 5);
    EXPECT_EQ(table.TakenCount(), 6);
}

TEST(PagePicture, TheNumberReadsBackFromScaledAndGreyCopies)
{
    for (int page : {0, 1, 7, 10, 12345, 65535}) {
        const QImage picture = pagepicture::Draw(page, QSize(827, 1169));
        EXPECT_EQ(pagepicture::Read(picture), page);
        EXPECT_EQ(pagepicture::Read(picture.scaled(207, 292, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)), page);
        EXPECT_EQ(pagepicture::Read(picture.convertToFormat(QImage::Format_Grayscale8)), page);
        EXPECT_EQ(pagepicture::Read(pagepicture::Draw(page, QSize(1169, 827), QColor(255, 250, 220))), page);
    }
    QImage blank(400, 600, QImage::Format_RGB32);
    blank.fill(Qt::white);
    EXPECT_EQ(pagepicture::Read(blank), -1);
    blank.fill(Qt::black);
    EXPECT_EQ(pagepicture::Read(blank), -1);
    EXPECT_EQ(pagepicture::Read(QImage()), -1);
}

TEST(ScriptedEngine, DocumentCallsNeedAnOpenSelectedDocument)
{
    ScriptedEngine engine;
    engine.AddDocument(QStringLiteral("/x/a.xdw"), 2);
    engine.GetDocumentInformation();
    EXPECT_EQ(engine.LastResult(), XdwResult::InvalidArg);

    engine.OpenDocument(QStringLiteral("/x/a.xdw"), 1);
    const qint32 handle = engine.ReadDocumentHandle();
    engine.SelectDocumentHandle(handle);
    engine.GetDocumentInformation();
    EXPECT_EQ(engine.LastResult(), 0);
    EXPECT_EQ(engine.Pages(), 2);

    engine.CloseSelectedDocument();
    engine.SelectDocumentHandle(handle);
    EXPECT_EQ(engine.LastResult(), XdwResult::InvalidArg);
    EXPECT_EQ(engine.ConvertPageToImageHandle(1, 100, 1), 0);
    EXPECT_EQ(engine.Handles().TakenCount(), 0);

    engine.GlobalFree(12345);
    EXPECT_EQ(engine.LastResult(), XdwResult::InvalidArg);
    EXPECT_EQ(engine.LastErrorText(), GetXdwErrorText(XdwResult::InvalidArg));
}
