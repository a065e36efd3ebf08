// The pages "ウインドウ", "マウス" and "動作", the drop-downs of every page, and what each page
// does before and after its stored values are loaded.

#include "commands/AppActionClass.h"
#include "commands/KeyCodeClass.h"
#include "options/OptionLayout.h"
#include "options/OptionPages.h"
#include "options/frmOption.h"
#include "settings/ColorSwatch.h"
#include "settings/TreeViewSaveLoadClass.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

using namespace optionlayout;

namespace {

const char* const kStartSizes[] = {"横幅", "ページ全体", "100%", "200%", "300%", "400%", "500%"};

QLineEdit* NumberBox(QWidget* vPage, const char* vName, const char* vText)
{
    auto* box = Named<QLineEdit>(vPage, vName);
    box->setText(QString::fromUtf8(vText));
    box->setFixedWidth(70);
    box->setAlignment(Qt::AlignRight);
    return box;
}

// An option button array: its buttons side by side in a row of their own, so that they
// exclude one another and no other array.
QWidget* Options(QWidget* vPage, const char* vName, std::initializer_list<const char*> vCaptions)
{
    auto* row = new QWidget(vPage);
    auto* h = new QHBoxLayout(row);
    h->setContentsMargins(0, 0, 0, 0);
    int index = 0;
    for (const char* caption : vCaptions) {
        auto* option = Named<QRadioButton>(row, vName, index);
        option->setText(QString::fromUtf8(caption));
        option->setChecked(index == 0);
        h->addWidget(option);
        ++index;
    }
    h->addStretch(1);
    return row;
}

QCheckBox* Check(QWidget* vPage, const char* vName, const char* vCaption, bool vChecked)
{
    auto* check = Named<QCheckBox>(vPage, vName);
    check->setText(QString::fromUtf8(vCaption));
    check->setChecked(vChecked);
    return check;
}

void Fill(QComboBox* vCombo, const SDC& vNames, const QStringList& vFirst = {}, const QString& vSkip = {})
{
    vCombo->clear();
    vCombo->addItems(vFirst);
    for (qint16 i = 1; vNames && i <= vNames->Count(); ++i) {
        const QString name = vNames->DataValueOfNumber(i);
        if (name != vSkip)
            vCombo->addItem(name);
    }
    vCombo->setCurrentIndex(0);
}

} // namespace

QWidget* frmOption::BuildWindowPage()
{
    auto* page = new QWidget(this);
    QVBoxLayout* v = Page(page, "ウインドウ設定");
    QGridLayout* g = Fields(v);
    int row = 0;
    auto* size = Named<QComboBox>(page, "cboStartDocSize");
    size->setMinimumWidth(120);
    g->addWidget(Label(page, "表示サイズ"), row, 0);
    g->addWidget(size, row++, 1);
    g->addWidget(Label(page, "表示方法"), row, 0);
    g->addWidget(Options(page, "chkWindowsDisp", {"単一", "見開き"}), row++, 1, 1, 2);
    g->addWidget(Label(page, "表示解像度"), row, 0);
    g->addWidget(NumberBox(page, "txtResolution", "150"), row++, 1);
    g->addWidget(Label(page, "ガンマ補正値"), row, 0);
    g->addWidget(NumberBox(page, "txtGamma", "-40"), row++, 1);
    g->addWidget(Label(page, "ルーラーの太さ"), row, 0);
    g->addWidget(NumberBox(page, "txtRulerWidth", "100"), row++, 1);
    auto* color = Named<ColorSwatch>(page, "picRulerColor");
    color->SetBackColor(65280);
    color->setFixedSize(70, 22);
    connect(color, &ColorSwatch::clicked, this, &frmOption::picRulerColor_Click);
    g->addWidget(Label(page, "ルーラーカラー"), row, 0);
    g->addWidget(color, row++, 1);

    v->addSpacing(6);
    v->addWidget(Check(page, "chkWindowPositionSave", "前回終了時の位置と大きさで起動する", true));
    v->addWidget(Check(page, "chkOpenOnlyOne", "同じ文書を2重に開かない", true));
    auto* sort = Check(page, "chkWindowSort", "複数ファイルのオープン時にソートする", false);
    v->addWidget(sort);
    auto* sortRow = new QHBoxLayout;
    sortRow->setContentsMargins(22, 0, 0, 0);
    sortRow->addWidget(Options(page, "optWindowSortTarget", {"ファイル名", "ファイル更新日"}));
    sortRow->addWidget(Options(page, "optWindowSortMode", {"昇順", "降順"}));
    v->addLayout(sortRow);
    auto* active = Check(page, "chkActiveForm", "オープン時にウインドウを強制的にアクティブにする", false);
    v->addWidget(active);
    auto* activeRow = new QHBoxLayout;
    activeRow->setContentsMargins(22, 0, 0, 0);
    activeRow->addWidget(NumberBox(page, "txtActiveFormTime", "1000"));
    activeRow->addWidget(Label(page, "ミリ秒"));
    activeRow->addStretch(1);
    v->addLayout(activeRow);
    v->addStretch(1);
    connect(sort, &QCheckBox::toggled, this, &frmOption::ApplyEnabling);
    connect(active, &QCheckBox::toggled, this, &frmOption::ApplyEnabling);
    return page;
}

QWidget* frmOption::BuildMousePage()
{
    auto* page = new QWidget(this);
    QVBoxLayout* v = Page(page, "マウス設定");
    QGridLayout* g = Fields(v);
    const std::pair<const char*, const char*> rows[] = {
        {"cboMouseLeftDClick", "左ダブルクリック"}, {"cboMouseWheelClick", "ホイールクリック"},
        {"cboMouse4thClick", "第4クリック"},        {"cboMouse5thClick", "第5クリック"},
        {"cboMouseRightWheel", "右ボタンホイール"},
    };
    int row = 0;
    for (const auto& [name, caption] : rows) {
        auto* combo = Named<QComboBox>(page, name);
        combo->setMinimumWidth(220);
        g->addWidget(Label(page, caption), row, 0);
        g->addWidget(combo, row++, 1);
    }
    v->addStretch(1);
    return page;
}

QWidget* frmOption::BuildActionPage()
{
    auto* page = new QWidget(this);
    QVBoxLayout* v = Page(page, "動作設定");
    v->addWidget(Check(page, "chkActArrangement", "Brackenfold連携を行う", false));
    v->addStretch(1);
    return page;
}

void frmOption::FillDropDowns()
{
    const SDC names = action_.ActionName();
    for (const char* name : {"cboMouseLeftDClick", "cboMouseWheelClick", "cboMouse4thClick", "cboMouse5thClick"})
        Fill(Ctl<QComboBox>(Utf8(name)), names);
    for (const char* name : {"cboShortCutKeyAction", "cboMouseGestureAction", "cboMultiActionAction"})
        Fill(Ctl<QComboBox>(Utf8(name)), names, {}, AppActionClass::NoAction);
    Fill(Ctl<QComboBox>(QStringLiteral("cboPMenuAction")), names, {QStringLiteral("セパレータ")}, AppActionClass::NoAction);
    Fill(Ctl<QComboBox>(QStringLiteral("cboMouseRightWheel")), action_.WheelActionName());
    Fill(Ctl<QComboBox>(QStringLiteral("cboShortCutKey")), KeyCodeClass().KeyName());
}

void frmOption::ResetPage(int vImage)
{
    switch (vImage) {
    case 1: {
        Ctl<QRadioButton>(QStringLiteral("chkWindowsDisp"), 0)->setChecked(true);
        auto* size = Ctl<QComboBox>(QStringLiteral("cboStartDocSize"));
        size->clear();
        for (const char* text : kStartSizes)
            size->addItem(Utf8(text));
        size->setCurrentIndex(1);
        break;
    }
    case 5:
        Ctl<QCheckBox>(QStringLiteral("chkActArrangement"))->setChecked(false);
        break;
    case 7:
        Ctl<QLineEdit>(QStringLiteral("txtReadSetName"))->setText(QStringLiteral("読み込み1"));
        Ctl<QLineEdit>(QStringLiteral("txtReadFolder"))->clear();
        Ctl<QCheckBox>(QStringLiteral("chkReadLowerFolder"))->setChecked(false);
        Ctl<QLineEdit>(QStringLiteral("txtReadFile"))->setText(QStringLiteral("*.xdw;*.tif"));
        break;
    case 8:
        Ctl<QLineEdit>(QStringLiteral("txtPMenuShortcutKey"))->clear();
        break;
    default:
        break;
    }
}

void frmOption::AfterLoad(int vImage)
{
    switch (vImage) {
    case 1:
        ApplyEnabling();
        break;
    case 3:
        RebuildTable(gestureTable_, Ctl<QTreeWidget>(QStringLiteral("livMouseGesture")), true);
        break;
    case 4:
        RebuildTable(keyTable_, Ctl<QTreeWidget>(QStringLiteral("livShortCutKey")), true);
        break;
    case 7:
        RebuildTable(readTable_, Ctl<QTreeWidget>(QStringLiteral("livReadFolder")), false);
        break;
    default:
        break;
    }
}

void frmOption::ApplyEnabling()
{
    const bool sort = Ctl<QCheckBox>(QStringLiteral("chkWindowSort"))->isChecked();
    for (const char* name : {"optWindowSortTarget", "optWindowSortMode"}) {
        for (QRadioButton* option : findChildren<QRadioButton*>(Utf8(name)))
            option->setEnabled(sort);
    }
    Ctl<QLineEdit>(QStringLiteral("txtActiveFormTime"))->setEnabled(Ctl<QCheckBox>(QStringLiteral("chkActiveForm"))->isChecked());
}

void frmOption::picRulerColor_Click()
{
    auto* swatch = Ctl<ColorSwatch>(QStringLiteral("picRulerColor"));
    const QColor chosen = QColorDialog::getColor(ColorSwatch::ToColor(swatch->BackColor()), this);
    if (chosen.isValid())  // a cancel leaves the colour
        swatch->SetBackColor(ColorSwatch::FromColor(chosen));
}
