#pragma once
// Qt key presses as the virtual-key codes and modifier masks of KeyCodeClass.
//
// Qt names the character a key produced, so a shifted key arrives as its shifted symbol: Shift
// with 1 is Qt::Key_Exclam. A binding names the key, not the character, so the symbol has to be
// taken back to its key, and to the code the Windows build gets for that key on the same
// layout: there the punctuation keys are coded by place through the layout's table, so the key
// right of L is 187 on a Japanese keyboard and 186 on a US one although both type ";". Where the
// event carries an X key code (xcb and Wayland both deliver evdev + 8 as the native scan code),
// the key is known by its place and coded from the table of the layout in use. The layout is
// learnt from the keys themselves: most punctuation keys type different symbols on the two
// layouts, so the last such key pressed tells which one is in use; until one is, the system's
// language decides. Without a place the symbol is read as that layout types it. The native
// virtual key does not help: on Linux it is the keysym of the character already shifted.

#include <QtGlobal>

class QKeyEvent;

namespace keyeventcodes {

// The two layouts whose codes the Windows build's key table was written for.
enum class Layout { Japanese, Us };

Layout KeyboardLayout();
// Set when the layout is known otherwise (tests, a setting); later keys may still correct it.
void SetKeyboardLayout(Layout vLayout);

// The table's code of the key pressed, 0 for a key it cannot name.
qint16 VirtualKeyCode(const QKeyEvent& vEvent);

// Shift 1, Ctrl 2, Alt 4: pressed when the keyboard says so now or the event says so. On xcb and
// Wayland the query asks the display server; on the offscreen platform it answers with the
// modifiers of the key event being processed, which Qt records before delivering it. The
// event's own modifiers cover a press handed to the window directly.
qint32 PressedMask(const QKeyEvent& vEvent);

}  // namespace keyeventcodes
