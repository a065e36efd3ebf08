#include "viewer/CommandLineClass.h"

#include "support/Blanks.h"
#include "support/SplitClass.h"

namespace {

const QString Blank = QStringLiteral(" ");
const QString Quote = QStringLiteral("\"");

// A token with a blank goes back in quotes, or it would come back as two.
QString Quoted(const QString& vToken)
{
    return vToken.contains(QLatin1Char(' ')) ? Quote + vToken + Quote : vToken;
}

} // namespace

CommandLineClass::CommandLineClass()
    : files_(std::make_shared<StructuredDataClass>()),
      switch_(std::make_shared<StructuredDataClass>()),
      switchArgument_(std::make_shared<StructuredDataClass>())
{
}

bool CommandLineClass::IsSwitch(const QString& vToken)
{
    if (vToken.startsWith(QLatin1Char('-')))
        return true;
    // "/x" is a switch as on Windows, but here "/" also starts every absolute path: a token
    // with a second "/" is a file, so that a desktop handing us /home/.../a.xdw gets it opened.
    return vToken.startsWith(QLatin1Char('/')) && vToken.indexOf(QLatin1Char('/'), 1) < 0;
}

void CommandLineClass::AnalyzeComanndLine(const QString& vCommandLine)
{
    if (!vCommandLine.isEmpty())
        command_ = vCommandLine;
    if (command_.isEmpty())
        return;
    // Each analysis describes one command line, not the sum of all seen.
    files_->Clear();
    switch_->Clear();
    switchArgument_->Clear();

    SplitClass split;
    split.SplitDQ(command_, Quote, Blank);
    // Runs of blanks leave empty tokens; they name neither the program, a file nor a switch.
    QStringList tokens;
    for (qint16 i = 1; i <= split.ItemCount(); ++i)
        if (!split.Item(i).isEmpty())
            tokens << split.Item(i);
    Classify(tokens);
    exeName_ = tokens.value(0);
    // Unpaired quotes leave no token at all; then everything is the argument.
    argument_ = TrimBlanks(tokens.isEmpty() ? command_ : command_.mid(FirstTokenEnd()));
}

void CommandLineClass::Classify(const QStringList& vTokens)
{
    for (qsizetype i = 1; i < vTokens.size(); ++i) {
        const QString& token = vTokens[i];
        if (!IsSwitch(token)) {
            files_->AddData(token);
            continue;
        }
        const QString key = token.mid(1, 1).toUpper();
        if (token.size() >= 2)
            switch_->AddData(token, key);
        if (token.size() >= 3)
            switchArgument_->AddData(token.mid(2), key);
    }
}

// The shell has already cut the line into words, quotes and all: they are classified as they
// stand, so that a file name holding a double quote still opens.
void CommandLineClass::AnalyzeArguments(const QStringList& vArguments)
{
    files_->Clear();
    switch_->Clear();
    switchArgument_->Clear();
    Classify(vArguments);
    exeName_ = vArguments.value(0);
    QStringList rest = vArguments.mid(1);
    for (QString& word : rest)
        word = Quoted(word);
    argument_ = rest.join(Blank);
    command_ = Quoted(exeName_) + Blank + argument_;
}

// Where the first token ends in Command, its quotes included; the token itself has lost them,
// so its own length would cut a quoted program name short.
qsizetype CommandLineClass::FirstTokenEnd() const
{
    bool inside = false;
    qsizetype i = 0;
    while (i < command_.size() && command_[i] == QLatin1Char(' '))
        ++i;
    for (; i < command_.size(); ++i) {
        const QChar c = command_[i];
        if (c == QLatin1Char('"'))
            inside = !inside;
        else if (c == QLatin1Char(' ') && !inside)
            break;
    }
    return i;
}

QString CommandLineClass::CreateCommandLine()
{
    QString argument;
    for (qint16 i = 1; i <= files_->Count(); ++i)
        argument += Quoted(files_->DataValueOfNumber(i)) + Blank;
    for (qint16 i = 1; i <= switch_->Count(); ++i)
        argument += Quoted(switch_->DataValueOfNumber(i)) + Blank;
    argument_ = TrimRightBlanks(argument);
    command_ = Quoted(exeName_) + Blank + argument_;
    return command_;
}
