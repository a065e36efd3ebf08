// frmMain: the window's load step, activation and closing.
#include "viewer/frmMain.h"

#include "commands/clsMouseEvents.h"
#include "document/DocuWorksClass.h"
#include "filelist/AppFileListClass.h"
#include "settings/CtrlSaveLoadClass.h"
#include "settings/DataSaveLoadClass.h"
#include "settings/SettingsThreads.h"
#include "support/AppError.h"
#include "support/ProcessClass.h"
#include "viewer/AppRulerCtrlClass.h"
#include "viewer/FileDragSource.h"
#include "viewer/PagePane.h"
#include "viewer/TabStrip.h"

#include <QApplication>
#include <QCloseEvent>
#include <QWindow>
#include <QLineEdit>
#include <QStatusBar>

#include <cmath>

namespace {

const QString kLoadStep = QStringLiteral("frmMain Form_Load ");
constexpr int kMinimumTwips = 4800;  // the window's smallest width and height

} // namespace

frmMain::frmMain(AppContext& vContext, QWidget* vParent) : QMainWindow(vParent), context_(vContext)
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(Caption);
    timer1_.setSingleShot(true);
    timer1_.setInterval(500);
    connect(&timer1_, &QTimer::timeout, this, &frmMain::RestoreScaling);
    timer2_.setSingleShot(true);
    connect(&timer2_, &QTimer::timeout, this, &frmMain::EndActiveMe);

    // The strip is hidden while no tab exists; the panes live in its client area.
    tabMain_ = new TabStrip(this);
    tabMain_->setObjectName(QStringLiteral("tabMain"));
    setCentralWidget(tabMain_);
    tabMain_->hide();
    connect(tabMain_, &TabStrip::TabClicked, this, &frmMain::OnTabClicked);
    connect(tabMain_, &TabStrip::SelectionChanged, this, &frmMain::OnTabSelectionChanged);
    connect(tabMain_, &TabStrip::CloseRequested, this, &frmMain::OnTabCloseRequested);

    connect(qApp, &QGuiApplication::focusWindowChanged, this, &frmMain::OnFocusWindowChanged);

    keys_ = std::make_unique<AppAcceleratorKeyClass>(this, [this](const QString& vKeyString) { RunTrigger(vKeyString); });
}

frmMain::~frmMain() = default;

PagePane* frmMain::LEAD(int vIndex) const { return vIndex >= 1 && vIndex <= 4 ? lead_[vIndex - 1] : nullptr; }

double frmMain::TwipsPerPixel() const { return CtrlSaveLoadClass::TwipsPerPixel(this); }

// Reads a control's stored form under "\ウインドウ\" the way the settings readers always have:
// a missing group gives "", a missing control or form inside a present group is the store's
// error, which ends the caller's step.
QString frmMain::WindowSetting(const QString& vControl, const QString& vForm) const
{
    const SDC& settings = context_.DetailSet;
    if (!settings->Exists(WindowGroup))
        return {};
    return settingsthreads::Setting(settingsthreads::Child(settings, WindowGroup), vControl, vForm);
}

void frmMain::Load()
{
    QString step = kLoadStep + QStringLiteral("Start");
    try {
        tabTable_ = std::make_shared<StructuredDataClass>();
        windowState_ = std::make_shared<StructuredDataClass>();

        step = kLoadStep + QStringLiteral("コマンドバーの作成");
        CreateCommandBar();
        step = kLoadStep + QStringLiteral("イメージリストの割り当て");
        step = kLoadStep + QStringLiteral("コマンドバーの設定");
        setAcceptDrops(true);

        step = kLoadStep + QStringLiteral("InitializeLead");
        InitializeLead();
        step = kLoadStep + QStringLiteral("InitializeWindow");
        InitializeWindow();
        step = kLoadStep + QStringLiteral("InitializeWindow End");
        txtSkipPage_->setText(QStringLiteral("1"));

        const SDC& settings = context_.DetailSet;
        if (settings->Exists(WindowGroup)) {
            if (WindowSetting(QStringLiteral("chkWindowPositionSave"), QStringLiteral("Value")) == QLatin1String("1")) {
                step = kLoadStep + QStringLiteral("LoadMemoryOfDetailSet");
                LoadMemoryOfDetailSet(QStringLiteral("FormSet"));
                step = kLoadStep + QStringLiteral("異常値の補正");
                const double twips = TwipsPerPixel();
                const int minimum = static_cast<int>(std::lround(kMinimumTwips / twips));
                move(std::max(0, pos().x()), std::max(0, pos().y()));
                resize(std::max(minimum, width()), std::max(minimum, height()));
            }
            const SDC single = settingsthreads::Child(settingsthreads::Child(settingsthreads::Child(settings, WindowGroup),
                                                                   QStringLiteral("chkWindowsDisp")),
                                     QStringLiteral("0"));
            if (single && single->DataValue(QStringLiteral("Value")) == QLatin1String("True")) {
                step = kLoadStep + QStringLiteral("UpdateDoubleDisp(1)");
                UpdateDoubleDisp(QStringLiteral("1"));
            } else {
                step = kLoadStep + QStringLiteral("UpdateDoubleDisp(2)");
                UpdateDoubleDisp(QStringLiteral("2"));
            }
        }

        step = kLoadStep + QStringLiteral("ポップアップメニュー更新");
        UpdatePopupMenu();
        step = kLoadStep + QStringLiteral("ルーラークラス生成");
        rulers_ = new AppRulerCtrlClass(this);
        rulers_->SetPane(QStringLiteral("Main"), LEAD(4));
        rulers_->SetPane(QStringLiteral("Left"), LEAD(2));
        rulers_->SetPane(QStringLiteral("Right"), LEAD(3));
        rulers_->ReadSettings(context_.DetailSet);
        step = kLoadStep + QStringLiteral("マウスイベントクラス生成");
        CreateMouseEvents();
        step = kLoadStep + QStringLiteral("サイズ変更クラスの設定");
        const int minimum = static_cast<int>(std::lround(kMinimumTwips / TwipsPerPixel()));
        setMinimumSize(minimum, minimum);
        step = kLoadStep + QStringLiteral("ドラッグ&ドロップクラス");
        new FileDragSource(picDragFile_, [this] { return GetSelectedTabFilePath(); });
        step = kLoadStep + QStringLiteral("アクセラレータキーを設定する");
        SetAcceleratorKey();
        step = kLoadStep + QStringLiteral("End");
    } catch (const AppError& e) {
        CommonLibClass::ErrMsgBox(e.Description() + QLatin1Char(' ') + step);
    }
    lastWidth_ = width();
    lastHeight_ = height();
}

// ---- bringing the window forward ----------------------------------------------------------

void frmMain::ActiveMe()
{
    try {
        if (!context_.DetailSet->Exists(WindowGroup))
            return;
        const SDC group = settingsthreads::Child(context_.DetailSet, WindowGroup);
        if (!group || !group->Exists(QStringLiteral("chkActiveForm")))
            return;
        const bool forced = WindowSetting(QStringLiteral("chkActiveForm"), QStringLiteral("Value")) != QLatin1String("0");
        int interval = 1000;
        if (forced) {
            bool ok = false;
            interval = WindowSetting(QStringLiteral("txtActiveFormTime"), QStringLiteral("Text")).toInt(&ok);
            if (!ok)
                return;
        }
        ProcessClass::SetWindowZOrder(this, ProcessClass::TopMost);
        timer2_.start(std::max(0, interval));
    } catch (const AppError&) {
        // Bringing the window forward is a courtesy; a bad setting must not stop an open.
    }
}

void frmMain::EndActiveMe()
{
    if (activeMeBusy_)
        return;
    activeMeBusy_ = true;
    ProcessClass::SetWindowZOrder(this, ProcessClass::NoTopMost);
    ProcessClass::SetForceForegroundWindowCaption(Caption);
    activeMeBusy_ = false;
}

void frmMain::showEvent(QShowEvent* vEvent)
{
    QMainWindow::showEvent(vEvent);
    if (!shownOnce_) {
        shownOnce_ = true;
        ActiveMe();
    }
}

// The window's activate event: it comes when the window becomes the program's active one again
// from another of its windows, a dialog closing say, and brings the window forward as a call from
// outside does. Coming back from another program is not such an event, nor is a popup menu
// closing, which never took the activation.
void frmMain::OnFocusWindowChanged(QWindow* vNow)
{
    // The window active before, passing over the moment between two windows when none is.
    if (!vNow)
        return;
    QWindow* before = lastFocusWindow_;
    lastFocusWindow_ = vNow;
    if (vNow != windowHandle() || !before || before == vNow)
        return;
    if (before->type() == Qt::Popup || before->type() == Qt::ToolTip)
        return;
    ActiveMe();
}

void frmMain::changeEvent(QEvent* vEvent)
{
    QMainWindow::changeEvent(vEvent);
    // A window restored from the task bar gets its layout back like any resize.
    if (vEvent->type() == QEvent::WindowStateChange && !isMinimized())
        OnWindowResize();
}

// ---- closing -----------------------------------------------------------------------------

void frmMain::EndApp() { close(); }

// A bulk open in progress is stopped rather than the window closed; a minimised window is
// restored first, so that its size is never saved in that state.
bool frmMain::QueryClose()
{
    stopRead_ = true;
    if (reading_) {
        CommonLibClass::InformationMsgBox(QStringLiteral("ファイルの読み込み(タブ追加)を中断しました。"));
        return false;
    }
    if (isMinimized()) {
        showNormal();
        return false;
    }
    return true;
}

void frmMain::closeEvent(QCloseEvent* vEvent)
{
    if (!QueryClose()) {
        vEvent->ignore();
        return;
    }
    CloseHandler();
    vEvent->accept();
}

// Only a window in its normal state writes the settings: one closed while maximised writes
// nothing at all, not even the other settings held since the last save. Users rely on this to
// keep a set-up window place.
void frmMain::CloseHandler()
{
    if (!isMaximized() && !isMinimized() && !isFullScreen()) {
        try {
            SaveMemoryOfDetailSet(QStringLiteral("FormSet"));
            DataSaveLoadClass io;
            io.SetData(context_.DetailSet);
            io.Save(context_.SettingsPath, QStringLiteral("DetailSet"));
        } catch (const AppError& e) {
            CommonLibClass::ErrMsgBox(e.Description());
        }
    }
    ReleaseMouseEvents();
    RemoveAcceleratorKey();
    try {
        DocuWorksClass docuWorks;
        if (!docuWorks.DocuWorksVersion().isEmpty())
            docuWorks.Finalize();
    } catch (const AppError&) {
        // No runtime to shut down.
    }
    timer1_.stop();
    timer2_.stop();
    tabTable_->Clear();
    windowState_->Clear();
}

void frmMain::SaveMemoryOfDetailSet(const QString& vName)
{
    CtrlSaveLoadClass binding;
    binding.SetForm(this);
    binding.SetData(context_.DetailSet);
    binding.Grouping(vName, objectName());
    binding.SaveValue(vName);
}

void frmMain::LoadMemoryOfDetailSet(const QString& vName)
{
    CtrlSaveLoadClass binding;
    binding.SetForm(this);
    binding.SetData(context_.DetailSet);
    binding.LoadValue(vName);
}

