#pragma once
// The one main window: tabs of opened files over one set of page panes, the bars around them
// and the status bar. Its operations are spread over files by concern: frmMain.cpp (load and
// close), frmMainTabs.cpp, frmMainDisplay.cpp (drawing pages, sizes and layout),
// frmMainNavigation.cpp, frmMainChrome.cpp (making the bars and the status bar),
// frmMainChromeCommands.cpp (what the bars, menus and status bar do) and frmMainIntake.cpp
// (files coming in).

#include "commands/AppAcceleratorKeyClass.h"
#include "commands/ViewerOperations.h"
#include "store/StructuredDataClass.h"
#include "viewer/AppContext.h"
#include "viewer/AppFileClass.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include <memory>

class AppFileListClass;
class AppRulerCtrlClass;
class clsMouseEvents;
class DocuWorksClass;
class DocuWorksFileClass;
class PagePane;
class QActionGroup;
class SQLiteStatementClass;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QToolBar;
class QWindow;
class TabStrip;

class frmMain : public QMainWindow, public ViewerOperations {
    Q_OBJECT
public:
    static inline const QString Caption = QStringLiteral("Marnoquill");
    static inline const QString WindowGroup = QStringLiteral("\\ウインドウ\\");

    explicit frmMain(AppContext& vContext, QWidget* vParent = nullptr);
    ~frmMain() override;

    // The window's load step; a failing step shows its message and ends the load there.
    void Load();

    // ---- start-up and closing
    void ActiveMe();
    void EndApp() override;

    // ---- tabs
    void InitialOpenFile(const QString& vFileName, bool vSelected);
    void OpenFile(qint32 vTabNo, const QString& vFileName, qint16 vPage);
    std::shared_ptr<AppFileClass> SelectedFile() const;
    static QString GetTabNo(const QString& vKey) { return vKey.mid(1); }
    void SelectedTabUpdate() override;
    void SelectedTabFilePathCopy() override;
    QString GetSelectedTabFilePath() const;
    void TabClose() override;
    void AllTabClose() override;
    void NextTab() override;
    void PreviousTab() override;

    // ---- files coming in
    void ManyFileOpen(const SDC& vFiles);
    void OpenDialog() override;
    void FolderOpenDialog() override;
    void ReadFolder(const QString& vAction) override;
    void ArrangementExec(const QString& vProcName) override;
    void ManyFileOpenUseDb();
    void FindFile(const QString& vFileName, const QString& vPath);  // one find of a folder walk
    void mcDragDrop_evDragDrop(const SDC& vFiles);
    // Where this process keeps its file list database; makes the folder when it is missing.
    QString FileListDbPath() const;
    bool Reading() const { return reading_; }

    // ---- rulers: 0 horizontal, 1 vertical
    void AddRuler(qint16 vType) override;
    void DeleteAllRuler() override;

    // ---- sizes and layout
    void SetPaintSizeMode(const QString& vSizeMode) override;
    void SetPaintSizeModeSub(const QString& vSizeMode, PagePane* vLEAD);
    void SetDoubleDisp(const QString& vMode) override;
    void SetDispDirection(const QString& vMode) override;

    // ---- moving through pages
    void NextPage() override;
    void PreviousPage() override;
    void PageJump() override;

    // ---- chrome
    void DispHelp();
    void DispVersion() override;
    void OpenIniFolder();
    void OptionWindowOpen() override;

    // ---- modal dialogs mute the mouse-driven actions meanwhile
    bool DialogOpen() const { return dialogOpen_; }
    void SetDialogOpen(bool v) { dialogOpen_ = v; }
    void CreateMouseEvents();
    void ReleaseMouseEvents();
    clsMouseEvents* MouseTracker() const { return mcMouse_.get(); }

    // ---- keys bound in the settings fire only while this window is the active one
    void SetAcceleratorKey();
    void RemoveAcceleratorKey();

    // ---- what the rest of the program and the tests look at
    AppContext& Context() const { return context_; }
    SDC TabTable() const { return tabTable_; }
    SDC WindowState() const { return windowState_; }
    TabStrip* tabMain() const { return tabMain_; }
    PagePane* LEAD(int vIndex) const;  // 1 to 4
    QLineEdit* txtSkipPage() const { return txtSkipPage_; }
    QLabel* StatusPanel(int vPanelNo) const;  // 1 to 3
    QAction* Button(const QString& vKey) const { return buttons_.value(vKey); }
    QMenu* PopupMenu() const { return popupMenu_; }
    QMenu* TabMenu() const { return tabMenu_; }
    // The settings value of a control under "\ウインドウ\", "" when the group or key is absent.
    QString WindowSetting(const QString& vControl, const QString& vForm) const;

    // Twips, the unit in which the settings file keeps window measures.
    double TwipsPerPixel() const;

protected:
    void closeEvent(QCloseEvent* vEvent) override;
    void resizeEvent(QResizeEvent* vEvent) override;
    void changeEvent(QEvent* vEvent) override;
    void mouseReleaseEvent(QMouseEvent* vEvent) override;
    void keyReleaseEvent(QKeyEvent* vEvent) override;
    void showEvent(QShowEvent* vEvent) override;
    bool eventFilter(QObject* vWatched, QEvent* vEvent) override;
    void dragEnterEvent(QDragEnterEvent* vEvent) override;
    void dragMoveEvent(QDragMoveEvent* vEvent) override;
    void dropEvent(QDropEvent* vEvent) override;

private:
    // ---- load and close (frmMain.cpp)
    bool QueryClose();
    void CloseHandler();
    void SaveMemoryOfDetailSet(const QString& vName);
    void LoadMemoryOfDetailSet(const QString& vName);
    void EndActiveMe();
    void OnFocusWindowChanged(QWindow* vNow);

    // ---- tabs (frmMainTabs.cpp)
    bool IsFileOpened(const QString& vPath) const;
    qint32 NextTabNo();
    std::shared_ptr<AppFileClass> FileOfTab(const QString& vKey) const;
    void SelectTab(const QString& vKey);
    void UpdateTab(const QString& vKey);
    void ApplyTabDisplay(const QString& vKey);
    void CopyTabFilePath(const QString& vKey);
    QString GetTabFilePath(const QString& vKey) const;
    void OnTabClicked(const QString& vKey, int vButton, const QPoint& vPosition);
    void OnTabSelectionChanged();
    void OnTabCloseRequested(const QString& vKey);
    void HideTabs();

    // ---- drawing pages, sizes and layout (frmMainDisplay.cpp)
    void InitializeLead();
    void InitializeWindow();
    void OpenXdwFile(qint32 vTabNo, const QString& vFileName, bool vShow, qint16 vPage);
    void OpenTifFile(qint32 vTabNo, const QString& vFileName, bool vShow, qint16 vPage);
    void RenderXdwPage(DocuWorksClass& vDocuWorks, DocuWorksFileClass& vFile, qint16 vPage, PagePane* vPane);
    void SetPageFromHandle(PagePane* vPane, qint32 vHandle);
    void LoadTiffPage(PagePane* vPane, const QString& vFileName, qint16 vPage);
    qint16 GetResolution() const;
    qint16 GetGamma() const;
    void UpdateDoubleDisp(const QString& vMode);
    void UpdateDispDirection(const QString& vMode);
    void SetTabPageAmount(const QString& vMode);
    void SetTabDispDirection(const QString& vMode);
    void SwitchPanes(const QString& vMode);
    void LEAD23_Resize();
    void RestoreScaling();
    void OnWindowResize();

    // ---- moving through pages (frmMainNavigation.cpp)
    void MovePage(int vDirection);

    // ---- the pointer over the panes (frmMainPointer.cpp)
    bool PaneMouseEvent(PagePane* vPane, QMouseEvent* vEvent);
    void PaneMouseDown(PagePane* vPane, int vButton, QPointF vAt);
    void PaneMouseUp(PagePane* vPane, int vButton);
    void PaneMouseMove(PagePane* vPane, QPointF vAt);
    void mcMouse_MouseDown(qint16 vButton, qint32 vVector);
    void mcMouse_MouseUp(qint16 vButton, qint32 vVector);
    void mcMouse_MouseDblClick(qint16 vButton, qint32 vVector);
    void mcMouse_MouseWheelRotate(qint16 vButton, qint32 vVector);
    void mcMouse_OnActionMove(qint32 vMoveCount, qint32 vMoveDir);
    void mcMouse_OnActionEnd(qint32 vMoveCount);
    bool IsMouseGestureEnabled() const;
    bool HasPopupEntries() const;
    void RunTrigger(const QString& vTrigger);
    void WheelMovePage(qint16 vButton);
    void WheelMoveTab(qint16 vButton);

    // ---- files coming in (frmMainIntake.cpp, frmMainFolderRead.cpp)
    void ReadFolderFiles(const QString& vFolder, const QString& vPattern, bool vSubDirs);

    // ---- bars, menus, status bar (frmMainChrome.cpp, frmMainChromeCommands.cpp)
    void CreateCommandBar();
    void OnButtonPress(const QString& vKey);
    void UpdatePopupMenu();
    void UpdateStatusBar();
    void ShowTabMenu(int vX, int vY);
    void ShowPopupMenu(int vX, int vY);
    void SkipPageUp();
    void SkipPageDown();
    void CheckButton(const QString& vKey, bool vChecked);

    AppContext& context_;
    SDC tabTable_;
    SDC windowState_;
    qint32 tabCounter_ = 0;
    bool bulkClosing_ = false;
    bool dialogOpen_ = false;
    bool stopRead_ = false;
    bool reading_ = false;
    // A folder read: its database, what it found and the statement the tabs are opened from.
    std::unique_ptr<AppFileListClass> fileList_;
    qint32 fileCount_ = 0;
    qint32 findNo_ = 0;  // numbers every find of the process's life, never reset
    qint16 procNo_ = 0;
    std::unique_ptr<SQLiteStatementClass> fileListReader_;
    bool activeMeBusy_ = false;
    bool shownOnce_ = false;
    QPointer<QWindow> lastFocusWindow_;
    int lastWidth_ = 0;   // to tell a true size change from any other resize
    int lastHeight_ = 0;

    TabStrip* tabMain_ = nullptr;
    PagePane* lead_[4] = {};
    std::unique_ptr<clsMouseEvents> mcMouse_;
    std::unique_ptr<AppAcceleratorKeyClass> keys_;
    AppRulerCtrlClass* rulers_ = nullptr;  // a child of the window
    bool dragActive_ = false;
    QPointF lastDrag_;
    bool gestureDone_ = false;
    qint32 pageWheel_ = 0;
    qint32 tabWheel_ = 0;
    QTimer timer1_;  // restores smooth painting after a resize
    QTimer timer2_;  // ends the top-most period of ActiveMe

    // Chrome, made by CreateCommandBar.
    QMenuBar* menuBar_ = nullptr;
    QToolBar* sizeBar_ = nullptr;
    QLineEdit* txtSkipPage_ = nullptr;
    QWidget* picDragFile_ = nullptr;
    QLabel* panels_[3] = {};
    QMenu* tabMenu_ = nullptr;
    QMenu* popupMenu_ = nullptr;
    QStringList popupKeys_;
    QHash<QString, QAction*> buttons_;
};
