#pragma once
// Minimum sizes kept in twips, the unit the Windows build measures its forms in, and applied to
// the client area. Qt's minimum size already leaves the frame out, so the Windows rule "the
// client's minimum plus the frame" reduces to the client's minimum.

class QWidget;

namespace clsSizing {

// Pixels of vTwips on vWidget's screen (1440 twips to the inch).
int PixelsOfTwips(const QWidget* vWidget, double vTwips);
double TwipsOfPixels(const QWidget* vWidget, int vPixels);

// Gives vForm a minimum client size of vWidthTwips by vHeightTwips.
void SetMinimumTwips(QWidget* vForm, double vWidthTwips, double vHeightTwips);

} // namespace clsSizing
