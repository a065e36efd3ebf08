#include "viewer/PagePane.h"

#include "viewer/PagePaneImage.h"
#include "viewer/TiffPages.h"

#include <QScrollBar>

PagePane::PagePane(QWidget* vParent) : QAbstractScrollArea(vParent)
{
    // The client area is the viewport itself, so client coordinates need no frame offset.
    setFrameShape(QFrame::NoFrame);
    // Keys belong to the main window's accelerators; a focused pane would scroll on them too.
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    horizontalScrollBar()->setSingleStep(20);
    verticalScrollBar()->setSingleStep(20);
    UpdateLayout();
}

void PagePane::SetPaintSizeMode(int vMode)
{
    if (vMode != SizeNone && vMode != SizeFitWidth && vMode != SizeFitPage && vMode != SizeZoom)
        return;
    if (vMode == sizeMode_)
        return;
    sizeMode_ = vMode;
    UpdateLayout();
    viewport()->update();
}

void PagePane::SetPaintZoomFactor(int vPercent)
{
    if (vPercent < 1 || vPercent == zoomFactor_)
        return;
    zoomFactor_ = vPercent;
    if (sizeMode_ == SizeZoom) {
        UpdateLayout();
        viewport()->update();
    }
}

void PagePane::SetPaintScaling(int vScaling)
{
    if (vScaling == scaling_)
        return;
    scaling_ = vScaling;
    viewport()->update();
}

void PagePane::SetPaintGamma(int vGamma)
{
    if (vGamma == gamma_)
        return;
    gamma_ = vGamma;
    viewport()->update();
}

void PagePane::ClearBitmap() { SetBitmap(QImage()); }

void PagePane::SetBitmap(const QImage& vPicture)
{
    picture_ = vPicture;
    sixteenBit_ = false;
    wide_ = QImage();
    // A new page starts at its top left, as a turned page does.
    horizontalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(0);
    PictureChanged();
}

void PagePane::LoadTiffPage(const QString& vPath, int vPage)
{
    int total = 0;
    const QImage page = TiffPages::ReadPage(vPath, vPage, &total);
    totalPages_ = total;
    SetBitmap(page);
}

void PagePane::ExamineFile(const QString& vPath) { totalPages_ = TiffPages::CountPages(vPath); }

const QImage& PagePane::Bitmap() const
{
    if (!sixteenBit_ || picture_.depth() != 1)
        return picture_;
    if (wide_.isNull())
        wide_ = pagepane::To16Bit(picture_);
    return wide_;
}

void PagePane::ConvertTo16Bit()
{
    if (!HasBitmap() || sixteenBit_)
        return;
    sixteenBit_ = true;
    if (picture_.depth() == 1) {
        QList<QRgb> colours = picture_.colorTable();
        if (colours.size() < 2)
            colours = {qRgb(0, 0, 0), qRgb(255, 255, 255)};
        for (QRgb& colour : colours)
            colour = pagepane::Through555(colour);
        picture_.setColorTable(colours);
    } else {
        picture_ = pagepane::To16Bit(picture_);
    }
    PictureChanged();
}

void PagePane::PictureChanged()
{
    copy_ = ScaledCopy();
    UpdateLayout();
    viewport()->update();
}

void PagePane::SetHandCursor(bool vClosed)
{
    viewport()->setCursor(vClosed ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
}

void PagePane::ResetCursor() { viewport()->unsetCursor(); }
