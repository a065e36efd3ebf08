#pragma once
// The options dialog ("オプション設定"): eight pages, picked from a tree, over a private clone of
// the settings tree. Pages are stored into the clone as the user leaves them; "保存" puts a clone
// of it in place of the live tree, writes the settings file and rebuilds the trigger table and
// the action lists, while "キャンセル" drops it, so that nothing live is touched until then.
//
// The controls are found by their names, which are also their keys in the settings file; a
// control array is several widgets of one name told apart by their property "Index".

#include "store/StructuredDataClass.h"

#include <QDialog>

#include <vector>

class AppActionClass;
class AppCommandListClass;
class ctlSplitter;
class QPushButton;
class QStackedLayout;
class QTreeWidget;
class QTreeWidgetItem;

class frmOption : public QDialog {
    Q_OBJECT
public:
    static inline const QString Caption = QStringLiteral("オプション設定");

    // vDetailSet is the variable holding the live tree: "保存" puts the new tree there.
    frmOption(SDC& vDetailSet, const QString& vSettingsPath, AppActionClass& vAction,
              AppCommandListClass& vCommandList, QWidget* vOwner);
    ~frmOption() override;

    // The page shown, 1 to 8, by the node's picture number.
    int CurrentImage() const;
    SDC WorkingCopy() const { return work_; }

    template <class T>
    T* Ctl(const QString& vName, int vIndex = -1) const
    {
        for (T* w : findChildren<T*>(vName)) {
            if (vIndex < 0 || w->property("Index").toInt() == vIndex)
                return w;
        }
        return nullptr;
    }

    void cmdSave_Click();
    void cmdCancel_Click();

protected:
    void showEvent(QShowEvent* vEvent) override;

private:
    // ---- the frame (frmOption.cpp)
    void BuildFrame();
    void LoadForm();
    void FillDropDowns();
    void TreeView1_NodeClick(QTreeWidgetItem* vNode, QTreeWidgetItem* vPrevious);
    void ShowPage(QTreeWidgetItem* vNode);
    bool StorePage();
    bool ValidatePage();
    void ResetPage(int vImage);
    void AfterLoad(int vImage);
    void UpdateMinimumSize();
    void ClearWorkingTables();

    // ---- page builders (OptionPage*.cpp)
    QWidget* BuildWindowPage();
    QWidget* BuildMousePage();
    QWidget* BuildGesturePage();
    QWidget* BuildKeyboardPage();
    QWidget* BuildActionPage();
    QWidget* BuildMultiPage();
    QWidget* BuildReadPage();
    QWidget* BuildPopupPage();

    // ---- the window page
    // The sort options follow chkWindowSort, the time chkActiveForm.
    void ApplyEnabling();
    void picRulerColor_Click();

    // ---- gestures and keys (OptionPageInput.cpp)
    void cmdMouseGesture_Click(int vIndex);
    void cmdMouseGestureBS_Click();
    void cmdMouseGestureAdd_Click();
    void cmdMouseGestureDelete_Click();
    void UpdateGestureDone();
    QString ShortCutKeyString() const;
    void UpdateShortCutKeyDone();
    void cmdShortCutKeyAdd_Click();
    void cmdShortCutKeyDelete_Click();
    static void RebuildTable(const SDC& vTable, QTreeWidget* vList, bool vByTrigger);

    // ---- composites, read settings, popup rows (OptionPageLists.cpp)
    void cmdMultiActionActionAdd_Click();
    void cmdMultiActionActionDel_Click();
    void cmdMultiActionMultiActionAdd_Click();
    void cmdMultiActionMultiActionDel_Click();
    void livMultiActionMultiAction_Click(QTreeWidgetItem* vItem);
    void StoreMultiActions();
    void cmdRefReadFolder_Click();
    void cmdReadAdd_Click();
    void cmdReadDel_Click();
    void livReadFolder_Click(QTreeWidgetItem* vItem);
    void cmdPMenuAdd_Click();
    void cmdPMenuDel_Click();
    void MovePopupRow(int vStep);
    // The check every delete button runs first: a message, and the focus on the list, when
    // the list is empty or nothing in it is chosen.
    static bool CheckDelete(QTreeWidget* vList);

    SDC& detailSet_;
    QString settingsPath_;
    AppActionClass& action_;
    AppCommandListClass& commandList_;
    QWidget* owner_;

    SDC work_;
    SDC keyTable_;      // key string -> action
    SDC gestureTable_;  // gesture text -> action
    SDC multiTable_;    // composite name -> thread of steps
    SDC readTable_;     // read setting name -> name

    QTreeWidget* TreeView1_ = nullptr;
    ctlSplitter* ctlSplitter1_ = nullptr;
    QWidget* picLeft_ = nullptr;
    QStackedLayout* pages_ = nullptr;
    std::vector<QWidget*> picOptionMain_;  // the pages, by picture number - 1
    QPushButton* cmdSave_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    QTreeWidgetItem* currentNode_ = nullptr;
    bool changingNode_ = false;
};
