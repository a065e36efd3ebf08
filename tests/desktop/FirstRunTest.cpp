// A first start as a new user has it: no settings of their own, the shipped file beside the
// program (this test program is built beside it), real key events on the real window.
#include "common/PagePicture.h"
#include "common/RecordingPresenter.h"
#include "common/TiffWriter.h"
#include "viewer/MarnoquillClass.h"
#include "viewer/PagePane.h"
#include "viewer/TabStrip.h"
#include "viewer/frmMain.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QMenu>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

namespace {

QByteArray Digest(const QString& vPath)
{
    QFile file(vPath);
    return file.open(QIODevice::ReadOnly) ? QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256)
                                          : QByteArray();
}

int PageShown(frmMain& vForm)
{
    PagePane* pane = vForm.LEAD(4);
    return pane->HasBitmap() ? pagepicture::Read(pane->Bitmap()) : 0;
}

} // namespace

TEST(FirstRun, ShippedSettingsGiveAWindowThatTurnsPagesByKey)
{
    const QString shipped = QCoreApplication::applicationDirPath() + QStringLiteral("/Marnoquill.ini");
    ASSERT_TRUE(QFile::exists(shipped)) << "the default settings are built beside the program";
    const QByteArray shippedDigest = Digest(shipped);

    QTemporaryDir dir;
    const QByteArray saved = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", dir.filePath(QStringLiteral("config")).toLocal8Bit());
    const auto restore = qScopeGuard([&] { qputenv("XDG_CONFIG_HOME", saved); });
    ScopedRecordingPresenter shown;

    const QString tiff = dir.filePath(QStringLiteral("five.tif"));
    ASSERT_TRUE(tiffwriter::WriteNumbered(tiff, 5, tiffwriter::Kind::BilevelG4, QSize(340, 440)));
    MarnoquillClass app(QStringList{QStringLiteral("marnoquill"), tiff});
    frmMain* w = app.MainForm();
    ASSERT_TRUE(w);
    EXPECT_EQ(app.FailedStep(), QString());
    EXPECT_EQ(shown.Count(), 0);

    // The first window is the shipped one, not the toolkit's small default.
    EXPECT_NEAR(w->width(), 1200, 40);
    EXPECT_NEAR(w->height(), 850, 40);
    EXPECT_EQ(w->PopupMenu()->actions().size(), 8);
    // Pages are painted whole, and the size bar says so.
    EXPECT_TRUE(w->Button(QStringLiteral("DISPSIZE:1"))->isChecked());

    w->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(w));
    QWindow* native = w->windowHandle();
    ASSERT_EQ(PageShown(*w), 1);
    QTest::keyClick(native, Qt::Key_Right);
    EXPECT_EQ(PageShown(*w), 2);
    QTest::keyClick(native, Qt::Key_Space);
    EXPECT_EQ(PageShown(*w), 3);
    QTest::keyClick(native, Qt::Key_Backspace);
    EXPECT_EQ(PageShown(*w), 2);
    // The same file again is refused: the duplicate rule is on from the start.
    app.FileOpen(tiff, true);
    EXPECT_EQ(w->tabMain()->Count(), 1);

    // The first save goes to the user's folder; the shipped file stays as it was.
    w->close();
    EXPECT_TRUE(QFile::exists(dir.filePath(QStringLiteral("config/Ombrelark/Marnoquill/Marnoquill.ini"))));
    EXPECT_EQ(Digest(shipped), shippedDigest);
}
