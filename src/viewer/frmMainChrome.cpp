// The bars around the pages: the "MENU" bar with the menu tree and the page controls, the
// vertical "DISPSIZE" bar at the left, the tab menu and the status bar. What the buttons do when
// pressed is in frmMainChromeCommands.cpp.
//
// Every button is one QAction kept under its key in buttons_, whichever bars show it, so that the
// window can check or disable a button by key wherever it stands.

#include "viewer/ChromeIcons.h"
#include "viewer/TabStrip.h"
#include "viewer/UpDownArrows.h"
#include "viewer/frmMain.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

namespace {

struct MenuDef {
    const char* Key;
    const char* Caption;
    const char* MenuKey;
};

struct ButtonDef {
    const char* Key;
    const char* Caption;
    const char* Icon;  // "" for none
    const char* Menu;  // the menu it stands in, "" for a bar of its own
};

constexpr MenuDef kMenus[] = {
    {"FILE", "ファイル(&F)", "FILE_MENU"},
    {"DISP", "表示(&V)", "DISP_MENU"},
    {"TOOL", "ツール(&T)", "TOOL_MENU"},
    {"WINDOW", "ウインドウ(&W)", "WINDOW_MENU"},
    {"HELP", "ヘルプ(&H)", "HELP_MENU"},
};

constexpr ButtonDef kButtons[] = {
    {"FILE_OPEN", "ファイルを開く(&O)", "FILE02_16", "FILE_MENU"},
    {"FOLDER_OPEN", "フォルダ内のファイルを全て開く(&F)", "OPENFOLDER_16", "FILE_MENU"},
    {"FILE_PATH_COPY", "フルパスファイル名をクリップボードにコピーする(&C)", "", "FILE_MENU"},
    {"OPEN_INI_FOLDER", "設定ファイルのフォルダを開く(&I)", "", "FILE_MENU"},
    {"FILE_EXIT", "終了(&E)", "", "FILE_MENU"},
    {"DISP_DIRECTION", "右から左に表示(&R)", "RIGHTLEFT_16", "DISP_MENU"},
    {"DISP_UPDATE", "画面を更新(&U)", "UPDATE_16", "DISP_MENU"},
    {"ADD_H_RULER", "水平ルーラーを追加(&H)", "", "DISP_MENU"},
    {"ADD_V_RULER", "垂直ルーラーを追加(&V)", "", "DISP_MENU"},
    {"DELL_RULER", "ルーラーを全て削除(&D)", "", "DISP_MENU"},
    {"TOOL_OPTION", "オプション(&O)", "OPTION_16", "TOOL_MENU"},
    {"ALL_TAB_CLOSE", "すべてのタブを閉じる(&A)", "WINDOWCLOSE01_16", "WINDOW_MENU"},
    {"ALL_TAB_NEXT", "次のタブに移動(&N)", "", "WINDOW_MENU"},
    {"ALL_TAB_PREVIOUS", "前のタブに移動(&P)", "", "WINDOW_MENU"},
    {"HELP_INDEX", "目次(&I)...", "HELP01_16", "HELP_MENU"},
    {"HELP_VERSION", "バージョン(&V)...", "INFO_16", "HELP_MENU"},
    {"PREV_PAGE", "前ページ", "FILE02_16", ""},
    {"NEXT_PAGE", "次ページ", "FILE02_16", ""},
    {"PAGE_JUMP", "ページ指定", "", ""},
    {"TABL_CLOSE", "閉じる(&C)", "WINDOWCLOSE03_16", ""},
};

// The option groups of the left bar; the first of each is checked at start.
constexpr ButtonDef kLayoutButtons[] = {
    {"DOUBLE_DISP:1", "単一", "", ""},
    {"DOUBLE_DISP:2", "見開き", "", ""},
};
constexpr ButtonDef kSizeButtons[] = {
    {"DISPSIZE:0", "横幅", "", ""},       {"DISPSIZE:1", "ページ全体", "", ""},
    {"DISPSIZE:2", "100%", "", ""},       {"DISPSIZE:3", "200%", "", ""},
    {"DISPSIZE:4", "300%", "", ""},       {"DISPSIZE:5", "400%", "", ""},
    {"DISPSIZE:6", "500%", "", ""},
};

QString Text(const char* vUtf8) { return QString::fromUtf8(vUtf8); }

QLabel* MakeCaptionLabel(const QString& vText, QWidget* vParent)
{
    auto* label = new QLabel(vText, vParent);
    label->setContentsMargins(4, 0, 2, 0);
    return label;
}

} // namespace

void frmMain::CreateCommandBar()
{
    auto makeButton = [this](const ButtonDef& vDef) {
        const QString key = Text(vDef.Key);
        auto* action = new QAction(Text(vDef.Caption), this);
        action->setObjectName(key);
        if (*vDef.Icon)
            action->setIcon(ChromeIcon(Text(vDef.Icon), key));
        connect(action, &QAction::triggered, this, [this, key] { OnButtonPress(key); });
        buttons_.insert(key, action);
        return action;
    };
    // Labels, panels and separators are buttons too, so that each key names its place on a bar.
    auto place = [this](const QString& vKey, QAction* vAction) {
        vAction->setObjectName(vKey);
        buttons_.insert(vKey, vAction);
    };

    // ---- the menus and their items
    QHash<QString, QMenu*> menus;
    auto* container = new QWidget(this);
    container->setObjectName(QStringLiteral("MENU"));
    container->setWindowTitle(QStringLiteral("Menu"));
    menuBar_ = new QMenuBar(container);
    menuBar_->setObjectName(QStringLiteral("menuBar"));
    // The menus and the page controls read as one bar: no line under the menus alone.
    menuBar_->setStyleSheet(QStringLiteral("QMenuBar { border: 0px; background: transparent; }"));
    for (const MenuDef& def : kMenus) {
        QMenu* menu = menuBar_->addMenu(Text(def.Caption));
        menu->setObjectName(Text(def.MenuKey));
        place(Text(def.Key), menu->menuAction());
        menus.insert(Text(def.MenuKey), menu);
    }
    for (const ButtonDef& def : kButtons) {
        QAction* action = makeButton(def);
        if (*def.Menu)
            menus.value(Text(def.Menu))->addAction(action);
    }
    Button(QStringLiteral("DISP_DIRECTION"))->setCheckable(true);
    // ---- the rest of the "MENU" bar: moving through pages, the page jump, the drag picture
    auto* pageBar = new QToolBar(container);
    pageBar->setObjectName(QStringLiteral("PageBar"));
    pageBar->setMovable(false);
    pageBar->setFloatable(false);
    pageBar->setIconSize(QSize(16, 16));
    pageBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    pageBar->setStyleSheet(QStringLiteral("QToolBar { border: 0px; }"));
    place(QStringLiteral("PAGEMOVE:SEPARATOR"), pageBar->addSeparator());
    pageBar->addAction(Button(QStringLiteral("PREV_PAGE")));
    pageBar->addAction(Button(QStringLiteral("NEXT_PAGE")));
    place(QStringLiteral("SKIP_PAGE:CAPTION"),
          pageBar->addWidget(MakeCaptionLabel(QStringLiteral("移動量:"), pageBar)));
    txtSkipPage_ = new QLineEdit(QStringLiteral("1"), pageBar);
    txtSkipPage_->setObjectName(QStringLiteral("txtSkipPage"));
    txtSkipPage_->setAlignment(Qt::AlignRight);
    txtSkipPage_->setFixedWidth(txtSkipPage_->fontMetrics().horizontalAdvance(QStringLiteral("9999")) + 12);
    place(QStringLiteral("SKIP_PAGE"), pageBar->addWidget(txtSkipPage_));
    auto* upDown = new UpDownArrows(pageBar);
    upDown->setObjectName(QStringLiteral("UpDown"));
    upDown->setFixedHeight(txtSkipPage_->sizeHint().height());
    connect(upDown, &UpDownArrows::Up, this, [this] { SkipPageUp(); });
    connect(upDown, &UpDownArrows::Down, this, [this] { SkipPageDown(); });
    place(QStringLiteral("UP_DOWN"), pageBar->addWidget(upDown));
    place(QStringLiteral("PAGEJUMP:SEPARATOR"), pageBar->addSeparator());
    pageBar->addAction(Button(QStringLiteral("PAGE_JUMP")));
    place(QStringLiteral("DRAGPATH:SEPARATOR"), pageBar->addSeparator());
    auto* dragPicture = new QLabel(pageBar);
    dragPicture->setObjectName(QStringLiteral("picDragFile"));
    dragPicture->setFixedSize(16, 16);
    dragPicture->setPixmap(ChromeIcon(QStringLiteral("FILE01_16")).pixmap(16, 16));
    picDragFile_ = dragPicture;
    place(QStringLiteral("DRAG_PATH"), pageBar->addWidget(picDragFile_));

    auto* row = new QHBoxLayout(container);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(menuBar_);
    row->addWidget(pageBar);
    row->addStretch(1);
    setMenuWidget(container);

    // ---- the "DISPSIZE" bar at the left: layout and size, each an exclusive group
    sizeBar_ = new QToolBar(QStringLiteral("DispSize"), this);
    sizeBar_->setObjectName(QStringLiteral("DISPSIZE"));
    sizeBar_->setOrientation(Qt::Vertical);
    sizeBar_->setMovable(false);
    sizeBar_->setFloatable(false);
    sizeBar_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    sizeBar_->setContextMenuPolicy(Qt::PreventContextMenu);  // no menu to hide the bar with
    addToolBar(Qt::LeftToolBarArea, sizeBar_);
    QList<QWidget*> options;
    auto addOptions = [&](const auto& vDefs) {
        auto* group = new QActionGroup(sizeBar_);
        group->setExclusive(true);
        for (const ButtonDef& def : vDefs) {
            QAction* action = makeButton(def);
            action->setCheckable(true);
            group->addAction(action);
            sizeBar_->addAction(action);
            options.append(sizeBar_->widgetForAction(action));
        }
        group->actions().constFirst()->setChecked(true);
    };
    place(QStringLiteral("DOUBLE_DISP:CAPTION"),
          sizeBar_->addWidget(MakeCaptionLabel(QStringLiteral("表示:"), sizeBar_)));
    addOptions(kLayoutButtons);
    place(QStringLiteral("DOUBLE_DISP:SEPARATOR"), sizeBar_->addSeparator());
    place(QStringLiteral("DISPSIZE:CAPTION"),
          sizeBar_->addWidget(MakeCaptionLabel(QStringLiteral("サイズ:"), sizeBar_)));
    addOptions(kSizeButtons);
    // One column of equal buttons reads as a choice better than a ragged one.
    int widest = 0;
    for (const QWidget* option : std::as_const(options))
        widest = std::max(widest, option->sizeHint().width());
    for (QWidget* option : std::as_const(options))
        option->setMinimumWidth(widest);

    // ---- the tab menu
    tabMenu_ = new QMenu(this);
    tabMenu_->setObjectName(QStringLiteral("TAB_MENU"));
    tabMenu_->addAction(Button(QStringLiteral("TABL_CLOSE")));
    tabMenu_->addAction(Button(QStringLiteral("ALL_TAB_CLOSE")));

    // ---- the status bar: path and gesture, page, number of files
    for (int i = 0; i < 3; ++i) {
        panels_[i] = new QLabel(statusBar());
        panels_[i]->setObjectName(QStringLiteral("Panel%1").arg(i + 1));
    }
    panels_[1]->setMinimumWidth(panels_[1]->fontMetrics().horizontalAdvance(QStringLiteral("00000/00000")));
    panels_[2]->setMinimumWidth(panels_[2]->fontMetrics().horizontalAdvance(QStringLiteral("000Files")));
    panels_[1]->setAlignment(Qt::AlignCenter);
    panels_[2]->setAlignment(Qt::AlignCenter);
    statusBar()->addWidget(panels_[0], 1);
    statusBar()->addPermanentWidget(panels_[1]);
    statusBar()->addPermanentWidget(panels_[2]);
    UpdateStatusBar();
}

void frmMain::CheckButton(const QString& vKey, bool vChecked)
{
    // setChecked runs no action: only a press triggers one. The option group unchecks the rest.
    if (QAction* action = Button(vKey))
        action->setChecked(vChecked);
}

QLabel* frmMain::StatusPanel(int vPanelNo) const
{
    return vPanelNo >= 1 && vPanelNo <= 3 ? panels_[vPanelNo - 1] : nullptr;
}
