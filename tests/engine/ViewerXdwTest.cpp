// The viewer's own page path on DocuWorks files drawn by our engine: the same steps as for a
// TIFF, with pages that show their numbers, so a test can tell which page a pane holds.
#include "common/PagePicture.h"
#include "common/TestFiles.h"
#include "document/XdwApi.h"
#include "engine/XdwBuilder.h"
#include "engine/XdwEngine.h"
#include "viewer/MainWindowFixture.h"

using namespace xdwtest;

namespace {

class ViewerXdwTest : public MainWindowTest {
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        SetXdwApiObject(std::make_shared<XdwEngine>());
    }
    void TearDown() override { SetXdwApiObject(nullptr); }

    QString Xdw(const QString& vName, int vPages)
    {
        std::vector<PageSpec> pages;
        for (int page = 1; page <= vPages; ++page) {
            PageSpec spec;
            spec.content = JpegContent(pagepicture::Draw(page, QSize(620, 877)), spec.width, spec.height);
            pages.push_back(spec);
        }
        FileOptions options;
        options.contentInEntries = true;
        const QString path = dir.filePath(vName);
        testfiles::WriteBytes(path, Document(pages, options));
        return path;
    }
};

} // namespace

TEST_F(ViewerXdwTest, PagesTurnAndSpreadAsForATiff)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    w.InitialOpenFile(Xdw(QStringLiteral("見本.xdw"), 5), true);
    EXPECT_EQ(PageIn(4), 1);
    EXPECT_EQ(Panel(2), QStringLiteral("1/5"));
    // Drawn at the settings' 150 dpi: an A4 page of 1240 x 1754 pixels.
    EXPECT_EQ(form->LEAD(4)->Bitmap().size(), QSize(1240, 1754));
    w.NextPage();
    EXPECT_EQ(PageIn(4), 2);
    w.txtSkipPage()->setText(QStringLiteral("9"));
    w.NextPage();
    EXPECT_EQ(PageIn(4), 5);
    EXPECT_EQ(Panel(2), QStringLiteral("5/5"));

    w.txtSkipPage()->setText(QStringLiteral("9"));
    w.PreviousPage();
    w.SetDoubleDisp(QStringLiteral("2"));
    EXPECT_EQ(PageIn(2), 1);
    EXPECT_EQ(PageIn(3), 2);
    w.NextPage();
    EXPECT_EQ(PageIn(2), 3);
    EXPECT_EQ(PageIn(3), 4);
    // Every handle went back to the engine after its page was shown.
    EXPECT_EQ(XdwApiObject()->Handles().LiveCount(), 0);
}

TEST_F(ViewerXdwTest, DamagedDocumentLeavesAnEmptyTabAndTheNextOneOpens)
{
    AddWindowGroup(context.DetailSet);
    frmMain& w = Window();
    const QString path = dir.filePath(QStringLiteral("壊れた.xdw"));
    testfiles::WriteBytes(path, QByteArray(200, '\x60'));
    // The window's intake ends silently on a file it cannot show, as it does for a bad TIFF.
    w.InitialOpenFile(path, true);
    EXPECT_FALSE(form->LEAD(4)->HasBitmap());
    EXPECT_EQ(Tabs(), 1);
    EXPECT_EQ(XdwApiObject()->LastResult(), XdwResult::BadFormat);
    w.InitialOpenFile(Xdw(QStringLiteral("good.xdw"), 2), true);
    EXPECT_EQ(PageIn(4), 1);
    EXPECT_EQ(Tabs(), 2);
}
