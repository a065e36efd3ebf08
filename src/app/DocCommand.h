#pragma once
// The work of marnoquill-doc, apart from its main so that tests can run it with their own
// arguments and read what it printed. Documents open through the document classes, so a
// failure reads as the viewer's would: error 6300 and the runtime's text.

#include <QStringList>
#include <QTextStream>

// Runs one command line (without the program name); returns the exit code, 0 or 1.
int RunDocCommand(const QStringList& vArguments, QTextStream& vOut, QTextStream& vErr,
                  bool vProgress = false);
