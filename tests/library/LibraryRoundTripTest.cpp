// Whole files through the document library on the Linux engine: documents made from images,
// merged from the vendor's samples and gathered into binders, each reopened and drawn.
#include "library/LibraryFixture.h"

#include "common/TestFiles.h"
#include "common/TiffWriter.h"

#include <QFile>

namespace {

bool SameInk(const QImage& vA, const QImage& vB)
{
    if (vA.size() != vB.size())
        return false;
    const QImage a = vA.convertToFormat(QImage::Format_RGB32), b = vB.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if ((qGray(a.pixel(x, y)) < 128) != (qGray(b.pixel(x, y)) < 128))
                return false;
    return true;
}

} // namespace

TEST_F(LibraryTest, ImagesBecomePagesThatDrawBackExactlyOrCloseToTheSource)
{
    // A two-page fax in G4, a colour TIFF kept lossless and a JPEG photograph (at Qt's 96 dpi).
    const QImage first = Strokes(QSize(1700, 2200), false), second = Strokes(QSize(1700, 2200), false).mirrored(true, false);
    ASSERT_TRUE(tiffwriter::Write(Path("fax.tif"), {first, second}, tiffwriter::Kind::BilevelG4, 200));
    const QImage colour = Strokes(QSize(800, 1000), true);
    ASSERT_TRUE(tiffwriter::Write(Path("colour.tif"), {colour}, tiffwriter::Kind::RgbDeflate, 200));
    ASSERT_TRUE(colour.save(Path("photo.jpg"), "JPEG", 95));

    DocuWorksClass maker;
    maker.CreateXdwFromImageFile(Path("fax.tif"), Path("fax.xdw"));
    maker.SetCompress(QStringLiteral("LOSSLESS"));
    maker.CreateXdwFromImageFile(Path("colour.tif"), Path("colour.xdw"));
    maker.SetCompress(QStringLiteral("NORMAL"));
    maker.CreateXdwFromImageFile(Path("photo.jpg"), Path("photo.xdw"));

    ASSERT_EQ(Pages(Path("fax.xdw")), 2);
    EXPECT_TRUE(SameInk(Page(Path("fax.xdw"), 1, 200), first));
    EXPECT_TRUE(SameInk(Page(Path("fax.xdw"), 2, 200), second));
    EXPECT_EQ(Page(Path("colour.xdw"), 1, 200).convertToFormat(QImage::Format_RGB32), colour);
    EXPECT_GT(Psnr(Page(Path("photo.xdw"), 1, 96), colour), 35.0);

    // The page knows what it was made from, and at what resolution.
    DocuWorksClass reader;
    const auto fax = reader.OpenXdw(Path("fax.xdw"), 1);
    fax->GetPageInformationEx(1);
    EXPECT_EQ(fax->PagePageType(), QStringLiteral("FROMIMAGE"));
    EXPECT_EQ(fax->PageHorRes(), 200);
    EXPECT_EQ(fax->PageWidth(), 21590);

    // An existing output is never overwritten, and a PDF says it is not taken.
    const QString exists = Raised([&] { maker.CreateXdwFromImageFile(Path("fax.tif"), Path("fax.xdw")); });
    EXPECT_TRUE(exists.startsWith(QStringLiteral("CreateXdwFromImageFile : "))) << exists.toStdString();
    QFile pdf(Path("scan.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::WriteOnly));
    pdf.write("%PDF-1.4\n");
    pdf.close();
    const QString refused = Raised([&] { maker.CreateXdwFromImagePdfFile(Path("scan.pdf"), Path("scan.xdw")); });
    EXPECT_TRUE(refused.contains(QStringLiteral("PDF"))) << refused.toStdString();
}

TEST_F(LibraryTest, ThreeSamplesMergeIntoOneDocumentWithEveryPageAndText)
{
    const QString ten = SharedSample("annotated-10-pages-gen7.xdw");
    if (ten.isEmpty())
        GTEST_SKIP() << "no shared test data beside the checkout";
    DocuWorksClass docuWorks;
    SDC inputs = docuWorks.RefMergeFileList();
    inputs->AddData(ten);
    inputs->AddData(SharedSample("blank-1-page-gen7.xdw"));
    inputs->AddData(SharedSample("text-annotation-gen10.xdw"));
    docuWorks.MergeXdwDocument(Path("merged.xdw"));

    ASSERT_EQ(Pages(Path("merged.xdw")), 12);
    DocuWorksClass reader;
    const auto merged = reader.OpenXdw(Path("merged.xdw"), 1);
    for (int page = 1; page <= 12; ++page) {
        merged->GetPageInformation(page);
        EXPECT_EQ(merged->PageWidth(), 21000);
        EXPECT_EQ(merged->PageHeight(), 29700);
    }
    for (int page = 1; page <= 10; ++page)
        EXPECT_EQ(merged->GetPageTextToMemory(page), QString::number(page));
    EXPECT_EQ(merged->GetPageTextToMemory(12), QStringLiteral("Lorem ipsum. 吾輩は猫である。"));
    // The shape and the text of the last sample still draw where they stood.
    const QImage last = Page(Path("merged.xdw"), 12, 50);
    EXPECT_NE(last.pixel(2662 * 50 / 2540 + 2, 2288 * 50 / 2540 + 2), qRgb(255, 255, 255));
}

TEST_F(LibraryTest, BinderGathersDocumentsAndGivesThemBack)
{
    const QString ten = SharedSample("annotated-10-pages-gen7.xdw");
    if (ten.isEmpty())
        GTEST_SKIP() << "no shared test data beside the checkout";
    DocuWorksClass docuWorks;
    docuWorks.CreateBinder(Path("set.xbd"));
    docuWorks.InsertDocumentToBinder(ten, Path("set.xbd"), 1);
    docuWorks.InsertDocumentToBinder(SharedSample("text-annotation-gen10.xdw"), Path("set.xbd"), 1);

    const auto binder = docuWorks.OpenXdw(Path("set.xbd"), 1);
    binder->GetDocumentInformation();
    EXPECT_EQ(binder->DocType(), QStringLiteral("BINDER"));
    EXPECT_EQ(binder->Documents(), 2);
    EXPECT_EQ(binder->Pages(), 11);
    EXPECT_EQ(binder->GetDocumentNameInBinder(1), QStringLiteral("text-annotation-gen10"));
    EXPECT_EQ(binder->GetPageTextToMemory(2), QStringLiteral("1"));

    binder->GetDocumentFromBinder(2, Path("out.xdw"));
    EXPECT_EQ(Pages(Path("out.xdw")), 10);
    EXPECT_EQ(Text(Path("out.xdw"), 10), QStringLiteral("10"));
}
