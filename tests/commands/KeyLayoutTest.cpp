// Every key of the key table pressed on a Japanese and on a US keyboard, as the X server
// delivers it (its place as the native scan code, Qt's symbol, the modifiers), comes out as the
// code the Windows build gets from the same key on the same layout.
#include "commands/KeyCodeClass.h"
#include "commands/KeyEventCodes.h"

#include <QKeyEvent>
#include <gtest/gtest.h>

#include <set>

using keyeventcodes::Layout;

namespace {

struct Press {
    quint32 place;
    int key;
    Qt::KeyboardModifiers modifiers = {};
};

qint16 CodeOf(const Press& vPress)
{
    const QKeyEvent event(QEvent::KeyPress, vPress.key, vPress.modifiers, vPress.place, 0, 0);
    return keyeventcodes::VirtualKeyCode(event);
}

const Qt::KeyboardModifiers Pad = Qt::KeypadModifier;
const Qt::KeyboardModifiers Shift = Qt::ShiftModifier;

// The keys that are the same on both keyboards, by the table's name.
std::map<QString, std::vector<Press>> SharedKeys()
{
    std::map<QString, std::vector<Press>> keys;
    for (int i = 0; i < 10; ++i)
        keys[QString::number(i)] = {{i == 0 ? 19u : quint32(9 + i), Qt::Key_0 + i}};
    const char* rows[] = {"QWERTYUIOP", "ASDFGHJKL", "ZXCVBNM"};
    const quint32 starts[] = {24, 38, 52};
    for (int r = 0; r < 3; ++r)
        for (int c = 0; rows[r][c]; ++c)
            keys[QString(QLatin1Char(rows[r][c]))] = {{starts[r] + c, rows[r][c]}};
    const quint32 fPlaces[] = {67, 68, 69, 70, 71, 72, 73, 74, 75, 76, 95, 96, 191, 192, 193, 194};
    for (int i = 0; i < 16; ++i)
        keys[QStringLiteral("F%1").arg(i + 1)] = {{fPlaces[i], Qt::Key_F1 + i}};
    const quint32 padPlaces[] = {90, 87, 88, 89, 83, 84, 85, 79, 80, 81};
    for (int i = 0; i < 10; ++i)
        keys[QStringLiteral("Num %1").arg(i)] = {{padPlaces[i], Qt::Key_0 + i, Pad}};
    keys["Back"] = {{22, Qt::Key_Backspace}};
    keys["Cancel"] = {{0, Qt::Key_Cancel}};
    keys["Capital"] = {{66, Qt::Key_CapsLock}};
    keys["Clear"] = {{84, Qt::Key_Clear, Pad}};  // the pad's 5 without Num Lock
    // Delete, also the pad's Del without Num Lock.
    keys["Delete"] = {{119, Qt::Key_Delete}, {91, Qt::Key_Delete, Pad}};
    keys["Down"] = {{116, Qt::Key_Down}, {88, Qt::Key_Down, Pad}};
    keys["End"] = {{115, Qt::Key_End}, {87, Qt::Key_End, Pad}};
    keys["Escape"] = {{9, Qt::Key_Escape}};
    keys["Execute"] = {{0, Qt::Key_Execute}};
    keys["Help"] = {{0, Qt::Key_Help}};
    keys["Home"] = {{110, Qt::Key_Home}, {79, Qt::Key_Home, Pad}};
    keys["Insert"] = {{118, Qt::Key_Insert}, {90, Qt::Key_Insert, Pad}};
    keys["Left"] = {{113, Qt::Key_Left}, {83, Qt::Key_Left, Pad}};
    keys["PageDown"] = {{117, Qt::Key_PageDown}, {89, Qt::Key_PageDown, Pad}};
    keys["PageUp"] = {{112, Qt::Key_PageUp}, {81, Qt::Key_PageUp, Pad}};
    keys["Pause"] = {{127, Qt::Key_Pause}};
    keys["Print"] = {{0, Qt::Key_Printer}};
    keys["Return"] = {{36, Qt::Key_Return}, {104, Qt::Key_Enter, Pad}};
    keys["Right"] = {{114, Qt::Key_Right}, {85, Qt::Key_Right, Pad}};
    keys["ScrollLock"] = {{78, Qt::Key_ScrollLock}};
    keys["Select"] = {{0, Qt::Key_Select}};
    keys["PrintScreen"] = {{107, Qt::Key_Print}};
    keys["Space"] = {{65, Qt::Key_Space}};
    keys["Tab"] = {{23, Qt::Key_Tab}, {23, Qt::Key_Backtab, Shift}};
    keys["Up"] = {{111, Qt::Key_Up}, {80, Qt::Key_Up, Pad}};
    keys["Numlock"] = {{77, Qt::Key_NumLock}};
    keys["Num ."] = {{91, Qt::Key_Period, Pad}};
    keys["Num +"] = {{86, Qt::Key_Plus, Pad}};
    keys["Num -"] = {{82, Qt::Key_Minus, Pad}};
    keys["Num *"] = {{63, Qt::Key_Asterisk, Pad}};
    keys["Num /"] = {{106, Qt::Key_Slash, Pad}};
    return keys;
}

// The punctuation keys: which key of each keyboard the Windows build gives the table's code,
// and what the key types there, plain and with Shift.
std::map<QString, std::vector<Press>> PunctuationKeys(Layout vLayout)
{
    if (vLayout == Layout::Japanese) {
        return {
            {"@", {{34, Qt::Key_At}, {34, Qt::Key_QuoteLeft, Shift}}},
            {"[", {{35, Qt::Key_BracketLeft}, {35, Qt::Key_BraceLeft, Shift}}},
            {";", {{47, Qt::Key_Semicolon}, {47, Qt::Key_Plus, Shift}}},
            {":", {{48, Qt::Key_Colon}, {48, Qt::Key_Asterisk, Shift}}},
            {"]", {{51, Qt::Key_BracketRight}, {51, Qt::Key_BraceRight, Shift}}},
            {",", {{59, Qt::Key_Comma}, {59, Qt::Key_Less, Shift}}},
            {".", {{60, Qt::Key_Period}, {60, Qt::Key_Greater, Shift}}},
            {"/", {{61, Qt::Key_Slash}, {61, Qt::Key_Question, Shift}}},
            {"BackSlash", {{97, Qt::Key_Backslash}, {97, Qt::Key_Underscore, Shift}}},
            {"-", {{20, Qt::Key_Minus}, {20, Qt::Key_Equal, Shift}}},
            {"^", {{21, Qt::Key_AsciiCircum}, {21, Qt::Key_AsciiTilde, Shift}}},
            {"\\", {{132, Qt::Key_Backslash}, {132, Qt::Key_Bar, Shift}}},
        };
    }
    return {
        {"@", {{49, Qt::Key_QuoteLeft}, {49, Qt::Key_AsciiTilde, Shift}}},
        {"[", {{34, Qt::Key_BracketLeft}, {34, Qt::Key_BraceLeft, Shift}}},
        {";", {{21, Qt::Key_Equal}, {21, Qt::Key_Plus, Shift}}},
        {":", {{47, Qt::Key_Semicolon}, {47, Qt::Key_Colon, Shift}}},
        {"]", {{35, Qt::Key_BracketRight}, {35, Qt::Key_BraceRight, Shift}}},
        {",", {{59, Qt::Key_Comma}, {59, Qt::Key_Less, Shift}}},
        {".", {{60, Qt::Key_Period}, {60, Qt::Key_Greater, Shift}}},
        {"/", {{61, Qt::Key_Slash}, {61, Qt::Key_Question, Shift}}},
        {"BackSlash", {{94, Qt::Key_Less}, {94, Qt::Key_Greater, Shift}}},  // a 102-key board
        {"-", {{20, Qt::Key_Minus}, {20, Qt::Key_Underscore, Shift}}},
        {"^", {{48, Qt::Key_Apostrophe}, {48, Qt::Key_QuoteDbl, Shift}}},
        {"\\", {{51, Qt::Key_Backslash}, {51, Qt::Key_Bar, Shift}}},
    };
}

class KeyLayoutTest : public ::testing::TestWithParam<Layout> {
protected:
    void TearDown() override { keyeventcodes::SetKeyboardLayout(Layout::Japanese); }
};

TEST_P(KeyLayoutTest, EveryKeyOfTheTableComesOutAsItsCode)
{
    const Layout layout = GetParam();
    auto keys = SharedKeys();
    keys.merge(PunctuationKeys(layout));
    // Not keys of a keyboard: the mouse buttons, and a separator key no keyboard here has.
    const std::set<QString> notKeys = {"LButton", "RButton", "MButton", "Separator"};

    const KeyCodeClass codes;
    const SDC names = codes.KeyName();
    int checked = 0;
    for (qint16 i = 1; i <= names->Count(); ++i) {
        const QString name = names->DataValueOfNumber(i);
        const qint16 code = qint16(names->DataKeyOfNumber(i).toInt());
        if (notKeys.count(name))
            continue;
        ASSERT_TRUE(keys.count(name)) << "no key pressed for " << qPrintable(name);
        for (const Press& press : keys[name]) {
            // Each press starts from the other layout, so that a place alone must tell.
            keyeventcodes::SetKeyboardLayout(layout == Layout::Us ? Layout::Japanese : Layout::Us);
            keyeventcodes::SetKeyboardLayout(layout);
            EXPECT_EQ(CodeOf(press), code) << qPrintable(name) << " place " << press.place;
        }
        ++checked;
    }
    EXPECT_EQ(checked, 105);
}

INSTANTIATE_TEST_SUITE_P(Layouts, KeyLayoutTest, ::testing::Values(Layout::Japanese, Layout::Us),
                         [](const auto& vInfo) {
                             return vInfo.param == Layout::Japanese ? std::string("Japanese")
                                                                    : std::string("Us");
                         });

TEST(KeyLayoutLearningTest, TheKeysThemselvesTellTheLayout)
{
    keyeventcodes::SetKeyboardLayout(Layout::Japanese);
    // The key right of L types ";" on both and is coded apart: a US key seen first decides.
    EXPECT_EQ(CodeOf({47, Qt::Key_Semicolon}), 187);
    EXPECT_EQ(CodeOf({48, Qt::Key_Apostrophe}), 222);  // the US ' key
    EXPECT_EQ(keyeventcodes::KeyboardLayout(), Layout::Us);
    EXPECT_EQ(CodeOf({47, Qt::Key_Semicolon}), 186);
    EXPECT_EQ(CodeOf({34, Qt::Key_At}), 192);  // the Japanese @ key
    EXPECT_EQ(keyeventcodes::KeyboardLayout(), Layout::Japanese);
    EXPECT_EQ(CodeOf({47, Qt::Key_Semicolon}), 187);
    // Without a place a symbol is read as the layout in use types it.
    EXPECT_EQ(CodeOf({0, Qt::Key_Apostrophe, Shift}), 55);
    keyeventcodes::SetKeyboardLayout(Layout::Us);
    EXPECT_EQ(CodeOf({0, Qt::Key_Apostrophe}), 222);
    EXPECT_EQ(CodeOf({0, Qt::Key_At, Shift}), 50);
    EXPECT_EQ(CodeOf({0, Qt::Key_Underscore, Shift}), 189);
    // A non-Latin layout's letters are coded by their place.
    EXPECT_EQ(CodeOf({38, 0x0444}), 65);  // Cyrillic ef on the A key
    keyeventcodes::SetKeyboardLayout(Layout::Japanese);
}

}  // namespace
