#include "commands/KeyEventCodes.h"

#include "commands/KeyCodeClass.h"

#include <QGuiApplication>
#include <QKeyEvent>

namespace keyeventcodes {
namespace {

// X key codes of the keys known by their place.
constexpr quint32 XDigitOne = 10, XDigitZero = 19, XYen = 132, XRo = 97;

qint16 KeypadCode(int vKey)
{
    if (vKey >= Qt::Key_0 && vKey <= Qt::Key_9)
        return qint16(96 + vKey - Qt::Key_0);
    switch (vKey) {
    case Qt::Key_Asterisk: return 106;
    case Qt::Key_Plus: return 107;
    case Qt::Key_Minus: return 109;
    // A comma is the decimal key of the layouts that write decimals with one.
    case Qt::Key_Period: case Qt::Key_Comma: case Qt::Key_Delete: return 110;
    case Qt::Key_Slash: return 111;
    default: return 0;  // the keys of a pad without Num Lock are the plain ones
    }
}

qint16 NamedCode(int vKey)
{
    switch (vKey) {
    case Qt::Key_Cancel: return 3;
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Tab: case Qt::Key_Backtab: return 9;
    case Qt::Key_Clear: return 12;
    case Qt::Key_Return: case Qt::Key_Enter: return 13;
    case Qt::Key_Shift: return 16;
    case Qt::Key_Control: return 17;
    case Qt::Key_Alt: return 18;
    case Qt::Key_Pause: return 19;
    case Qt::Key_CapsLock: return 20;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Space: return 32;
    case Qt::Key_PageUp: return 33;
    case Qt::Key_PageDown: return 34;
    case Qt::Key_End: return 35;
    case Qt::Key_Home: return 36;
    case Qt::Key_Left: return 37;
    case Qt::Key_Up: return 38;
    case Qt::Key_Right: return 39;
    case Qt::Key_Down: return 40;
    case Qt::Key_Select: return 41;
    case Qt::Key_Printer: return 42;
    case Qt::Key_Execute: return 43;
    case Qt::Key_Print: case Qt::Key_SysReq: return 44;
    case Qt::Key_Insert: return 45;
    case Qt::Key_Delete: return 46;
    case Qt::Key_Help: return 47;
    case Qt::Key_NumLock: return 144;
    case Qt::Key_ScrollLock: return 145;
    default: return 0;
    }
}

// A symbol as the Japanese keyboard types it: first the unshifted symbol each key is named by,
// then what the same key gives with Shift.
qint16 SymbolCode(int vKey)
{
    switch (vKey) {
    case Qt::Key_At: case Qt::Key_QuoteLeft: return 192;
    case Qt::Key_BracketLeft: case Qt::Key_BraceLeft: return 219;
    case Qt::Key_Semicolon: case Qt::Key_Plus: return 187;
    case Qt::Key_Colon: case Qt::Key_Asterisk: return 186;
    case Qt::Key_BracketRight: case Qt::Key_BraceRight: return 221;
    case Qt::Key_Comma: case Qt::Key_Less: return 188;
    case Qt::Key_Period: case Qt::Key_Greater: return 190;
    case Qt::Key_Slash: case Qt::Key_Question: return 191;
    case Qt::Key_Underscore: return 226;
    case Qt::Key_Minus: case Qt::Key_Equal: return 189;
    case Qt::Key_AsciiCircum: case Qt::Key_AsciiTilde: return 222;
    case Qt::Key_yen: case Qt::Key_Backslash: case Qt::Key_Bar: return 220;
    case Qt::Key_Exclam: return 49;
    case Qt::Key_QuoteDbl: return 50;
    case Qt::Key_NumberSign: return 51;
    case Qt::Key_Dollar: return 52;
    case Qt::Key_Percent: return 53;
    case Qt::Key_Ampersand: return 54;
    case Qt::Key_Apostrophe: return 55;
    case Qt::Key_ParenLeft: return 56;
    case Qt::Key_ParenRight: return 57;
    default: return 0;
    }
}

}  // namespace

qint16 VirtualKeyCode(const QKeyEvent& vEvent)
{
    const int key = vEvent.key();
    if (vEvent.modifiers() & Qt::KeypadModifier) {
        if (const qint16 code = KeypadCode(key))
            return code;
    }
    const quint32 place = vEvent.nativeScanCode();
    if (place >= XDigitOne && place <= XDigitZero)
        return place == XDigitZero ? 48 : qint16(49 + place - XDigitOne);
    if (place == XYen)
        return 220;
    if (place == XRo)
        return 226;
    if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z))
        return static_cast<qint16>(key);  // Qt's codes are the ASCII ones, as the table's are
    if (key >= Qt::Key_F1 && key <= Qt::Key_F16)
        return qint16(112 + key - Qt::Key_F1);
    if (const qint16 code = NamedCode(key))
        return code;
    return SymbolCode(key);
}

qint32 PressedMask(const QKeyEvent& vEvent)
{
    const Qt::KeyboardModifiers pressed =
        QGuiApplication::queryKeyboardModifiers() | vEvent.modifiers();
    qint32 mask = 0;
    if (pressed & Qt::ShiftModifier)
        mask += KeyCodeClass::MaskShift;
    if (pressed & Qt::ControlModifier)
        mask += KeyCodeClass::MaskCtrl;
    if (pressed & Qt::AltModifier)
        mask += KeyCodeClass::MaskAlt;
    return mask;
}

}  // namespace keyeventcodes
