// Control binding on real Qt widgets: the stored forms are what the Windows build writes and
// reads, so they are pinned as the settings file's text.
#include "settings/ColorSwatch.h"
#include "settings/CtrlSaveLoadClass.h"
#include "settings/DataSaveLoadClass.h"
#include "support/AppError.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QPushButton>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTabBar>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

template <class W>
W* Make(QWidget* vForm, const char* vName, int vIndex = -1)
{
    auto* w = new W(vForm);
    w->setObjectName(QString::fromUtf8(vName));
    if (vIndex >= 0)
        w->setProperty("Index", vIndex);
    return w;
}

// One control of every bound type, and a control array of two option buttons.
struct Form {
    QWidget form;
    QLineEdit* txt = Make<QLineEdit>(&form, "txtName");
    QComboBox* cbo = Make<QComboBox>(&form, "cboSize");
    QListWidget* lst = Make<QListWidget>(&form, "lstChecks");
    QCheckBox* chk = Make<QCheckBox>(&form, "chkOn");
    QRadioButton* opt0 = Make<QRadioButton>(&form, "optMode", 0);
    QRadioButton* opt1 = Make<QRadioButton>(&form, "optMode", 1);
    QGroupBox* fra = Make<QGroupBox>(&form, "fraBox");
    QTabBar* tab = Make<QTabBar>(&form, "tabPages");
    QTreeWidget* liv = Make<QTreeWidget>(&form, "livRows");
    ColorSwatch* pic = Make<ColorSwatch>(&form, "picColor");
    QPushButton* cmd = Make<QPushButton>(&form, "cmdOk");  // no bound type: passed over

    Form()
    {
        form.setGeometry(30, 20, 300, 200);
        txt->setText(QStringLiteral("名前\t1"));
        cbo->addItems({QStringLiteral("横幅"), QStringLiteral("ページ全体")});
        cbo->setCurrentIndex(1);
        lst->setProperty("Style", 1);
        for (const char* t : {"a", "b"}) {
            auto* item = new QListWidgetItem(QString::fromLatin1(t), lst);
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(Qt::Unchecked);
        }
        lst->item(1)->setCheckState(Qt::Checked);
        lst->setCurrentRow(0);
        chk->setChecked(true);
        opt1->setChecked(true);
        fra->hide();
        tab->addTab(QStringLiteral("一"));
        tab->addTab(QStringLiteral("二"));
        tab->setCurrentIndex(1);
        liv->setProperty("Checkboxes", true);
        liv->setHeaderLabels({QStringLiteral("動作"), QStringLiteral("キー")});
        liv->header()->resizeSection(0, 100);
        liv->header()->resizeSection(1, 50);
        auto* row = new QTreeWidgetItem(liv, {QStringLiteral("次ページ"), QStringLiteral("Ctrl + J")});
        row->setCheckState(0, Qt::Checked);
        pic->SetBackColor(65280);
    }
};

QString Saved(const SDC& vData)
{
    DataSaveLoadClass io;
    io.SetData(vData);
    return io.GetSaveString(QStringLiteral("DetailSet"));
}

} // namespace

// The whole group as the file holds it, for the list mode and for "TEXT", at 96 dpi (15 twips
// per pixel).
TEST(CtrlSaveLoadClass, StoresEveryControlTypeInTheFileForm)
{
    Form f;
    ASSERT_EQ(CtrlSaveLoadClass::TwipsPerPixel(&f.form), 15.0);
    CtrlSaveLoadClass binder;
    binder.SetForm(&f.form);
    binder.SaveValue(QString());
    const QString text = Saved(binder.Data());
    const QString expected = QStringLiteral(
        "[!LABEL_DetailSet]\r\n"
        "[!Thread]\tDefaultGroup\tDefaultGroup\r\n"
        "\t[!Thread]\tForm\tForm\r\n"
        "\t\tTop\t300\r\n"
        "\t\tLeft\t450\r\n"
        "\t\tHeight\t3000\r\n"
        "\t\tWidth\t4500\r\n"
        "\t[!Thread]\ttxtName\ttxtName\r\n"
        "\t\tText\t名前[!Tab]1\r\n"
        "\t\tType\tTextBox\r\n"
        "\t[!Thread]\tcboSize\tcboSize\r\n"
        "\t\tType\tComboBox\r\n"
        "\t\t[!Thread]\tList\tList\r\n"
        "\t\t\t1\t横幅\r\n"
        "\t\t\t2\tページ全体\r\n"
        "\t\tListIndex\t1\r\n"
        "\t[!Thread]\tlstChecks\tlstChecks\r\n"
        "\t\tType\tListBox\r\n"
        "\t\tStyle\t1\r\n"
        "\t\t[!Thread]\tList\tList\r\n"
        "\t\t\t1\ta\r\n"
        "\t\t\t2\tb\r\n"
        "\t\tListIndex\t0\r\n"
        "\t\t[!Thread]\tSelected\tSelected\r\n"
        "\t\t\t1\tFalse\r\n"
        "\t\t\t2\tTrue\r\n"
        "\t[!Thread]\tchkOn\tchkOn\r\n"
        "\t\tValue\t1\r\n"
        "\t\tType\tCheckBox\r\n"
        "\t[!Thread]\toptMode\toptMode\r\n"
        "\t\t[!Thread]\t0\t0\r\n"
        "\t\t\tValue\tFalse\r\n"
        "\t\t\tType\tOptionButton\r\n"
        "\t\t[!Thread]\t1\t1\r\n"
        "\t\t\tValue\tTrue\r\n"
        "\t\t\tType\tOptionButton\r\n"
        "\t[!Thread]\tfraBox\tfraBox\r\n"
        "\t\tVisible\tFalse\r\n"
        "\t\tType\tFrame\r\n"
        "\t[!Thread]\ttabPages\ttabPages\r\n"
        "\t\tSelectedItem.Index\t2\r\n"
        "\t\tType\tTabStrip\r\n"
        "\t[!Thread]\tlivRows\tlivRows\r\n"
        "\t\tType\tListView\r\n"
        "\t\t[!Thread]\tListItem\tListItem\r\n"
        "\t\t\t[!Thread]\t1\t1\r\n"
        "\t\t\t\tText\t次ページ\r\n"
        "\t\t\t\tChecked\tTrue\r\n"
        "\t\t\t\t[!Thread]\tSubItem\tSubItem\r\n"
        "\t\t\t\t\t1\tCtrl + J\r\n"
        "\t\t[!Thread]\tColumnHeader\tColumnHeader\r\n"
        "\t\t\t[!Thread]\t1\t1\r\n"
        "\t\t\t\tKey\t\r\n"
        "\t\t\t\tText\t動作\r\n"
        "\t\t\t\tWidth\t1500\r\n"
        "\t\t\t\tAlignment\t0\r\n"
        "\t\t\t\tIcon\t0\r\n"
        "\t\t\t[!Thread]\t2\t2\r\n"
        "\t\t\t\tKey\t\r\n"
        "\t\t\t\tText\tキー\r\n"
        "\t\t\t\tWidth\t750\r\n"
        "\t\t\t\tAlignment\t0\r\n"
        "\t\t\t\tIcon\t0\r\n"
        "\t[!Thread]\tpicColor\tpicColor\r\n"
        "\t\tVisible\tTrue\r\n"
        "\t\tBackColor\t65280\r\n"
        "\t\tType\tPictureBox\r\n");
    EXPECT_EQ(text, expected);
}

// What was saved comes back into a form whose controls were changed meanwhile; lists are
// rebuilt, not appended to, and a stored "False" switches an exclusive option button off.
TEST(CtrlSaveLoadClass, LoadsEveryControlTypeBack)
{
    Form f;
    CtrlSaveLoadClass binder;
    binder.SetForm(&f.form);
    binder.SaveValue(QStringLiteral("G"));

    Form g;
    g.txt->clear();
    g.cbo->setCurrentIndex(0);
    g.lst->setCurrentRow(1);
    g.lst->item(1)->setCheckState(Qt::Unchecked);
    g.chk->setChecked(false);
    g.opt0->setChecked(true);
    g.fra->show();
    g.tab->setCurrentIndex(0);
    g.liv->clear();
    new QTreeWidgetItem(g.liv, {QStringLiteral("x"), QStringLiteral("y")});
    new QTreeWidgetItem(g.liv, {QStringLiteral("z"), QStringLiteral("w")});
    g.pic->SetBackColor(255);
    CtrlSaveLoadClass loader;
    loader.SetForm(&g.form);
    loader.SetData(binder.Data());
    loader.LoadValue(QStringLiteral("G"));

    EXPECT_EQ(g.txt->text(), QStringLiteral("名前\t1"));
    EXPECT_EQ(g.cbo->count(), 2);
    EXPECT_EQ(g.cbo->currentText(), QStringLiteral("ページ全体"));
    EXPECT_EQ(g.lst->count(), 2);
    EXPECT_EQ(g.lst->currentRow(), 0);
    EXPECT_EQ(g.lst->item(1)->checkState(), Qt::Checked);
    EXPECT_TRUE(g.chk->isChecked());
    EXPECT_FALSE(g.opt0->isChecked());
    EXPECT_TRUE(g.opt1->isChecked());
    EXPECT_TRUE(g.fra->isHidden());
    EXPECT_EQ(g.tab->currentIndex(), 1);
    ASSERT_EQ(g.liv->topLevelItemCount(), 1);
    EXPECT_EQ(g.liv->topLevelItem(0)->text(1), QStringLiteral("Ctrl + J"));
    EXPECT_EQ(g.liv->topLevelItem(0)->checkState(0), Qt::Checked);
    EXPECT_EQ(g.liv->header()->sectionSize(1), 50);

    // A width in twips that is no whole number of pixels is written back as it was read.
    const SDC columns = binder.Data()->Thread(QStringLiteral("G"))->Thread(QStringLiteral("livRows"))->Thread(QStringLiteral("ColumnHeader"));
    columns->Thread(QStringLiteral("2"))->SetDataValue(QStringLiteral("Width"), QStringLiteral("1000"));
    loader.LoadValue(QStringLiteral("G"));
    EXPECT_EQ(g.liv->header()->sectionSize(1), 67);
    loader.SaveValue(QStringLiteral("G"));
    EXPECT_EQ(binder.Data()->ThreadOfPath(QStringLiteral("\\G\\livRows\\ColumnHeader\\2\\"))->DataValue(QStringLiteral("Width")),
              QStringLiteral("1000"));
    EXPECT_EQ(g.pic->BackColor(), 65280);
}

// "TEXT" is compared in upper case; a drop-down then keeps its text alone, a list box the entry
// at its selection, and a text that is not in the list selects nothing when read back.
TEST(CtrlSaveLoadClass, TextOptionStoresTheSelectedTextOnly)
{
    Form f;
    CtrlSaveLoadClass binder;
    binder.SetForm(&f.form);
    binder.SetListOption(QStringLiteral("text"));
    binder.SaveValue(QStringLiteral("G"));
    const SDC group = binder.Data()->Thread(QStringLiteral("G"));
    const SDC combo = group->Thread(QStringLiteral("cboSize"));
    EXPECT_EQ(combo->GetAllDataKey(), QStringLiteral("Type,Text"));
    EXPECT_EQ(combo->DataValue(QStringLiteral("Text")), QStringLiteral("ページ全体"));
    const SDC list = group->Thread(QStringLiteral("lstChecks"));
    EXPECT_EQ(list->GetAllDataKey(), QStringLiteral("Type,Style,Text"));
    EXPECT_EQ(list->DataValue(QStringLiteral("Text")), QStringLiteral("a"));

    combo->SetDataValue(QStringLiteral("Text"), QStringLiteral("300%"));
    f.cbo->setCurrentIndex(0);
    binder.LoadValue(QStringLiteral("G"));
    EXPECT_EQ(f.cbo->count(), 2);  // no list stored: the entries stay
    EXPECT_EQ(f.cbo->currentIndex(), -1);
}

// A group's list names the controls it keeps, in its order; a group never saved changes nothing
// on a load.
TEST(CtrlSaveLoadClass, GroupsKeepOnlyTheirListedControls)
{
    Form f;
    CtrlSaveLoadClass binder;
    binder.SetForm(&f.form);
    binder.Grouping(QStringLiteral("G"), QStringLiteral("chkOn"));
    binder.Grouping(QStringLiteral("G"), QStringLiteral("optMode"));
    binder.SaveValue(QStringLiteral("G"));
    EXPECT_EQ(binder.Data()->Thread(QStringLiteral("G"))->GetAllDataKey(), QStringLiteral("chkOn,optMode,Form"));
    // Saved again, the order stays and the values follow the controls.
    f.chk->setChecked(false);
    binder.SaveValue(QStringLiteral("G"));
    const SDC group = binder.Data()->Thread(QStringLiteral("G"));
    EXPECT_EQ(group->GetAllDataKey(), QStringLiteral("chkOn,optMode,Form"));
    EXPECT_EQ(group->Thread(QStringLiteral("chkOn"))->DataValue(QStringLiteral("Value")), QStringLiteral("0"));

    f.form.move(7, 9);
    binder.LoadValue(QStringLiteral("Never"));
    EXPECT_EQ(f.txt->text(), QStringLiteral("名前\t1"));
    EXPECT_EQ(f.form.pos(), QPoint(7, 9));
}

TEST(CtrlSaveLoadClass, UnreadableNumberIsATypeError)
{
    Form f;
    CtrlSaveLoadClass binder;
    binder.SetForm(&f.form);
    binder.SaveValue(QStringLiteral("G"));
    binder.Data()->Thread(QStringLiteral("G"))->Thread(QStringLiteral("chkOn"))->SetDataValue(QStringLiteral("Value"), QStringLiteral("x"));
    try {
        binder.LoadValue(QStringLiteral("G"));
        FAIL() << "no error";
    } catch (const AppError& e) {
        EXPECT_EQ(e.Number(), AppError::TypeMismatch);
    }
}
