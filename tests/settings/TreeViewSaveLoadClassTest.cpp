// The page tree kept in two trees of the store and in two sections of a settings file.
#include "settings/TreeViewSaveLoadClass.h"
#include "support/Cp932.h"

#include "common/RecordingPresenter.h"
#include "common/TestFiles.h"

#include <QTemporaryDir>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

using Role = TreeViewSaveLoadClass::NodeRole;

QTreeWidgetItem* Node(QTreeWidget& vView, QTreeWidgetItem* vParent, const char* vKey, const char* vText, int vImage)
{
    QTreeWidgetItem* n = TreeViewSaveLoadClass::AddNode(&vView, vParent, QString::fromUtf8(vKey), QString::fromUtf8(vText));
    n->setData(0, Role::ImageRole, vImage);
    return n;
}

// Two nodes named "設定" under different parents: the path mode keeps them apart.
void Fill(QTreeWidget& vView)
{
    QTreeWidgetItem* a = Node(vView, nullptr, "A", "表示", 1);
    Node(vView, a, "S1", "設定", 2)->setData(0, Role::TagRole, QStringLiteral("t"));
    QTreeWidgetItem* b = Node(vView, nullptr, "B", "操作", 3);
    Node(vView, b, "S2", "設定", 4);
    vView.expandItem(a);
}

QString Shape(QTreeWidget& vView)
{
    QString out;
    for (QTreeWidgetItemIterator it(&vView); *it; ++it) {
        int depth = 0;
        for (QTreeWidgetItem* p = (*it)->parent(); p; p = p->parent())
            ++depth;
        out += QString(depth, u' ') + (*it)->text(0) + QLatin1Char('/') +
               (*it)->data(0, Role::ImageRole).toString() + QLatin1Char('/') +
               (*it)->data(0, Role::TagRole).toString() + ((*it)->isExpanded() ? QStringLiteral("+\n") : QStringLiteral("\n"));
    }
    return out;
}

} // namespace

TEST(TreeViewSaveLoadClass, PathModeRoundTripsStructureThroughTheFile)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("t.ini"));
    QTreeWidget view;
    Fill(view);
    TreeViewSaveLoadClass saver;
    saver.SetTreeView(&view);
    saver.Save(true);
    saver.FileSave(file);

    // The sections as the file holds them: keys are whole paths, names their last piece.
    const QByteArray bytes = testfiles::ReadBytes(file);
    const QString text = Cp932::Decode(bytes);
    EXPECT_TRUE(text.startsWith(QStringLiteral(
        "[!LABEL_TreeView]\t8\r\n"
        "[!Thread]\t\\A\\\tA\r\n"
        "\tText\t表示\r\n"
        "\t[!Thread]\t\\A\\S1\\\tS1\r\n"
        "\t\tText\t設定\r\n"
        "[!Thread]\t\\B\\\tB\r\n")))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral(
        "[!LABEL_TreeViewProperty]\t24\r\n"
        "[!Thread]\t\\A\\\tA\r\n"
        "\tImage\t1\r\n"
        "\tSelectedImage\t\r\n"
        "\tTag\t\r\n"
        "\tExpandedImage\t\r\n"
        "\tExpanded\tTrue\r\n")))
        << text.toStdString();

    TreeViewSaveLoadClass loader;
    loader.FileLoad(file);
    QTreeWidget back;
    loader.SetTreeView(&back);
    loader.Load();
    EXPECT_EQ(Shape(back), Shape(view));
    EXPECT_EQ(Shape(back), QStringLiteral("表示/1/+\n 設定/2/t\n操作/3/\n 設定/4/\n"));
}

TEST(TreeViewSaveLoadClass, FlatModeAndExpandedStateByKey)
{
    QTreeWidget view;
    Fill(view);
    TreeViewSaveLoadClass saver;
    saver.SetTreeView(&view);
    saver.Save(false);
    EXPECT_EQ(saver.TreeData()->GetAllDataKey(), QStringLiteral("A,S1,B,S2"));

    TreeViewSaveLoadClass expanded;
    expanded.SaveTreeViewExpanded(&view);
    EXPECT_EQ(expanded.PropertyData()->GetAllDataValue(), QStringLiteral("True,False,False,False"));
    view.collapseAll();
    view.topLevelItem(1)->setExpanded(true);
    expanded.LoadTreeViewExpanded(&view);
    EXPECT_TRUE(view.topLevelItem(0)->isExpanded());
    EXPECT_FALSE(view.topLevelItem(1)->isExpanded());
}

TEST(TreeViewSaveLoadClass, EmptyViewAndMissingView)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("t.ini"));
    QTreeWidget view;
    TreeViewSaveLoadClass saver;
    saver.SetTreeView(&view);
    saver.Save(true);
    saver.FileSave(file);
    EXPECT_EQ(testfiles::ReadBytes(file), QByteArray("[!LABEL_TreeView]\t0\r\n[!LABEL_TreeViewProperty]\t0\r\n"));

    ScopedRecordingPresenter shown;
    TreeViewSaveLoadClass none;
    none.SaveTreeViewExpanded(nullptr);
    EXPECT_EQ(shown.Last().text, QStringLiteral("ツリービューの参照が指定されていません。"));
}
