// marnoquill-doc as a user runs it: its printed lines, its files and its one-line errors.
#include "common/DocRun.h"
#include "common/TestFiles.h"
#include "engine/XdwBuilder.h"

#include <QImage>
#include <gtest/gtest.h>
#include <tiffio.h>

using namespace xdwtest;

namespace {

// Qt reads PNG and JPEG here; TIFF goes through libtiff as everywhere else in the program.
QSize PictureSize(const QString& vPath)
{
    if (!vPath.endsWith(QStringLiteral(".tif")))
        return QImage(vPath).size();
    TIFF* tiff = TIFFOpen(vPath.toLocal8Bit().constData(), "r");
    if (!tiff)
        return {};
    uint32_t w = 0, h = 0;
    TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &w);
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &h);
    TIFFClose(tiff);
    return QSize(static_cast<int>(w), static_cast<int>(h));
}

class DocCommandTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        PageSpec page;
        page.content = JpegContent(QImage(100, 141, QImage::Format_RGB32), page.width, page.height);
        page.annotations.push_back({0x8011, 1000, 1000, 5000, 1000, QStringLiteral("一頁目"), {}, 0});
        PageSpec small{14800, 21000, {}, {}};
        path_ = dir_.filePath(QStringLiteral("d.xdw"));
        testfiles::WriteBytes(path_, Document({page, small}));
    }
    QTemporaryDir dir_;
    QString path_;
};

} // namespace

TEST_F(DocCommandTest, InfoListsEveryPageOnItsOwnLine)
{
    const DocOutcome o = RunDoc({QStringLiteral("info"), path_});
    EXPECT_EQ(o.code, 0);
    EXPECT_EQ(o.out, QStringLiteral("pages: 2\n"
                                    "page 1: 210.00 x 297.00 mm, 600 x 600 dpi, image, rotation 0, annotations 1\n"
                                    "page 2: 148.00 x 210.00 mm, 600 x 600 dpi, blank, rotation 0, annotations 0\n"));
    EXPECT_TRUE(o.err.isEmpty());
}

TEST_F(DocCommandTest, TextOfOnePageOrOfAll)
{
    EXPECT_EQ(RunDoc({QStringLiteral("text"), path_, QStringLiteral("1")}).out, QStringLiteral("一頁目\n"));
    // The second page has no text: an empty line, not an error.
    const DocOutcome all = RunDoc({QStringLiteral("text"), path_});
    EXPECT_EQ(all.code, 0);
    EXPECT_EQ(all.out, QStringLiteral("一頁目\n\n"));
}

TEST_F(DocCommandTest, RenderWritesThePictureByItsEnding)
{
    for (const char* ending : {"png", "tif", "jpg"}) {
        const QString out = dir_.filePath(QStringLiteral("p.") + QLatin1StringView(ending));
        const DocOutcome o = RunDoc({QStringLiteral("render"), path_, QStringLiteral("2"), QStringLiteral("--dpi"),
                               QStringLiteral("100"), QStringLiteral("--mono"), QStringLiteral("-o"), out});
        ASSERT_EQ(o.code, 0) << o.err.toStdString();
        EXPECT_EQ(PictureSize(out), QSize(583, 827)) << ending;
    }
}

TEST_F(DocCommandTest, PdfHasOnePagePerDocumentPage)
{
    const QString out = dir_.filePath(QStringLiteral("d.pdf"));
    const DocOutcome o = RunDoc({QStringLiteral("pdf"), path_, QStringLiteral("-o"), out});
    ASSERT_EQ(o.code, 0) << o.err.toStdString();
    const QByteArray pdf = testfiles::ReadBytes(out);
    EXPECT_TRUE(pdf.startsWith("%PDF"));
    EXPECT_EQ(pdf.count("/Type /Page\n") + pdf.count("/Type /Page\r") + pdf.count("/Type /Page "), 2);
    // Each at its own size in points: A4, then A5.
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 595"));
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 419") || pdf.contains("/MediaBox [0 0 420"));
}

TEST_F(DocCommandTest, FailuresAreOneLineWithNumberAndText)
{
    const QString bad = dir_.filePath(QStringLiteral("bad.xdw"));
    testfiles::WriteBytes(bad, QByteArray(64, '\x60'));
    const std::vector<std::pair<QStringList, QString>> cases = {
        {{QStringLiteral("info"), bad},
         QStringLiteral("marnoquill-doc: error 6300: OpenXdw : 指定されたDocuWorks文書ファイルが正しいフォーマットではありません。 [File=")
             + bad + QStringLiteral("] (not a DocuWorks header)\n")},
        // A failure while the document is open keeps its reason through the close.
        {{QStringLiteral("render"), path_, QStringLiteral("1"), QStringLiteral("-o"), dir_.filePath(QStringLiteral("no/p.png"))},
         QStringLiteral("marnoquill-doc: error 6300: ConvertPageToImageFile : 書き込み中にエラーが発生しました。 (cannot write ")
             + dir_.filePath(QStringLiteral("no/p.png"))
             + QStringLiteral(": Cannot open device for writing: No such file or directory)\n")},
        {{QStringLiteral("text"), path_, QStringLiteral("3")},
         QStringLiteral("marnoquill-doc: no page 3 (the document has 2)\n")},
        {{QStringLiteral("render"), path_, QStringLiteral("1"), QStringLiteral("-o"), QStringLiteral("x.bmpx")},
         QStringLiteral("marnoquill-doc: the output must end in .png, .tif, .tiff, .jpg or .jpeg: x.bmpx\n")},
    };
    for (const auto& [arguments, expected] : cases) {
        const DocOutcome o = RunDoc(arguments);
        EXPECT_EQ(o.code, 1);
        EXPECT_EQ(o.err, expected);
        EXPECT_TRUE(o.out.isEmpty());
    }
    EXPECT_EQ(RunDoc({QStringLiteral("frobnicate"), path_}).code, 1);
    EXPECT_EQ(RunDoc({}).code, 1);
}
