#pragma once
// marnoquill-doc run in the test's own process, as a user runs it: its exit code and what it
// printed on each stream.

#include "app/DocCommand.h"

#include <QString>
#include <QTextStream>

struct DocOutcome {
    int code;
    QString out;
    QString err;
};

inline DocOutcome RunDoc(const QStringList& vArguments)
{
    QString out, err;
    QTextStream o(&out), e(&err);
    const int code = RunDocCommand(vArguments, o, e);
    o.flush();
    e.flush();
    return {code, out, err};
}
