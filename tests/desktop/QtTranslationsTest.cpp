// Qt's own dialogs in Japanese, where the translation package is installed.
#include "viewer/QtTranslations.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QLibraryInfo>
#include <QPushButton>
#include <gtest/gtest.h>

TEST(QtTranslations, StandardButtonsSpeakJapanese)
{
    const QString catalogue = QLibraryInfo::path(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_ja.qm");
    if (!QFile::exists(catalogue))
        GTEST_SKIP() << "qt6-translations-l10n is not installed";
    ASSERT_TRUE(InstallQtJapanese(*QCoreApplication::instance()));
    QDialogButtonBox box(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    EXPECT_EQ(box.button(QDialogButtonBox::Cancel)->text(), QStringLiteral("キャンセル"));
    // The translator stays for the rest of this test program: every later dialog is Japanese too.
}
