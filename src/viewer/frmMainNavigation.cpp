// frmMain: moving through the selected tab's pages, by the move amount or by number.
#include "viewer/frmMain.h"

#include "support/AppError.h"
#include "viewer/NumericText.h"
#include "viewer/TabStrip.h"
#include "viewer/frmPageInput.h"

#include <QLineEdit>

namespace {

qint16 Sum16(int vA, int vB)
{
    const int sum = vA + vB;
    if (sum > 32767 || sum < -32768)
        throw AppError(AppError::Overflow);
    return static_cast<qint16>(sum);
}

} // namespace

// The page is drawn even when it doesn't change: at the last page the last page is drawn again.
// Nothing rounds to a spread boundary; the pair simply starts at the new page. Forward is bounded
// by the total only, backward by page 1 only.
void frmMain::MovePage(int vDirection)
{
    const auto file = SelectedFile();
    if (!file)
        return;
    try {
        const qint16 step = Int16OfText(txtSkipPage_->text());
        const qint16 target = Sum16(file->NowPage(), vDirection * step);
        qint16 page = target;
        if (vDirection > 0)
            page = std::min(target, Int16OfText(QString::number(file->TotalPage())));
        else
            page = std::max<qint16>(target, 1);
        OpenFile(GetTabNo(tabMain_->SelectedKey()).toInt(), file->FileName(), page);
        file->SetNowPage(page);
        UpdateStatusBar();
    } catch (const AppError&) {
    } catch (const std::exception&) {
    }
}

void frmMain::NextPage() { MovePage(1); }

void frmMain::PreviousPage() { MovePage(-1); }

// The dialog previews pages through OpenFile, which never moves the tab; a cancel therefore
// puts the tab's own page back with a redraw.
void frmMain::PageJump()
{
    if (tabMain_->Count() == 0)
        return;
    ReleaseMouseEvents();
    dialogOpen_ = true;
    const QString key = tabMain_->SelectedKey();
    const auto file = FileOfTab(key);
    const qint32 tabNo = GetTabNo(key).toInt();
    try {
        if (file) {
            frmPageInput dialog(this, [this](qint32 vTabNo, const QString& vFileName, qint16 vPage) {
                OpenFile(vTabNo, vFileName, vPage);
            });
            dialog.SetTotalPage(static_cast<qint16>(file->TotalPage()));
            dialog.SetPage(static_cast<qint16>(file->NowPage()));
            dialog.SetFileName(file->FileName());
            dialog.SetTabNo(tabNo);
            dialog.exec();
            if (dialog.Cancel()) {
                CreateMouseEvents();
                dialogOpen_ = false;
                UpdateTab(key);
                return;
            }
            file->SetNowPage(dialog.Page());
            OpenFile(tabNo, file->FileName(), dialog.Page());
        }
    } catch (const AppError&) {
    } catch (const std::exception&) {
    }
    UpdateStatusBar();
    CreateMouseEvents();
    dialogOpen_ = false;
}
