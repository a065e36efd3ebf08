#include "commands/KeyEventCodes.h"

#include "commands/KeyCodeClass.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLocale>

#include <string>

namespace keyeventcodes {
namespace {

// X key codes of the keys known by their place: the digit row, the letters as a US keyboard has
// them (the Windows build codes the letter keys of a non-Latin layout by these places too), and
// the punctuation keys, each with its code on a Japanese and on a US keyboard (0: no such key).
constexpr quint32 XDigitOne = 10, XDigitZero = 19;
constexpr const char* XLetterRows[] = {"QWERTYUIOP", "ASDFGHJKL", "ZXCVBNM"};
constexpr quint32 XLetterRowStart[] = {24, 38, 52};

struct PlaceCodes {
    quint32 place;
    qint16 japanese;
    qint16 us;
};
constexpr PlaceCodes kPlaces[] = {
    {20, 189, 189},   // - on both
    {21, 222, 187},   // ^ on a Japanese keyboard, = on a US one
    {132, 220, 0},    // the yen key
    {34, 192, 219},   // @ / [
    {35, 219, 221},   // [ / ]
    {47, 187, 186},   // ; on both, coded apart
    {48, 186, 222},   // : / '
    {51, 221, 220},   // ] / backslash
    {49, 0, 192},     // half/full width (not in the table) / `
    {59, 188, 188},   // ,
    {60, 190, 190},   // .
    {61, 191, 191},   // /
    {97, 226, 226},   // the ro key
    {94, 226, 226},   // the extra key beside left Shift of a 102-key board
};

// The places where the two layouts type different symbols, and the symbols that tell the
// layout: a Japanese keyboard's first, a US keyboard's after.
struct PlaceSymbols {
    quint32 place;
    int japanese[2];
    int us[2];
};
constexpr PlaceSymbols kTellingPlaces[] = {
    {21, {Qt::Key_AsciiCircum, Qt::Key_AsciiTilde}, {Qt::Key_Equal, Qt::Key_Plus}},
    {34, {Qt::Key_At, Qt::Key_QuoteLeft}, {Qt::Key_BracketLeft, Qt::Key_BraceLeft}},
    {35, {Qt::Key_BracketLeft, Qt::Key_BraceLeft}, {Qt::Key_BracketRight, Qt::Key_BraceRight}},
    {47, {Qt::Key_Plus, Qt::Key_Plus}, {Qt::Key_Colon, Qt::Key_Colon}},
    {48, {Qt::Key_Colon, Qt::Key_Asterisk}, {Qt::Key_Apostrophe, Qt::Key_QuoteDbl}},
    {51, {Qt::Key_BracketRight, Qt::Key_BraceRight}, {Qt::Key_Backslash, Qt::Key_Bar}},
    {20, {Qt::Key_Equal, Qt::Key_Equal}, {Qt::Key_Underscore, Qt::Key_Underscore}},
    {49, {Qt::Key_Zenkaku_Hankaku, Qt::Key_Zenkaku}, {Qt::Key_QuoteLeft, Qt::Key_AsciiTilde}},
};

Layout InitialLayout()
{
    return QLocale::system().language() == QLocale::Japanese ? Layout::Japanese : Layout::Us;
}

Layout& CurrentLayout()
{
    static Layout layout = InitialLayout();
    return layout;
}

void LearnLayout(quint32 vPlace, int vKey)
{
    for (const PlaceSymbols& p : kTellingPlaces) {
        if (p.place != vPlace)
            continue;
        if (vKey == p.japanese[0] || vKey == p.japanese[1])
            CurrentLayout() = Layout::Japanese;
        else if (vKey == p.us[0] || vKey == p.us[1])
            CurrentLayout() = Layout::Us;
    }
}

qint16 PlaceCode(quint32 vPlace)
{
    if (vPlace >= XDigitOne && vPlace <= XDigitZero)
        return vPlace == XDigitZero ? 48 : qint16(49 + vPlace - XDigitOne);
    for (const PlaceCodes& p : kPlaces)
        if (p.place == vPlace)
            return CurrentLayout() == Layout::Japanese ? p.japanese : p.us;
    return 0;
}

qint16 LetterOfPlace(quint32 vPlace)
{
    for (int row = 0; row < 3; ++row) {
        const quint32 first = XLetterRowStart[row];
        const auto length = quint32(std::char_traits<char>::length(XLetterRows[row]));
        if (vPlace >= first && vPlace < first + length)
            return qint16(XLetterRows[row][vPlace - first]);
    }
    return 0;
}

qint16 KeypadCode(int vKey)
{
    if (vKey >= Qt::Key_0 && vKey <= Qt::Key_9)
        return qint16(96 + vKey - Qt::Key_0);
    switch (vKey) {
    case Qt::Key_Asterisk: return 106;
    case Qt::Key_Plus: return 107;
    case Qt::Key_Minus: return 109;
    // A comma is the decimal key of the layouts that write decimals with one.
    case Qt::Key_Period: case Qt::Key_Comma: return 110;
    case Qt::Key_Slash: return 111;
    default: return 0;  // without Num Lock the pad's keys are the plain ones, Del among them
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
qint16 JapaneseSymbolCode(int vKey)
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

// The same for a US keyboard.
qint16 UsSymbolCode(int vKey)
{
    switch (vKey) {
    case Qt::Key_QuoteLeft: case Qt::Key_AsciiTilde: return 192;
    case Qt::Key_Minus: case Qt::Key_Underscore: return 189;
    case Qt::Key_Equal: case Qt::Key_Plus: return 187;
    case Qt::Key_BracketLeft: case Qt::Key_BraceLeft: return 219;
    case Qt::Key_BracketRight: case Qt::Key_BraceRight: return 221;
    case Qt::Key_Backslash: case Qt::Key_Bar: return 220;
    case Qt::Key_Semicolon: case Qt::Key_Colon: return 186;
    case Qt::Key_Apostrophe: case Qt::Key_QuoteDbl: return 222;
    case Qt::Key_Comma: case Qt::Key_Less: return 188;
    case Qt::Key_Period: case Qt::Key_Greater: return 190;
    case Qt::Key_Slash: case Qt::Key_Question: return 191;
    case Qt::Key_Exclam: return 49;
    case Qt::Key_At: return 50;
    case Qt::Key_NumberSign: return 51;
    case Qt::Key_Dollar: return 52;
    case Qt::Key_Percent: return 53;
    case Qt::Key_AsciiCircum: return 54;
    case Qt::Key_Ampersand: return 55;
    case Qt::Key_Asterisk: return 56;
    case Qt::Key_ParenLeft: return 57;
    case Qt::Key_ParenRight: return 48;
    default: return 0;
    }
}

}  // namespace

Layout KeyboardLayout() { return CurrentLayout(); }

void SetKeyboardLayout(Layout vLayout) { CurrentLayout() = vLayout; }

qint16 VirtualKeyCode(const QKeyEvent& vEvent)
{
    const int key = vEvent.key();
    if (vEvent.modifiers() & Qt::KeypadModifier) {
        if (const qint16 code = KeypadCode(key))
            return code;
    }
    const quint32 place = vEvent.nativeScanCode();
    LearnLayout(place, key);
    if (const qint16 code = PlaceCode(place))
        return code;
    if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z))
        return static_cast<qint16>(key);  // Qt's codes are the ASCII ones, as the table's are
    if (key >= Qt::Key_F1 && key <= Qt::Key_F16)
        return qint16(112 + key - Qt::Key_F1);
    if (const qint16 code = NamedCode(key))
        return code;
    if (const qint16 letter = LetterOfPlace(place))
        return letter;
    // A key at a place of its own that the layouts don't share (the yen key on a US layout)
    // names nothing; only a key without a known place is read by its symbol.
    for (const PlaceCodes& p : kPlaces)
        if (p.place == place)
            return 0;
    return CurrentLayout() == Layout::Japanese ? JapaneseSymbolCode(key) : UsSymbolCode(key);
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
