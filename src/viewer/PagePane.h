#pragma once
// A page pane: one picture, painted scaled into a scrollable area. The main window has four
// (LEAD1 to LEAD4) and the rulers lie over them. The pane holds the only copy of what is shown;
// a resize or a change of size, gamma or scaling never goes back to the file, it only rebuilds
// the one scaled copy the pane paints from.
//
// Measures: scroll positions are in bitmap pixels (ScrollPosition) or in client pixels
// (ScrollOffset); "client" is the pane's visible area, whose top left is (0, 0).

#include <QAbstractScrollArea>
#include <QImage>
#include <QPointF>

class PagePane : public QAbstractScrollArea {
    Q_OBJECT
public:
    // Paint size modes.
    enum : int { SizeNone = 0, SizeFitWidth = 2, SizeFitPage = 3, SizeZoom = 4 };
    // Paint scaling.
    enum : int { ScalingFast = 0, ScalingSmooth = 1 };

    explicit PagePane(QWidget* vParent = nullptr);

    // 0 none (1:1), 2 fit width, 3 fit page, 4 zoom by PaintZoomFactor. Other values are ignored.
    int PaintSizeMode() const { return sizeMode_; }
    void SetPaintSizeMode(int vMode);
    // Percent, used with mode 4; values below 1 are ignored.
    int PaintZoomFactor() const { return zoomFactor_; }
    void SetPaintZoomFactor(int vPercent);
    // 0 plain and fast, 1 smooth.
    int PaintScaling() const { return scaling_; }
    void SetPaintScaling(int vScaling);
    // 100 is neutral, below darkens the mid-tones, above lightens them. It changes what is painted,
    // never the picture held.
    int PaintGamma() const { return gamma_; }
    void SetPaintGamma(int vGamma);

    bool HasBitmap() const { return !picture_.isNull(); }
    void ClearBitmap();
    void SetBitmap(const QImage& vPicture);
    QSize BitmapSize() const { return picture_.size(); }
    // The picture as held: after ConvertTo16Bit, in Format_RGB555.
    const QImage& Bitmap() const;

    // Page vPage (from 1; 0 is the file's first) of a TIFF file, in the file's own depth. Also
    // sets InfoTotalPages. Raises AppError when the file or page can't be read; the pane then
    // keeps what it had.
    void LoadTiffPage(const QString& vPath, int vPage);
    // The page count of a TIFF file into InfoTotalPages, without decoding a page.
    void ExamineFile(const QString& vPath);
    int InfoTotalPages() const { return totalPages_; }

    // The picture becomes 16 bits per pixel, 5-5-5 as a Windows 16-bit bitmap. A 1-bit page
    // (a fax page) has nothing in 16 bits that its two colours don't say: the pane keeps its
    // rows, with the colours as 5-5-5 renders them, paints from them, and makes the 16-bit copy
    // only when Bitmap is asked for. A page turn then costs the decode and no more, and the pane
    // holds 2 MB instead of 31 MB for a 400 dpi A4 page; what is painted is the same.
    void ConvertTo16Bit();

    // Scroll position in bitmap pixels: the bitmap point at the client's left and top edge.
    QPoint ScrollPosition() const;
    void SetScrollPosition(QPoint vPosition);
    // The same in client pixels, the values of the scroll bars: for dragging the page by hand,
    // so that it follows the pointer pixel for pixel at every zoom.
    QPoint ScrollOffset() const;
    void SetScrollOffset(QPoint vOffset);

    // Painted size over bitmap size; 1 when the pane is empty.
    double PaintScale() const { return scale_; }
    QPointF BitmapToClient(QPointF vPoint) const;
    QPointF ClientToBitmap(QPointF vPoint) const;

    void SetHandCursor(bool vClosed);
    void ResetCursor();

    // Times the scaled copy was built: a repaint that needs no new one leaves it alone.
    int ScaledCopyBuilds() const { return scaledBuilds_; }

Q_SIGNALS:
    // After every paint of the visible area; the rulers re-lay themselves on it.
    void Painted();

protected:
    void paintEvent(QPaintEvent* vEvent) override;
    void resizeEvent(QResizeEvent* vEvent) override;
    void scrollContentsBy(int vDx, int vDy) override;
    void wheelEvent(QWheelEvent* vEvent) override;

private:
    // The scaled copy and what it was made for. Below 1:1 it is the whole page scaled once;
    // from 1:1 up only the visible part is drawn (a page at 500% would not fit in memory), and
    // it is made again when that part changes.
    struct ScaledCopy {
        QImage image;
        QPoint at;            // client position of the image's top left
        double scale = 0;
        QSize paintedSize;
        QPoint origin;        // where the bitmap's (0, 0) was (magnified copies only)
        QSize clientSize;     // the client size it was made for (magnified copies only)
        int scaling = -1;
        int gamma = -1;
        double ratio = 0;     // device pixels per pixel of the screen it was made for
        bool reduced = false;
        bool valid = false;
    };

    void PictureChanged();
    void UpdateLayout();        // scale, painted size and scroll bar ranges
    QPoint Origin() const;      // client position of the bitmap's (0, 0)
    const ScaledCopy& CurrentCopy();
    void BuildReducedCopy(double vRatio);
    void BuildMagnifiedCopy(double vRatio);
    void Remember(bool vReduced, double vRatio);

    QImage picture_;         // what is painted from
    bool sixteenBit_ = false;
    mutable QImage wide_;    // the 16-bit copy of a 1-bit picture, made when asked for
    int sizeMode_ = SizeNone;
    int zoomFactor_ = 100;
    int scaling_ = ScalingFast;
    int gamma_ = 100;
    int totalPages_ = 0;

    double scale_ = 1.0;
    QSize paintedSize_;
    QSize clientSize_;  // the viewport's size once the scroll bars are laid out
    ScaledCopy copy_;
    int scaledBuilds_ = 0;
    bool layingOut_ = false;
};
