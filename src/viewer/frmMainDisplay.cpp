// frmMain: turning page numbers into pixels, and the sizes and layout of the panes.
#include "viewer/frmMain.h"

#include "document/DocuWorksClass.h"
#include "document/DocuWorksFileClass.h"
#include "document/DocumentEngine.h"
#include "document/XdwApi.h"
#include "support/AppError.h"
#include "support/BusyCursor.h"
#include "viewer/NumericText.h"
#include "viewer/PagePane.h"
#include "viewer/TabStrip.h"

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QStatusBar>

namespace {

const QString kDispSize = QStringLiteral("DISPSIZE");
const QString kDoubleDisp = QStringLiteral("DOUBLE_DISP");
const QString kDispDirection = QStringLiteral("DISP_DIRECTION");

// The size codes, their captions and what they make of a pane.
struct SizeCode {
    const char* code;
    QString caption;
    int mode;
    int zoom;  // 0: leave the zoom alone
};
const SizeCode kSizeCodes[] = {
    {"0", QStringLiteral("横幅"), 2, 0},      {"1", QStringLiteral("ページ全体"), 3, 0},
    {"2", QStringLiteral("100%"), 4, 100},   {"3", QStringLiteral("200%"), 4, 200},
    {"4", QStringLiteral("300%"), 4, 300},   {"5", QStringLiteral("400%"), 4, 400},
    {"6", QStringLiteral("500%"), 4, 500},
};

} // namespace

// ---- the panes -----------------------------------------------------------------------------

void frmMain::InitializeLead()
{
    for (int i = 0; i < 4; ++i) {
        lead_[i] = new PagePane(tabMain_->ClientArea());
        lead_[i]->setObjectName(QStringLiteral("LEAD%1").arg(i + 1));
        lead_[i]->hide();
    }
    // LEAD1 holds no page: it is the spread's background and gives its two halves their size.
    LEAD(1)->SetPaintSizeMode(0);
    LEAD(1)->SetPaintScaling(0);
    for (int i : {2, 3, 4}) {
        LEAD(i)->SetPaintSizeMode(3);
        LEAD(i)->SetPaintScaling(1);
    }
    LEAD(2)->setParent(LEAD(1));
    LEAD(3)->setParent(LEAD(1));
    LEAD(2)->show();
    LEAD(3)->show();
    LEAD(1)->installEventFilter(this);
    // The panes' own mouse events drag the page by hand; at rest every pane shows the open hand.
    for (int i : {2, 3, 4}) {
        LEAD(i)->viewport()->installEventFilter(this);
        LEAD(i)->SetHandCursor(false);
    }
}

bool frmMain::eventFilter(QObject* vWatched, QEvent* vEvent)
{
    // The strip lays its client area out later than the window's own resize, so the halves
    // follow the spread's background whenever it changes size.
    if (vWatched == LEAD(1) && vEvent->type() == QEvent::Resize)
        LEAD23_Resize();
    if (vEvent->type() == QEvent::MouseButtonPress || vEvent->type() == QEvent::MouseButtonRelease
        || vEvent->type() == QEvent::MouseMove) {
        for (int i : {2, 3, 4})
            if (LEAD(i) && vWatched == LEAD(i)->viewport())
                return PaneMouseEvent(LEAD(i), static_cast<QMouseEvent*>(vEvent));
    }
    return QMainWindow::eventFilter(vWatched, vEvent);
}

qint16 frmMain::GetResolution() const
{
    if (!context_.DetailSet->Exists(WindowGroup))
        return 150;
    return Int16OfText(WindowSetting(QStringLiteral("txtResolution"), QStringLiteral("Text")));
}

qint16 frmMain::GetGamma() const
{
    if (!context_.DetailSet->Exists(WindowGroup))
        return 0;
    return Int16OfText(WindowSetting(QStringLiteral("txtGamma"), QStringLiteral("Text")));
}

void frmMain::LoadTiffPage(PagePane* vPane, const QString& vFileName, qint16 vPage)
{
    vPane->LoadTiffPage(vFileName, vPage);
    vPane->SetPaintGamma(GetGamma() + 100);
    vPane->ConvertTo16Bit();
}

void frmMain::SetPageFromHandle(PagePane* vPane, qint32 vHandle)
{
    const QImage* picture = XdwApiObject()->HandleImage(vHandle);
    if (!picture)
        throw AppError(AppError::ObjectNotSet);
    vPane->SetBitmap(*picture);
    vPane->SetPaintGamma(GetGamma() + 100);
}

// A handle never outlives its step: it is freed here whatever the pane made of it.
void frmMain::RenderXdwPage(DocuWorksClass& vDocuWorks, DocuWorksFileClass& vFile, qint16 vPage, PagePane* vPane)
{
    const qint16 dpi = GetResolution();
    const qint32 handle = vFile.ConvertPageToImageHandle(vPage, dpi, 1);
    struct Free {
        DocuWorksClass& docuWorks;
        qint32 handle;
        ~Free() { docuWorks.GlobalFree(handle); }
    } free{vDocuWorks, handle};
    SetPageFromHandle(vPane, handle);
}

void frmMain::OpenXdwFile(qint32 vTabNo, const QString& vFileName, bool vShow, qint16 vPage)
{
    BusyCursor busy;
    DocuWorksClass docuWorks;
    docuWorks.OpenXdw(vFileName, 1);
    const SDC opened = docuWorks.RefDwFileData();
    for (opened->TopData(); !opened->EndOfData(); opened->NextData()) {
        const auto file = docuWorks.RefDwFile();
        if (!file)
            continue;
        file->GetDocumentInformation();
        const qint16 pages = file->Pages();
        if (pages < 1)
            continue;
        if (vPage != 0) {
            const auto tab = FileOfTab(QStringLiteral("T") + QString::number(vTabNo));
            if (tab && tab->PageAmount() == 2) {
                RenderXdwPage(docuWorks, *file, vPage, LEAD(2));
                if (pages >= vPage + 1)
                    RenderXdwPage(docuWorks, *file, static_cast<qint16>(vPage + 1), LEAD(3));
                else
                    LEAD(3)->ClearBitmap();
            } else if (tab) {
                RenderXdwPage(docuWorks, *file, vPage, LEAD(4));
            }
        } else {
            const bool spread = windowState_->DataValue(kDoubleDisp) == QLatin1String("2");
            if (vShow && !spread) {
                RenderXdwPage(docuWorks, *file, 1, LEAD(4));
            } else if (vShow) {
                // A one-page document leaves the right pane as it was until the first redraw.
                RenderXdwPage(docuWorks, *file, 1, LEAD(2));
                if (pages >= 2)
                    RenderXdwPage(docuWorks, *file, 2, LEAD(3));
            }
            auto record = std::make_shared<AppFileClass>();
            record->SetFileName(vFileName);
            record->SetTotalPage(pages);
            record->SetPageAmount(spread ? 2 : 1);
            tabTable_->AddReference(record, QString::number(vTabNo));
            if (vShow)
                SetPaintSizeMode(windowState_->DataValue(kDispSize));
        }
        CommonLibClass::PanelTextOut(statusBar(), 1, vFileName);
    }
}

void frmMain::OpenTifFile(qint32 vTabNo, const QString& vFileName, bool vShow, qint16 vPage)
{
    BusyCursor busy;
    if (vPage != 0) {
        const auto tab = FileOfTab(QStringLiteral("T") + QString::number(vTabNo));
        if (!tab)
            return;
        if (tab->PageAmount() == 2) {
            LoadTiffPage(LEAD(2), vFileName, vPage);
            if (LEAD(2)->InfoTotalPages() >= vPage + 1)
                LoadTiffPage(LEAD(3), vFileName, static_cast<qint16>(vPage + 1));
            else
                LEAD(3)->ClearBitmap();
        } else {
            LoadTiffPage(LEAD(4), vFileName, vPage);
        }
        return;
    }
    // A new tab. Page 0 is the file's own first page; the redraw through the tab right after
    // puts the spread's second page in place.
    const bool spread = windowState_->DataValue(kDoubleDisp) == QLatin1String("2");
    PagePane* examined = spread ? LEAD(2) : LEAD(4);
    if (vShow && !spread) {
        LoadTiffPage(LEAD(4), vFileName, 0);
    } else if (vShow) {
        LoadTiffPage(LEAD(2), vFileName, 0);
        if (LEAD(2)->InfoTotalPages() >= 2)
            LoadTiffPage(LEAD(3), vFileName, 1);
    }
    auto record = std::make_shared<AppFileClass>();
    record->SetFileName(vFileName);
    examined->ExamineFile(vFileName);
    record->SetTotalPage(examined->InfoTotalPages());
    record->SetPageAmount(spread ? 2 : 1);
    tabTable_->AddReference(record, QString::number(vTabNo));
    if (vShow)
        SetPaintSizeMode(windowState_->DataValue(kDispSize));
}

// ---- sizes -----------------------------------------------------------------------------------

void frmMain::SetPaintSizeModeSub(const QString& vSizeMode, PagePane* vLEAD)
{
    for (const SizeCode& size : kSizeCodes) {
        if (vSizeMode != QLatin1String(size.code))
            continue;
        if (size.zoom != 0)
            vLEAD->SetPaintZoomFactor(size.zoom);
        vLEAD->SetPaintSizeMode(size.mode);
    }
}

void frmMain::SetPaintSizeMode(const QString& vSizeMode)
{
    if (tabMain_->Count() >= 1)
        for (int i : {4, 2, 3})
            SetPaintSizeModeSub(vSizeMode, LEAD(i));
    CheckButton(kDispSize + QLatin1Char(':') + vSizeMode, true);
    windowState_->AddData(vSizeMode, kDispSize);
}

void frmMain::InitializeWindow()
{
    if (!context_.DetailSet->Exists(WindowGroup))
        return;
    const QString caption = WindowSetting(QStringLiteral("cboStartDocSize"), QStringLiteral("Text"));
    QString code = QStringLiteral("1");
    for (const SizeCode& size : kSizeCodes)
        if (size.caption == caption)
            code = QLatin1String(size.code);
    SetPaintSizeMode(code);
    windowState_->AddData(code, kDispSize);
}

// ---- layout ----------------------------------------------------------------------------------

void frmMain::UpdateDoubleDisp(const QString& vMode)
{
    CheckButton(vMode == QLatin1String("1") ? QStringLiteral("DOUBLE_DISP:1") : QStringLiteral("DOUBLE_DISP:2"), true);
    windowState_->AddData(vMode, kDoubleDisp);
}

void frmMain::UpdateDispDirection(const QString& vMode)
{
    CheckButton(kDispDirection, vMode == QLatin1String("RL"));
    windowState_->AddData(vMode, kDispDirection);
}

void frmMain::SetTabPageAmount(const QString& vMode)
{
    if (const auto file = SelectedFile()) {
        if (vMode == QLatin1String("1"))
            file->SetPageAmount(1);
        else if (vMode == QLatin1String("2"))
            file->SetPageAmount(2);
    }
    windowState_->AddData(vMode, kDoubleDisp);
}

void frmMain::SetTabDispDirection(const QString& vMode)
{
    if (const auto file = SelectedFile())
        file->SetDispDirection(vMode);
    windowState_->AddData(vMode, kDispDirection);
}

void frmMain::SetDoubleDisp(const QString& vMode)
{
    SetTabPageAmount(vMode);
    ApplyTabDisplay(tabMain_->SelectedKey());
    SetPaintSizeMode(windowState_->DataValue(kDispSize));
    SwitchPanes(vMode);
    UpdateTab(tabMain_->SelectedKey());
}

void frmMain::SetDispDirection(const QString& vMode)
{
    SetTabDispDirection(vMode);
    LEAD23_Resize();
    UpdateTab(tabMain_->SelectedKey());
}

// Every choice of a tab comes through here, so a move amount the user typed is put back to
// the layout's own step whenever a tab is chosen.
void frmMain::SwitchPanes(const QString& vMode)
{
    if (tabMain_->Count() >= 1) {
        if (vMode == QLatin1String("2")) {
            tabMain_->SetPanel(LEAD(1));
            LEAD23_Resize();
            for (int i : {1, 2, 3})
                LEAD(i)->show();
            LEAD(4)->hide();
        } else if (vMode == QLatin1String("1")) {
            tabMain_->SetPanel(LEAD(4));
            LEAD(4)->show();
            for (int i : {1, 2, 3})
                LEAD(i)->hide();
        }
    }
    txtSkipPage_->setText(vMode == QLatin1String("1") ? QStringLiteral("1") : QStringLiteral("2"));
}

// LEAD2 holds the first page of the pair: on the left when reading left to right, on the right
// otherwise.
void frmMain::LEAD23_Resize()
{
    if (!LEAD(1))
        return;
    const bool leftToRight = windowState_->DataValue(kDispDirection) == QLatin1String("LR");
    PagePane* left = leftToRight ? LEAD(2) : LEAD(3);
    PagePane* right = leftToRight ? LEAD(3) : LEAD(2);
    const float half = static_cast<float>(LEAD(1)->width()) / 2.0f;
    const int w = static_cast<int>(half);
    const int h = LEAD(1)->height();
    left->setGeometry(0, 0, w, h);
    right->setGeometry(w, 0, w, h);
}

// ---- resizing --------------------------------------------------------------------------------

void frmMain::resizeEvent(QResizeEvent* vEvent)
{
    QMainWindow::resizeEvent(vEvent);
    OnWindowResize();
}

// While the window is dragged the panes paint plainly and fast; 500 ms after the last change
// the smooth painting comes back. Nothing is drawn from the file again.
void frmMain::OnWindowResize()
{
    if (isMinimized() || !LEAD(1))
        return;
    if ((width() != lastWidth_ || height() != lastHeight_) && tabMain_->Count() >= 1) {
        if (windowState_->DataValue(kDoubleDisp) == QLatin1String("1")) {
            if (LEAD(4)->PaintScaling() != 0) {
                LEAD(4)->SetPaintScaling(0);
                timer1_.start();
            }
        } else {
            if (LEAD(2)->PaintScaling() != 0)
                LEAD(2)->SetPaintScaling(0);
            if (LEAD(3)->PaintScaling() != 0) {
                LEAD(3)->SetPaintScaling(0);
                timer1_.start();
            }
            LEAD23_Resize();
        }
    }
    lastWidth_ = width();
    lastHeight_ = height();
}

void frmMain::RestoreScaling()
{
    if (tabMain_->Count() >= 1) {
        if (windowState_->DataValue(kDoubleDisp) == QLatin1String("1")) {
            LEAD(4)->SetPaintScaling(1);
        } else {
            LEAD(2)->SetPaintScaling(1);
            LEAD(3)->SetPaintScaling(1);
        }
    }
    timer1_.stop();
}
