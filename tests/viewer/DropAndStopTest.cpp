// Files dropped on the window, the shown file dragged out of it, and a close request that stops
// a long folder read: all through real Qt events on offscreen windows.

#include "viewer/IntakeFixture.h"

#include <QDialog>
#include <QDrag>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPointer>
#include <QTest>
#include <QWindow>

namespace {

using namespace Qt::StringLiterals;

class DropAndStopTest : public IntakeTest {
protected:
    // Sends the events of a drag that enters the window and drops, as the system delivers them.
    static bool Drop(QWidget& vTarget, QMimeData& vData, Qt::DropAction* vAction = nullptr)
    {
        const QPoint at = vTarget.rect().center();
        QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, &vData, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&vTarget, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent drop(QPointF(at), enter.dropAction(), &vData, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&vTarget, &drop);
        if (vAction)
            *vAction = drop.dropAction();
        return drop.isAccepted();
    }
};

TEST_F(DropAndStopTest, DroppedFilesOpenInTheSortedOrderAndFoldersStayClosed)
{
    const QString z = File(u"z.tif"_s);
    const QString m = File(u"m.tif"_s);
    File(u"dropped/inner.tif"_s);
    testfiles::WriteBytes(dir.filePath(u"notes.txt"_s), "x");
    SetSort(true, true, true);
    frmMain& w = Window();

    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(z), QUrl::fromLocalFile(dir.filePath(u"dropped"_s)),
                  QUrl(u"https://example.org/x.tif"_s), QUrl::fromLocalFile(m),
                  QUrl::fromLocalFile(dir.filePath(u"notes.txt"_s))});
    Qt::DropAction action = Qt::IgnoreAction;
    ASSERT_TRUE(Drop(w, data, &action));
    EXPECT_EQ(action, Qt::CopyAction);  // the file manager keeps its files
    EXPECT_EQ(Captions(), QStringList({u"m.tif"_s, u"z.tif"_s}));
    EXPECT_EQ(w.tabMain()->SelectedIndex(), 0);

    // Text that names no local file is refused at the door.
    QMimeData text;
    text.setText(z);
    EXPECT_FALSE(Drop(w, text));
    QMimeData remote;
    remote.setUrls({QUrl(u"https://example.org/x.tif"_s)});
    EXPECT_FALSE(Drop(w, remote));
    EXPECT_EQ(Tabs(), 2);
}

TEST_F(DropAndStopTest, TheShownFileDragsOutAsACopyAndNothingDragsWithoutATab)
{
    const QString shownFile = File(u"shown.tif"_s);
    frmMain& w = Window();
    w.setGeometry(0, 0, 780, 340);  // clear of the target on the 800 x 600 offscreen screen
    QWidget* picture = w.findChild<QWidget*>(u"picDragFile"_s);
    ASSERT_TRUE(picture);

    // While the drag runs, its data is what a file manager would receive on the drop. The
    // offscreen platform delivers no drop to another window, so the test reads the drag itself
    // and then lets go.
    QWindow* from = w.windowHandle();
    const QPoint pressAt = picture->mapTo(&w, QPoint(4, 4));
    const QPoint movedTo = pressAt + QPoint(2 * QApplication::startDragDistance(), 0);
    QList<QUrl> urls;
    Qt::DropActions offered;
    int drags = 0;
    auto dragOut = [&] {
        QTest::mousePress(from, Qt::LeftButton, {}, pressAt);
        // Armed after the press, so that it runs in the loop of the drag the move starts.
        QTimer::singleShot(0, picture, [&] {
            if (auto* drag = picture->findChild<QDrag*>()) {
                ++drags;
                urls = drag->mimeData()->urls();
                offered = drag->supportedActions();
            }
            QTest::mouseRelease(from, Qt::LeftButton, {}, movedTo);
        });
        QTest::mouseMove(from, movedTo);
        QTest::mouseRelease(from, Qt::LeftButton, {}, movedTo);
        QCoreApplication::processEvents();
    };

    dragOut();
    EXPECT_EQ(drags, 0);  // nothing shown: the drag never starts

    w.InitialOpenFile(shownFile, true);
    dragOut();
    EXPECT_EQ(drags, 1);
    EXPECT_EQ(urls, QList<QUrl>({QUrl::fromLocalFile(shownFile)}));
    EXPECT_EQ(offered, Qt::CopyAction);
}

TEST_F(DropAndStopTest, AClosingRequestStopsAFolderReadAndTheWindowStays)

{
    constexpr int kFiles = 120;
    for (int i = 0; i < kFiles; ++i)
        File(u"many/f%1.tif"_s.arg(i, 3, 10, QLatin1Char('0')));
    AddReadSetting(u"Read:大量"_s, dir.filePath(u"many"_s), false, u"*.tif"_s);
    frmMain& w = Window();

    // The user closes the window once twenty tabs are there; the read pumps events every ten.
    int tabsAtClose = -1;
    QTimer poll;
    poll.setInterval(0);
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        if (Tabs() >= 20) {
            poll.stop();
            tabsAtClose = Tabs();
            w.windowHandle()->close();
        }
    });
    poll.start();
    w.ReadFolder(u"Read:大量"_s);

    ASSERT_GE(tabsAtClose, 20);
    ASSERT_EQ(shown.Count(), 1);
    EXPECT_EQ(shown.Last().text, u"ファイルの読み込み(タブ追加)を中断しました。"_s);
    EXPECT_LE(Tabs(), tabsAtClose + 1);  // stopped at the next row
    EXPECT_EQ(w.tabMain()->Bar()->tabText(0), u"f000.tif"_s);
    EXPECT_TRUE(w.isVisible());
    EXPECT_FALSE(w.Reading());
    EXPECT_FALSE(QFile::exists(w.FileListDbPath()));

    // The next read is not stopped by the old request, nor disturbed by a second read asked for
    // from inside it: the folder dialog doesn't even open.
    w.AllTabClose();
    bool dialogShown = false;
    QPointer<QTimer> watch;
    QObject::disconnect(&poll, nullptr, nullptr, nullptr);
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        if (Tabs() >= 20) {
            poll.stop();
            watch = WhenDialogUp<QDialog>([&](QDialog* vDialog) {
                dialogShown = true;
                vDialog->reject();
            });
            w.FolderOpenDialog();
        }
    });
    poll.start();
    w.ReadFolder(u"Read:大量"_s);
    QCoreApplication::processEvents();
    EXPECT_FALSE(dialogShown);
    delete watch.data();
    EXPECT_EQ(Tabs(), kFiles);
    // A close now closes.
    EXPECT_TRUE(w.close());
    EXPECT_FALSE(w.isVisible());
}

} // namespace
