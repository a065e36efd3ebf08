#pragma once
// The fixed tables of the options dialog: its eight pages in tree order, the settings group each
// one stores, and the controls of each group in the order they are written to the settings file.
// Group keys, captions and control names are read by the main window and stored in users' files.

#include <QString>
#include <QStringList>

#include <array>

struct OptionPage {
    const char* Node;       // the tree node's text
    int Image;              // 1 to 8: the page's place, and the node's picture
    const char* Caption;    // the heading on the page
    const char* Group;      // the settings group, name between backslashes
    const char* Controls;   // the group's controls, in file order, separated by spaces
};

inline constexpr std::array<OptionPage, 8> kOptionPages = {{
    {"ウインドウ", 1, "ウインドウ設定", "\\ウインドウ\\",
     "cboStartDocSize chkWindowsDisp chkWindowPositionSave txtResolution txtGamma chkWindowSort "
     "optWindowSortTarget optWindowSortMode chkOpenOnlyOne chkActiveForm txtActiveFormTime txtRulerWidth "
     "picRulerColor"},
    {"マウス", 2, "マウス設定", "\\マウス\\",
     "cboMouseLeftDClick cboMouseWheelClick cboMouse4thClick cboMouse5thClick cboMouseRightWheel"},
    {"マウスジェスチャ", 3, "マウスジェスチャ設定", "\\マウスジェスチャ\\", "chkMouseGesture livMouseGesture"},
    {"キーボード", 4, "キーボード設定", "\\キーボード\\", "livShortCutKey"},
    {"動作", 5, "動作設定", "\\動作\\", "chkActArrangement"},
    {"複合動作", 6, "複合動作設定", "\\複合動作\\", "livMultiActionMultiAction"},
    {"読み込み", 7, "読み込み設定", "\\読み込み\\", "livReadFolder"},
    {"ポップアップメニュー", 8, "ポップアップメニュー設定", "\\ポップアップメニュー\\", "livPMenuList"},
}};

inline QString Utf8(const char* vText) { return QString::fromUtf8(vText); }

inline QStringList PageControls(const OptionPage& vPage)
{
    return Utf8(vPage.Controls).split(QLatin1Char(' '));
}
