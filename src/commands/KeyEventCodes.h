#pragma once
// Qt key presses as the virtual-key codes and modifier masks of KeyCodeClass.
//
// Qt names the character a key produced, so a shifted key arrives as its shifted symbol: Shift
// with 1 is Qt::Key_Exclam. A binding names the key, not the character, so the symbol has to be
// taken back to its key. Where the event carries an X key code (xcb and Wayland both deliver
// evdev + 8 as the native scan code), the key is known by its place: the digit row, and the yen
// and ro keys, which the Japanese layout both lets type a backslash. Otherwise the symbol is
// read as a Japanese 106-key keyboard types it, the keyboard whose key names the table uses.
// The native virtual key does not help here: on Linux it is the keysym of the character already
// shifted.

#include <QtGlobal>

class QKeyEvent;

namespace keyeventcodes {

// The table's code of the key pressed, 0 for a key it cannot name.
qint16 VirtualKeyCode(const QKeyEvent& vEvent);

// Shift 1, Ctrl 2, Alt 4: pressed when the keyboard says so now or the event says so. On xcb and
// Wayland the query asks the display server; on the offscreen platform it answers with the
// modifiers of the key event being processed, which Qt records before delivering it. The
// event's own modifiers cover a press handed to the window directly.
qint32 PressedMask(const QKeyEvent& vEvent);

}  // namespace keyeventcodes
