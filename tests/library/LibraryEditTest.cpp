// Changes to an opened document through the library on the Linux engine: pages, attributes,
// annotations and OCR, each saved, reopened and read back; and what a failed save leaves.
#include "library/LibraryFixture.h"

#include "common/TestFiles.h"
#include "document/DocuWorksAnnotationClass.h"
#include "engine/ocr/Ocr.h"

#include <QFile>
#include <QDir>
#include <QPainter>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

QString CopyOf(const QString& vSample, const QString& vTo)
{
    if (vSample.isEmpty() || !QFile::copy(vSample, vTo))
        return {};
    QFile::setPermissions(vTo, QFile::ReadOwner | QFile::WriteOwner);
    return vTo;
}

} // namespace

TEST_F(LibraryTest, PagesInsertedDeletedAndTurnedStaySoAfterASave)
{
    const QString path = CopyOf(SharedSample("annotated-10-pages-gen7.xdw"), Path("ten.xdw"));
    if (path.isEmpty())
        GTEST_SKIP() << "no shared test data beside the checkout";
    const QByteArray before = testfiles::ReadBytes(path);
    {
        DocuWorksClass docuWorks;
        const auto file = docuWorks.OpenXdw(path, 1);
        file->InsertDocument(11, SharedSample("text-annotation-gen10.xdw"));
        file->DeletePage(1);
        file->RotatePage(1, 90);
        file->GetDocumentInformation();
        EXPECT_EQ(file->Pages(), 10);   // the change shows before it is saved
        file->SaveDocument();
    }
    // A save adds to the file and keeps every byte it had.
    const QByteArray after = testfiles::ReadBytes(path);
    EXPECT_TRUE(after.startsWith(before));

    DocuWorksClass docuWorks;
    const auto file = docuWorks.OpenXdw(path, 1);
    file->GetDocumentInformation();
    ASSERT_EQ(file->Pages(), 10);
    file->GetPageInformationEx(1);
    EXPECT_EQ(file->PageWidth(), 29700);
    EXPECT_EQ(file->PageHeight(), 21000);
    EXPECT_EQ(file->GetPageTextToMemory(1), QStringLiteral("2"));
    EXPECT_EQ(file->GetPageTextToMemory(10), QStringLiteral("Lorem ipsum. 吾輩は猫である。"));
    // A turned page draws landscape.
    const QImage turned = Page(path, 1, 50);
    EXPECT_GT(turned.width(), turned.height());

    // A page taken out is a document of its own.
    file->GetPage(9, Path("nine.xdw"));
    EXPECT_EQ(Pages(Path("nine.xdw")), 1);
    EXPECT_EQ(Text(Path("nine.xdw"), 1), QStringLiteral("10"));
}

TEST_F(LibraryTest, AttributesOfEveryTypeComeBackAfterASave)
{
    ASSERT_TRUE(Strokes(QSize(400, 500), false).save(Path("page.png")));
    DocuWorksClass maker;
    maker.CreateXdwFromImageFile(Path("page.png"), Path("doc.xdw"));
    {
        DocuWorksClass docuWorks;
        const auto file = docuWorks.OpenXdw(Path("doc.xdw"), 1);
        file->SetDocumentAttribute(QStringLiteral("件数"), QStringLiteral("123456789"), QStringLiteral("Integer"));
        file->SetDocumentAttribute(QStringLiteral("Title"), QStringLiteral("見積書 2026"), QStringLiteral("String"));
        file->SetDocumentAttribute(QStringLiteral("Due"), QStringLiteral("2024/02/29 13:45:00"), QStringLiteral("Date"));
        file->SetDocumentAttribute(QStringLiteral("Checked"), QStringLiteral("true"), QStringLiteral("Bool"));
        file->SetUserAttribute(QStringLiteral("memo"), QStringLiteral("社外秘 ☃"));
        file->SaveDocument();
    }
    DocuWorksClass docuWorks;
    const auto file = docuWorks.OpenXdw(Path("doc.xdw"), 1);
    EXPECT_EQ(file->GetDocumentAttribute(QStringLiteral("件数")), QStringLiteral("123456789"));
    EXPECT_EQ(file->GetDocumentAttribute(QStringLiteral("Title")), QStringLiteral("見積書 2026"));
    EXPECT_EQ(file->GetDocumentAttribute(QStringLiteral("Due")), QStringLiteral("2024/02/29 13:45:00"));
    EXPECT_EQ(file->GetDocumentAttribute(QStringLiteral("Checked")), QStringLiteral("True"));
    EXPECT_EQ(file->GetUserAttribute(QStringLiteral("memo")), QStringLiteral("社外秘 ☃"));
    EXPECT_EQ(file->GetDocumentAttribute(QStringLiteral("absent")), QString());
    file->DeleteDocumentAttribute(QStringLiteral("Title"));
    EXPECT_EQ(file->GetDocumentAttribute(QStringLiteral("Title")), QString());
    // The page is untouched by all of it.
    EXPECT_EQ(Pages(Path("doc.xdw")), 1);
}

TEST_F(LibraryTest, AnnotationsAddedAreSavedReadAndDrawn)
{
    const QString path = CopyOf(SharedSample("blank-1-page-gen7.xdw"), Path("blank.xdw"));
    if (path.isEmpty())
        GTEST_SKIP() << "no shared test data beside the checkout";
    {
        DocuWorksClass docuWorks;
        const auto file = docuWorks.OpenXdw(path, 1);
        const auto text = file->AddTextAnnotation(1, 2000, 3000);
        text->SetProperty(QStringLiteral("Text"), QStringLiteral("確認済み approved"));
        file->AddRectAnnotation(1, 5000, 10000, 8000, 4000);
        file->AddLineAnnotation(1, 2000, 20000, 15000, 0);
        file->SaveDocument();
    }
    DocuWorksClass docuWorks;
    const auto file = docuWorks.OpenXdw(path, 1);
    EXPECT_TRUE(file->GetPageTextToMemory(1).contains(QStringLiteral("確認済み approved")));
    file->GetAllAnnotation();
    SDC list = file->RefDwAnnotationData();
    ASSERT_EQ(list->Count(), 3);
    QStringList types;
    for (list->TopData(); !list->EndOfData(); list->NextData())
        types << file->RefDwAnnotation()->AnnotationType();
    EXPECT_EQ(types, (QStringList{QStringLiteral("TEXT"), QStringLiteral("RECTANGLE"), QStringLiteral("STRAIGHTLINE")}));

    // The rectangle's frame is drawn where it was put: its left edge at 50 mm, 100-140 mm down.
    const QImage page = Page(path, 1, 100);
    const int x = 5000 * 100 / 2540, y = 12000 * 100 / 2540;
    bool inked = false;
    for (int dx = -3; dx <= 3; ++dx)
        inked = inked || qGray(page.pixel(x + dx, y)) < 200;
    EXPECT_TRUE(inked);
}

TEST_F(LibraryTest, WhatTheFormatDoesNotShowIsRefusedWithAReason)
{
    ASSERT_TRUE(Strokes(QSize(200, 200), false).save(Path("page.png")));
    DocuWorksClass docuWorks;
    docuWorks.CreateXdwFromImageFile(Path("page.png"), Path("doc.xdw"));
    docuWorks.SetProtectOpenPass(QStringLiteral("secret"));
    const QString protect = Raised([&] { docuWorks.ProtectDocument(Path("doc.xdw"), Path("locked.xdw")); });
    EXPECT_TRUE(protect.startsWith(QStringLiteral("ProtectDocument : "))) << protect.toStdString();
    EXPECT_TRUE(protect.contains(QStringLiteral("保護"))) << protect.toStdString();
    EXPECT_FALSE(QFile::exists(Path("locked.xdw")));

    const auto file = docuWorks.OpenXdw(Path("doc.xdw"), 1);
    const QString original = Raised([&] { file->InsertOriginalData(1, Path("page.png")); });
    EXPECT_TRUE(original.contains(QStringLiteral("原本データ"))) << original.toStdString();
}

TEST_F(LibraryTest, FailedSaveOnAFullDiskLeavesTheDocumentAsItWas)
{
    ASSERT_TRUE(Strokes(QSize(1700, 2200), true).save(Path("page.png")));
    DocuWorksClass maker;
    maker.SetCompress(QStringLiteral("LOSSLESS"));
    maker.CreateXdwFromImageFile(Path("page.png"), Path("doc.xdw"));
    const QByteArray before = testfiles::ReadBytes(Path("doc.xdw"));

    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        // The disk is "full" a little past what the file holds now: the save cannot fit.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{static_cast<rlim_t>(before.size() / 2), static_cast<rlim_t>(before.size() / 2)};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        DocuWorksClass docuWorks;
        const auto file = docuWorks.OpenXdw(Path("doc.xdw"), 1);
        file->RotatePage(1, 180);
        const QString failed = Raised([&] { file->SaveDocument(); });
        ::_exit(failed.startsWith(QStringLiteral("SaveDocument : ")) ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(testfiles::ReadBytes(Path("doc.xdw")), before);
    EXPECT_EQ(QDir(dir_.path()).entryList(QDir::Files).size(), 2);   // no temporary left behind
}

TEST_F(LibraryTest, RecognisedTextIsKeptInTheDocument)
{
    if (!ocr::Available(QStringLiteral("ENGLISH")))
        GTEST_SKIP() << "no Tesseract English data";
    QImage scan(QSize(1700, 600), QImage::Format_RGB32);
    scan.fill(Qt::white);
    {
        QPainter painter(&scan);
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(80);
        painter.setFont(font);
        painter.setPen(Qt::black);
        painter.drawText(QPoint(100, 250), QStringLiteral("Quarterly invoice 2026"));
    }
    scan.setDotsPerMeterX(11811);   // 300 dpi
    scan.setDotsPerMeterY(11811);
    ASSERT_TRUE(scan.save(Path("scan.png")));
    DocuWorksClass maker;
    maker.SetCompress(QStringLiteral("LOSSLESS"));
    maker.CreateXdwFromImageFile(Path("scan.png"), Path("scan.xdw"));
    {
        DocuWorksClass docuWorks;
        const auto file = docuWorks.OpenXdw(Path("scan.xdw"), 1);
        file->Ocr().language = QStringLiteral("ENGLISH");
        file->ApplyOcrV7(1);
        file->SaveDocument();
    }
    const QString text = Text(Path("scan.xdw"), 1);
    EXPECT_TRUE(text.contains(QStringLiteral("invoice"))) << text.toStdString();
    DocuWorksClass docuWorks;
    const auto file = docuWorks.OpenXdw(Path("scan.xdw"), 1);
    file->GetTextPosition(1);
    EXPECT_GE(file->TextPosition()->Count(), 3);
}
