// The engine object as the document classes and the command line meet it: documents built in
// the real format, opened from real files, queried, drawn and refused with the runtime's texts.
#include "common/TestFiles.h"
#include "document/DocuWorksClass.h"
#include "document/DocuWorksFileClass.h"
#include "document/XdwApi.h"
#include "engine/XdwBuilder.h"
#include "engine/XdwEngine.h"
#include "support/AppError.h"
#include "support/CommonLibClass.h"

#include <QColor>
#include <QPainter>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace xdwtest;

namespace {

class EngineTest : public ::testing::Test {
protected:
    QString Write(const QString& vName, const QByteArray& vBytes)
    {
        const QString path = dir_.filePath(vName);
        testfiles::WriteBytes(path, vBytes);
        return path;
    }
    // Opens and selects; the test fails when the file does not open.
    void Open(const QString& vPath)
    {
        engine_.OpenDocument(vPath, 1);
        ASSERT_EQ(engine_.LastResult(), 0) << engine_.LastReason().toStdString();
        engine_.SelectDocumentHandle(engine_.ReadDocumentHandle());
    }
    QRgb PixelAt(qint32 vHandle, int vX, int vY) const
    {
        return engine_.HandleImage(vHandle)->pixel(vX, vY);
    }

    QTemporaryDir dir_;
    XdwEngine engine_;
};

QImage Halves(QColor vLeft, QColor vRight, QSize vSize = QSize(200, 280))
{
    QImage image(vSize, QImage::Format_RGB32);
    QPainter p(&image);
    p.fillRect(0, 0, vSize.width() / 2, vSize.height(), vLeft);
    p.fillRect(vSize.width() / 2, 0, vSize.width() - vSize.width() / 2, vSize.height(), vRight);
    return image;
}

bool Near(QRgb vPixel, QColor vColour)
{
    return qAbs(qRed(vPixel) - vColour.red()) < 40 && qAbs(qGreen(vPixel) - vColour.green()) < 40
        && qAbs(qBlue(vPixel) - vColour.blue()) < 40;
}

} // namespace

TEST_F(EngineTest, BuiltDocumentsAnswerTheirDocumentAndPageQueries)
{
    for (bool compress : {true, false}) {
        for (int generation : {7, 10}) {
            PageSpec landscape{29700, 21000, {}, {{0x8011, 100, 200, 3000, 800, QStringLiteral("見出し"), {}, 0}}};
            const QString path = Write(QStringLiteral("a.xdw"),
                                       Document({PageSpec{}, landscape}, Options(generation, compress)));
            Open(path);
            engine_.GetDocumentInformation();
            ASSERT_EQ(engine_.LastResult(), 0);
            EXPECT_EQ(engine_.Pages(), 2);
            EXPECT_EQ(engine_.Version(), generation);
            EXPECT_EQ(engine_.DocumentType(), 0);
            EXPECT_EQ(engine_.Documents(), 1);
            engine_.GetPageInformationEx(2);
            ASSERT_EQ(engine_.LastResult(), 0);
            EXPECT_EQ(engine_.PageWidth(), 29700);
            EXPECT_EQ(engine_.PageHeight(), 21000);
            EXPECT_EQ(engine_.PageType(), 0);   // no content of its own
            EXPECT_EQ(engine_.PageAnnotations(), 1);
            engine_.GetPageColorInformation(1);   // blank: nothing on it can be in colour
            EXPECT_EQ(engine_.PageColor(), 0);
            EXPECT_EQ(engine_.PageImageDepth(), 1);
            EXPECT_EQ(engine_.GetPageTextToMemory(2), QStringLiteral("見出し"));
            engine_.GetPageInformation(3);
            EXPECT_EQ(engine_.LastResult(), XdwResult::InvalidArg);
            engine_.CloseSelectedDocument();
            EXPECT_EQ(engine_.LastResult(), 0);
        }
    }
}

TEST_F(EngineTest, AnnotationTextComesInReadingOrder)
{
    // Added footer first, then the title, then two notes side by side on one line.
    PageSpec page;
    page.annotations = {{0x8011, 1000, 27000, 4000, 500, QStringLiteral("脚注"), {}, 0},
                        {0x8011, 1000, 1000, 9000, 800, QStringLiteral("表題"), {}, 0},
                        {0x8011, 11000, 5000, 3000, 500, QStringLiteral("右"), {}, 0},
                        {0x8011, 1000, 5000, 3000, 500, QStringLiteral("左"), {}, 0}};
    Open(Write(QStringLiteral("o.xdw"), Document({page})));
    EXPECT_EQ(engine_.GetPageTextToMemory(1), QStringLiteral("表題\n左\n右\n脚注"));
    Open(Write(QStringLiteral("none.xdw"), Document({PageSpec{}})));
    EXPECT_EQ(engine_.GetPageTextToMemory(1), QString());
    EXPECT_EQ(engine_.LastResult(), XdwResult::InvalidOperation);
}

TEST_F(EngineTest, BinderCountsItsDocumentsAndTheirPages)
{
    const QString path = Write(QStringLiteral("b.xbd"),
                               File(BinderRecords({{PageSpec{}, PageSpec{}}, {PageSpec{14800, 21000, {}, {}}}}),
                                    Options(7, true, 0xC014)));
    Open(path);
    engine_.GetDocumentInformation();
    EXPECT_EQ(engine_.Pages(), 3);
    EXPECT_EQ(engine_.DocumentType(), 1);
    EXPECT_EQ(engine_.Documents(), 2);
    engine_.GetPageInformation(3);
    EXPECT_EQ(engine_.PageWidth(), 14800);
}

TEST_F(EngineTest, JpegPageDrawsInColourAndInBlackAndWhiteAtTheAskedSize)
{
    PageSpec page;
    page.content = JpegContent(Halves(Qt::red, Qt::blue), page.width, page.height);
    Open(Write(QStringLiteral("j.xdw"), Document({page})));
    engine_.GetPageInformation(1);
    EXPECT_EQ(engine_.PageType(), 1);
    engine_.GetPageColorInformation(1);
    EXPECT_EQ(engine_.PageColor(), 1);
    EXPECT_EQ(engine_.PageImageDepth(), 24);
    const qint32 colour = engine_.ConvertPageToImageHandle(1, 150, 1);
    ASSERT_EQ(engine_.LastResult(), 0) << engine_.LastReason().toStdString();
    EXPECT_EQ(engine_.BitmapWidth(), 1240);
    EXPECT_EQ(engine_.BitmapHeight(), 1754);
    EXPECT_TRUE(Near(PixelAt(colour, 300, 900), Qt::red));
    EXPECT_TRUE(Near(PixelAt(colour, 940, 900), Qt::blue));
    const qint32 mono = engine_.ConvertPageToImageHandle(1, 10, 0);
    ASSERT_EQ(engine_.LastResult(), 0);
    EXPECT_EQ(engine_.HandleImage(mono)->format(), QImage::Format_Mono);
    EXPECT_EQ(engine_.BitmapWidth(), 83);   // 21000 / 2540 * 10, rounded
    EXPECT_EQ(engine_.Handles().LiveCount(), 2);
    engine_.GlobalFree(colour);
    engine_.GlobalFree(mono);
    EXPECT_EQ(engine_.Handles().LiveCount(), 0);
    for (int dpi : {9, 601}) {
        EXPECT_EQ(engine_.ConvertPageToImageHandle(1, dpi, 1), 0);
        EXPECT_EQ(engine_.LastResult(), XdwResult::InvalidArg);
    }
}

TEST_F(EngineTest, PageDrawingKeptInAnEntryDrawsFromThere)
{
    PageSpec page;
    page.content = JpegContent(Halves(Qt::green, Qt::black), page.width, page.height);
    FileOptions options;
    options.contentInEntries = true;
    const QByteArray file = Document({page, page}, options);
    EXPECT_EQ(file.count(page.content), 2);   // in the entries, not in the records
    Open(Write(QStringLiteral("e.xdw"), file));
    const qint32 h = engine_.ConvertPageToImageHandle(2, 50, 1);
    ASSERT_EQ(engine_.LastResult(), 0) << engine_.LastReason().toStdString();
    EXPECT_TRUE(Near(PixelAt(h, 100, 300), Qt::green));
    EXPECT_TRUE(Near(PixelAt(h, 310, 300), Qt::black));
}

TEST_F(EngineTest, RotatedPictureAnnotationTurnsInsideItsBox)
{
    // An upright picture red above blue, stored turned a quarter clockwise into a wide box:
    // red must land on the right, blue on the left.
    QImage upright(100, 200, QImage::Format_RGB32);
    upright.fill(Qt::blue);
    QPainter(&upright).fillRect(0, 0, 100, 100, Qt::red);
    Annotation picture{0x803F, 2540, 2540, 10160, 5080, {}, DrawingFields(5, Jpeg(upright), 5080, 10160, false), 90};
    PageSpec page;
    page.annotations.push_back(picture);
    Open(Write(QStringLiteral("r.xdw"), Document({page})));
    const qint32 h = engine_.ConvertPageToImageHandle(1, 100, 1);
    ASSERT_EQ(engine_.LastResult(), 0) << engine_.LastReason().toStdString();
    // The box is 100..500 x 100..300 pixels at 100 dpi.
    EXPECT_TRUE(Near(PixelAt(h, 450, 200), Qt::red));
    EXPECT_TRUE(Near(PixelAt(h, 150, 200), Qt::blue));
    EXPECT_TRUE(Near(PixelAt(h, 50, 50), Qt::white));
}

TEST_F(EngineTest, FailuresCarryTheRuntimeTextsByteForByte)
{
    struct Case {
        QString name;
        QByteArray bytes;
        qint32 code;
        const char16_t* text;
    };
    QByteArray truncated = Document({PageSpec{}});
    truncated.chop(1);
    const std::vector<Case> cases = {
        {QStringLiteral("empty.xdw"), {}, XdwResult::BadFormat, u"指定されたDocuWorks文書ファイルが正しいフォーマットではありません。"},
        {QStringLiteral("text.xdw"), QByteArray("plain text, not a document\r\n").repeated(4), XdwResult::BadFormat,
         u"指定されたDocuWorks文書ファイルが正しいフォーマットではありません。"},
        {QStringLiteral("cut.xdw"), truncated, XdwResult::BadFormat, u"指定されたDocuWorks文書ファイルが正しいフォーマットではありません。"},
        {QStringLiteral("check.xdw"), Document({PageSpec{}}, Options(7, true, 0xC013, true)), XdwResult::BadFormat,
         u"指定されたDocuWorks文書ファイルが正しいフォーマットではありません。"},
        {QStringLiteral("old.xdw"), QByteArray("%XDW-1.0\r\n").repeated(10), XdwResult::NewerVersion,
         u"DocuWorksファイルのバージョンが新しいため、開くことができません。"},
    };
    for (const Case& c : cases) {
        engine_.OpenDocument(Write(c.name, c.bytes), 1);
        EXPECT_EQ(engine_.LastResult(), c.code) << c.name.toStdString();
        EXPECT_EQ(engine_.LastErrorText(), QString::fromUtf16(c.text)) << c.name.toStdString();
        EXPECT_FALSE(engine_.LastReason().isEmpty());
    }
    engine_.OpenDocument(dir_.filePath(QStringLiteral("missing.xdw")), 1);
    EXPECT_EQ(engine_.LastResult(), XdwResult::FileNotFound);
    EXPECT_EQ(engine_.LastErrorText(), QStringLiteral("入力に指定したパスのファイルが見つかりません。"));
    QDir(dir_.path()).mkdir(QStringLiteral("x.xdw"));
    engine_.OpenDocument(dir_.filePath(QStringLiteral("x.xdw")), 1);
    EXPECT_EQ(engine_.LastResult(), XdwResult::BadFormat);
}

TEST_F(EngineTest, FileLockedByAnotherHolderIsInUse)
{
    const QString path = Write(QStringLiteral("locked.xdw"), Document({PageSpec{}}));
    const int fd = ::open(path.toLocal8Bit().constData(), O_RDONLY);
    ASSERT_GE(fd, 0);
    ASSERT_EQ(::flock(fd, LOCK_EX), 0);
    engine_.OpenDocument(path, 1);
    EXPECT_EQ(engine_.LastResult(), XdwResult::FileInUse);
    EXPECT_EQ(engine_.LastErrorText(), QStringLiteral("ファイルが使用中です。"));
    ::close(fd);
    Open(path);
}

TEST_F(EngineTest, PageTooLargeToDrawIsRefusedButStillCounts)
{
    Open(Write(QStringLiteral("big.xdw"), Document({PageSpec{1000000, 1000000, {}, {}}})));
    engine_.GetDocumentInformation();
    EXPECT_EQ(engine_.Pages(), 1);
    EXPECT_EQ(engine_.ConvertPageToImageHandle(1, 600, 1), 0);
    EXPECT_EQ(engine_.LastResult(), XdwResult::OutOfMemory);
    EXPECT_EQ(engine_.Handles().LiveCount(), 0);
}

TEST_F(EngineTest, DocumentClassesOpenThroughTheEngineAndRaise6300)
{
    const auto engine = std::make_shared<XdwEngine>();
    SetXdwApiObject(engine);
    struct Restore {
        ~Restore() { SetXdwApiObject(nullptr); }
    } restore;
    const QString good = Write(QStringLiteral("good.xdw"), Document({PageSpec{}, PageSpec{}}));
    {
        DocuWorksClass docuWorks;
        EXPECT_EQ(docuWorks.DocuWorksVersion(), XdwEngine::EngineVersion());
        // No installation folders: the query says the information does not exist.
        try {
            (void)docuWorks.GetInformation(QStringLiteral("INSTALLPATH"));
            FAIL() << "an install path was answered";
        } catch (const AppError& e) {
            EXPECT_EQ(e.Description(),
                      QStringLiteral("GetInformation : 問い合わせた情報(インストール情報、属性値など)は存在しません。"));
        }
        const auto file = docuWorks.OpenXdw(good, 1);
        file->GetDocumentInformation();
        EXPECT_EQ(file->Pages(), 2);
        EXPECT_EQ(file->DocType(), QStringLiteral("DOCUMENT"));
        const qint32 handle = file->ConvertPageToImageHandle(2, 150, 1);
        EXPECT_EQ(file->BitmapWidth(), 1240);
        docuWorks.GlobalFree(handle);
        EXPECT_NO_THROW(docuWorks.Finalize());
    }
    const QString bad = Write(QStringLiteral("bad.xdw"), QByteArray(100, 'x'));
    DocuWorksClass docuWorks;
    try {
        docuWorks.OpenXdw(bad, 1);
        FAIL() << "a damaged file opened";
    } catch (const AppError& e) {
        EXPECT_EQ(e.Number(), 6300);
        EXPECT_EQ(e.Description(), QStringLiteral("OpenXdw : 指定されたDocuWorks文書ファイルが正しいフォーマットではありません。 [File=")
                                       + bad + u']');
    }
}

TEST_F(EngineTest, OpenCheckWaitsOutAHolderAndItsRetryWaitsForTheFile)
{
    const auto engine = std::make_shared<XdwEngine>();
    SetXdwApiObject(engine);
    const QByteArray good = Document({PageSpec{}});
    const QString held = Write(QStringLiteral("held.xdw"), good);
    const QString late = Write(QStringLiteral("late.xdw"), QByteArray(64, 'x'));
    int fd = ::open(held.toLocal8Bit().constData(), O_RDONLY);
    ASSERT_EQ(::flock(fd, LOCK_EX), 0);
    int pauses = 0;
    std::function<void(int)> onPause = [](int) {};
    const XdwRetryPause old = SetXdwRetryPause([&](qint32 vMs) { onPause(++pauses), (void)vMs; });
    struct Restore {
        XdwRetryPause pause;
        ~Restore()
        {
            SetXdwRetryPause(pause);
            SetXdwApiObject(nullptr);
        }
    } restore{old};
    DocuWorksClass docuWorks;

    // A holder that never lets go: every try of the open, then False.
    EXPECT_FALSE(docuWorks.OpenCheck(held));
    EXPECT_EQ(pauses, 29);
    // One that lets go during the fifth pause.
    pauses = 0;
    onPause = [&](int vPause) {
        if (vPause == 5)
            ::close(std::exchange(fd, -1));
    };
    EXPECT_TRUE(docuWorks.OpenCheck(held));

    // A file still being written: the retry tries again after real pauses until it reads.
    pauses = 0;
    onPause = [&](int vPause) {
        if (vPause == 3)
            testfiles::WriteBytes(late, good);
        CommonLibClass::SleepWait(100);
    };
    EXPECT_TRUE(docuWorks.RetryOpenCheck(late, 10));
    EXPECT_EQ(pauses, 3);
    pauses = 0;
    EXPECT_FALSE(docuWorks.RetryOpenCheck(late, 0));   // no try at all
    EXPECT_EQ(pauses, 0);
}

TEST_F(EngineTest, PartsOfPagesAndThumbnailsAreWrittenAsPictures)
{
    PageSpec page;
    page.content = JpegContent(Halves(Qt::red, Qt::blue), page.width, page.height);
    Open(Write(QStringLiteral("j.xdw"), Document({page})));
    const QString right = dir_.filePath(QStringLiteral("right.png"));
    engine_.ConvertPageToImageFileEx(1, right, 100, 1, 50, 100, 10, 20);
    ASSERT_EQ(engine_.LastResult(), 0) << engine_.LastReason().toStdString();
    const QImage part(right);
    EXPECT_EQ(part.size(), QSize(827 - 413, 117));
    EXPECT_TRUE(Near(part.pixel(20, 50), Qt::blue));
    for (auto [xs, xe] : {std::pair{50, 50}, {-1, 10}, {0, 101}, {60, 40}}) {
        engine_.ConvertPageToImageFileEx(1, right, 100, 1, xs, xe, 0, 100);
        EXPECT_EQ(engine_.LastResult(), XdwResult::InvalidArg);
    }
    // A page without a stored thumbnail gets one drawn small.
    const QString thumb = dir_.filePath(QStringLiteral("t.png"));
    engine_.ConvertPageToThumbnailImageFile(1, thumb);
    ASSERT_EQ(engine_.LastResult(), 0);
    EXPECT_EQ(QImage(thumb).size(), QSize(99, 140));
}
