#pragma once
// A main window for the dispatcher's tests: each operation writes down its name and argument,
// "SetPaintSizeMode(2)", and then runs the test's hook, which may raise or start another action.

#include "commands/ViewerOperations.h"
#include "common/SettingsTree.h"
#include "store/StructuredDataClass.h"
#include "support/AppError.h"

#include <QStringList>
#include <functional>
#include <utility>
#include <vector>

class RecordingViewer : public ViewerOperations {
public:
    QStringList Calls;
    std::function<void(const QString& vCall)> OnCall;

    void OpenDialog() override { Record(QStringLiteral("OpenDialog")); }
    void FolderOpenDialog() override { Record(QStringLiteral("FolderOpenDialog")); }
    void SelectedTabFilePathCopy() override { Record(QStringLiteral("SelectedTabFilePathCopy")); }
    void AllTabClose() override { Record(QStringLiteral("AllTabClose")); }
    void TabClose() override { Record(QStringLiteral("TabClose")); }
    void NextTab() override { Record(QStringLiteral("NextTab")); }
    void PreviousTab() override { Record(QStringLiteral("PreviousTab")); }
    void SelectedTabUpdate() override { Record(QStringLiteral("SelectedTabUpdate")); }
    void NextPage() override { Record(QStringLiteral("NextPage")); }
    void PreviousPage() override { Record(QStringLiteral("PreviousPage")); }
    void PageJump() override { Record(QStringLiteral("PageJump")); }
    void SetPaintSizeMode(const QString& v) override { Record(QStringLiteral("SetPaintSizeMode(%1)").arg(v)); }
    void SetDoubleDisp(const QString& v) override { Record(QStringLiteral("SetDoubleDisp(%1)").arg(v)); }
    void SetDispDirection(const QString& v) override { Record(QStringLiteral("SetDispDirection(%1)").arg(v)); }
    void AddRuler(qint16 v) override { Record(QStringLiteral("AddRuler(%1)").arg(v)); }
    void DeleteAllRuler() override { Record(QStringLiteral("DeleteAllRuler")); }
    void OptionWindowOpen() override { Record(QStringLiteral("OptionWindowOpen")); }
    void DispVersion() override { Record(QStringLiteral("DispVersion")); }
    void EndApp() override { Record(QStringLiteral("EndApp")); }
    void ArrangementExec(const QString& v) override { Record(QStringLiteral("ArrangementExec(%1)").arg(v)); }
    void ReadFolder(const QString& v) override { Record(QStringLiteral("ReadFolder(%1)").arg(v)); }

private:
    void Record(const QString& vCall)
    {
        Calls.append(vCall);
        if (OnCall)
            OnCall(vCall);
    }
};

// The fixed actions after "なし", in list order, with the call each must make.
inline const std::vector<std::pair<QString, QString>> FixedActionCalls = {
    {"ファイルを開く", "OpenDialog"}, {"ファイルを全て開く", "FolderOpenDialog"},
    {"フルパスファイル名をコピー", "SelectedTabFilePathCopy"}, {"すべてのタブを閉じる", "AllTabClose"},
    {"タブを閉じる", "TabClose"}, {"次のタブ", "NextTab"}, {"前のタブ", "PreviousTab"},
    {"次ページ", "NextPage"}, {"前ページ", "PreviousPage"}, {"ページ移動", "PageJump"},
    {"サイズ:横幅", "SetPaintSizeMode(0)"}, {"サイズ:ページ全体", "SetPaintSizeMode(1)"},
    // The captions promise a tenth of what the modes show; both sides stay as users stored them.
    {"サイズ:10%", "SetPaintSizeMode(2)"}, {"サイズ:30%", "SetPaintSizeMode(3)"},
    {"サイズ:50%", "SetPaintSizeMode(4)"}, {"サイズ:70%", "SetPaintSizeMode(5)"},
    {"サイズ:100%", "SetPaintSizeMode(6)"}, {"表示:単一", "SetDoubleDisp(1)"},
    {"表示:見開き", "SetDoubleDisp(2)"}, {"表示方向:左右", "SetDispDirection(LR)"},
    {"表示方向:右左", "SetDispDirection(RL)"}, {"画面更新", "SelectedTabUpdate"},
    {"水平ルーラーを追加", "AddRuler(0)"}, {"垂直ルーラーを追加", "AddRuler(1)"},
    {"全てのルーラーを削除", "DeleteAllRuler"}, {"オプション", "OptionWindowOpen"},
    {"バージョン情報", "DispVersion"}, {"終了", "EndApp"},
};

