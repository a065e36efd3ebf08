#pragma once
// A command line taken apart: the program, the files to open and the switches, and put back
// together again. Tokens are cut at blanks; a double-quoted stretch is one token, so names with
// blanks survive. The quotes themselves are dropped, so a name can't carry one.

#include "store/StructuredDataClass.h"

#include <QString>
#include <QStringList>

class CommandLineClass {
public:
    CommandLineClass();

    QString Command() const { return command_; }
    void SetCommand(const QString& v) { command_ = v; }
    QString ExeName() const { return exeName_; }
    void SetExeName(const QString& v) { exeName_ = v; }
    QString Argument() const { return argument_; }
    void SetArgument(const QString& v) { argument_ = v; }

    // Files: the tokens in order under automatic keys. Switch and SwitchArgument: keyed by the
    // upper-cased letter behind "-" or "/", holding the whole token and the token less its
    // first two characters.
    SDC Files() const { return files_; }
    SDC Switch() const { return switch_; }
    SDC SwitchArgument() const { return switchArgument_; }

    // An empty vCommandLine analyses the Command already set.
    void AnalyzeComanndLine(const QString& vCommandLine = {});
    // The same analysis of a command line that arrives already cut into words (argv), the
    // program first.
    void AnalyzeArguments(const QStringList& vArguments);
    QString CreateCommandLine();

private:
    void Classify(const QStringList& vTokens);
    static bool IsSwitch(const QString& vToken);
    qsizetype FirstTokenEnd() const;

    QString command_;
    QString exeName_;
    QString argument_;
    SDC files_;
    SDC switch_;
    SDC switchArgument_;
};
