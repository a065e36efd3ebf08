#include "support/CommonLibClass.h"

#include "common/RecordingPresenter.h"
#include "common/TestFiles.h"
#include "support/AppError.h"

#include <QApplication>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QStatusBar>
#include <QTextEdit>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>

#include <cmath>
#include <set>

using namespace Qt::Literals::StringLiterals;
using L = CommonLibClass;
using Answer = MessagePresenter::Answer;
using Buttons = MessagePresenter::Buttons;
using Kind = MessagePresenter::Kind;

// ---- message boxes

TEST(CommonLibMessages, EachBoxShowsItsKindTitleAndText)
{
    ScopedRecordingPresenter shown;
    L::ErrMsgBox(u"ページは数字で指定してください。"_s);
    L::WorningMsgBox(u"w"_s);
    L::InformationMsgBox(u"i"_s);
    ASSERT_EQ(shown.Count(), 3);
    const auto& m = shown.Shown();
    EXPECT_EQ(m[0].kind, Kind::Error);
    EXPECT_EQ(m[0].title, u"エラーメッセージ"_s);
    EXPECT_EQ(m[0].text, u"ページは数字で指定してください。"_s);
    EXPECT_EQ(m[0].buttons, Buttons::Ok);
    EXPECT_EQ(m[1].kind, Kind::Warning);
    EXPECT_EQ(m[1].title, u"警告メッセージ"_s);
    EXPECT_EQ(m[2].kind, Kind::Information);
    EXPECT_EQ(m[2].title, u"情報メッセージ"_s);
}

TEST(CommonLibMessages, QuestionGivesTheScriptedAnswersInOrder)
{
    ScopedRecordingPresenter shown;
    shown.ScriptAnswer(Answer::No);
    shown.ScriptAnswer(Answer::Cancel);
    EXPECT_EQ(L::QuestionBox(u"q1"_s), Answer::No);
    EXPECT_EQ(L::QuestionBox(u"q2"_s, Buttons::YesNoCancel), Answer::Cancel);
    EXPECT_EQ(L::QuestionBox(u"q3"_s), Answer::Yes);  // unscripted
    EXPECT_EQ(shown.Shown()[0].title, u"確認"_s);
    EXPECT_EQ(shown.Shown()[0].buttons, Buttons::YesNo);
    EXPECT_EQ(shown.Shown()[1].buttons, Buttons::YesNoCancel);
    // A question can't be asked with an OK button only.
    L::QuestionBox(u"q4"_s, Buttons::Ok);
    EXPECT_EQ(shown.Last().buttons, Buttons::YesNo);
}

TEST(CommonLibMessages, NestedGuardsRestoreTheOuterPresenter)
{
    MessagePresenter* const before = &MessagePresenter::Current();
    {
        ScopedRecordingPresenter outer;
        {
            ScopedRecordingPresenter inner;
            L::ErrMsgBox(u"inner"_s);
            EXPECT_EQ(inner.Count(), 1);
        }
        L::ErrMsgBox(u"outer"_s);
        EXPECT_EQ(outer.Count(), 1);
        EXPECT_EQ(outer.Last().text, u"outer"_s);
    }
    EXPECT_EQ(&MessagePresenter::Current(), before);
}

TEST(CommonLibMessages, RealBoxCarriesTitleIconAndAnswer)
{
    // The real presenter is modal; a timer looks at the box and answers it.
    QString title;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QTimer timer;
    timer.setInterval(10);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        title = box->windowTitle();
        icon = box->icon();
        if (QAbstractButton* no = box->button(QMessageBox::No))
            no->click();
        else
            box->done(0);  // never leave a test hanging on a box
    });
    timer.start();
    EXPECT_EQ(L::QuestionBox(u"閉じますか?"_s), Answer::No);
    EXPECT_EQ(title, u"確認"_s);
    EXPECT_EQ(icon, QMessageBox::Question);
}

// ---- numbers

TEST(CommonLibNumbers, RoundKeepsTheOldRules)
{
    struct Case { double value; int num; double result; };
    const Case cases[] = {
        {2.5, 0, 3}, {2.49, 0, 2}, {1.25, -2, 1.3}, {1.24, -2, 1.2}, {3.146, -3, 3.15}, {3.144, -3, 3.14},
        {2.5, -1, 3}, {14, 1, 10}, {15, 1, 20}, {149, 2, 100}, {150, 2, 200},
        // the 32-bit conversion rounds a half to even: 14.5 + 5 becomes 20, not 19
        {14.5, 1, 20}, {123456, 10, 0},
    };
    for (const Case& c : cases) {
        double value = c.value;
        int num = c.num;
        EXPECT_DOUBLE_EQ(L::Round(value, num), c.result) << c.value << " " << c.num;
        EXPECT_EQ(num, std::abs(c.num));
    }
}

TEST(CommonLibNumbers, RoundOfANegativeGivesTheMagnitudeAndNegatesTheWorkingValue)
{
    double value = -2.5;
    int num = 0;
    EXPECT_DOUBLE_EQ(L::Round(value, num), 3);
    EXPECT_DOUBLE_EQ(value, -2.5);

    value = -1.25;
    num = -2;
    EXPECT_DOUBLE_EQ(L::Round(value, num), 1.3);
    EXPECT_DOUBLE_EQ(value, -13);  // (1.25 + 0.05) * 10, cut, negated
    EXPECT_EQ(num, 2);
}

TEST(CommonLibNumbers, RoundDownUpOffWorkOnTheMagnitude)
{
    EXPECT_EQ(L::RoundDown(-2.7), -2);
    EXPECT_EQ(L::RoundUp(-2.1), -3);
    EXPECT_EQ(L::RoundUp(-2.0), -2);
    EXPECT_EQ(L::RoundOff(-2.5), -3);
}

TEST(CommonLibNumbers, DoubleLenCheckCountsTheShortestText)
{
    EXPECT_TRUE(L::DoubleLenCheck(123.45, 3, 2));
    EXPECT_FALSE(L::DoubleLenCheck(123.456, 3, 2));
    EXPECT_FALSE(L::DoubleLenCheck(1234, 3, 2));
    EXPECT_TRUE(L::DoubleLenCheck(100, 3, 0));
    EXPECT_FALSE(L::DoubleLenCheck(-123.4, 3, 2));  // the sign takes a place
    EXPECT_TRUE(L::DoubleLenCheck(-12.4, 3, 2));
    EXPECT_TRUE(L::DoubleLenCheck(-0.0, 1, 0));
    EXPECT_TRUE(L::DoubleLenCheck(1e20, 21, 0));  // never in exponent form
    EXPECT_FALSE(L::DoubleLenCheck(0.1 + 0.2, 3, 2));  // 0.30000000000000004
    EXPECT_FALSE(L::DoubleLenCheck(std::nan(""), 9, 9));
}

TEST(CommonLibNumbers, ModPlusIsNeverNegative)
{
    EXPECT_EQ(L::ModPlus(-7, 3), 2);
    EXPECT_EQ(L::ModPlus(-6, 3), 0);
    EXPECT_EQ(L::ModPlus(-7, -3), 2);
    EXPECT_EQ(L::ModPlus(5, 0), 0);
    EXPECT_EQ(L::ModPlus(std::numeric_limits<qint32>::min(), -1), 0);
}

TEST(CommonLibNumbers, RandomNumbersCoverTheClosedRange)
{
    std::set<qint32> seen;
    for (int i = 0; i < 500; ++i) {
        const qint32 n = L::GetRandomNumber(3, 1);  // bounds in either order
        ASSERT_TRUE(n >= 1 && n <= 3) << n;
        seen.insert(n);
    }
    EXPECT_EQ(seen.size(), 3u);
    const qint32 top = std::numeric_limits<qint32>::max();
    EXPECT_EQ(L::GetRandomNumber(top, top), top);
}

TEST(CommonLibNumbers, IsCurrencyTakesPlainNumbersOnly)
{
    for (const char16_t* yes : {u"123", u"-1.5", u"+0.5", u".5", u"5.", u" 42 ", u"１２３", u"－１．５"})
        EXPECT_TRUE(L::IsCurrency(QString::fromUtf16(yes))) << QString::fromUtf16(yes).toStdString();
    for (const char16_t* no : {u"", u"-", u"1E3", u"1Ｅ3", u"1D3", u"1,000", u"1，000", u"5-",
                               u"5＋", u"1.2.3", u"abc", u"12a"})
        EXPECT_FALSE(L::IsCurrency(QString::fromUtf16(no))) << QString::fromUtf16(no).toStdString();
}

// ---- text

TEST(CommonLibText, IsAlphabetAndReplaceString)
{
    EXPECT_TRUE(L::IsAlphabet(u"AbcZ"_s));
    EXPECT_FALSE(L::IsAlphabet(QString()));
    EXPECT_FALSE(L::IsAlphabet(u"A1"_s));
    EXPECT_FALSE(L::IsAlphabet(u"Ａ"_s));
    EXPECT_FALSE(L::IsAlphabet(u"ı"_s));

    EXPECT_EQ(L::ReplaceString(u"aAa"_s, u"a"_s, u"x"_s), u"xAx"_s);
    EXPECT_EQ(L::ReplaceString(u"aAa"_s, u"a"_s, u"x"_s, true), u"xxx"_s);
    EXPECT_EQ(L::ReplaceString(u"ab"_s, QString(), u"x"_s), u"ab"_s);
}

TEST(CommonLibText, ByteLengthsAndLeftCuts)
{
    const QString nihongo = u"日本語"_s;  // 93 FA 96 7B 8C EA
    EXPECT_EQ(L::CLibLenB(u"a日"_s), 3);
    EXPECT_EQ(L::CLibLenB(u"ｱｲ"_s), 2);  // half-width kana: one byte
    EXPECT_EQ(L::CLibLeftB(nihongo, 3), u"日"_s);
    EXPECT_EQ(L::CLibLeftB(nihongo, 4), u"日本"_s);
    // The second byte of 日 (0xFA) looks like a lead byte; it is still the end of a character.
    EXPECT_EQ(L::CLibLeftB(nihongo, 2), u"日"_s);
    EXPECT_EQ(L::CLibLeftB(nihongo, 1), QString());
    EXPECT_EQ(L::CLibLeftB(nihongo, 0), QString());
    EXPECT_EQ(L::CLibLeftB(u"ｱ日"_s, 2), u"ｱ"_s);
    // A cut that takes everything keeps characters the code page has no place for.
    EXPECT_EQ(L::CLibLeftB(u"😀a"_s, 9), u"😀a"_s);
}

TEST(CommonLibText, RightAndMiddleCutsDropHalfCharactersAtBothEnds)
{
    const QString nihongo = u"日本語"_s;
    EXPECT_EQ(L::ClibRightB(nihongo, 2), u"語"_s);
    EXPECT_EQ(L::ClibRightB(nihongo, 3), u"語"_s);
    EXPECT_EQ(L::ClibRightB(nihongo, 4), u"本語"_s);
    EXPECT_EQ(L::ClibRightB(u"a日b"_s, 3), u"日b"_s);
    EXPECT_EQ(L::ClibRightB(nihongo, 99), nihongo);

    EXPECT_EQ(L::ClibMidB(u"a日本b"_s, 2, 2), u"日"_s);
    EXPECT_EQ(L::ClibMidB(nihongo, 2, 3), u"本"_s);  // starts on a trail byte
    EXPECT_EQ(L::ClibMidB(nihongo, 2, 2), QString());  // two halves
    EXPECT_EQ(L::ClibMidB(nihongo, 3), u"本語"_s);  // to the end
    EXPECT_EQ(L::ClibMidB(nihongo, 0, 2), u"日"_s);  // start held at 1
    EXPECT_EQ(L::ClibMidB(nihongo, 7, 2), QString());
    EXPECT_EQ(L::ClibMidB(nihongo, 5, std::numeric_limits<qsizetype>::max()), u"語"_s);
}

// ---- regular expressions

TEST(CommonLibRegex, MatchWithOptions)
{
    EXPECT_TRUE(L::IsMatch(u"File.XDW"_s, u"\\.xdw$"_s, u"i"_s));
    EXPECT_FALSE(L::IsMatch(u"File.XDW"_s, u"\\.xdw$"_s));
    EXPECT_TRUE(L::IsMatch(u"a\nb"_s, u"^b$"_s, u"m"_s));
    EXPECT_FALSE(L::IsMatch(u"a\nb"_s, u"a.b"_s));
    EXPECT_TRUE(L::IsMatch(u"a\nb"_s, u"a.b"_s, u"s"_s));
    EXPECT_TRUE(L::IsMatch(u"ab"_s, u"a b # c"_s, u"x"_s));
    EXPECT_TRUE(L::IsMatch(u"日本語"_s, u"^...$"_s));  // one each
    EXPECT_TRUE(L::IsMatch(u"c:/a/b"_s, u"a/b"_s));   // "/" unescaped
    EXPECT_TRUE(L::IsMatch(u"abc"_s, u"b"_s, u"gk"_s));
}

TEST(CommonLibRegex, BadPatternsNeitherMatchNorChange)
{
    EXPECT_FALSE(L::IsMatch(u"(("_s, u"("_s));
    EXPECT_FALSE(L::IsMatch(u"a"_s, u"[a"_s));
    for (const char* bad : {"s/(/x/", "abc", "s/a/b", "", "s", "/a/"})
        EXPECT_EQ(L::ReplaceRegex(u"abc"_s, QString::fromLatin1(bad)), u"abc"_s) << bad;
}

TEST(CommonLibRegex, ReplaceFirstOrAll)
{
    const QString s = u"a1b22c"_s;
    EXPECT_EQ(L::ReplaceRegex(s, u"s/\\d+/#/"_s), u"a#b22c"_s);
    EXPECT_EQ(L::ReplaceRegex(s, u"s/\\d+/#/g"_s), u"a#b#c"_s);
    EXPECT_EQ(L::ReplaceRegex(s, u"/\\d+/#/g"_s), u"a#b#c"_s);
    EXPECT_EQ(L::ReplaceRegex(u"ABC"_s, u"s/b/x/i"_s), u"AxC"_s);
    EXPECT_EQ(L::ReplaceRegex(u"abc"_s, u"s/x*/-/g"_s), u"-a-b-c-"_s);
    EXPECT_EQ(L::ReplaceRegex(u"c:/a/b"_s, u"s#/#\\\\#g"_s), u"c:\\a\\b"_s);
    EXPECT_EQ(L::ReplaceRegex(u"a/b"_s, u"s/\\//-/"_s), u"a-b"_s);
    EXPECT_EQ(L::ReplaceRegex(u"日本語"_s, u"s/^.(.)/[$1]/"_s), u"[本]語"_s);
}

TEST(CommonLibRegex, ReplacementReferences)
{
    const QString s = u"key=value"_s;
    auto r = [&](const char* vForm) { return L::ReplaceRegex(s, QString::fromLatin1(vForm)); };
    EXPECT_EQ(r("s/(\\w+)=(\\w+)/$2=$1/"), u"value=key"_s);
    EXPECT_EQ(r("s/(\\w+)=(\\w+)/\\2:\\1/"), u"value:key"_s);
    EXPECT_EQ(r("s/(\\w+)=/${1}0=/"), u"key0=value"_s);
    EXPECT_EQ(r("s/(?<k>\\w+)=/${k}!/"), u"key!value"_s);
    EXPECT_EQ(r("s/=/[$&]/"), u"key[=]value"_s);
    EXPECT_EQ(r("s/=/<$`|$'>/"), u"key<key|value>value"_s);
    EXPECT_EQ(r("s/=/\\t\\$1\\\\/"), u"key\t$1\\value"_s);
    EXPECT_EQ(r("s/=/$9/"), u"keyvalue"_s);  // no such group: nothing
    EXPECT_EQ(r("s/=/$/"), u"key$value"_s);
}

// ---- time

TEST(CommonLibTime, TimeTexts)
{
    EXPECT_EQ(L::TimeSerialEx(0), u"00:00:00"_s);
    EXPECT_EQ(L::TimeSerialEx(3725), u"01:02:05"_s);
    EXPECT_EQ(L::TimeSerialEx(86399), u"23:59:59"_s);
    EXPECT_EQ(L::TimeSerialEx(86400), u"24:00:00"_s);
    EXPECT_EQ(L::TimeSerialEx(86400, 1), u"24:00:00"_s);
    EXPECT_EQ(L::TimeSerialEx(86401), u"無効"_s);
    EXPECT_EQ(L::TimeSerialEx(-5), u"23:59:55"_s);
    EXPECT_EQ(L::TimeSerialEx(3725, 1), u"1時間2分5秒"_s);
    EXPECT_EQ(L::TimeSerialEx(3725, 2), u"01:02:05"_s);

    EXPECT_EQ(L::ChangeSecond(u"01:02:05"_s), 3725);
    EXPECT_EQ(L::ChangeSecond(u"30:00:00"_s), 108000);
    EXPECT_EQ(L::ChangeSecond(u"1:2"_s), 0);
    EXPECT_EQ(L::ChangeSecond(u"a:00:00"_s), 0);
    EXPECT_EQ(L::ChangeSecond(u"999999999:00:00"_s), 0);

    EXPECT_TRUE(L::CheckTime(u"23:59:59"_s));
    for (const char* bad : {"24:00:00", "12:60:00", "12:00:60", "1:00:00", "12-00-00", "ab:cd:ef", ""})
        EXPECT_FALSE(L::CheckTime(QString::fromLatin1(bad))) << bad;
}

TEST(CommonLibTime, DatesAndClocks)
{
    const QDate today = QDate::currentDate();
    EXPECT_EQ(L::CheckDateNow(today), 0);
    EXPECT_EQ(L::CheckDateNow(today.addYears(-1)), 1);
    EXPECT_EQ(L::CheckDateNow(today.addYears(1)), 2);

    EXPECT_EQ(L::CDateString(u"20240105"_s), u"2024/01/05"_s);
    EXPECT_EQ(L::CDateString(u"2024/01/05"_s), u"2024/01/05"_s);
    EXPECT_EQ(L::CDateString(QDate(2024, 1, 5)), u"2024/01/05"_s);

    EXPECT_TRUE(QRegularExpression(u"^\\d{17}$"_s).match(L::ClibGetLocalTime()).hasMatch());
    EXPECT_TRUE(QRegularExpression(u"^\\d{4}/\\d\\d/\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}$"_s)
                    .match(L::ClibGetLocalTime2()).hasMatch());

    CommonLibClass lib;
    lib.StartTimer();
    EXPECT_GE(lib.GetTime(), 0.0);
}

TEST(CommonLibTime, WaitTurnsTheEventLoop)
{
    bool fired = false;
    QTimer::singleShot(0, [&] { fired = true; });
    L::Wait(0);
    EXPECT_TRUE(fired);
}

// ---- forms and controls

TEST(CommonLibForms, CenteringOnTheScreenAndOnTheOwner)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget form;
    form.resize(200, 100);
    L::CenteringForm(&form);
    EXPECT_EQ(form.frameGeometry().center(), screen.center());

    QWidget owner;
    owner.setGeometry(screen.left() + 10, screen.top() + 10, 400, 300);
    L::CenteringFormOfOwner(&form, &owner);
    EXPECT_EQ(form.frameGeometry().center(), owner.frameGeometry().center());

    // An owner in the corner would push the form off the screen; it stays inside.
    owner.move(screen.right() - 50, screen.bottom() - 50);
    L::CenteringFormOfOwner(&form, &owner);
    EXPECT_TRUE(screen.contains(form.frameGeometry())) << form.x() << "," << form.y();
}

TEST(CommonLibForms, SelectTextAndPanels)
{
    QLineEdit line(u"abc"_s);
    L::SelectText(&line);
    EXPECT_EQ(line.selectedText(), u"abc"_s);
    QTextEdit text(u"日本語"_s);
    L::SelectText(&text);
    EXPECT_EQ(text.textCursor().selectedText(), u"日本語"_s);
    L::SelectText(nullptr);

    QStatusBar bar;
    auto* first = new QLabel;  // the bar takes them over
    auto* second = new QLabel;
    bar.addWidget(first, 1);
    bar.addPermanentWidget(second);
    L::PanelTextOut(&bar, 2, u"1/5"_s);
    L::PanelTextOut(&bar, 1, u"/tmp/a.tif"_s);
    L::PanelTextOut(&bar, 3, u"nowhere"_s);
    L::PanelTextOut(&bar, 0, u"nowhere"_s);
    EXPECT_EQ(first->text(), u"/tmp/a.tif"_s);
    EXPECT_EQ(second->text(), u"1/5"_s);
}

class UrlRecorder : public QObject {
    Q_OBJECT
public:
    QList<QUrl> urls;
public Q_SLOTS:
    void Open(const QUrl& vUrl) { urls.append(vUrl); }
};

TEST(CommonLibForms, OpenAndExploreGoToTheDesktop)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(u"説明.txt"_s);
    testfiles::WriteBytes(file, "x");
    UrlRecorder recorder;
    QDesktopServices::setUrlHandler(u"file"_s, &recorder, "Open");
    QDesktopServices::setUrlHandler(u"https"_s, &recorder, "Open");
    L::QuickOpen(file);
    L::ExploreOpen(file);
    L::ExploreOpen(dir.path());
    L::QuickOpen(u"https://example.org/a"_s);
    QDesktopServices::unsetUrlHandler(u"file"_s);
    QDesktopServices::unsetUrlHandler(u"https"_s);
    ASSERT_EQ(recorder.urls.size(), 4);
    EXPECT_EQ(recorder.urls[0], QUrl::fromLocalFile(file));
    EXPECT_EQ(recorder.urls[1], QUrl::fromLocalFile(dir.path()));
    EXPECT_EQ(recorder.urls[2], QUrl::fromLocalFile(dir.path()));
    EXPECT_EQ(recorder.urls[3], QUrl(u"https://example.org/a"_s));
}

// ---- files

TEST(CommonLibFiles, CopyFailureNamesTheCallCodeAndBothPaths)
{
    QTemporaryDir dir;
    const QString from = dir.filePath(u"無い.tif"_s);
    const QString to = dir.filePath(u"b.tif"_s);
    try {
        L::CopyFile(from, to);
        FAIL() << "no error";
    } catch (const AppError& e) {
        EXPECT_EQ(e.Number(), 6800);
        EXPECT_TRUE(e.Description().startsWith(u"CopyFile(2)"_s + L::LastDllErrorText(2)))
            << e.Description().toStdString();
        EXPECT_TRUE(e.Description().contains(u"FromFileName = \""_s + from + u'"'));
        EXPECT_TRUE(e.Description().contains(u"ToFileName = \""_s + to + u'"'));
    }
    testfiles::WriteBytes(from, "data");
    L::CopyFile(from, to);
    EXPECT_EQ(testfiles::ReadBytes(to), QByteArray("data"));
}

TEST(CommonLibFiles, TempFolderIsMadeOrEmptiedOfFiles)
{
    QTemporaryDir dir;
    const QString temp = dir.filePath(u"a/作業"_s);
    L::CreateTempFolder(temp, true);
    ASSERT_TRUE(L::ExistsDir(temp));

    for (const char* name : {"x.tif", "noext", ".hidden"})
        testfiles::WriteBytes(temp + u'/' + QLatin1String(name), "x");
    QDir(temp).mkdir(u"sub"_s);
    L::CreateTempFolder(temp, false);
    EXPECT_EQ(QDir(temp).entryList(QDir::Files | QDir::Hidden).size(), 3);
    L::CreateTempFolder(temp, true);
    EXPECT_TRUE(QDir(temp).entryList(QDir::Files | QDir::Hidden).isEmpty());
    EXPECT_TRUE(L::ExistsDir(temp + u"/sub"_s));
}

#include "CommonLibClassTest.moc"
