#include "support/CommonLibClass.h"

#include "common/RecordingPresenter.h"
#include "common/TestFiles.h"

#include <QApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <tuple>

using namespace Qt::Literals::StringLiterals;
using L = CommonLibClass;
using Answer = MessagePresenter::Answer;
using Buttons = MessagePresenter::Buttons;
using Kind = MessagePresenter::Kind;

TEST(CommonLibMessages, BoxesCarryKindTitleAndButtonsAndQuestionsAlwaysOfferYesNo)
{
    ScopedRecordingPresenter shown;
    L::ErrMsgBox(u"ページは数字で指定してください。"_s);
    L::WorningMsgBox(u"w"_s);
    L::InformationMsgBox(u"i"_s);
    shown.ScriptAnswer(Answer::Cancel);
    EXPECT_EQ(L::QuestionBox(u"q1"_s, Buttons::YesNoCancel), Answer::Cancel);
    EXPECT_EQ(L::QuestionBox(u"q2"_s, Buttons::Ok), Answer::Yes);
    const std::tuple<Kind, QString, Buttons> seen[] = {
        {Kind::Error, u"エラーメッセージ"_s, Buttons::Ok}, {Kind::Warning, u"警告メッセージ"_s, Buttons::Ok},
        {Kind::Information, u"情報メッセージ"_s, Buttons::Ok}, {Kind::Question, u"確認"_s, Buttons::YesNoCancel},
        {Kind::Question, u"確認"_s, Buttons::YesNo}};
    ASSERT_EQ(shown.Count(), 5);
    EXPECT_EQ(shown.Shown()[0].text, u"ページは数字で指定してください。"_s);
    for (size_t i = 0; i < 5; ++i)
        EXPECT_EQ(std::tuple(shown.Shown()[i].kind, shown.Shown()[i].title, shown.Shown()[i].buttons), seen[i]) << i;
}

TEST(CommonLibMessages, RealBoxCarriesTitleIconAndAnswer)
{
    // The real presenter is modal; a timer looks at the box and answers it.
    std::pair<QString, QMessageBox::Icon> seen;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            seen = {box->windowTitle(), box->icon()};
            QAbstractButton* no = box->button(QMessageBox::No);
            no ? no->click() : box->done(0);  // never leave a test hanging on a box
        }
    });
    timer.start(10);
    EXPECT_EQ(L::QuestionBox(u"閉じますか?"_s), Answer::No);
    EXPECT_EQ(seen, std::pair(u"確認"_s, QMessageBox::Question));
}

TEST(CommonLibNumbers, RoundKeepsTheOldRules)
{
    struct Case { double value; int num; double result; };
    const Case cases[] = {
        {2.5, 0, 3}, {2.49, 0, 2}, {1.25, -2, 1.3}, {1.24, -2, 1.2}, {3.146, -3, 3.15}, {14, 1, 10}, {150, 2, 200},
        // the 32-bit conversion rounds a half to even: 14.5 + 5 becomes 20, not 19
        {14.5, 1, 20}, {123456, 10, 0},
    };
    for (const Case& c : cases) {
        double value = c.value;
        int num = c.num;
        EXPECT_DOUBLE_EQ(L::Round(value, num), c.result) << c.value << " " << c.num;
        EXPECT_EQ(num, std::abs(c.num));
    }
    // A negative gives the rounded magnitude and leaves the working value, negated, behind.
    double value = -1.25;
    int num = -2;
    EXPECT_DOUBLE_EQ(L::Round(value, num), 1.3);
    EXPECT_DOUBLE_EQ(value, -13);  // (1.25 + 0.05) * 10, cut, negated
    // Up and off go away from zero for a negative too.
    EXPECT_EQ(L::RoundUp(-2.1), -3);
    EXPECT_EQ(L::RoundOff(-2.5), -3);
}

TEST(CommonLibNumbers, LengthChecksAndRanges)
{
    struct Case { double value; int whole, fraction; bool fits; };
    const Case cases[] = {
        {123.45, 3, 2, true}, {123.456, 3, 2, false}, {1234, 3, 2, false}, {-123.4, 3, 2, false} /* the sign */,
        {-0.0, 1, 0, true}, {1e20, 21, 0, true} /* never in exponent form */, {0.1 + 0.2, 3, 2, false},
        {std::nan(""), 9, 9, false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(L::DoubleLenCheck(c.value, c.whole, c.fraction), c.fits) << c.value;
    // ModPlus and the random numbers stay in their ranges, even at the ends of 32 bits.
    const qint32 mods[][3] = {{-7, 3, 2}, {-7, -3, 2}, {5, 0, 0}, {std::numeric_limits<qint32>::min(), -1, 0}};
    for (const auto& m : mods)
        EXPECT_EQ(L::ModPlus(m[0], m[1]), m[2]) << m[0] << " mod " << m[1];
    std::set<qint32> seen;
    for (int i = 0; i < 500; ++i)
        seen.insert(L::GetRandomNumber(3, 1));  // bounds in either order
    EXPECT_EQ(seen, (std::set<qint32>{1, 2, 3}));
    EXPECT_EQ(L::GetRandomNumber(INT32_MAX, INT32_MAX), INT32_MAX);
}

TEST(CommonLibText, IsCurrencyIsAlphabetAndReplaceString)
{
    for (const QString& yes : {u"-1.5"_s, u".5"_s, u"5."_s, u" 42 "_s, u"－１．５"_s})
        EXPECT_TRUE(L::IsCurrency(yes)) << yes.toStdString();
    for (const QString& no : {u""_s, u"-"_s, u"1E3"_s, u"1Ｅ3"_s, u"1D3"_s, u"1，000"_s, u"5-"_s, u"5＋"_s, u"1.2.3"_s})
        EXPECT_FALSE(L::IsCurrency(no)) << no.toStdString();
    // Only ASCII letters count, and an empty search text finds nothing.
    EXPECT_TRUE(L::IsAlphabet(u"AbcZ"_s));
    for (const QString& no : {QString(), u"Ａ"_s, u"ı"_s})
        EXPECT_FALSE(L::IsAlphabet(no)) << no.toStdString();
    EXPECT_EQ(L::ReplaceString(u"aAa"_s, u"a"_s, u"x"_s), u"xAx"_s);
    EXPECT_EQ(L::ReplaceString(u"aAa"_s, u"a"_s, u"x"_s, true), u"xxx"_s);
    EXPECT_EQ(L::ReplaceString(u"ab"_s, QString(), u"x"_s), u"ab"_s);
}

TEST(CommonLibText, ByteCutsCountShiftJisAndDropHalfCharacters)
{
    const QString nihongo = u"日本語"_s;  // 93 FA 96 7B 8C EA
    const qsizetype all = std::numeric_limits<qsizetype>::max();
    const std::pair<QString, QString> cuts[] = {
        {L::CLibLeftB(nihongo, 3), u"日"_s}, {L::CLibLeftB(nihongo, 4), u"日本"_s},
        // The second byte of 日 (0xFA) looks like a lead byte; it is still the end of a character.
        {L::CLibLeftB(nihongo, 2), u"日"_s}, {L::CLibLeftB(nihongo, 1), {}}, {L::CLibLeftB(u"ｱ日"_s, 2), u"ｱ"_s},
        // A cut that takes everything keeps characters the code page has no place for.
        {L::CLibLeftB(u"😀a"_s, 9), u"😀a"_s},
        {L::ClibRightB(nihongo, 3), u"語"_s}, {L::ClibRightB(u"a日b"_s, 3), u"日b"_s}, {L::ClibRightB(nihongo, 99), nihongo},
        {L::ClibMidB(u"a日本b"_s, 2, 2), u"日"_s}, {L::ClibMidB(nihongo, 2, 3), u"本"_s} /* from a trail byte */,
        {L::ClibMidB(nihongo, 2, 2), {}} /* two halves */, {L::ClibMidB(nihongo, 3), u"本語"_s} /* to the end */,
        {L::ClibMidB(nihongo, 0, 2), u"日"_s} /* start held at 1 */, {L::ClibMidB(nihongo, 7, 2), {}},
        {L::ClibMidB(nihongo, 5, all), u"語"_s},
    };
    for (size_t i = 0; i < std::size(cuts); ++i)
        EXPECT_EQ(cuts[i].first, cuts[i].second) << "cut " << i;
    EXPECT_EQ(L::CLibLenB(u"a日"_s), 3);
    EXPECT_EQ(L::CLibLenB(u"ｱｲ"_s), 2);  // half-width kana: one byte
}

TEST(CommonLibRegex, MatchTakesPerlOptionsAndRefusesBadPatterns)
{
    struct Case { QString subject, pattern, options; bool matches; };
    const Case cases[] = {
        {u"File.XDW"_s, u"\\.xdw$"_s, u"i"_s, true}, {u"File.XDW"_s, u"\\.xdw$"_s, {}, false},
        {u"a\nb"_s, u"^b$"_s, u"m"_s, true}, {u"a\nb"_s, u"a.b"_s, {}, false}, {u"a\nb"_s, u"a.b"_s, u"s"_s, true},
        {u"ab"_s, u"a b # c"_s, u"x"_s, true}, {u"abc"_s, u"b"_s, u"gk"_s, true},
        {u"日本語"_s, u"^...$"_s, {}, true} /* one each */, {u"c:/a/b"_s, u"a/b"_s, {}, true} /* "/" unescaped */,
        {u"(("_s, u"("_s, {}, false}, {u"a"_s, u"[a"_s, {}, false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(L::IsMatch(c.subject, c.pattern, c.options), c.matches) << c.pattern.toStdString();
}

TEST(CommonLibRegex, ReplaceFirstOrAllWithReferences)
{
    struct Case { QString subject, form, result; };
    const QString kv = u"key=value"_s;
    const Case cases[] = {
        {u"a1b22c"_s, u"s/\\d+/#/"_s, u"a#b22c"_s}, {u"a1b22c"_s, u"/\\d+/#/g"_s, u"a#b#c"_s},
        {u"ABC"_s, u"s/b/x/i"_s, u"AxC"_s},
        {u"abc"_s, u"s/x*/-/g"_s, u"-a-b-c-"_s}, {u"c:/a/b"_s, u"s#/#\\\\#g"_s, u"c:\\a\\b"_s},
        {u"a/b"_s, u"s/\\//-/"_s, u"a-b"_s}, {u"日本語"_s, u"s/^.(.)/[$1]/"_s, u"[本]語"_s},
        {kv, u"s/(\\w+)=(\\w+)/$2=$1/"_s, u"value=key"_s}, {kv, u"s/(\\w+)=(\\w+)/\\2:\\1/"_s, u"value:key"_s},
        {kv, u"s/(\\w+)=/${1}0=/"_s, u"key0=value"_s}, {kv, u"s/(?<k>\\w+)=/${k}!/"_s, u"key!value"_s},
        {kv, u"s/=/[$&]/"_s, u"key[=]value"_s}, {kv, u"s/=/<$`|$'>/"_s, u"key<key|value>value"_s},
        {kv, u"s/=/\\t\\$1\\\\/"_s, u"key\t$1\\value"_s}, {kv, u"s/=/$/"_s, u"key$value"_s},
        {kv, u"s/=/$9/"_s, u"keyvalue"_s},  // no such group: nothing
        // a bad form or pattern changes nothing
        {kv, u"s/(/x/"_s, kv}, {kv, u"abc"_s, kv}, {kv, u"s/a/b"_s, kv}, {kv, u"/a/"_s, kv},
    };
    for (const Case& c : cases)
        EXPECT_EQ(L::ReplaceRegex(c.subject, c.form), c.result) << c.form.toStdString();
}

TEST(CommonLibTime, TimeAndDateTextsAndWait)
{
    const std::tuple<qint64, int, QString> texts[] = {{3725, 0, u"01:02:05"_s}, {86400, 0, u"24:00:00"_s},
                                                      {86401, 0, u"無効"_s}, {-5, 0, u"23:59:55"_s},
                                                      {86400, 1, u"24:00:00"_s}, {3725, 1, u"1時間2分5秒"_s}};
    for (const auto& [seconds, format, text] : texts)
        EXPECT_EQ(L::TimeSerialEx(seconds, format), text) << seconds;
    const std::pair<QString, qint32> seconds[] = {
        {u"30:00:00"_s, 108000}, {u"1:2"_s, 0}, {u"a:00:00"_s, 0}, {u"999999999:00:00"_s, 0}};
    for (const auto& [text, value] : seconds)
        EXPECT_EQ(L::ChangeSecond(text), value) << text.toStdString();
    EXPECT_TRUE(L::CheckTime(u"23:59:59"_s));
    for (const char* bad : {"24:00:00", "12:60:00", "1:00:00", "12-00-00", ""})
        EXPECT_FALSE(L::CheckTime(QString::fromLatin1(bad))) << bad;

    EXPECT_EQ(L::CDateString(u"20240105"_s), u"2024/01/05"_s);
    bool fired = false;
    QTimer::singleShot(0, [&] { fired = true; });
    L::Wait(0);  // the event loop turns even without time to wait
    EXPECT_TRUE(fired);
}

TEST(CommonLibForms, CenteringOnTheOwnerStaysOnTheScreen)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget form;
    QWidget owner;
    form.resize(200, 100);
    owner.setGeometry(screen.left() + 10, screen.top() + 10, 400, 300);
    L::CenteringFormOfOwner(&form, &owner);
    EXPECT_EQ(form.frameGeometry().center(), owner.frameGeometry().center());
    // An owner in the corner would push the form off the screen; it stays inside.
    owner.move(screen.right() - 50, screen.bottom() - 50);
    L::CenteringFormOfOwner(&form, &owner);
    EXPECT_TRUE(screen.contains(form.frameGeometry())) << form.x() << "," << form.y();
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
    for (const QString& scheme : {u"file"_s, u"https"_s})
        QDesktopServices::setUrlHandler(scheme, &recorder, "Open");
    L::QuickOpen(file);
    L::ExploreOpen(file);  // a file shows its folder
    L::QuickOpen(u"https://example.org/a"_s);
    for (const QString& scheme : {u"file"_s, u"https"_s})
        QDesktopServices::unsetUrlHandler(scheme);
    const QUrl folder = QUrl::fromLocalFile(dir.path());
    EXPECT_EQ(recorder.urls, (QList<QUrl>{QUrl::fromLocalFile(file), folder, QUrl(u"https://example.org/a"_s)}));
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
