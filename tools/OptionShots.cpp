// Takes a screenshot of each of the eight pages of the options dialog, filled with a few
// bindings of the kind a user makes, for the README and for reviews of the layout.
//
//     marnoquill_option_shots <folder>
#include "commands/AppActionClass.h"
#include "commands/AppCommandListClass.h"
#include "common/SettingsTree.h"
#include "options/frmOption.h"

#include <QApplication>
#include <QDir>
#include <QTreeWidget>

#include <cstdio>

namespace {

SDC SampleSettings()
{
    using settingstree::AddComposite;
    using settingstree::AddRow;
    using settingstree::Group;
    SDC root = std::make_shared<StructuredDataClass>();
    const SDC gestures = Group(root, QStringLiteral("\\マウスジェスチャ\\"));
    gestures->CreateThread(QStringLiteral("chkMouseGesture"))->AddData(QStringLiteral("1"), QStringLiteral("Value"));
    AddRow(gestures, QStringLiteral("livMouseGesture"), QStringLiteral("次ページ"), {QStringLiteral("→")});
    AddRow(gestures, QStringLiteral("livMouseGesture"), QStringLiteral("前ページ"), {QStringLiteral("←")});
    AddRow(gestures, QStringLiteral("livMouseGesture"), QStringLiteral("タブを閉じる"), {QStringLiteral("↓→")});
    const SDC keys = Group(root, QStringLiteral("\\キーボード\\"));
    AddRow(keys, QStringLiteral("livShortCutKey"), QStringLiteral("次ページ"), {QStringLiteral("Ctrl + J")});
    AddRow(keys, QStringLiteral("livShortCutKey"), QStringLiteral("前ページ"), {QStringLiteral("Ctrl + K")});
    AddRow(keys, QStringLiteral("livShortCutKey"), QStringLiteral("Multi:二つ進む"), {QStringLiteral("Ctrl + Shift + J")});
    AddRow(Group(root, QStringLiteral("\\複合動作\\")), QStringLiteral("livMultiActionMultiAction"), QStringLiteral("Multi:二つ進む"));
    AddComposite(root, QStringLiteral("Multi:二つ進む"), {QStringLiteral("次ページ"), QStringLiteral("次ページ")});
    AddRow(Group(root, QStringLiteral("\\読み込み\\")), QStringLiteral("livReadFolder"), QStringLiteral("Read:受付箱"),
           {QStringLiteral("/srv/受付"), QStringLiteral("する"), QStringLiteral("*.xdw;*.tif")});
    const SDC popup = Group(root, QStringLiteral("\\ポップアップメニュー\\"));
    AddRow(popup, QStringLiteral("livPMenuList"), QStringLiteral("次ページ"), {QStringLiteral("次のページ"), QStringLiteral("N")});
    AddRow(popup, QStringLiteral("livPMenuList"), QStringLiteral("セパレータ"), {QStringLiteral("-"), QString()});
    AddRow(popup, QStringLiteral("livPMenuList"), QStringLiteral("タブを閉じる"), {QStringLiteral("閉じる"), QStringLiteral("C")});
    return root;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("shots"));
    QDir().mkpath(folder.path());

    SDC settings = SampleSettings();
    AppActionClass action(settings);
    AppCommandListClass commands;
    frmOption dialog(settings, folder.filePath(QStringLiteral("unused.ini")), action, commands, nullptr);
    dialog.show();
    const char* names[] = {"window", "mouse", "gesture", "keyboard", "action", "multi", "read", "popup"};
    auto* tree = dialog.Ctl<QTreeWidget>(QStringLiteral("TreeView1"));
    for (int i = 0; i < 8; ++i) {
        tree->setCurrentItem(tree->topLevelItem(i));
        QApplication::processEvents();
        const QString path = folder.filePath(QStringLiteral("options-%1.png").arg(QString::fromLatin1(names[i])));
        if (dialog.grab().save(path))
            std::printf("%s\n", path.toLocal8Bit().constData());
    }
    return 0;
}
