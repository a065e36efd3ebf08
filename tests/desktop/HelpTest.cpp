// The help that the help menu opens says what the program does: the starter bindings it lists
// are those of the shipped settings file, read through the trigger table as the window reads them.
#include "commands/AppCommandListClass.h"
#include "settings/DataSaveLoadClass.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

QString HelpText()
{
    QFile file(QCoreApplication::applicationDirPath() + QStringLiteral("/Marnoquill.html"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The rows of the table with id vId: first cell (tags removed) to second cell.
QList<std::pair<QString, QString>> TableRows(const QString& vHtml, const QString& vId)
{
    QList<std::pair<QString, QString>> rows;
    const qsizetype start = vHtml.indexOf(QStringLiteral("<table id=\"") + vId + QLatin1Char('"'));
    if (start < 0)
        return rows;
    const QString table = vHtml.mid(start, vHtml.indexOf(QStringLiteral("</table>"), start) - start);
    static const QRegularExpression row(QStringLiteral("<tr><td>(.*?)</td><td>(.*?)</td></tr>"));
    static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
    for (const QRegularExpressionMatch& m : row.globalMatch(table))
        rows.append({m.captured(1).remove(tag), m.captured(2).remove(tag)});
    return rows;
}

} // namespace

TEST(Help, StarterBindingsAreThoseOfTheShippedSettings)
{
    const QString help = HelpText();
    ASSERT_FALSE(help.isEmpty());
    auto settings = std::make_shared<StructuredDataClass>();
    DataSaveLoadClass io;
    io.SetData(settings);
    io.Load(QCoreApplication::applicationDirPath() + QStringLiteral("/Marnoquill.ini"), QStringLiteral("DetailSet"));
    AppCommandListClass list;
    list.RefDetailSet(settings);
    list.CreateCommandList();
    const SDC table = list.CommandList();

    const auto keys = TableRows(help, QStringLiteral("starter-keys"));
    const auto gestures = TableRows(help, QStringLiteral("starter-gestures"));
    EXPECT_EQ(keys.size(), 11);
    EXPECT_EQ(gestures.size(), 4);
    for (const auto& [trigger, action] : keys + gestures)
        EXPECT_EQ(table->DataValue(trigger), action) << qPrintable(trigger);
    // Nothing bound that the help keeps quiet about (the five mouse words stand beside).
    EXPECT_EQ(table->Count(), keys.size() + gestures.size() + 5);
}
