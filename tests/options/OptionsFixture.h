#pragma once
// The options dialog on the offscreen platform over a settings tree and file of the test's own,
// with the real action lists and trigger table behind it, driven by real clicks.

#include "commands/AppActionClass.h"
#include "commands/AppCommandListClass.h"
#include "options/frmOption.h"
#include "settings/DataSaveLoadClass.h"

#include "common/RecordingPresenter.h"
#include "common/TestFiles.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>
#include <gtest/gtest.h>

#include <memory>

class OptionsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        path = dir.filePath(QStringLiteral("Marnoquill.ini"));
    }

    void TearDown() override { dialog.reset(); }

    frmOption& Open()
    {
        dialog.reset();
        action = std::make_unique<AppActionClass>(detailSet);
        commands = std::make_unique<AppCommandListClass>();
        commands->RefDetailSet(detailSet);
        dialog = std::make_unique<frmOption>(detailSet, path, *action, *commands, nullptr);
        dialog->show();
        return *dialog;
    }

    template <class T = QWidget>
    T* C(const char* vName, int vIndex = -1) const
    {
        T* w = dialog->Ctl<T>(QString::fromUtf8(vName), vIndex);
        EXPECT_TRUE(w) << vName;
        return w;
    }

    // A click on the tree node of that text, as the user picks a page.
    void Page(const char* vNode)
    {
        auto* tree = C<QTreeWidget>("TreeView1");
        const QList<QTreeWidgetItem*> found = tree->findItems(QString::fromUtf8(vNode), Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << vNode;
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(found.first()).center());
    }

    void Click(const char* vName, int vIndex = -1) { QTest::mouseClick(C<QPushButton>(vName, vIndex), Qt::LeftButton); }
    void Type(const char* vName, const QString& vText) { C<QLineEdit>(vName)->setText(vText); }
    void Choose(const char* vName, const QString& vText)
    {
        auto* combo = C<QComboBox>(vName);
        const int at = combo->findText(vText);
        ASSERT_GE(at, 0) << vText.toStdString();
        combo->setCurrentIndex(at);
    }
    // Selects a row of a list view by a click on it.
    void Row(const char* vList, int vRow)
    {
        auto* list = C<QTreeWidget>(vList);
        QTreeWidgetItem* item = list->topLevelItem(vRow);
        ASSERT_TRUE(item);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
    }
    QStringList Rows(const char* vList, int vColumn = 0) const
    {
        QStringList out;
        auto* list = C<QTreeWidget>(vList);
        for (int i = 0; i < list->topLevelItemCount(); ++i)
            out.append(list->topLevelItem(i)->text(vColumn));
        return out;
    }
    QString LastMessage() const { return shown.Last().text; }

    void SaveFile()
    {
        DataSaveLoadClass io;
        io.SetData(detailSet);
        io.Save(path, QStringLiteral("DetailSet"));
    }

    QTemporaryDir dir;
    QString path;
    SDC detailSet = std::make_shared<StructuredDataClass>();
    std::unique_ptr<AppActionClass> action;
    std::unique_ptr<AppCommandListClass> commands;
    std::unique_ptr<frmOption> dialog;
    ScopedRecordingPresenter shown;
};
