#pragma once
// The one way the engine's readers give up on a file: a result code of the runtime's table and a
// line saying what did not fit. Readers throw it from any depth; the engine object catches it
// at its boundary and turns it into its last result, so no caller ever sees it.

#include <QString>
#include <QtGlobal>

namespace xdw {

struct FormatError {
    qint32 code;      // a code of XdwResult
    QString reason;   // for logs and the command line: what in the file did not fit
};

// Not a DocuWorks file, or a damaged one.
[[noreturn]] void Refuse(const QString& vReason);
// A DocuWorks file of a kind this engine cannot read (old layout, protection, newer pictures).
[[noreturn]] void RefuseNewer(const QString& vReason);

} // namespace xdw
