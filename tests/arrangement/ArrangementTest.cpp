// The hand-over to the sibling product through a real plugin of it, loaded from the user's
// plugin folder, driven through the main window's actions.
#include "viewer/MainWindowFixture.h"

#include "common/ScriptedEngine.h"
#include "common/SettingsTree.h"
#include "common/TestFiles.h"
#include "commands/AppArrangementClass.h"
#include "support/AppError.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>

namespace {

// HOME for one test, holding (or not) the sibling's plugin in ~/.local/lib/marnoquill/plugins.
class SiblingHome {
public:
    SiblingHome(const QString& vHome, bool vInstalled) : saved_(qgetenv("HOME"))
    {
        qputenv("HOME", vHome.toLocal8Bit());
        const QString folder = vHome + QStringLiteral("/.local/lib/marnoquill/plugins");
        QDir().mkpath(folder);
        if (vInstalled)
            QFile::copy(QStringLiteral(MQ_SIBLING_PLUGIN), folder + QStringLiteral("/librecording_sibling.so"));
        qputenv("MQ_SIBLING_RECORD", (vHome + QStringLiteral("/record.txt")).toLocal8Bit());
    }
    ~SiblingHome() { qputenv("HOME", saved_); }

private:
    QByteArray saved_;
};

QStringList Record(const QString& vHome)
{
    QFile file(vHome + QStringLiteral("/record.txt"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    lines.removeAll(QString());
    file.remove();
    return lines;
}

bool Offers(AppActionClass& vActions, const QString& vName)
{
    const SDC names = vActions.ActionName();
    for (qint16 i = 1; i <= names->Count(); ++i)
        if (names->DataValueOfNumber(i) == vName)
            return true;
    return false;
}

class ArrangementTest : public MainWindowTest {
protected:
    void LinkOn(const QString& vValue)
    {
        settingstree::Group(context.DetailSet, QStringLiteral("\\動作\\"))
            ->CreateThread(QStringLiteral("chkActArrangement"))->AddData(vValue, QStringLiteral("Value"));
    }
};

} // namespace

TEST_F(ArrangementTest, WithoutThePluginNoProcessIsOffered)
{
    const SiblingHome home(dir.filePath(QStringLiteral("home")), false);
    AddWindowGroup(context.DetailSet);
    LinkOn(QStringLiteral("1"));
    Window();
    try {
        AppArrangementClass link;
        ADD_FAILURE() << "made without a sibling";
    } catch (const AppError& e) {
        EXPECT_EQ(e.Number(), 429);
    }
    EXPECT_FALSE(Offers(*context.Action, QStringLiteral("Brackenfold:月次整理")));
}

TEST_F(ArrangementTest, TheShownFileGoesToTheNamedProcess)
{
    const QString homePath = dir.filePath(QStringLiteral("home"));
    const SiblingHome home(homePath, true);
    AddWindowGroup(context.DetailSet);
    LinkOn(QStringLiteral("0"));
    frmMain& w = Window();
    EXPECT_FALSE(Offers(*context.Action, QStringLiteral("Brackenfold:月次整理")));  // switched off
    LinkOn(QStringLiteral("1"));
    context.Action->LoadAction();
    EXPECT_TRUE(Offers(*context.Action, QStringLiteral("Brackenfold:月次整理")));
    EXPECT_TRUE(Offers(*context.Action, QStringLiteral("Brackenfold:印刷")));
    Record(homePath);

    // No tab: the fixed stand-in name, so that processes needing no input still run.
    context.Action->ExecAction(QStringLiteral("Brackenfold:月次整理"));
    EXPECT_EQ(Record(homePath), QStringList({"loaded", "logset=P1", "msg=Msg1,4,ALL,1", "log=Msg1,True,ALL",
                                             "msg=Msg1,2,ERR,0", "log=Msg1,True,ERR", "clear", "run=P1",
                                             "file=C:\\dammy.xdw"}));
    EXPECT_EQ(Panel(2), QStringLiteral("処理中: P1"));  // the sibling's message, in the window

    // A TIFF tab hands over nothing; a DocuWorks tab its path.
    w.InitialOpenFile(Tiff(QStringLiteral("a.tif"), 2), true);
    context.Action->ExecAction(QStringLiteral("Brackenfold:月次整理"));
    EXPECT_FALSE(Record(homePath).join(u'|').contains(QStringLiteral("file=")));
    ScopedScriptedEngine engine;
    const QString xdw = dir.filePath(QStringLiteral("報告 書.xdw"));
    testfiles::WriteBytes(xdw, "scripted");
    engine->AddDocument(xdw, 2);
    w.InitialOpenFile(xdw, true);
    context.Action->ExecAction(QStringLiteral("Brackenfold:月次整理"));
    EXPECT_TRUE(Record(homePath).contains(QStringLiteral("file=") + xdw));

    // A process gone from the sibling's settings is named in a message; nothing runs.
    w.ArrangementExec(QStringLiteral("消えた"));
    ASSERT_GE(shown.Count(), 1);
    EXPECT_EQ(shown.Last().text, QStringLiteral("Brackenfoldの設定に設定名(消えた)が存在しません。"));
    EXPECT_FALSE(Record(homePath).join(u'|').contains(QStringLiteral("run=")));

    // A second hand-over asked while one runs returns at once.
    QTimer::singleShot(0, [&] { w.ArrangementExec(QStringLiteral("月次整理")); });
    w.ArrangementExec(QStringLiteral("月次整理"));
    EXPECT_EQ(Record(homePath).filter(QStringLiteral("run=")).size(), 1);

    // A sibling that fails while running ends the hand-over without a word, and no other runs
    // until the program starts again.
    const qsizetype messages = shown.Count();
    w.ArrangementExec(QStringLiteral("印刷"));
    EXPECT_TRUE(Record(homePath).contains(QStringLiteral("run=P2")));
    w.ArrangementExec(QStringLiteral("月次整理"));
    EXPECT_TRUE(Record(homePath).isEmpty());
    EXPECT_EQ(shown.Count(), messages);
    EXPECT_TRUE(w.isVisible());
}
