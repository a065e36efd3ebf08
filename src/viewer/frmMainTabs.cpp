// frmMain: adding, choosing and closing tabs. A tab holds a path and page numbers only; every
// drawing opens the file again.
#include "viewer/frmMain.h"

#include "support/AppError.h"
#include "support/DirClass.h"
#include "viewer/AppRulerCtrlClass.h"
#include "viewer/ChromeIcons.h"
#include "viewer/TabStrip.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QStatusBar>

namespace {

QString TabKey(qint32 vTabNo) { return QStringLiteral("T") + QString::number(vTabNo); }

} // namespace

std::shared_ptr<AppFileClass> frmMain::FileOfTab(const QString& vKey) const
{
    const QString number = GetTabNo(vKey);
    if (vKey.isEmpty() || !tabTable_ || !tabTable_->Exists(number))
        return nullptr;
    return tabTable_->DataReference(number).As<AppFileClass>();
}

std::shared_ptr<AppFileClass> frmMain::SelectedFile() const
{
    if (!tabMain_ || tabMain_->Count() < 1)
        return nullptr;
    return FileOfTab(tabMain_->SelectedKey());
}

bool frmMain::IsFileOpened(const QString& vPath) const
{
    for (qint16 i = 1; i <= tabTable_->Count(); ++i) {
        const auto file = tabTable_->DataReferenceOfNumber(i).As<AppFileClass>();
        if (file && file->FileName() == vPath)
            return true;
    }
    return false;
}

qint32 frmMain::NextTabNo() { return ++tabCounter_; }

void frmMain::InitialOpenFile(const QString& vFileName, bool vSelected)
{
    try {
        const QString type = DirClass::GetFileTypeString(vFileName).toUpper();
        if (type != QLatin1String("XDW") && type != QLatin1String("TIF"))
            return;
        if (context_.DetailSet->Exists(WindowGroup)
            && context_.DetailSet->Thread(WindowGroup)->Exists(QStringLiteral("chkOpenOnlyOne"))
            && WindowSetting(QStringLiteral("chkOpenOnlyOne"), QStringLiteral("Value")) == QLatin1String("1")
            && IsFileOpened(vFileName))
            return;
        bool first = false;
        if (tabMain_->isHidden()) {
            tabMain_->show();
            first = true;
        }
        const qint32 number = NextTabNo();
        const QString key = TabKey(number);
        tabMain_->AddTab(key, DirClass::GetFileNameFromFullPath(vFileName), ChromeIcon(QStringLiteral("FILE01_16")));
        const bool show = vSelected || first;
        if (type == QLatin1String("TIF"))
            OpenTifFile(number, vFileName, show, 0);
        else
            OpenXdwFile(number, vFileName, show, 0);
        if (show) {
            tabMain_->SetSelectedKey(key);
            SelectTab(key);
            if (const auto file = FileOfTab(key))
                SwitchPanes(QString::number(file->PageAmount()));
        }
        UpdateStatusBar();
    } catch (const AppError&) {
        // A file that can't be shown leaves its tab without a record; choosing it does nothing.
    } catch (const std::exception&) {
    }
}

void frmMain::OpenFile(qint32 vTabNo, const QString& vFileName, qint16 vPage)
{
    if (tabMain_->Count() == 0)
        return;
    const auto file = FileOfTab(TabKey(vTabNo));
    if (!file)
        return;
    if (file->FileType() == QLatin1String("XDW"))
        OpenXdwFile(vTabNo, vFileName, true, vPage);
    else if (file->FileType() == QLatin1String("TIF"))
        OpenTifFile(vTabNo, vFileName, true, vPage);
}

void frmMain::SelectTab(const QString& vKey)
{
    ApplyTabDisplay(vKey);
    if (const auto file = FileOfTab(vKey))
        SwitchPanes(QString::number(file->PageAmount()));
    UpdateTab(vKey);
}

void frmMain::ApplyTabDisplay(const QString& vKey)
{
    const auto file = tabMain_->Count() > 0 ? FileOfTab(vKey) : nullptr;
    if (!file)
        return;
    UpdateDoubleDisp(QString::number(file->PageAmount()));
    UpdateDispDirection(file->DispDirection());
}

// The one redraw: choosing a tab, "画面を更新", a change of direction or layout all come here.
void frmMain::UpdateTab(const QString& vKey)
{
    try {
        const auto file = tabMain_->Count() > 0 ? FileOfTab(vKey) : nullptr;
        if (!file)
            return;
        OpenFile(GetTabNo(vKey).toInt(), file->FileName(), static_cast<qint16>(file->NowPage()));
        UpdateStatusBar();
    } catch (const AppError&) {
    } catch (const std::exception&) {
    }
}

void frmMain::SelectedTabUpdate() { UpdateTab(tabMain_->SelectedKey()); }

void frmMain::CopyTabFilePath(const QString& vKey)
{
    if (const auto file = FileOfTab(vKey)) {
        QClipboard* clipboard = QGuiApplication::clipboard();
        clipboard->clear();
        clipboard->setText(file->FileName());
    }
}

void frmMain::SelectedTabFilePathCopy() { CopyTabFilePath(tabMain_->SelectedKey()); }

QString frmMain::GetTabFilePath(const QString& vKey) const
{
    const auto file = FileOfTab(vKey);
    return file ? file->FileName() : QString();
}

QString frmMain::GetSelectedTabFilePath() const { return GetTabFilePath(tabMain_->SelectedKey()); }

// ---- events of the strip -------------------------------------------------------------------

void frmMain::OnTabClicked(const QString& vKey, int vButton, const QPoint& vPosition)
{
    if (vButton != 1 && vButton != 2)
        return;
    SelectTab(vKey);
    if (vButton == 2)
        ShowTabMenu(vPosition.x(), vPosition.y());
}

void frmMain::OnTabSelectionChanged()
{
    if (!bulkClosing_ && tabMain_->SelectedIndex() >= 0)
        SelectTab(tabMain_->SelectedKey());
    UpdateStatusBar();
}

void frmMain::HideTabs()
{
    tabMain_->hide();
    CommonLibClass::PanelTextOut(statusBar(), 1, QString());
}

void frmMain::OnTabCloseRequested(const QString& vKey)
{
    if (tabMain_->Count() == 0) {
        HideTabs();
        if (rulers_)
            rulers_->AllDeleteRuler();  // the rulers go with the last tab
    }
    tabTable_->DeleteData(GetTabNo(vKey));
    OnTabSelectionChanged();
}

void frmMain::TabClose()
{
    if (tabMain_->Count() == 0)
        return;
    if (tabMain_->Count() == 1)
        DeleteAllRuler();
    const QString key = tabMain_->SelectedKey();
    if (!key.isEmpty()) {
        tabTable_->DeleteData(GetTabNo(key));
        tabMain_->RemoveTab(key);
        if (tabMain_->Count() == 0)
            HideTabs();
    }
    OnTabSelectionChanged();
}

// Closes from the last tab to the first without drawing any of the tabs on the way.
void frmMain::AllTabClose()
{
    if (tabMain_->Count() == 0)
        return;
    bulkClosing_ = true;
    DeleteAllRuler();
    for (int i = tabMain_->Count(); i >= 1; --i) {
        const QString key = tabMain_->KeyAt(i - 1);
        tabTable_->DeleteData(GetTabNo(key));
        tabMain_->RemoveTab(key);
    }
    bulkClosing_ = false;
    UpdateStatusBar();
    if (tabMain_->Count() == 0)
        HideTabs();
}

void frmMain::NextTab()
{
    const int count = tabMain_->Count();
    const int position = tabMain_->SelectedIndex() + 1;
    if (count == 0 || position >= count)
        return;
    const QString key = tabMain_->KeyAt(position);
    tabMain_->SetSelectedKey(key);
    SelectTab(key);
}

void frmMain::PreviousTab()
{
    const int position = tabMain_->SelectedIndex() + 1;
    if (tabMain_->Count() == 0 || position < 2)
        return;
    const QString key = tabMain_->KeyAt(position - 2);
    tabMain_->SetSelectedKey(key);
    SelectTab(key);
}
