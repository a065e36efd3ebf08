#pragma once
// The trigger table: every stored mouse, gesture and key binding flattened into one list from
// trigger string (a mouse word, a gesture text such as "↓→", a key string such as
// "Ctrl + Shift + A") to action name. Whoever catches a trigger looks it up here; a trigger
// without an entry gives "", which the dispatcher ignores.

#include "store/StructuredDataClass.h"

#include <QString>

class AppCommandListClass {
public:
    // The fixed mouse triggers, as the mouse handlers send them.
    static inline const QString MouseLeftDClick = QStringLiteral("左ダブルクリック");
    static inline const QString MouseWheelClick = QStringLiteral("ホイールクリック");
    static inline const QString Mouse4thClick = QStringLiteral("第4クリック");
    static inline const QString Mouse5thClick = QStringLiteral("第5クリック");
    static inline const QString MouseRightWheel = QStringLiteral("右ボタンホイール");

    static inline const QString MouseGroup = QStringLiteral("\\マウス\\");
    static inline const QString GestureGroup = QStringLiteral("\\マウスジェスチャ\\");
    static inline const QString KeyboardGroup = QStringLiteral("\\キーボード\\");

    AppCommandListClass();
    ~AppCommandListClass();
    AppCommandListClass(const AppCommandListClass&) = delete;
    AppCommandListClass& operator=(const AppCommandListClass&) = delete;

    // The settings tree to read; not owned beyond the reference. Set before CreateCommandList.
    void RefDetailSet(const SDC& vDetailSet) { detailSet_ = vDetailSet; }
    SDC CommandList() const { return commandList_; }

    // Rebuilds the table from the referenced tree. A group that is absent adds nothing; a group
    // that lacks one of its lists raises the store's error.
    void CreateCommandList();

private:
    void AddListBindings(const QString& vGroup, const QString& vList);

    SDC commandList_;
    SDC detailSet_;
};
