#include "commands/KeyCodeClass.h"
#include "commands/KeyEventCodes.h"

#include <QKeyEvent>
#include <gtest/gtest.h>

namespace {

TEST(KeyCodeClassTest, BothTablesHoldTheSameRowsInDropDownOrder)
{
    const KeyCodeClass codes;
    const SDC names = codes.KeyName();
    const SDC keycodes = codes.Keycode();
    ASSERT_EQ(names->Count(), 109);
    ASSERT_EQ(keycodes->Count(), 109);
    for (qint16 i = 1; i <= 109; ++i) {
        EXPECT_EQ(names->DataKeyOfNumber(i), keycodes->DataValueOfNumber(i)) << i;
        EXPECT_EQ(names->DataValueOfNumber(i), keycodes->DataKeyOfNumber(i)) << i;
    }
    const std::vector<std::tuple<qint16, QString, QString>> rows = {
        {1, "0", "48"},       {36, "Z", "90"},           {62, "PrintScreen", "44"},
        {67, "Num .", "110"}, {97, "F16", "127"},        {98, "@", "192"},
        {101, ":", "186"},    {106, "BackSlash", "226"}, {109, "\\", "220"}};
    for (const auto& [no, name, code] : rows) {
        EXPECT_EQ(names->DataValueOfNumber(no), name) << no;
        EXPECT_EQ(names->DataKeyOfNumber(no), code) << no;
    }
}

TEST(KeyCodeClassTest, KeyStringsAreReadBackAsMaskAndCode)
{
    const KeyCodeClass codes;
    EXPECT_EQ(KeyCodeClass::ShortCutKeyString(7, "Delete"), "Ctrl + Shift + Alt + Delete");
    // Every key with every mask survives the round trip but one: "Num +" splits into nothing.
    const SDC names = codes.KeyName();
    for (qint16 i = 1; i <= names->Count(); ++i) {
        const QString name = names->DataValueOfNumber(i);
        for (qint32 mask = 0; mask <= 7; ++mask) {
            const QString text = KeyCodeClass::ShortCutKeyString(mask, name);
            EXPECT_EQ(KeyCodeClass::GetMaskCode(text), mask) << qPrintable(text);
            const qint16 expected = name == "Num +" ? 0 : qint16(names->DataKeyOfNumber(i).toInt());
            EXPECT_EQ(codes.GetKeyCode(text), expected) << qPrintable(text);
        }
    }
    EXPECT_EQ(codes.GetKeyCode("Ctrl + Hyper"), 0);
    EXPECT_EQ(KeyCodeClass::GetMaskCode("F5"), 0);
    // The inverse that nobody calls puts Shift first, and knows the modifier keys.
    EXPECT_EQ(codes.GetKeyCodeString(65, 3), "Shift + Ctrl + A");
    EXPECT_EQ(codes.GetKeyCodeString(17, 1), "Shift + Ctrl");
    EXPECT_EQ(codes.GetKeyCodeString(999, 1), "");
}

qint16 CodeOf(int vKey, Qt::KeyboardModifiers vModifiers = {}, quint32 vScanCode = 0)
{
    const QKeyEvent event(QEvent::KeyPress, vKey, vModifiers, vScanCode, 0, 0);
    return keyeventcodes::VirtualKeyCode(event);
}

TEST(KeyEventCodesTest, KeysArriveAsTheTableCodes)
{
    keyeventcodes::SetKeyboardLayout(keyeventcodes::Layout::Japanese);
    const Qt::KeyboardModifiers pad = Qt::KeypadModifier, shift = Qt::ShiftModifier;
    const std::vector<std::tuple<int, Qt::KeyboardModifiers, int>> keys = {
        {Qt::Key_A, Qt::ControlModifier, 65}, {Qt::Key_7, {}, 55}, {Qt::Key_F12, {}, 123},
        {Qt::Key_Backtab, shift, 9}, {Qt::Key_Print, {}, 44}, {Qt::Key_Meta, {}, 0},
        // The numeric pad; without Num Lock its keys are the cursor keys.
        {Qt::Key_Enter, pad, 13}, {Qt::Key_0, pad, 96}, {Qt::Key_9, pad, 105},
        {Qt::Key_Asterisk, pad, 106}, {Qt::Key_Plus, pad, 107}, {Qt::Key_Minus, pad, 109},
        {Qt::Key_Period, pad, 110}, {Qt::Key_Slash, pad, 111}, {Qt::Key_Home, pad, 36},
        // Symbols go back to the Japanese key that types them, shifted or not.
        {Qt::Key_At, {}, 192}, {Qt::Key_QuoteLeft, shift, 192}, {Qt::Key_BraceLeft, shift, 219},
        {Qt::Key_Semicolon, {}, 187}, {Qt::Key_Plus, shift, 187}, {Qt::Key_Colon, {}, 186},
        {Qt::Key_Asterisk, shift, 186}, {Qt::Key_BraceRight, shift, 221},
        {Qt::Key_Less, shift, 188}, {Qt::Key_Greater, shift, 190}, {Qt::Key_Question, shift, 191},
        {Qt::Key_Underscore, shift, 226}, {Qt::Key_Equal, shift, 189},
        {Qt::Key_AsciiTilde, shift, 222}, {Qt::Key_yen, {}, 220}, {Qt::Key_Bar, shift, 220},
        {Qt::Key_Backslash, {}, 220}, {Qt::Key_Exclam, shift, 49}, {Qt::Key_QuoteDbl, shift, 50},
        {Qt::Key_Apostrophe, shift, 55}, {Qt::Key_ParenRight, shift, 57}};
    for (const auto& [key, modifiers, code] : keys)
        EXPECT_EQ(CodeOf(key, modifiers), code) << std::hex << key;
}

TEST(KeyEventCodesTest, AKnownPlaceOutweighsTheSymbol)
{
    keyeventcodes::SetKeyboardLayout(keyeventcodes::Layout::Japanese);
    // Shift with 2 types "@" on a US layout: the key is still the 2.
    EXPECT_EQ(CodeOf(Qt::Key_At, Qt::ShiftModifier, 11), 50);
    EXPECT_EQ(CodeOf(Qt::Key_ParenRight, Qt::ShiftModifier, 19), 48);
    // The Japanese layout types a backslash on both the yen and the ro key.
    EXPECT_EQ(CodeOf(Qt::Key_Backslash, {}, 132), 220);
    EXPECT_EQ(CodeOf(Qt::Key_Backslash, {}, 97), 226);
    EXPECT_EQ(CodeOf(Qt::Key_1, Qt::KeypadModifier, 87), 97);
}

}  // namespace
