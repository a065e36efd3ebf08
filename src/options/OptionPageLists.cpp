// The pages of user-made entries: composite actions, read settings and the popup menu's rows.

#include "commands/AppActionClass.h"
#include "options/OptionLayout.h"
#include "options/frmOption.h"
#include "support/CommonLibClass.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>

using namespace optionlayout;

namespace {

const QString kOpenFolderOfReadSet = QStringLiteral("OpenFolderOfReadSet");

QVBoxLayout* Buttons(std::initializer_list<QPushButton*> vButtons)
{
    auto* v = new QVBoxLayout;
    for (QPushButton* b : vButtons)
        v->addWidget(b);
    v->addStretch(1);
    return v;
}

// The full name of a user-made action: the prefix is added unless the text begins with it.
QString WithPrefix(const QString& vText, const QString& vPrefix)
{
    return vText.left(vPrefix.size()) == vPrefix ? vText : vPrefix + vText;
}

QTreeWidget* List(const frmOption* vForm, const char* vName) { return vForm->Ctl<QTreeWidget>(QString::fromUtf8(vName)); }
QLineEdit* Edit(const frmOption* vForm, const char* vName) { return vForm->Ctl<QLineEdit>(QString::fromUtf8(vName)); }

} // namespace

QWidget* frmOption::BuildMultiPage()
{
    auto* page = new QWidget(this);
    QVBoxLayout* v = Page(page, "複合動作設定");
    QGridLayout* g = Fields(v);
    auto* name = Named<QLineEdit>(page, "txtMultiActionMultiActionName");
    QPushButton* multiAdd = Button(page, "cmdMultiActionMultiActionAdd", "登録");
    g->addWidget(Label(page, "複合動作名"), 0, 0);
    g->addWidget(name, 0, 1);
    g->addWidget(multiAdd, 0, 2);
    auto* action = Named<QComboBox>(page, "cboMultiActionAction");
    action->setMinimumWidth(200);
    QPushButton* stepAdd = Button(page, "cmdMultiActionActionAdd", "追加");
    g->addWidget(Label(page, "動作"), 1, 0);
    g->addWidget(action, 1, 1);
    g->addWidget(stepAdd, 1, 2);
    g->setColumnStretch(1, 1);
    g->setColumnStretch(2, 0);

    QPushButton* stepDel = Button(page, "cmdMultiActionActionDel", "削除");
    QPushButton* stepAll = Button(page, "cmdMultiActionActionAllDel", "全削除");
    QPushButton* multiDel = Button(page, "cmdMultiActionMultiActionDel", "削除");
    auto* steps = new QHBoxLayout;
    steps->addWidget(ListView(page, "livMultiActionAction", {QStringLiteral("動作")}, {200}), 1);
    steps->addLayout(Buttons({stepDel, stepAll}));
    v->addLayout(steps, 1);
    auto* names = new QHBoxLayout;
    QTreeWidget* multi = ListView(page, "livMultiActionMultiAction", {QStringLiteral("複合動作")}, {200});
    names->addWidget(multi, 1);
    names->addLayout(Buttons({multiDel}));
    v->addLayout(names, 1);

    connect(stepAdd, &QPushButton::clicked, this, &frmOption::cmdMultiActionActionAdd_Click);
    connect(stepDel, &QPushButton::clicked, this, &frmOption::cmdMultiActionActionDel_Click);
    connect(stepAll, &QPushButton::clicked, this, [this] { List(this, "livMultiActionAction")->clear(); });
    connect(multiAdd, &QPushButton::clicked, this, &frmOption::cmdMultiActionMultiActionAdd_Click);
    connect(multiDel, &QPushButton::clicked, this, &frmOption::cmdMultiActionMultiActionDel_Click);
    connect(multi, &QTreeWidget::itemClicked, this, &frmOption::livMultiActionMultiAction_Click);
    return page;
}

QWidget* frmOption::BuildReadPage()
{
    auto* page = new QWidget(this);
    QVBoxLayout* v = Page(page, "読み込み設定");
    QGridLayout* g = Fields(v);
    g->addWidget(Label(page, "設定名"), 0, 0);
    g->addWidget(Named<QLineEdit>(page, "txtReadSetName"), 0, 1, 1, 2);
    g->addWidget(Label(page, "フォルダ名"), 1, 0);
    g->addWidget(Named<QLineEdit>(page, "txtReadFolder"), 1, 1);
    QPushButton* browse = Button(page, "cmdRefReadFolder", "参照");
    g->addWidget(browse, 1, 2);
    auto* lower = Named<QCheckBox>(page, "chkReadLowerFolder");
    lower->setText(QStringLiteral("下位フォルダを対象とする"));
    g->addWidget(lower, 2, 1, 1, 2);
    g->addWidget(Label(page, "対象ファイル"), 3, 0);
    g->addWidget(Named<QLineEdit>(page, "txtReadFile"), 3, 1, 1, 2);
    g->setColumnStretch(1, 1);
    g->setColumnStretch(2, 0);

    QPushButton* add = Button(page, "cmdReadAdd", "登録");
    QPushButton* remove = Button(page, "cmdReadDel", "削除");
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(add);
    row->addWidget(remove);
    v->addLayout(row);
    QTreeWidget* list = ListView(page, "livReadFolder",
                                 {QStringLiteral("設定名"), QStringLiteral("フォルダ名"), QStringLiteral("下位フォルダ対象"),
                                  QStringLiteral("対象ファイル")},
                                 {110, 150, 100, 100});
    v->addWidget(list, 1);

    connect(browse, &QPushButton::clicked, this, &frmOption::cmdRefReadFolder_Click);
    connect(add, &QPushButton::clicked, this, &frmOption::cmdReadAdd_Click);
    connect(remove, &QPushButton::clicked, this, &frmOption::cmdReadDel_Click);
    connect(list, &QTreeWidget::itemClicked, this, &frmOption::livReadFolder_Click);
    return page;
}

QWidget* frmOption::BuildPopupPage()
{
    auto* page = new QWidget(this);
    QVBoxLayout* v = Page(page, "ポップアップメニュー設定");
    QGridLayout* g = Fields(v);
    auto* action = Named<QComboBox>(page, "cboPMenuAction");
    action->setMinimumWidth(200);
    g->addWidget(Label(page, "動作"), 0, 0);
    g->addWidget(action, 0, 1, 1, 2);
    g->addWidget(Label(page, "表示名"), 1, 0);
    g->addWidget(Named<QLineEdit>(page, "txtPMenuName"), 1, 1, 1, 2);
    auto* letter = Named<QLineEdit>(page, "txtPMenuShortcutKey");
    letter->setMaxLength(1);
    letter->setFixedWidth(40);
    g->addWidget(Label(page, "ショートカットキー"), 2, 0);
    g->addWidget(letter, 2, 1, Qt::AlignLeft);

    v->addWidget(Label(page, "メニュー内容"));
    QPushButton* add = Button(page, "cmdPMenuAdd", "追加");
    QPushButton* remove = Button(page, "cmdPMenuDel", "削除");
    QPushButton* up = Button(page, "cmdPMenuUp", "上へ");
    QPushButton* down = Button(page, "cmdPMenuDown", "下へ");
    auto* rows = new QHBoxLayout;
    rows->addWidget(ListView(page, "livPMenuList",
                             {QStringLiteral("動作"), QStringLiteral("表示名"), QStringLiteral("ショートカットキー")},
                             {130, 120, 110}),
                    1);
    rows->addLayout(Buttons({add, remove, up, down}));
    v->addLayout(rows, 1);

    connect(action, &QComboBox::currentTextChanged, this, [this](const QString& vText) {
        Edit(this, "txtPMenuName")->setText(vText);
    });
    connect(add, &QPushButton::clicked, this, &frmOption::cmdPMenuAdd_Click);
    connect(remove, &QPushButton::clicked, this, &frmOption::cmdPMenuDel_Click);
    connect(up, &QPushButton::clicked, this, [this] { MovePopupRow(-1); });
    connect(down, &QPushButton::clicked, this, [this] { MovePopupRow(1); });
    return page;
}

// ---- composites

void frmOption::cmdMultiActionActionAdd_Click()
{
    new QTreeWidgetItem(List(this, "livMultiActionAction"), {Ctl<QComboBox>(QStringLiteral("cboMultiActionAction"))->currentText()});
}

void frmOption::cmdMultiActionActionDel_Click()
{
    QTreeWidget* steps = List(this, "livMultiActionAction");
    if (CheckDelete(steps))
        delete steps->currentItem();
}

void frmOption::cmdMultiActionMultiActionAdd_Click()
{
    QLineEdit* field = Edit(this, "txtMultiActionMultiActionName");
    const QString name = WithPrefix(field->text(), AppActionClass::MultiPrefix);
    if (field->text().isEmpty()) {
        CommonLibClass::ErrMsgBox(QStringLiteral("複合動作名を入力してください。"));
        field->setFocus();
        return;
    }
    if (multiTable_->Exists(name)) {
        CommonLibClass::ErrMsgBox(QStringLiteral("既に同じ名前が登録されています。"));
        field->setFocus();
        return;
    }
    QTreeWidget* steps = List(this, "livMultiActionAction");
    if (steps->topLevelItemCount() == 0) {
        CommonLibClass::ErrMsgBox(QStringLiteral("動作に1件も追加が行われていません。"));
        return;
    }
    new QTreeWidgetItem(List(this, "livMultiActionMultiAction"), {name});
    const SDC thread = multiTable_->CreateThread(name);
    for (int i = 0; i < steps->topLevelItemCount(); ++i)
        thread->AddData(steps->topLevelItem(i)->text(0));
}

void frmOption::cmdMultiActionMultiActionDel_Click()
{
    QTreeWidget* names = List(this, "livMultiActionMultiAction");
    if (!CheckDelete(names))
        return;
    const QString name = names->currentItem()->text(0);
    if (multiTable_->Exists(name) && multiTable_->Thread(name))
        multiTable_->Thread(name)->Clear();
    multiTable_->DeleteData(name);
    delete names->currentItem();
}

// A composite isn't edited in place: its name and steps come back into the fields, to be added
// again under the same name once the old row is deleted.
void frmOption::livMultiActionMultiAction_Click(QTreeWidgetItem* vItem)
{
    const QString name = vItem->text(0);
    Edit(this, "txtMultiActionMultiActionName")->setText(name);
    QTreeWidget* steps = List(this, "livMultiActionAction");
    steps->clear();
    const SDC thread = multiTable_->Exists(name) ? multiTable_->Thread(name) : nullptr;
    for (qint16 i = 1; thread && i <= thread->Count(); ++i)
        new QTreeWidgetItem(steps, {thread->DataValueOfNumber(i)});
}

void frmOption::StoreMultiActions()
{
    const SDC group = work_->Thread(AppActionClass::MultiGroup);
    const SDC list = group->Exists(AppActionClass::MultiList) && group->Thread(AppActionClass::MultiList)
                         ? group->Thread(AppActionClass::MultiList)
                         : group->CreateThread(AppActionClass::MultiList);
    list->Clear();
    for (qint16 i = 1; i <= multiTable_->Count(); ++i) {
        const SDC steps = multiTable_->ThreadOfNumber(i);
        const SDC copy = list->CreateThread(multiTable_->DataKeyOfNumber(i));
        for (qint16 s = 1; steps && s <= steps->Count(); ++s)
            copy->AddData(steps->DataValueOfNumber(s));
    }
}

// ---- read settings

void frmOption::cmdRefReadFolder_Click()
{
    const QString start = work_->Exists(kOpenFolderOfReadSet) ? work_->DataValue(kOpenFolderOfReadSet) : QStringLiteral(" ");
    const QString folder = QFileDialog::getExistingDirectory(this, QStringLiteral("フォルダ内のファイルを全て開く"), start.trimmed());
    if (folder.isEmpty())
        return;
    Edit(this, "txtReadFolder")->setText(folder);
    work_->AddData(folder, kOpenFolderOfReadSet);
}

void frmOption::cmdReadAdd_Click()
{
    QLineEdit* nameBox = Edit(this, "txtReadSetName");
    QLineEdit* folder = Edit(this, "txtReadFolder");
    QLineEdit* files = Edit(this, "txtReadFile");
    const QString name = WithPrefix(nameBox->text(), AppActionClass::ReadPrefix);
    const std::pair<bool, std::pair<const char*, QLineEdit*>> checks[] = {
        {name.size() <= AppActionClass::ReadPrefix.size(), {"設定名を入力してください。", nameBox}},
        {folder->text().isEmpty(), {"フォルダ名を入力してください。", folder}},
        {files->text().isEmpty(), {"対象ファイルを入力してください。", files}},
        {readTable_->Exists(name), {"既に同じ設定名が登録されています。", nameBox}},
    };
    for (const auto& [failed, report] : checks) {
        if (failed) {
            CommonLibClass::ErrMsgBox(QString::fromUtf8(report.first));
            report.second->setFocus();
            return;
        }
    }
    const bool lower = Ctl<QCheckBox>(QStringLiteral("chkReadLowerFolder"))->isChecked();
    new QTreeWidgetItem(List(this, "livReadFolder"),
                        {name, folder->text(), lower ? QStringLiteral("する") : QStringLiteral("しない"), files->text()});
    readTable_->AddData(name, name);
}

void frmOption::cmdReadDel_Click()
{
    QTreeWidget* list = List(this, "livReadFolder");
    if (!CheckDelete(list))
        return;
    readTable_->DeleteData(list->currentItem()->text(0));
    delete list->currentItem();
}

void frmOption::livReadFolder_Click(QTreeWidgetItem* vItem)
{
    Edit(this, "txtReadSetName")->setText(vItem->text(0));
    Edit(this, "txtReadFolder")->setText(vItem->text(1));
    Ctl<QCheckBox>(QStringLiteral("chkReadLowerFolder"))->setChecked(vItem->text(2) == QStringLiteral("する"));
    Edit(this, "txtReadFile")->setText(vItem->text(3));
}

// ---- popup rows

void frmOption::cmdPMenuAdd_Click()
{
    QLineEdit* name = Edit(this, "txtPMenuName");
    if (name->text().isEmpty()) {
        CommonLibClass::ErrMsgBox(QStringLiteral("表示名を入力してください。"));
        name->setFocus();
        return;
    }
    new QTreeWidgetItem(List(this, "livPMenuList"), {Ctl<QComboBox>(QStringLiteral("cboPMenuAction"))->currentText(),
                                                     name->text(), Edit(this, "txtPMenuShortcutKey")->text()});
}

void frmOption::cmdPMenuDel_Click()
{
    QTreeWidget* list = List(this, "livPMenuList");
    if (CheckDelete(list))
        delete list->currentItem();
}

void frmOption::MovePopupRow(int vStep)
{
    QTreeWidget* list = List(this, "livPMenuList");
    QTreeWidgetItem* row = list->currentItem();
    if (!row || !row->isSelected())
        return;
    const int from = list->indexOfTopLevelItem(row);
    const int to = from + vStep;
    if (to < 0 || to >= list->topLevelItemCount())
        return;
    list->takeTopLevelItem(from);
    list->insertTopLevelItem(to, row);
    list->setCurrentItem(row);
}
