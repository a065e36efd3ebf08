// Longer runs of the library on the Linux engine: a document turned into an image-only one,
// noise taken off a scanned page, and annotations removed and hidden.
#include "library/LibraryFixture.h"

#include "common/TestFiles.h"
#include "common/TiffWriter.h"
#include "document/DocuWorksAnnotationClass.h"

#include <QDir>
#include <QFile>
#include <QPainter>

TEST_F(LibraryTest, ADocumentBecomesImagesOnlyWithEveryPageInOrder)
{
    const QString sample = SharedSample("annotated-10-pages-gen7.xdw");
    if (sample.isEmpty())
        GTEST_SKIP() << "no shared test data beside the checkout";
    ASSERT_TRUE(QFile::copy(sample, Path("ten.xdw")));
    QFile::setPermissions(Path("ten.xdw"), QFile::ReadOwner | QFile::WriteOwner);
    ASSERT_TRUE(QDir(dir_.path()).mkdir(QStringLiteral("work")));
    DocuWorksClass docuWorks;
    int started = 0, steps = 0;
    docuWorks.OnProgressStart([&](const QString&, qint32 vCount) { started = vCount; });
    docuWorks.OnProgressNext([&](const QString&) { ++steps; });
    docuWorks.ConvertXdwOfImage(Path("ten.xdw"), Path("work"), 50, 0);
    EXPECT_EQ(started, 10);
    EXPECT_EQ(steps, 10);
    EXPECT_TRUE(QDir(Path("work")).entryList(QDir::Files).isEmpty());

    DocuWorksClass reader;
    const auto file = reader.OpenXdw(Path("ten.xdw"), 1);
    file->GetDocumentInformation();
    ASSERT_EQ(file->Pages(), 10);
    file->GetPageInformation(7);
    EXPECT_EQ(file->PagePageType(), QStringLiteral("FROMIMAGE"));
    EXPECT_EQ(file->GetPageTextToMemory(7), QString());   // the figures are pictures now
    // Page 7 still shows its big figure: a column of ink in the middle of the page.
    const QImage page = Page(Path("ten.xdw"), 7, 50);
    int ink = 0;
    for (int y = 0; y < page.height(); ++y)
        ink += qGray(page.pixel(page.width() / 2, y)) < 128;
    EXPECT_GT(ink, 20);
}

TEST_F(LibraryTest, NoiseReductionTakesSpecksOffAScanAndKeepsItsStrokes)
{
    QImage scan(QSize(800, 1000), QImage::Format_RGB32);
    scan.fill(Qt::white);
    {
        QPainter painter(&scan);
        painter.setPen(QPen(Qt::black, 4));
        painter.drawLine(100, 500, 700, 500);
    }
    for (int i = 0; i < 40; ++i)
        scan.setPixel(50 + 17 * i, 100 + 19 * i, qRgb(0, 0, 0));
    ASSERT_TRUE(tiffwriter::Write(Path("scan.tif"), {scan}, tiffwriter::Kind::BilevelG4, 200));
    DocuWorksClass docuWorks;
    docuWorks.CreateXdwFromImageFile(Path("scan.tif"), Path("scan.xdw"));
    {
        const auto file = docuWorks.OpenXdw(Path("scan.xdw"), 1);
        file->ReducePageNoise(1, QStringLiteral("STRONG"));
        file->SaveDocument();
    }
    const QImage cleaned = Page(Path("scan.xdw"), 1, 200);
    int specks = 0;
    for (int i = 0; i < 40; ++i)
        if (i != 21)   // the one that fell on the line is part of it
            specks += qGray(cleaned.pixel(50 + 17 * i, 100 + 19 * i)) < 128;
    EXPECT_EQ(specks, 0);
    EXPECT_LT(qGray(cleaned.pixel(400, 500)), 128);

    // A page that is not a black and white picture has no specks to speak of.
    ASSERT_TRUE(Strokes(QSize(300, 300), true).save(Path("photo.jpg")));
    docuWorks.CreateXdwFromImageFile(Path("photo.jpg"), Path("photo.xdw"));
    const auto photo = docuWorks.OpenXdw(Path("photo.xdw"), 1);
    EXPECT_TRUE(Raised([&] { photo->ReducePageNoise(1, QStringLiteral("STRONG")); })
                    .startsWith(QStringLiteral("ReducePageNoise : ")));
}

TEST_F(LibraryTest, AnnotationsRemovedOrHiddenNoLongerShowOrSpeak)
{
    const QString path = Path("blank.xdw");
    const QString sample = SharedSample("blank-1-page-gen7.xdw");
    if (sample.isEmpty() || !QFile::copy(sample, path))
        GTEST_SKIP() << "no shared test data beside the checkout";
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    DocuWorksClass docuWorks;
    {
        const auto file = docuWorks.OpenXdw(path, 1);
        file->AddTextAnnotation(1, 2000, 2000)->SetProperty(QStringLiteral("Text"), QStringLiteral("一つ目"));
        file->AddTextAnnotation(1, 2000, 6000)->SetProperty(QStringLiteral("Text"), QStringLiteral("二つ目"));
        file->ReleaseAllAnnotation();
        file->GetAnnotation(1);
        SDC list = file->RefDwAnnotationData();
        ASSERT_EQ(list->Count(), 2);
        list->TopData();
        file->RefDwAnnotation()->RemoveAnnotation();
        file->SaveDocument();
    }
    EXPECT_EQ(Text(path, 1).trimmed(), QStringLiteral("二つ目"));
    {
        const auto file = docuWorks.OpenXdw(path, 1);
        file->ShowAndHideAnnotation(false);
        file->SaveDocument();
    }
    EXPECT_FALSE(Text(path, 1).contains(QStringLiteral("二つ目")));
    // Where the hidden note stood, the page is blank.
    const QImage page = Page(path, 1, 50);
    int ink = 0;
    for (int y = 6000 * 50 / 2540; y < 6000 * 50 / 2540 + 12; ++y)
        for (int x = 2000 * 50 / 2540; x < 2000 * 50 / 2540 + 60; ++x)
            ink += page.pixel(x, y) != qRgb(255, 255, 255);
    EXPECT_EQ(ink, 0);
}
