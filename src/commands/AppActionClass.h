#pragma once
// Actions by name. An action is known only by its Japanese caption: the caption the user picks
// in the options, the value the settings store and the key the dispatcher compares are one
// string. This class offers the lists of names the options dialog shows, and turns a name into
// an operation of the main window.

#include "store/StructuredDataClass.h"

#include <QString>

class ViewerOperations;

class AppActionClass {
public:
    static inline const QString NoAction = QStringLiteral("なし");
    static inline const QString WheelMoveTab = QStringLiteral("タブの移動");
    static inline const QString WheelMovePage = QStringLiteral("ページの移動");

    // The families that come from the settings; each name starts with its prefix.
    static inline const QString BrackenfoldPrefix = QStringLiteral("Brackenfold:");
    static inline const QString ReadPrefix = QStringLiteral("Read:");
    static inline const QString MultiPrefix = QStringLiteral("Multi:");

    static inline const QString ActionGroup = QStringLiteral("\\動作\\");
    static inline const QString ReadGroup = QStringLiteral("\\読み込み\\");
    static inline const QString MultiGroup = QStringLiteral("\\複合動作\\");
    static inline const QString MultiList = QStringLiteral("動作リスト");

    // vDetailSet is the variable that holds the live settings tree, read anew on every use: the
    // options dialog replaces the tree object itself when it saves. Builds the lists at once.
    explicit AppActionClass(const SDC& vDetailSet);
    AppActionClass(SDC&&) = delete;  // a temporary would be gone before the first read
    ~AppActionClass();
    AppActionClass(const AppActionClass&) = delete;
    AppActionClass& operator=(const AppActionClass&) = delete;

    // Every name a click, gesture, key, composite or popup item can be bound to, in display
    // order, name as key and as value; and the two for the right-button wheel.
    SDC ActionName() const { return actionName_; }
    SDC WheelActionName() const { return wheelActionName_; }
    void LoadAction();

    // The window whose operations the actions call; not owned.
    void RefForm(ViewerOperations* vForm) { form_ = vForm; }

    // Runs an action. While one runs, another is dropped; a failure ends it with a message box
    // "number : description".
    void ExecAction(const QString& vAction);
    // The worker: the fixed names, then the prefixed families. Composite steps come back here.
    void ExecActionSub(const QString& vAction);

private:
    SDC DetailSet() const;
    ViewerOperations& Form() const;
    void AddBrackenfoldActions();
    void ExecMulti(const QString& vAction);
    void CheckStack();

    const SDC& detailSet_;
    SDC actionName_;
    SDC wheelActionName_;
    ViewerOperations* form_ = nullptr;
    bool running_ = false;
    quintptr stackBase_ = 0;  // the frame of the outermost ExecActionSub, 0 outside
};
