#pragma once
// A window's outer size, frame included, is what the settings file keeps, as the Windows build
// does. Qt sizes a window by its inside, and the frame is known only once the desktop has framed
// the window, after it is shown. A window restored before that is given the outer size as its
// inside for the time being; RestoreOuterSize then takes the frame off as soon as it is known,
// so that the window does not grow by its frame at every start.

#include <QSize>

class QWidget;

namespace outersize {

// Gives vWindow the outer size vOuter (pixels): at once where its frame is known, else as its
// inside now and corrected when the frame becomes known. A size set otherwise in the meantime
// stands; a window still without a frame when it is first activated is taken as frameless.
void RestoreOuterSize(QWidget* vWindow, QSize vOuter);

}  // namespace outersize
