#pragma once
// Whole-file reads and replacing writes, with errors a user can act on. A replacing write goes
// to a temporary file in the same folder and is renamed over the old file only once every byte
// is down, so a full disk or a vanished folder never leaves a half-written settings file.

#include "support/AppError.h"

#include <QByteArray>
#include <QString>

namespace FileBytes {

// A file descriptor that closes itself; Close() reports what close(2) said.
class Fd {
public:
    explicit Fd(int v) : fd_(v) {}
    ~Fd() { Close(); }
    Fd(const Fd&) = delete;
    Fd& operator=(const Fd&) = delete;
    int Get() const { return fd_; }
    int Close();

private:
    int fd_;
};

// Writes every byte, through interrupted and partial writes; false with errno set on failure.
bool WriteFully(int vFd, const char* vData, qsizetype vSize);

// The error a failed read or write of vPath raises, chosen by the system's error code.
AppError ErrorFor(int vErrno, const QString& vPath);

bool Exists(const QString& vPath);
QByteArray ReadAll(const QString& vPath);
void WriteReplacing(const QString& vPath, const QByteArray& vBytes);
// Writes straight into the file, emptied first or appended to: for logs and text files that
// other programs may be reading as they grow.
void WriteInPlace(const QString& vPath, const QByteArray& vBytes, bool vAppend);

// Splits at CR LF, and at a lone CR or LF as well; a final line end adds no empty line.
template <class View, class Text, class Emit>
void ForEachLine(const Text& vText, Emit vEmit)
{
    const auto n = vText.size();
    decltype(vText.size()) start = 0;
    for (decltype(vText.size()) i = 0; i < n; ++i) {
        const auto c = vText[i];
        if (c != '\r' && c != '\n')
            continue;
        vEmit(View(vText).sliced(start, i - start));
        if (c == '\r' && i + 1 < n && vText[i + 1] == '\n')
            ++i;
        start = i + 1;
    }
    if (start < n)
        vEmit(View(vText).sliced(start));
}

} // namespace FileBytes
