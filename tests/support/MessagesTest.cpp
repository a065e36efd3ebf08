// Messages routed to the outputs registered for their category and status, and the two kinds of
// log file, read back as bytes: code page 932, CR LF.
#include "common/RecordingPresenter.h"
#include "common/TestFiles.h"
#include "support/Cp932.h"
#include "support/LogOutClass.h"
#include "support/MessageControlClass.h"

#include <QDate>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

QStringList Lines(const QString& vPath)
{
    const QByteArray bytes = testfiles::ReadBytes(vPath);
    EXPECT_TRUE(bytes.isEmpty() || bytes.endsWith("\r\n"));
    QStringList lines = Cp932::Decode(bytes).split(QStringLiteral("\r\n"));
    lines.removeLast();
    return lines;
}

const QRegularExpression Stamped(QStringLiteral("^\\d{4}/\\d\\d/\\d\\d \\d\\d:\\d\\d:\\d\\d : (.*)$"));

} // namespace

TEST(MessageControlClass, AMessageGoesToItsStatusOrElseToAll)
{
    ScopedRecordingPresenter shown;
    MessageControlClass messages;
    QLabel label;
    QStatusBar bar;
    QLineEdit text;
    QListWidget newestLast;
    QListWidget newestFirst;
    messages.RegisterControl(QStringLiteral("読込"), QStringLiteral("ALL"), &label, MessageControlClass::TypeLabel);
    messages.RegisterControl(QStringLiteral("読込"), QStringLiteral("ALL"), &bar, MessageControlClass::TypeStatusBar);
    messages.RegisterControl(QStringLiteral("読込"), QStringLiteral("ALL"), &newestLast, MessageControlClass::TypeListBox);
    const QString key =
        messages.RegisterControl(QStringLiteral("読込"), QStringLiteral("ALL"), &newestFirst, MessageControlClass::TypeListBox);
    messages.SetControlPropertyOfListSequence(QStringLiteral("読込"), QStringLiteral("ALL"), key, QStringLiteral("False"));
    messages.RegisterControl(QStringLiteral("読込"), QStringLiteral("ERR"), &text, MessageControlClass::TypeTextBox);
    messages.RegisterControl(QStringLiteral("読込"), QStringLiteral("ERR"), nullptr, MessageControlClass::TypeMessageBox);
    QSignalSpy out(&messages, &MessageControlClass::eMessageOut);

    messages.MessageOut(QStringLiteral("一つ目"), QStringLiteral("読込"), QStringLiteral("OK"));
    messages.SetControlReference(QStringLiteral("読込"));
    messages.MessageOut(QStringLiteral("二つ目"), {}, QStringLiteral("WAR"));  // the category set before
    EXPECT_EQ(label.text(), QStringLiteral("二つ目"));
    EXPECT_EQ(bar.currentMessage(), QStringLiteral("二つ目"));
    ASSERT_EQ(newestLast.count(), 2);
    EXPECT_EQ(newestLast.item(1)->text(), QStringLiteral("二つ目"));
    EXPECT_EQ(newestFirst.item(0)->text(), QStringLiteral("二つ目"));
    EXPECT_EQ(shown.Count(), 0);

    // An error has outputs of its own: "ALL" is only for a status without them.
    messages.MessageOut(QStringLiteral("失敗"), QStringLiteral("読込"), QStringLiteral("ERR"));
    EXPECT_EQ(text.text(), QStringLiteral("失敗"));
    EXPECT_EQ(label.text(), QStringLiteral("二つ目"));
    ASSERT_EQ(shown.Count(), 1);
    EXPECT_EQ(shown.Last().title, QStringLiteral("エラーメッセージ"));
    EXPECT_EQ(shown.Last().kind, MessagePresenter::Kind::Error);
    EXPECT_EQ(shown.Last().text, QStringLiteral("失敗"));

    messages.MessageOut(QStringLiteral("どこにも"), QStringLiteral("ない分類"), QStringLiteral("OK"));
    ASSERT_EQ(out.count(), 3);
    EXPECT_EQ(out.at(2).at(0).toString(), QStringLiteral("ERR"));
    EXPECT_EQ(out.at(2).at(1).toString(), QStringLiteral("失敗"));
    EXPECT_EQ(out.at(2).at(2).toString(), QStringLiteral("読込"));
}

TEST(MessageControlClass, ListViewsAndStoreListsKeepStampedRows)
{
    MessageControlClass messages;
    messages.SetOutputMaxLine(2);
    messages.SetErrorIconNo(3);
    QTreeWidget view;
    view.setColumnCount(4);
    auto list = std::make_shared<StructuredDataClass>();
    auto newestFirst = std::make_shared<StructuredDataClass>();
    messages.RegisterControl(QStringLiteral("c"), QStringLiteral("ALL"), &view, MessageControlClass::TypeListView);
    messages.RegisterControl(QStringLiteral("c"), QStringLiteral("ALL"), list);
    const QString key = messages.RegisterControl(QStringLiteral("c"), QStringLiteral("ALL"), newestFirst);
    messages.SetControlPropertyOfListSequence(QStringLiteral("c"), QStringLiteral("ALL"), key, QStringLiteral("False"));
    messages.MessageOut(QStringLiteral("a"), QStringLiteral("c"), QStringLiteral("OK"));
    messages.MessageOut(QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("WAR"));
    messages.MessageOut(QStringLiteral("c"), QStringLiteral("c"), QStringLiteral("ERR"));

    ASSERT_EQ(view.topLevelItemCount(), 2);  // the oldest went
    EXPECT_EQ(view.topLevelItem(0)->text(0), QStringLiteral("警告"));
    EXPECT_EQ(view.topLevelItem(1)->text(0), QStringLiteral("エラー"));
    EXPECT_EQ(view.topLevelItem(1)->text(3), QStringLiteral("c"));
    EXPECT_EQ(view.topLevelItem(1)->text(1), QDate::currentDate().toString(QStringLiteral("yyyy/MM/dd")));
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d$")).match(view.topLevelItem(1)->text(2)).hasMatch());
    EXPECT_EQ(view.topLevelItem(1)->data(0, Qt::UserRole).toInt(), 3);
    EXPECT_FALSE(view.topLevelItem(0)->data(0, Qt::UserRole).isValid());  // warning icon 0: none

    ASSERT_EQ(list->Count(), 3);
    EXPECT_EQ(list->ThreadOfNumber(3)->DataValue(QStringLiteral("Message")), QStringLiteral("c"));
    EXPECT_EQ(list->ThreadOfNumber(3)->DataValue(QStringLiteral("Status")), QStringLiteral("ERR"));
    EXPECT_EQ(list->ThreadOfNumber(1)->DataValue(QStringLiteral("DateTime")).size(), 19);
    // "Newest first" puts each row in front of the row keyed "1", the first ever written: it is
    // the Windows build's order and files made by it are read the same way.
    QStringList order;
    for (qint16 i = 1; i <= newestFirst->Count(); ++i)
        order << newestFirst->ThreadOfNumber(i)->DataValue(QStringLiteral("Message"));
    EXPECT_EQ(order, QStringList({QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("a")}));
}

TEST(MessageControlClass, LogsGoByStatusToTheirFilesOnlyWhenSwitchedOn)
{
    QTemporaryDir dir;
    MessageControlClass messages;
    messages.SetLogFileName(dir.filePath(QStringLiteral("Log.txt")));
    messages.SetErrLogFileName(dir.filePath(QStringLiteral("ErrLog.txt")));
    const QString log = messages.RegisterControl(QStringLiteral("c"), QStringLiteral("ALL"), nullptr, MessageControlClass::TypeLog);
    messages.MessageOut(QStringLiteral("まだ"), QStringLiteral("c"), QStringLiteral("OK"));
    EXPECT_FALSE(QFile::exists(messages.LogFileName()));

    messages.SetControlPropertyOfLog(QStringLiteral("c"), QStringLiteral("ALL"), log, true);
    messages.MessageOut(QStringLiteral("読み込みました"), QStringLiteral("c"), QStringLiteral("OK"));
    messages.MessageOut(QStringLiteral("気をつけて"), QStringLiteral("c"), QStringLiteral("WAR"));
    messages.MessageOut(QStringLiteral("失敗しました"), QStringLiteral("c"), QStringLiteral("ERR"));
    const QStringList normal = Lines(messages.LogFileName());
    ASSERT_EQ(normal.size(), 1);
    EXPECT_EQ(Stamped.match(normal[0]).captured(1), QStringLiteral("読み込みました"));
    const QStringList errors = Lines(messages.ErrLogFileName());
    ASSERT_EQ(errors.size(), 2);
    EXPECT_EQ(Stamped.match(errors[1]).captured(1), QStringLiteral("失敗しました"));

    // An output's own file wins over both.
    messages.SetControlPropertyOfLogFileName(QStringLiteral("c"), QStringLiteral("ALL"), log, dir.filePath(QStringLiteral("own.txt")));
    messages.MessageOut(QStringLiteral("x"), QStringLiteral("c"), QStringLiteral("ERR"));
    EXPECT_EQ(Lines(dir.filePath(QStringLiteral("own.txt"))).size(), 1);
    EXPECT_EQ(Lines(messages.ErrLogFileName()).size(), 2);
}

TEST(MessageControlClass, ProgressBarsCountUpToTheirEnd)
{
    MessageControlClass messages;
    QProgressBar bar;
    messages.RegisterControl(QStringLiteral("c"), QStringLiteral("ALL"), &bar, MessageControlClass::TypeProgressBar);
    QSignalSpy started(&messages, &MessageControlClass::eProgressStart);
    messages.ProgressStart(QStringLiteral("c"), 0);
    EXPECT_EQ(bar.maximum(), 1);  // nothing to count still shows a bar
    messages.ProgressNext(QStringLiteral("c"));
    messages.ProgressNext(QStringLiteral("c"));
    EXPECT_EQ(bar.value(), 1);
    messages.ProgressStart(QStringLiteral("c"), 3);
    EXPECT_EQ(bar.value(), 0);
    ASSERT_EQ(started.count(), 2);
    EXPECT_EQ(started.at(1).at(0).toInt(), 3);
}

TEST(LogOutClass, ACyclicLogKeepsItsLastLines)
{
    QTemporaryDir dir;
    LogOutClass log;
    log.SetLogFileName(dir.filePath(QStringLiteral("log.txt")));
    log.SetMaxLine(500);
    for (int i = 1; i <= 500; ++i)
        ASSERT_TRUE(log.CyclicLogOut(QStringLiteral("行%1").arg(i)));
    ASSERT_EQ(Lines(log.LogFileName()).size(), 500);
    EXPECT_TRUE(log.LogOut(QStringLiteral("最後")));  // "" as mode is the cyclic log
    const QStringList lines = Lines(log.LogFileName());
    ASSERT_EQ(lines.size(), 500);
    EXPECT_EQ(lines.first(), QStringLiteral("行2"));
    EXPECT_EQ(lines.last(), QStringLiteral("最後"));

    log.SetNotOut(true);
    EXPECT_FALSE(log.LogOut(QStringLiteral("出ない")));
    EXPECT_EQ(Lines(log.LogFileName()).last(), QStringLiteral("最後"));
    // A file that can't be written is swallowed.
    log.SetNotOut(false);
    log.SetLogFileName(dir.path());
    EXPECT_FALSE(log.CyclicLogOut(QStringLiteral("x")));
    log.SetLogFileName(dir.filePath(QStringLiteral("no/such/folder/log.txt")));
    EXPECT_FALSE(log.AppendLogOut(QStringLiteral("x")));
}

TEST(LogOutClass, DatedLogsTakeTheStampOfTheirCycle)
{
    QTemporaryDir dir;
    LogOutClass log;
    log.SetMode(QStringLiteral("date"));
    log.SetCycle(QStringLiteral("month"));
    EXPECT_EQ(log.Cycle(), QStringLiteral("MONTH"));
    log.SetLogFileName(dir.filePath(QStringLiteral("log.v1.txt")));
    const QDate today = QDate::currentDate();
    EXPECT_EQ(log.DatedFileName(), dir.filePath(QStringLiteral("log.v1") + today.toString(QStringLiteral("yyyyMM")) + QStringLiteral(".txt")));
    ASSERT_TRUE(log.LogOut(QStringLiteral("一")));
    ASSERT_TRUE(log.LogOut(QStringLiteral("二")));
    EXPECT_EQ(Lines(log.DatedFileName()), QStringList({QStringLiteral("一"), QStringLiteral("二")}));

    log.SetCycle(QStringLiteral("YEAR"));
    log.SetLogFileName(QStringLiteral("noending"));
    EXPECT_EQ(log.DatedFileName(), QStringLiteral("noending") + today.toString(QStringLiteral("yyyy")) + QStringLiteral("."));
    log.SetCycle(QStringLiteral("WEEK"));  // anything else is a day
    EXPECT_EQ(log.DatedFileName(), QStringLiteral("noending") + today.toString(QStringLiteral("yyyyMMdd")) + QStringLiteral("."));
    auto copy = log.Clone();
    EXPECT_EQ(copy->Cycle(), QStringLiteral("WEEK"));
    EXPECT_EQ(copy->Mode(), QStringLiteral("date"));
}
