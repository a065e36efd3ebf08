// The pages that bind gestures and keys to actions. Each keeps a working table from trigger to
// action while the dialog is open, for the duplicate test and the "設定済動作" label.

#include "commands/KeyCodeClass.h"
#include "options/OptionLayout.h"
#include "options/frmOption.h"
#include "support/CommonLibClass.h"

#include <QCheckBox>
#include <QComboBox>

using namespace optionlayout;

namespace {

// The four directions in the order of the arrow buttons, as the recogniser writes them.
const QString kArrows = QStringLiteral("↑→↓←");

QLabel* Shown(QWidget* vPage, const char* vName)
{
    auto* label = Named<QLabel>(vPage, vName);
    label->setFrameShape(QFrame::StyledPanel);
    label->setFrameShadow(QFrame::Sunken);
    label->setMinimumWidth(160);
    label->setMinimumHeight(22);
    return label;
}

QHBoxLayout* RightAligned(QWidget* vButton)
{
    auto* h = new QHBoxLayout;
    h->addStretch(1);
    h->addWidget(vButton);
    return h;
}

void AddRow(QTreeWidget* vList, const QStringList& vTexts) { new QTreeWidgetItem(vList, vTexts); }

} // namespace

QWidget* frmOption::BuildGesturePage()
{
    auto* page = new QWidget(this);
    QVBoxLayout* v = Page(page, "マウスジェスチャ設定");
    auto* on = Named<QCheckBox>(page, "chkMouseGesture");
    on->setText(QStringLiteral("マウスジェスチャを有効にする"));
    v->addWidget(on);

    QGridLayout* g = Fields(v);
    auto* arrows = new QHBoxLayout;
    for (int i = 0; i < 4; ++i) {
        QPushButton* arrow = Button(page, "cmdMouseGesture", "", i);
        arrow->setText(kArrows.at(i));
        arrow->setFixedWidth(34);
        connect(arrow, &QPushButton::clicked, this, [this, i] { cmdMouseGesture_Click(i); });
        arrows->addWidget(arrow);
    }
    QPushButton* back = Button(page, "cmdMouseGestureBS", "BS");
    back->setFixedWidth(40);
    connect(back, &QPushButton::clicked, this, &frmOption::cmdMouseGestureBS_Click);
    arrows->addWidget(back);
    arrows->addStretch(1);
    g->addWidget(Label(page, "ジェスチャ"), 0, 0);
    g->addLayout(arrows, 0, 1, 1, 2);
    g->addWidget(Shown(page, "lblMouseGesture"), 1, 1, 1, 2);
    g->addWidget(Label(page, "設定済動作"), 2, 0);
    g->addWidget(Shown(page, "lblMouseGestureDone"), 2, 1, 1, 2);
    auto* action = Named<QComboBox>(page, "cboMouseGestureAction");
    action->setMinimumWidth(200);
    QPushButton* add = Button(page, "cmdMouseGestureAdd", "登録");
    connect(add, &QPushButton::clicked, this, &frmOption::cmdMouseGestureAdd_Click);
    g->addWidget(Label(page, "動作"), 3, 0);
    g->addWidget(action, 3, 1);
    g->addWidget(add, 3, 2, Qt::AlignLeft);

    v->addWidget(ListView(page, "livMouseGesture", {QStringLiteral("動作"), QStringLiteral("ジェスチャ")}, {220, 120}), 1);
    QPushButton* remove = Button(page, "cmdMouseGestureDelete", "削除");
    connect(remove, &QPushButton::clicked, this, &frmOption::cmdMouseGestureDelete_Click);
    v->addLayout(RightAligned(remove));
    return page;
}

QWidget* frmOption::BuildKeyboardPage()
{
    auto* page = new QWidget(this);
    QVBoxLayout* v = Page(page, "キーボード設定");
    QGridLayout* g = Fields(v);
    auto* key = Named<QComboBox>(page, "cboShortCutKey");
    key->setMinimumWidth(100);
    key->setMaxVisibleItems(20);
    auto* keyRow = new QHBoxLayout;
    keyRow->addWidget(key);
    keyRow->addSpacing(8);
    for (const auto& [name, caption] : {std::pair{"chkShortCutKeyCtrl", "Ctrl"}, std::pair{"chkShortCutKeyShift", "Shift"},
                                        std::pair{"chkShortCutKeyAlt", "Alt"}}) {
        auto* check = Named<QCheckBox>(page, name);
        check->setText(QString::fromUtf8(caption));
        connect(check, &QCheckBox::toggled, this, &frmOption::UpdateShortCutKeyDone);
        keyRow->addWidget(check);
    }
    keyRow->addStretch(1);
    connect(key, &QComboBox::currentTextChanged, this, &frmOption::UpdateShortCutKeyDone);
    g->addWidget(Label(page, "キー"), 0, 0);
    g->addLayout(keyRow, 0, 1, 1, 2);
    g->addWidget(Label(page, "設定済動作"), 1, 0);
    g->addWidget(Shown(page, "lblShortCutKeyDone"), 1, 1, 1, 2);
    auto* action = Named<QComboBox>(page, "cboShortCutKeyAction");
    action->setMinimumWidth(200);
    QPushButton* add = Button(page, "cmdShortCutKeyAdd", "登録");
    connect(add, &QPushButton::clicked, this, &frmOption::cmdShortCutKeyAdd_Click);
    g->addWidget(Label(page, "動作"), 2, 0);
    g->addWidget(action, 2, 1);
    g->addWidget(add, 2, 2, Qt::AlignLeft);

    v->addWidget(Label(page, "ショートカットキーリスト"));
    v->addWidget(ListView(page, "livShortCutKey", {QStringLiteral("動作"), QStringLiteral("キー")}, {220, 140}), 1);
    QPushButton* remove = Button(page, "cmdShortCutKeyDelete", "削除");
    connect(remove, &QPushButton::clicked, this, &frmOption::cmdShortCutKeyDelete_Click);
    v->addLayout(RightAligned(remove));
    return page;
}

void frmOption::RebuildTable(const SDC& vTable, QTreeWidget* vList, bool vByTrigger)
{
    vTable->Clear();
    for (int i = 0; i < vList->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* row = vList->topLevelItem(i);
        vTable->AddData(row->text(0), vByTrigger ? row->text(1) : row->text(0));
    }
}

// ---- gestures

void frmOption::cmdMouseGesture_Click(int vIndex)
{
    auto* gesture = Ctl<QLabel>(QStringLiteral("lblMouseGesture"));
    gesture->setText(gesture->text() + kArrows.at(vIndex));
    UpdateGestureDone();
}

void frmOption::cmdMouseGestureBS_Click()
{
    auto* gesture = Ctl<QLabel>(QStringLiteral("lblMouseGesture"));
    if (gesture->text().isEmpty())
        return;
    gesture->setText(gesture->text().chopped(1));
    UpdateGestureDone();
}

void frmOption::UpdateGestureDone()
{
    Ctl<QLabel>(QStringLiteral("lblMouseGestureDone"))
        ->setText(gestureTable_->DataValue(Ctl<QLabel>(QStringLiteral("lblMouseGesture"))->text()));
}

void frmOption::cmdMouseGestureAdd_Click()
{
    auto* gesture = Ctl<QLabel>(QStringLiteral("lblMouseGesture"));
    const QString text = gesture->text();
    if (text.isEmpty()) {
        CommonLibClass::ErrMsgBox(QStringLiteral("ゼスチャを入力してください。"));
        return;
    }
    if (gestureTable_->Exists(text)) {
        CommonLibClass::ErrMsgBox(QStringLiteral("既にゼスチャが登録されています。"));
        return;
    }
    const QString action = Ctl<QComboBox>(QStringLiteral("cboMouseGestureAction"))->currentText();
    AddRow(Ctl<QTreeWidget>(QStringLiteral("livMouseGesture")), {action, text});
    gestureTable_->AddData(action, text);
    gesture->clear();
}

void frmOption::cmdMouseGestureDelete_Click()
{
    auto* list = Ctl<QTreeWidget>(QStringLiteral("livMouseGesture"));
    if (!CheckDelete(list))
        return;
    QTreeWidgetItem* row = list->currentItem();
    gestureTable_->DeleteData(row->text(1));
    delete row;
}

// ---- keys

QString frmOption::ShortCutKeyString() const
{
    qint32 mask = 0;
    if (Ctl<QCheckBox>(QStringLiteral("chkShortCutKeyCtrl"))->isChecked())
        mask |= KeyCodeClass::MaskCtrl;
    if (Ctl<QCheckBox>(QStringLiteral("chkShortCutKeyShift"))->isChecked())
        mask |= KeyCodeClass::MaskShift;
    if (Ctl<QCheckBox>(QStringLiteral("chkShortCutKeyAlt"))->isChecked())
        mask |= KeyCodeClass::MaskAlt;
    return KeyCodeClass::ShortCutKeyString(mask, Ctl<QComboBox>(QStringLiteral("cboShortCutKey"))->currentText());
}

void frmOption::UpdateShortCutKeyDone()
{
    if (auto* done = Ctl<QLabel>(QStringLiteral("lblShortCutKeyDone")); done && keyTable_)
        done->setText(keyTable_->DataValue(ShortCutKeyString()));
}

void frmOption::cmdShortCutKeyAdd_Click()
{
    const QString key = ShortCutKeyString();
    if (keyTable_->Exists(key)) {
        CommonLibClass::ErrMsgBox(QStringLiteral("既にキーが登録されています。"));
        return;
    }
    const QString action = Ctl<QComboBox>(QStringLiteral("cboShortCutKeyAction"))->currentText();
    AddRow(Ctl<QTreeWidget>(QStringLiteral("livShortCutKey")), {action, key});
    keyTable_->AddData(action, key);
}

void frmOption::cmdShortCutKeyDelete_Click()
{
    auto* list = Ctl<QTreeWidget>(QStringLiteral("livShortCutKey"));
    if (!CheckDelete(list))
        return;
    QTreeWidgetItem* row = list->currentItem();
    keyTable_->DeleteData(row->text(1));
    delete row;
}

bool frmOption::CheckDelete(QTreeWidget* vList)
{
    if (vList->topLevelItemCount() == 0) {
        CommonLibClass::ErrMsgBox(QStringLiteral("削除する設定がありません。"));
    } else if (!vList->currentItem() || !vList->currentItem()->isSelected()) {
        CommonLibClass::ErrMsgBox(QStringLiteral("削除する設定をリストから選択してください。"));
    } else {
        return true;
    }
    vList->setFocus();
    return false;
}
