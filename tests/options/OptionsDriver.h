#pragma once
// Hands for a test on the options dialog: pick a page in the tree, click, type and choose as a
// user does, and read the lists back. Controls are found by their names.

#include "options/frmOption.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <gtest/gtest.h>

class OptionsDriver {
protected:
    template <class T = QWidget>
    T* C(const char* vName, int vIndex = -1) const
    {
        T* w = ui->Ctl<T>(QString::fromUtf8(vName), vIndex);
        EXPECT_TRUE(w) << vName;
        return w;
    }

    // A click on the tree node of that text, as the user picks a page.
    void Page(const char* vNode) const
    {
        auto* tree = C<QTreeWidget>("TreeView1");
        QTreeWidgetItem* node = tree->findItems(QString::fromUtf8(vNode), Qt::MatchExactly).value(0);
        ASSERT_TRUE(node) << vNode;
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node).center());
    }

    void Click(const char* vName, int vIndex = -1) const { QTest::mouseClick(C<QPushButton>(vName, vIndex), Qt::LeftButton); }
    void Tick(const char* vName) const { QTest::mouseClick(C<QCheckBox>(vName), Qt::LeftButton, {}, QPoint(5, 5)); }
    void Type(const char* vName, const QString& vText) const { C<QLineEdit>(vName)->setText(vText); }
    void Choose(const char* vName, const QString& vText) const
    {
        auto* combo = C<QComboBox>(vName);
        combo->setCurrentIndex(combo->findText(vText));
        ASSERT_EQ(combo->currentText(), vText);
    }
    // Selects a row of a list view by a click on it.
    void Row(const char* vList, int vRow) const
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

    frmOption* ui = nullptr;
};
