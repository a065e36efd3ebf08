#include "commands/ActionCatalogue.h"

#include "commands/ViewerOperations.h"

namespace {

template <auto Operation>
void Call(ViewerOperations& vForm)
{
    (vForm.*Operation)();
}

} // namespace

const std::array<FixedAction, 29>& FixedActions()
{
    static const std::array<FixedAction, 29> table = {{
        {QStringLiteral("なし"), nullptr},
        {QStringLiteral("ファイルを開く"), Call<&ViewerOperations::OpenDialog>},
        {QStringLiteral("ファイルを全て開く"), Call<&ViewerOperations::FolderOpenDialog>},
        {QStringLiteral("フルパスファイル名をコピー"), Call<&ViewerOperations::SelectedTabFilePathCopy>},
        {QStringLiteral("すべてのタブを閉じる"), Call<&ViewerOperations::AllTabClose>},
        {QStringLiteral("タブを閉じる"), Call<&ViewerOperations::TabClose>},
        {QStringLiteral("次のタブ"), Call<&ViewerOperations::NextTab>},
        {QStringLiteral("前のタブ"), Call<&ViewerOperations::PreviousTab>},
        {QStringLiteral("次ページ"), Call<&ViewerOperations::NextPage>},
        {QStringLiteral("前ページ"), Call<&ViewerOperations::PreviousPage>},
        {QStringLiteral("ページ移動"), Call<&ViewerOperations::PageJump>},
        {QStringLiteral("サイズ:横幅"), [](ViewerOperations& w) { w.SetPaintSizeMode(QStringLiteral("0")); }},
        {QStringLiteral("サイズ:ページ全体"), [](ViewerOperations& w) { w.SetPaintSizeMode(QStringLiteral("1")); }},
        // Size modes "2" to "6" show a page at 100% to 500%, so these five captions say a tenth
        // of what they do. Users' settings files hold the captions; they stay as they are.
        {QStringLiteral("サイズ:10%"), [](ViewerOperations& w) { w.SetPaintSizeMode(QStringLiteral("2")); }},
        {QStringLiteral("サイズ:30%"), [](ViewerOperations& w) { w.SetPaintSizeMode(QStringLiteral("3")); }},
        {QStringLiteral("サイズ:50%"), [](ViewerOperations& w) { w.SetPaintSizeMode(QStringLiteral("4")); }},
        {QStringLiteral("サイズ:70%"), [](ViewerOperations& w) { w.SetPaintSizeMode(QStringLiteral("5")); }},
        {QStringLiteral("サイズ:100%"), [](ViewerOperations& w) { w.SetPaintSizeMode(QStringLiteral("6")); }},
        {QStringLiteral("表示:単一"), [](ViewerOperations& w) { w.SetDoubleDisp(QStringLiteral("1")); }},
        {QStringLiteral("表示:見開き"), [](ViewerOperations& w) { w.SetDoubleDisp(QStringLiteral("2")); }},
        {QStringLiteral("表示方向:左右"), [](ViewerOperations& w) { w.SetDispDirection(QStringLiteral("LR")); }},
        {QStringLiteral("表示方向:右左"), [](ViewerOperations& w) { w.SetDispDirection(QStringLiteral("RL")); }},
        {QStringLiteral("画面更新"), Call<&ViewerOperations::SelectedTabUpdate>},
        {QStringLiteral("水平ルーラーを追加"), [](ViewerOperations& w) { w.AddRuler(qint16{0}); }},
        {QStringLiteral("垂直ルーラーを追加"), [](ViewerOperations& w) { w.AddRuler(qint16{1}); }},
        {QStringLiteral("全てのルーラーを削除"), Call<&ViewerOperations::DeleteAllRuler>},
        {QStringLiteral("オプション"), Call<&ViewerOperations::OptionWindowOpen>},
        {QStringLiteral("バージョン情報"), Call<&ViewerOperations::DispVersion>},
        {QStringLiteral("終了"), Call<&ViewerOperations::EndApp>},
    }};
    return table;
}
