// What the bar buttons do, the popup menu a user builds in the options, the status bar, and the
// help, version and settings-folder commands.

#include "options/frmOption.h"
#include "support/AppError.h"
#include "viewer/AppRulerCtrlClass.h"
#include "viewer/ChromeMenus.h"
#include "viewer/NumericText.h"
#include "viewer/TabStrip.h"
#include "viewer/frmAbout.h"
#include "viewer/frmMain.h"
#include "support/DesktopOpener.h"  // the help and the settings folder go to the desktop's opener

#include <QCoreApplication>
#include <QLineEdit>
#include <QMenu>
#include <QStatusBar>

namespace {

using Operation = void (frmMain::*)();

// The buttons that call an operation without arguments, by the key's first item. Keys absent
// here and not handled beside (sizes, layout, direction) do nothing.
const QHash<QString, Operation>& PlainOperations()
{
    static const QHash<QString, Operation> operations = {
        {QStringLiteral("FILE_OPEN"), &frmMain::OpenDialog},
        {QStringLiteral("FOLDER_OPEN"), &frmMain::FolderOpenDialog},
        {QStringLiteral("FILE_PATH_COPY"), &frmMain::SelectedTabFilePathCopy},
        {QStringLiteral("OPEN_INI_FOLDER"), &frmMain::OpenIniFolder},
        {QStringLiteral("FILE_EXIT"), &frmMain::EndApp},
        {QStringLiteral("DISP_UPDATE"), &frmMain::SelectedTabUpdate},
        {QStringLiteral("NEXT_PAGE"), &frmMain::NextPage},
        {QStringLiteral("PREV_PAGE"), &frmMain::PreviousPage},
        {QStringLiteral("PAGE_JUMP"), &frmMain::PageJump},
        {QStringLiteral("TABL_CLOSE"), &frmMain::TabClose},
        {QStringLiteral("ALL_TAB_CLOSE"), &frmMain::AllTabClose},
        {QStringLiteral("ALL_TAB_NEXT"), &frmMain::NextTab},
        {QStringLiteral("ALL_TAB_PREVIOUS"), &frmMain::PreviousTab},
        {QStringLiteral("TOOL_OPTION"), &frmMain::OptionWindowOpen},
        {QStringLiteral("HELP_INDEX"), &frmMain::DispHelp},
        {QStringLiteral("HELP_VERSION"), &frmMain::DispVersion},
        {QStringLiteral("DELL_RULER"), &frmMain::DeleteAllRuler},
    };
    return operations;
}

// The arrows keep the move amount from 1 to 9999; what a user typed beyond either end is only
// stepped back towards it. A number beyond 16 bits can't be stepped at all and stays.
constexpr double kSkipPageMin = 1;
constexpr double kSkipPageMax = 9999;

// Without the desktop's opener (or when it fails) the user is told what to open by hand.
const QString kHelpNotOpened = QStringLiteral("ヘルプを開けませんでした。次のファイルをブラウザで開いてください。\n");
const QString kFolderNotOpened = QStringLiteral("設定ファイルのフォルダを開けませんでした。次のフォルダを開いてください。\n");

void OpenOrName(const QString& vPath, const QString& vMessage)
{
    desktopopener::Open(vPath, [text = vMessage + vPath] { CommonLibClass::WorningMsgBox(text); });
}

} // namespace

void frmMain::OnButtonPress(const QString& vKey)
{
    if (DialogOpen())
        return;

    const QString operation = ButtonOperation(vKey);
    if (const Operation call = PlainOperations().value(operation))
        (this->*call)();
    else if (operation == QLatin1String("DISP_DIRECTION"))
        SetDispDirection(Button(vKey)->isChecked() ? QStringLiteral("RL") : QStringLiteral("LR"));
    else if (operation == QLatin1String("DISPSIZE"))
        SetPaintSizeMode(ButtonArgument(vKey));
    else if (operation == QLatin1String("DOUBLE_DISP"))
        SetDoubleDisp(ButtonArgument(vKey));
    else if (operation == QLatin1String("ADD_H_RULER"))
        AddRuler(0);
    else if (operation == QLatin1String("ADD_V_RULER"))
        AddRuler(1);

    // A popup entry names an action, which runs through the action dispatcher.
    if (const std::optional<QString> action = PopupActionOfKey(vKey)) {
        if (context_.Action)
            context_.Action->ExecAction(*action);
    }
}

void frmMain::UpdatePopupMenu()
{
    if (!popupMenu_) {
        popupMenu_ = new QMenu(this);
        popupMenu_->setObjectName(QStringLiteral("POPUP_MENU"));
    } else {
        for (const QString& key : std::as_const(popupKeys_))
            buttons_.remove(key);
        popupKeys_.clear();
        popupMenu_->clear();  // deletes the menu's own actions
    }
    if (!Context().DetailSet)
        return;

    for (const PopupItem& item : PopupItems(*Context().DetailSet)) {
        auto* action = new QAction(item.Caption, popupMenu_);
        action->setObjectName(item.Key);
        action->setSeparator(item.Separator);
        if (!item.Separator) {
            const QString key = item.Key;
            connect(action, &QAction::triggered, this, [this, key] { OnButtonPress(key); });
        }
        buttons_.insert(item.Key, action);
        popupKeys_.append(item.Key);
        popupMenu_->addAction(action);
    }
}

void frmMain::UpdateStatusBar()
{
    const int count = tabMain() ? tabMain()->Count() : 0;
    if (count == 0) {
        CommonLibClass::PanelTextOut(statusBar(), 2, QString());
        CommonLibClass::PanelTextOut(statusBar(), 3, QStringLiteral("0Files"));
        return;
    }
    // The count is that of the tabs, also while a tab whose file never opened is the chosen one;
    // such a tab has no pages to number.
    const std::shared_ptr<AppFileClass> file = SelectedFile();
    CommonLibClass::PanelTextOut(statusBar(), 2,
                                 file ? QString::number(file->NowPage()) + QLatin1Char('/') +
                                            QString::number(file->TotalPage())
                                      : QString());
    CommonLibClass::PanelTextOut(statusBar(), 3, QString::number(count) + QStringLiteral("Files"));
}

void frmMain::ShowTabMenu(int vX, int vY)
{
    if (tabMenu_ && tabMain())
        tabMenu_->popup(tabMain()->mapToGlobal(QPoint(vX, vY)));
}

void frmMain::ShowPopupMenu(int vX, int vY)
{
    // An empty menu would show as a bare frame; with no entries a right click does nothing.
    if (popupMenu_ && !popupMenu_->isEmpty())
        popupMenu_->popup(QPoint(vX, vY));
}

void frmMain::SkipPageUp()
{
    txtSkipPage_->setText(StepNumberText(txtSkipPage_->text(), 1, kSkipPageMin, kSkipPageMax));
}

void frmMain::SkipPageDown()
{
    txtSkipPage_->setText(StepNumberText(txtSkipPage_->text(), -1, kSkipPageMin, kSkipPageMax));
}

void frmMain::DispHelp()
{
    OpenOrName(QCoreApplication::applicationDirPath() + QStringLiteral("/Marnoquill.html"), kHelpNotOpened);
}

void frmMain::DispVersion()
{
    ReleaseMouseEvents();
    SetDialogOpen(true);
    {
        frmAbout about(this);
        about.exec();
    }
    CreateMouseEvents();
    SetDialogOpen(false);
}

void frmMain::OpenIniFolder()
{
    OpenOrName(CommonLibClass::GetPathFromFullPath(Context().SettingsPath), kFolderNotOpened);
}

void frmMain::OptionWindowOpen()
{
    ReleaseMouseEvents();
    SetDialogOpen(true);
    if (context_.Action && context_.CommandList) {
        frmOption options(context_.DetailSet, context_.SettingsPath, *context_.Action, *context_.CommandList, this);
        options.exec();
    }
    // Whatever the dialog saved takes effect now: the popup rows, the gestures and clicks, the
    // keys, the rulers' width and colour, and the page drawn at the new resolution and gamma.
    UpdatePopupMenu();
    CreateMouseEvents();
    SetAcceleratorKey();
    if (rulers_)
        rulers_->ReadSettings(context_.DetailSet);
    SelectedTabUpdate();
    SetDialogOpen(false);
}
