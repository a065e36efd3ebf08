#pragma once
// The process-wide side of the document runtime: the one engine every document call goes
// through, the result codes it reports with their texts, and the pause of the retries on a
// file that another program holds.

#include <QString>
#include <QtGlobal>

#include <functional>
#include <memory>

class DocumentEngine;

// Result codes of the runtime. They are negative as 32-bit numbers, which is how callers tell
// a failure from a count or a type number.
namespace XdwResult {
constexpr qint32 Code(quint32 vBits) { return static_cast<qint32>(vBits); }
inline constexpr qint32 Success = 0;
inline constexpr qint32 Unexpected = Code(0x8000FFFF);
inline constexpr qint32 CannotStartApplication = Code(0x80001156);
inline constexpr qint32 NotInstalled = Code(0x80040001);
inline constexpr qint32 InfoNotFound = Code(0x80040002);
inline constexpr qint32 AccessDenied = Code(0x80040003);
inline constexpr qint32 InvalidOperation = Code(0x80040004);
inline constexpr qint32 Cancelled = Code(0x80040005);
inline constexpr qint32 FileNotFound = Code(0x80070002);
inline constexpr qint32 NoPermission = Code(0x80070005);
inline constexpr qint32 BadFormat = Code(0x8007000B);
inline constexpr qint32 OutOfMemory = Code(0x8007000E);
inline constexpr qint32 WriteFault = Code(0x8007001D);
inline constexpr qint32 FileInUse = Code(0x80070020);
inline constexpr qint32 DiskFull = Code(0x80070027);
inline constexpr qint32 FileExists = Code(0x80070050);
inline constexpr qint32 InvalidArg = Code(0x80070057);
inline constexpr qint32 BufferTooSmall = Code(0x8007007A);
inline constexpr qint32 BadPathName = Code(0x8007007B);
inline constexpr qint32 NewerVersion = Code(0x800E0004);
inline constexpr qint32 NetworkError = Code(0x800E0005);
} // namespace XdwResult

// The message of a result code; a code not in the table gives "予期しないエラーが発生しました。".
QString GetXdwErrorText(qint32 vResult);

// The installed engine. With none installed this is an engine that behaves as a runtime that
// isn't there: every call fails with XdwResult::NotInstalled and its text, so that opening a
// document fails cleanly.
std::shared_ptr<DocumentEngine> XdwApiObject();
// Installs vEngine for the whole process; null goes back to the absent runtime.
void SetXdwApiObject(std::shared_ptr<DocumentEngine> vEngine);

// The wait between two tries on a file in use: the event loop turns, so the window stays
// alive, then the thread sleeps vMiliSec. Tests put a recorder in its place so that they
// don't wait; SetXdwRetryPause returns the pause it replaced, and an empty one restores the
// real wait.
using XdwRetryPause = std::function<void(qint32 vMiliSec)>;
void XdwRetryWait(qint32 vMiliSec);
XdwRetryPause SetXdwRetryPause(XdwRetryPause vPause);
